#include "forms/ImageCombo.h"

#include "forms/Icons.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr int keyRole = Qt::UserRole;
constexpr int textRole = Qt::UserRole + 1;
constexpr int imageRole = Qt::UserRole + 2;

constexpr qsizetype longestShown = 80;
constexpr int usualWidth = 20;  // in characters

QString shown(const QString& text) {
  const QString line = text.left(longestShown * 4).simplified();
  return line.size() <= longestShown ? line : line.left(longestShown) + u'…';
}

}  // namespace

ImageCombo::ImageCombo(const QString& name, QWidget* parent) : QComboBox(parent) {
  setObjectName(name);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(usualWidth);
  connect(this, &QComboBox::activated, this, &ImageCombo::itemClick);
}

void ImageCombo::add(const QString& key, const QString& text, const QString& imageKey) {
  const int selected = currentIndex();
  const int row = count();
  addItem(iconFor(imageKey), shown(text));
  setItemData(row, key, keyRole);
  setItemData(row, text, textRole);
  setItemData(row, imageKey, imageRole);
  setCurrentIndex(selected);
}

void ImageCombo::clearItems() {
  clear();
}

QStringList ImageCombo::keys() const {
  QStringList result;
  for (int row = 0; row < count(); ++row) result.append(key(row));
  return result;
}

QString ImageCombo::key(int row) const {
  return itemData(row, keyRole).toString();
}

QString ImageCombo::text(int row) const {
  return itemData(row, textRole).toString();
}

QString ImageCombo::image(int row) const {
  return itemData(row, imageRole).toString();
}

void ImageCombo::setImage(int row, const QString& imageKey) {
  setItemIcon(row, iconFor(imageKey));
  setItemData(row, imageKey, imageRole);
}

void ImageCombo::setSelectedRow(int row) {
  setCurrentIndex(row);
}

}  // namespace qinghe

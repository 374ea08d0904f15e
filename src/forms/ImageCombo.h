#pragma once

#include <QComboBox>

namespace qinghe {

/// A drop-down list whose rows have a key, a text and an image. Nothing is selected until somebody
/// selects it. Texts may come from outside: a long one is shown cut, and always in one line.
class ImageCombo : public QComboBox {
  Q_OBJECT

 public:
  explicit ImageCombo(const QString& name, QWidget* parent = nullptr);

  void add(const QString& key, const QString& text, const QString& imageKey);
  void clearItems();
  int itemCount() const { return count(); }
  QStringList keys() const;
  QString key(int row) const;
  QString text(int row) const;  ///< the whole text
  QString image(int row) const;
  void setImage(int row, const QString& imageKey);

  int selectedRow() const { return currentIndex(); }  ///< -1 for none
  void setSelectedRow(int row);

 signals:
  /// The user selected a row; code never raises it.
  void itemClick(int row);
};

}  // namespace qinghe

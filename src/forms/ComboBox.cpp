#include "forms/ComboBox.h"

#include <QLineEdit>

#include "values/failure.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr int usualWidth = 20;  // in characters

}  // namespace

ComboBox::ComboBox(const QString& name, QWidget* parent) : QComboBox(parent) {
  setObjectName(name);
  setEditable(true);
  setInsertPolicy(QComboBox::NoInsert);
  setDuplicatesEnabled(true);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(usualWidth);
  // Completion, Enter and leaving would all turn a typed text into a choice of its row.
  setCompleter(nullptr);
  disconnect(lineEdit(), &QLineEdit::returnPressed, this, nullptr);
  disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
  connect(lineEdit(), &QLineEdit::textEdited, this, &ComboBox::dropIndex);
}

void ComboBox::add(const QString& text, qint32 itemData) {
  const int before = currentIndex();
  const QString typed = currentText();
  addItem(text, itemData);
  if (currentIndex() == before) return;
  // The first row of an empty list would select itself.
  setCurrentIndex(before);
  setEditText(typed);
}

qint32 ComboBox::itemDataAt(int index) const {
  if (index < 0 || index >= count()) throw InvalidCall(u"ItemData"_s);
  return itemData(index).toInt();
}

void ComboBox::dropIndex() {
  if (currentIndex() < 0) return;
  const QString typed = lineEdit()->text();
  const int cursor = lineEdit()->cursorPosition();
  setCurrentIndex(-1);  // takes the text along
  setEditText(typed);
  lineEdit()->setCursorPosition(cursor);
}

}  // namespace qinghe

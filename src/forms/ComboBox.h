#pragma once

#include <QComboBox>

namespace qinghe {

/// A drop-down list with a text that can also be typed; each row carries a number. It has a list
/// index only while the text was taken from the list: typing drops it, also when the typed text
/// equals a row. At first there is neither index nor text.
class ComboBox : public QComboBox {
  Q_OBJECT

 public:
  explicit ComboBox(const QString& name, QWidget* parent = nullptr);

  void add(const QString& text, qint32 itemData = 0);
  int listIndex() const { return currentIndex(); }  ///< -1 for none
  /// The row's number. Throws `InvalidCall` for an index that is none.
  qint32 itemDataAt(int index) const;

 private:
  void dropIndex();
};

}  // namespace qinghe

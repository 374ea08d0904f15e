#pragma once

#include <QString>
#include <QStringList>
#include <QTreeView>
#include <array>

namespace qinghe {

class ListModel;

/// A row of a `ListView`. It lives as long as it is in the list. Changes by code show at once and
/// raise no event.
class ListItem {
 public:
  QString key() const { return key_; }
  void setKey(const QString& key) { key_ = key; }  ///< keys need not be unique
  QString text() const { return text_; }
  void setText(const QString& text);
  QString subItem(int column) const;  ///< from 1; empty when unset
  void setSubItem(int column, const QString& text);
  QString tag() const { return tag_; }
  void setTag(const QString& tag) { tag_ = tag; }
  QString icon() const { return icon_; }
  void setIcon(const QString& imageKey);
  bool isChecked() const { return checked_; }
  void setChecked(bool checked);
  int row() const { return row_; }

 private:
  friend class ListModel;
  QString& cell(int column);

  ListModel* model_ = nullptr;
  int row_ = 0;
  bool checked_ = false;
  QString key_, text_, tag_, icon_;
  std::array<QString, 3> cells_;  ///< of the first columns, which most lists have no more of
  QStringList moreCells_;
};

/// A list of rows with columns, check boxes and icons, quick with 100,000 rows. One row is selected
/// whenever there is one: the first row added to an empty list becomes it, and neither empty space
/// nor Ctrl takes it away.
///
/// The signals tell what the user does, never what code does. The second press of a double click
/// is a press like any other.
class ListView : public QTreeView {
  Q_OBJECT

 public:
  explicit ListView(const QString& name, QWidget* parent = nullptr);
  ~ListView() override;

  void addColumn(const QString& title, int width);  ///< width in pixels
  /// Rows stay, with all their cells.
  void clearColumns();
  void setColumnWidths(const QList<int>& widths);
  void setColumnWidth(int column, int width);
  /// The shown columns fill the list when their widths leave room: those whose texts are cut are
  /// served first, and none becomes narrower than it was made. It ends when the user moves an edge
  /// between the titles, until the columns are made anew. Off puts the widths back.
  void setSpreadsColumns(bool on);
  /// The column is as wide as the list's inside less `inset` pixels, whatever becomes of the list's
  /// size and its scroll bars. It ends when the user moves an edge between the titles.
  void setFillingColumn(int column, int inset);
  void setCheckBoxes(bool on);
  bool hasCheckBoxes() const;
  /// Keys that click the selected row: no arrow key clicks the first one, which is selected from
  /// the start, and often there is no other to come from.
  void setClickKeys(const QList<Qt::Key>& keys) { clickKeys_ = keys; }

  /// Adds a row at the end. In a long list the view learns of new rows in batches, when it is
  /// looked at or the program next waits for events.
  ListItem* addItem(const QString& key, const QString& text, const QString& icon = {});
  void clearItems();
  /// When it was the selected row, a neighbour becomes selected.
  void removeItem(ListItem* item);
  int itemCount() const;
  ListItem* itemAt(int row) const;                            ///< null outside the list
  ListItem* itemUnder(const QPoint& viewportPosition) const;  ///< null in empty space

  /// Sorts the rows by a column's texts, case not counting: ascending first, the other way round
  /// when it is the same column again. Equal rows keep their order; rows added later stand at the
  /// end. For a click on the column's title.
  void sortByColumn(int column);

  ListItem* selectedItem() const;  ///< null in an empty list
  void setSelectedItem(ListItem* item);

  /// Where a row's cell, and its check box, stand in the viewport.
  QRect cellRect(const ListItem* item, int column = 0) const;
  QRect checkRect(const ListItem* item) const;

 signals:
  /// A press on a row, or a key that moved to it. The selection already stands on it.
  void itemClick(qinghe::ListItem* item);
  /// The user changed a check box, by mouse or space key; alone, without selection or click.
  void itemCheck(qinghe::ListItem* item);
  /// Positions are the viewport's. A press comes before what it does, a release behind it.
  void mouseDown(Qt::MouseButton button, const QPoint& position);
  void mouseUp(Qt::MouseButton button, const QPoint& position);
  /// Behind the second press of a double click, in empty space, too.
  void mouseDoubleClick(Qt::MouseButton button, const QPoint& position);
  void columnClick(int column);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  bool viewportEvent(QEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  QModelIndex indexOf(const ListItem* item) const;
  void select(const QModelIndex& index);
  void press(const QMouseEvent& event);
  void toggle(ListItem* item);
  /// What a key does to the selected row; false when it is no key of that kind.
  bool keyOnSelected(int key);
  void setSortMark(bool shown);
  void fill();
  void spread();
  void spreadSoon();

  ListModel* model_;
  Qt::MouseButtons pressed_;  ///< pressed here and not yet released
  int sortColumn_ = -1;
  Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
  QList<Qt::Key> clickKeys_;
  QList<int> toldWidths_;
  int fillingColumn_ = -1;
  int fillingInset_ = 0;
  bool spreads_ = false;
  bool spreadingSoon_ = false;
  bool spreading_ = false;
  bool titlePressed_ = false;
  bool edgeMoved_ = false;  ///< by the user
};

}  // namespace qinghe

#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <vector>

#include "forms/ListView.h"
#include "forms/TextBox.h"

namespace qinghe {

/// An input over a column of a list.
struct CellColumn {
  int column;     ///< of the list, from 1 on
  QString input;  ///< name of the text box
  /// What the message box says when the input is left with this text; empty when it is accepted.
  /// Without it every text is.
  std::function<QString(const QString& text)> complaint = {};
  /// Behind a leaving that was accepted, the input being hidden: writes the cell, and what hangs
  /// on it.
  std::function<void(ListItem& row, const QString& text)> afterLeave = {};
  /// Any press right of the column's left edge opens it.
  bool upToTheRightEnd = false;
};

/// How an input lies over its cell, in the form's unit, of which 15 are one pixel.
struct CellPlace {
  int rightOfCell = 60;  ///< from the list's left plus the column's left
  int belowRow = 60;     ///< from the list's top plus the row's top
  int lessWidth = 16;    ///< than the column
  int lessHeight = 20;   ///< than the first row
};

/// Inputs laid over the cells of a list, one open at a time.
///
/// A left release opens the input whose column holds the pointer strictly between its edges, on the
/// row that was pressed. On the list Enter and F2 open the selected row's first one. In an input
/// Tab, Shift+Tab and Enter leave it and open the next in reading order, and behind the last give
/// the focus to the list; Up and Down do the same in their column and stay at the ends; Esc leaves
/// the cell as it was. Whatever moves the focus away leaves the
/// input: first its complaint is asked, which keeps the focus, then `afterLeave` runs.
///
/// The inputs are children of the list's parent, which it keeps, and named as their columns say. A
/// row with the key "Count ID" is never touched.
class CellEditor : public QObject {
  Q_OBJECT

 public:
  /// `columns` stand from left to right, at least one.
  CellEditor(ListView* list, QList<CellColumn> columns, const CellPlace& place = {});

  /// Asked at every opening, by mouse or key; without it everything opens.
  std::function<bool()> mayOpen;

  /// Null when there is none of that name.
  TextBox* input(const QString& name) const;
  bool isOpen() const { return open_ >= 0; }

  /// Opens the input of a list column over a row, whatever `mayOpen` says. An open one is left
  /// before; false when that was refused or nothing stands over the column.
  bool open(ListItem* row, int column);
  /// Leaves the open input as Tab would, the list taking the focus; false when it was refused, with
  /// its message box.
  bool leave();
  /// Takes the open input's text when it is acceptable, else nothing happens; no message.
  void takeAcceptable();
  /// Hides the open input and leaves its cell as it was; nothing is asked.
  void hide();
  /// `hide`, and no row is under the mouse any more.
  void forget();

  /// The row under the last press; null when that hit none.
  ListItem* hitRow() const { return hitRow_; }
  /// The row in in-place editing, or under the right button.
  ListItem* editRow() const { return editRow_; }

 signals:
  /// The text of an input changed, by user or code: opening one over a new text does so, too.
  void changed();
  /// The right button was released behind a press on this row, which is the edited one now; or the
  /// menu key was pressed on the list, the row being the selected one. `at` is on the screen.
  void rightReleased(qinghe::ListItem* row, const QPoint& at);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool isTouchable(const ListItem* row) const;
  QString complaint() const;
  void release(Qt::MouseButton button, const QPoint& position);
  int inputAt(int x) const;
  bool isLeavable();
  void finish();
  void close();
  void place();
  bool openFirst();
  bool menuKey();
  bool inputKey(int key);
  void walk(int step);
  void walkRows(int step);
  bool openNext(int row, int index, int step);
  bool openAt(int row, int index);
  int touchableRow(int row, int step) const;
  void addInput(const CellColumn& column);
  void watchList();

  ListView* list_;
  QWidget* viewport_;  ///< the list's
  QList<CellColumn> columns_;
  CellPlace place_;
  std::vector<TextBox*> inputs_;  ///< one for each column
  int open_ = -1;                 ///< index of the open input
  ListItem* hitRow_ = nullptr;
  ListItem* editRow_ = nullptr;
};

}  // namespace qinghe

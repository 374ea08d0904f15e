#include "CellEditorFixture.h"

#include <QShortcut>

using namespace Qt::StringLiterals;
using namespace qinghe;

TEST_F(CellEditorTest, TabAndEnterWalkTheCellsInReadingOrderAndEndAtTheList) {
  for (const int step : {Qt::Key_Tab, Qt::Key_Return, Qt::Key_Enter}) {
    screen.list->setFocus();
    screen.list->setSelectedItem(screen.list->itemAt(1));
    key(Qt::Key_Return);
    QStringList walk;
    while (screen.cells->isOpen() && walk.size() < 9) {
      walk << open();
      key(step, step == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
    }
    EXPECT_EQ(walk.join(u' '),
              u"TxtInputSL@1 TxtInputJG@1 TxtInputZK@1 TxtInputSL@2 TxtInputJG@2 TxtInputZK@2"_s);
    EXPECT_EQ(QApplication::focusWidget(), screen.list);
    EXPECT_EQ(screen.list->selectedItem(), screen.list->itemAt(2));
  }
}

TEST_F(CellEditorTest, WithoutAMouseTheTextsAreTakenToo) {
  key(Qt::Key_F2);
  type(u"9"_s);
  key(Qt::Key_Return);
  type(u"8"_s);
  key(Qt::Key_Down);
  EXPECT_EQ(screen.left, QStringList({u"0/1 9"_s, u"0/2 8"_s}));
}

TEST_F(CellEditorTest, KeysWithCtrlOrAltAreNotTheCells) {
  key(Qt::Key_F2, Qt::AltModifier);
  EXPECT_EQ(open(), QString());
  key(Qt::Key_F2);
  for (const auto other : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape}) {
    key(other, Qt::ControlModifier);
    EXPECT_EQ(open(), u"TxtInputSL@0"_s) << other;
  }
}

TEST_F(CellEditorTest, AnOpenInputHasItsKeysBeforeTheScreensShortcuts) {
  int closed = 0;
  new QShortcut(Qt::Key_Escape, &screen, [&closed] { ++closed; });
  key(Qt::Key_F2);
  key(Qt::Key_Escape);
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(closed, 0);
  key(Qt::Key_Escape);
  EXPECT_EQ(closed, 1);
}

TEST_F(CellEditorTest, ShiftTabWalksBackwards) {
  click(cell(1, price));
  QStringList walk;
  while (screen.cells->isOpen() && walk.size() < 9) {
    walk << open();
    key(Qt::Key_Backtab, Qt::ShiftModifier);
  }
  EXPECT_EQ(walk.join(u' '), u"TxtInputJG@1 TxtInputSL@1 TxtInputZK@0 TxtInputJG@0 TxtInputSL@0"_s);
  EXPECT_EQ(QApplication::focusWidget(), screen.list);
}

TEST_F(CellEditorTest, UpAndDownWalkTheRowsOfAColumnAndStayAtTheEnds) {
  click(cell(1, price));
  type(u"5"_s);
  key(Qt::Key_Up);
  EXPECT_EQ(open(), u"TxtInputJG@0"_s);
  EXPECT_EQ(screen.left, QStringList{u"1/2 5"_s});
  type(u"x"_s);
  key(Qt::Key_Up);
  EXPECT_EQ(open(), u"TxtInputJG@0"_s) << "nothing is left, so nothing is asked";
  scripted_->expect(Answer::Ok);
  key(Qt::Key_Down);
  EXPECT_EQ(open(), u"TxtInputJG@0"_s);
  key(Qt::Key_Backspace);
  type(u"7"_s);
  screen.list->itemAt(1)->setKey(u"Count ID"_s);
  key(Qt::Key_Down);
  EXPECT_EQ(open(), u"TxtInputJG@2"_s);
  EXPECT_EQ(screen.list->selectedItem(), screen.list->itemAt(2));
  key(Qt::Key_Down);
  EXPECT_EQ(open(), u"TxtInputJG@2"_s);
}

TEST_F(CellEditorTest, TheWalkScrollsToItsCell) {
  screen.fill(60);
  screen.list->setColumnWidth(0, 600);
  screen.list->setSelectedItem(screen.list->itemAt(40));
  key(Qt::Key_F2);
  EXPECT_EQ(open(), u"TxtInputSL@40"_s);
  const auto at = screen.list->cellRect(screen.list->itemAt(40), quantity);
  EXPECT_TRUE(screen.list->viewport()->rect().contains(at)) << at.x() << ' ' << at.y();
}

TEST_F(CellEditorTest, EscLeavesTheCellAsItWasAndTheListHasTheFocus) {
  key(Qt::Key_F2);
  type(u"99"_s);
  key(Qt::Key_Escape);
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(QApplication::focusWidget(), screen.list);
  EXPECT_TRUE(screen.left.isEmpty());
  EXPECT_EQ(screen.list->itemAt(0)->subItem(quantity), u"1"_s);
}

#include "CellEditorFixture.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace qinghe;

TEST_F(CellEditorTest, AReleaseOverAColumnOpensItsInputWithTheCellsTextSelected) {
  click(cell(1, price));
  EXPECT_EQ(open(), u"TxtInputJG@1"_s);
  auto* edit = qobject_cast<QLineEdit*>(input(u"TxtInputJG"_s)->editor());
  EXPECT_EQ(edit->selectedText(), u"12"_s);
  EXPECT_EQ(edit->accessibleName(), u"单价"_s);
  EXPECT_EQ(screen.changes, 1);
}

TEST_F(CellEditorTest, OpeningOverTheSameTextIsNoChange) {
  click(cell(1, price));
  key(Qt::Key_Escape);
  click(cell(1, price));
  EXPECT_EQ(open(), u"TxtInputJG@1"_s);
  EXPECT_EQ(screen.changes, 1);
}

TEST_F(CellEditorTest, ExactlyOnAnEdgeAndOverOtherColumnsNothingOpens) {
  const int y = cell(0, 0).y();
  for (const int column : {quantity, price, sum, discount}) {
    click({screen.list->columnViewportPosition(column), y});
    EXPECT_EQ(open(), QString()) << column;
  }
  click({screen.list->columnViewportPosition(discount) + 80, y});
  click(cell(0, 0));
  click(cell(0, sum));
  EXPECT_EQ(open(), QString());
  click({screen.list->columnViewportPosition(quantity) + 1, y});
  EXPECT_EQ(open(), u"TxtInputSL@0"_s);
  key(Qt::Key_Escape);
  click({screen.list->columnViewportPosition(price) - 1, y});
  EXPECT_EQ(open(), u"TxtInputSL@0"_s);
}

TEST_F(CellEditorTest, TheEdgesMoveWithTheListAsItScrolls) {
  screen.list->setColumnWidth(0, 400);
  settle();
  screen.list->horizontalScrollBar()->setValue(200);
  ASSERT_EQ(screen.list->horizontalScrollBar()->value(), 200);
  click({200 + 40, cell(0, 0).y()});
  EXPECT_EQ(open(), u"TxtInputSL@0"_s);
  key(Qt::Key_Escape);
  click({200, cell(0, 0).y()});
  EXPECT_EQ(open(), QString());
}

TEST_F(CellEditorTest, AnInputLiesOverItsCellAsFarAsTold) {
  struct Case {
    CellPlace place;
    QPoint shift;
    int lessWidth, lessHeight;
  };
  for (const Case& told : {Case{{}, {4, 4}, 1, 1}, Case{{60, 32, 16, 20}, {4, 2}, 1, 1},
                           Case{{60, 60, 96, 16}, {4, 4}, 6, 1}}) {
    CellScreen other(told.place);
    other.fill(3);
    other.show();
    ASSERT_TRUE(other.cells->open(other.list->itemAt(2), price));
    const auto* box = other.findChild<TextBox*>(u"TxtInputJG"_s);
    const auto* list = other.list;
    EXPECT_EQ(box->parentWidget(), list->parentWidget());
    EXPECT_EQ(box->x(), list->x() + 160 + told.shift.x());
    EXPECT_EQ(box->y(), list->y() + list->header()->height() +
                            list->cellRect(list->itemAt(2)).top() + told.shift.y());
    EXPECT_EQ(box->width(), 80 - told.lessWidth);
    EXPECT_EQ(box->height(), list->cellRect(list->itemAt(0)).height() - told.lessHeight);
  }
}

TEST_F(CellEditorTest, AnOpenInputFollowsItsCell) {
  click(cell(1, quantity));
  const int before = input(u"TxtInputSL"_s)->x();
  screen.list->setColumnWidth(0, 100);
  EXPECT_EQ(input(u"TxtInputSL"_s)->x(), before + 20);
  screen.list->setColumnWidth(0, 500);
  settle();
  screen.list->horizontalScrollBar()->setValue(300);
  ASSERT_EQ(screen.list->horizontalScrollBar()->value(), 300);
  EXPECT_EQ(input(u"TxtInputSL"_s)->x(), before + 120);
}

TEST_F(CellEditorTest, AnOpenInputFollowsItsRow) {
  screen.fill(60);
  settle();
  click(cell(3, quantity));
  const auto* box = input(u"TxtInputSL"_s);
  const int before = box->y();
  const int height = screen.list->cellRect(screen.list->itemAt(0)).height();
  screen.list->verticalScrollBar()->setValue(2);
  EXPECT_EQ(box->y(), before - 2 * height);
  screen.list->verticalScrollBar()->setValue(0);
  const int top = screen.list->y();
  screen.column->insertSpacing(0, 30);
  screen.column->activate();
  ASSERT_EQ(screen.list->y(), top + 30);
  EXPECT_EQ(box->y(), before + 30);
}

TEST_F(CellEditorTest, AnInputStandsBeforeWhatLiesThere) {
  screen.list->raise();
  click(cell(1, price));
  const auto* box = input(u"TxtInputJG"_s);
  EXPECT_EQ(screen.childAt(box->geometry().center()), box->editor());
}

TEST_F(CellEditorTest, AnInputThatIsOpenedByCodeLeavesTheOpenOneFirst) {
  click(cell(1, quantity));
  type(u"x"_s);
  scripted_->expect(Answer::Ok);
  EXPECT_FALSE(screen.cells->open(screen.list->itemAt(2), price));
  EXPECT_EQ(open(), u"TxtInputSL@1"_s);
  key(Qt::Key_Backspace);
  type(u"5"_s);
  EXPECT_FALSE(screen.cells->open(nullptr, price));
  EXPECT_FALSE(screen.cells->open(screen.list->itemAt(2), sum));
  EXPECT_EQ(open(), u"TxtInputSL@1"_s);
  EXPECT_TRUE(screen.cells->open(screen.list->itemAt(2), price));
  EXPECT_EQ(open(), u"TxtInputJG@2"_s);
  EXPECT_EQ(screen.left, QStringList{u"1/1 5"_s});
}

TEST_F(CellEditorTest, AnotherControlTakesTheTextIntoTheCell) {
  click(cell(1, quantity));
  type(u"25"_s);
  QTest::mouseClick(screen.list->viewport(), Qt::LeftButton, {}, cell(2, 0));
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(screen.left, QStringList{u"1/1 25"_s});
  EXPECT_EQ(screen.list->itemAt(1)->subItem(quantity), u"25"_s);
  EXPECT_EQ(screen.cells->hitRow(), screen.list->itemAt(2));
}

TEST_F(CellEditorTest, AClickOnAnotherCellTakesTheTextAndOpensThere) {
  click(cell(1, quantity));
  type(u"25"_s);
  click(cell(0, discount));
  EXPECT_EQ(open(), u"TxtInputZK@0"_s);
  EXPECT_EQ(screen.left, QStringList{u"1/1 25"_s});
}

TEST_F(CellEditorTest, ARefusedTextKeepsTheInputAndSaysWhy) {
  click(cell(1, quantity));
  type(u"x"_s);
  scripted_->expect(Answer::Ok);
  click(cell(0, price));
  EXPECT_EQ(open(), u"TxtInputSL@1"_s);
  scripted_->expect(Answer::Ok);
  key(Qt::Key_Tab);
  EXPECT_EQ(open(), u"TxtInputSL@1"_s);
  EXPECT_EQ(scripted_->texts(), QStringList({u"必须是数值"_s, u"必须是数值"_s}));
  EXPECT_TRUE(screen.left.isEmpty());
  key(Qt::Key_Escape);
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(screen.list->itemAt(1)->subItem(quantity), u"11"_s);
}

TEST_F(CellEditorTest, WhatMayNotOpenOpensNeitherByMouseNorByKey) {
  bool may = false;
  screen.cells->mayOpen = [&may] { return may; };
  click(cell(1, quantity));
  EXPECT_EQ(open(), QString());
  key(Qt::Key_Return);
  EXPECT_EQ(open(), QString());
  click(cell(2, 0), Qt::RightButton);
  EXPECT_EQ(screen.rights, QStringList{u"书2"_s}) << "the right button is not locked";
  may = true;
  key(Qt::Key_Return);
  EXPECT_EQ(open(), u"TxtInputSL@2"_s);
}

TEST_F(CellEditorTest, ALockThatFallsOverAnOpenInputEndsTheWalkBehindIt) {
  bool may = true;
  screen.cells->mayOpen = [&may] { return may; };
  for (const auto step : {Qt::Key_Tab, Qt::Key_Down}) {
    may = true;
    screen.list->setSelectedItem(screen.list->itemAt(0));
    key(Qt::Key_F2);
    type(u"7"_s);
    may = false;
    key(step);
    EXPECT_EQ(open(), QString());
    EXPECT_EQ(QApplication::focusWidget(), screen.list);
  }
  EXPECT_EQ(screen.left, QStringList({u"0/1 7"_s, u"0/1 7"_s}));
}

TEST_F(CellEditorTest, ARowOfSumsIsNeverTouched) {
  screen.list->itemAt(1)->setKey(u"Count ID"_s);
  click(cell(1, quantity));
  click(cell(1, quantity), Qt::RightButton);
  key(Qt::Key_F2);
  askForMenu(QContextMenuEvent::Keyboard);
  EXPECT_EQ(open(), QString());
  EXPECT_TRUE(screen.rights.isEmpty());
  EXPECT_EQ(screen.cells->editRow(), nullptr);
  click(cell(0, discount));
  key(Qt::Key_Tab);
  EXPECT_EQ(open(), u"TxtInputSL@2"_s) << "the walk goes round it";
}

TEST_F(CellEditorTest, ARightReleaseNeedsARow) {
  click({20, screen.list->viewport()->height() - 4}, Qt::RightButton);
  EXPECT_TRUE(screen.rights.isEmpty());
  EXPECT_EQ(screen.cells->hitRow(), nullptr);
  click(cell(2, quantity), Qt::RightButton);
  EXPECT_EQ(screen.rights, QStringList{u"书2"_s});
  EXPECT_EQ(screen.rightAt, screen.list->viewport()->mapToGlobal(cell(2, quantity)));
  EXPECT_EQ(screen.cells->editRow(), screen.list->itemAt(2));
  EXPECT_EQ(open(), QString());
  askForMenu(QContextMenuEvent::Mouse);
  EXPECT_EQ(screen.rights.size(), 1) << "what the system makes of the same click";
}

TEST_F(CellEditorTest, TheMiddleButtonDoesNothing) {
  click(cell(1, quantity), Qt::MiddleButton);
  EXPECT_EQ(open(), QString());
  EXPECT_TRUE(screen.rights.isEmpty());
}

TEST_F(CellEditorTest, TheMenuKeyStandsForARightReleaseOnTheSelectedRow) {
  screen.list->setSelectedItem(screen.list->itemAt(1));
  EXPECT_TRUE(askForMenu(QContextMenuEvent::Keyboard));
  EXPECT_EQ(screen.rights, QStringList{u"书1"_s});
  const auto row = screen.list->cellRect(screen.list->itemAt(1));
  EXPECT_EQ(screen.rightAt, screen.list->viewport()->mapToGlobal(row.bottomLeft()));
  EXPECT_EQ(screen.cells->editRow(), screen.list->itemAt(1));
}

TEST_F(CellEditorTest, RowsThatGoTakeTheInputWithThem) {
  const std::function<void()> goings[] = {
      [this] { screen.list->removeItem(screen.list->itemAt(1)); },
      [this] { screen.list->clearItems(); }};
  for (const auto& go : goings) {
    click(cell(1, quantity));
    type(u"25"_s);
    go();
    EXPECT_EQ(open(), QString());
    EXPECT_TRUE(screen.left.isEmpty());
    EXPECT_EQ(screen.cells->hitRow(), nullptr);
    EXPECT_EQ(screen.cells->editRow(), nullptr);
  }
}

TEST_F(CellEditorTest, ForgettingHidesTheInputWithoutWriting) {
  click(cell(1, quantity));
  type(u"x"_s);
  screen.cells->forget();
  EXPECT_EQ(open(), QString());
  EXPECT_TRUE(screen.left.isEmpty());
  EXPECT_EQ(screen.cells->hitRow(), nullptr);
}

TEST_F(CellEditorTest, AnAcceptableTextIsTakenWithoutAWordAndABadOneStays) {
  screen.cells->takeAcceptable();
  click(cell(1, quantity));
  type(u"x"_s);
  screen.cells->takeAcceptable();
  EXPECT_EQ(open(), u"TxtInputSL@1"_s);
  key(Qt::Key_Backspace);
  type(u"7"_s);
  screen.cells->takeAcceptable();
  EXPECT_EQ(screen.left, QStringList{u"1/1 7"_s});
  EXPECT_EQ(open(), QString());
}

TEST_F(CellEditorTest, ASwitchOfWindowsLeavesNothing) {
  click(cell(1, quantity));
  type(u"x"_s);
  QWidget elsewhere;
  elsewhere.show();
  elsewhere.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
  EXPECT_TRUE(screen.cells->isOpen());
  EXPECT_TRUE(screen.left.isEmpty());
}

TEST_F(CellEditorTest, UpToTheRightEndEveryPressOpensIt) {
  ListView list(u"ListView1"_s, &screen);
  list.addColumn(u"名称"_s, 100);
  list.addColumn(u"内容"_s, 60);
  auto* row = list.addItem(u"1 ID"_s, u"装帧"_s);
  list.setGeometry(0, 0, 400, 200);
  list.show();
  CellEditor cells(&list, {{.column = 1, .input = u"txtSelect"_s, .upToTheRightEnd = true}});
  const int y = list.cellRect(row, 1).center().y();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {100, y});
  EXPECT_FALSE(cells.isOpen());
  QTest::mousePress(list.viewport(), Qt::LeftButton, {}, {155, y});
  QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, {300, y});
  EXPECT_TRUE(cells.isOpen());
  EXPECT_TRUE(cells.leave()) << "nothing is asked of a column that asks nothing";
  EXPECT_EQ(cells.input(u"txtSelect"_s)->isVisible(), false);
  EXPECT_EQ(cells.input(u"none"_s), nullptr);
}

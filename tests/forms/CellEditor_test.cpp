#include "forms/CellEditor.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include "forms/FormsFixture.h"

using namespace Qt::StringLiterals;
using namespace qinghe;

namespace {

constexpr int quantity = 1, price = 2, sum = 3, discount = 4;

/// A screen with a list over whose cells three inputs lie, and a control beside it.
class Screen : public Form {
 public:
  explicit Screen(const CellPlace& place = {}) : Form(Kind::Window, u"Screen"_s, u"订单"_s) {
    for (const auto& title : {u"商品"_s, u"数量"_s, u"单价"_s, u"金额"_s, u"折扣"_s}) {
      list->addColumn(title, 80);
    }
    column->addWidget(list);
    const auto number = [](const QString& text) {
      bool ok = false;
      text.toDouble(&ok);
      return ok ? QString() : u"必须是数值"_s;
    };
    const auto write = [this](int at) {
      return [this, at](ListItem& row, const QString& text) {
        left << u"%1/%2 %3"_s.arg(row.row()).arg(at).arg(text);
        row.setSubItem(at, text);
      };
    };
    cells = new CellEditor(list,
                           {{quantity, u"TxtInputSL"_s, number, write(quantity)},
                            {price, u"TxtInputJG"_s, number, write(price)},
                            {discount, u"TxtInputZK"_s, {}, write(discount)}},
                           place);
    connect(cells, &CellEditor::changed, this, [this] { ++changes; });
    connect(cells, &CellEditor::rightReleased, this, [this](const ListItem* row, const QPoint& at) {
      rights << row->text();
      rightAt = at;
    });
    // Behind the inputs, so that a focus which one of them loses would come here.
    other = new QPushButton(u"别处"_s, this);
    column->addWidget(other);
    resize(460, 300);
  }

  void fill(int rows) {
    for (int row = 0; row < rows; ++row) {
      auto* item = list->addItem(u"%1 ID"_s.arg(row), u"书%1"_s.arg(row));
      for (int at = 1; at <= 4; ++at) item->setSubItem(at, QString::number(10 * row + at));
    }
  }

  QVBoxLayout* column = new QVBoxLayout(this);
  ListView* list = new ListView(u"ListView1"_s, this);
  QPushButton* other = nullptr;
  CellEditor* cells = nullptr;
  QStringList left, rights;
  QPoint rightAt;
  int changes = 0;
};

class CellEditorTest : public FormsFixture {
 protected:
  void SetUp() override {
    screen.fill(3);
    screen.show();
    screen.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    screen.list->setFocus();
  }

  TextBox* input(const QString& name) { return screen.findChild<TextBox*>(name); }
  QPoint cell(int row, int column) {
    return screen.list->cellRect(screen.list->itemAt(row), column).center();
  }
  void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(screen.list->viewport(), button, {}, at);
  }
  void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
  void key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
  }
  /// Whether the list kept the event for itself.
  bool askForMenu(QContextMenuEvent::Reason reason) {
    QContextMenuEvent menu(reason, {5, 5}, screen.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(screen.list, &menu);
    return menu.isAccepted();
  }
  /// The open input and the row it stands on, or "".
  QString open() {
    QStringList names;
    for (const auto* box : screen.findChildren<TextBox*>()) {
      if (box->isVisible()) {
        names << u"%1@%2"_s.arg(box->objectName()).arg(screen.cells->editRow()->row());
        EXPECT_EQ(QApplication::focusWidget(), box->editor());
      }
    }
    EXPECT_EQ(screen.cells->isOpen(), !names.isEmpty());
    return names.join(u' ');
  }

  Screen screen;
};

}  // namespace

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
    Screen other(told.place);
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

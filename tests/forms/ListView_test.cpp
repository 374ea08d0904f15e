#include "forms/ListView.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include "forms/FormsFixture.h"

using namespace Qt::StringLiterals;
using qinghe::ListItem;
using qinghe::ListView;

namespace {

class ListViewTest : public testing::Test {
 protected:
  ListViewTest() {
    list_.addColumn(u"商品名称"_s, 200);
    list_.addColumn(u"单价"_s, 80);
    list_.setCheckBoxes(true);
    list_.resize(400, 300);
    QObject::connect(&list_, &ListView::itemClick, &list_,
                     [this](ListItem* item) { events_ << u"click "_s + item->text(); });
    QObject::connect(&list_, &ListView::itemCheck, &list_, [this](ListItem* item) {
      events_ << u"check %1 %2"_s.arg(item->text()).arg(item->isChecked());
    });
    QObject::connect(&list_, &ListView::mouseDown, &list_,
                     [this](Qt::MouseButton button) { events_ << u"down %1"_s.arg(button); });
    QObject::connect(&list_, &ListView::mouseUp, &list_,
                     [this](Qt::MouseButton button) { events_ << u"up %1"_s.arg(button); });
  }

  void fill(int rows) {
    for (int row = 0; row < rows; ++row) {
      auto* item = list_.addItem(u"%1 ID"_s.arg(row), u"r%1"_s.arg(row), u"Ximu"_s);
      item->setSubItem(1, QString::number(row));
    }
  }

  void show() {
    list_.show();
    list_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&list_));
    list_.setFocus();
  }

  void click(int row, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(list_.viewport(), button, keys, list_.cellRect(list_.itemAt(row)).center());
  }

  int selectedRow() const {
    const auto* item = list_.selectedItem();
    const auto rows = list_.selectionModel()->selectedRows();
    // What the program takes as selected is also what the user sees as selected.
    if (item == nullptr) return rows.isEmpty() ? -1 : -2;
    return rows.size() == 1 && rows.first().row() == item->row() ? item->row() : -2;
  }

  QStringList events_;
  ListView list_{u"ListView1"_s};
};

}  // namespace

TEST_F(ListViewTest, ItemsCarryWhatTheyAreGiven) {
  auto* item = list_.addItem(u"12 ID"_s, u"书"_s, u"Ximu"_s);
  item->setSubItem(2, u"two"_s);
  item->setTag(u"3"_s);
  EXPECT_EQ(item->key(), u"12 ID"_s);
  EXPECT_EQ(item->text(), u"书"_s);
  EXPECT_EQ(item->icon(), u"Ximu"_s);
  EXPECT_EQ(item->subItem(1), QString());
  EXPECT_EQ(item->subItem(2), u"two"_s);
  EXPECT_EQ(item->subItem(0), QString());
  EXPECT_EQ(item->subItem(9), QString());
  EXPECT_EQ(item->tag(), u"3"_s);
  EXPECT_FALSE(item->isChecked());
  auto* twin = list_.addItem(u"12 ID"_s, u"twin"_s);
  EXPECT_EQ(twin->key(), item->key());
  EXPECT_EQ(twin->row(), 1);
  EXPECT_EQ(list_.itemAt(1), twin);
  EXPECT_EQ(list_.itemAt(2), nullptr);
  EXPECT_EQ(list_.itemAt(-1), nullptr);
}

TEST_F(ListViewTest, TheModelKeepsItsPromisesThroughEverything) {
  QAbstractItemModelTester tester(list_.model(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal);
  fill(2000);
  list_.addColumn(u"编号"_s, 50);
  list_.itemAt(5)->setSubItem(2, u"x"_s);
  list_.itemAt(1999)->setText(u"last"_s);
  list_.removeItem(list_.itemAt(0));
  list_.removeItem(list_.itemAt(1998));
  list_.removeItem(list_.itemAt(1000));
  list_.setCheckBoxes(false);
  list_.setCheckBoxes(true);
  EXPECT_EQ(list_.model()->rowCount(), 1997);
  list_.clearItems();
  list_.clearItems();
  fill(3);
  EXPECT_EQ(list_.model()->rowCount(), 3);
}

TEST_F(ListViewTest, TheFirstRowOfAnEmptyListIsSelectedWithoutAnEvent) {
  EXPECT_EQ(list_.selectedItem(), nullptr);
  fill(3);
  EXPECT_EQ(selectedRow(), 0);
  list_.clearItems();
  EXPECT_EQ(list_.selectedItem(), nullptr);
  fill(2);
  EXPECT_EQ(selectedRow(), 0);
  EXPECT_EQ(events_, QStringList{});
}

TEST_F(ListViewTest, APressOnARowSelectsItAndClicks) {
  fill(5);
  show();
  click(2);
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"click r2"_s, u"up 1"_s}));
  EXPECT_EQ(selectedRow(), 2);
  events_.clear();
  click(2);
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"click r2"_s, u"up 1"_s}));
}

TEST_F(ListViewTest, TheClickComesAtThePressWithTheSelectionInPlace) {
  fill(5);
  show();
  int selectedThen = -1;
  QObject::connect(&list_, &ListView::itemClick, &list_, [&] { selectedThen = selectedRow(); });
  QTest::mousePress(list_.viewport(), Qt::LeftButton, {},
                    list_.cellRect(list_.itemAt(3), 1).center());
  EXPECT_EQ(selectedThen, 3);
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"click r3"_s}));
}

TEST_F(ListViewTest, ARightPressSelectsToo) {
  fill(5);
  show();
  click(2, Qt::RightButton);
  EXPECT_EQ(events_, (QStringList{u"down 2"_s, u"click r2"_s, u"up 2"_s}));
  EXPECT_EQ(selectedRow(), 2);
}

TEST_F(ListViewTest, APressOnEmptySpaceLeavesTheSelection) {
  fill(3);
  show();
  list_.setSelectedItem(list_.itemAt(1));
  const auto below = QPoint(20, list_.viewport()->height() - 3);
  EXPECT_EQ(list_.itemUnder(below), nullptr);
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, below);
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"up 1"_s}));
  EXPECT_EQ(selectedRow(), 1);
}

TEST_F(ListViewTest, CtrlAndShiftTakeNoSelectionAway) {
  fill(5);
  show();
  click(2);
  for (const auto keys : {Qt::ControlModifier, Qt::ShiftModifier}) {
    click(2, Qt::LeftButton, keys);
    EXPECT_EQ(selectedRow(), 2);
    click(3, Qt::LeftButton, keys);
    EXPECT_EQ(selectedRow(), 3);
    click(2);
  }
  QTest::keyClick(&list_, Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(selectedRow(), 2);
}

TEST_F(ListViewTest, ADragOverTheRowsSelectsNoOther) {
  fill(5);
  show();
  auto* viewport = list_.viewport();
  QTest::mousePress(viewport, Qt::LeftButton, {}, list_.cellRect(list_.itemAt(1)).center());
  QTest::mouseMove(viewport, list_.cellRect(list_.itemAt(3)).center());
  QTest::mouseRelease(viewport, Qt::LeftButton, {}, list_.cellRect(list_.itemAt(3)).center());
  EXPECT_EQ(selectedRow(), 1);
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"click r1"_s, u"up 1"_s}));
}

TEST_F(ListViewTest, ADoubleClickIsTwoPresses) {
  fill(3);
  show();
  auto* viewport = list_.viewport();
  const auto doubleClick = [&](const QPoint& place) {
    QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, place);
  };
  doubleClick(list_.cellRect(list_.itemAt(1)).center());
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"click r1"_s, u"up 1"_s, u"down 1"_s, u"click r1"_s,
                                  u"up 1"_s}));
  events_.clear();
  doubleClick(list_.checkRect(list_.itemAt(1)).center());
  EXPECT_FALSE(list_.itemAt(1)->isChecked());
  EXPECT_EQ(events_.filter(u"check"_s).size(), 2);
}

TEST_F(ListViewTest, ADoubleClickIsToldOnceWithItsButtonAlsoInEmptySpace) {
  fill(1);
  show();
  QObject::connect(&list_, &ListView::mouseDoubleClick, &list_,
                   [this](Qt::MouseButton button, const QPoint& place) {
                     const auto* item = list_.itemUnder(place);
                     events_ << u"double %1 %2"_s.arg(button).arg(item ? item->text() : QString());
                   });
  auto* viewport = list_.viewport();
  QTest::mouseDClick(viewport, Qt::LeftButton, {}, list_.cellRect(list_.itemAt(0)).center());
  EXPECT_EQ(events_.filter(u"double"_s), QStringList{u"double 1 r0"_s});
  EXPECT_EQ(events_.last(), u"double 1 r0"_s) << "behind the press";
  events_.clear();
  QTest::mouseDClick(viewport, Qt::RightButton, {}, QPoint(20, 250));
  EXPECT_EQ(events_.filter(u"double"_s), QStringList{u"double 2 "_s});
}

TEST_F(ListViewTest, AReleaseWhosePressWasElsewhereIsNone) {
  fill(3);
  show();
  QTest::mouseRelease(list_.viewport(), Qt::LeftButton, {}, QPoint(20, 10));
  EXPECT_EQ(events_, QStringList{});
}

// Check boxes

TEST_F(ListViewTest, APressOnACheckBoxIsACheckAlone) {
  fill(5);
  show();
  const auto place = list_.checkRect(list_.itemAt(3)).center();
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"check r3 1"_s, u"up 1"_s}));
  EXPECT_EQ(selectedRow(), 0);
  EXPECT_TRUE(list_.itemAt(3)->isChecked());
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {}, place);
  EXPECT_FALSE(list_.itemAt(3)->isChecked());
}

TEST_F(ListViewTest, TheSpaceKeyTogglesTheCurrentRowsBox) {
  fill(5);
  show();
  list_.setSelectedItem(list_.itemAt(2));
  QTest::keyClick(&list_, Qt::Key_Space);
  EXPECT_EQ(events_, QStringList{u"check r2 1"_s});
  QTest::keyClick(&list_, Qt::Key_Space);
  EXPECT_EQ(events_.last(), u"check r2 0"_s);
  EXPECT_EQ(selectedRow(), 2);
}

TEST_F(ListViewTest, WithoutCheckBoxesSpaceAndTheLeftEdgeAreNothingSpecial) {
  list_.setCheckBoxes(false);
  fill(5);
  show();
  QTest::keyClick(&list_, Qt::Key_Space);
  EXPECT_EQ(events_, QStringList{});
  QTest::mouseClick(list_.viewport(), Qt::LeftButton, {},
                    list_.cellRect(list_.itemAt(1)).topLeft() + QPoint(8, 5));
  EXPECT_EQ(events_, (QStringList{u"down 1"_s, u"click r1"_s, u"up 1"_s}));
  EXPECT_FALSE(list_.itemAt(1)->isChecked());
}

TEST_F(ListViewTest, TheSpaceKeyInAnEmptyListIsHarmless) {
  show();
  QTest::keyClick(&list_, Qt::Key_Space);
  QTest::keyClick(&list_, Qt::Key_Down);
  EXPECT_EQ(events_, QStringList{});
}

// Keys and code

TEST_F(ListViewTest, AKeyThatMovesTheRowClicks) {
  fill(50);
  show();
  const std::pair<Qt::Key, int> moves[] = {
      {Qt::Key_Down, 1}, {Qt::Key_Up, 0}, {Qt::Key_End, 49}, {Qt::Key_Home, 0}};
  for (const auto& [key, row] : moves) {
    events_.clear();
    QTest::keyClick(&list_, key);
    EXPECT_EQ(events_, QStringList{u"click r%1"_s.arg(row)});
    EXPECT_EQ(selectedRow(), row);
  }
  events_.clear();
  QTest::keyClick(&list_, Qt::Key_Up);
  QTest::keyClick(&list_, Qt::Key_Left);
  QTest::keyClick(&list_, Qt::Key_Return);
  EXPECT_EQ(events_, QStringList{});
  QTest::keyClick(&list_, Qt::Key_Down, Qt::ControlModifier);
  QTest::keyClick(&list_, Qt::Key_PageDown);
  EXPECT_EQ(events_.size(), 2);
  EXPECT_GT(selectedRow(), 1);
}

TEST_F(ListViewTest, AClickKeyClicksTheSelectedRowWhichMayBeTheOnlyOne) {
  list_.setClickKeys({Qt::Key_Return, Qt::Key_Space});
  show();
  QTest::keyClick(&list_, Qt::Key_Return);
  EXPECT_EQ(events_, QStringList{}) << "of an empty list";
  fill(1);
  QTest::keyClick(&list_, Qt::Key_Return);
  QTest::keyClick(&list_, Qt::Key_Return, Qt::KeypadModifier);
  QTest::keyClick(&list_, Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(events_, QStringList({u"click r0"_s, u"click r0"_s}));
  events_.clear();
  QTest::keyClick(&list_, Qt::Key_Space);
  EXPECT_EQ(events_, QStringList{u"check r0 1"_s}) << "where there is a box it is the box's key";
  list_.setCheckBoxes(false);
  QTest::keyClick(&list_, Qt::Key_Space);
  EXPECT_EQ(events_.last(), u"click r0"_s);
}

TEST_F(ListViewTest, CodeRaisesNothing) {
  fill(400);
  show();
  auto* item = list_.itemAt(300);
  item->setText(u"new"_s);
  item->setKey(u"k"_s);
  item->setSubItem(1, u"s"_s);
  item->setIcon(u"Shxi"_s);
  item->setChecked(true);
  list_.setSelectedItem(item);
  list_.removeItem(list_.itemAt(0));
  list_.setSelectedItem(nullptr);
  list_.clearItems();
  EXPECT_EQ(events_, QStringList{});
}

TEST_F(ListViewTest, SelectingByCodeScrollsTheRowIntoView) {
  fill(5000);
  show();
  list_.setSelectedItem(list_.itemAt(4321));
  EXPECT_EQ(selectedRow(), 4321);
  EXPECT_TRUE(list_.viewport()->rect().contains(list_.cellRect(list_.itemAt(4321)).center()));
}

TEST_F(ListViewTest, ANewRowCanBeSelectedAtOnceInALongList) {
  fill(1000);
  auto* item = list_.addItem(QString(), u"新添商品"_s);
  item->setChecked(true);
  list_.setSelectedItem(item);
  EXPECT_EQ(list_.selectedItem(), item);
  EXPECT_EQ(list_.itemCount(), 1001);
}

TEST_F(ListViewTest, AForeignItemIsNotSelected) {
  ListView other(u"ListView2"_s);
  other.addColumn(u"x"_s, 10);
  auto* foreign = other.addItem(u"1"_s, u"x"_s);
  fill(2);
  list_.setSelectedItem(foreign);
  list_.removeItem(foreign);
  list_.removeItem(nullptr);
  EXPECT_EQ(selectedRow(), 0);
  EXPECT_EQ(list_.itemCount(), 2);
  EXPECT_EQ(other.itemCount(), 1);
}

TEST_F(ListViewTest, RemovingTheSelectedRowSelectsANeighbour) {
  fill(4);
  list_.setSelectedItem(list_.itemAt(2));
  list_.removeItem(list_.itemAt(2));
  EXPECT_EQ(selectedRow(), 2);
  EXPECT_EQ(list_.selectedItem()->text(), u"r3"_s);
  list_.removeItem(list_.selectedItem());
  EXPECT_EQ(list_.selectedItem()->text(), u"r1"_s);
  list_.removeItem(list_.itemAt(0));
  EXPECT_EQ(list_.selectedItem()->text(), u"r1"_s);
  EXPECT_EQ(selectedRow(), 0);
  list_.removeItem(list_.itemAt(0));
  EXPECT_EQ(list_.selectedItem(), nullptr);
  list_.addItem(u"k"_s, u"again"_s);
  EXPECT_EQ(selectedRow(), 0);
}

TEST_F(ListViewTest, ItemsKeepTheirAddressAndKnowTheirRow) {
  fill(1000);
  auto* item = list_.itemAt(700);
  for (int i = 0; i < 300; ++i) list_.removeItem(list_.itemAt(i));
  EXPECT_EQ(item->text(), u"r700"_s);
  EXPECT_EQ(list_.itemAt(item->row()), item);
  auto* reused = list_.addItem(u"new"_s, u"new"_s);
  EXPECT_EQ(reused->subItem(1), QString());
  EXPECT_EQ(reused->tag(), QString());
  EXPECT_FALSE(reused->isChecked());
  EXPECT_EQ(reused->row(), 700);
}

TEST_F(ListViewTest, AHandlerMayEmptyOrRefillTheList) {
  fill(5);
  show();
  QObject::connect(&list_, &ListView::itemClick, &list_, [this] { list_.clearItems(); });
  click(2);
  EXPECT_EQ(list_.itemCount(), 0);
  fill(5);
  QObject::connect(&list_, &ListView::mouseDown, &list_, [this] { list_.clearItems(); });
  click(2);
  fill(5);
  QObject::connect(&list_, &ListView::itemCheck, &list_, [this] { list_.clearItems(); });
  QTest::keyClick(&list_, Qt::Key_Space);
  EXPECT_EQ(list_.itemCount(), 0);
}

// What is shown

TEST_F(ListViewTest, TextsStandAsPlainTextInOneLine) {
  auto* item = list_.addItem(u"1"_s, u"<b>粗</b>\r\nsecond\tline"_s);
  const auto shown = list_.model()->index(0, 0).data().toString();
  EXPECT_EQ(shown, u"<b>粗</b> second line"_s);
  EXPECT_EQ(item->text(), u"<b>粗</b>\r\nsecond\tline"_s);
  EXPECT_FALSE(list_.model()->index(0, 0).data(Qt::ToolTipRole).isValid());
}

TEST_F(ListViewTest, AChangeOfOneRowPaintsThatRowAlone) {
  fill(10);
  show();
  QCoreApplication::processEvents();
  QRegion painted;
  class Watch : public QObject {
   public:
    explicit Watch(QRegion& region) : region_(region) {}
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) region_ += static_cast<QPaintEvent*>(event)->region();
      return false;
    }

   private:
    QRegion& region_;
  } watch(painted);
  list_.viewport()->installEventFilter(&watch);
  list_.itemAt(4)->setChecked(true);
  list_.itemAt(4)->setText(u"new"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !painted.isEmpty(); }));
  const auto row = list_.cellRect(list_.itemAt(4));
  EXPECT_TRUE(painted.boundingRect().intersects(row));
  EXPECT_LE(painted.boundingRect().height(), row.height() + 2);
}

TEST_F(ListViewTest, RowsOfALongFillAreThereWhenTheListIsLookedAt) {
  show();
  fill(3000);
  EXPECT_EQ(list_.itemCount(), 3000);
  EXPECT_FALSE(list_.grab().isNull());
  EXPECT_EQ(list_.model()->rowCount(), 3000);
  for (int i = 0; i < 10; ++i) list_.addItem(QString(), u"late"_s);
  EXPECT_TRUE(QTest::qWaitFor([this] { return list_.model()->rowCount() == 3010; }));
}

TEST_F(ListViewTest, AHeaderClickTellsItsColumn) {
  fill(2);
  show();
  QSignalSpy clicked(&list_, &ListView::columnClick);
  auto* header = list_.header();
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                    QPoint(header->sectionViewportPosition(1) + 20, header->height() / 2));
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_EQ(clicked.first().first().toInt(), 1);
}

TEST_F(ListViewTest, ClearedColumnsLeaveTheRowsWithAllTheirCells) {
  QAbstractItemModelTester tester(list_.model(),
                                  QAbstractItemModelTester::FailureReportingMode::Fatal);
  fill(3);
  list_.itemAt(1)->setSubItem(9, u"beyond the headers"_s);
  show();
  list_.clearColumns();
  list_.clearColumns();
  EXPECT_EQ(list_.model()->columnCount(), 0);
  EXPECT_EQ(list_.itemCount(), 3);
  list_.addItem(QString(), u"without a header"_s);
  EXPECT_FALSE(list_.grab().isNull());
  list_.addColumn(u"又一列"_s, 70);
  EXPECT_EQ(list_.itemAt(1)->subItem(9), u"beyond the headers"_s);
  EXPECT_EQ(list_.model()->headerData(0, Qt::Horizontal, Qt::DisplayRole), u"又一列"_s);
  EXPECT_EQ(list_.columnWidth(0), 70);
  list_.clearItems();
  list_.clearColumns();
  EXPECT_FALSE(list_.grab().isNull());
}

TEST_F(ListViewTest, ColumnWidthsAreTaken) {
  list_.addColumn(u"c"_s, 30);
  list_.setColumnWidths({120, 60, 40, 999});
  EXPECT_EQ(list_.columnWidth(0), 120);
  EXPECT_EQ(list_.columnWidth(1), 60);
}

#include <QHeaderView>
#include <QScrollBar>
#include <numeric>

#include "forms/FormsFixture.h"
#include "forms/ListView.h"
#include "forms/spread_widths.h"

using namespace Qt::StringLiterals;
using qinghe::ColumnRoom;
using qinghe::ListView;
using qinghe::spreadWidths;

namespace {

struct SpreadCase {
  const char* name;
  QList<ColumnRoom> columns;
  int room;
  QList<int> widths;
};

class SpreadWidths : public testing::TestWithParam<SpreadCase> {};

const QList<SpreadCase>& spreadCases() {
  static const QList<SpreadCase> cases{
      {"NoColumns", {}, 300, {}},
      {"NoRoom", {{100, 150}, {200, 0}}, 300, {100, 200}},
      {"TooLittleRoom", {{100, 150}, {200, 0}}, 120, {100, 200}},
      {"NegativeRoom", {{100, 0}}, -1, {100}},
      {"OnlyEmptyColumns", {{0, 50}}, 300, {0}},
      {"InProportion", {{100, 0}, {200, 200}}, 600, {200, 400}},
      {"NoPixelIsLost", {{100, 0}, {100, 0}, {100, 0}}, 400, {133, 133, 134}},
      {"TheCutColumnFirst", {{100, 140}, {200, 0}}, 320, {120, 200}},
      {"TheRestInProportion", {{100, 140}, {200, 0}}, 370, {150, 220}},
      {"TheLeastCutOfAllFirst", {{100, 900}, {100, 110}}, 240, {130, 110}},
      {"NeverNarrowerForAnother", {{100, 900}, {100, 20}}, 250, {150, 100}},
      {"VeryWide", {{1, 2000000000}, {1, 0}}, 2000000000, {1999999999, 1}}};
  return cases;
}

TEST_P(SpreadWidths, FillTheRoom) {
  EXPECT_EQ(spreadWidths(GetParam().columns, GetParam().room), GetParam().widths);
}

INSTANTIATE_TEST_SUITE_P(Cases, SpreadWidths, testing::ValuesIn(spreadCases()),
                         [](const auto& tested) { return tested.param.name; });

class SpreadList : public testing::Test {
 protected:
  SpreadList() {
    list_.addColumn(u"商品"_s, 100);
    list_.addColumn(u"编号"_s, 50);
    list_.addColumn(u"类别"_s, 80);
    list_.setColumnHidden(2, true);
    list_.addColumn({}, 0);
    list_.setSpreadsColumns(true);
    list_.resize(600, 200);
    list_.show();
  }

  QList<int> widths() const {
    QList<int> all;
    for (int column = 0; column < 4; ++column) all << list_.columnWidth(column);
    return all;
  }

  int room() const { return list_.viewport()->width(); }

  int totalWidth() const {
    const auto all = widths();
    return std::accumulate(all.cbegin(), all.cend(), 0);
  }

  void dragEdge(int column, int by) {
    auto* header = list_.header();
    const int edge = header->sectionViewportPosition(column) + header->sectionSize(column) - 1;
    const QPoint from(edge, header->height() / 2);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(header->viewport(), from + QPoint(by, 0));
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, from + QPoint(by, 0));
  }

  ListView list_{u"ListView1"_s};
};

TEST_F(SpreadList, ShownColumnsFillItInProportion) {
  EXPECT_EQ(totalWidth(), room());
  EXPECT_NEAR(list_.columnWidth(0), 2 * list_.columnWidth(1), 2);
  EXPECT_EQ(list_.columnWidth(2), 0);
  EXPECT_EQ(list_.columnWidth(3), 0);
}

TEST_F(SpreadList, FollowsTheSizeOfTheList) {
  list_.resize(800, 200);
  EXPECT_EQ(totalWidth(), room());
  list_.resize(120, 200);
  EXPECT_EQ(widths(), (QList<int>{100, 50, 0, 0}));
  EXPECT_GT(list_.horizontalScrollBar()->maximum(), 0);
  list_.resize(400, 200);
  EXPECT_EQ(totalWidth(), room());
  EXPECT_EQ(list_.horizontalScrollBar()->maximum(), 0);
}

TEST_F(SpreadList, LeavesTheRoomOfTheScrollBar) {
  const int before = room();
  for (int row = 0; row < 50; ++row) list_.addItem({}, u"row"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return room() < before && totalWidth() == room(); }));
}

TEST_F(SpreadList, ShowsATextWholeThatItsColumnWouldCut) {
  list_.addItem({}, u"砖石的语言"_s)->setSubItem(1, QString(50, u'8'));
  const int needed = list_.fontMetrics().horizontalAdvance(QString(50, u'8'));
  EXPECT_TRUE(QTest::qWaitFor([&] { return list_.columnWidth(1) > needed; }));
  EXPECT_EQ(totalWidth(), room());
  EXPECT_GE(list_.columnWidth(0), 100);
}

TEST_F(SpreadList, TypingInACellMovesNoColumn) {
  auto* row = list_.addItem({}, u"砖石的语言"_s);
  QCoreApplication::processEvents();
  const auto before = widths();
  row->setSubItem(1, QString(50, u'8'));
  QCoreApplication::processEvents();
  EXPECT_EQ(widths(), before);
}

TEST_F(SpreadList, StopsWhenTheUserMovesAnEdgeUntilTheColumnsAreMadeAnew) {
  dragEdge(0, -60);
  const auto moved = widths();
  EXPECT_LT(moved[0] + moved[1], room());
  list_.resize(700, 200);
  list_.addItem({}, QString(50, u'8'));
  QCoreApplication::processEvents();
  EXPECT_EQ(widths(), moved);
  list_.clearColumns();
  list_.addColumn(u"商品"_s, 100);
  EXPECT_EQ(list_.columnWidth(0), room());
}

TEST_F(SpreadList, APressOnATitleMovesNoEdge) {
  dragEdge(0, 0);
  list_.resize(700, 200);
  EXPECT_EQ(totalWidth(), room());
}

TEST_F(SpreadList, WidthsThatCodeTellsAreSpreadToo) {
  list_.setColumnWidth(1, 100);
  EXPECT_EQ(totalWidth(), room());
  EXPECT_NEAR(list_.columnWidth(0), list_.columnWidth(1), 1);
  list_.setColumnHidden(2, false);
  list_.setColumnWidths({50, 50, 100});
  EXPECT_EQ(totalWidth(), room());
  EXPECT_NEAR(list_.columnWidth(2), room() / 2, 2);
  list_.setColumnWidth(99, 10);
  list_.setColumnWidth(-1, 10);
  EXPECT_EQ(totalWidth(), room());
}

TEST_F(SpreadList, TakesTheWidthsBackWhenItIsTurnedOff) {
  list_.setSpreadsColumns(false);
  EXPECT_EQ(widths(), (QList<int>{100, 50, 0, 0}));
  list_.resize(700, 200);
  EXPECT_EQ(widths(), (QList<int>{100, 50, 0, 0}));
}

class FilledList : public SpreadList {
 protected:
  FilledList() {
    list_.setSpreadsColumns(false);
    list_.setFillingColumn(0, 60);
  }
};

TEST_F(FilledList, OneColumnFollowsTheSizeOfTheList) {
  EXPECT_EQ(widths(), (QList<int>{room() - 60, 50, 0, 0}));
  list_.resize(300, 200);
  EXPECT_EQ(widths(), (QList<int>{room() - 60, 50, 0, 0}));
  list_.resize(40, 200);
  EXPECT_GT(list_.columnWidth(0), 0) << "there is no room left";
  list_.resize(500, 200);
  EXPECT_EQ(list_.columnWidth(0), room() - 60);
}

TEST_F(FilledList, OneColumnLeavesTheRoomOfTheScrollBar) {
  const int before = room();
  for (int row = 0; row < 50; ++row) list_.addItem({}, u"row"_s);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return room() < before && list_.columnWidth(0) == room() - 60; }));
  EXPECT_EQ(list_.horizontalScrollBar()->maximum(), 0);
}

TEST_F(FilledList, StopsWhenTheUserMovesAnEdge) {
  dragEdge(0, -100);
  const int moved = list_.columnWidth(0);
  EXPECT_LT(moved, room() - 60);
  list_.resize(300, 200);
  EXPECT_EQ(list_.columnWidth(0), moved);
}

TEST_F(SpreadList, StaysAsToldWhenNobodyAskedForIt) {
  ListView plain(u"ListView2"_s);
  plain.addColumn(u"商品"_s, 100);
  plain.resize(600, 200);
  plain.show();
  plain.addItem({}, QString(50, u'8'));
  QCoreApplication::processEvents();
  EXPECT_EQ(plain.columnWidth(0), 100);
}

}  // namespace

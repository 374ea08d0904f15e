#include "reports/engine/PageLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "support/cpu_time.h"
#include "tests/reports/engine/ReportFixtures.h"
#include "values/failure.h"

using namespace qinghe;
using namespace fixtures;
using Kind = ReportBox::Kind;

namespace {

TEST(PageLayout, FillsPagesAtExactOneBelowAndOneAbove) {
  const struct {
    int rows;
    int pages;
    QString last;
  } cases[] = {
      {1, 1, u"1"_s},   {2, 1, u"1 2"_s},   {3, 1, u"1 2 3"_s}, {4, 2, u"4"_s},
      {5, 2, u"4 5"_s}, {6, 2, u"4 5 6"_s}, {7, 3, u"7"_s},
  };
  for (const auto& c : cases) {
    PageLayout pages(flatLayout(), numbers(c.rows), kDay, paperWithBody(30));
    EXPECT_EQ(pages.pageCount(), c.pages) << c.rows;
    EXPECT_EQ(pagesOf(pages).last(), c.last) << c.rows;
  }
}

TEST(PageLayout, CountsTenthsOfMillimetresWithoutLosingARow) {
  ReportLayout layout = flatLayout();
  layout.detail.height = 0.1;
  for (int rows = 1; rows <= 300; ++rows) {
    PageLayout exact(layout, numbers(rows), kDay, paperWithBody(rows * 0.1));
    EXPECT_EQ(exact.pageCount(), 1) << rows;
    PageLayout above(layout, numbers(rows + 1), kDay, paperWithBody(rows * 0.1));
    EXPECT_EQ(above.pageCount(), 2) << rows;
  }
}

TEST(PageLayout, PlacesBoxesInMillimetresFromThePaperCorner) {
  ReportLayout layout = flatLayout();
  layout.reportHeader = section(7, {box(Kind::Label, u"标题"_s, 4)});
  layout.pageHeader = section(6, {box(Kind::Label, u"列"_s)});
  layout.pageFooter = section(5, {box(Kind::Label, u"%p/%P"_s)});
  PageLayout pages(layout, numbers(3), kDay, paperWithBody(50));
  const ReportPage first = pages.page(0);
  const ReportPage second = pages.page(1);
  ASSERT_EQ(textsOf(first), (QStringList{u"标题"_s, u"列"_s, u"1/1"_s, u"1"_s, u"2"_s, u"3"_s}));
  EXPECT_TRUE(second.boxes.empty());
  EXPECT_EQ(first.boxes[0].rect, QRectF(14, 10, 30, 5));
  EXPECT_EQ(first.boxes[1].rect, QRectF(10, 17, 30, 5));
  EXPECT_EQ(first.boxes[2].rect, QRectF(10, 55, 30, 5));
  EXPECT_EQ(first.boxes[3].rect, QRectF(10, 23, 30, 5));
  EXPECT_EQ(first.boxes[5].rect, QRectF(10, 43, 30, 5));
}

TEST(PageLayout, RepeatsPageHeaderAndFooterAndPrintsReportHeaderAndFooterOnce) {
  ReportLayout layout = flatLayout();
  layout.reportHeader = section(10, {box(Kind::Label, u"头"_s)});
  layout.pageHeader = section(10, {box(Kind::Label, u"列"_s)});
  layout.pageFooter = section(10, {box(Kind::Label, u"%p of %P, %D"_s)});
  layout.reportFooter = section(10, {box(Kind::Sum, u"n"_s)});
  PageLayout pages(layout, numbers(4), kDay, paperWithBody(50));
  EXPECT_EQ(pagesOf(pages),
            (QStringList{u"头 列 1 of 2, 2024-3-9 1 2"_s, u"列 2 of 2, 2024-3-9 3 4 10"_s}));
}

TEST(PageLayout, MovesTotalsThatDoNotFitToTheNextPageTogetherWithTheLastRow) {
  ReportLayout layout = flatLayout();
  layout.reportFooter = section(15, {box(Kind::Sum, u"n"_s)});
  const struct {
    int rows;
    QStringList pages;
  } cases[] = {
      {1, {u"1 1"_s}},
      {2, {u"1"_s, u"2 3"_s}},
      {3, {u"1 2"_s, u"3 6"_s}},
      {4, {u"1 2 3"_s, u"4 10"_s}},
  };
  for (const auto& c : cases) {
    PageLayout pages(layout, numbers(c.rows), kDay, paperWithBody(30));
    EXPECT_EQ(pagesOf(pages), c.pages) << c.rows;
  }
}

TEST(PageLayout, PrintsOnlyHeadersWithoutRows) {
  ReportLayout layout = flatLayout();
  layout.reportHeader = section(10, {box(Kind::Label, u"头"_s)});
  layout.pageHeader = section(10, {box(Kind::Label, u"列"_s)});
  layout.reportFooter = section(10, {box(Kind::Sum, u"n"_s)});
  for (const ShapedSetPtr& data : {ShapedSetPtr(), ShapedSetPtr(numbers(0))}) {
    PageLayout pages(layout, data, kDay, paperWithBody(50));
    EXPECT_EQ(pagesOf(pages), QStringList{u"头 列"_s});
  }
}

TEST(PageLayout, MakesOneEmptyPageOfAnEmptyLayout) {
  PageLayout pages(ReportLayout(), numbers(5), kDay);
  EXPECT_EQ(pages.pageCount(), 1);
  EXPECT_TRUE(pages.page(0).boxes.empty());
}

TEST(PageLayout, LeavesFieldsEmptyThatDoNotExist) {
  ReportLayout layout = flatLayout();
  layout.detail.boxes.push_back(box(Kind::Field, u"nowhere"_s));
  ReportBox foreign = box(Kind::Field, u"n"_s);
  foreign.member = u"no_such_set"_s;
  layout.detail.boxes.push_back(foreign);
  layout.detail.boxes.push_back(box(Kind::Sum, u"nowhere"_s));
  PageLayout pages(layout, numbers(1), kDay);
  EXPECT_EQ(textsOf(pages.page(0)), (QStringList{u"1"_s, QString(), QString(), QString()}));
}

TEST(PageLayout, LeavesFieldsOfTheReportsOwnSectionsEmpty) {
  ReportLayout layout = flatLayout();
  layout.reportFooter = section(10, {box(Kind::Field, u"n"_s), box(Kind::Sum, u"n"_s)});
  PageLayout pages(layout, numbers(2), kDay);
  EXPECT_EQ(textsOf(pages.page(0)), (QStringList{u"1"_s, u"2"_s, QString(), u"3"_s}))
      << "there is no row to take them from";
}

TEST(PageLayout, KeepsTextFromDataAsItIs) {
  auto data = memorySet({}, {u"n"_s}, {{u"<b>%p &amp; 100%</b>\n二"_s}});
  PageLayout pages(flatLayout(), data, kDay);
  EXPECT_EQ(textsOf(pages.page(0)), QStringList{u"<b>%p &amp; 100%</b>\n二"_s});
}

// ---- groups

ReportLayout groupedLayout() {
  ReportLayout layout = flatLayout();
  layout.groups = {{u"outer"_s, section(10, {box(Kind::Field, u"name"_s)}),
                    section(10, {box(Kind::Sum, u"n"_s)})}};
  layout.detailMember = u"LINES"_s;
  return layout;
}

std::shared_ptr<MemorySet> grouped(const QList<int>& sizes) {
  auto top = memorySet(u"outer"_s, {u"name"_s});
  int group = 0;
  for (const int size : sizes) {
    top->add({u"G%1"_s.arg(++group)});
    top->hang(numbers(size, u"lines"_s));
  }
  return top;
}

TEST(PageLayout, PrintsEachGroupWithHeaderRowsAndFooter) {
  PageLayout pages(groupedLayout(), grouped({2, 0, 1}), kDay, paperWithBody(500));
  EXPECT_EQ(pagesOf(pages), QStringList{u"G1 1 2 3 G2 0 G3 1 1"_s});
}

TEST(PageLayout, KeepsAGroupHeaderWithItsFirstRow) {
  // The first group takes 30; a header and a row need 20 more.
  const struct {
    double body;
    QStringList pages;
  } cases[] = {
      {40, {u"G1 1 1"_s, u"G2 1 2 3"_s}}, {49, {u"G1 1 1"_s, u"G2 1 2 3"_s}},
      {50, {u"G1 1 1 G2 1"_s, u"2 3"_s}}, {60, {u"G1 1 1 G2 1"_s, u"2 3"_s}},
      {70, {u"G1 1 1 G2 1 2 3"_s}},
  };
  for (const auto& c : cases) {
    PageLayout pages(groupedLayout(), grouped({1, 2}), kDay, paperWithBody(c.body));
    EXPECT_EQ(pagesOf(pages), c.pages) << c.body;
  }
}

TEST(PageLayout, KeepsTheLastRowWithTheFooterThatNamesIt) {
  const struct {
    QList<int> sizes;
    double body;
    QStringList pages;
  } cases[] = {
      {{3}, 40, {u"G1 1 2"_s, u"3 6"_s}},
      {{3}, 50, {u"G1 1 2 3 6"_s}},
      {{1, 1}, 50, {u"G1 1 1"_s, u"G2 1 1"_s}},
      {{1, 1}, 60, {u"G1 1 1 G2 1 1"_s}},
      // Pages too small for a header, a row and a footer.
      {{1}, 25, {u"G1"_s, u"1 1"_s}},
      {{2}, 10, {u"G1"_s, u"1"_s, u"2"_s, u"3"_s}},
  };
  for (const auto& c : cases) {
    PageLayout pages(groupedLayout(), grouped(c.sizes), kDay, paperWithBody(c.body));
    EXPECT_EQ(pagesOf(pages), c.pages) << c.body;
  }
}

/// Groups of groups with rows, a footer at each level, and the totals: each prints its own word and
/// is 10 high.
ReportLayout nestedLayout() {
  ReportLayout layout = groupedLayout();
  layout.groups[0].header = {};
  layout.groups[0].footer = section(10, {box(Kind::Label, u"inner"_s)});
  layout.groups.insert(layout.groups.begin(),
                       {u"all"_s, {}, section(10, {box(Kind::Label, u"outer"_s)})});
  layout.reportFooter = section(10, {box(Kind::Label, u"totals"_s)});
  return layout;
}

std::shared_ptr<MemorySet> nested(const QList<QList<int>>& sizes) {
  auto top = memorySet(u"all"_s, {u"key"_s});
  for (const auto& inner : sizes) {
    top->add({u"A"_s});
    top->hang(grouped(inner));
  }
  return top;
}

TEST(PageLayout, KeepsTheLastRowWithTheFootersOfAllLevelsThatCloseBehindIt) {
  const struct {
    QList<QList<int>> sizes;
    double body;
    QStringList pages;
  } cases[] = {
      // The outer footer is on the page of the row that it closes, and so are the totals.
      {{{3}, {1}}, 50, {u"1 2 3 inner outer"_s, u"1 inner outer totals"_s}},
      {{{3}, {1}}, 49, {u"1 2"_s, u"3 inner outer"_s, u"1 inner outer totals"_s}},
      {{{3}, {1}}, 40, {u"1 2"_s, u"3 inner outer"_s, u"1 inner outer totals"_s}},
      {{{2}}, 50, {u"1 2 inner outer totals"_s}},
      {{{2}}, 49, {u"1"_s, u"2 inner outer totals"_s}},
      // Only the last of the inner groups closes the outer one.
      {{{1, 1}, {1}}, 50, {u"1 inner 1 inner outer"_s, u"1 inner outer totals"_s}},
      {{{1, 1}, {1}}, 49, {u"1 inner"_s, u"1 inner outer"_s, u"1 inner outer totals"_s}},
      {{{2, 1}, {1}}, 40, {u"1 2 inner"_s, u"1 inner outer"_s, u"1 inner outer totals"_s}},
      // Groups without rows close together, too.
      {{{1, 0}}, 40, {u"1 inner"_s, u"inner outer totals"_s}},
      {{{1}, {}}, 40, {u"1 inner outer"_s, u"outer totals"_s}},
      {{{1}, {0}}, 40, {u"1 inner outer"_s, u"inner outer totals"_s}},
      // Pages too small for a row with all of them.
      {{{2}}, 30, {u"1 2"_s, u"inner outer totals"_s}},
  };
  for (const auto& c : cases) {
    PageLayout pages(nestedLayout(), nested(c.sizes), kDay, paperWithBody(c.body));
    EXPECT_EQ(pagesOf(pages), c.pages) << c.body;
  }
}

TEST(PageLayout, LetsNoFooterOfTheStatisticsBeginAPage) {
  const QStringList columns = {u"SHLI"_s, u"JINE"_s, u"YNSH"_s, u"thsl"_s, u"thje"_s, u"thys"_s};
  auto top = memorySet(u"Cmd_goku_lebi"_s, {u"LEBI"_s});
  for (int category = 0; category < 90; ++category) {
    top->add({u"类%1"_s.arg(category)});
    auto goods = memorySet(u"Cmd_goku_lebi_ximu"_s, {u"XIMU"_s});
    for (int i = 0; i <= category % 4; ++i) {
      goods->add({u"书%1"_s.arg(i)});
      auto lines = memorySet(u"Cmd_goku_lebi_ximu_goku"_s, columns);
      for (int k = 0; k <= category % 3; ++k) lines->add({1, 2, 2, 0, 0, 0});
      goods->hang(lines);
    }
    top->hang(goods);
  }
  PageLayout pages(rptGOKU_LEBI(), top, kDay);
  ASSERT_GT(pages.pageCount(), 10);
  for (int i = 0; i < pages.pageCount(); ++i) {
    const ReportPage page = pages.page(i);
    const auto first = std::ranges::find_if(page.boxes, [](const PlacedBox& placed) {
      return placed.box->kind == Kind::Field || placed.box->kind == Kind::Sum;
    });
    ASSERT_NE(first, page.boxes.end());
    EXPECT_EQ(first->box->field, u"shli"_s) << "a line begins page " << i + 1;
    EXPECT_EQ(first->box->kind, Kind::Field);
  }
}

TEST(PageLayout, KeepsHeadersOfAllLevelsWithTheFirstRow) {
  ReportLayout layout = groupedLayout();
  layout.groups.insert(layout.groups.begin(),
                       {u"all"_s, section(10, {box(Kind::Field, u"key"_s)}), {}});
  auto top = memorySet(u"all"_s, {u"key"_s});
  top->add({u"A"_s});
  top->hang(grouped({1}));
  top->add({u"B"_s});
  top->hang(grouped({1}));
  // A, G1, 1, 1 take 40; the next two headers alone would fit into 60, with their row they do not.
  PageLayout pages(layout, top, kDay, paperWithBody(60));
  EXPECT_EQ(pagesOf(pages), (QStringList{u"A G1 1 1"_s, u"B G1 1 1"_s}));
}

TEST(PageLayout, KeepsAHeaderTogetherWithTheFullBodyOfALaterPageInMind) {
  ReportLayout layout = groupedLayout();
  layout.reportHeader = section(35, {box(Kind::Label, u"头"_s)});
  PageLayout pages(layout, grouped({1}), kDay, paperWithBody(50));
  EXPECT_EQ(pagesOf(pages), (QStringList{u"头"_s, u"G1 1 1"_s}));
}

TEST(PageLayout, FindsRowsOfAnAncestorByItsMemberName) {
  ReportLayout layout = groupedLayout();
  ReportBox parent = box(Kind::Field, u"NAME"_s);
  parent.member = u"OUTER"_s;
  layout.detail.boxes.push_back(parent);
  PageLayout pages(layout, grouped({2}), kDay);
  EXPECT_EQ(pagesOf(pages), QStringList{u"G1 1 G1 2 G1 3"_s});
}

TEST(PageLayout, LeavesAFieldOfALowerLevelEmptyInAnEmptyGroup) {
  ReportLayout layout = groupedLayout();
  ReportBox line = box(Kind::Field, u"n"_s);
  line.member = u"lines"_s;
  layout.groups[0].footer.boxes.push_back(line);
  PageLayout pages(layout, grouped({0}), kDay);
  EXPECT_EQ(textsOf(pages.page(0)), (QStringList{u"G1"_s, u"0"_s, QString()}));
}

TEST(PageLayout, AddsUpTenthsOfMillimetresOverGroupsWithoutLosingASection) {
  ReportLayout layout = groupedLayout();
  layout.groups[0].header.height = 0.1;
  layout.detail.height = 0.1;
  layout.groups[0].footer.height = 0.1;
  for (int groups = 1; groups <= 60; ++groups) {
    PageLayout pages(layout, grouped(QList<int>(groups, 1)), kDay, paperWithBody(groups * 0.3));
    EXPECT_EQ(pages.pageCount(), 1) << groups;
  }
}

TEST(PageLayout, PrintsGroupsWhoseChildSetIsMissing) {
  auto top = memorySet(u"outer"_s, {u"name"_s}, {{u"G1"_s}});
  PageLayout pages(groupedLayout(), top, kDay);
  EXPECT_EQ(pagesOf(pages), QStringList{u"G1 0"_s});
}

// ---- hostile layouts

TEST(PageLayout, EndsWithSectionsTallerThanAPage) {
  for (const double height : {30.1, 31.0, 5000.0, 1e300, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(), -5.0}) {
    ReportLayout layout = groupedLayout();
    layout.groups[0].header.height = height;
    layout.detail.height = height;
    layout.groups[0].footer.height = height;
    PageLayout pages(layout, grouped({3, 3}), kDay, paperWithBody(30));
    EXPECT_LE(pages.pageCount(), 10) << height;
    EXPECT_NO_THROW(pagesOf(pages));
  }
}

TEST(PageLayout, PutsOneSectionOnAPageThatHeaderAndFooterLeaveNoRoomOn) {
  ReportLayout layout = flatLayout();
  layout.pageHeader = section(400, {box(Kind::Label, u"h"_s)});
  layout.pageFooter = section(400, {box(Kind::Label, u"f"_s)});
  PageLayout pages(layout, numbers(5), kDay, paperWithBody(30));
  EXPECT_EQ(pages.pageCount(), 5);
  EXPECT_NO_THROW(pagesOf(pages));
}

TEST(PageLayout, CutsOffWhatATallSectionHasBelowThePage) {
  ReportLayout layout = flatLayout();
  layout.detail.height = 100;
  layout.detail.boxes[0].height = 100;
  ReportBox below = box(Kind::Field, u"n"_s);
  below.y = 60;
  layout.detail.boxes.push_back(below);
  layout.pageFooter = section(10, {box(Kind::Label, u"f"_s)});
  PageLayout pages(layout, numbers(2), kDay, paperWithBody(60));
  EXPECT_EQ(pages.pageCount(), 2);
  const ReportPage page = pages.page(0);
  ASSERT_EQ(textsOf(page), (QStringList{u"f"_s, u"1"_s}));
  EXPECT_EQ(page.boxes[1].rect, QRectF(10, 10, 30, 50));
}

TEST(PageLayout, NarrowsBoxesToThePaper) {
  ReportLayout layout = flatLayout();
  layout.detail.boxes[0].x = 70;
  layout.detail.boxes.push_back(box(Kind::Field, u"n"_s, 200));
  PageLayout pages(layout, numbers(1), kDay, paperWithBody(60));
  const ReportPage page = pages.page(0);
  ASSERT_EQ(page.boxes.size(), 1U);
  EXPECT_EQ(page.boxes[0].rect.right(), 90);
}

// ---- laziness

TEST(PageLayout, FindsPagesOfAHundredThousandLinesWithoutReadingThem) {
  const auto data = numbers(100000);
  const double before = workedMilliseconds();
  PageLayout pages(rptXIMU(), data, kDay);
  EXPECT_GT(pages.pageCount(), 2000);
  EXPECT_LT(workedMilliseconds() - before, 1000);
  EXPECT_EQ(data->valuesRead, 0);
}

TEST(PageLayout, ReadsOnlyTheRowsOfThePageLookedAt) {
  const auto data = numbers(100000);
  PageLayout pages(flatLayout(), data, kDay, paperWithBody(30));
  EXPECT_EQ(textsOf(pages.page(20000)), (QStringList{u"60001"_s, u"60002"_s, u"60003"_s}));
  EXPECT_EQ(data->valuesRead, 3);
}

/// Groups of which the second cannot be read as long as the store is busy.
class BusySet : public MemorySet {
 public:
  BusySet() : MemorySet(u"outer"_s, {u"name"_s}) {}
  std::shared_ptr<const ShapedSet> child(qint64 row, const QString& name) const override {
    if (busy && row == 1) throw Failure(5, u"busy"_s);
    return MemorySet::child(row, name);
  }
  bool busy = false;
};

TEST(PageLayout, GoesOnFindingPagesAfterAFailureAsIfNothingHadHappened) {
  const auto data = std::make_shared<BusySet>();
  for (int i = 0; i < 3; ++i) {
    data->add({u"G%1"_s.arg(i)});
    data->hang(numbers(4, u"lines"_s));
  }
  PageLayout pages(groupedLayout(), data, kDay, paperWithBody(60));
  EXPECT_EQ(pages.knownPages(), 1);
  data->busy = true;
  EXPECT_THROW(pages.findPages(10), Failure);
  EXPECT_EQ(pages.knownPages(), 1);
  data->busy = false;
  EXPECT_EQ(pagesOf(pages),
            (QStringList{u"G0 1 2 3 4 10"_s, u"G1 1 2 3 4 10"_s, u"G2 1 2 3 4 10"_s}));
}

TEST(PageLayout, ShowsTheFirstPageBeforeTheLastIsFound) {
  ReportLayout layout = flatLayout();
  layout.pageFooter = section(10, {box(Kind::Label, u"%p/%P"_s)});
  PageLayout pages(layout, numbers(90), kDay, paperWithBody(40));
  EXPECT_EQ(pages.knownPages(), 1);
  EXPECT_EQ(textsOf(pages.page(0)).first(), u"1/"_s);
  EXPECT_TRUE(pages.findPages(5));
  EXPECT_EQ(pages.knownPages(), 6);
  while (pages.findPages(5)) {
  }
  EXPECT_TRUE(pages.isComplete());
  EXPECT_EQ(pages.knownPages(), 30);
  EXPECT_EQ(textsOf(pages.page(0)).first(), u"1/30"_s);
}

TEST(PageLayout, MakesThePagesOfGroupsInAnyOrder) {
  PageLayout forward(groupedLayout(), grouped({7, 3, 12, 1, 5}), kDay, paperWithBody(50));
  PageLayout backward(groupedLayout(), grouped({7, 3, 12, 1, 5}), kDay, paperWithBody(50));
  const QStringList expected = pagesOf(forward);
  QStringList pages;
  for (int i = backward.pageCount() - 1; i >= 0; --i) {
    pages.prepend(textsOf(backward.page(i)).join(u' '));
  }
  EXPECT_EQ(pages, expected);
  EXPECT_EQ(
      expected.join(u' '),
      u"G1 1 2 3 4 5 6 7 28 G2 1 2 3 6 G3 1 2 3 4 5 6 7 8 9 10 11 12 78 G4 1 1 G5 1 2 3 4 5 15"_s);
}

}  // namespace

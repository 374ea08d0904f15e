#include <gtest/gtest.h>

#include "tests/reports/engine/ReportFixtures.h"

using namespace qinghe;
using namespace fixtures;
using Kind = ReportBox::Kind;

namespace {

/// The texts of the boxes that stand in sections of the layout with the given name or field.
QString textOfNamed(const ReportPage& page, const QString& name) {
  for (const auto& placed : page.boxes) {
    if (placed.box->name == name) return placed.text;
  }
  return u"<none>"_s;
}

/// The sums of a page line by line, as they stand from the left.
QStringList sumLines(const ReportPage& page) {
  QStringList lines;
  double y = -1;
  for (const auto& placed : page.boxes) {
    if (placed.box->kind != Kind::Sum) continue;
    if (placed.rect.y() != y) lines << QString();
    y = placed.rect.y();
    lines.last() += (lines.last().isEmpty() ? u""_s : u" "_s) + placed.text;
  }
  return lines;
}

TEST(GroupSums, SumsLinesAtGoodsGroupAndReportAndStopsQuantitiesAtTheGoods) {
  PageLayout pages(rptGOKU_LEBI(), statisticsTree(), kDay);
  ASSERT_EQ(pages.pageCount(), 1);
  EXPECT_EQ(
      sumLines(pages.page(0)),
      (QStringList{u"5.000 126.250 0.000 0.000 100.750 0.000"_s,
                   u"6.000 120.000 -4.000 -80.000 90.000 -60.000"_s,
                   u"246.250 -80.000 190.750 -60.000"_s, u"1.000 99.999 0.000 0.000 80.000 0.000"_s,
                   u"99.999 0.000 80.000 0.000"_s, u"346.249 -80.000 270.750 -60.000"_s}));
  EXPECT_EQ(textOfNamed(pages.page(0), u"txtlebi"_s), u"文学"_s);
  EXPECT_EQ(textOfNamed(pages.page(0), u"Label13"_s), u"总计"_s);
}

TEST(GroupSums, ReadsEachValueOnceHoweverOftenSumsAreLookedAt) {
  auto lines = numbers(1000, u"lines"_s);
  auto top = memorySet(u"outer"_s, {u"name"_s}, {});
  top->add({u"G"_s});
  top->hang(lines);
  ReportLayout layout;
  layout.groups = {
      {u"outer"_s, section(10, {box(Kind::Sum, u"n"_s)}), section(10, {box(Kind::Sum, u"N"_s)})}};
  layout.detailMember = u"lines"_s;
  layout.reportFooter = section(10, {box(Kind::Sum, u"n"_s)});
  PageLayout pages(layout, top, kDay);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(pagesOf(pages), QStringList{u"500500 500500 500500"_s});
  EXPECT_EQ(lines->valuesRead, 1000);
}

TEST(GroupSums, AddsUpTenthsWithoutADrift) {
  auto data = memorySet({}, {u"n"_s});
  for (int i = 0; i < 100000; ++i) data->add({0.1});
  ReportLayout layout;
  layout.reportFooter = section(10, {box(Kind::Sum, u"n"_s)});
  PageLayout pages(layout, data, kDay);
  EXPECT_EQ(pagesOf(pages), QStringList{u"10000"_s});
}

TEST(GroupSums, TakesTheLeadingNumberOfTexts) {
  auto data =
      memorySet({}, {u"n"_s},
                {{u"12 本"_s}, {u"-2.5"_s}, {u"无"_s}, {QVariant()}, {qint64{3}}, {1.25}, {true}});
  ReportLayout layout;
  layout.reportFooter = section(10, {box(Kind::Sum, u"n"_s)});
  PageLayout pages(layout, data, kDay);
  EXPECT_EQ(pagesOf(pages), QStringList{u"13.75"_s});
}

TEST(GroupSums, SumsRowsOfTheLevelThatTheMemberNames) {
  auto top = memorySet(u"outer"_s, {u"w"_s});
  for (const double weight : {2.5, 4.0}) {
    top->add({weight});
    top->hang(numbers(3, u"lines"_s));
  }
  ReportLayout layout;
  layout.groups = {{u"outer"_s, {}, {}}};
  layout.detailMember = u"lines"_s;
  ReportBox weights = box(Kind::Sum, u"W"_s);
  weights.member = u"Outer"_s;
  layout.reportFooter = section(10, {weights, box(Kind::Sum, u"n"_s)});
  PageLayout pages(layout, top, kDay);
  EXPECT_EQ(textsOf(pages.page(0)), (QStringList{u"6.5"_s, u"12"_s}));
}

TEST(GroupSums, SumsOnlyReturns) {
  auto top = statisticsTree();
  auto only = memorySet(u"Cmd_goku_lebi"_s, {u"LEBI"_s});
  only->add({u"文学"_s});
  auto goods = memorySet(u"Cmd_goku_lebi_ximu"_s, {u"XIMU"_s});
  goods->add({u"围城"_s});
  goods->hang(memorySet(u"Cmd_goku_lebi_ximu_goku"_s, {u"shli"_s, u"thsl"_s},
                        {{-4.0, -4.0}, {-1.0, -1.0}}));
  only->hang(goods);
  PageLayout pages(rptGOKU_LEBI(), only, kDay);
  const QStringList line = sumLines(pages.page(0)).first().split(u' ');
  EXPECT_EQ(line[0], u"-5.000"_s);
  EXPECT_EQ(line[2], u"-5.000"_s);
}

TEST(GroupSums, HaveNothingToSumInDetailRows) {
  ReportLayout layout = flatLayout();
  layout.detail.boxes = {box(Kind::Sum, u"n"_s)};
  PageLayout pages(layout, numbers(1), kDay);
  EXPECT_EQ(textsOf(pages.page(0)), QStringList{QString()});
}

}  // namespace

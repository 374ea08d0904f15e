#include "orders/chosen_lines.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

ChosenGoodsRow goods(const QString& id, const QString& quantity) {
  return {
      id + u" ID"_s,
      {u"书"_s, u"小说"_s, quantity, u"12.5"_s, u"0.8"_s, u"八折起"_s, u"12"_s, u"B1"_s, u"N7"_s}};
}

OrderLineRow lineOf(const QString& goodsId) {
  OrderLineRow row;
  row.texts[LineGoodsId] = goodsId;
  return row;
}

}  // namespace

TEST(ChosenIdList, FramesEachIdByCommas) {
  EXPECT_EQ(ChosenIdList({}), u","_s);
  EXPECT_EQ(ChosenIdList({lineOf(u"31"_s)}), u",31,"_s);
  EXPECT_EQ(ChosenIdList({lineOf(u"31"_s), lineOf(u"4"_s)}), u",31,4,"_s);
}

TEST(ChosenIdList, FindsWholeIdsOnly) {
  EXPECT_TRUE(ChosenIds(u",31,4,"_s).contains(u"31"_s));
  EXPECT_TRUE(ChosenIds(u",31,4,"_s).contains(u"4"_s));
  EXPECT_TRUE(ChosenIds(u",A1,"_s).contains(u"a1"_s));
  EXPECT_TRUE(ChosenIds(u",a1,"_s).contains(u"A1"_s));
  EXPECT_FALSE(ChosenIds(u",31,4,"_s).contains(u"3"_s));
  EXPECT_FALSE(ChosenIds(u",31,4,"_s).contains(u"1"_s));
  EXPECT_FALSE(ChosenIds(u","_s).contains(u"31"_s));
  EXPECT_FALSE(ChosenIds(u"31,4,5"_s).contains(u"31"_s)) << "no comma before it";
  EXPECT_FALSE(ChosenIds(u"31,4,5"_s).contains(u"5"_s));
  EXPECT_TRUE(ChosenIds(u"31,4,5"_s).contains(u"4"_s));
  EXPECT_FALSE(ChosenIds(QString()).contains(QString()));
}

TEST(TakeChosenLines, AddsALineForNewGoods) {
  QList<OrderLineRow> rows;
  TakeChosenLines(rows, {goods(u"31"_s, u"25"_s)}, true);
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0].key, QString());
  EXPECT_EQ(rows[0].texts, (std::array<QString, LineColumnCount>{
                               u"书"_s, u"B1"_s, u"25"_s, u"12.5"_s, u"312.5"_s, u"0.8"_s, u"250"_s,
                               u"2"_s, u"1"_s, u"31"_s, u"八折起"_s, u"12"_s, u"N7"_s, u"小说"_s}));
}

TEST(TakeChosenLines, TakesNothingWhenTheChooserWasCancelled) {
  QList<OrderLineRow> rows;
  TakeChosenLines(rows, {goods(u"31"_s, u"25"_s)}, false);
  EXPECT_TRUE(rows.isEmpty());
}

TEST(TakeChosenLines, OverwritesTheLineOfTheSameGoodsAndKeepsItsKey) {
  QList<OrderLineRow> rows{lineOf(u"30"_s), lineOf(u"31"_s), lineOf(u"31"_s)};
  rows[1].key = u"417 ID"_s;
  rows[1].texts[LinePrice] = u"99"_s;
  TakeChosenLines(rows, {goods(u"31"_s, u"-7"_s)}, true);
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[1].key, u"417 ID"_s);
  EXPECT_EQ(rows[1].texts[LinePrice], u"12.5"_s);
  EXPECT_EQ(rows[1].texts[LineAmount], u"-87.5"_s);
  EXPECT_EQ(rows[1].texts[LineReceivable], u"-70"_s);
  EXPECT_EQ(rows[1].texts[LineCartons], u"0"_s);
  EXPECT_EQ(rows[1].texts[LineLoose], u"-7"_s);
  EXPECT_EQ(rows[0].texts[LinePrice], QString());
  EXPECT_EQ(rows[2].texts[LinePrice], QString());
}

TEST(TakeChosenLines, ComparesGoodsByNumber) {
  QList<OrderLineRow> rows{lineOf(u" 031"_s)};
  TakeChosenLines(rows, {goods(u"31"_s, u"1"_s)}, true);
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0].texts[LineGoodsId], u"31"_s);
}

TEST(TakeChosenLines, AQuantityOfZeroNeitherAddsNorChangesALine) {
  QList<OrderLineRow> rows{lineOf(u"31"_s)};
  rows[0].texts[LineQuantity] = u"5"_s;
  TakeChosenLines(rows, {goods(u"31"_s, u"0"_s), goods(u"32"_s, u""_s), goods(u"33"_s, u"x"_s)},
                  true);
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0].texts[LineQuantity], u"5"_s);
}

TEST(TakeChosenLines, GoodsWithoutACartonSizeHaveNoCartons) {
  ChosenGoodsRow row = goods(u"31"_s, u"25"_s);
  for (const QString& size : {u"0"_s, u"-1"_s, u""_s}) {
    row.texts[ChosenCartonSize] = size;
    QList<OrderLineRow> rows;
    TakeChosenLines(rows, {row}, true);
    EXPECT_EQ(rows[0].texts[LineCartons], u"0"_s);
    EXPECT_EQ(rows[0].texts[LineLoose], u"0"_s);
  }
}

TEST(TakeChosenLines, ALineThatCannotBeComputedEndsTheTaking) {
  ChosenGoodsRow bad = goods(u"32"_s, u"5"_s);
  bad.texts[ChosenCartonSize] = u"0.4"_s;
  QList<OrderLineRow> rows;
  EXPECT_THROW(TakeChosenLines(rows, {goods(u"31"_s, u"1"_s), bad, goods(u"33"_s, u"1"_s)}, true),
               Failure);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0].texts[LineCartons], u"0"_s);
  EXPECT_EQ(rows[1].texts[LineGoodsId], u"32"_s);
  EXPECT_EQ(rows[1].texts[LineCategory], u"小说"_s);
  EXPECT_EQ(rows[1].texts[LineCartons], QString());

  EXPECT_THROW(TakeChosenLines(rows, {goods(u"34"_s, u"2147483648"_s)}, true), Failure);
}

TEST(TakeChosenLines, ChooserShowsSevenOfItsNineColumns) {
  const QList<LineColumnTitle>& columns = chosenGoodsColumns();
  const QList<QString> titles{u"书名"_s,     u"类别"_s, u"数量"_s, u"价格"_s, u"折扣"_s,
                              u"折扣说明"_s, u"个数"_s, u"编号"_s, u"书号"_s};
  const QList<int> widths{3600, 1400, 1000, 1000, 1000, 2000, 0, 1500, 1500};
  ASSERT_EQ(columns.size(), ChosenColumnCount);
  for (qsizetype i = 0; i < columns.size(); ++i) {
    EXPECT_EQ(columns[i].title, titles[i]);
    EXPECT_EQ(columns[i].width, widths[i]);
  }
}

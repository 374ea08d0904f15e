#include "orders/RetailLineRow.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

TEST(RetailLineRow, PackedListsAreSplitAtTheCommas) {
  EXPECT_EQ(packedPieces(u""_s), QList<QString>());
  EXPECT_EQ(packedPieces(u"3"_s), QList<QString>{u"3"_s});
  EXPECT_EQ(packedPieces(u"3,,5"_s), (QList<QString>{u"3"_s, u""_s, u"5"_s}));
  EXPECT_EQ(packedPieces(u"3,"_s), (QList<QString>{u"3"_s, u""_s}));
}

TEST(RetailLineRow, AnAnswerRowGetsTheQuantityOfItsPosition) {
  QList<RetailLineRow> rows;
  const QList<QString> quantities = packedPieces(u"3,-2"_s);
  addPackedLine(rows, {u"31"_s, u" 书 "_s, u"12.5"_s}, quantities);
  addPackedLine(rows, {u"40"_s, u"笔"_s, u"1.25"_s}, quantities);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0].key, u"31 ID"_s);
  EXPECT_EQ(rows[0].texts, (std::array<QString, RetailColumnCount>{u"书"_s, u"3"_s, u"12.5"_s,
                                                                   u"37.5"_s, u"1"_s, u"37.5"_s}));
  EXPECT_EQ(rows[1].texts, (std::array<QString, RetailColumnCount>{u"笔"_s, u"-2"_s, u"1.25"_s,
                                                                   u"-2.5"_s, u"1"_s, u"-2.5"_s}));
}

TEST(RetailLineRow, GoodsThatAreGoneShiftTheLaterQuantities) {
  // Ordered: 31, 35 and 40; 35 is gone.
  QList<RetailLineRow> rows;
  const QList<QString> quantities = packedPieces(u"3,7,9"_s);
  addPackedLine(rows, {u"31"_s, u"书"_s, u"1"_s}, quantities);
  addPackedLine(rows, {u"40"_s, u"笔"_s, u"1"_s}, quantities);
  EXPECT_EQ(rows[1].texts[RetailQuantity], u"7"_s);
}

TEST(RetailLineRow, MoreGoodsThanQuantitiesFailAndTheRowsStay) {
  QList<RetailLineRow> rows;
  const QList<QString> quantities = packedPieces(u"3"_s);
  addPackedLine(rows, {u"31"_s, u"书"_s, u"12.5"_s}, quantities);
  EXPECT_THROW(addPackedLine(rows, {u"40"_s, u"笔"_s, u"2"_s}, quantities), Failure);
  ASSERT_EQ(rows.size(), 2);
  EXPECT_EQ(rows[0].texts[RetailAmount], u"37.5"_s);
  EXPECT_EQ(rows[1].texts[RetailName], u"笔"_s);
  EXPECT_EQ(rows[1].texts[RetailPrice], u"2"_s);
  EXPECT_EQ(rows[1].texts[RetailQuantity], QString());

  QList<RetailLineRow> none;
  EXPECT_THROW(addPackedLine(none, {u"31"_s, u"书"_s, u"1"_s}, packedPieces(QString())), Failure);
}

TEST(RetailLineRow, HasSixColumns) {
  const QList<LineColumnTitle>& columns = retailLineColumns();
  const QList<QString> titles{u"商品"_s, u"数量"_s, u"单价"_s, u"金额"_s, u"折扣"_s, u"应收"_s};
  ASSERT_EQ(columns.size(), RetailColumnCount);
  for (qsizetype i = 0; i < columns.size(); ++i) {
    EXPECT_EQ(columns[i].title, titles[i]);
    EXPECT_EQ(columns[i].width, i == 0 ? 2500 : 1000);
  }
}

#include "orders/OrderLineRow.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

OrderLineRow line(const QString& quantity, const QString& price, const QString& discount,
                  const QString& cartonSize) {
  OrderLineRow row;
  row.texts[LineQuantity] = quantity;
  row.texts[LinePrice] = price;
  row.texts[LineDiscount] = discount;
  row.texts[LineCartonSize] = cartonSize;
  return row;
}

struct LineCase {
  QString quantity, price, discount, cartonSize;
  QString amount, receivable, cartons, loose;
};

class LineArithmetic : public testing::TestWithParam<LineCase> {};

TEST_P(LineArithmetic, ComputesAmountReceivableCartonsAndLooseUnits) {
  const LineCase& row = GetParam();
  OrderLineRow computed = line(row.quantity, row.price, row.discount, row.cartonSize);
  computed.computeAmount();
  computed.computeReceivable();
  computed.computeCartons();
  EXPECT_EQ(computed.texts[LineAmount], row.amount);
  EXPECT_EQ(computed.texts[LineReceivable], row.receivable);
  EXPECT_EQ(computed.texts[LineCartons], row.cartons);
  EXPECT_EQ(computed.texts[LineLoose], row.loose);
}

INSTANTIATE_TEST_SUITE_P(
    OrderLineRow, LineArithmetic,
    testing::Values(
        LineCase{u"25"_s, u"12.5"_s, u"0.8"_s, u"12"_s, u"312.5"_s, u"250"_s, u"2"_s, u"1"_s},
        LineCase{u"-7"_s, u"10"_s, u"0.5"_s, u"3"_s, u"-70"_s, u"-35"_s, u"-2"_s, u"-1"_s},
        LineCase{u"0"_s, u"10"_s, u"1"_s, u"12"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s},
        LineCase{u"5"_s, u"10"_s, u"1"_s, u"0"_s, u"50"_s, u"50"_s, u"0"_s, u"0"_s},
        LineCase{u"5"_s, u"10"_s, u"1"_s, u"-3"_s, u"50"_s, u"50"_s, u"0"_s, u"0"_s},
        LineCase{u"5"_s, u"10"_s, u"1"_s, u""_s, u"50"_s, u"50"_s, u"0"_s, u"0"_s},
        // Half to even: 2.5 is 2 and 3.5 is 4 whole units; the fraction stays loose.
        LineCase{u"2.5"_s, u"1"_s, u"1"_s, u"2"_s, u"2.5"_s, u"2.5"_s, u"1"_s, u"0.5"_s},
        LineCase{u"3.5"_s, u"1"_s, u"1"_s, u"2"_s, u"3.5"_s, u"3.5"_s, u"2"_s, u"-0.5"_s},
        LineCase{u"9"_s, u"1"_s, u"1"_s, u"2.5"_s, u"9"_s, u"9"_s, u"4"_s, u"-1"_s},
        // Not rounded to cents, and no more than 15 digits.
        LineCase{u"3"_s, u"0.333333"_s, u"0.3"_s, u"1"_s, u"0.999999"_s, u"0.2999997"_s, u"3"_s,
                 u"0"_s},
        LineCase{u"1.1"_s, u"1.1"_s, u"1"_s, u"0"_s, u"1.21"_s, u"1.21"_s, u"0"_s, u"0"_s},
        LineCase{u"1234567.89"_s, u"98765.4321"_s, u"1"_s, u"0"_s, u"121932631112.635"_s,
                 u"121932631112.635"_s, u"0"_s, u"0"_s},
        // Leading numbers, and texts without one.
        LineCase{u"12个"_s, u"2元"_s, u"0.5折"_s, u"5本"_s, u"24"_s, u"12"_s, u"2"_s, u"2"_s},
        LineCase{u"x"_s, u"2"_s, u"1"_s, u"5"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s},
        LineCase{u"4"_s, u"10"_s, u"0"_s, u"0"_s, u"40"_s, u"0"_s, u"0"_s, u"0"_s},
        LineCase{u"4"_s, u"10"_s, u"-0.5"_s, u"0"_s, u"40"_s, u"-20"_s, u"0"_s, u"0"_s}));

struct BadCartons {
  QString quantity, cartonSize;
};

class UncountableCartons : public testing::TestWithParam<BadCartons> {};

TEST_P(UncountableCartons, FailAndLeaveBothCells) {
  OrderLineRow row = line(GetParam().quantity, u"1"_s, u"1"_s, GetParam().cartonSize);
  row.texts[LineCartons] = u"2"_s;
  row.texts[LineLoose] = u"1"_s;
  EXPECT_THROW(row.computeCartons(), Failure);
  EXPECT_EQ(row.texts[LineCartons], u"2"_s);
  EXPECT_EQ(row.texts[LineLoose], u"1"_s);
}

TEST_P(UncountableCartons, AreLeftOutWhenAQuantityIsEntered) {
  OrderLineRow row = line(u"25"_s, u"2"_s, u"0.5"_s, GetParam().cartonSize);
  row.texts[LineCartons] = u"2"_s;
  row.texts[LineLoose] = u"1"_s;
  row.enter(LineInput::TxtInputSL, GetParam().quantity);
  EXPECT_EQ(row.texts[LineQuantity], GetParam().quantity);
  EXPECT_NE(row.texts[LineAmount], QString());
  EXPECT_NE(row.texts[LineReceivable], QString());
  EXPECT_EQ(row.texts[LineCartons], u"2"_s);
  EXPECT_EQ(row.texts[LineLoose], u"1"_s);
}

INSTANTIATE_TEST_SUITE_P(OrderLineRow, UncountableCartons,
                         testing::Values(BadCartons{u"5"_s, u"0.4"_s}, BadCartons{u"5"_s, u"0.5"_s},
                                         BadCartons{u"2147483648"_s, u"12"_s},
                                         BadCartons{u"-2147483649"_s, u"12"_s},
                                         BadCartons{u"5"_s, u"2147483648"_s}));

}  // namespace

TEST(OrderLineRow, ANewQuantityRecomputesEverything) {
  OrderLineRow row = line(u"1"_s, u"12.5"_s, u"0.8"_s, u"12"_s);
  row.enter(LineInput::TxtInputSL, u"25"_s);
  EXPECT_EQ(row.texts[LineQuantity], u"25"_s);
  EXPECT_EQ(row.texts[LineAmount], u"312.5"_s);
  EXPECT_EQ(row.texts[LineReceivable], u"250"_s);
  EXPECT_EQ(row.texts[LineCartons], u"2"_s);
  EXPECT_EQ(row.texts[LineLoose], u"1"_s);
}

TEST(OrderLineRow, ANewPriceLeavesTheCartons) {
  OrderLineRow row = line(u"25"_s, u"1"_s, u"0.8"_s, u"12"_s);
  row.enter(LineInput::TxtInputJG, u"12.5"_s);
  EXPECT_EQ(row.texts[LinePrice], u"12.5"_s);
  EXPECT_EQ(row.texts[LineAmount], u"312.5"_s);
  EXPECT_EQ(row.texts[LineReceivable], u"250"_s);
  EXPECT_EQ(row.texts[LineCartons], QString());
}

TEST(OrderLineRow, ANewDiscountLeavesTheAmountAsItStands) {
  OrderLineRow row = line(u"25"_s, u"12.5"_s, u"1"_s, u"12"_s);
  row.texts[LineAmount] = u"100"_s;
  row.enter(LineInput::TxtInputZK, u"0.8"_s);
  EXPECT_EQ(row.texts[LineDiscount], u"0.8"_s);
  EXPECT_EQ(row.texts[LineAmount], u"100"_s);
  EXPECT_EQ(row.texts[LineReceivable], u"80"_s);
}

TEST(OrderLineRow, AnAmountBeyondADoubleKeepsItsOldCellAndTheNextStepGoesOn) {
  EXPECT_THROW(line(u"1e300"_s, u"1e300"_s, u"1"_s, QString()).computeAmount(), Overflow);
  OrderLineRow row = line(u"2"_s, u"1e308"_s, u"0.5"_s, u"12"_s);
  row.texts[LineAmount] = u"8"_s;
  row.enter(LineInput::TxtInputSL, u"1000"_s);
  EXPECT_EQ(row.texts[LineAmount], u"8"_s);
  EXPECT_EQ(row.texts[LineReceivable], u"4"_s);
  EXPECT_EQ(row.texts[LineCartons], u"83"_s);
  EXPECT_EQ(row.texts[LineLoose], u"4"_s);
}

TEST(OrderLineRow, InputsStandOverTheirColumns) {
  EXPECT_EQ(columnOf(LineInput::TxtInputSL), 2);
  EXPECT_EQ(columnOf(LineInput::TxtInputJG), 3);
  EXPECT_EQ(columnOf(LineInput::TxtInputZK), 5);
  EXPECT_EQ(nameOf(LineInput::TxtInputSL), u"TxtInputSL"_s);
  EXPECT_EQ(nameOf(LineInput::TxtInputJG), u"TxtInputJG"_s);
  EXPECT_EQ(nameOf(LineInput::TxtInputZK), u"TxtInputZK"_s);
}

TEST(OrderLineRow, InputsAreCheckedBeforeTheyAreLeft) {
  const QString number = u"必须是数值,请重新输入"_s;
  const QString factor = u"必须是数值，并且不大于1，请重新输入"_s;
  for (const LineInput input : {LineInput::TxtInputSL, LineInput::TxtInputJG}) {
    for (const QString& good : {u"0"_s, u"-7"_s, u"2.5"_s, u" 12 "_s, u"1e3"_s}) {
      EXPECT_EQ(complaintOf(input, good), QString()) << good.toStdString();
    }
    for (const QString& bad : {u""_s, u"x"_s, u"12元"_s, u"1.2.3"_s}) {
      EXPECT_EQ(complaintOf(input, bad), number) << bad.toStdString();
    }
  }
  for (const QString& good : {u"1"_s, u"0.8"_s, u"0"_s, u"-0.5"_s}) {
    EXPECT_EQ(complaintOf(LineInput::TxtInputZK, good), QString()) << good.toStdString();
  }
  for (const QString& bad : {u""_s, u"x"_s, u"1.01"_s, u"2"_s, u"1,000"_s}) {
    EXPECT_EQ(complaintOf(LineInput::TxtInputZK, bad), factor) << bad.toStdString();
  }
}

TEST(OrderLineRow, KeysTellThePortalsId) {
  OrderLineRow row;
  EXPECT_EQ(row.portalId(), u"0"_s);
  row.key = lineKey(u"417"_s);
  EXPECT_EQ(row.key, u"417 ID"_s);
  EXPECT_EQ(row.portalId(), u"417"_s);
  row.key = u"Count ID"_s;
  EXPECT_EQ(row.portalId(), u"0"_s);
  EXPECT_EQ(OrderLineRow::icon(), u"Goku"_s);
}

TEST(OrderLineRow, AnAnswerRowGoesToItsColumns) {
  const QList<QString> cells{u"417"_s,  u"31"_s,    u" 书 "_s, u"B1"_s,  u"25"_s,
                             u"12.5"_s, u"312.5"_s, u"0.8"_s,  u"250"_s, u"2"_s,
                             u"1"_s,    u"八折"_s,  u"12"_s,   u"N7"_s,  u"小说"_s};
  OrderLineRow row = lineFromAnswer(cells);
  const std::array<QString, LineColumnCount> expected{
      u"书"_s, u"B1"_s, u"25"_s, u"12.5"_s, u"312.5"_s, u"0.8"_s, u"250"_s,
      u"2"_s,  u"1"_s,  u"31"_s, u"八折"_s, u"12"_s,    u"N7"_s,  u"小说"_s};
  EXPECT_EQ(row.key, u"417 ID"_s);
  EXPECT_EQ(row.texts, expected);

  row = lineFromAnswer(cells.first(14));
  EXPECT_EQ(row.texts[LineBookNumber], u"N7"_s);
  EXPECT_EQ(row.texts[LineCategory], QString());
}

TEST(OrderLineRow, HasNineTitledColumnsAndFiveUnseenOnes) {
  const QList<LineColumnTitle>& columns = orderLineColumns();
  ASSERT_EQ(columns.size(), LineColumnCount);
  const QList<QString> titles{u"商品"_s, u"编号"_s, u"数量"_s, u"单价"_s, u"金额"_s,
                              u"折扣"_s, u"应收"_s, u"包箱"_s, u"零"_s};
  const QList<int> widths{2500, 600, 1000, 1000, 1000, 1000, 1000, 800, 600};
  for (qsizetype i = 0; i < columns.size(); ++i) {
    EXPECT_EQ(columns[i].title, titles.value(i));
    EXPECT_EQ(columns[i].width, widths.value(i));
  }
}

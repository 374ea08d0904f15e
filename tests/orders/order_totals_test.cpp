#include "orders/order_totals.h"

#include <gtest/gtest.h>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct TotalsCase {
  std::string name;
  QList<SummedTexts> rows;
  QString otherCharges;
  std::array<QString, OrderCountCount> expected;
};

class Totals : public testing::TestWithParam<TotalsCase> {};

TEST_P(Totals, AreSummedRowByRow) {
  OrderCounts counts;
  RefreshTotals(GetParam().rows, GetParam().otherCharges, counts);
  EXPECT_EQ(counts.texts, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Order, Totals,
    testing::Values(
        TotalsCase{"Empty", {}, u"0"_s, {u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s}},
        TotalsCase{"OneLine",
                   {{u"25"_s, u"312.5"_s, u"250"_s}},
                   u"0"_s,
                   {u"1"_s, u"25"_s, u"312.5"_s, u"62.5"_s, u"250"_s, u"250"_s, u"32.5"_s}},
        TotalsCase{"ChargesAreTaxedToo",
                   {{u"25"_s, u"312.5"_s, u"250"_s}},
                   u"35"_s,
                   {u"1"_s, u"25"_s, u"312.5"_s, u"62.5"_s, u"250"_s, u"285"_s, u"37.05"_s}},
        TotalsCase{"ChargesGoByTheirLeadingNumber",
                   {{u"1"_s, u"10"_s, u"10"_s}},
                   u"12元"_s,
                   {u"1"_s, u"1"_s, u"10"_s, u"0"_s, u"10"_s, u"22"_s, u"2.86"_s}},
        TotalsCase{"ChargesWithoutANumberAreNone",
                   {{u"1"_s, u"10"_s, u"10"_s}},
                   u"免费"_s,
                   {u"1"_s, u"1"_s, u"10"_s, u"0"_s, u"10"_s, u"10"_s, u"1.3"_s}},
        TotalsCase{"QuantitiesRoundRowByRow",
                   {{u"2.5"_s, u"0"_s, u"0"_s}, {u"3.5"_s, u"0"_s, u"0"_s}},
                   u"0"_s,
                   {u"2"_s, u"6"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s}},
        TotalsCase{"HalvesNeverAddUp",
                   {{u"0.5"_s, u""_s, u""_s}, {u"0.5"_s, u""_s, u""_s}, {u"0.5"_s, u""_s, u""_s}},
                   u""_s,
                   {u"3"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s}},
        TotalsCase{"TheSumIsRoundedNotTheRow",
                   {{u"1"_s, u""_s, u""_s}, {u"2.5"_s, u""_s, u""_s}},
                   u""_s,
                   {u"2"_s, u"4"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s, u"0"_s}},
        TotalsCase{"AmountsRoundToFourDecimalsHalfToEven",
                   {{u"1"_s, u"0.00025"_s, u"0.00005"_s}, {u"1"_s, u"0.00035"_s, u"0.00005"_s}},
                   u"0.00025"_s,
                   {u"2"_s, u"2"_s, u"0.0006"_s, u"0.0006"_s, u"0"_s, u"0.0002"_s, u"0.000026"_s}},
        TotalsCase{"ReturnsAreNegative",
                   {{u"-7"_s, u"-70"_s, u"-35"_s}},
                   u"0"_s,
                   {u"1"_s, u"-7"_s, u"-70"_s, u"-35"_s, u"-35"_s, u"-35"_s, u"-4.55"_s}},
        TotalsCase{"FourDecimalsPrintWithoutPadding",
                   {{u"1"_s, u"37.05"_s, u"37.05"_s}},
                   u"0"_s,
                   {u"1"_s, u"1"_s, u"37.05"_s, u"0"_s, u"37.05"_s, u"37.05"_s, u"4.8165"_s}},
        TotalsCase{"TaxIsNotRounded",
                   {{u"1"_s, u"0.3333"_s, u"0.3333"_s}},
                   u"0"_s,
                   {u"1"_s, u"1"_s, u"0.3333"_s, u"0"_s, u"0.3333"_s, u"0.3333"_s, u"0.043329"_s}}),
    [](const auto& row) { return row.param.name; });

struct OverflowCase {
  QList<SummedTexts> rows;
};

class TotalsBeyondTheirWidth : public testing::TestWithParam<OverflowCase> {};

TEST_P(TotalsBeyondTheirWidth, FailAndLeaveWhatIsShown) {
  OrderCounts counts;
  counts.texts.fill(u"7"_s);
  const OrderCounts before = counts;
  EXPECT_THROW(RefreshTotals(GetParam().rows, u"0"_s, counts), Overflow);
  EXPECT_EQ(counts.texts, before.texts);
}

INSTANTIATE_TEST_SUITE_P(
    Order, TotalsBeyondTheirWidth,
    testing::Values(OverflowCase{{{u"2147483648"_s, u"0"_s, u"0"_s}}},
                    OverflowCase{{{u"2147483647"_s, u""_s, u""_s}, {u"1"_s, u""_s, u""_s}}},
                    OverflowCase{{{u"1"_s, u"1E+15"_s, u"0"_s}}},
                    OverflowCase{{{u"1"_s, u"0"_s, u"-1E+15"_s}}},
                    OverflowCase{{{u"1"_s, u"9E+14"_s, u"0"_s}, {u"1"_s, u"9E+14"_s, u"0"_s}}}));

}  // namespace

TEST(RefreshTotals, ChargesBeyondSixtyFourBitsLeaveTotalAndTax) {
  OrderCounts counts;
  counts.texts.fill(u"7"_s);
  EXPECT_THROW(RefreshTotals(QList<SummedTexts>{{u"2"_s, u"4"_s, u"3"_s}}, u"1e15"_s, counts),
               Overflow);
  EXPECT_EQ(counts.texts, (std::array<QString, OrderCountCount>{u"1"_s, u"2"_s, u"4"_s, u"1"_s,
                                                                u"3"_s, u"7"_s, u"7"_s}));
}

TEST(RefreshTotals, SumsTheColumnsOfEachKindOfRow) {
  OrderLineRow line;
  line.texts[LineQuantity] = u"25"_s;
  line.texts[LineAmount] = u"312.5"_s;
  line.texts[LineReceivable] = u"250"_s;
  OrderCounts counts;
  RefreshTotals(QList<OrderLineRow>{line, line}, u"0"_s, counts);
  EXPECT_EQ(counts.texts[CountQuantity], u"50"_s);
  EXPECT_EQ(counts.texts[CountDiscount], u"125"_s);

  RetailLineRow retail;
  retail.texts = {u"书"_s, u"3"_s, u"12.5"_s, u"37.5"_s, u"0.8"_s, u"30"_s};
  RefreshTotals(QList<RetailLineRow>{retail}, u"10"_s, counts);
  EXPECT_EQ(counts.texts, (std::array<QString, OrderCountCount>{u"1"_s, u"3"_s, u"37.5"_s, u"7.5"_s,
                                                                u"30"_s, u"40"_s, u"5.2"_s}));
}

TEST(RefreshTotals, TotalsStartAtZero) {
  for (const QString& text : OrderCounts().texts) EXPECT_EQ(text, u"0"_s);
}

#include "values/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct ValRow {
  QString text;
  double value;
};

class Leading : public testing::TestWithParam<ValRow> {};

TEST_P(Leading, NumberIsTakenFromTheFront) {
  EXPECT_DOUBLE_EQ(Val(GetParam().text), GetParam().value) << GetParam().text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Val, Leading,
    testing::Values(ValRow{u""_s, 0}, ValRow{u"   "_s, 0}, ValRow{u"12 ID"_s, 12},
                    ValRow{u"12 XID"_s, 12}, ValRow{u"1 2"_s, 12}, ValRow{u" - 1 . 5 元"_s, -1.5},
                    ValRow{u"25.50"_s, 25.5}, ValRow{u".5"_s, 0.5}, ValRow{u"5."_s, 5},
                    ValRow{u"."_s, 0}, ValRow{u"-"_s, 0}, ValRow{u"+7"_s, 7}, ValRow{u"--7"_s, 0},
                    ValRow{u"1.2.3"_s, 1.2}, ValRow{u"1,234"_s, 1}, ValRow{u"1e3"_s, 1000},
                    ValRow{u"1E+3x"_s, 1000}, ValRow{u"1e"_s, 1}, ValRow{u"1e+"_s, 1},
                    ValRow{u"e3"_s, 0}, ValRow{u"abc"_s, 0}, ValRow{u"\t7"_s, 0},
                    ValRow{u"１２"_s, 0}, ValRow{u"0x10"_s, 0}, ValRow{u"inf"_s, 0},
                    ValRow{u"nan"_s, 0}, ValRow{u"010"_s, 10}, ValRow{u"9"_s.repeated(30), 1e30},
                    ValRow{u"1e-999"_s, 0}, ValRow{u"5.e1"_s, 50},
                    ValRow{u"1e999"_s, std::numeric_limits<double>::max()}));

struct NumericRow {
  QString text;
  bool numeric;
};

class Numeric : public testing::TestWithParam<NumericRow> {};

TEST_P(Numeric, IsDecidedOnTheWholeText) {
  EXPECT_EQ(IsNumeric(GetParam().text), GetParam().numeric) << GetParam().text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    IsNumeric, Numeric,
    testing::Values(
        NumericRow{u""_s, false}, NumericRow{u"  "_s, false}, NumericRow{u"0"_s, true},
        NumericRow{u" 25.5 "_s, true}, NumericRow{u"-3"_s, true}, NumericRow{u"+3"_s, true},
        NumericRow{u"- 3"_s, false}, NumericRow{u"1,234"_s, true},
        NumericRow{u"1,234,567.8"_s, true}, NumericRow{u"12,34"_s, false},
        NumericRow{u"1234,567"_s, false}, NumericRow{u",123"_s, false}, NumericRow{u"1,"_s, false},
        NumericRow{u"1.5.2"_s, false}, NumericRow{u"."_s, false}, NumericRow{u".5"_s, true},
        NumericRow{u"5."_s, true}, NumericRow{u"1e5"_s, true}, NumericRow{u"1E-5"_s, true},
        NumericRow{u"1e"_s, false}, NumericRow{u"1e5.5"_s, false}, NumericRow{u"abc"_s, false},
        NumericRow{u"12a"_s, false}, NumericRow{u"１２"_s, false}, NumericRow{u"\t1"_s, false},
        NumericRow{u"1 2"_s, false}, NumericRow{u"&H10"_s, false}, NumericRow{u"￥5"_s, false}));

TEST(Trim, TakesOnlyAsciiBlanks) {
  EXPECT_EQ(Trim(u"  abc  "), u"abc"_s);
  EXPECT_EQ(Trim(u"\t abc\r\n"), u"\t abc\r\n"_s);
  EXPECT_EQ(Trim(u"\u3000书\u3000"), u"\u3000书\u3000"_s);
  EXPECT_EQ(Trim(u"   "), QString());
  EXPECT_EQ(Trim(u" a b "), u"a b"_s);
}

TEST(RoundHalfEven, GoesToTheEvenNeighbourAtTheMiddle) {
  EXPECT_EQ(roundHalfEven(0.5), 0);
  EXPECT_EQ(roundHalfEven(1.5), 2);
  EXPECT_EQ(roundHalfEven(2.5), 2);
  EXPECT_EQ(roundHalfEven(-0.5), 0);
  EXPECT_EQ(roundHalfEven(-1.5), -2);
  EXPECT_EQ(roundHalfEven(2.4999), 2);
  EXPECT_EQ(roundHalfEven(2.5001), 3);
}

TEST(ToInt16, HoldsUpToItsLimitsAndThrowsBeyond) {
  EXPECT_EQ(toInt16(u"32767"), 32767);
  EXPECT_THROW(toInt16(u"32768"), Overflow);
  EXPECT_EQ(toInt16(u"-32768"), -32768);
  EXPECT_THROW(toInt16(u"-32769"), Overflow);
  EXPECT_EQ(toInt16(u"32767.4"), 32767);
  EXPECT_THROW(toInt16(u"32767.5"), Overflow);
  EXPECT_THROW(toInt16(u"1e999"), Overflow);
}

TEST(ToInt16, RoundsFractionsHalfToEven) {
  EXPECT_EQ(toInt16(u"25.5"), 26);
  EXPECT_EQ(toInt16(u"24.5"), 24);
  EXPECT_EQ(toInt16(u" 1,234 "), 1234);
}

TEST(ToInt16, RefusesTextThatIsNotWhollyANumber) {
  EXPECT_THROW(toInt16(u""), TypeMismatch);
  EXPECT_THROW(toInt16(u"12 ID"), TypeMismatch);
  EXPECT_THROW(toInt16(u"一"), TypeMismatch);
}

TEST(ToInt32, HoldsUpToItsLimitsAndThrowsBeyond) {
  EXPECT_EQ(toInt32(u"2147483647"), 2147483647);
  EXPECT_THROW(toInt32(u"2147483648"), Overflow);
  EXPECT_EQ(toInt32(u"-2147483648"), std::numeric_limits<qint32>::min());
}

TEST(ToBoolean, ReadsWordsAndNumbers) {
  EXPECT_TRUE(toBoolean(u"True"));
  EXPECT_TRUE(toBoolean(u"true"));
  EXPECT_FALSE(toBoolean(u"FALSE"));
  EXPECT_TRUE(toBoolean(u"-1"));
  EXPECT_FALSE(toBoolean(u"0"));
  EXPECT_THROW(toBoolean(u""), TypeMismatch);
  EXPECT_THROW(toBoolean(u"是"), TypeMismatch);
}

struct TextRow {
  double value;
  QString text;
};

class NumberText : public testing::TestWithParam<TextRow> {};

TEST_P(NumberText, HasUpToFifteenDigitsAndNoPadding) {
  EXPECT_EQ(textOf(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(TextOf, NumberText,
                         testing::Values(TextRow{0, u"0"_s}, TextRow{-0.0, u"0"_s},
                                         TextRow{8, u"8"_s}, TextRow{25.5, u"25.5"_s},
                                         TextRow{-1, u"-1"_s}, TextRow{0.1 + 0.2, u"0.3"_s},
                                         TextRow{1.0 / 3, u"0.333333333333333"_s},
                                         TextRow{2.0 / 3, u"0.666666666666667"_s},
                                         TextRow{123456789012345.0, u"123456789012345"_s},
                                         TextRow{1234567890123456.0, u"1.23456789012346E+15"_s},
                                         TextRow{1e20, u"1E+20"_s},
                                         TextRow{-1.5e100, u"-1.5E+100"_s}, TextRow{100, u"100"_s},
                                         TextRow{0.05, u"0.05"_s}, TextRow{0.00001, u"0.00001"_s},
                                         TextRow{1.25e-20, u"1.25E-20"_s}));

TEST(TextOf, BooleansAreTheWordsOfTheWire) {
  EXPECT_EQ(textOf(true), u"True"_s);
  EXPECT_EQ(textOf(false), u"False"_s);
}

TEST(WholeDivide, RoundsItsOperandsAndCutsTheQuotient) {
  EXPECT_EQ(wholeDivide(7, 2), 3);
  EXPECT_EQ(wholeDivide(-7, 2), -3);
  EXPECT_EQ(wholeDivide(2.5, 1), 2);
  EXPECT_EQ(wholeDivide(3.5, 1.5), 2);
}

TEST(WholeDivide, FailsOnADivisorThatRoundsToNothingAndOnWideOperands) {
  EXPECT_THROW(wholeDivide(1, 0), Failure);
  EXPECT_THROW(wholeDivide(1, 0.5), Failure);
  EXPECT_THROW(wholeDivide(3e9, 1), Overflow);
  EXPECT_THROW(wholeDivide(-2147483648.0, -1), Overflow);
}

TEST(Failure, CarriesNumberAndWords) {
  try {
    (void)toInt16(u"40000");
    FAIL() << "no overflow";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), 6);
    EXPECT_TRUE(failure.description().contains(u"40000"_s));
  }
}

}  // namespace

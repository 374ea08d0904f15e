#include "values/money.h"

#include <gtest/gtest.h>

#include <limits>

#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

TEST(Money, KeepsFourDecimalsRoundedHalfToEven) {
  EXPECT_EQ(Money(1.23456).units(), 12346);
  EXPECT_EQ(Money(0.00005).units(), 0);
  EXPECT_EQ(Money(0.00025).units(), 2);
  EXPECT_EQ(Money(-0.00035).units(), -4);
  EXPECT_EQ(Money(25.5).text(), u"25.5"_s);
}

TEST(Money, PrintsWithoutPaddingAndWithItsSign) {
  EXPECT_EQ(Money(12).text(), u"12"_s);
  EXPECT_EQ(Money(-0.5).text(), u"-0.5"_s);
  EXPECT_EQ(Money(-12.0001).text(), u"-12.0001"_s);
  EXPECT_EQ(Money().text(), u"0"_s);
  EXPECT_EQ(Money::fromUnits(std::numeric_limits<qint64>::max()).text(), u"922337203685477.5807"_s);
}

TEST(Money, ThrowsBeyondSixtyFourBits) {
  EXPECT_THROW(Money(1e15), Overflow);
  EXPECT_THROW(Money(-1e15), Overflow);
  const Money most = Money::fromUnits(std::numeric_limits<qint64>::max());
  EXPECT_THROW(most + Money::fromUnits(1), Overflow);
  const Money least = Money::fromUnits(std::numeric_limits<qint64>::min());
  EXPECT_THROW(least - Money::fromUnits(1), Overflow);
}

TEST(Money, AddsAndSubtractsExactly) {
  Money sum;
  for (int i = 0; i < 10; ++i) sum = sum + Money(0.1);
  EXPECT_EQ(sum, Money(1));
  EXPECT_EQ((sum - Money(1.0001)).text(), u"-0.0001"_s);
}

#include "shell/PageWalk.h"

#include <gtest/gtest.h>

#include "support/text_printing.h"
#include "values/failure.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

TEST(PageWalk, StartsOnTheFirstPageOfAnUncountedList) {
  const PageWalk walk;
  EXPECT_EQ(walk.pageNo(), 1);
  EXPECT_EQ(walk.pageCount(), 0);
  EXPECT_FALSE(walk.hasMorePages());
  EXPECT_EQ(walk.percentage(), u""_s);
}

TEST(PageWalk, GoesOnToTheLastPageAndNoFurther) {
  PageWalk walk;
  walk.takeCount(u"3"_s);
  EXPECT_TRUE(walk.next());
  EXPECT_TRUE(walk.next());
  EXPECT_EQ(walk.pageNo(), 3);
  EXPECT_FALSE(walk.next());
  EXPECT_EQ(walk.pageNo(), 3);
}

TEST(PageWalk, AListWithoutPagesHasNoNextOne) {
  PageWalk walk;
  for (const auto& count : {u"0"_s, u"1"_s, u"-4"_s, u""_s, u"错误"_s}) {
    walk.takeCount(count);
    EXPECT_FALSE(walk.hasMorePages()) << count.toStdString();
    EXPECT_FALSE(walk.next()) << count.toStdString();
  }
}

TEST(PageWalk, StartingAgainKeepsTheCountThatWasToldLast) {
  PageWalk walk;
  walk.setPageSize(25);
  walk.takeCount(u"2"_s);
  walk.next();
  walk.start();
  EXPECT_EQ(walk.pageNo(), 1);
  EXPECT_EQ(walk.pageCount(), 2);
  EXPECT_EQ(walk.pageSize(), 25);
}

TEST(PageWalk, ACountIsTheLeadingNumberOfItsCell) {
  PageWalk walk;
  walk.takeCount(u" 12 pages"_s);
  EXPECT_EQ(walk.pageCount(), 12);
}

TEST(PageWalk, ACountBeyond32BitsFailsAndKeepsTheOldOne) {
  PageWalk walk;
  walk.takeCount(u"7"_s);
  EXPECT_THROW(walk.takeCount(u"2147483648"_s), Overflow);
  EXPECT_EQ(walk.pageCount(), 7);
}

struct PercentageCase {
  qint32 page;
  QString count;
  QString caption;
};

class PercentageTest : public testing::TestWithParam<PercentageCase> {};

TEST_P(PercentageTest, IsTheWholePartOfWhatIsThere) {
  PageWalk walk;
  walk.takeCount(GetParam().count);
  while (walk.pageNo() < GetParam().page) ASSERT_TRUE(walk.next());
  EXPECT_EQ(walk.percentage(), GetParam().caption);
}

INSTANTIATE_TEST_SUITE_P(
    PageWalk, PercentageTest,
    testing::Values(PercentageCase{1, u"2"_s, u"50%"_s}, PercentageCase{1, u"3"_s, u"33%"_s},
                    PercentageCase{2, u"3"_s, u"66%"_s}, PercentageCase{3, u"3"_s, u"100%"_s},
                    PercentageCase{1, u"7"_s, u"14%"_s},
                    // In floating point this one comes out as 28.999...
                    PercentageCase{29, u"100"_s, u"29%"_s}, PercentageCase{1, u"101"_s, u"0%"_s},
                    PercentageCase{1, u"2147483647"_s, u"0%"_s},
                    PercentageCase{1, u"1"_s, u"100%"_s}));

}  // namespace
}  // namespace qinghe

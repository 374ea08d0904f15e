#include "reports/engine/commands.h"

#include <gtest/gtest.h>

#include "store/statistics_commands.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct CommandRow {
  const char* name;
  StatisticsReport report;
  TradeSide side;
  QString text;  // with the places of number and filters
};

class StatisticsCommand : public testing::TestWithParam<std::tuple<CommandRow, int>> {};

// Each filter on and off; a filter's own text never counts as a place to fill.
TEST_P(StatisticsCommand, IsTheRequiredTextWithTheFiltersInTheirPlaces) {
  const auto& [row, filters] = GetParam();
  const StatisticsFilter filter{
      .rangeClause = filters & 1 ? u" and gohu.ghrq>=#3/1/2024#"_s : QString(),
      .lebiClause = filters & 2 ? u" and goku.lebi='教材'"_s : QString(),
      .ximuClause = filters & 4 ? u" and goku.ximu='甲%1'"_s : QString(),
  };
  EXPECT_EQ(statisticsCommand(row.report, row.side, 25, filter),
            statistics::filled(row.text, filter.rangeClause, filter.lebiClause, filter.ximuClause));
}

INSTANTIATE_TEST_SUITE_P(
    All, StatisticsCommand,
    testing::Combine(testing::Values(CommandRow{"PurchaseByCategory", StatisticsReport::Category,
                                                TradeSide::Purchase,
                                                statistics::purchaseByCategory},
                                     CommandRow{"PurchaseByPartner", StatisticsReport::Partner,
                                                TradeSide::Purchase, statistics::purchaseByPartner},
                                     CommandRow{"PurchaseByMonth", StatisticsReport::Month,
                                                TradeSide::Purchase, statistics::purchaseByMonth},
                                     CommandRow{"PurchaseDetails", StatisticsReport::Detail,
                                                TradeSide::Purchase, statistics::purchaseDetails},
                                     CommandRow{"SalesByCategory", StatisticsReport::Category,
                                                TradeSide::Sales, statistics::salesByCategory},
                                     CommandRow{"SalesByPartner", StatisticsReport::Partner,
                                                TradeSide::Sales, statistics::salesByPartner},
                                     CommandRow{"SalesByMonth", StatisticsReport::Month,
                                                TradeSide::Sales, statistics::salesByMonth},
                                     CommandRow{"SalesDetails", StatisticsReport::Detail,
                                                TradeSide::Sales, statistics::salesDetails}),
                     testing::Range(0, 8)),
    [](const auto& row) {
      return std::string(std::get<0>(row.param).name) + "_" +
             std::to_string(std::get<1>(row.param));
    });

TEST(StatisticsCommandText, IsEmptyWithoutAReport) {
  EXPECT_EQ(statisticsCommand(StatisticsReport::None, TradeSide::Sales, 25, {}), QString());
}

TEST(StatisticsFilters, AreWrittenAsEachSideWritesThem) {
  const QDate march(2024, 3, 9);
  const QDate december(2024, 12, 31);
  EXPECT_EQ(dateClause(TradeSide::Purchase, march, december),
            u" and gohu.ghrq>=#3/9/2024# and gohu.ghrq<=#12/31/2024#"_s);
  EXPECT_EQ(dateClause(TradeSide::Sales, march, december),
            u" and Gohu.ghrq>=#3/9/2024# and Gohu.ghrq<=#12/31/2024#"_s);
  EXPECT_EQ(dateClause(TradeSide::Purchase, std::nullopt, december),
            u" and gohu.ghrq<=#12/31/2024#"_s);
  EXPECT_EQ(dateClause(TradeSide::Sales, march, std::nullopt), u" and Gohu.ghrq>=#3/9/2024#"_s);
  EXPECT_EQ(dateClause(TradeSide::Sales, std::nullopt, std::nullopt), QString());
  EXPECT_EQ(partnerClause(TradeSide::Purchase, 7), u" and gohu.gosh_id=7"_s);
  EXPECT_EQ(partnerClause(TradeSide::Sales, 9), u" and Gohu.Kehu_id=9"_s);
  EXPECT_EQ(categoryClause(u"children's"_s), u" and goku.lebi='children's'"_s);
  EXPECT_EQ(goodsClause(u"甲'"_s), u" and goku.ximu='甲''"_s);
}

TEST(StatisticsLists, AreReadByTheRequiredQueries) {
  EXPECT_EQ(categoriesQuery(TradeSide::Purchase, 25),
            u"SELECT distinct lebi FROM vLEBI WHERE KEHU_ID=25"_s);
  EXPECT_EQ(categoriesQuery(TradeSide::Sales, 25),
            u"SELECT distinct lebi FROM vLEBI WHERE GOSH_ID=25"_s);
  EXPECT_EQ(goodsQuery(TradeSide::Purchase, 25, u"教材"_s),
            u"SELECT distinct ximu FROM vXIMU WHERE kehu_id=25 and lebi='教材'"_s);
  EXPECT_EQ(goodsQuery(TradeSide::Sales, 25, u"教材"_s),
            u"SELECT distinct ximu FROM vximu WHERE gosh_id=25 and lebi='教材'"_s);
  EXPECT_EQ(partnersQuery(TradeSide::Purchase, 25),
            u"SELECT distinct gosh_id,gosh FROM vgskh where kehu_id=25"_s);
  EXPECT_EQ(partnersQuery(TradeSide::Sales, 25),
            u"SELECT distinct kehu_id,kehu FROM vgskh where gosh_id=25"_s);
}

}  // namespace

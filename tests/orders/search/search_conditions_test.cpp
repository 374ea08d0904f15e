#include "orders/search/search_conditions.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

TEST(SearchConditions, GoodsAreAskedForByEachWordThatIsThere) {
  struct Case {
    QString name, category, attribute, condition;
  };
  const Case cases[] = {
      {{}, {}, {}, {}},
      {u"语文"_s, {}, {}, u"noth=true and ximu like '%语文%'"_s},
      {{}, u"教材"_s, {}, u"noth=true and lebi like '%教材%'"_s},
      {{}, {}, u"16开"_s, u"noth=true and shxi like '%16开%'"_s},
      {u"语文"_s, {}, u"16开"_s, u"noth=true and ximu like '%语文%' and shxi like '%16开%'"_s},
      {u"语文"_s, u"教材"_s, u"平装"_s,
       u"noth=true and ximu like '%语文%' and lebi like '%教材%' and shxi like '%平装%'"_s},
      {u" "_s, {}, {}, u"noth=true and ximu like '% %'"_s},
      {u"it's"_s, {}, {}, u"noth=true and ximu like '%it's%'"_s},
      {u"50% %1"_s, u"%2"_s, {}, u"noth=true and ximu like '%50% %1%' and lebi like '%%2%'"_s},
  };
  for (const auto& [name, category, attribute, condition] : cases) {
    EXPECT_EQ(goodsCondition(name, category, attribute), condition);
  }
}

TEST(SearchConditions, EnterprisesAreFoundWhetherLiveOrNot) {
  EXPECT_EQ(enterpriseCondition({}, {}), QString());
  EXPECT_EQ(enterpriseCondition(u"书"_s, {}), u"qiye like '%书%'"_s);
  EXPECT_EQ(enterpriseCondition({}, u"北京"_s), u"dizh like '%北京%'"_s);
  EXPECT_EQ(enterpriseCondition(u"书"_s, u"北京"_s), u"qiye like '%书%' and dizh like '%北京%'"_s);
}

TEST(SearchConditions, BrandsAreFoundByNameAndIntroduction) {
  EXPECT_EQ(brandCondition({}, {}), QString());
  EXPECT_EQ(brandCondition(u"青禾"_s, {}), u"ximu like '%青禾%'"_s);
  EXPECT_EQ(brandCondition({}, u"丛书"_s), u"jish like '%丛书%'"_s);
  EXPECT_EQ(brandCondition(u"青禾"_s, u"丛书"_s), u"ximu like '%青禾%' and jish like '%丛书%'"_s);
}

TEST(SearchConditions, LiveGoodsWithAValue) {
  EXPECT_EQ(liveGoodsWith(u"LEBI_ID"_s, u"29"_s), u"NOTH=TRUE AND LEBI_ID=29"_s);
  EXPECT_EQ(liveGoodsWith(u"XIMU"_s, u"'%1'"_s), u"NOTH=TRUE AND XIMU='%1'"_s);
}

}  // namespace

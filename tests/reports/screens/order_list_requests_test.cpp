#include "reports/screens/order_list_requests.h"

#include <gtest/gtest.h>

#include "portal/url_encode.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

using enum OrderListSide;

const QDate march9(2024, 3, 9);
const QDate december31(2024, 12, 31);

TEST(OrderListRequests, ASearchAsksForWhatItsPaneSays) {
  struct Row {
    const char* what;
    OrderListSide side;
    OrderSearch search;
    QString criteria;
  };
  const QString picked = u"7 ID"_s;
  const QString typed = u"0"_s;
  const Row rows[] = {
      {"nothing", Purchase, {}, u"kehu_id=25"_s},
      {"nothing", Sales, {}, u"gosh_id=25"_s},
      {"nothing", Retail, {}, u"qyxx_id=25"_s},
      {"from", Purchase, {march9, {}, typed, {}}, u"kehu_id=25 and ghrq>=#3/9/2024#"_s},
      {"to", Purchase, {{}, december31, typed, {}}, u"kehu_id=25 and ghrq<=#12/31/2024#"_s},
      {"both dates",
       Sales,
       {march9, december31, typed, {}},
       u"gosh_id=25 and ghrq>=#3/9/2024# and ghrq<=#12/31/2024#"_s},
      {"dates of a retail order",
       Retail,
       {march9, december31, typed, {}},
       u"qyxx_id=25 and dhrq>=#3/9/2024# and dhrq<=#12/31/2024#"_s},
      {"a typed name", Purchase, {{}, {}, typed, u"云"_s}, u"kehu_id=25 and gosh like '%云%'"_s},
      {"a typed name", Sales, {{}, {}, typed, u"云"_s}, u"gosh_id=25 and kehu like '%云%'"_s},
      {"a typed name", Retail, {{}, {}, typed, u"云"_s}, u"qyxx_id=25 and yhxx like '%云%'"_s},
      {"a picked partner, by both",
       Purchase,
       {{}, {}, picked, u"云帆"_s},
       u"kehu_id=25 and gosh_id=7 and gosh like '%云帆%'"_s},
      {"a picked partner, by both",
       Sales,
       {{}, {}, picked, u"云帆"_s},
       u"gosh_id=25 and kehu_id=7 and kehu like '%云帆%'"_s},
      {"a picked partner, by both",
       Retail,
       {{}, {}, picked, u"云帆"_s},
       u"qyxx_id=25 and yhxx_id=7 and yhxx like '%云帆%'"_s},
      {"a picked partner without a name",
       Purchase,
       {{}, {}, picked, {}},
       u"kehu_id=25 and gosh_id=7"_s},
      {"all of it",
       Purchase,
       {march9, december31, picked, u"云帆"_s},
       u"kehu_id=25 and ghrq>=#3/9/2024# and ghrq<=#12/31/2024# and gosh_id=7"
       " and gosh like '%云帆%'"_s},
      {"an apostrophe, as it is",
       Purchase,
       {{}, {}, typed, u"O'Neil"_s},
       u"kehu_id=25 and gosh like '%O'Neil%'"_s},
      {"blanks, as they are",
       Purchase,
       {{}, {}, typed, u" 云 "_s},
       u"kehu_id=25 and gosh like '% 云 %'"_s},
      {"a key without a number", Purchase, {{}, {}, u" ID"_s, {}}, u"kehu_id=25 and gosh_id=0"_s},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(searchCriteria(row.side, 25, row.search), row.criteria) << row.what;
  }
}

TEST(OrderListRequests, APartnersOrdersAreAskedForByBothIds) {
  EXPECT_EQ(partnerCriteria(Purchase, 25, 7), u"kehu_id=25 and gosh_id=7"_s);
  EXPECT_EQ(partnerCriteria(Sales, 25, 7), u"gosh_id=25 and kehu_id=7"_s);
  EXPECT_EQ(partnerCriteria(Retail, 25, 7), u"qyxx_id=25 and yhxx_id=7"_s);
}

TEST(OrderListRequests, AreReadsOfTheirTablesWithEveryValueEncoded) {
  struct Row {
    OrderListSide side;
    QString orders, fields, sort, partners, partnerFields, own;
  };
  const Row rows[] = {{Purchase, u"GOHU"_s, u"id,gohu_no,ghrq,gosh,gosh_id,sh,"_s, u"GHRQ DESC"_s,
                       u"vGSKH"_s, u"gosh_id,gosh,"_s, u"KEHU_ID=25"_s},
                      {Sales, u"GOHU"_s, u"id,gohu_no,ghrq,kehu,kehu_id,fh,"_s, u"GHRQ DESC"_s,
                       u"vGSKH"_s, u"kehu_id,kehu,"_s, u"GOSH_ID=25"_s},
                      {Retail, u"DIHU"_s, u"id,dihu_no,dhrq,yhxx,yhxx_id,fh,"_s, u"DHRQ DESC"_s,
                       u"vQYYH"_s, u"yhxx_id,yhxx,"_s, u"QYXX_ID=25"_s}};
  const QString page = u"HTTP://portal/_vti_product/_vti_detail_field_s.asp?STABLE="_s;
  const auto coded = [](const QString& value) { return UrlEncodeField(value); };
  for (const Row& row : rows) {
    EXPECT_EQ(ordersUrl(u"HTTP://portal/"_s, row.side, u"a=1"_s),
              page + coded(row.orders) + u"&STRDATA="_s + coded(row.fields) + u"&STOTHER="_s +
                  coded(u"a=1"_s) + u"&STORDER="_s + coded(row.sort));
    EXPECT_EQ(partnersUrl(u"HTTP://portal/"_s, row.side, 25),
              page + coded(row.partners) + u"&STRDATA="_s + coded(row.partnerFields) +
                  u"&STOTHER="_s + coded(row.own));
  }
}

}  // namespace

#include "orders/order_print.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

TEST(OrderPrint, PutsEachValueIntoItsAlias) {
  const PrintedParty seller{u"s1"_s, u"s2"_s, u"s3"_s, u"s4"_s, u"s5"_s, u"s6"_s, u"s7"_s, u"s8"_s};
  const PrintedParty buyer{u"b1"_s, u"b2"_s, u"b3"_s, u"b4"_s, u"b5"_s, u"b6"_s, u"b7"_s, u"b8"_s};
  EXPECT_EQ(orderPrintCommand(seller, buyer, u"88"_s),
            u"SHAPE {select gohu.*,'s1' AS GSMC, 's2' AS GSDZ, 's3' AS GSYB, 's4' AS GSDH, "
            "'s5' AS GSLX, 's6' AS GSKH, 's7' AS GSZH, 's8' AS GSSH, 'b1' AS KHMC, 'b2' AS KHDZ, "
            "'b3' AS KHYB, 'b4' AS KHDH, 'b5' AS KHLX, 'b6' AS KHKH, 'b7' AS KHZH, 'b8' AS KHSH  "
            "from gohu where gohu.r_id=88}  AS Cmd_Gohu APPEND ({select * from goku where "
            "goku.r_id=88}  AS Cmd_goku RELATE 'ID' TO 'GOHU_ID') AS Cmd_goku"_s);
}

TEST(OrderPrint, AQuoteInAValueIsNotEscaped) {
  EXPECT_TRUE(orderPrintCommand({u"O'N"_s}, {}, u"1"_s).contains(u"'O'N' AS GSMC, '' AS GSDZ"_s));
}

TEST(OrderPrint, APercentSignInAValueIsNotAMark) {
  EXPECT_TRUE(orderPrintCommand({u"%1%2"_s}, {}, u"1"_s).contains(u"'%1%2' AS GSMC"_s));
}

TEST(OrderPrint, AnEmptyCellBecomesABlank) {
  EXPECT_EQ(printedPartyColumns(), u"qiye,dizh,yobi,dihu,lixi,khyh,yhzh,shha,"_s);
  EXPECT_EQ(printedText(u""_s), u" "_s);
  EXPECT_EQ(printedText(u" "_s), u" "_s);
  EXPECT_EQ(printedText(u"公司"_s), u"公司"_s);
}

TEST(OrderPrint, TheOwnCompanyStandsOnItsSide) {
  OrderForm form;
  form.seller.id = u"5"_s;
  form.buyer.id = u"7"_s;
  const OrderParty own{u"6"_s, u"本公司"_s};
  EXPECT_EQ(printedSellerId(OrderSide::Purchase, form, own), u"5"_s);
  EXPECT_EQ(printedBuyerId(OrderSide::Purchase, form, own), u"6"_s);
  EXPECT_EQ(printedSellerId(OrderSide::Sales, form, own), u"6"_s);
  EXPECT_EQ(printedBuyerId(OrderSide::Sales, form, own), u"7"_s);
}

#include "orders/OrderForm.h"

#include <gtest/gtest.h>

#include "values/dates.h"
#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QString>& orderCells() {
  static const QList<QString> cells{u"88"_s,    u"G1-a"_s, u"2024-3-9"_s, u"5"_s,         u"卖家"_s,
                                    u"6"_s,     u"买家"_s, u"12元"_s,     u"2024-3-10"_s, u"True"_s,
                                    u"False"_s, u"True"_s, u"False"_s,    u"快件"_s};
  return cells;
}

void takeHeaderRow(OrderForm& form, OrderSide side, const QList<QString>& cells) {
  const QList<OrderValue>& values = headerAnswerValues(side);
  ASSERT_EQ(values.size(), cells.size());
  for (qsizetype i = 0; i < values.size(); ++i) takeHeaderCell(form, values[i], cells[i]);
}

}  // namespace

TEST(OrderNumber, IsTheDateWithoutPadding) {
  EXPECT_EQ(newOrderNumber(QDate(2003, 1, 15)), u"G2003115-"_s);
  EXPECT_EQ(newOrderNumber(QDate(2026, 11, 5)), u"G2026115-"_s);
  EXPECT_EQ(newOrderNumber(QDate(2026, 12, 31)), u"G20261231-"_s);
}

TEST(OrderForm, ANewOrderIsBoughtFromThePartnerToday) {
  const OrderForm form = newOrder({u"5"_s, u"卖家"_s}, {u"6"_s, u"买家"_s}, QDate(2003, 1, 15));
  EXPECT_EQ(form.id, u"0"_s);
  EXPECT_EQ(form.number, u"G2003115-"_s);
  EXPECT_EQ(form.seller.id, u"5"_s);
  EXPECT_EQ(form.seller.name, u"卖家"_s);
  EXPECT_EQ(form.buyer.id, u"6"_s);
  EXPECT_EQ(form.buyer.name, u"买家"_s);
  EXPECT_EQ(textOf(form.orderDate), u"2003-1-15"_s);
  EXPECT_EQ(textOf(form.shipDate), u"2003-1-15"_s);
  EXPECT_EQ(form.orderDate.timeSpec(), Qt::UTC);
  EXPECT_EQ(form.otherCharges, u"0"_s);
  EXPECT_FALSE(form.flags.jhhs || form.flags.xshs || form.flags.sh || form.flags.fh);
}

TEST(OrderForm, EightShippingMethodsAreOffered) {
  EXPECT_EQ(shippingMethods(), (QList<QString>{u"慢件"_s, u"快件"_s, u"箱式"_s, u"自取"_s,
                                               u"送货"_s, u"代发"_s, u"公路"_s, u"铁路"_s}));
}

TEST(OrderForm, ReadsAnOrderInTheOrderOfItsColumns) {
  EXPECT_EQ(headerColumns(OrderSide::Purchase),
            u"id,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu,feyo,fhrq,jhhs,xshs,sh,fh,fhfs,"_s);
  EXPECT_EQ(headerColumns(OrderSide::Sales), headerColumns(OrderSide::Purchase));
  for (const OrderSide side : {OrderSide::Purchase, OrderSide::Sales}) {
    OrderForm form;
    takeHeaderRow(form, side, orderCells());
    EXPECT_EQ(form.id, u"88"_s);
    EXPECT_EQ(form.number, u"G1-a"_s);
    EXPECT_EQ(textOf(form.orderDate), u"2024-3-9"_s);
    EXPECT_EQ(form.seller.id, u"5"_s);
    EXPECT_EQ(form.seller.name, u"卖家"_s);
    EXPECT_EQ(form.buyer.id, u"6"_s);
    EXPECT_EQ(form.buyer.name, u"买家"_s);
    EXPECT_EQ(form.otherCharges, u"12元"_s);
    EXPECT_EQ(textOf(form.shipDate), u"2024-3-10"_s);
    EXPECT_TRUE(form.flags.jhhs);
    EXPECT_FALSE(form.flags.xshs);
    EXPECT_TRUE(form.flags.sh);
    EXPECT_FALSE(form.flags.fh);
    EXPECT_EQ(form.shipMethod, u"快件"_s);
  }
}

TEST(OrderForm, ReadsARetailOrderInTheOrderOfItsColumns) {
  EXPECT_EQ(headerColumns(OrderSide::Retail),
            u"id,dihu_no,dhrq,qyxx_id,qyxx,yhxx_id,yhxx,feyo,fhrq,hs,fh,fhfs,ximus,shlis,"_s);
  OrderForm form;
  takeHeaderRow(form, OrderSide::Retail,
                {u"9"_s, u"D1"_s, u"2024-3-9"_s, u"5"_s, u"卖家"_s, u"7"_s, u"个人"_s, u"3"_s,
                 u"2024-3-10"_s, u"True"_s, u"True"_s, u"自取"_s, u"31,40"_s, u"3,1"_s});
  EXPECT_EQ(form.id, u"9"_s);
  EXPECT_EQ(form.seller.id, u"5"_s);
  EXPECT_EQ(form.buyer.name, u"个人"_s);
  EXPECT_TRUE(form.flags.xshs);
  EXPECT_TRUE(form.flags.fh);
  EXPECT_FALSE(form.flags.jhhs);
  EXPECT_FALSE(form.flags.sh);
  EXPECT_EQ(form.shipMethod, u"自取"_s);
  EXPECT_EQ(form.goodsIds, u"31,40"_s);
  EXPECT_EQ(form.quantities, u"3,1"_s);
}

TEST(OrderForm, OnlyTheExactWordSetsAFlag) {
  for (const QString& word : {u"true"_s, u"1"_s, u"-1"_s, u" True"_s, u"TRUE"_s, u""_s}) {
    OrderForm form;
    form.flags.xshs = true;
    takeHeaderCell(form, OrderValue::XSHS, word);
    EXPECT_FALSE(form.flags.xshs) << word.toStdString();
  }
}

TEST(OrderForm, AnEmptyDateIsNoneAndLeavesTheOldOne) {
  OrderForm form;
  form.shipDate = toDate(u"2024-3-10");
  EXPECT_THROW(takeHeaderCell(form, OrderValue::ShipDate, QString()), TypeMismatch);
  EXPECT_EQ(textOf(form.shipDate), u"2024-3-10"_s);
}

TEST(OrderForm, ThePortalGetsTrimmedTextsAndPlainNumbers) {
  OrderForm form;
  form.number = u" G1 "_s;
  form.shipMethod = u" 快件 "_s;
  form.otherCharges = u" 12元 "_s;
  form.seller.name = u" 卖家 "_s;
  form.flags.fh = true;
  form.counts.texts[CountTotal] = u" 1 234.50 元"_s;
  const OrderParty own{u"6"_s, u"买家"_s};
  EXPECT_EQ(portalValue(form, own, OrderValue::Number), u"G1"_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::ShipMethod), u"快件"_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::OtherCharges), u"12元"_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::Seller), u" 卖家 "_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::FH), u"1"_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::SH), u"0"_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::Total), u"1234.5"_s);
  EXPECT_EQ(portalValue(form, own, OrderValue::OwnId), u"6"_s);
}

TEST(OrderForm, TheLocalRowGetsChargesAndTotalsAsShown) {
  OrderForm form;
  form.number = u" G1 "_s;
  form.shipMethod = u" 快件 "_s;
  form.otherCharges = u" 12元 "_s;
  form.shipDate = toDate(u"2024-3-10");
  form.flags.sh = true;
  form.counts.texts[CountTax] = u"37.05"_s;
  const OrderParty own{u"6"_s, u"买家"_s};
  EXPECT_EQ(localValue(form, own, OrderValue::Number).toString(), u"G1"_s);
  EXPECT_EQ(localValue(form, own, OrderValue::ShipMethod).toString(), u"快件"_s);
  EXPECT_EQ(localValue(form, own, OrderValue::OtherCharges).toString(), u" 12元 "_s);
  EXPECT_EQ(localValue(form, own, OrderValue::ShipDate), QVariant(form.shipDate));
  EXPECT_EQ(localValue(form, own, OrderValue::SH), QVariant(1));
  EXPECT_EQ(localValue(form, own, OrderValue::JHHS), QVariant(0));
  EXPECT_EQ(localValue(form, own, OrderValue::Tax).toString(), u"37.05"_s);
  EXPECT_EQ(localValue(form, own, OrderValue::OwnName).toString(), u"买家"_s);
}

#include "orders/order_requests.h"

#include <gtest/gtest.h>

#include "values/dates.h"
#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

OrderForm filledForm() {
  OrderForm form;
  form.id = u"88"_s;
  form.number = u" G2003115-7 "_s;
  form.orderDate = toDate(u"2003-1-15");
  form.seller = {u"5"_s, u"卖家"_s};
  form.buyer = {u"7"_s, u"买家"_s};
  form.otherCharges = u" 35 "_s;
  form.shipDate = toDate(u"2003-2-1");
  form.flags = {.jhhs = true, .xshs = false, .sh = false, .fh = true};
  form.shipMethod = u" 快件 "_s;
  form.counts.texts = {u"1"_s, u"25"_s, u"312.5"_s, u"62.5"_s, u"250"_s, u"285"_s, u"37.05"_s};
  form.goodsIds = u"31,40"_s;
  form.quantities = u"3,1"_s;
  return form;
}

const OrderParty own{u"6"_s, u"本公司"_s};

OrderLineRow filledLine() {
  OrderLineRow row;
  row.key = u"417 ID"_s;
  for (std::size_t i = 0; i < row.texts.size(); ++i) row.texts[i] = u"c%1"_s.arg(i);
  row.texts[LineGoodsId] = u"31"_s;
  row.texts[LineCode] = u" c1 "_s;
  row.texts[LineBookNumber] = u" N7 "_s;
  row.texts[LineCategory] = u" 小说 "_s;
  return row;
}

QString joined(const QList<RequestField>& fields) {
  QString text;
  for (const RequestField& field : fields) text += field.name + u'=' + field.value + u'&';
  return text;
}

QString keptLocally(OrderSide side) {
  QString text;
  for (const HeaderField& field : localHeaderFields(side)) {
    const QVariant value = localValue(filledForm(), own, field.from);
    const bool isDate = value.typeId() == QMetaType::QDateTime;
    text += field.name + u'=' + (isDate ? textOf(value.toDateTime()) : value.toString()) + u'&';
  }
  return text;
}

}  // namespace

TEST(OrderRequests, TheBuyerSendsTheBuyersHalf) {
  const SaveRequest request = headerRequest(OrderSide::Purchase, filledForm(), own);
  EXPECT_EQ(request.table, u"gohu"_s);
  EXPECT_EQ(request.columnCount, u"36"_s);
  EXPECT_EQ(request.condition, u"id=88"_s);
  EXPECT_EQ(joined(request.fields),
            u"GOSH_ID=5&GOSH=卖家&KEHU_ID=6&KEHU=本公司&GOHU_NO=G2003115-7&GHRQ=2003-1-15&JHHS=1&"
            "SH=0&SHLI=25&JINE=312.5&ZHKO=62.5&YNSH=250&HEJI=285&SHER=37.05&"_s);
}

TEST(OrderRequests, TheSellerSendsTheSellersHalf) {
  const SaveRequest request = headerRequest(OrderSide::Sales, filledForm(), own);
  EXPECT_EQ(request.table, u"gohu"_s);
  EXPECT_EQ(request.columnCount, u"36"_s);
  EXPECT_EQ(request.condition, u"id=88"_s);
  EXPECT_EQ(joined(request.fields),
            u"GOSH_ID=6&GOSH=本公司&KEHU_ID=7&KEHU=买家&GOHU_NO=G2003115-7&GHRQ=2003-1-15&"
            "FHRQ=2003-2-1&XSHS=0&FH=1&FHFS=快件&SHLI=25&JINE=312.5&ZHKO=62.5&YNSH=250&FEYO=35&"
            "HEJI=285&SHER=37.05&"_s);
}

TEST(OrderRequests, ARetailOrderSendsNeitherPartiesNorLines) {
  const SaveRequest request = headerRequest(OrderSide::Retail, filledForm(), own);
  EXPECT_EQ(request.table, u"dihu"_s);
  EXPECT_EQ(request.columnCount, u"36"_s);
  EXPECT_EQ(request.condition, u"id=88"_s);
  EXPECT_EQ(joined(request.fields),
            u"DIHU_NO=G2003115-7&DHRQ=2003-1-15&FHRQ=2003-2-1&HS=0&FH=1&FHFS=快件&SHLI=25&"
            "JINE=312.5&ZHKO=62.5&YNSH=250&FEYO=35&HEJI=285&SHER=37.05&"_s);
}

TEST(OrderRequests, AnOrderWhoseFirstLoadFailedHasNoIdToSend) {
  OrderForm form = filledForm();
  form.id.clear();
  EXPECT_EQ(headerRequest(OrderSide::Sales, form, own).condition, u"id="_s);
}

TEST(OrderRequests, ALineBelongsToItsOrder) {
  const SaveRequest request = lineRequest(filledLine(), u"88"_s);
  EXPECT_EQ(request.table, u"goku"_s);
  EXPECT_EQ(request.columnCount, u"17"_s);
  EXPECT_EQ(request.condition, u"id=417 and gohu_id=88"_s);
  EXPECT_EQ(joined(request.fields),
            u"GOHU_ID=88&XIMU=c0&XIMU_BH= c1 &SHLI=c2&JIGE=c3&JINE=c4&ZHKO=c5&YNSH=c6&BAXI=c7&"
            "LING=c8&XIMU_ID=31&BAZH=c10&GESH=c11&XIMU_NO= N7 &LEBI= 小说 &"_s);
}

TEST(OrderRequests, ALineWithoutAKeyIsNew) {
  OrderLineRow row = filledLine();
  row.key.clear();
  EXPECT_EQ(lineRequest(row, u"88"_s).condition, u"id=0 and gohu_id=88"_s);
}

TEST(OrderRequests, ReadsAskForTheSidesColumns) {
  EXPECT_EQ(headerRead(OrderSide::Purchase, u"88"_s).table, u"GOHU"_s);
  EXPECT_EQ(headerRead(OrderSide::Sales, u"88"_s).condition, u"id=88"_s);
  EXPECT_EQ(headerRead(OrderSide::Retail, u"9"_s).table, u"DIHU"_s);
  EXPECT_EQ(headerRead(OrderSide::Retail, u"9"_s).columns, headerColumns(OrderSide::Retail));

  const ReadRequest purchase = lineRead(OrderSide::Purchase, u"88"_s);
  EXPECT_EQ(purchase.table, u"GOKU"_s);
  EXPECT_EQ(
      purchase.columns,
      u"id,ximu_id,ximu,ximu_bh,shli,jige,jine,zhko,ynsh,baxi,ling,bazh,gesh,ximu_no,lebi,"_s);
  EXPECT_EQ(purchase.condition, u"gohu_id=88"_s);
  EXPECT_EQ(lineRead(OrderSide::Sales, u"88"_s).columns,
            u"id,ximu_id,ximu,ximu_bh,shli,jige,jine,zhko,ynsh,baxi,ling,bazh,gesh,ximu_no,"_s);

  const ReadRequest retail = retailLineRead(u"31,40"_s, u"6"_s);
  EXPECT_EQ(retail.table, u"XIMU"_s);
  EXPECT_EQ(retail.columns, u"id,ximu,jigex,"_s);
  EXPECT_EQ(retail.condition, u"id in (31,40) and qiye_id=6"_s);
  EXPECT_EQ(retailLineRead(QString(), u"6"_s).condition, u"id in () and qiye_id=6"_s);
}

TEST(OrderRequests, TheLocalHeaderHoldsTheWholeOrderOnBothSides) {
  const QString rest =
      u"GOHU_NO=G2003115-7&GHRQ=2003-1-15&FHRQ=2003-2-1&JHHS=1&XSHS=0&SH=0&FH=1&FHFS=快件&SHLI=25&"
      "JINE=312.5&ZHKO=62.5&YNSH=250&FEYO= 35 &HEJI=285&SHER=37.05&"_s;
  EXPECT_EQ(keptLocally(OrderSide::Purchase),
            u"gosh_id=5&gosh=卖家&kehu_id=6&kehu=本公司&"_s + rest);
  EXPECT_EQ(keptLocally(OrderSide::Sales), u"gosh_id=6&gosh=本公司&kehu_id=7&kehu=买家&"_s + rest);
  EXPECT_EQ(keptLocally(OrderSide::Retail), QString());
}

TEST(OrderRequests, TheLocalLineHasNoDiscountNoteAndTwoTrimmedTexts) {
  QString text;
  for (const LineField& field : localLineFields()) {
    text += field.name + u'=' + localLineValue(filledLine(), field) + u'&';
  }
  EXPECT_EQ(text,
            u"XIMU=c0&XIMU_BH= c1 &SHLI=c2&JIGE=c3&JINE=c4&ZHKO=c5&YNSH=c6&BAXI=c7&LING=c8&"
            "XIMU_ID=31&GESH=c11&XIMU_NO=N7&LEBI=小说&"_s);
}

TEST(OrderRequests, LocalRowsAreFoundByThePortalsOrderId) {
  EXPECT_EQ(localHeaderCommand(u"88"_s), u"SELECT * FROM GOHU WHERE R_ID=88"_s);
  EXPECT_EQ(localLineCommand(u"88"_s, filledLine()),
            u"SELECT * FROM GOKU WHERE R_ID=88 AND XIMU_ID=31"_s);
  OrderLineRow row = filledLine();
  row.texts[LineGoodsId] = u"2147483648"_s;
  EXPECT_THROW(localLineCommand(u"88"_s, row), Overflow);
}

#include "orders/order_requests.h"

#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

using enum OrderValue;

const QList<HeaderField>& sentByBuyer() {
  static const QList<HeaderField> fields{
      {u"GOSH_ID"_s, SellerId}, {u"GOSH"_s, Seller},    {u"KEHU_ID"_s, OwnId},
      {u"KEHU"_s, OwnName},     {u"GOHU_NO"_s, Number}, {u"GHRQ"_s, OrderDate},
      {u"JHHS"_s, JHHS},        {u"SH"_s, SH},          {u"SHLI"_s, Quantity},
      {u"JINE"_s, Amount},      {u"ZHKO"_s, Discount},  {u"YNSH"_s, Receivable},
      {u"HEJI"_s, Total},       {u"SHER"_s, Tax}};
  return fields;
}

const QList<HeaderField>& sentBySeller() {
  static const QList<HeaderField> fields{
      {u"GOSH_ID"_s, OwnId},   {u"GOSH"_s, OwnName},    {u"KEHU_ID"_s, BuyerId},
      {u"KEHU"_s, Buyer},      {u"GOHU_NO"_s, Number},  {u"GHRQ"_s, OrderDate},
      {u"FHRQ"_s, ShipDate},   {u"XSHS"_s, XSHS},       {u"FH"_s, FH},
      {u"FHFS"_s, ShipMethod}, {u"SHLI"_s, Quantity},   {u"JINE"_s, Amount},
      {u"ZHKO"_s, Discount},   {u"YNSH"_s, Receivable}, {u"FEYO"_s, OtherCharges},
      {u"HEJI"_s, Total},      {u"SHER"_s, Tax}};
  return fields;
}

const QList<HeaderField>& sentByRetailer() {
  // The parties and the packed lines are the portal's; they are never written back.
  static const QList<HeaderField> fields{{u"DIHU_NO"_s, Number},
                                         {u"DHRQ"_s, OrderDate},
                                         {u"FHRQ"_s, ShipDate},
                                         {u"HS"_s, XSHS},
                                         {u"FH"_s, FH},
                                         {u"FHFS"_s, ShipMethod},
                                         {u"SHLI"_s, Quantity},
                                         {u"JINE"_s, Amount},
                                         {u"ZHKO"_s, Discount},
                                         {u"YNSH"_s, Receivable},
                                         {u"FEYO"_s, OtherCharges},
                                         {u"HEJI"_s, Total},
                                         {u"SHER"_s, Tax}};
  return fields;
}

QList<HeaderField> keptFields(const QList<HeaderField>& parties) {
  return parties + QList<HeaderField>{{u"GOHU_NO"_s, Number},
                                      {u"GHRQ"_s, OrderDate},
                                      {u"FHRQ"_s, ShipDate},
                                      {u"JHHS"_s, JHHS},
                                      {u"XSHS"_s, XSHS},
                                      {u"SH"_s, SH},
                                      {u"FH"_s, FH},
                                      {u"FHFS"_s, ShipMethod},
                                      {u"SHLI"_s, Quantity},
                                      {u"JINE"_s, Amount},
                                      {u"ZHKO"_s, Discount},
                                      {u"YNSH"_s, Receivable},
                                      {u"FEYO"_s, OtherCharges},
                                      {u"HEJI"_s, Total},
                                      {u"SHER"_s, Tax}};
}

}  // namespace

const QList<HeaderField>& sentHeaderFields(OrderSide side) {
  switch (side) {
    case OrderSide::Purchase:
      return sentByBuyer();
    case OrderSide::Sales:
      return sentBySeller();
    case OrderSide::Retail:
      break;
  }
  return sentByRetailer();
}

const QList<HeaderField>& localHeaderFields(OrderSide side) {
  static const QList<HeaderField> purchase = keptFields(
      {{u"gosh_id"_s, SellerId}, {u"gosh"_s, Seller}, {u"kehu_id"_s, OwnId}, {u"kehu"_s, OwnName}});
  static const QList<HeaderField> sales = keptFields(
      {{u"gosh_id"_s, OwnId}, {u"gosh"_s, OwnName}, {u"kehu_id"_s, BuyerId}, {u"kehu"_s, Buyer}});
  static const QList<HeaderField> none;
  switch (side) {
    case OrderSide::Purchase:
      return purchase;
    case OrderSide::Sales:
      return sales;
    case OrderSide::Retail:
      break;
  }
  return none;
}

const QList<LineField>& sentLineFields() {
  static const QList<LineField> fields{
      {u"XIMU"_s, LineName},          {u"XIMU_BH"_s, LineCode}, {u"SHLI"_s, LineQuantity},
      {u"JIGE"_s, LinePrice},         {u"JINE"_s, LineAmount},  {u"ZHKO"_s, LineDiscount},
      {u"YNSH"_s, LineReceivable},    {u"BAXI"_s, LineCartons}, {u"LING"_s, LineLoose},
      {u"XIMU_ID"_s, LineGoodsId},    {u"BAZH"_s, LineNote},    {u"GESH"_s, LineCartonSize},
      {u"XIMU_NO"_s, LineBookNumber}, {u"LEBI"_s, LineCategory}};
  return fields;
}

const QList<LineField>& localLineFields() {
  // The discount note is not kept locally.
  static const QList<LineField> fields{
      {u"XIMU"_s, LineName},          {u"XIMU_BH"_s, LineCode},
      {u"SHLI"_s, LineQuantity},      {u"JIGE"_s, LinePrice},
      {u"JINE"_s, LineAmount},        {u"ZHKO"_s, LineDiscount},
      {u"YNSH"_s, LineReceivable},    {u"BAXI"_s, LineCartons},
      {u"LING"_s, LineLoose},         {u"XIMU_ID"_s, LineGoodsId},
      {u"GESH"_s, LineCartonSize},    {u"XIMU_NO"_s, LineBookNumber, true},
      {u"LEBI"_s, LineCategory, true}};
  return fields;
}

SaveRequest headerRequest(OrderSide side, const OrderForm& form, const OrderParty& own) {
  SaveRequest request{
      side == OrderSide::Retail ? u"dihu"_s : u"gohu"_s, u"36"_s, u"id="_s + form.id, {}};
  for (const HeaderField& field : sentHeaderFields(side)) {
    request.fields.append({field.name, portalValue(form, own, field.from)});
  }
  return request;
}

SaveRequest lineRequest(const OrderLineRow& row, const QString& orderId) {
  SaveRequest request{u"goku"_s,
                      u"17"_s,
                      u"id=%1 and gohu_id=%2"_s.arg(row.portalId(), orderId),
                      {{u"GOHU_ID"_s, orderId}}};
  for (const LineField& field : sentLineFields()) {
    request.fields.append({field.name, row.texts[static_cast<std::size_t>(field.from)]});
  }
  return request;
}

ReadRequest headerRead(OrderSide side, const QString& orderId) {
  return {side == OrderSide::Retail ? u"DIHU"_s : u"GOHU"_s, headerColumns(side),
          u"id="_s + orderId};
}

ReadRequest lineRead(OrderSide side, const QString& orderId) {
  const QString columns =
      u"id,ximu_id,ximu,ximu_bh,shli,jige,jine,zhko,ynsh,baxi,ling,bazh,gesh,ximu_no,"_s;
  return {u"GOKU"_s, side == OrderSide::Purchase ? columns + u"lebi,"_s : columns,
          u"gohu_id="_s + orderId};
}

ReadRequest retailLineRead(const QString& goodsIds, const QString& ownId) {
  return {u"XIMU"_s, u"id,ximu,jigex,"_s, u"id in ("_s + goodsIds + u") and qiye_id="_s + ownId};
}

QString localHeaderCommand(const QString& orderId) {
  return u"SELECT * FROM GOHU WHERE R_ID="_s + orderId;
}

QString localLineCommand(const QString& orderId, const OrderLineRow& row) {
  return u"SELECT * FROM GOKU WHERE R_ID="_s + orderId + u" AND XIMU_ID="_s +
         textOf(toInt32(row.goodsId()));
}

QString localLineValue(const OrderLineRow& row, const LineField& field) {
  const QString& text = row.texts[static_cast<std::size_t>(field.from)];
  return field.trimmed ? Trim(text) : text;
}

}  // namespace qinghe

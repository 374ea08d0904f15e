#include "orders/OrderForm.h"

#include <optional>

#include "values/dates.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

std::optional<OrderCount> countOf(OrderValue value) {
  switch (value) {
    case OrderValue::Quantity:
      return CountQuantity;
    case OrderValue::Amount:
      return CountAmount;
    case OrderValue::Discount:
      return CountDiscount;
    case OrderValue::Receivable:
      return CountReceivable;
    case OrderValue::Total:
      return CountTotal;
    case OrderValue::Tax:
      return CountTax;
    default:
      return {};
  }
}

template <class Flags>
auto* flagOf(Flags& flags, OrderValue value) {
  using Flag = decltype(&flags.jhhs);
  switch (value) {
    case OrderValue::JHHS:
      return &flags.jhhs;
    case OrderValue::XSHS:
      return &flags.xshs;
    case OrderValue::SH:
      return &flags.sh;
    case OrderValue::FH:
      return &flags.fh;
    default:
      return Flag{nullptr};
  }
}

template <class Form>
auto* dateOf(Form& form, OrderValue value) {
  using Date = decltype(&form.orderDate);
  if (value == OrderValue::OrderDate) return &form.orderDate;
  if (value == OrderValue::ShipDate) return &form.shipDate;
  return Date{nullptr};
}

template <class Form>
auto* textOfForm(Form& form, OrderValue value) {
  using Text = decltype(&form.id);
  switch (value) {
    case OrderValue::Id:
      return &form.id;
    case OrderValue::Number:
      return &form.number;
    case OrderValue::SellerId:
      return &form.seller.id;
    case OrderValue::Seller:
      return &form.seller.name;
    case OrderValue::BuyerId:
      return &form.buyer.id;
    case OrderValue::Buyer:
      return &form.buyer.name;
    case OrderValue::OtherCharges:
      return &form.otherCharges;
    case OrderValue::ShipMethod:
      return &form.shipMethod;
    case OrderValue::GoodsIds:
      return &form.goodsIds;
    case OrderValue::Quantities:
      return &form.quantities;
    default:
      return Text{nullptr};
  }
}

// The texts of the form and of the own company, as they are shown.
QString shownText(const OrderForm& form, const OrderParty& own, OrderValue value) {
  if (value == OrderValue::OwnId) return own.id;
  if (value == OrderValue::OwnName) return own.name;
  if (const auto count = countOf(value)) return form.counts.texts[*count];
  const QString* text = textOfForm(form, value);
  return text ? *text : QString();
}

bool isAlwaysTrimmed(OrderValue value) {
  return value == OrderValue::Number || value == OrderValue::ShipMethod;
}

}  // namespace

const QList<QString>& shippingMethods() {
  static const QList<QString> methods{u"慢件"_s, u"快件"_s, u"箱式"_s, u"自取"_s,
                                      u"送货"_s, u"代发"_s, u"公路"_s, u"铁路"_s};
  return methods;
}

QString newOrderNumber(QDate today) {
  return u"G%1%2%3-"_s.arg(today.year()).arg(today.month()).arg(today.day());
}

OrderForm newOrder(const OrderParty& partner, const OrderParty& own, QDate today) {
  // In UTC, as every date here: a clock change cannot give the day a time.
  const QDateTime midnight(today, QTime(0, 0), Qt::UTC);
  OrderForm form;
  form.number = newOrderNumber(today);
  form.seller = partner;
  form.buyer = own;
  form.orderDate = midnight;
  form.shipDate = midnight;
  return form;
}

QString headerColumns(OrderSide side) {
  return side == OrderSide::Retail
             ? u"id,dihu_no,dhrq,qyxx_id,qyxx,yhxx_id,yhxx,feyo,fhrq,hs,fh,fhfs,ximus,shlis,"_s
             : u"id,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu,feyo,fhrq,jhhs,xshs,sh,fh,fhfs,"_s;
}

const QList<OrderValue>& headerAnswerValues(OrderSide side) {
  using enum OrderValue;
  static const QList<OrderValue> order{Id,      Number, OrderDate,    SellerId,  Seller,
                                       BuyerId, Buyer,  OtherCharges, ShipDate,  JHHS,
                                       XSHS,    SH,     FH,           ShipMethod};
  // A retail order has no confirmation by its buyer and no receipt.
  static const QList<OrderValue> retail{Id,      Number,     OrderDate,    SellerId,  Seller,
                                        BuyerId, Buyer,      OtherCharges, ShipDate,  XSHS,
                                        FH,      ShipMethod, GoodsIds,     Quantities};
  return side == OrderSide::Retail ? retail : order;
}

void takeHeaderCell(OrderForm& form, OrderValue value, const QString& cell) {
  if (bool* flag = flagOf(form.flags, value)) {
    *flag = cell == u"True";
  } else if (QDateTime* date = dateOf(form, value)) {
    *date = toDate(cell);
  } else if (QString* text = textOfForm(form, value)) {
    *text = cell;
  }
}

QString portalValue(const OrderForm& form, const OrderParty& own, OrderValue value) {
  if (const bool* flag = flagOf(form.flags, value)) return *flag ? u"1"_s : u"0"_s;
  if (const QDateTime* date = dateOf(form, value)) return textOf(*date);
  const QString text = shownText(form, own, value);
  if (countOf(value)) return textOf(Val(text));
  return isAlwaysTrimmed(value) || value == OrderValue::OtherCharges ? Trim(text) : text;
}

QVariant localValue(const OrderForm& form, const OrderParty& own, OrderValue value) {
  if (const bool* flag = flagOf(form.flags, value)) return *flag ? 1 : 0;
  if (const QDateTime* date = dateOf(form, value)) return *date;
  const QString text = shownText(form, own, value);
  return isAlwaysTrimmed(value) ? Trim(text) : text;
}

}  // namespace qinghe

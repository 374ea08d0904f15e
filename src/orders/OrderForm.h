#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

#include "orders/order_totals.h"

namespace qinghe {

/// The three screens that work on an order.
enum class OrderSide {
  Purchase,  ///< the buyer on an order
  Sales,     ///< the seller on an order
  Retail,    ///< the seller on a retail order
};

/// The four flags are an order's whole state; nothing enforces a sequence between them.
struct OrderFlags {
  bool jhhs = false;  ///< customer confirmed
  bool xshs = false;  ///< supplier confirmed
  bool sh = false;    ///< goods received
  bool fh = false;    ///< goods shipped
};

/// An enterprise as a screen holds it: the id as decimal text, and the name.
struct OrderParty {
  QString id;
  QString name;
};

/// What the header of an open order holds. Ids are decimal text; the order's own is "0" until the
/// portal has given one.
struct OrderForm {
  QString id = QStringLiteral("0");
  QString number;
  QDateTime orderDate;
  OrderParty seller;
  OrderParty buyer;
  QString otherCharges = QStringLiteral("0");
  QDateTime shipDate;
  OrderFlags flags;
  QString shipMethod;
  OrderCounts counts;
  QString goodsIds;    ///< of a retail order, joined by commas, as received
  QString quantities;  ///< likewise
};

/// A value of the header, with the company that works on it.
enum class OrderValue {
  Id,
  Number,
  OrderDate,
  SellerId,
  Seller,
  BuyerId,
  Buyer,
  OtherCharges,
  ShipDate,
  JHHS,
  XSHS,
  SH,
  FH,
  ShipMethod,
  Quantity,
  Amount,
  Discount,
  Receivable,
  Total,
  Tax,
  GoodsIds,
  Quantities,
  OwnId,
  OwnName,
};

/// The shipping methods on offer, in list order.
const QList<QString>& shippingMethods();

/// The number that a new order starts with: "G", year, month and day without padding, "-".
QString newOrderNumber(QDate today);

/// A new order: the chosen partner sells, the own company buys, both dates are today.
OrderForm newOrder(const OrderParty& partner, const OrderParty& own, QDate today);

/// The columns that a header is read with, joined and ended by commas.
QString headerColumns(OrderSide side);

/// What the cells of a header's portal answer stand for, in the answer's order.
const QList<OrderValue>& headerAnswerValues(OrderSide side);

/// Sets one value from a cell of the portal's answer. A flag is set only by exactly "True". Throws
/// `TypeMismatch` when a date is none, and leaves the form.
void takeHeaderCell(OrderForm& form, OrderValue value, const QString& cell);

/// A value as it goes to the portal: number, method and other charges trimmed, flags 0 or 1, totals
/// as plain numbers.
QString portalValue(const OrderForm& form, const OrderParty& own, OrderValue value);

/// A value as it goes to the local row: number and method trimmed, other charges and totals as
/// the text that is shown, flags 0 or 1, dates as dates.
QVariant localValue(const OrderForm& form, const OrderParty& own, OrderValue value);

}  // namespace qinghe

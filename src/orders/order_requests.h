#pragma once

#include <QList>
#include <QString>

#include "orders/OrderForm.h"
#include "orders/OrderLineRow.h"

namespace qinghe {

/// A header field that is sent or kept, and where its value comes from.
struct HeaderField {
  QString name;
  OrderValue from;
};

/// A line field that is sent or kept, and the column it comes from.
struct LineField {
  QString name;
  LineColumn from;
  bool trimmed = false;
};

/// The fields of a header that a side sends, in order. Each side sends its own half, so that the
/// last writer does not undo the other's.
const QList<HeaderField>& sentHeaderFields(OrderSide side);

/// The fields of the local header, in the order they are written, both sides' halves alike. A
/// retail order has no local copy.
const QList<HeaderField>& localHeaderFields(OrderSide side);

/// The fields of a line that are sent, in order, without the order's id in front of them.
const QList<LineField>& sentLineFields();

/// The fields of the local line, without the two keys in front of them.
const QList<LineField>& localLineFields();

struct RequestField {
  QString name;
  QString value;
};

/// A save request; values are not encoded yet.
struct SaveRequest {
  QString table;        ///< `stable`
  QString columnCount;  ///< `structn`
  QString condition;    ///< `stother`
  QList<RequestField> fields;
};

/// `SaveHeaderToPortal`, and the one save of a retail order.
SaveRequest headerRequest(OrderSide side, const OrderForm& form, const OrderParty& own);

/// `SaveLineToPortal` for a line of the order with this id.
SaveRequest lineRequest(const OrderLineRow& row, const QString& orderId);

/// What a read asks for; values are not encoded yet.
struct ReadRequest {
  QString table;      ///< `STABLE`
  QString columns;    ///< `STRDATA`
  QString condition;  ///< `STOTHER`
};

/// `LoadHeader` of the order with this id.
ReadRequest headerRead(OrderSide side, const QString& orderId);
/// `LoadLines` of an order. The sales side does not ask for the category.
ReadRequest lineRead(OrderSide side, const QString& orderId);
/// `LoadLines` of a retail order: its goods among the company's own.
ReadRequest retailLineRead(const QString& goodsIds, const QString& ownId);

/// Finds the local copy of an order by its portal id.
QString localHeaderCommand(const QString& orderId);
/// Finds the local copy of a line by its order and goods. Throws `Overflow` when the goods id is
/// beyond 32 bits.
QString localLineCommand(const QString& orderId, const OrderLineRow& row);
/// A line's value as it goes to the local row.
QString localLineValue(const OrderLineRow& row, const LineField& field);

}  // namespace qinghe

#include "orders/order_totals.h"

#include "values/money.h"
#include "values/numbers.h"

namespace qinghe {

namespace {
constexpr double taxRate = 0.13;
}

SummedTexts summedTexts(const OrderLineRow& row) {
  return {row.texts[LineQuantity], row.texts[LineAmount], row.texts[LineReceivable]};
}

SummedTexts summedTexts(const RetailLineRow& row) {
  return {row.texts[RetailQuantity], row.texts[RetailAmount], row.texts[RetailReceivable]};
}

void RefreshTotals(const QList<SummedTexts>& rows, const QString& otherCharges,
                   OrderCounts& counts) {
  qint32 quantity = 0;
  Money amount;
  Money receivable;
  for (const SummedTexts& row : rows) {
    quantity = toInt32(quantity + Val(row.quantity));
    amount = amount + Money(Val(row.amount));
    receivable = receivable + Money(Val(row.receivable));
  }
  const Money discount = amount - receivable;
  counts.texts[CountLines] = textOf(qint64{rows.size()});
  counts.texts[CountQuantity] = textOf(quantity);
  counts.texts[CountAmount] = amount.text();
  counts.texts[CountDiscount] = discount.text();
  counts.texts[CountReceivable] = receivable.text();
  const Money total = receivable + Money(Val(otherCharges));
  counts.texts[CountTotal] = total.text();
  counts.texts[CountTax] = textOf(total.toDouble() * taxRate);
}

}  // namespace qinghe

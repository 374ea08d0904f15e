#pragma once

#include <QList>
#include <QString>
#include <array>

#include "orders/OrderLineRow.h"
#include "orders/RetailLineRow.h"

namespace qinghe {

/// The texts of `TxtCounts`, in the order of its indexes.
enum OrderCount {
  CountLines,
  CountQuantity,
  CountAmount,
  CountDiscount,
  CountReceivable,
  CountTotal,
  CountTax,
  OrderCountCount
};

/// The totals start as "0".
struct OrderCounts {
  OrderCounts() { texts.fill(QStringLiteral("0")); }
  std::array<QString, OrderCountCount> texts;
};

/// The texts of a row that are summed.
struct SummedTexts {
  QString quantity;
  QString amount;
  QString receivable;
};

SummedTexts summedTexts(const OrderLineRow& row);
SummedTexts summedTexts(const RetailLineRow& row);

/// Computes the totals from the rows in list order and the other charges as typed.
///
/// The quantity is a 32-bit whole number, rounded half to even after each row; amounts have four
/// decimals, rounded half to even row by row. The tax is 0.13 of goods and other charges, not
/// rounded. Throws `Overflow` when a sum does not fit: sums of the rows then leave all totals as
/// they were, other charges leave the last two.
void RefreshTotals(const QList<SummedTexts>& rows, const QString& otherCharges,
                   OrderCounts& counts);

template <class Row>
void RefreshTotals(const QList<Row>& rows, const QString& otherCharges, OrderCounts& counts) {
  QList<SummedTexts> texts;
  texts.reserve(rows.size());
  for (const Row& row : rows) texts.append(summedTexts(row));
  RefreshTotals(texts, otherCharges, counts);
}

}  // namespace qinghe

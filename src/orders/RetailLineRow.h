#pragma once

#include <QList>
#include <QString>
#include <array>

#include "orders/OrderLineRow.h"

namespace qinghe {

/// The columns of a retail order's list.
enum RetailColumn {
  RetailName,
  RetailQuantity,
  RetailPrice,
  RetailAmount,
  RetailDiscount,
  RetailReceivable,
  RetailColumnCount
};

const QList<LineColumnTitle>& retailLineColumns();

/// One line of a retail order: the goods id followed by " ID" and six texts.
struct RetailLineRow {
  QString key;
  std::array<QString, RetailColumnCount> texts;
};

/// The pieces of a packed list, which stand between commas. An empty list has none.
QList<QString> packedPieces(const QString& packed);

/// Appends the next line of a retail order from an answer row: goods id, name and today's price.
///
/// The quantity is the piece at the new row's position: goods and quantities belong together by
/// position only. Throws `Failure` when the quantities have run out or a product is beyond a
/// double; the row then stays with what it has got so far.
void addPackedLine(QList<RetailLineRow>& rows, const QList<QString>& cells,
                   const QList<QString>& quantities);

}  // namespace qinghe

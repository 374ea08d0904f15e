#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <array>

#include "orders/OrderLineRow.h"

namespace qinghe {

/// The columns of the goods chooser's list.
enum ChosenColumn {
  ChosenName,
  ChosenCategory,
  ChosenQuantity,
  ChosenPrice,
  ChosenDiscount,
  ChosenNote,
  ChosenCartonSize,
  ChosenCode,
  ChosenBookNumber,
  ChosenColumnCount
};

const QList<LineColumnTitle>& chosenGoodsColumns();

/// A row of the goods chooser: the goods id followed by " ID" and nine texts.
struct ChosenGoodsRow {
  QString key;
  std::array<QString, ChosenColumnCount> texts;
};

/// The goods ids of an order between commas: ",12,7,"; "," for an order without lines.
QString ChosenIdList(const QList<OrderLineRow>& rows);

/// Such a list, read once for many questions.
class ChosenIds {
 public:
  explicit ChosenIds(const QString& list);
  /// Whether a goods id stands in the list, framed by two commas; case does not count.
  bool contains(const QString& goodsId) const { return ids_.contains(goodsId.toCaseFolded()); }

 private:
  QSet<QString> ids_;
};

/// Takes the rows with a quantity from the chooser into the order, unless the chooser was left
/// without `CheckOK`. Goods that are on the order already get their line overwritten and keep its
/// key; a quantity of 0 removes nothing.
///
/// Throws `Failure` when a line cannot be computed: the taking ends there, and what was taken until
/// then stays, that row's cells before the failing one included.
void TakeChosenLines(QList<OrderLineRow>& rows, const QList<ChosenGoodsRow>& chosen, bool accepted);

}  // namespace qinghe

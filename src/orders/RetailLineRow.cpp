#include "orders/RetailLineRow.h"

#include "orders/cell_product.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {
constexpr int outOfRangeNumber = 9;
}

const QList<LineColumnTitle>& retailLineColumns() {
  static const QList<LineColumnTitle> columns{{u"商品"_s, 2500}, {u"数量"_s, 1000},
                                              {u"单价"_s, 1000}, {u"金额"_s, 1000},
                                              {u"折扣"_s, 1000}, {u"应收"_s, 1000}};
  return columns;
}

QList<QString> packedPieces(const QString& packed) {
  return packed.isEmpty() ? QList<QString>() : packed.split(u',');
}

void addPackedLine(QList<RetailLineRow>& rows, const QList<QString>& cells,
                   const QList<QString>& quantities) {
  const qsizetype position = rows.size();
  RetailLineRow& row = rows.emplaceBack();
  row.key = lineKey(cells.value(0));
  row.texts[RetailName] = Trim(cells.value(1));
  row.texts[RetailPrice] = cells.value(2);
  if (position >= quantities.size()) {
    throw Failure(outOfRangeNumber, u"下标越界: %1"_s.arg(position));
  }
  row.texts[RetailQuantity] = quantities[position];
  row.texts[RetailAmount] = cellProduct(row.texts[RetailPrice], row.texts[RetailQuantity]);
  // Whoever buys singly gets no discount.
  row.texts[RetailDiscount] = u"1"_s;
  row.texts[RetailReceivable] = cellProduct(row.texts[RetailDiscount], row.texts[RetailAmount]);
}

}  // namespace qinghe

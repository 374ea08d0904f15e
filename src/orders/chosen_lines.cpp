#include "orders/chosen_lines.h"

#include <algorithm>

#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

OrderLineRow& lineOf(double goodsId, QList<OrderLineRow>& rows) {
  const auto found = std::ranges::find_if(
      rows, [goodsId](const OrderLineRow& row) { return row.goodsId() == goodsId; });
  if (found != rows.end()) return *found;
  return rows.emplaceBack();
}

void overwrite(OrderLineRow& row, const ChosenGoodsRow& goods) {
  row.texts[LineName] = goods.texts[ChosenName];
  row.texts[LineCode] = goods.texts[ChosenCode];
  row.texts[LineQuantity] = goods.texts[ChosenQuantity];
  row.texts[LinePrice] = goods.texts[ChosenPrice];
  row.computeAmount();
  row.texts[LineDiscount] = goods.texts[ChosenDiscount];
  row.computeReceivable();
  row.texts[LineGoodsId] = textOf(Val(goods.key));
  row.texts[LineNote] = goods.texts[ChosenNote];
  row.texts[LineCartonSize] = goods.texts[ChosenCartonSize];
  row.texts[LineBookNumber] = goods.texts[ChosenBookNumber];
  row.texts[LineCategory] = goods.texts[ChosenCategory];
  row.computeCartons();
}

}  // namespace

const QList<LineColumnTitle>& chosenGoodsColumns() {
  static const QList<LineColumnTitle> columns{
      {u"书名"_s, 3600}, {u"类别"_s, 1400}, {u"数量"_s, 1000},
      {u"价格"_s, 1000}, {u"折扣"_s, 1000}, {u"折扣说明"_s, 2000},
      {u"个数"_s, 0},    {u"编号"_s, 1500}, {u"书号"_s, 1500}};
  return columns;
}

QString ChosenIdList(const QList<OrderLineRow>& rows) {
  QString list = u","_s;
  for (const OrderLineRow& row : rows) list += row.texts[LineGoodsId] + u',';
  return list;
}

ChosenIds::ChosenIds(const QString& list) {
  const QStringList pieces = list.toCaseFolded().split(u',');
  // What stands at an end has no comma on one side.
  for (qsizetype i = 1; i + 1 < pieces.size(); ++i) ids_.insert(pieces[i]);
}

void TakeChosenLines(QList<OrderLineRow>& rows, const QList<ChosenGoodsRow>& chosen,
                     bool accepted) {
  if (!accepted) return;
  for (const ChosenGoodsRow& goods : chosen) {
    if (Val(goods.texts[ChosenQuantity]) == 0) continue;
    overwrite(lineOf(Val(goods.key), rows), goods);
  }
}

}  // namespace qinghe

#include "orders/OrderLineRow.h"

#include "orders/cell_product.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

using Step = void (OrderLineRow::*)();

// What hangs on an input, in the order it is computed.
QList<Step> stepsAfter(LineInput input) {
  constexpr Step amount = &OrderLineRow::computeAmount;
  constexpr Step receivable = &OrderLineRow::computeReceivable;
  constexpr Step cartons = &OrderLineRow::computeCartons;
  switch (input) {
    case LineInput::TxtInputSL:
      return {amount, receivable, cartons};
    case LineInput::TxtInputJG:
      return {amount, receivable};
    case LineInput::TxtInputZK:
      return {receivable};
  }
  return {};
}

}  // namespace

const QList<LineColumnTitle>& orderLineColumns() {
  static const QList<LineColumnTitle> columns{
      {u"商品"_s, 2500}, {u"编号"_s, 600},  {u"数量"_s, 1000}, {u"单价"_s, 1000}, {u"金额"_s, 1000},
      {u"折扣"_s, 1000}, {u"应收"_s, 1000}, {u"包箱"_s, 800},  {u"零"_s, 600},    {QString(), 0},
      {QString(), 0},    {QString(), 0},    {QString(), 0},    {QString(), 0}};
  return columns;
}

QString nameOf(LineInput input) {
  switch (input) {
    case LineInput::TxtInputSL:
      return u"TxtInputSL"_s;
    case LineInput::TxtInputJG:
      return u"TxtInputJG"_s;
    case LineInput::TxtInputZK:
      break;
  }
  return u"TxtInputZK"_s;
}

LineColumn columnOf(LineInput input) {
  switch (input) {
    case LineInput::TxtInputSL:
      return LineQuantity;
    case LineInput::TxtInputJG:
      return LinePrice;
    case LineInput::TxtInputZK:
      break;
  }
  return LineDiscount;
}

QString complaintOf(LineInput input, const QString& text) {
  if (input == LineInput::TxtInputZK) {
    if (IsNumeric(text) && toDouble(text) <= 1) return {};
    return u"必须是数值，并且不大于1，请重新输入"_s;
  }
  return IsNumeric(text) ? QString() : u"必须是数值,请重新输入"_s;
}

QString OrderLineRow::icon() {
  return u"Goku"_s;
}

QString OrderLineRow::portalId() const {
  return textOf(Val(key));
}

double OrderLineRow::goodsId() const {
  return Val(texts[LineGoodsId]);
}

void OrderLineRow::computeAmount() {
  texts[LineAmount] = cellProduct(texts[LineQuantity], texts[LinePrice]);
}

void OrderLineRow::computeReceivable() {
  texts[LineReceivable] = cellProduct(texts[LineAmount], texts[LineDiscount]);
}

void OrderLineRow::computeCartons() {
  const double cartonSize = Val(texts[LineCartonSize]);
  qint32 cartons = 0;
  double loose = 0;
  if (cartonSize > 0) {
    const double quantity = Val(texts[LineQuantity]);
    cartons = wholeDivide(quantity, cartonSize);
    loose = quantity - cartons * cartonSize;
  }
  texts[LineCartons] = textOf(cartons);
  texts[LineLoose] = textOf(loose);
}

void OrderLineRow::enter(LineInput input, const QString& text) {
  texts[static_cast<std::size_t>(columnOf(input))] = text;
  for (const Step step : stepsAfter(input)) {
    try {
      (this->*step)();
    } catch (const Failure&) {
      // What cannot be computed keeps its old cell; the user sees it and goes on typing.
    }
  }
}

const QList<LineColumn>& lineAnswerColumns() {
  static const QList<LineColumn> columns{LineGoodsId,    LineName,    LineCode,     LineQuantity,
                                         LinePrice,      LineAmount,  LineDiscount, LineReceivable,
                                         LineCartons,    LineLoose,   LineNote,     LineCartonSize,
                                         LineBookNumber, LineCategory};
  return columns;
}

OrderLineRow lineFromAnswer(const QList<QString>& cells) {
  OrderLineRow row;
  row.key = lineKey(cells.value(0));
  const QList<LineColumn>& columns = lineAnswerColumns();
  for (qsizetype i = 0; i < columns.size(); ++i) {
    row.texts[static_cast<std::size_t>(columns[i])] = cells.value(i + 1);
  }
  row.texts[LineName] = Trim(row.texts[LineName]);
  return row;
}

QString lineKey(const QString& portalId) {
  return portalId + u" ID"_s;
}

}  // namespace qinghe

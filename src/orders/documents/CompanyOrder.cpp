#include "orders/documents/CompanyOrder.h"

#include "orders/documents/order_urls.h"
#include "orders/save_order.h"
#include "reports/ReportWindow.h"
#include "shell/PortalMethod.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

OrderLineRow rowOf(const ListItem& item) {
  OrderLineRow row;
  row.key = item.key();
  row.texts[LineName] = item.text();
  for (int column = LineName + 1; column < LineColumnCount; ++column) {
    row.texts[static_cast<std::size_t>(column)] = item.subItem(column);
  }
  return row;
}

void showRow(ListItem& item, const OrderLineRow& row) {
  item.setKey(row.key);
  item.setText(row.texts[LineName]);
  for (int column = LineName + 1; column < LineColumnCount; ++column) {
    item.setSubItem(column, row.texts[static_cast<std::size_t>(column)]);
  }
}

}  // namespace

CompanyOrder::CompanyOrder(const OrderLook& look, LineOrderSent lineOrder)
    : OrderScreen(look), lineOrder_(lineOrder) {}

QList<OrderLineRow> CompanyOrder::lines() const {
  QList<OrderLineRow> rows;
  rows.reserve(ListView1->itemCount());
  for (int i = 0; i < ListView1->itemCount(); ++i) rows.append(rowOf(*ListView1->itemAt(i)));
  return rows;
}

void CompanyOrder::showLines(const QList<OrderLineRow>& rows) {
  for (int i = 0; i < rows.size(); ++i) {
    ListItem* item = ListView1->itemAt(i);
    if (item == nullptr) item = ListView1->addItem({}, {}, OrderLineRow::icon());
    showRow(*item, rows[i]);
  }
}

QList<SummedTexts> CompanyOrder::summedLines() const {
  QList<SummedTexts> texts;
  texts.reserve(ListView1->itemCount());
  for (int i = 0; i < ListView1->itemCount(); ++i) {
    const ListItem& item = *ListView1->itemAt(i);
    texts.append(
        {item.subItem(LineQuantity), item.subItem(LineAmount), item.subItem(LineReceivable)});
  }
  return texts;
}

void CompanyOrder::enterCell(ListItem& item, LineInput input, const QString& text) {
  OrderLineRow row = rowOf(item);
  row.enter(input, text);
  showRow(item, row);
  try {
    RefreshTotals();
  } catch (const Failure&) {
    // As with the line's own steps: what cannot be computed stays as it was.
  }
}

bool CompanyOrder::LoadLines() {
  // An open input goes with its row.
  ListView1->clearItems();
  RequestBuilder request = readRequest(lineRead(look().side, textOf(openId())));
  if (lineOrder_ == LineOrderSent::Encoded) {
    request.encoded(u"STORDER"_s, u"ID"_s);
  } else {
    request.raw(u"STORDER"_s, u"ID"_s);
  }
  const bool withCategory = look().side == OrderSide::Purchase;
  const qsizetype cellCount = lineAnswerColumns().size() + (withCategory ? 1 : 0);
  return readPortal(request.url(), EmptyAnswer::IsFailure, [&](GetHtml& html) {
    QList<QString> cells;
    for (qsizetype i = 0; i < cellCount; ++i) cells.append(html.GetRowItem());
    const OrderLineRow row = lineFromAnswer(cells);
    showRow(*ListView1->addItem(row.key, {}, OrderLineRow::icon()), row);
    return true;
  });
}

bool CompanyOrder::SaveOrder() {
  const auto line = [this](bool (CompanyOrder::*saveLine)()) {
    return [this, saveLine](qsizetype row) {
      mLineRow = ListView1->itemAt(static_cast<int>(row));
      return (this->*saveLine)();
    };
  };
  return qinghe::SaveOrder(ListView1->itemCount(),
                           {.SaveHeaderToPortal = [this] { return SaveHeaderToPortal(); },
                            .SaveLineToPortal = line(&CompanyOrder::SaveLineToPortal),
                            .SaveHeaderLocal = [this] { return SaveHeaderLocal(); },
                            .SaveLineLocal = line(&CompanyOrder::SaveLineLocal)});
}

bool CompanyOrder::SaveHeaderToPortal() {
  bool taken = false;
  const QString url = saveUrl(headerRequest(look().side, header(), own()));
  const bool read = readPortal(url, EmptyAnswer::IsFailure,
                               [&](GetHtml& html) { return taken = takeId(html.GetRowItem()); });
  return read && taken;
}

bool CompanyOrder::SaveLineToPortal() {
  bool taken = false;
  const QString url = saveUrl(lineRequest(rowOf(*mLineRow), txtFields(1)->Tag));
  const bool read = readPortal(url, EmptyAnswer::IsFailure, [&](GetHtml& html) {
    const double id = Val(html.GetRowItem());
    taken = id != 0;
    if (taken) mLineRow->setKey(lineKey(textOf(id)));
    return taken;
  });
  return read && taken;
}

GetData& CompanyOrder::localStore() {
  if (store_ == nullptr) store_ = std::make_unique<GetData>(app().store);
  return *store_;
}

bool CompanyOrder::SaveHeaderLocal() {
  const OrderForm form = header();
  const RecordsetPtr row = localStore().GetGOHU(localHeaderCommand(form.id));
  if (row->RecordCount() <= 0) {
    row->AddNew();
    row->setValue(u"R_ID"_s, form.id);
  }
  for (const HeaderField& field : localHeaderFields(look().side)) {
    row->setValue(field.name, localValue(form, own(), field.from));
  }
  row->Update();
  mLocalOrderId = toInt32(row->text(u"id"_s));
  return true;
}

bool CompanyOrder::SaveLineLocal() {
  const OrderLineRow line = rowOf(*mLineRow);
  const QString orderId = txtFields(1)->Tag;
  const RecordsetPtr row = localStore().GetGOKU(localLineCommand(orderId, line));
  if (row->RecordCount() <= 0) row->AddNew();
  row->setValue(u"R_ID"_s, orderId);
  row->setValue(u"GOHU_ID"_s, mLocalOrderId);
  for (const LineField& field : localLineFields()) {
    row->setValue(field.name, localLineValue(line, field));
  }
  row->Update();
  return true;
}

void CompanyOrder::press(const QString& key) {
  if (key == u"Print") {
    print();
  } else {
    OrderScreen::press(key);
  }
}

void CompanyOrder::print() {
  if (mDirty) {
    if (save()) {
      mDirty = false;
    } else {
      reportSave(false);
    }
  }
  LoadSellerInfo();
  LoadBuyerInfo();
  // The report prints the local copy, not the screen.
  const QString command = orderPrintCommand(mSellerInfo, mBuyerInfo, textOf(openId()));
  showReport(rptGOHU(), localStore().GetCmdGohu(command));
}

bool CompanyOrder::LoadSellerInfo() {
  return loadParty(printedSellerId(look().side, header(), own()), mSellerInfo);
}

bool CompanyOrder::LoadBuyerInfo() {
  return loadParty(printedBuyerId(look().side, header(), own()), mBuyerInfo);
}

bool CompanyOrder::loadParty(const QString& id, PrintedParty& party) {
  const ReadRequest read{u"QYXX"_s, printedPartyColumns(), u"id="_s + id};
  return readPortal(readRequest(read).url(), EmptyAnswer::IsFailure, [&party](GetHtml& html) {
    for (QString& text : party) text = printedText(html.GetRowItem());
    return true;
  });
}

}  // namespace qinghe

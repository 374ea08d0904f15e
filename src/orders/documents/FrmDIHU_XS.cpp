#include "orders/documents/FrmDIHU_XS.h"

#include "orders/RetailLineRow.h"
#include "orders/documents/order_urls.h"
#include "shell/PortalMethod.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

OrderLook retailLook() {
  return {
      .form = u"FrmDIHU_XS"_s,
      .caption = u"销售订货单"_s,
      .side = OrderSide::Retail,
      .openId = &AppState::gRetailOrderId,
      // Print has its place among the buttons and nothing to print from.
      .buttons = {{u"Print"_s, u"打印"_s},
                  {u"Save"_s, u"保存"_s},
                  {u"Refresh"_s, u"刷新"_s},
                  {u"Call"_s, u"通知"_s},
                  {u"Exit"_s, u"退出"_s}},
      .columns = retailLineColumns(),
      // There, and never opened: the buyer's lines stand.
      .inputs = {LineInput::TxtInputZK},
      .chargesMustBeNumeric = false,
      .everyFieldMakesTotals = true,
  };
}

void showRow(ListItem& item, const RetailLineRow& row) {
  item.setText(row.texts[RetailName]);
  for (int column = RetailName + 1; column < RetailColumnCount; ++column) {
    item.setSubItem(column, row.texts[static_cast<std::size_t>(column)]);
  }
}

}  // namespace

FrmDIHU_XS::FrmDIHU_XS() : OrderScreen(retailLook()) {}

bool FrmDIHU_XS::LoadLines() {
  ListView1->clearItems();
  const OrderForm form = header();
  const QList<QString> quantities = packedPieces(form.quantities);
  RequestBuilder request = readRequest(retailLineRead(form.goodsIds, own().id));
  request.raw(u"STORDER"_s, u"ID"_s);
  QList<RetailLineRow> rows;
  const bool read = readPortal(request.url(), EmptyAnswer::IsFailure, [&](GetHtml& html) {
    const QList<QString> cells{html.GetRowItem(), html.GetRowItem(), html.GetRowItem()};
    addPackedLine(rows, cells, quantities);
    return true;
  });
  // The rows that came before a failure stay.
  for (const RetailLineRow& row : rows) {
    showRow(*ListView1->addItem(row.key, {}, OrderLineRow::icon()), row);
  }
  return read;
}

QList<SummedTexts> FrmDIHU_XS::summedLines() const {
  QList<SummedTexts> texts;
  for (int i = 0; i < ListView1->itemCount(); ++i) {
    const ListItem& item = *ListView1->itemAt(i);
    texts.append(
        {item.subItem(RetailQuantity), item.subItem(RetailAmount), item.subItem(RetailReceivable)});
  }
  return texts;
}

void FrmDIHU_XS::enterCell(ListItem&, LineInput, const QString&) {}

bool FrmDIHU_XS::SaveOrder() {
  bool taken = false;
  const QString url = saveUrl(headerRequest(OrderSide::Retail, header(), own()));
  const bool read = readPortal(url, EmptyAnswer::IsFailure,
                               [&](GetHtml& html) { return taken = takeId(html.GetRowItem()); });
  return read && taken;
}

}  // namespace qinghe

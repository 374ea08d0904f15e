#include "orders/order_print.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

using Aliases = std::array<QString, std::tuple_size_v<PrintedParty>>;

const Aliases& sellerAliases() {
  static const Aliases aliases{u"' AS GSMC, "_s, u"' AS GSDZ, "_s, u"' AS GSYB, "_s,
                               u"' AS GSDH, "_s, u"' AS GSLX, "_s, u"' AS GSKH, "_s,
                               u"' AS GSZH, "_s, u"' AS GSSH, "_s};
  return aliases;
}

const Aliases& buyerAliases() {
  static const Aliases aliases{u"' AS KHMC, "_s, u"' AS KHDZ, "_s, u"' AS KHYB, "_s,
                               u"' AS KHDH, "_s, u"' AS KHLX, "_s, u"' AS KHKH, "_s,
                               u"' AS KHZH, "_s, u"' AS KHSH  "_s};
  return aliases;
}

QString partyColumns(const PrintedParty& party, const Aliases& aliases) {
  QString columns;
  for (std::size_t i = 0; i < party.size(); ++i) columns += u'\'' + party[i] + aliases[i];
  return columns;
}

}  // namespace

QString printedPartyColumns() {
  return u"qiye,dizh,yobi,dihu,lixi,khyh,yhzh,shha,"_s;
}

QString printedText(const QString& cell) {
  return cell.isEmpty() ? u" "_s : cell;
}

QString printedSellerId(OrderSide side, const OrderForm& form, const OrderParty& own) {
  return side == OrderSide::Purchase ? form.seller.id : own.id;
}

QString printedBuyerId(OrderSide side, const OrderForm& form, const OrderParty& own) {
  return side == OrderSide::Purchase ? own.id : form.buyer.id;
}

QString orderPrintCommand(const PrintedParty& seller, const PrintedParty& buyer,
                          const QString& orderId) {
  return u"SHAPE {select gohu.*,"_s + partyColumns(seller, sellerAliases()) +
         partyColumns(buyer, buyerAliases()) + u"from gohu where gohu.r_id="_s + orderId +
         u"}  AS Cmd_Gohu APPEND ({select * from goku where goku.r_id="_s + orderId +
         u"}  AS Cmd_goku RELATE 'ID' TO 'GOHU_ID') AS Cmd_goku"_s;
}

}  // namespace qinghe

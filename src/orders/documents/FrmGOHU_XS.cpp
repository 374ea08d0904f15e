#include "orders/documents/FrmGOHU_XS.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

OrderLook salesLook() {
  return {
      .form = u"FrmGOHU_XS"_s,
      .caption = u"销售订货单"_s,
      .side = OrderSide::Sales,
      .openId = &AppState::gCurrentOrderId,
      .buttons = {{u"Print"_s, u"打印"_s},
                  {u"Save"_s, u"保存"_s},
                  {u"Refresh"_s, u"刷新"_s},
                  {u"Call"_s, u"通知"_s},
                  {u"Exit"_s, u"退出"_s}},
      .columns = orderLineColumns(),
      // Goods, quantities and prices are the buyer's.
      .inputs = {LineInput::TxtInputZK},
      // Charges are entered here as the parties write them ("12元"): their leading number counts,
      // and the text goes out as it stands.
      .chargesMustBeNumeric = false,
      .everyFieldMakesTotals = true,
  };
}

}  // namespace

// The portal has always seen this side's order of the rows unescaped. Lines are read without their
// category here, so a save of the seller sends it empty.
FrmGOHU_XS::FrmGOHU_XS() : CompanyOrder(salesLook(), LineOrderSent::Literal) {}

}  // namespace qinghe

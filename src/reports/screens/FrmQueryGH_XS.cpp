#include "reports/screens/FrmQueryGH_XS.h"

#include "orders/documents/FrmGOHU_XS.h"

namespace qinghe {

using namespace Qt::StringLiterals;

FrmQueryGH_XS::FrmQueryGH_XS()
    : OrderList({
          .form = u"FrmQueryGH_XS"_s,
          .caption = u"商品销售订单"_s,
          .side = OrderListSide::Sales,
          .orderIcon = u"Gohu"_s,
          .partnerIcon = u"Xixi"_s,
          .partnerTitle = u"客户"_s,
          .newEntry = {},  // only a buyer begins an order
          .listEntry = u"mnuListGOHU"_s,
          .detailEntry = u"mnuDetailGOHU"_s,
          .orderId = &AppState::gCurrentOrderId,
          .showOrder = [] { defaultInstance<FrmGOHU_XS>().showForm(); },
      }) {}

}  // namespace qinghe

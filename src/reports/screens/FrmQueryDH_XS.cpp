#include "reports/screens/FrmQueryDH_XS.h"

#include "orders/documents/FrmDIHU_XS.h"

namespace qinghe {

using namespace Qt::StringLiterals;

FrmQueryDH_XS::FrmQueryDH_XS()
    : OrderList({
          .form = u"FrmQueryDH_XS"_s,
          .caption = u"商品销售订单"_s,
          .side = OrderListSide::Retail,
          .orderIcon = u"Dihu"_s,
          .partnerIcon = u"LK"_s,
          .partnerTitle = u"客户"_s,
          .newEntry = {},  // only a buyer begins an order
          .listEntry = u"mnuListDIHU"_s,
          .detailEntry = u"mnuDetailDIHU"_s,
          .orderId = &AppState::gRetailOrderId,
          .showOrder = [] { defaultInstance<FrmDIHU_XS>().showForm(); },
      }) {}

}  // namespace qinghe

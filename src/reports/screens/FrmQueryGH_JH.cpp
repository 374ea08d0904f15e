#include "reports/screens/FrmQueryGH_JH.h"

#include "orders/documents/FrmGOHU_JH.h"

namespace qinghe {

using namespace Qt::StringLiterals;

FrmQueryGH_JH::FrmQueryGH_JH()
    : OrderList({
          .form = u"FrmQueryGH_JH"_s,
          .caption = u"商品进货订单"_s,
          .side = OrderListSide::Purchase,
          .orderIcon = u"Gohu"_s,
          .partnerIcon = u"Qyxx"_s,
          .partnerTitle = u"供商"_s,
          .newEntry = u"mnuGOHU_JH"_s,
          .listEntry = u"mnuListGOHU"_s,
          .detailEntry = u"mnuDetailGOHU"_s,
          .orderId = &AppState::gCurrentOrderId,
          .showOrder = [] { defaultInstance<FrmGOHU_JH>().showForm(); },
      }) {}

}  // namespace qinghe

#pragma once

#include "reports/screens/OrderList.h"

namespace qinghe {

/// "商品销售订单": the retail orders of individual buyers.
class FrmQueryDH_XS : public OrderList {
  Q_OBJECT

 public:
  FrmQueryDH_XS();
};

}  // namespace qinghe

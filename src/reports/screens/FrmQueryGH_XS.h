#pragma once

#include "reports/screens/OrderList.h"

namespace qinghe {

/// "商品销售订单": the sales orders that customers have placed.
class FrmQueryGH_XS : public OrderList {
  Q_OBJECT

 public:
  FrmQueryGH_XS();
};

}  // namespace qinghe

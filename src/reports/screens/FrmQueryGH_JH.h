#pragma once

#include "reports/screens/OrderList.h"

namespace qinghe {

/// "商品进货订单": the company's purchase orders.
class FrmQueryGH_JH : public OrderList {
  Q_OBJECT

 public:
  FrmQueryGH_JH();
};

}  // namespace qinghe

#pragma once

#include "orders/documents/CompanyOrder.h"

namespace qinghe {

/// "销售订货单": the seller on an order that a buyer has raised: discounts, other charges,
/// shipping.
class FrmGOHU_XS : public CompanyOrder {
  Q_OBJECT

 public:
  FrmGOHU_XS();
};

}  // namespace qinghe

#pragma once

#include "reports/screens/StatisticsWizard.h"

namespace qinghe {

/// "订单销售统计": statistics of the orders in which the company is the supplier.
class FrmQueryXISH : public StatisticsWizard {
  Q_OBJECT

 public:
  FrmQueryXISH();
};

}  // namespace qinghe

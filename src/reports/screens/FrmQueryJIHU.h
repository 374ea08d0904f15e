#pragma once

#include "reports/screens/StatisticsWizard.h"

namespace qinghe {

/// "订单进货统计": statistics of the orders in which the company is the customer.
class FrmQueryJIHU : public StatisticsWizard {
  Q_OBJECT

 public:
  FrmQueryJIHU();
};

}  // namespace qinghe

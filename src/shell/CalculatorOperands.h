#pragma once

#include <QString>

namespace qinghe {

/// The operands of the calculator, which outlive its window: texts as typed ("8.") or computed
/// ("0.5").
struct CalculatorOperands {
  QString Op1;
  QString Op2;
};

}  // namespace qinghe

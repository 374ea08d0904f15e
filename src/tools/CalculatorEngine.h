#pragma once

#include <QString>

#include "shell/CalculatorOperands.h"

namespace qinghe {

/// A four-function desk calculator that works on the text of its display. The display holds a point
/// while a number is typed, and computed numbers are plain.
class CalculatorEngine {
 public:
  /// What a key came to, beside the display.
  enum class Outcome { Done, DivisionByZero, TooLarge };

  explicit CalculatorEngine(CalculatorOperands& operands) : operands_(operands) {}

  QString readout() const { return readout_; }

  void cancel();
  void cancelEntry();
  void decimal();
  void number(int digit);
  /// One of "+", "-", "X", "/", "=".
  Outcome operate(QChar key);
  void percent();

 private:
  enum class LastInput { None, Nums, Ops, Percent, Neg, Ce };

  void load();
  Outcome apply();

  CalculatorOperands& operands_;
  QString readout_ = QStringLiteral("0.");
  LastInput lastInput_ = LastInput::None;
  QChar opFlag_ = u' ';
  qint16 numOps_ = 0;
  bool decimalFlag_ = false;
};

}  // namespace qinghe

#include "tools/CalculatorEngine.h"

#include <cmath>
#include <limits>

#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

void CalculatorEngine::load() {
  decimalFlag_ = false;
  numOps_ = 0;
  lastInput_ = LastInput::None;
  opFlag_ = u' ';
  readout_ = u"0."_s;
}

void CalculatorEngine::cancel() {
  operands_ = {u"0"_s, u"0"_s};
  load();
}

void CalculatorEngine::cancelEntry() {
  readout_ = u"0."_s;
  decimalFlag_ = false;
  lastInput_ = LastInput::Ce;
}

void CalculatorEngine::decimal() {
  if (lastInput_ == LastInput::Neg) {
    readout_ = u"-0."_s;
  } else if (lastInput_ != LastInput::Nums) {
    readout_ = u"0."_s;
  }
  decimalFlag_ = true;
  lastInput_ = LastInput::Nums;
}

void CalculatorEngine::number(int digit) {
  // Nobody types a number of this length; a key that is held down does.
  constexpr qsizetype longestEntry = 300;
  if (lastInput_ != LastInput::Nums) {
    readout_ = u"."_s;
    decimalFlag_ = false;
  }
  if (readout_.size() < longestEntry) {
    const QString text = QString::number(digit);
    readout_ = decimalFlag_ ? readout_ + text : readout_.chopped(1) + text + u'.';
  }
  if (lastInput_ == LastInput::Neg) readout_.prepend(u'-');
  lastInput_ = LastInput::Nums;
}

CalculatorEngine::Outcome CalculatorEngine::operate(QChar key) {
  const QString kept = readout_;
  Outcome outcome = Outcome::Done;
  if (lastInput_ == LastInput::Nums && numOps_ < std::numeric_limits<qint16>::max()) ++numOps_;
  switch (numOps_) {
    case 0:
      if (key == u'-' && lastInput_ != LastInput::Neg) {
        readout_.prepend(u'-');
        lastInput_ = LastInput::Neg;
      }
      break;
    case 1:
      operands_.Op1 = readout_;
      if (key == u'-' && lastInput_ != LastInput::Nums && opFlag_ != u'=') {
        readout_ = u"-"_s;
        lastInput_ = LastInput::Neg;
      }
      break;
    case 2:
      operands_.Op2 = kept;
      outcome = apply();
      readout_ = operands_.Op1;
      numOps_ = 1;
      break;
    default:
      break;
  }
  if (lastInput_ != LastInput::Neg) {
    lastInput_ = LastInput::Ops;
    opFlag_ = key;
  }
  return outcome;
}

CalculatorEngine::Outcome CalculatorEngine::apply() {
  const double first = Val(operands_.Op1);
  const double second = Val(operands_.Op2);
  double result = 0;
  switch (opFlag_.unicode()) {
    case u'+':
      result = first + second;
      break;
    case u'-':
      result = first - second;
      break;
    case u'X':
    case u'%':
      result = first * second;
      break;
    case u'/':
      if (second == 0) return Outcome::DivisionByZero;
      result = first / second;
      break;
    case u'=':
      operands_.Op1 = operands_.Op2;
      return Outcome::Done;
    default:
      return Outcome::Done;
  }
  if (!std::isfinite(result)) return Outcome::TooLarge;
  operands_.Op1 = textOf(result);
  return Outcome::Done;
}

void CalculatorEngine::percent() {
  readout_ = textOf(Val(readout_) / 100);
  // Unlike the mark of an operator: only the tests for digits and for a sign ever meet it.
  lastInput_ = LastInput::Percent;
  opFlag_ = u'%';
  if (numOps_ < std::numeric_limits<qint16>::max()) ++numOps_;
  decimalFlag_ = true;
}

}  // namespace qinghe

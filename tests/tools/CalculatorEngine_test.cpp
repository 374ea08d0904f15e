#include "tools/CalculatorEngine.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// Keys as they stand on the calculator, with E for CE.
struct SequenceRow {
  QString keys;
  QString readout;
  bool divisionByZero = false;
};

class Sequences : public testing::TestWithParam<SequenceRow> {};

CalculatorEngine::Outcome press(CalculatorEngine& engine, QChar key) {
  if (key.isDigit()) {
    engine.number(key.digitValue());
  } else if (key == u'C') {
    engine.cancel();
  } else if (key == u'E') {
    engine.cancelEntry();
  } else if (key == u'.') {
    engine.decimal();
  } else if (key == u'%') {
    engine.percent();
  } else {
    return engine.operate(key);
  }
  return CalculatorEngine::Outcome::Done;
}

TEST_P(Sequences, LeaveTheirReadout) {
  CalculatorOperands operands;
  CalculatorEngine engine(operands);
  bool divisionByZero = false;
  for (const QChar key : GetParam().keys) {
    if (press(engine, key) == CalculatorEngine::Outcome::DivisionByZero) divisionByZero = true;
  }
  EXPECT_EQ(engine.readout(), GetParam().readout) << GetParam().keys.toStdString();
  EXPECT_EQ(divisionByZero, GetParam().divisionByZero) << GetParam().keys.toStdString();
}

const SequenceRow sequences[] = {
    {u"8"_s, u"8."_s},
    {u"80"_s, u"80."_s},
    {u"0"_s, u"0."_s},
    {u"00"_s, u"00."_s},
    {u"007"_s, u"007."_s},
    {u"123456789"_s, u"123456789."_s},
    {u"."_s, u"0."_s},
    {u".5"_s, u"0.5"_s},
    {u"1."_s, u"1."_s},
    {u"1.5"_s, u"1.5"_s},
    {u"1..5"_s, u"1.5"_s},
    {u"1.2.3"_s, u"1.23"_s},
    {u"-"_s, u"-0."_s},
    {u"--"_s, u"-0."_s},
    {u"-5"_s, u"-5."_s},
    {u"-."_s, u"-0."_s},
    {u"-.5"_s, u"-0.5"_s},
    {u"-5-"_s, u"-5."_s},
    {u"8E"_s, u"0."_s},
    {u"8E3"_s, u"3."_s},
    {u"8C"_s, u"0."_s},
    {u"8+"_s, u"8."_s},
    {u"8+2="_s, u"10"_s},
    {u"8-2="_s, u"6"_s},
    {u"8X2="_s, u"16"_s},
    {u"8/2="_s, u"4"_s},
    {u"8+2+"_s, u"10"_s},
    {u"8+2+3="_s, u"13"_s},
    {u"8+2X3="_s, u"30"_s},
    {u"2X3+4="_s, u"10"_s},
    {u"7/2="_s, u"3.5"_s},
    {u"1/3="_s, u"0.333333333333333"_s},
    {u"2/3="_s, u"0.666666666666667"_s},
    {u"1/8="_s, u"0.125"_s},
    {u"0-5="_s, u"-5"_s},
    {u"5-8="_s, u"-3"_s},
    {u"-5+8="_s, u"3"_s},
    {u"-5X-2="_s, u"10"_s},
    {u"8X-2="_s, u"-16"_s},
    {u"8/-2="_s, u"-4"_s},
    {u"8--2="_s, u"10"_s},
    {u"8+-2="_s, u"6"_s},
    {u"8/0="_s, u"8."_s, true},
    {u"8/0=+1="_s, u"9"_s, true},
    {u"8/0.0="_s, u"8."_s, true},
    {u"0/0="_s, u"0."_s, true},
    {u"8+2=="_s, u"10"_s},
    {u"8+2=5"_s, u"5."_s},
    {u"8+2=5+1="_s, u"6"_s},
    {u"8+2=-3="_s, u"7"_s},
    {u"8=5+"_s, u"5."_s},
    {u"5="_s, u"5."_s},
    {u"5=-"_s, u"5."_s},
    {u"8+E3="_s, u"11"_s},
    {u"8+5E3="_s, u"11"_s},
    {u"50%"_s, u"0.5"_s},
    {u"50%%"_s, u"0.005"_s},
    {u"5%"_s, u"0.05"_s},
    {u".5%"_s, u"0.005"_s},
    {u"200+10%="_s, u"20"_s},
    {u"200X10%="_s, u"20"_s},
    {u"8%+2="_s, u"2.08"_s},
    {u"50%%="_s, u"0"_s},
    {u"8%%%="_s, u"0.000008"_s},
    {u"1.5+2.25="_s, u"3.75"_s},
    {u".1+.2="_s, u"0.3"_s},
    {u"99999999X99999999="_s, u"9.9999998E+15"_s},
    {u"999999999999999+1="_s, u"1E+15"_s},
    {u"9999999999999999="_s, u"9999999999999999."_s},
    {u"1/3X3="_s, u"0.999999999999999"_s},
    {u"8+C"_s, u"0."_s},
    {u"8+2C="_s, u"0."_s},
    {u"8-C5="_s, u"5."_s},
    {u"8+2=C3+4="_s, u"7"_s},
    {u"3+="_s, u"3."_s},
    {u"3+X4="_s, u"12"_s},
    {u"8-X2="_s, u"16"_s},
    {u"8--+"_s, u"-"_s},
    {u"8---2="_s, u"2"_s},
    {u"6X7-2/5="_s, u"8"_s},
    {u"12.50X4="_s, u"50"_s},
    {u"100-.01="_s, u"99.99"_s},
    {u"1.10+2.20="_s, u"3.3"_s},
};

INSTANTIATE_TEST_SUITE_P(Calculator, Sequences, testing::ValuesIn(sequences));

TEST(CalculatorEngine, ShowsZeroWithItsPointAtRest) {
  CalculatorOperands operands;
  EXPECT_EQ(CalculatorEngine(operands).readout(), u"0."_s);
}

TEST(CalculatorEngine, KeepsItsOperandsOverANewWindowUntilItIsCleared) {
  CalculatorOperands operands;
  {
    CalculatorEngine first(operands);
    for (const QChar key : u"8+2="_s) press(first, key);
  }
  // Two percents make an operand each, and the first operand is still that of the last window.
  CalculatorEngine second(operands);
  for (const QChar key : u"50%%="_s) press(second, key);
  EXPECT_EQ(second.readout(), u"0.05"_s);
  for (const QChar key : u"C50%%="_s) press(second, key);
  EXPECT_EQ(second.readout(), u"0"_s);
}

TEST(CalculatorEngine, AResultBeyondADoubleLeavesTheFirstOperand) {
  CalculatorOperands operands;
  CalculatorEngine engine(operands);
  for (const QChar key : u"9"_s.repeated(200)) press(engine, key);
  press(engine, u'X');
  for (const QChar key : u"9"_s.repeated(200)) press(engine, key);
  EXPECT_EQ(press(engine, u'='), CalculatorEngine::Outcome::TooLarge);
  EXPECT_EQ(engine.readout(), u"9"_s.repeated(200) + u"."_s);
}

TEST(CalculatorEngine, AKeyHeldDownMakesNoEndlessNumber) {
  CalculatorOperands operands;
  CalculatorEngine engine(operands);
  for (int i = 0; i < 10'000; ++i) engine.number(7);
  EXPECT_LE(engine.readout().size(), 300);
}

}  // namespace

#include "tools/Calculator.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QTest>

#include "support/ClientFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class CalculatorTest : public ClientFixture {
 protected:
  Calculator& screen() {
    auto& form = defaultInstance<Calculator>();
    form.showForm();
    return form;
  }
  void click(const QString& name) {
    auto* key = screen().findChild<QPushButton*>(name);
    ASSERT_NE(key, nullptr) << name.toStdString();
    QTest::mouseClick(key, Qt::LeftButton);
  }
  QString readout() { return screen().Readout->text(); }
};

TEST_F(CalculatorTest, HasItsKeysInCaptionOrder) {
  EXPECT_EQ(screen().windowTitle(), u"计算器"_s);
  EXPECT_EQ(readout(), u"0."_s);
  const QStringList operators = {u"+"_s, u"-"_s, u"X"_s, u"/"_s, u"="_s};
  for (int index = 0; index < operators.size(); ++index) {
    EXPECT_EQ(screen().findChild<QPushButton*>(u"Operator(%1)"_s.arg(index))->text(),
              operators[index]);
  }
  for (int digit = 0; digit <= 9; ++digit) {
    EXPECT_EQ(screen().findChild<QPushButton*>(u"Number(%1)"_s.arg(digit))->text(),
              QString::number(digit));
  }
  EXPECT_EQ(screen().findChild<QPushButton*>(u"Cancel"_s)->text(), u"C"_s);
  EXPECT_EQ(screen().findChild<QPushButton*>(u"CancelEntry"_s)->text(), u"CE"_s);
}

TEST_F(CalculatorTest, StandsInTheMiddleOfTheScreen) {
  const QPoint middle = screen().frameGeometry().center();
  const QPoint wanted = screen().screen()->availableGeometry().center();
  EXPECT_LE((middle - wanted).manhattanLength(), 60);
}

TEST_F(CalculatorTest, ItsKeysCalculate) {
  for (const QString& name : {u"Number(1)"_s, u"Number(2)"_s, u"Decimal"_s, u"Number(5)"_s,
                              u"Operator(2)"_s, u"Number(4)"_s, u"Operator(4)"_s}) {
    click(name);
  }
  EXPECT_EQ(readout(), u"50"_s);
  click(u"Percent"_s);
  EXPECT_EQ(readout(), u"0.5"_s);
  click(u"CancelEntry"_s);
  EXPECT_EQ(readout(), u"0."_s);
}

TEST_F(CalculatorTest, DivisionByZeroIsToldAndTheReadoutGoesBack) {
  boxes->expect(Answer::Ok);
  for (const QString& name : {u"Number(8)"_s, u"Operator(3)"_s, u"Number(0)"_s, u"Operator(4)"_s}) {
    click(name);
  }
  ASSERT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(boxes->asked[0].text, u"除数不能为零"_s);
  EXPECT_EQ(boxes->asked[0].title, u"计算器"_s);
  EXPECT_EQ(boxes->asked[0].mark, Mark::Exclamation);
  EXPECT_EQ(readout(), u"8."_s);
}

TEST_F(CalculatorTest, TheKeyboardHasAKeyForEachOfItsKeys) {
  QTest::keyClicks(&screen(), u"12.5*4"_s);
  QTest::keyClick(&screen(), Qt::Key_Return);
  EXPECT_EQ(readout(), u"50"_s);
  QTest::keyClicks(&screen(), u"+7-2/5="_s);
  EXPECT_EQ(readout(), u"11"_s);
  QTest::keyClicks(&screen(), u"=1,5x2"_s);
  QTest::keyClick(&screen(), Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(readout(), u"3"_s) << "the keys of a number pad and a small x, too";
  QTest::keyClicks(&screen(), u"9"_s);
  QTest::keyClick(&screen(), Qt::Key_Delete);
  EXPECT_EQ(readout(), u"0."_s);
  QTest::keyClicks(&screen(), u"50%"_s);
  EXPECT_EQ(readout(), u"0.5"_s);
  QTest::keyClick(&screen(), Qt::Key_Escape);
  EXPECT_EQ(readout(), u"0."_s);
  EXPECT_TRUE(isLoaded<Calculator>()) << "Esc clears and does not close";
  QTest::keyClicks(&screen(), u"z"_s);
  EXPECT_EQ(readout(), u"0."_s);
}

TEST_F(CalculatorTest, ClosingForgetsTheReadoutAndKeepsTheOperands) {
  QTest::keyClicks(&screen(), u"8+2="_s);
  screen().unload();
  EXPECT_EQ(readout(), u"0."_s);
  QTest::keyClicks(&screen(), u"50%%="_s);
  EXPECT_EQ(readout(), u"0.05"_s);
}

}  // namespace

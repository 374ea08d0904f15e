#include <gtest/gtest.h>

#include "ChooserFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString notANumber = u"必须是数值,请重新输入"_s;
const QString notAFactor = u"必须是数值，并且不大于1，请重新输入"_s;

class GoodsChooserCells : public ChooserFixture {
 protected:
  GoodsChooserCells() { offerOnePage(); }
};

TEST_F(GoodsChooserCells, ALeftReleaseOverQuantityPriceOrFactorOpensItsInput) {
  const QList<std::pair<int, QString>> cells = {{ChosenName, {}},
                                                {ChosenCategory, {}},
                                                {ChosenQuantity, u"TxtInputSL"_s},
                                                {ChosenPrice, u"TxtInputJG"_s},
                                                {ChosenDiscount, u"TxtInputZK"_s},
                                                {ChosenNote, {}},
                                                {ChosenCode, {}}};
  for (const auto& [column, name] : cells) {
    clickCell(1, column);
    EXPECT_EQ(open(), name) << column;
    if (!name.isEmpty()) key(Qt::Key_Escape);
  }
}

TEST_F(GoodsChooserCells, AReleaseExactlyOnAnEdgeOpensNothing) {
  screen();
  const int y = list().cellRect(&row(0)).center().y();
  for (const int column : {ChosenQuantity, ChosenPrice, ChosenDiscount, ChosenNote}) {
    clickAt({list().columnViewportPosition(column), y});
    EXPECT_EQ(open(), QString()) << column;
  }
  clickAt({list().columnViewportPosition(ChosenQuantity) + 1, y});
  EXPECT_EQ(open(), u"TxtInputSL"_s);
  key(Qt::Key_Escape);
  clickAt({list().columnViewportPosition(ChosenNote) - 1, y});
  EXPECT_EQ(open(), u"TxtInputZK"_s);
}

TEST_F(GoodsChooserCells, TheEdgesGoWithAScrolledList) {
  screen().resize(600, 400);
  list().setColumnWidth(ChosenName, 900);
  list().scrollTo(list().model()->index(0, ChosenDiscount));
  ASSERT_LT(list().columnViewportPosition(ChosenName), 0);
  clickCell(0, ChosenDiscount);
  EXPECT_EQ(open(), u"TxtInputZK"_s);
}

TEST_F(GoodsChooserCells, OtherButtonsAndEmptySpaceOpenNothing) {
  clickCell(0, ChosenQuantity, Qt::RightButton);
  EXPECT_EQ(open(), QString());
  clickAt({list().columnViewportPosition(ChosenQuantity) + 10, list().viewport()->height() - 5});
  EXPECT_EQ(open(), QString());
}

TEST_F(GoodsChooserCells, AnInputLiesTwoPixelsBelowItsRowsTop) {
  clickCell(1, ChosenQuantity);
  const QRect cell = list().cellRect(&row(1), ChosenQuantity);
  const QPoint inside = list().viewport()->pos() - QPoint(list().frameWidth(), list().frameWidth());
  EXPECT_EQ(input(u"TxtInputSL"_s)->pos(), list().pos() + inside + cell.topLeft() + QPoint(4, 2));
}

TEST_F(GoodsChooserCells, AnInputTakesTheCellsTextAllSelectedAndTheFocus) {
  clickCell(1, ChosenPrice);
  auto* edit = qobject_cast<QLineEdit*>(input(u"TxtInputJG"_s)->editor());
  EXPECT_EQ(edit->selectedText(), u"12.5"_s);
  EXPECT_TRUE(edit->hasFocus());
}

struct CellCase {
  std::string name;
  int column;
  QString typed;
  QString cell;
  bool checked;
};

class AcceptedCell : public GoodsChooserCells, public testing::WithParamInterface<CellCase> {};

TEST_P(AcceptedCell, GoesIntoItsRow) {
  enter(0, GetParam().column, GetParam().typed);
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(row(0).subItem(GetParam().column), GetParam().cell);
  EXPECT_EQ(row(0).isChecked(), GetParam().checked);
  EXPECT_EQ(row(1).subItem(ChosenQuantity), u"0"_s);
}

INSTANTIATE_TEST_SUITE_P(
    GoodsChooser, AcceptedCell,
    testing::Values(CellCase{"AQuantityMarksItsRow", ChosenQuantity, u"25"_s, u"25"_s, true},
                    CellCase{"AReturnDoesToo", ChosenQuantity, u"-7"_s, u"-7"_s, true},
                    CellCase{"AFractionToo", ChosenQuantity, u"2.5"_s, u"2.5"_s, true},
                    CellCase{"TheTextStaysAsTyped", ChosenQuantity, u" 010 "_s, u" 010 "_s, true},
                    CellCase{"NothingIsNoMark", ChosenQuantity, u"0.0"_s, u"0.0"_s, false},
                    CellCase{"APriceIsNoMark", ChosenPrice, u"9.9"_s, u"9.9"_s, false},
                    CellCase{"ANegativePrice", ChosenPrice, u"-3"_s, u"-3"_s, false},
                    CellCase{"FactorOne", ChosenDiscount, u"1"_s, u"1"_s, false},
                    CellCase{"FactorZero", ChosenDiscount, u"0"_s, u"0"_s, false},
                    CellCase{"ANegativeFactor", ChosenDiscount, u"-0.5"_s, u"-0.5"_s, false}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(GoodsChooserCells, AQuantityOfNothingTakesTheMarkAway) {
  defaultInstance<frmGetXIMU>().mOrderIdList = u",7,"_s;
  screen();
  ASSERT_TRUE(row(0).isChecked());
  enter(0, ChosenQuantity, u"0"_s);
  EXPECT_FALSE(row(0).isChecked());
}

struct RefusedCase {
  std::string name;
  int column;
  QString input;
  QString typed;
  QString message;
};

class RefusedCell : public GoodsChooserCells, public testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedCell, KeepsTheFocusUntilItIsANumber) {
  const QString before = row(0).subItem(GetParam().column);
  boxes->expect(Answer::Ok);
  enter(0, GetParam().column, GetParam().typed);
  EXPECT_EQ(boxes->texts(), QStringList{GetParam().message});
  EXPECT_EQ(open(), GetParam().input);
  EXPECT_TRUE(input(GetParam().input)->editor()->hasFocus());
  EXPECT_EQ(row(0).subItem(GetParam().column), before);

  input(GetParam().input)->selectAll();
  type(u"0.9"_s);
  QTest::mouseClick(screen().Text1->editor(), Qt::LeftButton);
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(row(0).subItem(GetParam().column), u"0.9"_s);
}

INSTANTIATE_TEST_SUITE_P(
    GoodsChooser, RefusedCell,
    testing::Values(
        RefusedCase{"Quantity", ChosenQuantity, u"TxtInputSL"_s, u"十"_s, notANumber},
        RefusedCase{"NoQuantity", ChosenQuantity, u"TxtInputSL"_s, u""_s, notANumber},
        RefusedCase{"HalfAQuantity", ChosenQuantity, u"TxtInputSL"_s, u"5本"_s, notANumber},
        RefusedCase{"Price", ChosenPrice, u"TxtInputJG"_s, u"面议"_s, notANumber},
        RefusedCase{"Factor", ChosenDiscount, u"TxtInputZK"_s, u"八折"_s, notAFactor},
        RefusedCase{"FactorAboveOne", ChosenDiscount, u"TxtInputZK"_s, u"1.01"_s, notAFactor},
        RefusedCase{"NoFactor", ChosenDiscount, u"TxtInputZK"_s, u""_s, notAFactor}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(GoodsChooserCells, ARefusedCellKeepsTheScreenOpenAndItsRowsInPlace) {
  clickCell(0, ChosenQuantity);
  type(u"很多"_s);
  for (int time = 0; time < 4; ++time) boxes->expect(Answer::Ok);
  click(screen().commandC);
  EXPECT_TRUE(screen().isVisible());
  EXPECT_FALSE(screen().CheckOK->isChecked());
  QTest::keyClick(&screen(), Qt::Key_O, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return boxes->asked.size() == 2; }));
  EXPECT_TRUE(screen().isVisible());
  clickCell(2, ChosenPrice);
  EXPECT_EQ(open(), u"TxtInputSL"_s);
  clickTitle(ChosenName);
  EXPECT_EQ(names().first(), u"大学语文"_s);
  EXPECT_EQ(boxes->texts(), (QStringList{notANumber, notANumber, notANumber, notANumber}));
}

TEST_F(GoodsChooserCells, AMnemonicTakesWhatStandsInTheOpenCell) {
  clickCell(0, ChosenQuantity);
  type(u"4"_s);
  QTest::keyClick(&screen(), Qt::Key_O, Qt::AltModifier);
  auto& form = defaultInstance<frmGetXIMU>();
  EXPECT_TRUE(QTest::qWaitFor([&form] { return !form.isVisible(); }));
  EXPECT_TRUE(form.accepted());
  EXPECT_EQ(form.ListView1->itemAt(0)->subItem(ChosenQuantity), u"4"_s);
}

TEST_F(GoodsChooserCells, TheKeyboardAloneWalksThroughAllCellsInReadingOrder) {
  screen();
  list().setFocus();
  key(Qt::Key_Return);
  EXPECT_EQ(open(), u"TxtInputSL"_s);
  type(u"5"_s);
  key(Qt::Key_Tab);
  EXPECT_EQ(open(), u"TxtInputJG"_s);
  type(u"11"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(open(), u"TxtInputZK"_s);
  type(u"0.8"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(open(), u"TxtInputSL"_s);
  type(u"6"_s);
  key(Qt::Key_Backtab);
  EXPECT_EQ(open(), u"TxtInputZK"_s) << "back over the row's end";
  key(Qt::Key_Escape);
  EXPECT_EQ(open(), QString());
  EXPECT_TRUE(screen().isVisible()) << "it left the cell, not the screen";
  EXPECT_EQ(cells(row(0)).mid(ChosenQuantity, 3), (QStringList{u"5"_s, u"11"_s, u"0.8"_s}));
  EXPECT_EQ(cells(row(1)).mid(ChosenQuantity, 3), (QStringList{u"6"_s, u"12.5"_s, u"1"_s}));
  EXPECT_TRUE(row(0).isChecked());
  EXPECT_TRUE(row(1).isChecked());

  list().setSelectedItem(&row(1));
  key(Qt::Key_Down);
  EXPECT_EQ(list().selectedItem(), &row(2));
  key(Qt::Key_F2);
  EXPECT_EQ(open(), u"TxtInputSL"_s);
}

TEST_F(GoodsChooserCells, TheKeyboardMeetsTheSameChecks) {
  screen();
  list().setFocus();
  key(Qt::Key_Return);
  type(u"x"_s);
  boxes->expect(Answer::Ok);
  key(Qt::Key_Tab);
  EXPECT_EQ(boxes->texts(), QStringList{notANumber});
  EXPECT_EQ(open(), u"TxtInputSL"_s);
}

TEST_F(GoodsChooserCells, EscLeavesACellAsItWas) {
  clickCell(0, ChosenQuantity);
  type(u"88"_s);
  key(Qt::Key_Escape);
  EXPECT_EQ(row(0).subItem(ChosenQuantity), u"0"_s);
  EXPECT_FALSE(row(0).isChecked());
}

TEST_F(GoodsChooserCells, SortingTakesTheOpenCellFirst) {
  clickCell(0, ChosenQuantity);
  type(u"3"_s);
  clickTitle(ChosenName);
  EXPECT_EQ(open(), QString());
  EXPECT_EQ(names(), (QStringList{u"English Reader"_s, u"大学语文"_s, u"高等数学"_s}));
  EXPECT_EQ(row(1).subItem(ChosenQuantity), u"3"_s);
}

TEST_F(GoodsChooserCells, AClickOnATitleSortsAndASecondTurnsTheOrder) {
  screen();
  clickTitle(ChosenBookNumber);
  EXPECT_EQ(names(), (QStringList{u"English Reader"_s, u"大学语文"_s, u"高等数学"_s}))
      << "numbers are texts";
  clickTitle(ChosenBookNumber);
  EXPECT_EQ(names(), (QStringList{u"高等数学"_s, u"大学语文"_s, u"English Reader"_s}));
  clickTitle(ChosenName);
  EXPECT_EQ(names().first(), u"English Reader"_s);
}

}  // namespace

#include "OrderFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString notNumeric = u"必须是数值,请重新输入"_s;
const QString notAFactor = u"必须是数值，并且不大于1，请重新输入"_s;

class PurchaseEdit : public OrderFixture<FrmGOHU_JH> {
 protected:
  PurchaseEdit() { open(88, purchaseHeader(), twoLines()); }

  /// The computed cells: amount, receivable, cartons, loose units.
  QString computed(int index) {
    return QStringList{row(index).subItem(LineAmount), row(index).subItem(LineReceivable),
                       row(index).subItem(LineCartons), row(index).subItem(LineLoose)}
        .join(u'|');
  }
};

/// A line, what is typed into one of its cells, and what comes of it.
struct Edit {
  QString line;  ///< quantity, price, amount, discount, receivable, cartons, loose, carton size
  int column;
  QString typed;
  QString becomes;  ///< amount, receivable, cartons, loose
};

}  // namespace

TEST_F(PurchaseEdit, AnEditRecomputesWhatHangsOnIt) {
  const QList<Edit> edits{
      {u"1|12.5|0|0.8|0|0|0|12"_s, LineQuantity, u"25"_s, u"312.5|250|2|1"_s},
      {u"1|1|0|1|0|0|0|3"_s, LineQuantity, u"-7"_s, u"-7|-7|-2|-1"_s},
      {u"5|2|10|1|10|2|1|2"_s, LineQuantity, u"0"_s, u"0|0|0|0"_s},
      {u"5|2|10|1|10|9|9|0"_s, LineQuantity, u"6"_s, u"12|12|0|0"_s},
      {u"5|2|10|1|10|9|9|-4"_s, LineQuantity, u"6"_s, u"12|12|0|0"_s},
      {u"1|2|2|1|2|0|0|2"_s, LineQuantity, u"2.5"_s, u"5|5|1|0.5"_s},
      {u"1|2|2|1|2|0|0|2"_s, LineQuantity, u"3.5"_s, u"7|7|2|-0.5"_s},
      {u"25|1|25|0.8|20|2|1|12"_s, LinePrice, u"12.5"_s, u"312.5|250|2|1"_s},
      {u"25|1|25|0.8|20|7|7|12"_s, LinePrice, u"-2"_s, u"-50|-40|7|7"_s},
      {u"25|1|99|0.8|20|7|7|12"_s, LineDiscount, u"0.5"_s, u"99|49.5|7|7"_s},
      {u"25|1|99|0.8|20|7|7|12"_s, LineDiscount, u"1"_s, u"99|99|7|7"_s},
      {u"25|1|99|0.8|20|7|7|12"_s, LineDiscount, u"0"_s, u"99|0|7|7"_s},
      {u"25|1|99|0.8|20|7|7|12"_s, LineDiscount, u"-1"_s, u"99|-99|7|7"_s},
      // A step that fails leaves its cells, and the others go on.
      {u"1|2|2|1|2|5|5|0.4"_s, LineQuantity, u"6"_s, u"12|12|5|5"_s},
      {u"1|2|2|1|2|5|5|12"_s, LineQuantity, u"3000000000"_s, u"6000000000|6000000000|5|5"_s},
      {u"1|1e300|2|1|2|5|5|12"_s, LineQuantity, u"1e300"_s, u"2|2|5|5"_s},
  };
  const QList<int> columns{LineQuantity,   LinePrice,   LineAmount, LineDiscount,
                           LineReceivable, LineCartons, LineLoose,  LineCartonSize};
  for (const Edit& edit : edits) {
    const QStringList texts = edit.line.split(u'|');
    for (int i = 0; i < columns.size(); ++i) row(0).setSubItem(columns[i], texts[i]);
    clickCell(0, edit.column);
    typeCell(edit.typed);
    clickCell(1, LineName);
    EXPECT_EQ(row(0).subItem(edit.column), edit.typed);
    EXPECT_EQ(computed(0), edit.becomes)
        << edit.line.toStdString() << ' ' << edit.typed.toStdString();
    EXPECT_EQ(openInput(), QString());
  }
}

TEST_F(PurchaseEdit, TotalsFollowAnEdit) {
  clickCell(0, LineQuantity);
  typeCell(u"-2.5"_s);
  key(Qt::Key_Escape);
  EXPECT_EQ(counts().join(u'|'), u"2|35|612.5|62.5|550|555.5|72.215"_s);
  clickCell(0, LineQuantity);
  typeCell(u"-2.5"_s);
  clickCell(1, LineName);
  EXPECT_EQ(counts().join(u'|'), u"2|8|268.75|-6.25|275|280.5|36.465"_s);
}

TEST_F(PurchaseEdit, QuantitiesAreRoundedRowByRowHalfToEven) {
  clickCell(0, LineQuantity);
  typeCell(u"2.5"_s);
  clickCell(1, LineQuantity);
  typeCell(u"3.5"_s);
  clickCell(0, LineName);
  EXPECT_EQ(count(CountQuantity), u"6"_s) << "2.5 counts 2, and 5.5 then 6";
}

TEST_F(PurchaseEdit, AnOrderWithoutDiscountsHasNone) {
  clickCell(0, LineDiscount);
  typeCell(u"1"_s);
  clickCell(1, LineName);
  EXPECT_EQ(count(CountDiscount), u"0"_s);
}

TEST_F(PurchaseEdit, ABadValueGetsItsBoxAndKeepsTheInput) {
  struct Bad {
    int column;
    QString input, typed, text;
  };
  for (const Bad& bad : {Bad{LineQuantity, u"TxtInputSL"_s, u"三"_s, notNumeric},
                         Bad{LineQuantity, u"TxtInputSL"_s, u""_s, notNumeric},
                         Bad{LinePrice, u"TxtInputJG"_s, u"12元"_s, notNumeric},
                         Bad{LineDiscount, u"TxtInputZK"_s, u"八折"_s, notAFactor},
                         Bad{LineDiscount, u"TxtInputZK"_s, u"1.01"_s, notAFactor}}) {
    const QStringList before = cells(0);
    clickCell(0, bad.column);
    typeCell(bad.typed);
    boxes->asked.clear();
    boxes->expect(Answer::Ok);
    clickCell(1, LineQuantity);
    EXPECT_EQ(boxes->texts(), QStringList{bad.text});
    EXPECT_EQ(openInput(), bad.input);
    EXPECT_EQ(QApplication::focusWidget(), screen().findChild<TextBox*>(bad.input)->editor());
    boxes->expect(Answer::Ok);
    key(Qt::Key_Tab);
    EXPECT_EQ(boxes->texts(), QStringList({bad.text, bad.text}));
    EXPECT_EQ(openInput(), bad.input);
    key(Qt::Key_Escape);
    EXPECT_EQ(openInput(), QString());
    EXPECT_EQ(cells(0), before);
  }
}

TEST_F(PurchaseEdit, OnlyTheThreeColumnsOpenAndNoneOnAnEdge) {
  const QMap<int, QString> inputs{{LineQuantity, u"TxtInputSL"_s},
                                  {LinePrice, u"TxtInputJG"_s},
                                  {LineDiscount, u"TxtInputZK"_s}};
  for (int column = LineName; column <= LineLoose; ++column) {
    clickCell(0, column);
    EXPECT_EQ(openInput(), inputs.value(column)) << column;
    if (!openInput().isEmpty()) key(Qt::Key_Escape);
  }
  const int y = list().cellRect(&row(0)).center().y();
  for (int column = LineQuantity; column <= LineReceivable; ++column) {
    mouse({list().columnViewportPosition(column), y});
    EXPECT_EQ(openInput(), QString()) << column;
  }
}

TEST_F(PurchaseEdit, AnInputLiesOverItsCell) {
  clickCell(1, LineDiscount);
  const auto* box = screen().findChild<TextBox*>(u"TxtInputZK"_s);
  const QRect cell = list().cellRect(&row(1), LineDiscount);
  EXPECT_EQ(box->width(), list().columnWidth(LineDiscount) - 1);
  EXPECT_EQ(box->height(), list().cellRect(&row(0)).height() - 1);
  EXPECT_EQ(box->x(), list().x() + list().columnViewportPosition(LineDiscount) + 4);
  EXPECT_EQ(box->y(), list().y() + list().header()->height() + cell.top() + 4);
}

TEST_F(PurchaseEdit, AConfirmationOfEitherPartyLocksTheLinesAtOnce) {
  for (QCheckBox* flag : {screen().CheckJHHS, screen().CheckXSHS}) {
    flag->setChecked(true);
    for (const int column : {LineQuantity, LinePrice, LineDiscount}) {
      clickCell(0, column);
      EXPECT_EQ(openInput(), QString());
    }
    list().setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(openInput(), QString());
    flag->setChecked(false);
    clickCell(0, LineQuantity);
    EXPECT_EQ(openInput(), u"TxtInputSL"_s);
    key(Qt::Key_Escape);
  }
}

TEST_F(PurchaseEdit, OpeningAnInputMarksTheOrderUnlessTheTextIsTheSame) {
  clickCell(0, LineQuantity);
  EXPECT_TRUE(screen().isDirty());
  key(Qt::Key_Escape);
  portal.answerWith({page(purchaseHeader()), page(twoLines())});
  press(u"Refresh"_s);
  EXPECT_FALSE(screen().isDirty());
  clickCell(0, LineQuantity);
  EXPECT_EQ(openInput(), u"TxtInputSL"_s);
  EXPECT_FALSE(screen().isDirty()) << "it still held 25";
}

TEST_F(PurchaseEdit, ARowOfSumsIsLeftAlone) {
  row(0).setKey(u"Count ID"_s);
  clickCell(0, LineQuantity);
  EXPECT_EQ(openInput(), QString());
  clickCell(0, LineQuantity, Qt::RightButton);
  EXPECT_FALSE(screen().mnuGohu->isVisible());
}

TEST_F(PurchaseEdit, TheRightButtonPopsUpTheMenuOfItsRow) {
  for (const bool locked : {false, true}) {
    screen().CheckJHHS->setChecked(locked);
    clickCell(1, LineQuantity, Qt::RightButton);
    EXPECT_EQ(state.gGoodsId, 502);
    EXPECT_TRUE(screen().mnuGohu->isVisible());
    EXPECT_EQ(openInput(), QString());
    screen().mnuGohu->close();
    state.gGoodsId = 0;
  }
}

TEST_F(PurchaseEdit, TheRightButtonOverEmptySpaceDoesNothing) {
  mouse({30, list().viewport()->height() - 5}, Qt::RightButton);
  EXPECT_FALSE(screen().mnuGohu->isVisible());
  EXPECT_EQ(state.gGoodsId, 0);
}

TEST_F(PurchaseEdit, TheMenuKeyPopsItUpForTheSelectedRow) {
  list().setFocus();
  key(Qt::Key_Down);
  QContextMenuEvent menu(QContextMenuEvent::Keyboard, {5, 5}, list().mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(&list(), &menu);
  EXPECT_EQ(state.gGoodsId, 502);
  EXPECT_TRUE(screen().mnuGohu->isVisible());
  screen().mnuGohu->close();
}

TEST_F(PurchaseEdit, AWholeOrderIsTypedWithoutTheMouse) {
  list().setFocus();
  key(Qt::Key_Return);
  // Quantity, price and discount of one row, then of the next.
  const QStringList typed{u"7"_s, u"12"_s, u"0.9"_s, u"-2"_s, u"30"_s, u"1"_s};
  QStringList walk;
  for (int i = 0; i < typed.size(); ++i) {
    walk << openInput();
    typeCell(typed[i]);
    key(i % 2 == 0 ? Qt::Key_Tab : Qt::Key_Return);
  }
  EXPECT_EQ(walk.join(u' '),
            u"TxtInputSL TxtInputJG TxtInputZK TxtInputSL TxtInputJG TxtInputZK"_s);
  EXPECT_EQ(openInput(), QString());
  EXPECT_EQ(QApplication::focusWidget(), &list());
  EXPECT_EQ(computed(0), u"84|75.6|0|7"_s);
  EXPECT_EQ(computed(1), u"-60|-60|0|0"_s);
  EXPECT_EQ(counts().join(u'|'), u"2|5|24|8.4|15.6|21.1|2.743"_s);
  EXPECT_TRUE(screen().isDirty());
}

TEST_F(PurchaseEdit, AClosedChargesFieldStillHasItsCheck) {
  TextBox* charges = screen().txtFields(4);
  EXPECT_FALSE(charges->isEnabled());
  charges->setText(u"12元"_s);
  boxes->expect(Answer::Ok);
  EXPECT_FALSE(charges->onValidate());
  EXPECT_EQ(boxes->texts(), QStringList{notNumeric});
  charges->setText(u"12"_s);
  EXPECT_TRUE(charges->onValidate());
}

TEST_F(PurchaseEdit, LeavingTheChargesRecomputesTheTotals) {
  TextBox* charges = screen().txtFields(4);
  charges->setEnabled(true);
  charges->setText(u"10.00005"_s);
  charges->editor()->setFocus();
  EXPECT_EQ(count(CountTotal), u"555.5"_s);
  list().setFocus();
  EXPECT_EQ(count(CountTotal), u"560"_s);
  EXPECT_EQ(count(CountTax), u"72.8"_s);
}

TEST_F(PurchaseEdit, LeavingTheNumberRecomputesNothing) {
  row(0).setSubItem(LineAmount, u"1"_s);
  type(1, u"G1"_s);
  list().setFocus();
  EXPECT_EQ(count(CountAmount), u"612.5"_s);
}

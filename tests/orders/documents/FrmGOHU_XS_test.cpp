#include "OrderFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class Sales : public OrderFixture<FrmGOHU_XS> {
 protected:
  Open& openOrder(const QMap<int, QString>& changes = {}) {
    return open(88, salesHeader(changes), salesLines());
  }
};

const QStringList lockable{u"txtFields(4)"_s, u"DTPicker2"_s, u"ComboFHFS"_s};
const QStringList shipping{u"DTPicker2"_s, u"ComboFHFS"_s};

}  // namespace

TEST_F(Sales, LoadAsksForNoCategoryAndWithTheOrderOfTheLinesAsItStands) {
  state.gCurrentOrderId = 88;
  portal.answerWith({page(salesHeader()), page(salesLines())});
  screen();
  EXPECT_EQ(targets(), QStringList({readTarget(u"GOHU"_s, headerColumnsSent, u"id=88"_s),
                                    readTarget(u"GOKU"_s, lineColumnsSent, u"gohu_id=88"_s) +
                                        u"&STORDER=ID"_s}));
  EXPECT_EQ(cells(0).join(u'|'), u"大学语文|B1|25|12.5|312.5|0.8|250|2|1|501|八折|12|7-01|"_s);
  EXPECT_EQ(row(0).key(), u"417 ID"_s);
  EXPECT_EQ(counts().join(u'|'), u"2|35|612.5|62.5|550|555.5|72.215"_s);
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(Sales, HasItsCaptionAndButtonsAndOneInputAndNoMenu) {
  openOrder();
  EXPECT_EQ(screen().windowTitle(), u"销售订货单"_s);
  EXPECT_EQ(buttons().join(u'|'), u"Print 打印|Save 保存|Refresh 刷新|Call 通知|Exit 退出"_s);
  EXPECT_EQ(screen().findChild<TextBox*>(u"TxtInputSL"_s), nullptr);
  EXPECT_EQ(screen().findChild<TextBox*>(u"TxtInputJG"_s), nullptr);
  EXPECT_EQ(list().model()->columnCount(), 14);
  clickCell(0, LineName, Qt::RightButton);
  EXPECT_EQ(state.gGoodsId, 0);
}

TEST_F(Sales, WhatIsTheBuyersIsClosedFromTheStart) {
  openOrder();
  EXPECT_EQ(usable({u"txtFields(1)"_s, u"DTPicker1"_s, u"txtFields(2)"_s, u"txtFields(3)"_s,
                    u"DTPicker2"_s, u"txtFields(4)"_s, u"ComboFHFS"_s, u"CheckJHHS"_s,
                    u"CheckXSHS"_s, u"CheckFH"_s, u"CheckSH"_s}),
            QStringList({u"DTPicker1"_s, u"DTPicker2"_s, u"txtFields(4)"_s, u"ComboFHFS"_s,
                         u"CheckXSHS"_s, u"CheckFH"_s}));
}

TEST_F(Sales, OnlyTheDiscountOpensAndRecomputesTheReceivable) {
  openOrder();
  for (int column = LineName; column <= LineLoose; ++column) {
    clickCell(0, column);
    EXPECT_EQ(openInput(), column == LineDiscount ? u"TxtInputZK"_s : QString()) << column;
    if (!openInput().isEmpty()) key(Qt::Key_Escape);
  }
  clickCell(0, LineDiscount);
  typeCell(u"0.5"_s);
  clickCell(1, LineName);
  EXPECT_EQ(row(0).subItem(LineReceivable), u"156.25"_s);
  EXPECT_EQ(count(CountReceivable), u"456.25"_s);
  EXPECT_TRUE(screen().isDirty());
  clickCell(0, LineDiscount);
  typeCell(u"1.01"_s);
  boxes->expect(Answer::Ok);
  clickCell(1, LineName);
  EXPECT_EQ(boxes->texts(), QStringList{u"必须是数值，并且不大于1，请重新输入"_s});
  EXPECT_EQ(openInput(), u"TxtInputZK"_s);
}

TEST_F(Sales, TabWalksFromDiscountToDiscount) {
  openOrder();
  list().setFocus();
  key(Qt::Key_Return);
  typeCell(u"0.7"_s);
  key(Qt::Key_Tab);
  EXPECT_EQ(list().selectedItem(), &row(1));
  typeCell(u"0.9"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(openInput(), QString());
  EXPECT_EQ(row(0).subItem(LineDiscount), u"0.7"_s);
  EXPECT_EQ(row(1).subItem(LineReceivable), u"270"_s);
}

TEST_F(Sales, TheBuyersConfirmationLocksDiscountsAndChargesAndNothingElse) {
  openOrder({{9, u"True"_s}});
  clickCell(0, LineDiscount);
  EXPECT_EQ(openInput(), QString());
  EXPECT_EQ(usable(lockable), shipping);
  EXPECT_EQ(usable({u"CheckXSHS"_s, u"CheckFH"_s}), QStringList({u"CheckXSHS"_s, u"CheckFH"_s}));
}

TEST_F(Sales, TheOwnConfirmationLocksAtOnceInTheListAndLaterInTheFields) {
  openOrder();
  QTest::mouseClick(screen().CheckXSHS, Qt::LeftButton, Qt::NoModifier, {8, 8});
  clickCell(0, LineDiscount);
  EXPECT_EQ(openInput(), QString());
  EXPECT_EQ(usable(lockable), lockable);
  reactivate();
  EXPECT_EQ(usable(lockable), shipping);
}

TEST_F(Sales, AShippedOrderOpensItsShippingOnlyAtTheNextActivation) {
  openOrder({{12, u"True"_s}});
  EXPECT_EQ(usable(lockable), QStringList{u"txtFields(4)"_s});
  QTest::mouseClick(screen().CheckFH, Qt::LeftButton, Qt::NoModifier, {8, 8});
  EXPECT_FALSE(screen().CheckFH->isChecked());
  EXPECT_EQ(usable(shipping), QStringList());
  reactivate();
  EXPECT_EQ(usable(shipping), shipping);
  EXPECT_FALSE(usable({u"txtFields(1)"_s}).contains(u"txtFields(1)"_s));
}

TEST_F(Sales, ChargesCountByTheirLeadingNumberAndGoOutAsTheyStand) {
  openOrder();
  type(4, u" 12元 "_s);
  list().setFocus();
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(count(CountTotal), u"562"_s);
  type(4, u"免"_s);
  list().setFocus();
  EXPECT_EQ(count(CountTotal), u"550"_s);
  type(4, u" 12元 "_s);
  list().setFocus();
  press(u"Save"_s);
  EXPECT_TRUE(targets().last().contains(u"&FEYO="_s + UrlEncodeField(u"12元"_s) + u"&"_s));
  EXPECT_EQ(store.value(u"SELECT feyo FROM GOHU WHERE R_ID=88"_s).toString(), u" 12元 "_s);
}

TEST_F(Sales, ASaveCountsTheChargesThatAreBeingTyped) {
  for (const bool closing : {false, true}) {
    openOrder();
    portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
    type(4, u"12"_s);
    ASSERT_EQ(count(CountTotal), u"555.5"_s) << "the field has not been left";
    if (closing) {
      boxes->expect(Answer::Yes);
      EXPECT_TRUE(screen().unload());
    } else {
      press(u"Save"_s);
      EXPECT_EQ(count(CountTotal), u"562"_s);
      EXPECT_FALSE(closingAsks());
    }
    ASSERT_EQ(targets().size(), 3);
    EXPECT_TRUE(targets().first().contains(u"&FEYO="_s + UrlEncodeField(u"12"_s) + u"&HEJI="_s +
                                           UrlEncodeField(u"562"_s) + u"&"_s));
    EXPECT_EQ(store.value(u"SELECT HEJI FROM GOHU WHERE R_ID=88"_s).toDouble(), 562);
    store.exec(u"DELETE FROM GOHU; DELETE FROM GOKU"_s);
  }
}

TEST_F(Sales, ATotalThatHasNoRoomIsToldAndTheSaveGoesOn) {
  openOrder();
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  type(4, u"1e30"_s);
  boxes->expect(Answer::Ok);
  press(u"Save"_s);
  EXPECT_EQ(boxes->asked.last().mark, Mark::Critical);
  EXPECT_EQ(status(), u"订单保存成功！！！"_s);
  EXPECT_EQ(targets().size(), 3);
}

TEST_F(Sales, ClosingLooksAtNoTotalsAnyMore) {
  openOrder();
  type(4, u"1e30"_s);
  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
}

TEST_F(Sales, TabWalksTheFieldsRowByRow) {
  openOrder();
  screen().DTPicker1->setFocus();
  QStringList walk;
  for (int presses = 0; presses < 20 && QApplication::focusWidget() != &list(); ++presses) {
    const QString name = QApplication::focusWidget()->objectName();
    // Within a date Tab goes from part to part.
    if (walk.isEmpty() || walk.last() != name) walk << name;
    key(Qt::Key_Tab);
  }
  EXPECT_EQ(walk.join(u' '),
            u"DTPicker1 txtFields(4).editor DTPicker2 CheckXSHS ComboFHFS CheckFH"_s);
}

TEST_F(Sales, ATimeOfDayOfTheShippingGoesBackToThePortal) {
  openOrder({{8, u"2003-1-20 17:30:00"_s}});
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_TRUE(
      targets().first().contains(u"&FHRQ="_s + UrlEncodeField(u"2003-1-20 17:30:00"_s) + u"&"_s));
}

TEST_F(Sales, LeavingAnyFieldRecomputesTheTotals) {
  openOrder();
  row(0).setSubItem(LineAmount, u"1"_s);
  screen().txtFields(2)->setEnabled(true);
  type(2, u"x"_s);
  list().setFocus();
  EXPECT_EQ(count(CountAmount), u"301"_s);
}

TEST_F(Sales, TheOrderDateAloneDoesNotCountAsUnsaved) {
  openOrder();
  screen().DTPicker1->setDate({2003, 2, 1});
  EXPECT_FALSE(screen().isDirty());
  EXPECT_TRUE(screen().unload());
  const QList<std::pair<QString, std::function<void(Open&)>>> changes{
      {u"ship date"_s,
       [](Open& form) {
         form.DTPicker2->setDate({2003, 2, 1});
       }},
      {u"method typed"_s, [](Open& form) { form.ComboFHFS->setEditText(u"船"_s); }},
      {u"method picked"_s, [](Open& form) { emit form.ComboFHFS->activated(1); }},
      {u"charges"_s, [](Open& form) { form.txtFields(4)->setText(u"1"_s); }},
      {u"JHHS"_s, [](Open& form) { form.CheckJHHS->setChecked(true); }},
      {u"XSHS"_s, [](Open& form) { form.CheckXSHS->click(); }},
      {u"FH"_s, [](Open& form) { form.CheckFH->click(); }},
      {u"SH"_s, [](Open& form) { form.CheckSH->setChecked(true); }}};
  for (const auto& [name, change] : changes) {
    openOrder();
    change(screen());
    EXPECT_TRUE(screen().isDirty()) << name.toStdString();
    EXPECT_TRUE(closingAsks());
  }
}

TEST_F(Sales, SavesTheSellersHalfAndBlanksTheCategories) {
  openOrder({{10, u"True"_s}, {12, u"True"_s}});
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(status(), u"订单保存成功！！！"_s);
  const Parameters header{{u"GOSH_ID"_s, u"25"_s},
                          {u"GOSH"_s, u"青禾书店"_s},
                          {u"KEHU_ID"_s, u"9"_s},
                          {u"KEHU"_s, u"云集书社"_s},
                          {u"GOHU_NO"_s, u"G2003115-7"_s},
                          {u"GHRQ"_s, u"2003-1-15"_s},
                          {u"FHRQ"_s, u"2003-1-20"_s},
                          {u"XSHS"_s, u"1"_s},
                          {u"FH"_s, u"1"_s},
                          {u"FHFS"_s, u"快件"_s},
                          {u"SHLI"_s, u"35"_s},
                          {u"JINE"_s, u"612.5"_s},
                          {u"ZHKO"_s, u"62.5"_s},
                          {u"YNSH"_s, u"550"_s},
                          {u"FEYO"_s, u"5.5"_s},
                          {u"HEJI"_s, u"555.5"_s},
                          {u"SHER"_s, u"72.215"_s}};
  ASSERT_EQ(targets().size(), 3);
  EXPECT_EQ(targets()[0], saveTarget(u"gohu"_s, u"36"_s, u"id=88"_s, header));
  EXPECT_EQ(targets()[2], saveTarget(u"goku"_s, u"17"_s, u"id=418 and gohu_id=88"_s,
                                     {{u"GOHU_ID"_s, u"88"_s},
                                      {u"XIMU"_s, u"高等数学"_s},
                                      {u"XIMU_BH"_s, u"B2"_s},
                                      {u"SHLI"_s, u"10"_s},
                                      {u"JIGE"_s, u"30"_s},
                                      {u"JINE"_s, u"300"_s},
                                      {u"ZHKO"_s, u"1"_s},
                                      {u"YNSH"_s, u"300"_s},
                                      {u"BAXI"_s, u"0"_s},
                                      {u"LING"_s, u"0"_s},
                                      {u"XIMU_ID"_s, u"502"_s},
                                      {u"BAZH"_s, u""_s},
                                      {u"GESH"_s, u"0"_s},
                                      {u"XIMU_NO"_s, u"7-02"_s},
                                      {u"LEBI"_s, u""_s}}));
  const auto local = store.rows(u"SELECT gosh_id,gosh,kehu_id,kehu FROM GOHU WHERE R_ID=88"_s);
  ASSERT_EQ(local.size(), 1);
  EXPECT_EQ(local[0], (QVariantList{25LL, u"青禾书店"_s, 9LL, u"云集书社"_s}));
  const auto categories = store.rows(u"SELECT DISTINCT LEBI FROM GOKU WHERE R_ID=88"_s);
  ASSERT_EQ(categories.size(), 1);
  EXPECT_EQ(categories[0].first().toString(), QString());
}

TEST_F(Sales, AfterTheSellersSaveTheBuyersLocalCategoriesBecomeEmptyToo) {
  openOrder();
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_TRUE(targets()[1].endsWith(u"&LEBI="_s));
  EXPECT_TRUE(screen().unload());

  // What the portal then answers the buyer.
  QList<QStringList> lines = twoLines();
  for (QStringList& line : lines) line.last().clear();
  portal.clear();
  portal.answerWith({page(purchaseHeader()), page(lines)});
  auto& buyer = defaultInstance<FrmGOHU_JH>();
  EXPECT_EQ(buyer.ListView1->itemAt(0)->subItem(LineCategory), QString());
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  buyer.Toolbar1->button(u"Save"_s)->trigger();
  EXPECT_TRUE(targets().last().endsWith(u"&LEBI="_s));
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOKU WHERE LEBI=''"_s).toInt(), 2);
}

TEST_F(Sales, RefreshAsksNothingAndClosingDoes) {
  openOrder();
  type(4, u"9"_s);
  portal.answerWith({page(salesHeader()), page(salesLines())});
  press(u"Refresh"_s);
  EXPECT_EQ(field(4), u"5.5"_s);
  EXPECT_FALSE(screen().isDirty());
  type(4, u"9"_s);
  boxes->expect(Answer::Cancel);
  EXPECT_FALSE(screen().unload());
  EXPECT_EQ(boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
  EXPECT_TRUE(closingAsks());
}

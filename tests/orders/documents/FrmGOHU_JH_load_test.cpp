#include <QHeaderView>
#include <QLabel>

#include "OrderFixture.h"
#include "messaging/frmPeer.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class Purchase : public OrderFixture<FrmGOHU_JH> {
 protected:
  Open& openOrder(const QMap<int, QString>& changes = {}) {
    return open(88, purchaseHeader(changes), twoLines());
  }
  Open& openNew() {
    state.gCurrentOrderId = 0;
    state.gPartnerId = 7;
    state.gPartnerName = u"学苑书店"_s;
    return screen();
  }
};

const QStringList lockable{u"DTPicker1"_s, u"txtFields(1)"_s, u"Ximu"_s, u"mnuList"_s};

}  // namespace

TEST_F(Purchase, ANewOrderHasItsDefaultsAndAsksThePortalNothing) {
  const QDate before = QDate::currentDate();
  openNew();
  const QDate today = screen().DTPicker1->date();
  EXPECT_GE(today, before);
  EXPECT_LE(today, QDate::currentDate());
  EXPECT_EQ(field(1), u"G%1%2%3-"_s.arg(today.year()).arg(today.month()).arg(today.day()));
  EXPECT_EQ(id(), u"0"_s);
  EXPECT_EQ(screen().DTPicker2->date(), today);
  EXPECT_EQ(screen().txtFields(2)->Tag, u"7"_s);
  EXPECT_EQ(field(2), u"学苑书店"_s);
  EXPECT_EQ(screen().txtFields(3)->Tag, u"25"_s);
  EXPECT_EQ(field(3), u"青禾书店"_s);
  EXPECT_EQ(field(4), u"0"_s);
  EXPECT_EQ(screen().ComboFHFS->currentText(), QString());
  EXPECT_EQ(screen().ComboFHFS->currentIndex(), -1);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(Purchase, LoadAsksForTheHeaderAndThenForTheLinesInTheirOrder) {
  state.gCurrentOrderId = 88;
  portal.answerWith({page(purchaseHeader()), page(twoLines())});
  screen();
  EXPECT_EQ(targets(),
            QStringList({readTarget(u"GOHU"_s, headerColumnsSent, u"id=88"_s),
                         readTarget(u"GOKU"_s, lineColumnsSent + u"lebi,"_s, u"gohu_id=88"_s) +
                             u"&STORDER="_s + UrlEncodeField(u"ID"_s)}));
}

TEST_F(Purchase, TheHeaderRequestAsBytes) {
  state.gCurrentOrderId = 88;
  screen();
  EXPECT_EQ(targets().first(),
            u"/_vti_product/_vti_detail_field_s.asp?STABLE=%47%4F%48%55&STRDATA="
            "%69%64%2C%67%6F%68%75%5F%6E%6F%2C%67%68%72%71%2C%67%6F%73%68%5F%69%64%2C"
            "%67%6F%73%68%2C%6B%65%68%75%5F%69%64%2C%6B%65%68%75%2C%66%65%79%6F%2C"
            "%66%68%72%71%2C%6A%68%68%73%2C%78%73%68%73%2C%73%68%2C%66%68%2C%66%68%66%73%2C"
            "&STOTHER=%69%64%3D%38%38"_s);
}

TEST_F(Purchase, LoadFillsTheFieldsTheListAndTheTotals) {
  openOrder({{10, u"True"_s}});
  EXPECT_EQ(id(), u"88"_s);
  EXPECT_EQ(state.gCurrentOrderId, 88);
  EXPECT_EQ(field(1), u"G2003115-7"_s);
  EXPECT_EQ(screen().DTPicker1->date(), QDate(2003, 1, 15));
  EXPECT_EQ(screen().txtFields(2)->Tag, u"7"_s);
  EXPECT_EQ(field(2), u"学苑书店"_s);
  EXPECT_EQ(screen().txtFields(3)->Tag, u"25"_s);
  EXPECT_EQ(field(3), u"青禾书店"_s);
  EXPECT_EQ(field(4), u"5.5"_s);
  EXPECT_EQ(screen().DTPicker2->date(), QDate(2003, 1, 20));
  EXPECT_EQ(screen().ComboFHFS->currentText(), u"快件"_s);
  EXPECT_FALSE(screen().CheckJHHS->isChecked());
  EXPECT_TRUE(screen().CheckXSHS->isChecked());
  ASSERT_EQ(list().itemCount(), 2);
  EXPECT_EQ(row(0).key(), u"417 ID"_s);
  EXPECT_EQ(row(0).icon(), u"Goku"_s);
  EXPECT_EQ(cells(0).join(u'|'), u"大学语文|B1|25|12.5|312.5|0.8|250|2|1|501|八折|12|7-01|教材"_s);
  EXPECT_EQ(cells(1).join(u'|'), u"高等数学|B2|10|30|300|1|300|0|0|502||0|7-02|教材"_s);
  EXPECT_EQ(counts().join(u'|'), u"2|35|612.5|62.5|550|555.5|72.215"_s);
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(Purchase, HasItsCaptionsColumnsButtonsAndMenu) {
  openNew();
  EXPECT_EQ(screen().windowTitle(), u"进货订货单"_s);
  QStringList labels;
  for (const auto* label : screen().findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) labels << label->text();
  }
  for (const auto& text : {u"订货单号"_s, u"订货日期"_s, u"供    商"_s, u"客    户"_s,
                           u"发货日期"_s, u"其它费用"_s, u"发货方式"_s, u"条目"_s, u"数量"_s,
                           u"金额"_s, u"折扣"_s, u"应收"_s, u"合计"_s, u"税额"_s}) {
    EXPECT_TRUE(labels.contains(text)) << text.toStdString();
  }
  EXPECT_EQ(screen().CheckJHHS->text(), u"客户确认"_s);
  EXPECT_EQ(screen().CheckXSHS->text(), u"供商确认"_s);
  EXPECT_EQ(screen().CheckFH->text(), u"已经发货"_s);
  EXPECT_EQ(screen().CheckSH->text(), u"已收到货"_s);
  QStringList columns;
  EXPECT_EQ(list().header()->length(), list().viewport()->width());
  list().setSpreadsColumns(false);
  for (int i = 0; i < 14; ++i) {
    columns << u"%1 %2"_s.arg(list().model()->headerData(i, Qt::Horizontal).toString())
                   .arg(list().columnWidth(i));
  }
  EXPECT_EQ(
      columns.join(u'|'),
      u"商品 167|编号 40|数量 67|单价 67|金额 67|折扣 67|应收 67|包箱 53|零 40| 0| 0| 0| 0| 0"_s);
  EXPECT_EQ(buttons().join(u'|'),
            u"Print 打印|Ximu 目录|Save 保存|Refresh 刷新|Call 通知|Exit 退出"_s);
  QStringList entries;
  for (const QAction* action : screen().mnuGohu->actions()) {
    entries << action->objectName() + u' ' + action->text();
  }
  EXPECT_EQ(entries.join(u'|'), u"mnuXimux 图书详细信息|mnuList 目录|mnuImport 目录导入"_s);
  QStringList methods;
  for (int i = 0; i < screen().ComboFHFS->count(); ++i) {
    methods << screen().ComboFHFS->itemText(i);
  }
  EXPECT_EQ(methods.join(u' '), u"慢件 快件 箱式 自取 送货 代发 公路 铁路"_s);
}

TEST_F(Purchase, WhatIsTheSellersIsClosedFromTheStart) {
  openOrder();
  EXPECT_EQ(usable({u"txtFields(1)"_s, u"DTPicker1"_s, u"txtFields(2)"_s, u"txtFields(3)"_s,
                    u"DTPicker2"_s, u"txtFields(4)"_s, u"ComboFHFS"_s, u"CheckJHHS"_s,
                    u"CheckXSHS"_s, u"CheckFH"_s, u"CheckSH"_s, u"TxtCounts(0)"_s,
                    u"TxtCounts(6)"_s, u"Ximu"_s, u"mnuList"_s}),
            QStringList({u"txtFields(1)"_s, u"DTPicker1"_s, u"DTPicker2"_s, u"CheckJHHS"_s,
                         u"CheckSH"_s, u"Ximu"_s, u"mnuList"_s}));
  EXPECT_EQ(openInput(), QString());
}

TEST_F(Purchase, AFlagIsSetByExactlyTrueAndAMethodBeyondTheEightIsShown) {
  openOrder({{9, u"true"_s}, {10, u"1"_s}, {11, u"True"_s}, {12, u"True1"_s}, {13, u"船运"_s}});
  EXPECT_FALSE(screen().CheckJHHS->isChecked());
  EXPECT_FALSE(screen().CheckXSHS->isChecked());
  EXPECT_TRUE(screen().CheckSH->isChecked());
  EXPECT_FALSE(screen().CheckFH->isChecked());
  EXPECT_EQ(screen().ComboFHFS->currentText(), u"船运"_s);
  EXPECT_EQ(screen().ComboFHFS->currentIndex(), -1);
  portal.answerWith({page(purchaseHeader()), page(twoLines())});
  press(u"Refresh"_s);
  EXPECT_EQ(screen().ComboFHFS->currentIndex(), shippingMethods().indexOf(u"快件"_s));
}

TEST_F(Purchase, AnEmptyShipDateLeavesWhatStandsBehindItUnread) {
  const QDate before = QDate::currentDate();
  openOrder({{8, QString()}, {9, u"True"_s}});
  EXPECT_EQ(field(4), u"5.5"_s);
  EXPECT_GE(screen().DTPicker2->date(), before);
  EXPECT_LE(screen().DTPicker2->date(), QDate::currentDate());
  EXPECT_FALSE(screen().CheckJHHS->isChecked());
  EXPECT_EQ(screen().ComboFHFS->currentText(), QString());
  EXPECT_EQ(list().itemCount(), 2) << "the lines are another request";
}

TEST_F(Purchase, AnAnswerWithoutRowsFillsNothingAndSaysNothing) {
  state.gCurrentOrderId = 88;
  portal.answerWith({"<html></html>"});
  screen();
  EXPECT_EQ(field(1), QString());
  EXPECT_EQ(id(), QString());
  EXPECT_EQ(field(4), u"0"_s);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Purchase, APortalThatIsGoneLeavesTheFieldsAndAnEmptyList) {
  openOrder();
  type(1, u"G1"_s);
  portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.reset = true}; });
  press(u"Refresh"_s);
  EXPECT_EQ(field(1), u"G1"_s);
  EXPECT_EQ(qobject_cast<QLineEdit*>(screen().txtFields(1)->editor())->cursorPosition(), 2)
      << "not so much as touched";
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_EQ(count(0), u"0"_s);
}

TEST_F(Purchase, AnotherOrderOnlyBringsTheOpenScreenForward) {
  openOrder();
  state.gCurrentOrderId = 99;
  defaultInstance<Open>().showForm();
  EXPECT_EQ(field(1), u"G2003115-7"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
  press(u"Refresh"_s);
  EXPECT_EQ(targets().first(), readTarget(u"GOHU"_s, headerColumnsSent, u"id=99"_s));
}

TEST_F(Purchase, RefreshOfANewOrderSaysSoAndChangesNothing) {
  openNew();
  type(1, u"G1"_s);
  boxes->expect(Answer::Ok);
  press(u"Refresh"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"订单未保存"_s});
  EXPECT_EQ(field(1), u"G1"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(screen().isDirty());
}

TEST_F(Purchase, RefreshDropsUnsavedEditsAndNewRowsWithoutAsking) {
  openOrder();
  type(1, u"G1"_s);
  list().addItem({}, u"商品"_s);
  clickCell(0, LineQuantity);
  portal.answerWith({page(purchaseHeader({{7, u"7"_s}})), page(twoLines())});
  press(u"Refresh"_s);
  EXPECT_EQ(field(1), u"G2003115-7"_s);
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_EQ(openInput(), QString());
  EXPECT_EQ(count(CountTotal), u"557"_s);
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(Purchase, ActivationRecomputesTotalsAndAppliesTheLocks) {
  openOrder();
  screen().CheckFH->setChecked(true);
  row(0).setSubItem(LineAmount, u"12.34567"_s);
  EXPECT_EQ(usable(lockable), lockable) << "ticking alone locks nothing";
  reactivate();
  EXPECT_EQ(count(CountAmount), u"312.3457"_s);
  EXPECT_EQ(usable(lockable), QStringList());
  screen().CheckFH->setChecked(false);
  EXPECT_EQ(usable(lockable), QStringList());
  reactivate();
  EXPECT_EQ(usable(lockable), lockable);
  QTest::mouseClick(screen().CheckSH, Qt::LeftButton, Qt::NoModifier, {8, 8});
  reactivate();
  EXPECT_EQ(usable(lockable), QStringList());
  clickCell(0, LineQuantity);
  EXPECT_EQ(openInput(), u"TxtInputSL"_s) << "shipping alone does not lock the lines";
}

TEST_F(Purchase, TotalsBeyondTheirWidthAreToldAndTheLocksApplyAllTheSame) {
  openOrder();
  row(0).setSubItem(LineQuantity, u"3000000000"_s);
  screen().CheckFH->setChecked(true);
  boxes->expect(Answer::Ok);
  reactivate();
  EXPECT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(boxes->asked.first().mark, Mark::Critical);
  EXPECT_EQ(count(CountQuantity), u"35"_s);
  EXPECT_EQ(usable(lockable), QStringList());
}

TEST_F(Purchase, AnOrderLoadedWithTotalsBeyondTheirWidthTellsItOnce) {
  QList<QStringList> lines = twoLines();
  lines[0][4] = u"3000000000"_s;
  boxes->expect(Answer::Ok);
  open(88, purchaseHeader(), lines);
  EXPECT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_TRUE(screen().isVisible());
}

TEST_F(Purchase, WhichChangesCountAsUnsaved) {
  const QList<std::pair<QString, std::function<void(Open&)>>> changes{
      {u"order date"_s,
       [](Open& form) {
         form.DTPicker1->setDate({2003, 2, 1});
       }},
      {u"number"_s, [](Open& form) { form.txtFields(1)->setText(u"x"_s); }},
      {u"seller"_s, [](Open& form) { form.txtFields(2)->setText(u"x"_s); }},
      {u"buyer"_s, [](Open& form) { form.txtFields(3)->setText(u"x"_s); }},
      {u"charges"_s, [](Open& form) { form.txtFields(4)->setText(u"1"_s); }},
      {u"JHHS"_s, [](Open& form) { form.CheckJHHS->click(); }},
      {u"XSHS"_s, [](Open& form) { form.CheckXSHS->setChecked(true); }},
      {u"FH"_s, [](Open& form) { form.CheckFH->setChecked(true); }},
      {u"SH"_s, [](Open& form) { form.CheckSH->click(); }}};
  for (const auto& [name, change] : changes) {
    openOrder();
    EXPECT_FALSE(screen().isDirty());
    change(screen());
    EXPECT_TRUE(screen().isDirty()) << name.toStdString();
    EXPECT_TRUE(closingAsks());
  }
}

TEST_F(Purchase, ShipDateAndMethodDoNotCountAsUnsaved) {
  openOrder();
  screen().DTPicker2->setDate({2003, 2, 1});
  screen().ComboFHFS->setEditText(u"自取"_s);
  EXPECT_FALSE(screen().isDirty());
  EXPECT_FALSE(closingAsks());
}

TEST_F(Purchase, OfflineNoButtonWorksNotEvenExitButTheCloseBoxDoes) {
  openOrder();
  goOffline();
  for (const QString& key :
       {u"Print"_s, u"Ximu"_s, u"Save"_s, u"Refresh"_s, u"Call"_s, u"Exit"_s}) {
    press(key);
  }
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(isOpen());
  EXPECT_FALSE(isLoaded<frmPeer>());
  EXPECT_EQ(status(), QString());
  EXPECT_TRUE(screen().unload());
}

TEST_F(Purchase, ExitClosesAndCallShowsTheMessenger) {
  openOrder();
  press(u"Call"_s);
  ASSERT_TRUE(isLoaded<frmPeer>());
  EXPECT_TRUE(defaultInstance<frmPeer>().isVisible());
  press(u"Exit"_s);
  EXPECT_FALSE(isOpen());
}

TEST_F(Purchase, F1ShowsTheHelpAndOnlyWithAConnection) {
  int shown = 0;
  state.openHelp = [&shown] { ++shown; };
  openOrder();
  QTest::keyClick(&list(), Qt::Key_F1);
  EXPECT_EQ(shown, 1);
  goOffline();
  QTest::keyClick(&list(), Qt::Key_F1);
  EXPECT_EQ(shown, 1);
}

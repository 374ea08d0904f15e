#include "OrderFixture.h"
#include "catalogue/FrmXIMU.h"
#include "orders/chooser/frmGetXIMU.h"
#include "orders/chooser/frmGetXIMUX.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PurchaseChooser : public OrderFixture<FrmGOHU_JH> {
 protected:
  PurchaseChooser() { open(88, purchaseHeader(), twoLines()); }

  /// One page of the supplier's goods: the first stands on the order.
  void portalOffersGoods() {
    portal.answerWith({page({{u"1"_s}}), page({{u"501"_s, u"大学语文"_s, u"教材"_s, u"12.5"_s,
                                                u"八折"_s, u"12"_s, u"B1"_s, u"7-01"_s},
                                               {u"503"_s, u"普通物理"_s, u"教材"_s, u"8"_s, u""_s,
                                                u"3"_s, u"B3"_s, u"7-03"_s}})});
  }
  frmGetXIMU& chooser() { return defaultInstance<frmGetXIMU>(); }
  void choose(int index, const QString& quantity, const QString& price, const QString& discount) {
    ListItem& goods = *chooser().ListView1->itemAt(index);
    goods.setSubItem(ChosenQuantity, quantity);
    goods.setSubItem(ChosenPrice, price);
    goods.setSubItem(ChosenDiscount, discount);
  }
  /// What is done in the chooser once it stands.
  void whileChoosing(const std::function<void()>& work) {
    new WhenShown<frmGetXIMU>(&screen(), [work](frmGetXIMU&) { work(); });
  }
  void accept() { QTest::mouseClick(chooser().commandC, Qt::LeftButton); }
  void cancel() { QTest::mouseClick(chooser().commandT, Qt::LeftButton); }

  void popUp(int index) { clickCell(index, LineName, Qt::RightButton); }
  void entry(const QString& name) {
    QAction* action = screen().mnuGohu->findChild<QAction*>(name);
    ASSERT_TRUE(action->isEnabled());
    action->trigger();
    screen().mnuGohu->close();
  }
  bool totalsBecome(const QString& amount) {
    return QTest::qWaitFor([&] { return count(CountAmount) == amount; });
  }
};

}  // namespace

TEST_F(PurchaseChooser, TakesTheRowsWithAQuantityAndRecomputesAsTheChooserGoes) {
  portalOffersGoods();
  state.gPartnerId = 3;
  Tray::State during = Tray::State::None;
  whileChoosing([&] {
    during = state.tray.state();
    EXPECT_EQ(chooser().mOrderIdList, u",501,502,"_s);
    choose(1, u"-7"_s, u"9"_s, u"0.5"_s);
    accept();
  });
  press(u"Ximu"_s);
  EXPECT_EQ(state.gPartnerId, 7);
  EXPECT_EQ(during, Tray::State::Waiting);
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  ASSERT_EQ(list().itemCount(), 3);
  EXPECT_EQ(row(2).key(), QString());
  EXPECT_EQ(row(2).icon(), u"Goku"_s);
  EXPECT_EQ(cells(2).join(u'|'), u"普通物理|B3|-7|9|-63|0.5|-31.5|-2|-1|503||3|7-03|教材"_s);
  EXPECT_EQ(cells(0)[LineQuantity], u"25"_s) << "no quantity in the chooser leaves a line alone";
  EXPECT_TRUE(screen().isDirty());
  EXPECT_TRUE(totalsBecome(u"549.5"_s));
  EXPECT_TRUE(targets().first().contains(UrlEncodeField(u"qiye_id=7"_s)));
}

TEST_F(PurchaseChooser, GoodsOnTheOrderGetTheirLineOverwrittenAndKeepItsKey) {
  portalOffersGoods();
  whileChoosing([&] {
    choose(0, u"24"_s, u"10"_s, u"1"_s);
    accept();
  });
  press(u"Ximu"_s);
  ASSERT_EQ(list().itemCount(), 2);
  EXPECT_EQ(row(0).key(), u"417 ID"_s);
  EXPECT_EQ(cells(0).join(u'|'), u"大学语文|B1|24|10|240|1|240|2|0|501|八折|12|7-01|教材"_s);
}

TEST_F(PurchaseChooser, WhatIsBeingTypedDoesNotComeBackOverATakenLine) {
  portalOffersGoods();
  clickCell(0, LineQuantity);
  typeCell(u"99"_s);
  whileChoosing([&] {
    choose(0, u"24"_s, u"10"_s, u"1"_s);
    accept();
  });
  press(u"Ximu"_s);
  EXPECT_EQ(openInput(), QString());
  EXPECT_EQ(cells(0)[LineQuantity], u"24"_s);
}

TEST_F(PurchaseChooser, AReopenedChooserWritesItsQuantitiesASecondTime) {
  portalOffersGoods();
  whileChoosing([&] {
    choose(0, u"24"_s, u"10"_s, u"1"_s);
    accept();
  });
  press(u"Ximu"_s);
  const auto requests = portal.requests().size();
  clickCell(0, LineQuantity);
  typeCell(u"1"_s);
  clickCell(1, LineName);
  whileChoosing([&] { accept(); });
  press(u"Ximu"_s);
  EXPECT_EQ(cells(0)[LineQuantity], u"24"_s);
  EXPECT_EQ(portal.requests().size(), requests) << "it is not loaded anew";
}

TEST_F(PurchaseChooser, CancellingAndItsExitTakeNothingButMarkTheOrder) {
  for (const bool byExit : {false, true}) {
    portalOffersGoods();
    whileChoosing([&] {
      choose(1, u"5"_s, u"9"_s, u"1"_s);
      if (byExit) {
        chooser().Toolbar1->button(u"Exit"_s)->trigger();
      } else {
        cancel();
      }
    });
    press(u"Ximu"_s);
    EXPECT_EQ(list().itemCount(), 2);
    EXPECT_EQ(isLoaded<frmGetXIMU>(), !byExit);
    EXPECT_TRUE(screen().isDirty());
  }
}

TEST_F(PurchaseChooser, TheMenuEntryLeavesThePartnerAndTheMark) {
  portalOffersGoods();
  state.gPartnerId = 3;
  whileChoosing([&] {
    choose(1, u"5"_s, u"9"_s, u"1"_s);
    accept();
  });
  popUp(0);
  entry(u"mnuList"_s);
  EXPECT_EQ(state.gPartnerId, 3);
  EXPECT_EQ(list().itemCount(), 3);
  EXPECT_FALSE(screen().isDirty());
  EXPECT_TRUE(targets().first().contains(UrlEncodeField(u"qiye_id=3"_s)));
}

TEST_F(PurchaseChooser, ALineThatCannotBeComputedEndsTheTakingWithTheBox) {
  portalOffersGoods();
  whileChoosing([&] {
    choose(0, u"1e300"_s, u"1e300"_s, u"1"_s);
    choose(1, u"5"_s, u"9"_s, u"1"_s);
    accept();
  });
  boxes->expect(Answer::Ok);
  press(u"Ximu"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"网络锁定失败，操作无效"_s});
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_EQ(cells(0)[LineQuantity], u"1e300"_s) << "what came before the failing cell stays";
  EXPECT_EQ(cells(0)[LineAmount], u"312.5"_s);
}

TEST_F(PurchaseChooser, ShippedOrReceivedThereIsNoWayIntoTheChooser) {
  screen().CheckSH->setChecked(true);
  reactivate();
  popUp(0);
  EXPECT_TRUE(screen().mnuGohu->isVisible());
  EXPECT_FALSE(screen().mnuGohu->findChild<QAction*>(u"mnuList"_s)->isEnabled());
  EXPECT_TRUE(screen().mnuGohu->findChild<QAction*>(u"mnuImport"_s)->isEnabled());
  EXPECT_FALSE(screen().Toolbar1->button(u"Ximu"_s)->isEnabled());
  screen().mnuGohu->close();
}

TEST_F(PurchaseChooser, TheKeyThatAddsRowsOpensTheChooser) {
  portalOffersGoods();
  bool shown = false;
  whileChoosing([&] {
    shown = true;
    cancel();
  });
  list().setFocus();
  key(Qt::Key_N, Qt::ControlModifier);
  EXPECT_TRUE(shown);
}

TEST_F(PurchaseChooser, ClosingUnloadsTheLocalRegisterAndLeavesTheChooser) {
  portalOffersGoods();
  whileChoosing([&] { cancel(); });
  press(u"Ximu"_s);
  defaultInstance<FrmXIMU>();
  EXPECT_TRUE(closingAsks());
  EXPECT_FALSE(isLoaded<FrmXIMU>());
  EXPECT_TRUE(isLoaded<frmGetXIMU>());
}

TEST_F(PurchaseChooser, WithoutTheChooserClosingLeavesTheRegisterOpen) {
  defaultInstance<FrmXIMU>();
  EXPECT_FALSE(closingAsks());
  EXPECT_TRUE(isLoaded<FrmXIMU>());
}

TEST_F(PurchaseChooser, DetailsAreShownForTheRowsGoods) {
  popUp(1);
  bool shown = false;
  new WhenShown<frmGetXIMUX>(&screen(), [&](frmGetXIMUX& details) {
    shown = true;
    QTest::mouseClick(details.commandT, Qt::LeftButton);
  });
  entry(u"mnuXimux"_s);
  EXPECT_TRUE(shown);
  EXPECT_FALSE(isLoaded<frmGetXIMUX>());
  EXPECT_TRUE(targets().first().contains(u"&STOTHER="_s + UrlEncodeField(u"id=502"_s)));
}

namespace {

const QStringList goodsCells{u"7-02"_s, u"高等数学"_s, u"B2"_s,   u"30"_s, u"无"_s,
                             u"0"_s,    u"4"_s,        u"教材"_s, u"6"_s,  u"高教"_s,
                             u"介绍"_s, u"精,16,"_s,   u"True"_s};

QString importTarget() {
  const QStringList names{u"XIMU_NO"_s, u"XIMU"_s,    u"XIMU_BH"_s, u"JIGEX"_s,   u"ZHKO"_s,
                          u"GESH"_s,    u"LEBI_ID"_s, u"LEBI"_s,    u"CHYE_ID"_s, u"CHYE"_s,
                          u"JISH"_s,    u"SHXI"_s,    u"NOTH"_s};
  Parameters fields{{u"QIYE_ID"_s, u"25"_s}, {u"QIYE"_s, u"青禾书店"_s}};
  for (int i = 0; i < names.size(); ++i) fields.append({names[i], goodsCells[i]});
  return saveTarget(u"ximu"_s, u"18"_s, u"id=502 and qiye_id=25"_s, fields);
}

}  // namespace

TEST_F(PurchaseChooser, ImportCopiesTheGoodsIntoTheOwnCatalogue) {
  portal.answerWith({page({goodsCells}), page({{u"900"_s}})});
  popUp(1);
  boxes->expect(Answer::Ok);
  entry(u"mnuImport"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"导入成功"_s});
  EXPECT_EQ(targets(),
            QStringList({readTarget(u"XIMU"_s,
                                    u"ximu_no,ximu,ximu_bh,jigex,zhko,gesh,lebi_id,lebi,chye_id,"
                                    "chye,jish,shxi,noth,"_s,
                                    u"id=502"_s),
                         importTarget()}));
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(PurchaseChooser, AnImportThatFailsSaysSo) {
  struct Case {
    QByteArray goods, answer;
    int requests;
  };
  const QByteArray nothing("<html></html>");
  const QByteArray noRows("<table start_pos></table>");
  for (const Case& told :
       {Case{nothing, nothing, 1}, Case{noRows, nothing, 1},
        Case{page({{u"only one cell"_s}}), nothing, 1}, Case{page({goodsCells}), nothing, 2},
        Case{page({goodsCells}), noRows, 2}, Case{page({goodsCells}), page({{u"0"_s}}), 2},
        Case{page({goodsCells}), page({{u"5"_s}, {u"-1"_s}}), 2}}) {
    portal.clear();
    portal.answerWith({told.goods, told.answer});
    popUp(1);
    boxes->asked.clear();
    boxes->expect(Answer::Ok);
    entry(u"mnuImport"_s);
    EXPECT_EQ(boxes->texts(), QStringList{u"导入失败"_s});
    EXPECT_EQ(targets().size(), told.requests);
  }
}

TEST_F(PurchaseChooser, AnIdAbove32767CannotBeImported) {
  row(1).setSubItem(LineGoodsId, u"32768"_s);
  popUp(1);
  boxes->expect(Answer::Ok);
  entry(u"mnuImport"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"导入失败"_s});
  EXPECT_TRUE(portal.requests().isEmpty());
  row(1).setSubItem(LineGoodsId, u"32767"_s);
  popUp(1);
  boxes->expect(Answer::Ok);
  entry(u"mnuImport"_s);
  EXPECT_EQ(targets().size(), 1);
}

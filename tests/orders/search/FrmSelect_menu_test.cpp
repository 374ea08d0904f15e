#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QTimer>

#include "SearchFixture.h"
#include "forms/Splitter.h"
#include "orders/chooser/frmGetCYXXX.h"
#include "orders/chooser/frmGetQYXXX.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "orders/documents/FrmGOHU_JH.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// Two rows of different enterprises stand in the result.
class GoodsSearchMenu : public SearchFixture {
 protected:
  void SetUp() override {
    auto second = found(u"9"_s, u"高等数学"_s);
    second[5] = u"明溪书屋"_s;
    second[7] = u"77"_s;
    second[8] = u"502"_s;
    fillResult({found(u"7"_s, u"大学语文"_s), second});
  }

  /// What is shown modally is left at once; its state while it was shown.
  template <class Detail>
  void chooseDetail(int row, const QString& name) {
    shown = false;
    QTimer timer;
    timer.setInterval(1);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this, &timer] {
      if (!isLoaded<Detail>() || !defaultInstance<Detail>().isVisible()) return;
      timer.stop();
      shown = true;
      trayWhileShown = app().tray.state();
      QTest::mouseClick(defaultInstance<Detail>().commandT, Qt::LeftButton);
    });
    timer.start();
    choose(row, name);
  }

  bool shown = false;
  Tray::State trayWhileShown = Tray::State::None;
};

TEST_F(GoodsSearchMenu, HasItsEntriesInOrder) {
  QStringList entries;
  for (const QAction* action : screen().mnuGetx->actions()) {
    if (!action->isSeparator()) entries << action->objectName() + u' ' + action->text();
  }
  EXPECT_EQ(entries, (QStringList{u"mnuXimux 商品详细内容"_s, u"mnuChyex 品牌详细内容"_s,
                                  u"mnuQiyex 企业详细内容"_s, u"mnuXimuy 同名商品目录"_s,
                                  u"mnuChyey 同品牌商品"_s, u"mnuQiyey 同企业商品"_s,
                                  u"mnuGOHU_JH 添加新订单"_s}));
  EXPECT_EQ(screen().mnuGetx->objectName(), u"mnuGetx"_s);
}

TEST_F(GoodsSearchMenu, ARightReleaseOnARowHandsItOverAndShowsTheMenu) {
  press(list(), 1, Qt::RightButton);
  EXPECT_TRUE(screen().mnuGetx->isVisible());
  EXPECT_EQ(state.gPartnerName, u"明溪书屋"_s);
  EXPECT_EQ(state.gPartnerId, 77);
  EXPECT_EQ(state.gBrandId, 502);
  EXPECT_EQ(state.gGoodsId, 9);
  EXPECT_EQ(state.gChosenProducerId, 0) << "nobody sets it";
}

TEST_F(GoodsSearchMenu, TheMenuKeyStandsForTheRightButton) {
  list().setSelectedItem(list().itemAt(1));
  QContextMenuEvent key(QContextMenuEvent::Keyboard, {5, 5}, list().mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&list(), &key);
  EXPECT_TRUE(screen().mnuGetx->isVisible());
  EXPECT_EQ(state.gGoodsId, 9);
}

TEST_F(GoodsSearchMenu, TheLeftButtonEmptySpaceAndACountRowShowNoMenu) {
  press(list(), 0);
  EXPECT_FALSE(screen().mnuGetx->isVisible());
  QTest::mouseClick(list().viewport(), Qt::RightButton, {},
                    QPoint(20, list().viewport()->height() - 5));
  EXPECT_FALSE(screen().mnuGetx->isVisible());
  list().itemAt(0)->setKey(u"Count ID"_s);
  press(list(), 0, Qt::RightButton);
  EXPECT_FALSE(screen().mnuGetx->isVisible());
  EXPECT_EQ(state.gPartnerId, 0);
}

TEST_F(GoodsSearchMenu, WithoutALinkThereIsNoMenu) {
  goOffline();
  press(list(), 0, Qt::RightButton);
  EXPECT_FALSE(screen().mnuGetx->isVisible());
  EXPECT_EQ(state.gPartnerId, 0);
}

TEST_F(GoodsSearchMenu, ARowThatWentBetweenPressAndReleaseShowsNoMenu) {
  const QPoint place = list().cellRect(list().itemAt(0)).center();
  QTest::mousePress(list().viewport(), Qt::RightButton, {}, place);
  fillResult({found(u"1"_s, u"一"_s)});
  QTest::mouseRelease(list().viewport(), Qt::RightButton, {}, place);
  EXPECT_FALSE(screen().mnuGetx->isVisible());
  EXPECT_EQ(state.gPartnerId, 0);
}

TEST_F(GoodsSearchMenu, AnIdThatNoRecordCanHaveShowsNoMenu) {
  state.gPartnerId = 4;
  state.gPartnerName = u"丁"_s;
  for (const int cell : {6, 7}) {
    const QString before = list().itemAt(0)->subItem(cell);
    list().itemAt(0)->setSubItem(cell, u"99999999999"_s);
    press(list(), 0, Qt::RightButton);
    EXPECT_FALSE(screen().mnuGetx->isVisible());
    EXPECT_EQ(state.gPartnerId, 4);
    EXPECT_EQ(state.gPartnerName, u"丁"_s) << "nothing is handed over by half";
    list().itemAt(0)->setSubItem(cell, before);
  }
}

TEST_F(GoodsSearchMenu, GoodsOfTheSameNameAreAskedForByTheTrimmedName) {
  list().itemAt(1)->setSubItem(1, u" 高等数学 "_s);
  nextAnswers({page({found(u"9"_s, u"高等数学"_s)}), count(u"1"_s)});
  choose(1, u"mnuXimuy"_s);
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND XIMU='高等数学'"_s));
  EXPECT_EQ(names(), QStringList{u"高等数学"_s});
}

TEST_F(GoodsSearchMenu, ANameWithAQuoteGoesAsItStands) {
  list().itemAt(0)->setSubItem(1, u"Rock 'n' Roll"_s);
  nextAnswers({page({})});
  choose(0, u"mnuXimuy"_s);
  EXPECT_EQ(targets().first(), pageTarget(u"NOTH=TRUE AND XIMU='Rock 'n' Roll'"_s));
}

TEST_F(GoodsSearchMenu, GoodsOfTheSameBrandAndOfTheSameEnterprise) {
  nextAnswers({page({found(u"9"_s, u"高等数学"_s)}), count(u"1"_s)});
  choose(1, u"mnuChyey"_s);
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND CHYE_ID=502"_s));
  nextAnswers({page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  choose(0, u"mnuQiyey"_s);
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND QIYE_ID=31"_s));
}

TEST_F(GoodsSearchMenu, GoodsDetailsAreShownModallyWhileTheTrayWaits) {
  nextAnswers({page({}), page({})});
  chooseDetail<frmGetXIMUX>(1, u"mnuXimux"_s);
  EXPECT_TRUE(shown);
  EXPECT_EQ(trayWhileShown, Tray::State::Waiting);
  EXPECT_EQ(app().tray.state(), Tray::State::Connected);
  EXPECT_TRUE(targets().first().endsWith(u"&STOTHER="_s + encoded(u"id=9"_s)));
}

TEST_F(GoodsSearchMenu, BrandDetailsAskForNoBrandWhateverTheRow) {
  nextAnswers({page({})});
  chooseDetail<frmGetCYXXX>(1, u"mnuChyex"_s);
  EXPECT_TRUE(shown);
  EXPECT_EQ(state.gBrandId, 502);
  EXPECT_TRUE(targets().first().endsWith(u"&STOTHER="_s + encoded(u"id=0"_s)));
}

TEST_F(GoodsSearchMenu, EnterpriseDetailsShowTheRowsEnterprise) {
  nextAnswers({page({})});
  chooseDetail<frmGetQYXXX>(1, u"mnuQiyex"_s);
  EXPECT_TRUE(shown);
  EXPECT_TRUE(targets().first().endsWith(u"&STOTHER="_s + encoded(u"id=77"_s)));
}

TEST_F(GoodsSearchMenu, ANewOrderOpensWithTheRowsEnterpriseAsSupplier) {
  state.gCurrentOrderId = 88;
  choose(1, u"mnuGOHU_JH"_s);
  EXPECT_EQ(state.gCurrentOrderId, 0);
  ASSERT_TRUE(isLoaded<FrmGOHU_JH>());
  auto& order = defaultInstance<FrmGOHU_JH>();
  EXPECT_TRUE(order.isVisible());
  EXPECT_EQ(order.txtFields(2)->text(), u"明溪书屋"_s);
  EXPECT_EQ(order.txtFields(2)->Tag, u"77"_s);
  EXPECT_EQ(order.txtFields(1)->Tag, u"0"_s);
}

TEST_F(GoodsSearchMenu, ARowOfALaterPageStartsAnOrderJustAsWell) {
  fillResult({found(u"1"_s, u"一"_s), found(u"2"_s, u"二"_s)}, u"2"_s);
  auto later = found(u"3"_s, u"三"_s);
  later[5] = u"云帆图书发行"_s;
  later[7] = u"33"_s;
  nextAnswers({page({later})});
  click(screen().Command5);
  choose(2, u"mnuGOHU_JH"_s);
  EXPECT_EQ(defaultInstance<FrmGOHU_JH>().txtFields(2)->text(), u"云帆图书发行"_s);
  EXPECT_EQ(state.gGoodsId, 3);
}

TEST_F(GoodsSearchMenu, AnOrderThatIsOpenComesForwardAsItIs) {
  choose(0, u"mnuGOHU_JH"_s);
  auto& order = defaultInstance<FrmGOHU_JH>();
  order.txtFields(1)->setText(u"G2026-7"_s);
  choose(1, u"mnuGOHU_JH"_s);
  EXPECT_EQ(&defaultInstance<FrmGOHU_JH>(), &order);
  EXPECT_EQ(order.txtFields(1)->text(), u"G2026-7"_s);
  EXPECT_EQ(order.txtFields(2)->text(), u"云集书社"_s);
  EXPECT_EQ(state.gPartnerName, u"明溪书屋"_s);
}

TEST_F(GoodsSearchMenu, ClosingUnloadsTheDetailsThatItOpened) {
  nextAnswers({page({})});
  QTimer timer;
  timer.setInterval(1);
  QObject::connect(&timer, &QTimer::timeout, &timer, [&timer] {
    if (!isLoaded<frmGetQYXXX>() || !defaultInstance<frmGetQYXXX>().isVisible()) return;
    timer.stop();
    defaultInstance<frmGetQYXXX>().hideForm();
  });
  timer.start();
  choose(0, u"mnuQiyex"_s);
  defaultInstance<frmGetCYXXX>();  // opened by somebody else
  ASSERT_TRUE(isLoaded<frmGetQYXXX>());
  unload<FrmSelect>();
  EXPECT_FALSE(isLoaded<frmGetQYXXX>());
  EXPECT_TRUE(isLoaded<frmGetCYXXX>());
}

TEST_F(GoodsSearchMenu, ExitClosesWithALinkAlone) {
  auto* bar = screen().Toolbar1;
  auto* exit = bar->widgetForAction(bar->button(u"Exit"_s));
  goOffline();
  QTest::mouseClick(exit, Qt::LeftButton);
  EXPECT_TRUE(isLoaded<FrmSelect>());
  links->connected = {u"eth0"_s};
  QTest::mouseClick(exit, Qt::LeftButton);
  EXPECT_FALSE(isLoaded<FrmSelect>());
}

TEST_F(GoodsSearchMenu, AClickOnATitleSortsAndASecondTurnsTheOrder) {
  fillResult({found(u"1"_s, u"b"_s), found(u"2"_s, u"C"_s), found(u"3"_s, u"a"_s)});
  clickTitle(1);
  EXPECT_EQ(names(), (QStringList{u"a"_s, u"b"_s, u"C"_s}));
  clickTitle(1);
  EXPECT_EQ(names(), (QStringList{u"C"_s, u"b"_s, u"a"_s}));
}

TEST_F(GoodsSearchMenu, TheBarBetweenThePanesCanBeDragged) {
  auto* bar = screen().findChild<QWidget*>(u"Splitter"_s);
  ASSERT_NE(bar, nullptr);
  const int before = bar->x();
  QTest::mousePress(bar, Qt::LeftButton, {}, bar->rect().center());
  QTest::mouseMove(bar, bar->rect().center() + QPoint(120, 0));
  QTest::mouseRelease(bar, Qt::LeftButton, {}, bar->rect().center() + QPoint(120, 0));
  EXPECT_GT(bar->x(), before + 60);
}

}  // namespace

#include <gtest/gtest.h>

#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QSettings>
#include <QToolBar>

#include "MainWindowFixture.h"
#include "catalogue/FrmXIMU.h"
#include "forms/StatusBar.h"
#include "shell/FrmINTERNET.h"
#include "shell/frmSplash.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

// The three letters tell the entry in login mode 0, 1 and 2: 1 on, 0 off, - as it was; "never" is
// an entry that is off and hidden for good.
struct EntryRow {
  QString name;
  QString caption;
  std::string modes;
};

const QList<EntryRow> entries = {
    {u"mnuLogin_YH"_s, u"个人登录"_s, "never"},
    {u"mnuLogin_QY"_s, u"企业登录"_s, "---"},
    {u"mnuLogin_Local"_s, u"本地登录"_s, "never"},
    {u"mnuLogin_CY"_s, u"产业登录"_s, "never"},
    {u"mnuRegister_QY"_s, u"修改注册信息"_s, "010"},
    {u"mnuRegistr_CY"_s, u"修改产业注册信息"_s, "never"},
    {u"mnuRegistr_YH"_s, u"修改用户注册信息"_s, "never"},
    {u"mnuPeer"_s, u"接收消息"_s, "010"},
    {u"mnuXIXI"_s, u"历史消息"_s, "011"},
    {u"mnuIcq"_s, u"信息"_s, "never"},
    {u"mnuGroup"_s, u"分组"_s, "never"},
    {u"mnuOnline"_s, u"在线"_s, "never"},
    {u"mnuFuwu"_s, u"服务登记(本地)"_s, "011"},
    {u"mnuXimu"_s, u"商品登记(本地)"_s, "011"},
    {u"mnuFuwu_WEB"_s, u"服务登记"_s, "010"},
    {u"mnuXimu_WEB"_s, u"商品登记"_s, "010"},
    {u"mnuDocu_WEB"_s, u"文件登记"_s, "010"},
    {u"mnuXiwe_WEB"_s, u"新闻登记"_s, "010"},
    {u"mnuQust_WEB"_s, u"调查登记"_s, "010"},
    {u"mnuMumu_WEB"_s, u"品牌登记"_s, "010"},
    {u"mnuForum_WEB"_s, u"论坛管理"_s, "010"},
    {u"mnuTupi_WEB"_s, u"图片登记"_s, "010"},
    {u"mnuHTTP_WEB"_s, u"查看效果"_s, "010"},
    {u"mnuDIHU_XS"_s, u"销售订单(BTOC)"_s, "010"},
    {u"mnuGOHU_XS"_s, u"销售订单(BTOB)"_s, "010"},
    {u"mnuQueryXish"_s, u"销售订单统计"_s, "011"},
    {u"mnuSelect"_s, u"征订商品检索"_s, "010"},
    {u"mnuGOHU_JH"_s, u"进货订单"_s, "010"},
    {u"mnuQueryJIHU"_s, u"进货订单统计"_s, "011"},
    {u"mnuView2"_s, u"公共信息"_s, "010"},
    {u"mnuView"_s, u"变动信息"_s, "010"},
    {u"mnuHelp_online"_s, u"在线帮助"_s, "010"},
    {u"mnuHelp"_s, u"帮助"_s, "1--"},
    {u"mnuDial"_s, u"拨号网络"_s, "---"},
    {u"Internet"_s, u"网络设置"_s, "---"},
    {u"mnuCalc"_s, u"计算器"_s, "---"},
    {u"mnuShow"_s, u"显示窗口"_s, "never"},
    {u"mnuAbout"_s, u"关于青禾云集"_s, "---"},
    {u"mnuTempExit"_s, u"退出"_s, "---"},
};

class Commands : public MainWindowFixture {
 protected:
  Commands() { start(); }

  void expectMode(int mode) {
    for (const EntryRow& row : entries) {
      const QAction* action = entry(row.name);
      if (row.modes == "never") {
        EXPECT_FALSE(action->isEnabled()) << row.name.toStdString();
        EXPECT_FALSE(action->isVisible()) << row.name.toStdString();
        continue;
      }
      const char wanted = row.modes[static_cast<size_t>(mode)];
      EXPECT_EQ(action->isEnabled(), wanted != '0') << row.name.toStdString() << " in " << mode;
    }
  }

  void pressTray() {
    state.tray.press();
    frame->mnuSystem->close();
  }
};

TEST_F(Commands, StandInMenuOrderWithTheirCaptionsAndIcons) {
  QStringList names;
  for (const QAction* action : frame->mnuSystem->actions()) {
    if (!action->isSeparator()) names.append(action->objectName());
  }
  QStringList wanted;
  for (const EntryRow& row : entries) {
    wanted.append(row.name);
    EXPECT_EQ(entry(row.name)->text(), row.caption);
    if (row.modes != "never") {
      EXPECT_FALSE(entry(row.name)->icon().isNull()) << row.name.toStdString();
    }
  }
  EXPECT_EQ(names, wanted);
  ASSERT_EQ(frame->menuBar()->actions().size(), 1) << "there is one menu";
}

TEST_F(Commands, HaveTheirNineSeparators) {
  for (const int number : {1, 2, 3, 4, 5, 7, 8, 9, 10}) {
    const QAction* action = entry(u"mnuTemp%1"_s.arg(number));
    ASSERT_NE(action, nullptr) << number;
    EXPECT_TRUE(action->isSeparator());
  }
}

TEST_F(Commands, AreAllOnAfterStartWhateverTheLoginUntilTheTrayIsPressed) {
  for (const EntryRow& row : entries) {
    EXPECT_EQ(entry(row.name)->isEnabled(), row.modes != "never") << row.name.toStdString();
  }
  state.gLoginMode = 2;
  EXPECT_TRUE(entry(u"mnuPeer"_s)->isEnabled());
}

TEST_F(Commands, FollowTheLoginModeAtEveryTrayPress) {
  pressTray();
  expectMode(0);
  state.gLoginMode = 1;
  pressTray();
  expectMode(1);
  state.gLoginMode = 2;
  pressTray();
  expectMode(2);
  EXPECT_TRUE(entry(u"mnuXimu"_s)->isEnabled());
  EXPECT_TRUE(entry(u"mnuXIXI"_s)->isEnabled());
  EXPECT_TRUE(entry(u"mnuQueryXish"_s)->isEnabled());
  EXPECT_FALSE(entry(u"mnuXimu_WEB"_s)->isEnabled());
}

TEST_F(Commands, ATrayPressPopsUpTheMenu) {
  state.tray.press();
  EXPECT_TRUE(frame->mnuSystem->isVisible());
  frame->mnuSystem->close();
}

TEST_F(Commands, ATrayPressWhileWaitingDoesNothing) {
  TrayShowWaiting();
  state.tray.press();
  EXPECT_FALSE(frame->mnuSystem->isVisible());
  EXPECT_TRUE(entry(u"mnuPeer"_s)->isEnabled()) << "the entries were not brought up to date";
}

TEST_F(Commands, ATrayPressDuringAPortalReadDoesNothing) {
  state.forms.gate.hold();
  state.tray.press();
  EXPECT_FALSE(frame->mnuSystem->isVisible());
  state.forms.gate.release();
}

TEST_F(Commands, TheGoodsRegisterOpensAsAChildAndComesToTheFrontAgain) {
  entry(u"mnuXimu"_s)->trigger();
  ASSERT_TRUE(isLoaded<FrmXIMU>());
  auto& goods = defaultInstance<FrmXIMU>();
  EXPECT_TRUE(goods.isVisible());
  EXPECT_EQ(goods.window(), frame.get());
  entry(u"mnuXimu"_s)->trigger();
  EXPECT_EQ(&defaultInstance<FrmXIMU>(), &goods);
}

TEST_F(Commands, EveryChildOpensWholeWithinTheFrame) {
  for (const QString& name : {u"mnuXimu"_s, u"mnuFuwu"_s, u"mnuQust_WEB"_s}) {
    entry(name)->trigger();
  }
  for (const QMdiSubWindow* child : frame->findChildren<QMdiSubWindow*>()) {
    EXPECT_TRUE(child->parentWidget()->rect().contains(child->geometry()))
        << child->windowTitle().toStdString();
  }
  EXPECT_EQ(frame->findChildren<QMdiSubWindow*>().size(), 3);
}

TEST_F(Commands, SettingsAndSplashOpen) {
  entry(u"Internet"_s)->trigger();
  EXPECT_TRUE(isLoaded<FrmINTERNET>());
  entry(u"mnuAbout"_s)->trigger();
  EXPECT_TRUE(isLoaded<frmSplash>());
}

TEST_F(Commands, DialStartsTheDialerOnTheDefaultEntryWithoutAnyCheck) {
  QSettings file(state.settings.filePath(), QSettings::IniFormat);
  file.setValue(u"RemoteAccess/Default"_s, u"公司拨号"_s);
  file.sync();
  entry(u"mnuDial"_s)->trigger();
  EXPECT_EQ(dialer->dialled, QStringList{u"公司拨号"_s});
  EXPECT_TRUE(links->asked.isEmpty());
}

TEST_F(Commands, HelpWithoutItsFileSaysSoAndOpensNothing) {
  boxes->expect(Answer::Ok);
  entry(u"mnuHelp"_s)->trigger();
  ASSERT_EQ(boxes->asked.size(), 1);
  EXPECT_TRUE(boxes->asked[0].text.contains(u"help.chm"_s));
}

TEST_F(Commands, WithoutAWordForTheIndustryTheGoodsKeepTheirCaptions) {
  state.gHayeId = 3;
  frame->ApplyIndustryCaptions();
  EXPECT_EQ(entry(u"mnuXimu"_s)->text(), u"商品登记(本地)"_s);
  EXPECT_EQ(entry(u"mnuXimu_WEB"_s)->text(), u"商品登记"_s);
}

TEST_F(Commands, TheToolbarsCommandsHaveTheDigitsForKeys) {
  QStringList keys;
  for (const QAction* action : frame->findChild<QToolBar*>(u"Toolbar1"_s)->actions()) {
    const QString key = action->shortcut().toString();
    keys.append(key);
    if (key.isEmpty()) continue;
    EXPECT_EQ(action->toolTip(), action->text() + u" ("_s + key + u')');
  }
  EXPECT_EQ(keys, QStringList({u"Ctrl+1"_s, u"Ctrl+2"_s, u"Ctrl+3"_s, u"Ctrl+4"_s, u"Ctrl+5"_s,
                               u"Ctrl+6"_s, u"Ctrl+7"_s, u"Ctrl+8"_s, QString(), u"Ctrl+9"_s,
                               u"Ctrl+0"_s}));
  ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get(), 60'000));
  QTest::keyClick(frame.get(), Qt::Key_4, Qt::ControlModifier);
  EXPECT_TRUE(isLoaded<FrmXIMU>());
}

TEST_F(Commands, TheFrameFitsOnTheScreen) {
  EXPECT_TRUE(QRect(QPoint(), frame->screen()->availableSize()).contains(frame->rect()));
}

TEST_F(Commands, TheStatusBarStaysEmpty) {
  entry(u"mnuXimu"_s)->trigger();
  auto* bar = frame->findChild<StatusBar*>(u"StatusBar1"_s, Qt::FindDirectChildrenOnly);
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->text(), QString());
}

}  // namespace

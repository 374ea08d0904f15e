#include "shell/ras.h"

#include <QDir>
#include <QFile>

#include "ShellTest.h"

namespace qinghe {
namespace {

class CheckConnectionTest : public ShellTest {
 protected:
  CheckConnectionTest() {
    TrayAdd();
    TrayShowWaiting();
  }
};

class CheckConnectionByLink : public CheckConnectionTest, public testing::WithParamInterface<int> {
 protected:
  CheckConnectionByLink() { state.gAccessType = static_cast<qint16>(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(AccessTypes, CheckConnectionByLink, testing::Values(0, 1));

TEST_P(CheckConnectionByLink, AConnectedFirstEntryIsOnline) {
  links->connected = {u"eth0"_s};
  state.gAutoDial = 1;
  EXPECT_TRUE(CheckConnection());
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  EXPECT_EQ(links->asked, QStringList{u"eth0"_s});
  EXPECT_TRUE(dialer->dialled.isEmpty());
}

TEST_P(CheckConnectionByLink, OnlyTheFirstEntryCounts) {
  links->entries = QStringList{u"eth0"_s, u"wlan0"_s};
  links->connected = {u"wlan0"_s};
  EXPECT_FALSE(CheckConnection());
  EXPECT_EQ(links->asked, QStringList{u"eth0"_s});
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
}

TEST_P(CheckConnectionByLink, WithoutALinkItIsOfflineWithoutAWord) {
  EXPECT_FALSE(CheckConnection());
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
  EXPECT_TRUE(dialer->dialled.isEmpty());
  EXPECT_FALSE(isLoaded<frmMsgBox>());
}

TEST_P(CheckConnectionByLink, AnEmptyEnumerationIsNoFailureButOffline) {
  links->entries = QStringList();
  EXPECT_FALSE(CheckConnection());
  EXPECT_EQ(links->asked, QStringList{QString()});
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
}

TEST_P(CheckConnectionByLink, AFailedEnumerationSaysSoAndGoesOnAsOnline) {
  links->entries = std::nullopt;
  state.gAutoDial = 1;
  prompts->expect(Answer::Ok);
  Tray::State atTheMessage = Tray::State::None;
  prompts->onAsk = [&](const Message&) { atTheMessage = state.tray.state(); };
  EXPECT_TRUE(CheckConnection());
  EXPECT_EQ(prompts->texts(), QStringList{u"出错！"_s});
  EXPECT_EQ(atTheMessage, Tray::State::Offline);
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
  EXPECT_TRUE(links->asked.isEmpty());
  EXPECT_TRUE(dialer->dialled.isEmpty());
}

TEST_P(CheckConnectionByLink, WithAutoDialTheNoticeComesFirstThenTheDialerThenOffline) {
  state.gAutoDial = 1;
  QFile file(settingsPath());
  ASSERT_TRUE(QDir().mkpath(folder.filePath(u"settings"_s)));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[RemoteAccess]\nDefault=我的宽带\n");
  file.close();
  NoticePresser presser;
  EXPECT_FALSE(CheckConnection());
  EXPECT_EQ(presser.messages, QStringList{u"网络连接失败！！！"_s});
  EXPECT_EQ(presser.trayStates, QList{Tray::State::Waiting});
  EXPECT_EQ(dialer->dialled, QStringList{u"我的宽带"_s});
  EXPECT_EQ(dialer->trayStates, QList{Tray::State::Waiting});
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
  EXPECT_FALSE(isLoaded<frmMsgBox>());
}

TEST_P(CheckConnectionByLink, EachCallWithoutALinkShowsTheNoticeAndDialsAgain) {
  state.gAutoDial = 1;
  NoticePresser presser;
  EXPECT_FALSE(CheckConnection());
  EXPECT_FALSE(CheckConnection());
  EXPECT_EQ(presser.messages.size(), 2);
  EXPECT_EQ(dialer->dialled.size(), 2);
}

TEST_P(CheckConnectionByLink, AutoDialIsOnAtOneOnly) {
  for (const qint16 other : {qint16(0), qint16(2), qint16(-1)}) {
    state.gAutoDial = other;
    EXPECT_FALSE(CheckConnection());
  }
  EXPECT_TRUE(dialer->dialled.isEmpty());
}

TEST_F(CheckConnectionTest, AProxyIsAlwaysOnlineWithoutAskingOrAMessage) {
  state.gAccessType = 2;
  state.gAutoDial = 1;
  links->entries = std::nullopt;
  EXPECT_TRUE(CheckConnection());
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  EXPECT_EQ(links->enumerations, 0);
  EXPECT_TRUE(prompts->asked.isEmpty());
}

TEST_F(CheckConnectionTest, AnyOtherAccessTypeIsOfflineAndLeavesTheTrayAlone) {
  links->connected = {u"eth0"_s};
  state.gAutoDial = 1;
  const QString tip = state.tray.tip();
  for (const qint16 type : {qint16(3), qint16(-1), qint16(32767)}) {
    state.gAccessType = type;
    EXPECT_FALSE(CheckConnection());
    EXPECT_EQ(state.tray.state(), Tray::State::Waiting);
    EXPECT_EQ(state.tray.tip(), tip);
  }
  EXPECT_EQ(links->enumerations, 0);
  EXPECT_TRUE(dialer->dialled.isEmpty());
}

TEST_F(CheckConnectionTest, RefreshesTheTipWithTheUserNameEachTime) {
  state.gAccessType = 2;
  CheckConnection();
  state.gUserName = u"新华书店"_s;
  CheckConnection();
  EXPECT_EQ(state.tray.tip(), u"青禾云集电子商务系统已经连网：新华书店"_s);
}

using DialTest = ShellTest;

TEST_F(DialTest, TheDialerStartsOnTheDefaultEntryWithoutTheCheck) {
  StartDialer();
  EXPECT_EQ(GetDefaultDialEntry(), QString());
  EXPECT_EQ(dialer->dialled, QStringList{QString()});
  EXPECT_EQ(links->enumerations, 0);
}

}  // namespace
}  // namespace qinghe

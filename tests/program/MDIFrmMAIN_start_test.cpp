#include <gtest/gtest.h>

#include <QPushButton>
#include <QTimer>

#include "MainWindowFixture.h"
#include "account/frmLogin_qy.h"
#include "shell/FrmINTERNET.h"
#include "shell/frmSplash.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class Start : public MainWindowFixture {};

TEST_F(Start, ResetsTheAccountReadsTheSettingsAndSetsTheTransferControl) {
  state.gQiyeId = 9;
  state.gLoggedIn = true;
  state.gLoginMode = 1;
  state.settings.set(u"Proxy"_s, u"HTTP=10.0.0.1:3128 HTTP=10.0.0.2:3128"_s);
  state.settings.set(u"PageSize"_s, u"15 rows"_s);
  state.settings.set(u"ViewPict"_s, u"1"_s);
  start();
  EXPECT_EQ(state.gQiyeId, 0);
  EXPECT_FALSE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 0);
  EXPECT_EQ(state.gWebServer, u"HTTP://"_s + portal.host() + u"/"_s);
  EXPECT_EQ(state.gAccessType, 2);
  EXPECT_EQ(state.gUnicode, 2);
  EXPECT_EQ(state.gPageSize, 15);
  EXPECT_EQ(state.gViewPict, 1);
  EXPECT_EQ(state.inetQuotes.AccessType, 2);
  EXPECT_EQ(state.inetQuotes.Proxy, u"HTTP=10.0.0.1:3128 HTTP=10.0.0.2:3128"_s);
  state.inetQuotes.Proxy.clear();
}

TEST_F(Start, AddsTheTrayIconWithItsFirstTip) {
  start();
  EXPECT_TRUE(state.tray.isAdded());
  EXPECT_EQ(state.tray.tip(), u"青禾云集电子商务系统初始化"_s);
}

TEST_F(Start, DoesNotTouchTheDatabase) {
  start();
  EXPECT_EQ(state.store.gConn, nullptr);
}

TEST_F(Start, AnEmptyPageSizeReadsAsZeroAndAValueBeyondSixteenBitsToo) {
  state.settings.set(u"PageSize"_s, u""_s);
  state.settings.set(u"ViewPict"_s, u"99999"_s);
  start();
  EXPECT_EQ(state.gPageSize, 0);
  EXPECT_EQ(state.gViewPict, 0);
}

struct AutoRow {
  QString dial, peer;
  qint16 wanted;
};

class StartAuto : public Start, public testing::WithParamInterface<AutoRow> {};

TEST_P(StartAuto, TheMessengerFollowsTheDialSettingAndNotItsOwn) {
  state.settings.set(u"AutoDial"_s, GetParam().dial);
  state.settings.set(u"AutoPeer"_s, GetParam().peer);
  start();
  EXPECT_EQ(state.gAutoDial, GetParam().wanted);
  EXPECT_EQ(state.gAutoPeer, GetParam().wanted);
}

INSTANTIATE_TEST_SUITE_P(Settings, StartAuto,
                         testing::Values(AutoRow{u"1"_s, u"0"_s, 1}, AutoRow{u"0"_s, u"1"_s, 0}));

TEST_F(Start, OneSecondLaterTheLoginComesUpAndTheSplashGoes) {
  defaultInstance<frmSplash>().showForm();
  start();
  EXPECT_EQ(frame->Timer1->interval(), 1000);
  EXPECT_TRUE(frame->Timer1->isEnabled());
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
  frame->Timer1->setInterval(1);
  ASSERT_TRUE(
      QTest::qWaitFor([] { return isLoaded<frmLogin_qy>() && !isLoaded<frmSplash>(); }, 60'000));
  EXPECT_FALSE(frame->Timer1->isEnabled());
  EXPECT_TRUE(defaultInstance<frmLogin_qy>().isVisible());
  EXPECT_EQ(defaultInstance<frmLogin_qy>().windowModality(), Qt::NonModal);
}

TEST_F(Start, TheFirstRunShowsTheSettingsBeforeTheLoginAndCancellingStoresTheDefaults) {
  state.settings.remove(u"WebServer"_s);
  state.settings.remove(u"AccessType"_s);
  state.settings.remove(u"Unicode"_s);
  bool seen = false;
  QTimer::singleShot(0, &state.tray, [&] {
    seen = isLoaded<FrmINTERNET>() && !isLoaded<frmLogin_qy>();
    QTest::mouseClick(defaultInstance<FrmINTERNET>().Command4, Qt::LeftButton);
  });
  start();
  EXPECT_TRUE(seen);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(state.settings.text(u"WebServer"_s), u"127.0.0.1:8180"_s);
  EXPECT_EQ(state.settings.text(u"Unicode"_s), u"1"_s);
  EXPECT_EQ(state.settings.text(u"PageSize"_s), u"10"_s);
  EXPECT_EQ(state.gWebServer, u"HTTP://127.0.0.1:8180/"_s);
  EXPECT_EQ(state.gUnicode, 1);
  state.gUnicode = 0;  // so that the end asks no portal
}

TEST_F(Start, ACancelledLoginLeavesTheProgramOpenWithNobodyLoggedIn) {
  start();
  showLogin();
  QTest::mouseClick(defaultInstance<frmLogin_qy>().cmdCancel, Qt::LeftButton);
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
  EXPECT_TRUE(frame->isVisible());
  EXPECT_EQ(state.gLoginMode, 0);
}

}  // namespace

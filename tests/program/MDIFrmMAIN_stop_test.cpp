#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>

#include "MainWindowFixture.h"
#include "catalogue/FrmXIMU.h"
#include "portal/url_encode.h"
#include "shell/main/LogoutPortal.h"
#include "shell/main/own_window.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class Stop : public MainWindowFixture {
 protected:
  Stop() {
    store.exec(u"INSERT INTO XIMU (id,QIYE_ID,XIMU) VALUES (1,1,'书')"_s);
    start();
  }
};

TEST_F(Stop, SendsTheLogoutWhoeverIsLoggedInAndRemovesTheTrayIcon) {
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(targets(), QStringList{u"/_vti_login/_vti_logout2.asp?USER_NO="_s});
  EXPECT_FALSE(state.tray.isAdded());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(Stop, TheExitCommandNamesTheUserInTheLogout) {
  state.gUserNo = u"1001"_s;
  entry(u"mnuTempExit"_s)->trigger();
  EXPECT_FALSE(frame->isVisible());
  EXPECT_EQ(targets(), QStringList{u"/_vti_login/_vti_logout2.asp?USER_NO=%31%30%30%31"_s});
}

TEST_F(Stop, TheSecondCloseThatTheFirstPostsDoesNothingMore) {
  EXPECT_TRUE(frame->close());
  QCoreApplication::processEvents();
  EXPECT_EQ(portal.requests().size(), 1);
}

TEST_F(Stop, UnsavedEditsAreAskedForFirstAndCancelKeepsTheProgramWithoutALogout) {
  beCompany(1, 1);
  entry(u"mnuXimu"_s)->trigger();
  defaultInstance<FrmXIMU>().txtFields(2)->setText(u"改"_s);
  boxes->expect(Answer::Cancel);
  EXPECT_FALSE(frame->close());
  EXPECT_TRUE(frame->isVisible());
  EXPECT_TRUE(isLoaded<FrmXIMU>());
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(state.tray.isAdded());

  boxes->expect(Answer::Yes);
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU"_s).toString(), u"改"_s);
  EXPECT_EQ(portal.requests().size(), 1);
}

TEST_F(Stop, APortalThatIsDownKeepsNobodyIn) {
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  EXPECT_TRUE(frame->close());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(Stop, APortalThatNeverAnswersIsWaitedForOnlyToTheLimit) {
  state.inetQuotes.timeLimit = std::chrono::milliseconds(300);
  portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.hang = true}; });
  QElapsedTimer clock;
  clock.start();
  EXPECT_TRUE(frame->close());
  EXPECT_LT(clock.elapsed(), 30'000);
}

TEST_F(Stop, InModeZeroNoLogoutIsSent) {
  state.gUnicode = 0;
  EXPECT_TRUE(frame->close());
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(Stop, NothingIsLeftOpen) {
  entry(u"mnuXimu"_s)->trigger();
  entry(u"Internet"_s)->trigger();
  showLogin();
  EXPECT_TRUE(frame->close());
  EXPECT_TRUE(state.forms.registry.loaded().empty());
}

class Logout : public ClientFixture {};

TEST_F(Logout, IsTrueForAMarkedTableAndFalseForAnEmptyAnswer) {
  portal.answerWith({page({}), "<html></html>"});
  EXPECT_TRUE(LogoutPortal());
  EXPECT_FALSE(LogoutPortal());
}

TEST_F(Logout, EndsThoughTheAnswerHasARow) {
  portal.answerWith({page({{u"1"_s}})});
  EXPECT_TRUE(LogoutPortal());
}

TEST_F(Logout, SwallowsEveryFailure) {
  portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.reset = true}; });
  EXPECT_FALSE(LogoutPortal());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(Logout, EncodingChangesTheUserNumberItself) {
  portal.answerWith({page({})});
  state.gUserNo = u"a<b"_s;
  LogoutPortal();
  EXPECT_EQ(state.gUserNo, u"a&lt;b"_s);
  EXPECT_EQ(targets(),
            QStringList{u"/_vti_login/_vti_logout2.asp?USER_NO="_s + UrlEncodeField(u"a&lt;b"_s)});
}

TEST_F(Logout, GoesThroughTheRelayInMixedMode) {
  state.gUnicode = 1;
  state.gUserNo = u"1"_s;
  portal.answerWith({page({})});
  LogoutPortal();
  EXPECT_EQ(targets(), QStringList{u"/_vti_comm/review.asp?review="_s +
                                   UrlEncodeField(state.gWebServer +
                                                  u"_vti_login/_vti_logout2.asp?USER_NO=%31"_s)});
}

TEST_F(Logout, WithoutAWindowOfThatTitleTheClosingMessageSaysSo) {
  boxes->expect(Answer::Ok);
  closeWindowTitled(u"没有这个窗口"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"并未开启没有这个窗口"_s});
}

TEST_F(Logout, AClosingMessageThatCannotBePostedIsTold) {
  QWidget window;
  window.setWindowTitle(u"一个窗口"_s);
  boxes->expect(Answer::Ok);
  closeWindowTitled(u"一个窗口"_s, [](QWidget&) { return false; });
  EXPECT_EQ(boxes->texts(), QStringList{u"Error posting message."_s});
}

}  // namespace

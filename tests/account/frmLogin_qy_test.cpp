#include "account/frmLogin_qy.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "portal/url_encode.h"
#include "support/ClientFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> welcomeRow = {
    {u"25"_s, u"1001"_s, u"示例书店"_s, u"1"_s, u"3"_s, u"图书"_s, u"1"_s}};

class Login : public ClientFixture {
 protected:
  Login() {
    dismissNotices();
    store.exec(
        u"INSERT INTO QYXX (id,R_ID,user_no,user_name,user_pass) "
        "VALUES (1,25,'1001','青禾书店','secret'),(2,26,'1002','云集书社','other')"_s);
  }

  frmLogin_qy& screen() {
    auto& form = defaultInstance<frmLogin_qy>();
    form.showForm();
    return form;
  }

  void type(const QString& user, const QString& password) {
    screen().cmbUser_no->setCurrentText(user);
    screen().txtPassword->setText(password);
  }

  void confirm() { QTest::mouseClick(screen().cmdOK, Qt::LeftButton); }

  void expectRefused() {
    ASSERT_EQ(boxes->asked.size(), 1);
    EXPECT_EQ(boxes->asked[0].text, u"无效的用户名或密码，请重试!"_s);
    EXPECT_EQ(boxes->asked[0].title, u"登录"_s);
    EXPECT_TRUE(isLoaded<frmLogin_qy>());
    EXPECT_EQ(screen().txtPassword->text(), QString());
    EXPECT_FALSE(state.gLoggedIn);
    EXPECT_EQ(state.gLoginMode, 0);
    EXPECT_TRUE(notices.isEmpty());
  }

  QString loginTarget(const QString& user, const QString& password) {
    return u"/_vti_login/_vti_login2.asp?USER_NO="_s + UrlEncodeField(user) + u"&USER_PASS="_s +
           UrlEncodeField(password) + u"&SOFT_VER="_s + UrlEncodeField(u"1.0"_s);
  }
};

TEST_F(Login, ListsTheLocalUsersInTableOrderWithTheLastSelectedAndThePasswordFocused) {
  auto& form = screen();
  QApplication::setActiveWindow(form.window());
  ASSERT_TRUE(QTest::qWaitFor([&] { return form.window()->isActiveWindow(); }, 60'000));
  ASSERT_EQ(form.cmbUser_no->count(), 2);
  EXPECT_EQ(form.cmbUser_no->itemText(0), u"1001"_s);
  EXPECT_EQ(form.cmbUser_no->currentText(), u"1002"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return form.txtPassword->editor()->hasFocus(); }, 60'000));
}

TEST_F(Login, WithNoLocalUserTheListIsEmpty) {
  store.exec(u"DELETE FROM QYXX"_s);
  EXPECT_EQ(screen().cmbUser_no->count(), 0);
  EXPECT_EQ(screen().cmbUser_no->currentText(), QString());
}

TEST_F(Login, ShowsItsCaptions) {
  EXPECT_EQ(screen().windowTitle(), u"登录"_s);
  EXPECT_EQ(screen().cmdOK->text(), u"确定"_s);
  EXPECT_EQ(screen().cmdCancel->text(), u"取消"_s);
  EXPECT_EQ(screen().CmdRegister->text(), u"现在注册"_s);
}

TEST_F(Login, OnlineThePortalsAnswerFillsTheAccountAndTheNoticeNamesTheLevel) {
  portal.answerWith({page(welcomeRow)});
  type(u"1001"_s, u"secret"_s);
  confirm();
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 1);
  EXPECT_EQ(state.gQiyeId, 25);
  EXPECT_EQ(state.gLocalId, 1);
  EXPECT_EQ(state.gUserNo, u"1001"_s);
  EXPECT_EQ(state.gUserName, u"示例书店"_s);
  EXPECT_EQ(state.gUnicode, 1);
  EXPECT_EQ(state.gHayeId, 3);
  EXPECT_EQ(state.gHayeName, u"图书"_s);
  EXPECT_EQ(state.gUserLevel, 1);
  EXPECT_EQ(notices,
            QStringList{u"网络登录成功！！！正式用户|用户编号：1001|用户名称：示例书店"_s});
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  EXPECT_TRUE(state.tray.tip().endsWith(u"示例书店"_s));
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(Login, SendsUserPasswordAndVersionByteByByteInDirectMode) {
  portal.answerWith({page(welcomeRow)});
  type(u"书店 1&"_s, u"A中"_s);
  confirm();
  EXPECT_EQ(targets(), QStringList{u"/_vti_login/_vti_login2.asp?USER_NO=%CA%E9%B5%EA%20%31%26"
                                   "&USER_PASS=%41%D6%D0&SOFT_VER=%31%2E%30"_s});
}

TEST_F(Login, SendsTheWholeUrlThroughTheRelayInMixedMode) {
  state.gUnicode = 1;
  portal.answerWith({page(welcomeRow)});
  type(u"1001"_s, u"A"_s);
  confirm();
  const QString url = u"HTTP://"_s + portal.host() + loginTarget(u"1001"_s, u"A"_s);
  EXPECT_EQ(targets(), QStringList{u"/_vti_comm/review.asp?review="_s + UrlEncodeField(url)});
  EXPECT_TRUE(targets()[0].contains(u"%25%34%31"_s)) << "the password's A is encoded twice";
}

struct LevelRow {
  QString level;
  QString words;
};

class LoginLevel : public Login, public testing::WithParamInterface<LevelRow> {};

TEST_P(LoginLevel, IsNamedInTheNotice) {
  auto row = welcomeRow;
  row[0][6] = GetParam().level;
  portal.answerWith({page(row)});
  type(u"1001"_s, u"secret"_s);
  confirm();
  ASSERT_EQ(notices.size(), 1);
  EXPECT_TRUE(notices[0].startsWith(GetParam().words + u"|"_s));
}

INSTANTIATE_TEST_SUITE_P(Levels, LoginLevel,
                         testing::Values(LevelRow{u"0"_s, u"网络登录成功！！！免费用户"_s},
                                         LevelRow{u"1"_s, u"网络登录成功！！！正式用户"_s},
                                         LevelRow{u"2"_s, u"网络登录成功！！！VIP用户"_s}));

TEST_F(Login, OfflineAKnownUserIsLetInLocallyAsAFreeUser) {
  goOffline();
  state.gUserLevel = 2;
  type(u"1001"_s, u"secret"_s);
  confirm();
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 2);
  EXPECT_EQ(state.gLocalId, 1);
  EXPECT_EQ(state.gQiyeId, 25);
  EXPECT_EQ(state.gUserLevel, 0);
  EXPECT_EQ(state.gHayeName, QString()) << "the industry is the portal's to tell";
  EXPECT_EQ(notices,
            QStringList{u"网络登录成功！！！免费用户|用户编号：1001|用户名称：青禾书店"_s});
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(Login, OfflineAnUnknownUserOrPasswordIsRefused) {
  goOffline();
  type(u"1001"_s, u"SECRET"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
  EXPECT_EQ(state.gQiyeId, 0);
}

TEST_F(Login, OnlineTheRefusalCountsThoughTheLocalPasswordMatched) {
  portal.answerWith({page({{u"0"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}})});
  type(u"1001"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
  EXPECT_EQ(state.gQiyeId, 0);
  EXPECT_EQ(state.gLocalId, 1) << "what the local step wrote stays";
  EXPECT_EQ(state.gUserName, u"青禾书店"_s);
}

TEST_F(Login, OnlineAUserUnknownLocallyKeepsTheOldLocalId) {
  portal.answerWith({page(welcomeRow)});
  type(u"7777"_s, u"x"_s);
  confirm();
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gLocalId, 0);
}

TEST_F(Login, AnEmptyAnswerIsARefusalAsInModeZero) {
  state.gUnicode = 0;
  type(u"1001"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(Login, AQuoteInTheNameBreaksTheLocalStatementQuietly) {
  goOffline();
  type(u"10'01"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
}

TEST_F(Login, AQuoteInTheNameStillReachesThePortal) {
  portal.answerWith({page(welcomeRow)});
  type(u"10'01"_s, u"x' or '1'='1"_s);
  confirm();
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(targets(), QStringList{loginTarget(u"10'01"_s, u"x' or '1'='1"_s)});
}

TEST_F(Login, AnIdBeyondSixteenBitsIsARefusal) {
  portal.answerWith({page({{u"32768"_s, u"1001"_s, u"n"_s, u"1"_s, u"3"_s, u"h"_s, u"1"_s}})});
  type(u"1001"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
  EXPECT_EQ(state.gQiyeId, 25) << "the local step's id, for the portal's never fitted";
}

TEST_F(Login, AFailureAtALaterCellKeepsWhatWasWrittenBefore) {
  portal.answerWith({page({{u"25"_s, u"N"_s, u"名"_s, u"x"_s, u"3"_s, u"图书"_s, u"1"_s}})});
  type(u"7777"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
  EXPECT_EQ(state.gQiyeId, 25);
  EXPECT_EQ(state.gUserName, u"名"_s);
  EXPECT_EQ(state.gUnicode, 2);
  EXPECT_EQ(state.gHayeName, QString());
}

TEST_F(Login, AFractionalIdRoundsHalfToEvenAndATrailingWordIsRefused) {
  auto row = welcomeRow;
  row[0][0] = u"25.5"_s;
  portal.answerWith({page(row)});
  type(u"1001"_s, u"secret"_s);
  confirm();
  EXPECT_EQ(state.gQiyeId, 26);
}

TEST_F(Login, AMarkedTableWithoutRowsIsASuccessAsTheLoopSays) {
  portal.answerWith({page({})});
  type(u"1001"_s, u"secret"_s);
  confirm();
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gUserName, u"青禾书店"_s);
}

TEST_F(Login, ASecondRowOverwritesTheFirst) {
  auto rows = welcomeRow;
  rows.append(QStringList{u"31"_s, u"9"_s, u"后来"_s, u"2"_s, u"4"_s, u"文具"_s, u"2"_s});
  portal.answerWith({page(rows)});
  type(u"1001"_s, u"secret"_s);
  confirm();
  EXPECT_EQ(state.gQiyeId, 31);
  EXPECT_EQ(state.gUserName, u"后来"_s);
}

struct FaultRow {
  std::string name;
  ScriptedServer::Reply reply;
};

class LoginFault : public Login, public testing::WithParamInterface<FaultRow> {};

TEST_P(LoginFault, IsTheToldRefusalWithoutAHang) {
  state.inetQuotes.timeLimit = std::chrono::milliseconds(400);
  portal.setHandler([](const QByteArray&) { return GetParam().reply; });
  type(u"1001"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  QElapsedTimer clock;
  clock.start();
  confirm();
  EXPECT_LT(clock.elapsed(), 30'000);
  expectRefused();
}

INSTANTIATE_TEST_SUITE_P(
    Faults, LoginFault,
    testing::Values(
        FaultRow{"silent", {.hang = true}},
        FaultRow{"reset",
                 {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n<t", .reset = true}},
        FaultRow{
            "truncated",
            {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n<table start_pos><tr><td>25",
             .keepAlive = false}},
        FaultRow{"garbage", {.bytes = "\x00\xff\xfe garbage\r\n\r\n", .keepAlive = false}},
        FaultRow{"marker without table end", {.bytes = ScriptedServer::ok("start_pos<tr><td>25")}},
        FaultRow{"error page", {.bytes = ScriptedServer::ok("<html>500</html>")}},
        FaultRow{"no cells", {.bytes = ScriptedServer::ok("start_pos<tr></tr></table>")}},
        FaultRow{"endless",
                 {.bytes = QByteArray("HTTP/1.1 200 OK\r\n\r\n").append(QByteArray(65536, 'x')),
                  .endlessChunk = 100000}}),
    [](const auto& row) {
      QString name = QString::fromStdString(row.param.name);
      return name.replace(u' ', u'_').toStdString();
    });

TEST_F(Login, APortalThatIsDownIsARefusal) {
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  type(u"1001"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
}

TEST_F(Login, CancelClearsThePasswordAndLeavesTheLoginMode) {
  state.gLoginMode = 1;
  state.gLoggedIn = true;
  type(u"1001"_s, u"secret"_s);
  QTest::mouseClick(screen().cmdCancel, Qt::LeftButton);
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
  EXPECT_FALSE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 1);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(Login, RegisterUnloadsTheLoginAndOpensTheRegistration) {
  state.gLoginMode = 1;
  int opened = 0;
  state.openRegistration = [&opened] {
    EXPECT_FALSE(isLoaded<frmLogin_qy>());
    ++opened;
  };
  QTest::mouseClick(screen().CmdRegister, Qt::LeftButton);
  EXPECT_EQ(opened, 1);
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
  EXPECT_EQ(state.gLoginMode, 1);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(Login, RegisterWithoutARegistrationOnlyUnloadsTheLogin) {
  QTest::mouseClick(screen().CmdRegister, Qt::LeftButton);
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
}

TEST_F(Login, EnterInThePasswordConfirms) {
  portal.answerWith({page(welcomeRow)});
  type(u"1001"_s, u"secret"_s);
  QTest::keyClick(screen().txtPassword->editor(), Qt::Key_Return);
  EXPECT_TRUE(state.gLoggedIn);
}

TEST_F(Login, AMissingQYXXTableLeavesTheListEmptyAndRefusesOffline) {
  store.exec(u"DROP TABLE QYXX"_s);
  goOffline();
  EXPECT_EQ(screen().cmbUser_no->count(), 0);
  type(u"1001"_s, u"secret"_s);
  boxes->expect(Answer::Ok);
  confirm();
  expectRefused();
}

}  // namespace

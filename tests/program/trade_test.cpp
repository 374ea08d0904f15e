#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>

#include "MainWindowFixture.h"
#include "account/frmLogin_qy.h"
#include "catalogue/FrmXIMU.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "support/PortalProcess.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// The client against a running portal with its demo trade, in one submit mode.
class Trade : public MainWindowFixture, public testing::WithParamInterface<qint16> {
 protected:
  Trade() {
    dismissNotices();
    state.settings.set(u"WebServer"_s, running.host());
    state.settings.set(u"Unicode"_s, QString::number(GetParam()));
    store.exec(
        u"INSERT INTO QYXX (id,R_ID,user_no,user_name,user_pass) "
        "VALUES (1,1,'1001','x','123456')"_s);
    start();
  }

  void logIn(const QString& password) {
    showLogin();
    auto& login = defaultInstance<frmLogin_qy>();
    login.cmbUser_no->setCurrentText(u"1001"_s);
    login.txtPassword->setText(password);
    QTest::mouseClick(login.cmdOK, Qt::LeftButton);
  }

  /// What the portal now holds of a goods row.
  QStringList onPortal(int id) {
    const QString url = RequestBuilder(state.gWebServer, paths::productRows)
                            .encoded(u"STABLE"_s, u"XIMU"_s)
                            .encoded(u"STRDATA"_s, u"ximu,jigex,jish,noth,"_s)
                            .encoded(u"STOTHER"_s, u"id=%1"_s.arg(id))
                            .url();
    QStringList cells;
    readPortal(url, EmptyAnswer::IsFailure, [&cells](GetHtml& html) {
      for (int i = 0; i < 4; ++i) cells.append(html.GetRowItem());
      return true;
    });
    return cells;
  }

  void press(const QString& key) {
    auto* bar = defaultInstance<FrmXIMU>().Toolbar1;
    QTest::mouseClick(bar->widgetForAction(bar->button(key)), Qt::LeftButton);
  }

  PortalProcess running;
};

TEST_P(Trade, ADemoCompanyLogsInAddsAGoodsRowAndFindsItOnThePortal) {
  logIn(u"123456"_s);
  ASSERT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 1);
  EXPECT_GT(state.gQiyeId, 0);

  entry(u"mnuXimu"_s)->trigger();
  auto& goods = defaultInstance<FrmXIMU>();
  press(u"Add"_s);
  QTest::mouseClick(goods.ListView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                    goods.ListView1->visualRect(goods.ListView1->model()->index(0, 0)).center());
  goods.txtFields(2)->setText(u"论语 & <译注>"_s);
  goods.txtFields(3)->setText(u"38.50"_s);
  goods.txtFields(8)->setText(u"第一行\r\n第二行"_s);
  press(u"Save"_s);
  EXPECT_EQ(goods.StatusBar1->text(), u"网络保存成功！！！"_s);

  const int portalId = store.value(u"SELECT R_ID FROM XIMU"_s).toInt();
  ASSERT_GT(portalId, 0);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !state.inetQuotes.StillExecuting(); }, 60'000));
  state.gUnicode = 2;
  // The reader takes a bare angle bracket for a tag, so "<译注>" is gone from what it hands out.
  EXPECT_EQ(onPortal(portalId),
            QStringList({u"论语 &"_s, u"38.50"_s, u"第一行\r\n第二行"_s, u"True"_s}));

  goods.txtFields(2)->setText(u"论语译注"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT R_ID FROM XIMU"_s).toInt(), portalId) << "the same portal row";
  ASSERT_TRUE(QTest::qWaitFor([this] { return !state.inetQuotes.StillExecuting(); }, 60'000));
  EXPECT_EQ(onPortal(portalId).value(0), u"论语译注"_s);
}

TEST_P(Trade, AWrongPasswordIsRefusedThoughThePortalStands) {
  boxes->expect(Answer::Ok);
  logIn(u"654321"_s);
  EXPECT_FALSE(state.gLoggedIn);
  EXPECT_EQ(boxes->texts(), QStringList{u"无效的用户名或密码，请重试!"_s});
}

TEST_P(Trade, AfterThePortalIsGoneASaveStaysLocalAndWorksAgainWhenItIsBack) {
  logIn(u"123456"_s);
  ASSERT_TRUE(state.gLoggedIn);
  store.exec(u"INSERT INTO XIMU (id,R_ID,QIYE_ID,XIMU,JIGEX,GESH) VALUES (1,0,1,'书','1','1')"_s);
  entry(u"mnuXimu"_s)->trigger();
  auto& goods = defaultInstance<FrmXIMU>();
  running.stop();
  goods.txtFields(2)->setText(u"断网时"_s);
  press(u"Save"_s);
  EXPECT_EQ(goods.StatusBar1->text(), u"网络保存失败！！！"_s);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU"_s).toString(), u"断网时"_s);
  running.start();
  logIn(u"123456"_s);
  goods.txtFields(2)->setText(u"又通了"_s);
  press(u"Save"_s);
  EXPECT_EQ(goods.StatusBar1->text(), u"网络保存成功！！！"_s);
}

INSTANTIATE_TEST_SUITE_P(SubmitModes, Trade, testing::Values(qint16{1}, qint16{2}));

}  // namespace

#include <gtest/gtest.h>

#include <QComboBox>

#include "RegistrationFixture.h"
#include "account/frmLogin_qy.h"
#include "account/registration/FrmRegister_OK.h"
#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetHAYE.h"
#include "account/registration/frmGetSHEN.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "support/PortalProcess.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// A new company at a running portal, in one submit mode.
class NewCompany : public RegistrationFixture, public testing::WithParamInterface<qint16> {
 protected:
  NewCompany() {
    state.gWebServer = u"HTTP://"_s + running.host() + u"/"_s;
    state.gUnicode = GetParam();
    state.openRegistration = [] { defaultInstance<FrmRegister_OK>().showForm(); };
  }

  frmLogin_qy& login() {
    auto& form = defaultInstance<frmLogin_qy>();
    form.showForm();
    return form;
  }

  void logIn(const QString& number, const QString& password) {
    login().cmbUser_no->setCurrentText(number);
    login().txtPassword->setText(password);
    press(login().cmdOK);
  }

  template <class Picker>
  void chooseNamed(QPushButton* button, const QString& name) {
    whileShown<Picker>([&name](Picker& picker) {
      int row = 0;
      while (picker.ListView1->itemAt(row) != nullptr &&
             picker.ListView1->itemAt(row)->text() != name) {
        ++row;
      }
      ASSERT_NE(picker.ListView1->itemAt(row), nullptr) << name.toStdString();
      picker.ListView1->scrollTo(picker.ListView1->model()->index(row, 0));
      pressRow(picker.ListView1, row);
      press(picker.commandC);
    });
    press(button);
  }

  bool isIdle() {
    return QTest::qWaitFor([this] { return !state.inetQuotes.StillExecuting(); }, 60'000);
  }

  PortalProcess running;
};

TEST_P(NewCompany, RegistersGetsItsNumberAndLogsInOnlineAndLocally) {
  press(login().CmdRegister);
  EXPECT_FALSE(isLoaded<frmLogin_qy>());
  ASSERT_TRUE(isLoaded<FrmRegister_OK>());
  auto& terms = defaultInstance<FrmRegister_OK>();
  QTest::mouseClick(terms.OptionS[1], Qt::LeftButton);
  pressKey(*terms.Toolbar1, u"Load"_s);

  fillIn();
  press(screen().Command3);
  chooseNamed<frmGetSHEN>(screen().Command4, u"浙江"_s);
  chooseNamed<frmGetAREA>(screen().Command5, u"杭州"_s);
  chooseNamed<frmGetHAYE>(screen().Command2, u"图书"_s);
  press(u"Save"_s);
  EXPECT_EQ(notices.last(), u"网络注册/修改成功！！！|用户编号：1013|用户名称：0571-5550"_s);
  EXPECT_EQ(screen().TxtField0(0)->text(), u"1013"_s);
  EXPECT_EQ(state.gQiyeId, 13);
  EXPECT_EQ(state.gHayeId, 3);
  EXPECT_EQ(state.gHayeName, u"图书"_s);
  EXPECT_EQ(state.gUserLevel, 0);
  ASSERT_TRUE(isIdle());
  EXPECT_TRUE(screen().unload());

  logIn(u"1013"_s, u"geheim"_s);
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 1);
  EXPECT_EQ(state.gQiyeId, 13);

  // What the company is shown of itself is what it wrote, the long texts included.
  EXPECT_EQ(screen().TxtField0(3)->text(), u"新竹书店"_s);
  EXPECT_EQ(screen().TxtField0(4)->text(), u"竹径1号 & 2号"_s);
  EXPECT_EQ(screen().TxtField0(9)->text(), u"杭州"_s);
  EXPECT_EQ(screen().TxtField3(0)->text(), u"介绍一\r\n二"_s);
  EXPECT_EQ(screen().TxtField3(1)->text(), u"留言 & 三"_s);
  screen().TxtField0(6)->setText(u"0571-9"_s);
  press(u"Save"_s);
  ASSERT_TRUE(isIdle());
  screen().unload();
  EXPECT_EQ(screen().TxtField0(6)->text(), u"0571-9"_s);
  screen().unload();

  goOffline();
  EXPECT_EQ(login().cmbUser_no->currentText(), u"1013"_s) << "the login remembers the new company";
  logIn(u"1013"_s, u"geheim"_s);
  EXPECT_TRUE(state.gLoggedIn);
  EXPECT_EQ(state.gLoginMode, 2);
  EXPECT_EQ(state.gQiyeId, 13);
  EXPECT_GT(state.gLocalId, 0);
}

TEST_P(NewCompany, CannotTakeANameThatIsTaken) {
  screen();
  fillIn();
  screen().TxtField0(1)->setText(u"青禾书店"_s);
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{u"网络注册/修改失败！！！|注册名称或编号失败|"_s});
  EXPECT_EQ(state.gQiyeId, 0);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM QYXX"_s), 0);
}

TEST_P(NewCompany, SeesNothingOfAnotherCompanysRecord) {
  state.gQiyeId = 1;
  for (int index = 0; index <= 10; ++index) {
    EXPECT_EQ(screen().TxtField0(index)->text(), QString());
  }
}

TEST_P(NewCompany, CannotChangeTheRecordOfACompanyThatItHasNotLoggedInAs) {
  state.gQiyeId = 1;
  screen();
  fillIn();
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{u"网络注册/修改失败！！！|注册名称或编号失败|"_s});
  QString name;
  readPortal(RequestBuilder(state.gWebServer, paths::loginRows)
                 .encoded(u"STABLE"_s, u"QYXX"_s)
                 .encoded(u"STRDATA"_s, u"qiye,"_s)
                 .encoded(u"STOTHER"_s, u"id=1"_s)
                 .url(),
             EmptyAnswer::IsFailure, [&name](GetHtml& html) {
               name = html.GetRowItem();
               return true;
             });
  EXPECT_EQ(name, u"青禾书店"_s);
}

INSTANTIATE_TEST_SUITE_P(MixedAndDirect, NewCompany, testing::Values(qint16{1}, qint16{2}));

}  // namespace

#include "account/registration/FrmRegister_OK.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>

#include "RegistrationFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class Terms : public RegistrationFixture {
 protected:
  FrmRegister_OK& terms() {
    auto& form = defaultInstance<FrmRegister_OK>();
    QApplication::setActiveWindow(form.window());
    return form;
  }
  bool canLoad() { return terms().Toolbar1->button(u"Load"_s)->isEnabled(); }
  void choose(std::size_t index) { QTest::mouseClick(terms().OptionS[index], Qt::LeftButton); }
};

TEST_F(Terms, ShowTheTextReadOnlyAndAsPlainText) {
  EXPECT_EQ(terms().objectName(), u"FrmRegister_OK"_s);
  EXPECT_EQ(terms().windowTitle(), u"注册信息"_s);
  EXPECT_EQ(terms().Text1->objectName(), u"Text1"_s);
  EXPECT_TRUE(terms().Text1->isReadOnly());
  EXPECT_GT(terms().Text1->text().size(), 300);
  EXPECT_TRUE(terms().Text1->text().startsWith(u"青禾云集电子商务系统服务条款\r\n"_s));
  EXPECT_NE(qobject_cast<QPlainTextEdit*>(terms().Text1->editor()), nullptr);
}

TEST_F(Terms, TheLoadButtonIsOnOnlyWhileTheTermsAreAccepted) {
  EXPECT_EQ(terms().OptionS[0]->text(), u"不接受"_s);
  EXPECT_EQ(terms().OptionS[1]->text(), u"接受"_s);
  EXPECT_EQ(terms().OptionS[1]->objectName(), u"OptionS(1)"_s);
  EXPECT_TRUE(terms().OptionS[0]->isChecked()) << "at first";
  EXPECT_FALSE(canLoad());
  choose(1);
  EXPECT_TRUE(canLoad());
  choose(0);
  EXPECT_FALSE(canLoad());
}

TEST_F(Terms, LoadShowsTheRecordAndUnloadsTheTerms) {
  choose(1);
  pressKey(*terms().Toolbar1, u"Load"_s);
  EXPECT_TRUE(isLoaded<FrmRegister_QY>());
  EXPECT_TRUE(defaultInstance<FrmRegister_QY>().isVisible());
  EXPECT_FALSE(isLoaded<FrmRegister_OK>());
}

TEST_F(Terms, ExitUnloadsThem) {
  pressKey(*terms().Toolbar1, u"Exit"_s);
  EXPECT_FALSE(isLoaded<FrmRegister_OK>());
  EXPECT_FALSE(isLoaded<FrmRegister_QY>());
}

TEST_F(Terms, OfflineTheToolbarDoesNothing) {
  choose(1);
  goOffline();
  pressKey(*terms().Toolbar1, u"Load"_s);
  pressKey(*terms().Toolbar1, u"Exit"_s);
  EXPECT_TRUE(isLoaded<FrmRegister_OK>());
  EXPECT_FALSE(isLoaded<FrmRegister_QY>());
  EXPECT_TRUE(notices.isEmpty());
  EXPECT_TRUE(terms().unload()) << "the close box works";
}

}  // namespace

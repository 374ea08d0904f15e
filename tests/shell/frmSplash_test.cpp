#include "shell/frmSplash.h"

#include "ShellTest.h"

namespace qinghe {
namespace {

using frmSplashTest = ShellTest;

TEST_F(frmSplashTest, ShowsItselfOnLoadWithItsTexts) {
  auto& splash = defaultInstance<frmSplash>();
  EXPECT_TRUE(splash.isVisible());
  EXPECT_EQ(splash.lblVersion->text(), u"版本 1.0.0"_s);
  EXPECT_EQ(splash.lblProductName->text(), u"青禾云集电子商务系统"_s);
  EXPECT_EQ(splash.Label1->text(), u"青禾云集"_s);
  EXPECT_EQ(splash.lblPlatform->text(), u"windows 9X/windows NT"_s);
  EXPECT_EQ(splash.LabelZhce->text(), u"未注册用户"_s);
  EXPECT_EQ(splash.lblWarning->text(), frmSplash::warningLine());
  EXPECT_FALSE(splash.lblCompany->text().isEmpty());
  EXPECT_TRUE(splash.windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(frmSplashTest, NamesItsLabelsAsTheyAreCalled) {
  auto& splash = defaultInstance<frmSplash>();
  EXPECT_EQ(splash.objectName(), u"frmSplash"_s);
  for (const auto& name : {u"LabelZhce"_s, u"lblVersion"_s, u"lblProductName"_s, u"Label1"_s,
                           u"lblPlatform"_s, u"lblCompany"_s, u"lblWarning"_s}) {
    const auto* label = splash.findChild<QLabel*>(name);
    ASSERT_NE(label, nullptr) << utf8(name);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
  }
}

struct LevelCase {
  const char* name;
  int qiyeId;
  int level;
  QString text;
};

class frmSplashLevels : public ShellTest, public testing::WithParamInterface<LevelCase> {};

TEST_P(frmSplashLevels, TellTheAccountsLevel) {
  state.gQiyeId = static_cast<qint16>(GetParam().qiyeId);
  state.gUserLevel = static_cast<qint16>(GetParam().level);
  EXPECT_EQ(defaultInstance<frmSplash>().LabelZhce->text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Table, frmSplashLevels,
                         testing::Values(LevelCase{"Free", 1, 0, u"免费用户"_s},
                                         LevelCase{"Formal", 1, 1, u"正式用户"_s},
                                         LevelCase{"Vip", 32767, 2, u"VIP用户"_s},
                                         LevelCase{"OtherLevelKeepsTheFormsText", 1, 3,
                                                   u"未注册用户"_s},
                                         LevelCase{"NobodyLoggedIn", 0, 2, u"未注册用户"_s},
                                         LevelCase{"NegativeId", -1, 1, u"未注册用户"_s}),
                         [](const auto& test) { return test.param.name; });

TEST_F(frmSplashTest, APressUnloadsItWhereverItHits) {
  auto* splash = &defaultInstance<frmSplash>();
  QTest::mousePress(splash->windowHandle(), Qt::LeftButton, {},
                    splash->lblProductName->geometry().center());
  EXPECT_FALSE(isLoaded<frmSplash>());

  splash = &defaultInstance<frmSplash>();
  QTest::mousePress(splash->windowHandle(), Qt::RightButton, {}, QPoint(3, 3));
  EXPECT_FALSE(isLoaded<frmSplash>());
}

TEST_F(frmSplashTest, EscapeUnloadsItToo) {
  QTest::keyClick(&defaultInstance<frmSplash>(), Qt::Key_Escape);
  EXPECT_FALSE(isLoaded<frmSplash>());
}

TEST_F(frmSplashTest, OtherKeysLeaveIt) {
  QTest::keyClick(&defaultInstance<frmSplash>(), Qt::Key_A);
  EXPECT_TRUE(isLoaded<frmSplash>());
}

TEST_F(frmSplashTest, IsFullyPainted) {
  const QImage picture = defaultInstance<frmSplash>().grab().toImage();
  // Light above for the dark text, green below for the light one.
  EXPECT_GT(picture.pixelColor(picture.width() / 3, 20).lightness(), 200);
  EXPECT_LT(picture.pixelColor(picture.width() - 10, picture.height() - 10).lightness(), 120);
}

}  // namespace
}  // namespace qinghe

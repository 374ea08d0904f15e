#include "shell/frmMsgBox.h"

#include <QApplication>
#include <QElapsedTimer>

#include "ShellTest.h"
#include "shell/frmSplash.h"

namespace qinghe {
namespace {

using frmMsgBoxTest = ShellTest;

TEST_F(frmMsgBoxTest, HasItsCaptionButtonAndFixedLine) {
  auto& notice = defaultInstance<frmMsgBox>();
  EXPECT_EQ(notice.objectName(), u"frmMsgBox"_s);
  EXPECT_EQ(notice.windowTitle(), u"青禾云集电子商务系统版本 1.0.0"_s);
  EXPECT_EQ(notice.cmdOK->text(), u"确定"_s);
  EXPECT_EQ(notice.lblDisclaimer->text(), frmSplash::warningLine());
  EXPECT_FALSE(notice.lblDisclaimer->text().isEmpty());
  EXPECT_TRUE(notice.Timer1->isEnabled());
  EXPECT_EQ(notice.Timer1->interval(), 2000);
  for (const auto& name : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"lblDisclaimer"_s}) {
    const auto* label = notice.findChild<QLabel*>(name);
    ASSERT_NE(label, nullptr) << utf8(name);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
  }
  EXPECT_NE(notice.findChild<QPushButton*>(u"cmdOK"_s), nullptr);
}

TEST_F(frmMsgBoxTest, ItsFixedLineCanBeReadInADarkTheme) {
  const QPalette before = QApplication::palette();
  QPalette dark = before;
  dark.setColor(QPalette::WindowText, Qt::white);
  dark.setColor(QPalette::PlaceholderText, Qt::black);
  QApplication::setPalette(dark);
  const auto* line = defaultInstance<frmMsgBox>().lblDisclaimer;
  const QColor colour = line->palette().color(QPalette::WindowText);
  QApplication::setPalette(before);
  EXPECT_EQ(colour.rgb(), QColor(Qt::white).rgb());
  EXPECT_GT(colour.alpha(), 140);
}

TEST_F(frmMsgBoxTest, ClosesItselfAfterTwoSeconds) {
  QElapsedTimer clock;
  clock.start();
  showNotice(u"网络连接失败！！！"_s);
  EXPECT_GE(clock.elapsed(), 1900);
  EXPECT_FALSE(isLoaded<frmMsgBox>());
}

TEST_F(frmMsgBoxTest, ClosesWithItsButtonAndTheCallerGoesOn) {
  NoticePresser presser;
  showNotice(u"登录成功！！！"_s, u"用户编号：1"_s, u"用户名称：甲"_s);
  EXPECT_EQ(presser.messages, QStringList{u"登录成功！！！"_s});
  EXPECT_EQ(presser.trayStates, QList{Tray::State::Waiting});
  EXPECT_FALSE(isLoaded<frmMsgBox>());
}

TEST_F(frmMsgBoxTest, ShowsItsThreeLinesAndBlocksWhatStandsBehind) {
  bool seen = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    if (!isLoaded<frmMsgBox>() || !defaultInstance<frmMsgBox>().isVisible()) return;
    auto& notice = defaultInstance<frmMsgBox>();
    seen = true;
    EXPECT_EQ(notice.Label1->text(), u"一"_s);
    EXPECT_EQ(notice.Label2->text(), u"二"_s);
    EXPECT_EQ(notice.Label3->text(), u"三"_s);
    EXPECT_TRUE(notice.isModal());
    notice.unload();
  });
  watch.start(5);
  showNotice(u"一"_s, u"二"_s, u"三"_s);
  EXPECT_TRUE(seen);
}

TEST_F(frmMsgBoxTest, ClosesWithEscape) {
  int presses = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    if (!isLoaded<frmMsgBox>() || !defaultInstance<frmMsgBox>().isVisible()) return;
    if (++presses == 1) {
      QTest::keyClick(&defaultInstance<frmMsgBox>(), Qt::Key_Escape);
    } else {
      defaultInstance<frmMsgBox>().unload();
    }
  });
  watch.start(5);
  defaultInstance<frmMsgBox>().Timer1->setEnabled(false);  // the key alone closes it
  showNotice(u"一"_s);
  EXPECT_EQ(presses, 1);
}

TEST_F(frmMsgBoxTest, ANoticeWhileOneStandsChangesItsLinesAndDoesNotWait) {
  QStringList lines;
  bool nested = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    if (!isLoaded<frmMsgBox>() || !defaultInstance<frmMsgBox>().isVisible()) return;
    if (!std::exchange(nested, true)) showNotice(u"第二"_s);
    lines << defaultInstance<frmMsgBox>().Label1->text();
    defaultInstance<frmMsgBox>().unload();
  });
  watch.start(5);
  showNotice(u"第一"_s);
  EXPECT_EQ(lines, QStringList{u"第二"_s});
}

TEST_F(frmMsgBoxTest, KeepsItsSizeWithAHugeNameOfMarkup) {
  auto& notice = defaultInstance<frmMsgBox>();
  notice.Label3->setText(u"<h1>"_s.repeated(5000));
  notice.showForm();
  EXPECT_LT(notice.width(), 700);
  EXPECT_LT(notice.height(), 400);
  notice.unload();
}

}  // namespace
}  // namespace qinghe

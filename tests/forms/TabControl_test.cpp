#include "forms/TabControl.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

#include "forms/TextBox.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

void fill(TabControl& tabs) {
  for (const QString& caption : {u"a"_s, u"b"_s, u"c"_s}) tabs.addPage(caption);
  tabs.resize(400, 200);
  tabs.show();
}

void clickTab(TabControl& tabs, int tab) {
  QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(tab).center());
}

TEST(TabControl, WalkedByTheUserFollowsItsTabs) {
  TabControl tabs(u"SSTab1"_s);
  fill(tabs);
  EXPECT_EQ(tabs.tab(), 0);
  clickTab(tabs, 2);
  EXPECT_EQ(tabs.tab(), 2);
  tabs.setTab(1);
  clickTab(tabs, 0);
  EXPECT_EQ(tabs.tab(), 0);
}

TEST(TabControl, WalkedByCodeTakesNeitherMouseNorKeysNorWheel) {
  TabControl tabs(u"SSTab1"_s, TabControl::WalkedBy::Code);
  fill(tabs);
  clickTab(tabs, 2);
  EXPECT_EQ(tabs.tab(), 0);
  tabs.setTab(2);
  EXPECT_EQ(tabs.tab(), 2);
  clickTab(tabs, 0);
  QTest::keyClick(&tabs, Qt::Key_Tab, Qt::ControlModifier);
  QTest::keyClick(tabs.tabBar(), Qt::Key_Left);
  EXPECT_EQ(tabs.tab(), 2);
  EXPECT_TRUE(tabs.widget(0)->isEnabled()) << "only the tabs are off";
}

TEST(TabControl, TabComesToTheTabsOnceThereIsMoreThanOne) {
  TabControl tabs(u"SSTab1"_s);
  tabs.addPage(u"a"_s);
  EXPECT_EQ(tabs.tabBar()->focusPolicy(), Qt::NoFocus);
  tabs.addPage(u"b"_s);
  EXPECT_EQ(tabs.tabBar()->focusPolicy(), Qt::StrongFocus);
  TabControl walked(u"SSTab1"_s, TabControl::WalkedBy::Code);
  fill(walked);
  EXPECT_EQ(walked.tabBar()->focusPolicy(), Qt::NoFocus);
}

TEST(TabControl, TheWheelTurnsNoPage) {
  TabControl tabs(u"SSTab1"_s);
  fill(tabs);
  QWheelEvent wheel(tabs.tabBar()->tabRect(0).center(), {}, {}, {0, -120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(tabs.tabBar(), &wheel);
  EXPECT_EQ(tabs.tab(), 0);
}

/// A box that refuses to be left, on the first of two pages.
struct Refusing {
  Refusing() {
    auto* page = tabs.addPage(u"a"_s);
    tabs.addPage(u"b"_s);
    box = new TextBox(u"Text1"_s, TextBox::Lines::One, page);
    box->onValidate = [this] { return accepts; };
    tabs.resize(400, 200);
    tabs.show();
    QApplication::setActiveWindow(&tabs);
    box->editor()->setFocus();
  }
  TabControl tabs{u"SSTab1"_s};
  TextBox* box;
  bool accepts = false;
};

TEST(TabControl, APressOnATabAsksTheFieldThatIsLeft) {
  Refusing refusing;
  ASSERT_TRUE(QTest::qWaitFor([&] { return refusing.box->editor()->hasFocus(); }));
  clickTab(refusing.tabs, 1);
  EXPECT_EQ(refusing.tabs.tab(), 0);
  EXPECT_TRUE(refusing.box->editor()->hasFocus());
  refusing.accepts = true;
  clickTab(refusing.tabs, 1);
  EXPECT_EQ(refusing.tabs.tab(), 1);
}

TEST(TabControl, AKeyThatTurnsThePageAsksTheFieldThatIsLeft) {
  Refusing refusing;
  ASSERT_TRUE(QTest::qWaitFor([&] { return refusing.box->editor()->hasFocus(); }));
  QTest::keyClick(refusing.box->editor(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(refusing.tabs.tab(), 0);
  refusing.accepts = true;
  QTest::keyClick(refusing.box->editor(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(refusing.tabs.tab(), 1);
}

TEST(TabControl, PagesThatAreNoneAreIgnored) {
  TabControl tabs(u"SSTab1"_s, TabControl::WalkedBy::Code);
  fill(tabs);
  tabs.setTab(1);
  tabs.setTab(3);
  tabs.setTab(-1);
  EXPECT_EQ(tabs.tab(), 1);
}

}  // namespace

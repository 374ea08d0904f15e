#include "forms/TabControl.h"

#include <gtest/gtest.h>

#include <QTabBar>
#include <QTest>

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

TEST(TabControl, PagesThatAreNoneAreIgnored) {
  TabControl tabs(u"SSTab1"_s, TabControl::WalkedBy::Code);
  fill(tabs);
  tabs.setTab(1);
  tabs.setTab(3);
  tabs.setTab(-1);
  EXPECT_EQ(tabs.tab(), 1);
}

}  // namespace

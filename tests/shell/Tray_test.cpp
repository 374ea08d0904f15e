#include "shell/Tray.h"

#include <QSignalSpy>
#include <QTextDocument>

#include "ShellTest.h"

namespace qinghe {
namespace {

using TrayTest = ShellTest;

struct StateCase {
  const char* name;
  void (*show)();
  Tray::State state;
  QString words;
};

class TrayStates : public ShellTest, public testing::WithParamInterface<StateCase> {};

TEST_P(TrayStates, ShowItsIconAndItsTipWithTheUserName) {
  TrayAdd();
  state.gUserName = u"新华书店"_s;
  GetParam().show();
  EXPECT_EQ(state.tray.state(), GetParam().state);
  EXPECT_EQ(state.tray.tip(), GetParam().words + u"新华书店"_s);
  state.gUserName.clear();
  GetParam().show();
  EXPECT_EQ(state.tray.tip(), GetParam().words);
}

INSTANTIATE_TEST_SUITE_P(Table, TrayStates,
                         testing::Values(StateCase{"Connected", TrayShowConnected,
                                                   Tray::State::Connected,
                                                   u"青禾云集电子商务系统已经连网："_s},
                                         StateCase{"Offline", TrayShowOffline, Tray::State::Offline,
                                                   u"青禾云集电子商务系统尚未连网："_s},
                                         StateCase{"Waiting", TrayShowWaiting, Tray::State::Waiting,
                                                   u"青禾云集电子商务系统正在等待："_s}),
                         [](const auto& test) { return test.param.name; });

TEST_F(TrayTest, IsAddedWithTheConnectedIconAndTheTipOfTheStart) {
  EXPECT_FALSE(state.tray.isAdded());
  EXPECT_EQ(state.tray.state(), Tray::State::None);
  TrayAdd();
  EXPECT_TRUE(state.tray.isAdded());
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  EXPECT_EQ(state.tray.tip(), u"青禾云集电子商务系统初始化"_s);
}

TEST_F(TrayTest, IsGoneWhenRemovedAndCanBeRemovedTwice) {
  TrayAdd();
  TrayRemove();
  EXPECT_FALSE(state.tray.isAdded());
  TrayRemove();
  TrayShowOffline();
  EXPECT_FALSE(state.tray.isAdded());
}

TEST_F(TrayTest, CutsTheTipAt63Characters) {
  const QString words = u"青禾云集电子商务系统已经连网："_s;  // 15 characters
  state.gUserName = QString(48, u'名');
  TrayShowConnected();
  EXPECT_EQ(state.tray.tip(), words + state.gUserName);
  EXPECT_EQ(state.tray.tip().size(), 63);
  state.gUserName += u'尾';
  TrayShowConnected();
  EXPECT_EQ(state.tray.tip(), words + QString(48, u'名'));
  state.gUserName = QString(47, u'名') + u"𠮷"_s;
  TrayShowConnected();
  EXPECT_EQ(state.tray.tip(), words + QString(47, u'名'));
}

TEST_F(TrayTest, APressAsksForTheMenu) {
  TrayAdd();
  const QSignalSpy presses(&state.tray, &Tray::leftPressed);
  for (auto* show : {TrayShowConnected, TrayShowOffline}) show();
  state.tray.press();
  TrayShowConnected();
  state.tray.press();
  EXPECT_EQ(presses.count(), 2);
}

TEST_F(TrayTest, APressWhileWaitingDoesNothing) {
  TrayAdd();
  const QSignalSpy presses(&state.tray, &Tray::leftPressed);
  TrayShowWaiting();
  state.tray.press();
  EXPECT_EQ(presses.count(), 0);
}

TEST_F(TrayTest, APressDuringAPortalReadDoesNothing) {
  TrayAdd();
  const QSignalSpy presses(&state.tray, &Tray::leftPressed);
  state.forms.gate.hold();
  state.tray.press();
  state.forms.gate.release();
  EXPECT_EQ(presses.count(), 0);
  state.tray.press();
  EXPECT_EQ(presses.count(), 1);
}

class TrayButtons : public TrayTest {
 protected:
  QSystemTrayIcon* icon() const { return state.tray.findChild<QSystemTrayIcon*>(); }
};

TEST_F(TrayButtons, OnlyTheLeftButtonCountsAndNoMenuIsAttached) {
  TrayAdd();
  ASSERT_NE(icon(), nullptr);
  EXPECT_EQ(icon()->contextMenu(), nullptr);
  const QSignalSpy presses(&state.tray, &Tray::leftPressed);
  for (const auto reason : {QSystemTrayIcon::Context, QSystemTrayIcon::MiddleClick,
                            QSystemTrayIcon::DoubleClick, QSystemTrayIcon::Unknown})
    emit icon()->activated(reason);
  EXPECT_EQ(presses.count(), 0);
  emit icon()->activated(QSystemTrayIcon::Trigger);
  EXPECT_EQ(presses.count(), 1);
}

TEST_F(TrayButtons, HasAnIconForEachStateAndATipWithoutMarkup) {
  TrayAdd();
  QList<qint64> pictures;
  for (auto* show : {TrayShowConnected, TrayShowOffline, TrayShowWaiting}) {
    show();
    EXPECT_FALSE(icon()->icon().isNull());
    pictures << icon()->icon().cacheKey();
  }
  EXPECT_NE(pictures[0], pictures[1]);
  EXPECT_NE(pictures[1], pictures[2]);
  EXPECT_EQ(icon()->toolTip(), u"青禾云集电子商务系统正在等待："_s);
  state.gUserName = u"<b>甲&lt;</b>"_s;
  TrayShowConnected();
  EXPECT_EQ(state.tray.tip(), u"青禾云集电子商务系统已经连网：<b>甲&lt;</b>"_s);
  EXPECT_FALSE(Qt::mightBeRichText(icon()->toolTip()));
}

}  // namespace
}  // namespace qinghe

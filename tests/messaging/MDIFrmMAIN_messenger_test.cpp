#include <gtest/gtest.h>

#include <sys/socket.h>

#include "messaging/RawPeer.h"
#include "messaging/free_port.h"
#include "messaging/frmPeer.h"
#include "messaging/frmXIXI.h"
#include "program/MainWindowFixture.h"
#include "values/code_page.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class MessengerInTheProgram : public MainWindowFixture {
 protected:
  MessengerInTheProgram() {
    state.peerPort = freePort();
    state.peerAddress = u"127.0.0.1"_s;
  }
};

TEST_F(MessengerInTheProgram, StartsHiddenWithItsInboxTimerWhenTheDialSettingIsOn) {
  state.settings.set(u"AutoDial"_s, u"1"_s);
  state.settings.set(u"AutoPeer"_s, u"0"_s);
  start();
  ASSERT_TRUE(isLoaded<frmPeer>());
  EXPECT_FALSE(defaultInstance<frmPeer>().isVisible());
  EXPECT_TRUE(defaultInstance<frmPeer>().Timer3->isEnabled());
  EXPECT_EQ(defaultInstance<frmPeer>().TcpPeer(1)->State(), SocketState::Listening);
}

TEST_F(MessengerInTheProgram, ItsOwnSettingStartsNothing) {
  state.settings.set(u"AutoDial"_s, u"0"_s);
  state.settings.set(u"AutoPeer"_s, u"1"_s);
  start();
  EXPECT_FALSE(isLoaded<frmPeer>());
}

TEST_F(MessengerInTheProgram, TheMenuShowsItAsAWindowOfItsOwn) {
  start();
  entry(u"mnuPeer"_s)->trigger();
  ASSERT_TRUE(isLoaded<frmPeer>());
  auto& form = defaultInstance<frmPeer>();
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(form.window(), &form);
  form.hideForm();
  entry(u"mnuPeer"_s)->trigger();
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(&defaultInstance<frmPeer>(), &form);
}

TEST_F(MessengerInTheProgram, TheMenuShowsTheHistoryInTheFrameAndTheMessengerListens) {
  start();
  entry(u"mnuXIXI"_s)->trigger();
  ASSERT_TRUE(isLoaded<frmXIXI>());
  EXPECT_EQ(defaultInstance<frmXIXI>().window(), frame.get());
  EXPECT_TRUE(defaultInstance<frmXIXI>().isVisible());
  ASSERT_TRUE(isLoaded<frmPeer>());
  EXPECT_FALSE(defaultInstance<frmPeer>().isVisible());
}

TEST_F(MessengerInTheProgram, AtTheEndItSaysGoodbyeBehindTheLogout) {
  start();
  beCompany(1, 1);
  auto& form = defaultInstance<frmPeer>();
  form.Timer3->setEnabled(false);  // the logout is the only request
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(state.peerPort));
  ASSERT_TRUE(waitFor([&form] { return form.mPeerCount == 2; }));
  const int line = static_cast<int>(peer.socket().socketDescriptor());
  bool early = true;
  portal.setHandler([&](const QByteArray&) {
    char byte = 0;
    early = recv(line, &byte, 1, MSG_PEEK | MSG_DONTWAIT) > 0;
    return ScriptedServer::Reply{.bytes = ScriptedServer::ok(ScriptedServer::table({}))};
  });
  EXPECT_TRUE(frame->close());
  EXPECT_EQ(portal.requests().size(), 1);
  EXPECT_FALSE(early) << "the logout comes first";
  EXPECT_FALSE(isLoaded<frmPeer>());
  EXPECT_FALSE(state.tray.isAdded());
  EXPECT_TRUE(peer.gets(toCodePage(u"25@青禾书店,UNLINK")));
  EXPECT_TRUE(peer.isEnded());
}

TEST_F(MessengerInTheProgram, CancellingTheEndKeepsItsLinesUp) {
  start();
  auto& form = defaultInstance<frmPeer>();
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(state.peerPort));
  ASSERT_TRUE(waitFor([&form] { return form.mPeerCount == 2; }));
  state.forms.gate.hold();
  EXPECT_FALSE(frame->close());
  state.forms.gate.release();
  EXPECT_TRUE(isLoaded<frmPeer>());
  EXPECT_TRUE(peer.isUp());
}

}  // namespace

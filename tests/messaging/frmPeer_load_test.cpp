#include <gtest/gtest.h>

#include <QNetworkProxy>

#include "messaging/PeerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PeerLoad : public PeerFixture {};

TEST_F(PeerLoad, ListensHiddenWithItsControlsAndTimersAsTheyAre) {
  auto& form = defaultInstance<frmPeer>();
  EXPECT_EQ(form.Timer3->interval(), usualInboxInterval);
  EXPECT_EQ(form.windowTitle(), u"消息"_s);
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(form.command1->text(), u"发送(&S)"_s);
  EXPECT_EQ(form.Command2->text(), u"隐藏(&H)"_s);
  EXPECT_EQ(form.socketCount(), 2);
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_EQ(socket(1).State(), SocketState::Listening);
  EXPECT_EQ(socket(1).LocalPort, state.peerPort);
  EXPECT_TRUE(form.txtReceive(0)->isReadOnly());
  EXPECT_TRUE(form.txtReceive(1)->isHidden());
  EXPECT_THROW(form.txtReceive(2), InvalidCall);
  EXPECT_FALSE(form.Timer1->isEnabled());
  EXPECT_EQ(form.Timer1->interval(), 1000);
  EXPECT_FALSE(form.Timer2->isEnabled());
  EXPECT_EQ(form.Timer2->interval(), 1000);
  EXPECT_TRUE(form.Timer3->isEnabled());
  EXPECT_EQ(form.mPeerCount, 1);
  EXPECT_EQ(form.mPort, state.peerPort);
  EXPECT_EQ(state.gPeers.size(), 2);
  EXPECT_TRUE(chooser().isEmpty());
  ASSERT_NE(form.mMessages, nullptr);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(PeerLoad, ItsPortIsTheOneThatAllClientsKnow) {
  EXPECT_EQ(usualPort, 8088);
}

TEST_F(PeerLoad, ControlsAreFoundByTheirNames) {
  for (const QString& name : {u"ImageCombo1"_s, u"txtSend"_s, u"command1"_s, u"Command2"_s,
                              u"txtReceive(0)"_s, u"txtReceive(1)"_s, u"TcpPeer(0)"_s,
                              u"TcpPeer(1)"_s, u"Timer1"_s, u"Timer2"_s, u"Timer3"_s}) {
    EXPECT_NE(screen().findChild<QObject*>(name), nullptr) << name.toStdString();
  }
  EXPECT_EQ(screen().objectName(), u"frmPeer"_s);
}

TEST_F(PeerLoad, APortInUseLeavesItWithoutAListenerAndWithoutAWord) {
  const RawListener other(state.peerPort, u"127.0.0.1"_s);
  EXPECT_EQ(socket(1).State(), SocketState::Closed);
  EXPECT_TRUE(isLoaded<frmPeer>());
  say(u"你好"_s);
  EXPECT_EQ(rows().size(), 1) << "it works all the same";
}

TEST_F(PeerLoad, TheProxyThatPagesGoThroughIsNoneForIt) {
  QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, 9});
  EXPECT_EQ(socket(1).State(), SocketState::Listening);
  EXPECT_NE(inbound(), nullptr);
  QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
}

TEST_F(PeerLoad, TheSlotsSurviveAnUnloadWithTheirNamesAndBeyondTheSecondAreDropped) {
  screen();
  state.gPeers[1] = {77, u"云集书社"_s, u"127.0.0.2"_s, 9, true};
  state.gPeers.resize(3);
  ASSERT_TRUE(unload<frmPeer>());
  ASSERT_EQ(state.gPeers.size(), 3);
  screen();
  ASSERT_EQ(state.gPeers.size(), 2);
  EXPECT_EQ(state.gPeers[1].qyxx_id, 77);
  EXPECT_EQ(state.gPeers[1].qyxx, u"云集书社"_s);
}

TEST_F(PeerLoad, HidingKeepsTheLinesUpAndShowingAgainIsTheSameWindow) {
  const auto peer = inbound();
  screen().showForm();
  const frmPeer* form = &screen();
  QTest::mouseClick(screen().Command2, Qt::LeftButton);
  EXPECT_FALSE(screen().isVisible());
  EXPECT_EQ(socket(1).State(), SocketState::Connected);
  screen().showForm();
  EXPECT_EQ(form, &screen());
  EXPECT_TRUE(peer->isUp());
}

TEST_F(PeerLoad, ClosingTheWindowUnloadsIt) {
  screen().showForm();
  screen().close();
  EXPECT_FALSE(isLoaded<frmPeer>());
}

TEST_F(PeerLoad, WithoutItsTableItLoadsAndKeepsNothing) {
  store.exec(u"DROP TABLE XIXI"_s);
  screen().showForm();
  say(u"你好"_s);
  EXPECT_TRUE(onTop(0, u"发送："_s, u"你好\r\n（由服务器中转）\r\n\r\n"_s));
}

TEST_F(PeerLoad, HoldsTheWholeTableOpenAndAddsToIt) {
  store.exec(u"INSERT INTO XIXI (user_id,content) VALUES (1,'one'),(2,'two')"_s);
  EXPECT_EQ(screen().mMessages->RecordCount(), 2);
  screen().showForm();
  say(u"three"_s);
  EXPECT_EQ(screen().mMessages->RecordCount(), 3);
}

TEST_F(PeerLoad, CtrlEnterSends) {
  screen().showForm();
  type(u"你好"_s);
  QApplication::setActiveWindow(&screen());
  screen().txtSend->editor()->setFocus();
  QTest::keyClick(screen().txtSend->editor(), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(rows().size(), 1);
}

class PeerAccept : public PeerFixture {};

TEST_F(PeerAccept, TheFirstConnectionTakesTheListeningSocketOver) {
  screen();
  state.gPeers[1].online = true;
  const auto peer = inbound();
  EXPECT_EQ(socket(1).State(), SocketState::Connected);
  EXPECT_EQ(screen().socketCount(), 2);
  const PeerEntry& slot = state.gPeers[1];
  EXPECT_EQ(slot.ipurl, u"127.0.0.1"_s);
  EXPECT_EQ(slot.port, peer->socket().localPort());
  EXPECT_FALSE(slot.online);
  EXPECT_EQ(slot.qyxx_id, 0);
  EXPECT_EQ(slot.qyxx, QString());
  EXPECT_TRUE(chooser().isEmpty());
  EXPECT_FALSE(screen().isVisible());
}

TEST_F(PeerAccept, ASecondConnectionGetsNoAnswerAsNothingListens) {
  const auto first = inbound();
  for (int i = 0; i < 20; ++i) {
    RawPeer second;
    EXPECT_FALSE(second.connectTo(state.peerPort));
  }
  EXPECT_TRUE(first->isUp());
  EXPECT_EQ(screen().mPeerCount, 2);
}

TEST_F(PeerAccept, ARequestThatStillReachesTheSecondIndexGetsASlotOfItsOwn) {
  const auto first = inbound();
  RawListener elsewhere(state.peerPort);
  RawPeer late;
  ASSERT_TRUE(late.connectTo(state.peerPort, u"127.0.0.2"_s));
  PeerRequest request = elsewhere.takeSocket();
  ASSERT_NE(request, nullptr);
  emit socket(1).ConnectionRequest(request);
  ASSERT_EQ(screen().socketCount(), 3);
  EXPECT_EQ(screen().mPeerCount, 3);
  EXPECT_EQ(socket(2).State(), SocketState::Connected);
  EXPECT_EQ(socket(2).LocalPort, 0);
  EXPECT_EQ(socket(1).State(), SocketState::Connected);
  ASSERT_EQ(state.gPeers.size(), 3);
  EXPECT_EQ(state.gPeers[2].ipurl, u"127.0.0.1"_s);
  EXPECT_FALSE(screen().txtReceive(2)->isHidden());
  late.send("88@Wu,hello");
  ASSERT_TRUE(comeRows(1));
  EXPECT_EQ(rows(), QStringList{u"25|88|青禾书店|Wu|hello"_s});
  EXPECT_TRUE(onTop(2, u"接收：Wu"_s, u"hello\r\n\r\n"_s));
}

TEST_F(PeerAccept, ARequestAtAnotherIndexIsLeftAlone) {
  screen();
  PeerRequest request(new QTcpSocket);
  emit socket(0).ConnectionRequest(request);
  EXPECT_NE(request, nullptr);
  EXPECT_EQ(screen().mPeerCount, 1);
}

TEST_F(PeerAccept, WhileAPortalReadRunsTheRequestWaits) {
  screen();
  state.forms.gate.hold();
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(state.peerPort));
  QCoreApplication::processEvents();
  EXPECT_EQ(screen().mPeerCount, 1);
  state.forms.gate.release();
  EXPECT_TRUE(waitFor([this] { return screen().mPeerCount == 2; }));
}

TEST_F(PeerAccept, AfterUnloadAndLoadItListensAgainAtOnce) {
  const auto peer = inbound();
  ASSERT_TRUE(unload<frmPeer>());
  EXPECT_EQ(socket(1).State(), SocketState::Listening);
  RawPeer next;
  EXPECT_TRUE(next.connectTo(state.peerPort));
}

}  // namespace

#include <gtest/gtest.h>

#include "messaging/PeerFixture.h"
#include "messaging/SilentAddress.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PeerSend : public PeerFixture {
 protected:
  QString relayTarget(const QString& id, const QString& name, const QString& text) {
    return u"/_vti_product/_vti_insert_xixi.asp?stable=%78%69%78%69&structn=%37&QYXX_ID="_s +
           UrlEncodeField(id) + u"&QYXX="_s + UrlEncodeField(name) +
           u"&USER_ID=%32%35&USERNAME="_s + UrlEncodeField(state.gUserName) + u"&CONTENT="_s +
           UrlEncodeField(text);
  }
};

TEST_F(PeerSend, OverAStandingLineTheFrameGoesOutAsItWasTypedAndIsLoggedAndKept) {
  const auto peer = outbound();
  say(u"你好\n第二行"_s);
  EXPECT_TRUE(peer->gets(frame(u"你好\r\n第二行"_s)));
  EXPECT_TRUE(onTop(0, u"发送：云集书社"_s, u"你好\r\n第二行\r\n\r\n"_s));
  EXPECT_EQ(rows(), QStringList{u"77|25|云集书社|青禾书店|你好\r\n第二行"_s});
  EXPECT_EQ(screen().txtSend->text(), QString());
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(PeerSend, TheBytesOnTheWireAreIdAtNameCommaBody) {
  const auto peer = outbound();
  say(u"好"_s);
  EXPECT_TRUE(peer->gets("25@\xC7\xE0\xBA\xCC\xCA\xE9\xB5\xEA,\xBA\xC3"));
}

TEST_F(PeerSend, AnEmptyTextDoesNothing) {
  screen().showForm();
  clickSend();
  EXPECT_TRUE(rows().isEmpty());
  EXPECT_EQ(log(0), QString());
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_FALSE(screen().Timer1->isEnabled());
}

TEST_F(PeerSend, ATextThatSaysTheGoodbyeIsAMessageHereAndNoneThere) {
  const auto peer = outbound();
  say(u"UNLINK"_s);
  EXPECT_TRUE(peer->gets(frame(u"UNLINK"_s)));
  EXPECT_EQ(rows(), QStringList{u"77|25|云集书社|青禾书店|UNLINK"_s});
  EXPECT_TRUE(onTop(0, u"发送：云集书社"_s, u"UNLINK\r\n\r\n"_s));
}

TEST_F(PeerSend, ToAnInboundPartnerItGoesOverThatLine) {
  const auto peer = inbound();
  peer->send("77@Li,LINK");
  ASSERT_TRUE(waitFor([this] { return chooser().size() == 1; }));
  say(u"hi"_s);
  EXPECT_TRUE(peer->gets(frame(u"hi"_s)));
  EXPECT_TRUE(onTop(1, u"发送：Li"_s, u"hi\r\n\r\n"_s));
  EXPECT_EQ(rows(), QStringList{u"77|25|Li|青禾书店|hi"_s});
}

TEST_F(PeerSend, WithoutALineItIsRelayedLoggedAndKeptWithTheMark) {
  state.gPartnerId = 77;
  portal.answerWith({partnerPage(u"云集书社"_s, u"False"_s), page({{u"1"_s}})});
  screen().showForm();
  state.gPeers[0].ipurl.clear();
  portal.clear();
  say(u"你好\n<b>"_s);
  EXPECT_EQ(targets(), QStringList{relayTarget(u"77"_s, u"云集书社"_s, u"你好\r\n<b>"_s)});
  EXPECT_TRUE(
      targets()[0].endsWith(u"&CONTENT=%C4%E3%BA%C3%3C%62%72%3E%26%6C%74%3B%62%26%67%74%3B"_s));
  EXPECT_TRUE(onTop(0, u"发送：云集书社"_s, u"你好\r\n<b>\r\n（由服务器中转）\r\n\r\n"_s));
  EXPECT_EQ(rows(), QStringList{u"77|25|云集书社|青禾书店|（由服务器中转）你好\r\n<b>"_s});
  EXPECT_EQ(screen().txtSend->text(), QString());
}

TEST_F(PeerSend, APortalThatIsDownChangesNothingOfARelayedMessage) {
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  screen();
  state.gPeers[0] = {77, u"云集书社"_s, {}, 0, false};
  screen().RefreshPeerList();
  screen().showForm();
  say(u"你好"_s);
  EXPECT_EQ(rows(), QStringList{u"77|25|云集书社|青禾书店|（由服务器中转）你好"_s});
  EXPECT_TRUE(onTop(0, u"发送：云集书社"_s, u"你好\r\n（由服务器中转）\r\n\r\n"_s));
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(PeerSend, WithNothingSelectedItIsRelayedForSlotZeroThoughThatIsNobody) {
  screen().showForm();
  say(u"x"_s);
  EXPECT_EQ(targets(), QStringList{relayTarget(u"0"_s, {}, u"x"_s)});
  EXPECT_EQ(rows(), QStringList{u"0|25||青禾书店|（由服务器中转）x"_s});
  EXPECT_TRUE(screen().Timer1->isEnabled()) << "though there was nowhere to connect to";
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(PeerSend, ARelayedMessageTriesToBringTheLineUp) {
  state.gPartnerId = 77;
  portal.answerWith({partnerPage(u"云集书社"_s, u"False"_s), page({{u"1"_s}})});
  screen().showForm();
  EXPECT_EQ(socket(0).State(), SocketState::Closed) << "told as offline it is not tried";
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|NL*"_s}) << "but stays listed";
  RawListener listener(state.peerPort);
  screen().Timer1->setInterval(never);
  say(u"一"_s);
  const auto peer = listener.take();
  ASSERT_NE(peer, nullptr);
  findLineUp();
  EXPECT_TRUE(peer->gets(frame(u"LINK"_s)));
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|LK*"_s});
  say(u"二"_s);
  EXPECT_TRUE(peer->gets(frame(u"二"_s)));
  EXPECT_EQ(rows(), (QStringList{u"77|25|云集书社|青禾书店|（由服务器中转）一"_s,
                                 u"77|25|云集书社|青禾书店|二"_s}));
}

TEST_F(PeerSend, TheLineIsDialledAtThePortThatTheSlotRemembers) {
  const int elsewhere = freePort();
  RawListener listener(elsewhere);
  screen();
  state.gPeers[0] = {77, u"云集书社"_s, u"127.0.0.2"_s, elsewhere, false};
  screen().showForm();
  say(u"一"_s);
  EXPECT_NE(listener.take(), nullptr);
}

TEST_F(PeerSend, ForAnotherSlotTheRelayStillDialsSlotZeroWhoseStandingLineGetsASecondHello) {
  const auto partner = outbound();
  auto other = inbound();
  other->send("88@Wu,LINK");
  ASSERT_TRUE(waitFor([this] { return chooser().size() == 2; }));
  EXPECT_EQ(screen().ImageCombo1->key(screen().ImageCombo1->selectedRow()), u"1 ID"_s);
  other->close();
  ASSERT_TRUE(becomes(1, SocketState::Closing));
  portal.clear();
  screen().Timer1->setInterval(1);
  say(u"hi"_s);
  EXPECT_EQ(targets(), QStringList{relayTarget(u"88"_s, u"Wu"_s, u"hi"_s)});
  EXPECT_EQ(rows(), QStringList{u"88|25|Wu|青禾书店|（由服务器中转）hi"_s});
  EXPECT_TRUE(partner->gets(frame(u"LINK"_s)));
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_TRUE(onTop(1, u"发送：Wu"_s, u"hi\r\n（由服务器中转）\r\n\r\n"_s));
}

TEST_F(PeerSend, AfterTheOtherEndHasGoneItIsRelayedAndTheLineComesUpAgain) {
  outbound()->close();
  ASSERT_TRUE(becomes(0, SocketState::Closing));
  RawListener listener(state.peerPort);
  screen().Timer1->setInterval(never);
  say(u"一"_s);
  EXPECT_EQ(rows(), QStringList{u"77|25|云集书社|青禾书店|（由服务器中转）一"_s});
  const auto peer = listener.take();
  ASSERT_NE(peer, nullptr);
  findLineUp();
  EXPECT_TRUE(peer->gets(frame(u"LINK"_s)));
}

TEST_F(PeerSend, SelectingAPartnerBringsItsLogToTheTop) {
  const auto partner = outbound();
  const auto other = inbound();
  other->send("88@Wu,LINK");
  ASSERT_TRUE(waitFor([this] { return chooser().size() == 2; }));
  EXPECT_TRUE(isOnTop(1)) << "somebody spoke there";
  screen().ImageCombo1->setSelectedRow(0);
  EXPECT_TRUE(isOnTop(1)) << "code selects in silence";
  emit screen().ImageCombo1->itemClick(0);
  EXPECT_TRUE(isOnTop(0));
  QTest::keyClick(screen().ImageCombo1, Qt::Key_Down);
  EXPECT_TRUE(isOnTop(1)) << "a key of the user counts like a click";
}

TEST_F(PeerSend, TheLogOfTheOneItWasSentToComesToTheTop) {
  const auto partner = outbound();
  const auto other = inbound();
  other->send("88@Wu,LINK");
  ASSERT_TRUE(waitFor([this] { return chooser().size() == 2; }));
  screen().ImageCombo1->setSelectedRow(0);
  ASSERT_TRUE(isOnTop(1));
  say(u"hi"_s);
  EXPECT_TRUE(isOnTop(0));
}

TEST_F(PeerSend, ALogThatWasNeverSeenComesToTheTopToo) {
  screen();
  state.gPeers[1] = {88, u"Wu"_s, u"127.0.0.2"_s, 9, false};
  screen().showForm();
  ASSERT_EQ(chooser(), QStringList{u"1 ID|Wu|NL*"_s});
  ASSERT_TRUE(screen().txtReceive(1)->isHidden());
  say(u"还在吗"_s);
  EXPECT_FALSE(screen().txtReceive(1)->isHidden());
  EXPECT_TRUE(isOnTop(1));
}

TEST_F(PeerSend, ThePressesOfItsButtonsLeaveTheCursorInTheTextBeingTyped) {
  screen().showForm();
  QApplication::setActiveWindow(&screen());
  ASSERT_EQ(screen().focusWidget(), screen().txtSend->editor()) << "it opens there";
  say(u"一"_s);
  EXPECT_EQ(screen().focusWidget(), screen().txtSend->editor());
  QTest::mouseClick(screen().Command2, Qt::LeftButton);
  screen().showForm();
  EXPECT_EQ(screen().focusWidget(), screen().txtSend->editor());
}

struct RelayAnswer {
  const char* name;
  QByteArray page;
  bool succeeds;
};

class PeerRelay : public PeerSend, public testing::WithParamInterface<RelayAnswer> {};

TEST_P(PeerRelay, IsSaidToHaveWorkedWhenTheAnswerHasATable) {
  screen();
  state.gPeers[0] = {77, u"云集书社"_s, {}, 0, false};
  portal.answerWith({GetParam().page});
  EXPECT_EQ(screen().RelayMessage(0, u"x"_s), GetParam().succeeds);
  EXPECT_EQ(targets(), QStringList{relayTarget(u"77"_s, u"云集书社"_s, u"x"_s)});
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, PeerRelay,
    testing::Values(RelayAnswer{"OneRow", ScriptedServer::table({{u"1"_s}}), true},
                    RelayAnswer{"TwoRows", ScriptedServer::table({{u"1"_s}, {u"2"_s}}), true},
                    RelayAnswer{"NoRow", ScriptedServer::table({}), true},
                    RelayAnswer{"NoMarker", "<html>error</html>", false},
                    RelayAnswer{"Nothing", "", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(PeerSend, APortalThatIsDownIsAFailedRelay) {
  screen();
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  EXPECT_FALSE(screen().RelayMessage(0, u"x"_s));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(PeerSend, APeerThatNeverReadsGetsItsMessagesByRelayInTheEnd) {
  const auto peer = outbound();
  peer->socket().setReadBufferSize(1);
  portal.answerWith({page({{u"1"_s}})});
  const QString text(100'000, u'文');
  int sent = 0;
  while (portal.requests().isEmpty() && sent < 200) {
    say(text);
    ++sent;
  }
  EXPECT_LT(sent, 200);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIXI"_s).toInt(), sent);
  EXPECT_TRUE(rows().last().startsWith(u"77|25|云集书社|青禾书店|（由服务器中转）文"_s));
  EXPECT_LE(log(0).size(), 1'100'000);
}

}  // namespace

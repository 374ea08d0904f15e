#include <gtest/gtest.h>

#include "messaging/PeerFixture.h"
#include "messaging/SilentAddress.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString lookup =
    u"/_vti_login/_vti_detail_field_s.asp?STABLE=%51%59%58%58"
    "&STRDATA=%71%69%79%65%2C%69%70%75%72%6C%2C%6F%6E%6C%69%6E%65%2C"
    "&STOTHER=%49%44%3D%37%37"_s;

class PeerActivate : public PeerFixture {};

TEST_F(PeerActivate, WithNoPartnerItNeitherAsksThePortalNorConnects) {
  screen().showForm();
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_FALSE(screen().txtReceive(0)->isHidden());
}

TEST_F(PeerActivate, AsksForThePartnerConnectsAndGreetsOnceTheLineIsUp) {
  RawListener listener(state.peerPort);
  portal.answerWith({partnerPage()});
  state.gPartnerId = 77;
  screen().Timer1->setInterval(50);
  screen().showForm();
  EXPECT_EQ(targets(), QStringList{lookup});
  const PeerEntry& slot = state.gPeers[0];
  EXPECT_EQ(slot.qyxx_id, 77);
  EXPECT_EQ(slot.qyxx, u"云集书社"_s);
  EXPECT_EQ(slot.ipurl, u"127.0.0.2"_s);
  EXPECT_EQ(slot.port, state.peerPort);
  EXPECT_FALSE(slot.online) << "the refresh has made it the socket's state";
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|NL*"_s});
  EXPECT_TRUE(screen().Timer1->isEnabled());
  const auto peer = listener.take();
  ASSERT_NE(peer, nullptr);
  EXPECT_TRUE(peer->gets(frame(u"LINK"_s)));
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|LK*"_s});
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_TRUE(rows().isEmpty());
}

TEST_F(PeerActivate, InMixedModeItAsksThroughTheRelayPage) {
  state.gUnicode = 1;
  portal.answerWith({partnerPage(u"云集书社"_s, u"False"_s)});
  state.gPartnerId = 77;
  screen().showForm();
  EXPECT_EQ(targets(), QStringList{u"/_vti_comm/review.asp?review="_s +
                                   UrlEncodeField(u"HTTP://"_s + portal.host() + lookup)});
  EXPECT_EQ(state.gPeers[0].qyxx, u"云集书社"_s);
}

TEST_F(PeerActivate, APartnerToldAsOfflineIsListedAndNotTried) {
  const RawListener listener(state.peerPort);
  portal.answerWith({partnerPage(u"云集书社"_s, u"False"_s)});
  state.gPartnerId = 77;
  screen().showForm();
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|NL*"_s});
}

TEST_F(PeerActivate, APartnerWhoIsConnectedInboundIsNotLookedUp) {
  const auto peer = inbound();
  peer->send("77@Li,LINK");
  ASSERT_TRUE(waitFor([this] { return chooser().size() == 1; }));
  screen().hideForm();
  state.gPartnerId = 77;
  screen().showForm();
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|LK*"_s});
}

TEST_F(PeerActivate, AStaleInboundSlotOfAnEarlierWindowSparesTheLookupToo) {
  screen();
  state.gPeers[1] = {77, u"Li"_s, u"127.0.0.1"_s, 9, true};
  state.gPartnerId = 77;
  screen().showForm();
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|NL*"_s});
}

TEST_F(PeerActivate, EveryTimeItComesToTheFrontItAsksButAStandingLineIsLeftAlone) {
  const auto peer = outbound();
  screen().hideForm();
  screen().showForm();
  EXPECT_EQ(targets(), QStringList{lookup});
  EXPECT_EQ(socket(0).State(), SocketState::Connected);
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|LK*"_s});
  screen().showForm();
  EXPECT_EQ(targets().size(), 1) << "shown while in front it is not activated";
}

TEST_F(PeerActivate, ANewPartnerTakesTheSlotOverThoughTheOldLineStands) {
  const auto peer = outbound();
  portal.answerWith({partnerPage(u"第三家"_s)});
  state.gPartnerId = 88;
  screen().hideForm();
  screen().showForm();
  EXPECT_EQ(chooser(), QStringList{u"0 ID|第三家|LK*"_s});
  say(u"hi"_s);
  EXPECT_TRUE(peer->gets(frame(u"hi"_s))) << "the old partner reads it";
  EXPECT_EQ(rows(), QStringList{u"88|25|第三家|青禾书店|hi"_s});
}

TEST_F(PeerActivate, ComingToTheFrontBringsTheFirstLogToTheTop) {
  const auto peer = inbound();
  screen().showForm();
  peer->send("77@Li,hi");
  ASSERT_TRUE(comeRows(1));
  EXPECT_TRUE(isOnTop(1));
  screen().hideForm();
  screen().showForm();
  EXPECT_TRUE(isOnTop(0));
}

TEST_F(PeerActivate, OfSeveralRowsTheLastWins) {
  portal.answerWith(
      {page({{u"甲"_s, u"127.0.0.3"_s, u"True"_s}, {u"乙"_s, u"127.0.0.2"_s, u"False"_s}})});
  state.gPartnerId = 77;
  screen().showForm();
  EXPECT_EQ(state.gPeers[0].qyxx, u"乙"_s);
  EXPECT_EQ(state.gPeers[0].ipurl, u"127.0.0.2"_s);
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
}

struct AnswerRow {
  const char* name;
  QList<QStringList> rows;
  QString listed;
};

class PeerLookupFails : public PeerActivate, public testing::WithParamInterface<AnswerRow> {};

TEST_P(PeerLookupFails, AndTheSlotKeepsWhatWasWrittenBefore) {
  screen();
  portal.answerWith({page(GetParam().rows)});
  state.gPartnerId = 77;
  EXPECT_FALSE(screen().LookupPartner());
  screen().showForm();
  EXPECT_EQ(state.gPeers[0].qyxx_id, 77);
  EXPECT_EQ(state.gPeers[0].qyxx, GetParam().listed);
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_EQ(screen().cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Answers, PeerLookupFails,
    testing::Values(AnswerRow{"FlagIsNone", {{u"甲"_s, u"127.0.0.2"_s, u"maybe"_s}}, u"甲"_s},
                    AnswerRow{"FlagIsEmpty", {{u"甲"_s, u"127.0.0.2"_s, u""_s}}, u"甲"_s},
                    AnswerRow{"FlagIsMissing", {{u"甲"_s, u"127.0.0.2"_s}}, u"甲"_s},
                    AnswerRow{"OnlyTheName", {{u"甲"_s}}, u"甲"_s}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(PeerActivate, AnAnswerWithoutTheMarkerIsAFailedLookup) {
  portal.answerWith({"<html>error</html>"});
  state.gPartnerId = 77;
  EXPECT_FALSE(screen().LookupPartner());
  EXPECT_EQ(state.gPeers[0].qyxx_id, 0);
}

TEST_F(PeerActivate, AMarkedTableWithoutRowsIsASuccessThatChangesNothing) {
  portal.answerWith({page({})});
  state.gPartnerId = 77;
  EXPECT_TRUE(screen().LookupPartner());
  EXPECT_EQ(state.gPeers[0].qyxx_id, 0);
}

TEST_F(PeerActivate, APartnerWithoutAnAddressIsASkippedStepAndTheTimerRunsAllTheSame) {
  portal.answerWith({page({{u"云集书社"_s, u""_s, u"True"_s}})});
  state.gPartnerId = 77;
  screen().showForm();
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_TRUE(screen().Timer1->isEnabled());
  emit screen().Timer1->timer();
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

class PeerTimer1 : public PeerFixture {};

TEST_F(PeerTimer1, ASilentAddressIsGivenUpAtTheThirdTickWithoutAWord) {
  const SilentAddress silent(state.peerPort);
  portal.answerWith({partnerPage()});
  state.gPartnerId = 77;
  screen().showForm();
  ASSERT_EQ(socket(0).State(), SocketState::Connecting);
  screen().ImageCombo1->setImage(0, u"LK"_s);
  emit screen().Timer1->timer();
  emit screen().Timer1->timer();
  EXPECT_EQ(socket(0).State(), SocketState::Connecting);
  EXPECT_EQ(screen().mConnectTicks.ticks(), 2);
  EXPECT_TRUE(screen().Timer1->isEnabled());
  emit screen().Timer1->timer();
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_EQ(chooser(), QStringList{u"0 ID|云集书社|NL*"_s});
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_TRUE(isLoaded<frmPeer>());
}

TEST_F(PeerTimer1, ANameThatIsStillLookedUpAtTheFirstTickIsAFailedConnection) {
  portal.answerWith({page({{u"云集书社"_s, u"a host that is none"_s, u"True"_s}})});
  state.gPartnerId = 77;
  screen().showForm();
  ASSERT_EQ(socket(0).State(), SocketState::Resolving);
  emit screen().Timer1->timer();
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
  EXPECT_FALSE(screen().Timer1->isEnabled());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(PeerTimer1, RealTicksGiveTheSilentAddressUp) {
  const SilentAddress silent(state.peerPort);
  portal.answerWith({partnerPage()});
  state.gPartnerId = 77;
  screen().Timer1->setInterval(20);
  screen().showForm();
  EXPECT_TRUE(waitFor([this] { return !screen().Timer1->isEnabled(); }));
  EXPECT_EQ(socket(0).State(), SocketState::Closed);
}

TEST_F(PeerTimer1, TheDormantTimersHandlerWouldShowTheLineAtTheSelectedPartner) {
  const auto peer = outbound();
  screen().ImageCombo1->setImage(0, u"NL"_s);
  emit screen().Timer2->timer();
  EXPECT_EQ(screen().ImageCombo1->image(0), u"LK"_s);
  peer->close();
  ASSERT_TRUE(becomes(0, SocketState::Closing));
  emit screen().Timer2->timer();
  EXPECT_EQ(screen().ImageCombo1->image(0), u"NL"_s);
}

class PeerError : public PeerFixture {
 protected:
  PeerError() {
    portal.answerWith({partnerPage()});
    state.gPartnerId = 77;
  }
};

TEST_F(PeerError, ARefusedConnectionSaysSoAndUnloadsAndTheNextShowListensAgain) {
  const auto peer = inbound();
  boxes->expect(Answer::Ok);
  screen().showForm();
  state.gPeers[0].online = true;
  ASSERT_TRUE(waitFor([] { return !isLoaded<frmPeer>(); }));
  ASSERT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(boxes->asked[0].text, u"网络访问错误"_s);
  EXPECT_EQ(boxes->asked[0].title, QString());
  EXPECT_EQ(boxes->asked[0].buttons, Buttons::Ok);
  EXPECT_FALSE(state.gPeers[0].online);
  EXPECT_TRUE(peer->gets(frame(u"UNLINK"_s)));
  EXPECT_TRUE(peer->isEnded());
  state.gPartnerId = 0;
  screen().showForm();
  EXPECT_EQ(socket(1).State(), SocketState::Listening);
}

TEST_F(PeerError, ANameThatIsNoneIsOneToo) {
  portal.answerWith({page({{u"云集书社"_s, u"a host that is none"_s, u"True"_s}})});
  boxes->expect(Answer::Ok);
  screen().showForm();
  EXPECT_TRUE(waitFor([] { return !isLoaded<frmPeer>(); }));
}

TEST_F(PeerError, WhileItsBoxStandsTheNextOneIsSilentAndNothingRunsIntoTheClosedWindow) {
  boxes->expect(Answer::Ok);
  boxes->onAsk = [this](const Message&) {
    emit socket(0).Error(u"again"_s);
    emit socket(1).Error(u"and again"_s);
    EXPECT_EQ(socket(1).State(), SocketState::Closed);
  };
  screen().showForm();
  PeerSocket* sockets[] = {&socket(0), &socket(1)};
  QPointer<frmPeer> form(&screen());
  ASSERT_TRUE(waitFor([] { return !isLoaded<frmPeer>(); }));
  EXPECT_EQ(boxes->asked.size(), 1);
  if (form != nullptr) {
    emit sockets[0]->Error(u"late"_s);
    emit sockets[1]->DataArrival(1);
    emit form->Timer3->timer();
    form->command1->click();
  }
  EXPECT_EQ(boxes->asked.size(), 1);
  EXPECT_FALSE(isLoaded<frmPeer>());
}

class PeerUnload : public PeerFixture {};

TEST_F(PeerUnload, SaysGoodbyeOnEveryStandingLineAndClosesThemAll) {
  const auto partner = outbound();
  const auto other = inbound();
  const FormRegistry::Hold alive(state.forms.registry);
  const PeerSocket* sockets[] = {&socket(0), &socket(1)};
  ASSERT_TRUE(unload<frmPeer>());
  for (const PeerSocket* one : sockets) EXPECT_EQ(one->State(), SocketState::Closed);
  EXPECT_TRUE(partner->gets(frame(u"UNLINK"_s)));
  EXPECT_TRUE(other->gets(frame(u"UNLINK"_s)));
  EXPECT_TRUE(partner->isEnded());
  EXPECT_TRUE(other->isEnded());
  EXPECT_TRUE(rows().isEmpty());
}

TEST_F(PeerUnload, NothingRunsIntoTheWindowThatIsGone) {
  frmPeer& form = screen();
  state.gPeers[0] = {77, u"云集书社"_s, u"127.0.0.2"_s, state.peerPort, false};
  form.RefreshPeerList();
  form.txtSend->setText(u"x"_s);
  PeerSocket* sockets[] = {form.TcpPeer(0), form.TcpPeer(1)};
  const FormRegistry::Hold alive(state.forms.registry);
  ASSERT_TRUE(form.unload());
  form.ImageCombo1->setImage(0, u"LK"_s);
  emit form.Timer1->timer();
  EXPECT_EQ(form.ImageCombo1->image(0), u"LK"_s);
  emit form.Timer3->timer();
  form.command1->click();
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(rows().isEmpty());
  PeerRequest request(new QTcpSocket);
  emit sockets[1]->ConnectionRequest(request);
  EXPECT_NE(request, nullptr);
  EXPECT_EQ(form.mPeerCount, 1);
  emit sockets[1]->DataArrival(1);
  EXPECT_TRUE(form.txtReceive(1)->isHidden());
  emit sockets[0]->Error(u"late"_s);
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_FALSE(form.isVisible());
}

TEST_F(PeerUnload, TheGoodbyeLeavesAlsoWhenSomethingIsLeftUnread) {
  const auto other = inbound();
  state.forms.gate.hold();
  other->send(QByteArray(200'000, 'x'));
  for (int i = 0; i < 20; ++i) QCoreApplication::processEvents();
  ASSERT_TRUE(unload<frmPeer>());
  EXPECT_TRUE(other->gets(frame(u"UNLINK"_s)));
  state.forms.gate.release();
}

TEST_F(PeerUnload, ALineThatIsDownGetsNoGoodbyeAndAPartnerWhoDoesNotReadHoldsNobodyUp) {
  const auto partner = outbound();
  partner->socket().setReadBufferSize(1);
  for (int i = 0; i < 60 && socket(0).State() == SocketState::Connected; ++i) {
    socket(0).SendData(QByteArray(200'000, 'x'));
    QCoreApplication::processEvents();
  }
  QElapsedTimer clock;
  clock.start();
  ASSERT_TRUE(unload<frmPeer>());
  EXPECT_LT(clock.elapsed(), 25'000);
}

}  // namespace

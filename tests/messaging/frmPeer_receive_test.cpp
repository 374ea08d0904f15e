#include <gtest/gtest.h>

#include "messaging/PeerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PeerReceive : public PeerFixture {
 protected:
  std::unique_ptr<RawPeer> peer = inbound();

  /// Whether a read of these bytes has been handled: every one shows the window.
  bool arrives(const QByteArray& bytes) {
    screen().hideForm();
    peer->send(bytes);
    return waitFor([this] { return screen().isVisible(); });
  }

  /// The same with the window in front all along, so that it is not activated.
  bool arrivesInFront(const QByteArray& bytes) {
    bool handled = false;
    const auto watch = QObject::connect(&socket(1), &PeerSocket::DataArrival, &socket(1),
                                        [&handled] { handled = true; });
    screen().showForm();
    peer->send(bytes);
    const bool came = waitFor([&handled] { return handled; });
    QObject::disconnect(watch);
    return came;
  }
};

TEST_F(PeerReceive, AHelloNamesAndListsThePeerAndShowsTheWindowWithoutATextOrARow) {
  ASSERT_TRUE(arrives("77@Li,LINK"));
  EXPECT_EQ(state.gPeers[1].qyxx_id, 77);
  EXPECT_EQ(state.gPeers[1].qyxx, u"Li"_s);
  EXPECT_TRUE(state.gPeers[1].online);
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|LK*"_s});
  EXPECT_EQ(log(0), QString());
  EXPECT_EQ(log(1), QString());
  EXPECT_TRUE(rows().isEmpty());
  EXPECT_FALSE(screen().txtReceive(1)->isHidden());
}

TEST_F(PeerReceive, AMessageIsPutOnTopOfTheLogAndIntoTheTable) {
  ASSERT_TRUE(arrives(toCodePage(u"77@王工,你好")));
  EXPECT_TRUE(onTop(1, u"接收：王工"_s, u"你好\r\n\r\n"_s));
  const QString before = log(1);
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|王工|你好"_s});
  ASSERT_TRUE(arrives(toCodePage(u"77@王工,第一行\r\n第二行")));
  EXPECT_TRUE(onTop(1, u"接收：王工"_s, u"第一行\r\n第二行\r\n\r\n"_s, before));
  EXPECT_EQ(rows().last(), u"25|77|青禾书店|王工|第一行\r\n第二行"_s);
  EXPECT_EQ(log(0), QString());
}

TEST_F(PeerReceive, TheTableSaysWhenADirectMessageCame) {
  ASSERT_TRUE(arrives("77@Li,hi"));
  const QDateTime stored = readDate(store.value(u"SELECT dtime FROM XIXI"_s).toString()).value();
  const QDateTime now = QDateTime::currentDateTime();
  EXPECT_LE(qAbs(stored.secsTo(QDateTime(now.date(), now.time(), Qt::UTC))), 60);
}

TEST_F(PeerReceive, ANameWithACommaIsCutShortAndTheRestGoesIntoTheBody) {
  ASSERT_TRUE(arrives("77@A,B,hi"));
  EXPECT_EQ(state.gPeers[1].qyxx, u"A"_s);
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|A|B,hi"_s});
}

TEST_F(PeerReceive, NothingChecksThatTheSenderStaysTheSame) {
  ASSERT_TRUE(arrives("77@Li,one"));
  ASSERT_TRUE(arrives("88@Wu,two"));
  EXPECT_EQ(state.gPeers[1].qyxx_id, 88);
  EXPECT_EQ(rows(), (QStringList{u"25|77|青禾书店|Li|one"_s, u"25|88|青禾书店|Wu|two"_s}));
}

TEST_F(PeerReceive, AnEmptyBodyOnlyNamesTheSenderAndShowsTheWindow) {
  ASSERT_TRUE(arrivesInFront("77@Li,"));
  EXPECT_EQ(state.gPeers[1].qyxx, u"Li"_s);
  EXPECT_TRUE(rows().isEmpty());
  EXPECT_TRUE(chooser().isEmpty()) << "without a hello nobody lists it";
  ASSERT_TRUE(arrives("77@Li,"));
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|LK*"_s}) << "but coming to the front does";
}

TEST_F(PeerReceive, FramesThatArriveTogetherAreOneMessage) {
  ASSERT_TRUE(arrives("77@Li,one77@Li,LINK"));
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|Li|one77@Li,LINK"_s});
}

TEST_F(PeerReceive, AFrameThatArrivesInTwoIsReadTwice) {
  ASSERT_TRUE(arrives("77@Li,on"));
  ASSERT_TRUE(arrives("e"));
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|Li|on"_s});
}

TEST_F(PeerReceive, BytesThatAreNoTextBecomeQuestionMarks) {
  ASSERT_TRUE(arrives("77@\xFF,a\x80z"));
  EXPECT_EQ(rows(), QStringList{u"25|77|青禾书店|?|a?z"_s});
  EXPECT_TRUE(onTop(1, u"接收：?"_s, u"a?z\r\n\r\n"_s));
}

TEST_F(PeerReceive, MarkupStaysText) {
  ASSERT_TRUE(arrives("77@<b>Li</b>,<img src=x><h1>hi</h1>"));
  EXPECT_TRUE(onTop(1, u"接收：<b>Li</b>"_s, u"<img src=x><h1>hi</h1>\r\n\r\n"_s));
  ASSERT_TRUE(arrives("77@<b>Li</b>,LINK"));
  EXPECT_EQ(chooser(), QStringList{u"1 ID|<b>Li</b>|LK*"_s});
}

TEST_F(PeerReceive, QuotesGoIntoTheTableAndNowhereElse) {
  ASSERT_TRUE(arrives("77@Li','x');DROP TABLE XIXI;--,');DELETE FROM QYXX;--"));
  EXPECT_EQ(rows(),
            QStringList{u"25|77|青禾书店|Li'|'x');DROP TABLE XIXI;--,');DELETE FROM QYXX;--"_s});
}

struct MalformedRow {
  const char* name;
  QByteArray bytes;
  qint32 id;
  QString sender;
  QStringList rows;
};

class PeerMalformed : public PeerReceive, public testing::WithParamInterface<MalformedRow> {};

TEST_P(PeerMalformed, LeavesWhatTheFailingStepsLeaveAndShowsTheWindow) {
  ASSERT_TRUE(arrives("5@Old,"));
  ASSERT_TRUE(arrives(GetParam().bytes));
  EXPECT_EQ(state.gPeers[1].qyxx_id, GetParam().id);
  EXPECT_EQ(state.gPeers[1].qyxx, GetParam().sender);
  EXPECT_EQ(rows(), GetParam().rows);
  EXPECT_EQ(log(1).isEmpty(), GetParam().rows.isEmpty());
  EXPECT_EQ(socket(1).State(), SocketState::Connected);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, PeerMalformed,
    testing::Values(MalformedRow{"NoAt", "hello", 5, u"Old"_s, {}},
                    MalformedRow{"NoComma", "77@Li", 77, u"Old"_s, {}},
                    MalformedRow{
                        "IdTooLarge", "99999999999@Li,hi", 5, u"Li"_s, {u"25|5|青禾书店|Li|hi"_s}},
                    MalformedRow{"NoId", "@Li,hi", 0, u"Li"_s, {u"25|0|青禾书店|Li|hi"_s}},
                    MalformedRow{"NoName", "77@,hi", 77, u""_s, {u"25|77|青禾书店||hi"_s}},
                    MalformedRow{"OneZero", QByteArray(1, '\0'), 5, u"Old"_s, {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(PeerReceive, WhileAPortalReadRunsNothingIsReadAndBehindItAllOfItIs) {
  screen().hideForm();
  state.forms.gate.hold();
  peer->send("77@Li,hi");
  for (int i = 0; i < 20; ++i) QCoreApplication::processEvents();
  EXPECT_FALSE(screen().isVisible());
  state.forms.gate.release();
  EXPECT_TRUE(comeRows(1));
}

class PeerGoodbye : public PeerReceive {};

TEST_F(PeerGoodbye, UsuallyClosesNothingAndRefreshesTheList) {
  ASSERT_TRUE(arrives("77@Li,LINK"));
  ASSERT_TRUE(arrives("77@Li,UNLINK"));
  EXPECT_EQ(socket(1).State(), SocketState::Connected) << "place 2 of the chooser is no socket";
  EXPECT_TRUE(state.gPeers[1].online);
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|LK*"_s});
  EXPECT_TRUE(rows().isEmpty());
  EXPECT_EQ(log(1), QString());
}

TEST_F(PeerGoodbye, RefreshesTheListOfAWindowInFrontToo) {
  ASSERT_TRUE(arrivesInFront("77@Li,LINK"));
  screen().ImageCombo1->setImage(0, u"NL"_s);
  ASSERT_TRUE(arrivesInFront("77@Li,UNLINK"));
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|LK*"_s});
}

TEST_F(PeerGoodbye, OfAnEnterpriseWhoseIdIsASlotsNumberClosesTheSocketOfThatPlace) {
  ASSERT_TRUE(arrives("1@Li,LINK"));
  ASSERT_TRUE(arrives("1@Li,UNLINK"));
  EXPECT_EQ(socket(1).State(), SocketState::Closed);
  EXPECT_FALSE(state.gPeers[1].online);
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|NL*"_s});
  EXPECT_TRUE(peer->isEnded());
}

TEST_F(PeerGoodbye, WithTwoListedThePlaceAndTheSlotAreNotTheSame) {
  state.gPeers[0] = {5, u"甲"_s, u"127.0.0.2"_s, 9, false};
  ASSERT_TRUE(arrives("0@Li,LINK"));
  ASSERT_EQ(chooser(), (QStringList{u"0 ID|甲|NL"_s, u"1 ID|Li|LK*"_s}));
  // Id 0 meets the key of slot 0, which is the chooser's first line: socket 1 goes.
  ASSERT_TRUE(arrives("0@Li,UNLINK"));
  EXPECT_EQ(socket(1).State(), SocketState::Closed);
}

TEST_F(PeerGoodbye, AnyFrameOfAnIdThatIsASlotsNumberSelectsThatLine) {
  state.gPeers[0] = {5, u"甲"_s, u"127.0.0.2"_s, 9, false};
  ASSERT_TRUE(arrivesInFront("77@Li,LINK"));
  ASSERT_TRUE(arrivesInFront("0@Li,hi"));
  EXPECT_EQ(chooser(), (QStringList{u"0 ID|甲|NL*"_s, u"1 ID|Li|LK"_s}));
  ASSERT_TRUE(arrivesInFront("77@Li,hi"));
  EXPECT_EQ(screen().ImageCombo1->selectedRow(), 0) << "nothing met, nothing moved";
  ASSERT_TRUE(arrivesInFront("1@Li,hi"));
  EXPECT_EQ(screen().ImageCombo1->selectedRow(), 1) << "the last line, too";
}

TEST_F(PeerGoodbye, TheOtherEndsCloseIsSeenWhenTheStateIsReadAndSaysNothing) {
  ASSERT_TRUE(arrives("77@Li,LINK"));
  peer->close();
  ASSERT_TRUE(becomes(1, SocketState::Closing));
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|LK*"_s}) << "until somebody looks";
  screen().RefreshPeerList();
  EXPECT_EQ(chooser(), QStringList{u"1 ID|Li|NL*"_s});
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_TRUE(isLoaded<frmPeer>());
}

TEST_F(PeerGoodbye, AResetSaysNothingEither) {
  ASSERT_TRUE(arrives("77@Li,LINK"));
  peer->reset();
  ASSERT_TRUE(becomes(1, SocketState::Closing));
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_TRUE(isLoaded<frmPeer>());
}

}  // namespace

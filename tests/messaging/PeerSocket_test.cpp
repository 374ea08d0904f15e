#include "messaging/PeerSocket.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>

#include "messaging/PeerSocketFixture.h"
#include "messaging/SilentAddress.h"
#include "messaging/rules/peer_frame.h"
#include "values/failure.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PeerSocketTest : public PeerSocketFixture {};

TEST_F(PeerSocketTest, StatesHaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(SocketState::Closed), 0);
  EXPECT_EQ(static_cast<int>(SocketState::Listening), 2);
  EXPECT_EQ(static_cast<int>(SocketState::Resolving), 4);
  EXPECT_EQ(static_cast<int>(SocketState::Connecting), 6);
  EXPECT_EQ(static_cast<int>(SocketState::Connected), 7);
  EXPECT_EQ(static_cast<int>(SocketState::Closing), 8);
  EXPECT_EQ(static_cast<int>(SocketState::Failed), 9);
}

TEST_F(PeerSocketTest, ListensAndHandsARequestToAnotherSocket) {
  EXPECT_EQ(socket.State(), SocketState::Closed);
  listen();
  EXPECT_EQ(socket.State(), SocketState::Listening);
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(port));
  ASSERT_TRUE(waitFor([&] { return taken.State() == SocketState::Connected; }));
  EXPECT_EQ(socket.State(), SocketState::Listening);
  EXPECT_EQ(taken.RemoteHost, u"127.0.0.1"_s);
  EXPECT_EQ(taken.RemotePort, peer.socket().localPort());
  taken.SendData("hi");
  EXPECT_TRUE(peer.gets("hi"));
}

TEST_F(PeerSocketTest, OnEveryAddressAPeerOfTheOldProtocolHasItsUsualAddress) {
  socket.LocalPort = port;
  socket.Listen();
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(port));
  ASSERT_TRUE(waitFor([&] { return taken.State() == SocketState::Connected; }));
  EXPECT_EQ(taken.RemoteHost, u"127.0.0.1"_s);
}

TEST_F(PeerSocketTest, ARequestThatNobodyTakesIsDropped) {
  takes = false;
  listen();
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(port));
  EXPECT_TRUE(peer.isEnded());
  EXPECT_EQ(requests, 1);
  EXPECT_EQ(socket.State(), SocketState::Listening);
}

TEST_F(PeerSocketTest, APortInUseOrOutOfRangeFailsToListen) {
  RawListener other(port, u"127.0.0.1"_s);
  EXPECT_THROW(listen(), InvalidCall);
  EXPECT_EQ(socket.State(), SocketState::Closed);
  socket.LocalPort = 70'000;
  EXPECT_THROW(socket.Listen(), InvalidCall);
  socket.LocalAddress = u"no address"_s;
  socket.LocalPort = port;
  EXPECT_THROW(socket.Listen(), InvalidCall);
}

TEST_F(PeerSocketTest, ItsPortIsFreeAtOnceAfterClose) {
  listen();
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(port));
  ASSERT_TRUE(waitFor([&] { return taken.State() == SocketState::Connected; }));
  taken.Close();
  socket.Close();
  EXPECT_EQ(socket.State(), SocketState::Closed);
  EXPECT_NO_THROW(listen());
}

TEST_F(PeerSocketTest, ConnectsAndSendsAndReads) {
  const auto peer = linked();
  ASSERT_NE(peer, nullptr);
  socket.SendData("one");
  EXPECT_TRUE(peer->gets("one"));
  peer->send("two");
  ASSERT_TRUE(waitFor([&] { return !data.isEmpty(); }));
  EXPECT_EQ(data, QList<QByteArray>{"two"});
  EXPECT_EQ(totals, QList<qint64>{3});
}

TEST_F(PeerSocketTest, AnAddressIsConnectingAtOnceAndANameIsLookedUpFirst) {
  RawListener listener(port);
  connectTo(u"127.0.0.2"_s);
  EXPECT_EQ(socket.State(), SocketState::Connecting);
  socket.Close();
  connectTo(u"some name"_s);
  EXPECT_EQ(socket.State(), SocketState::Resolving);
}

TEST_F(PeerSocketTest, ConnectingTakesAHostAndAPortAndAFreeSocket) {
  const auto refuses = [this](const QString& host, qint32 to) {
    socket.RemoteHost = host;
    socket.RemotePort = to;
    EXPECT_THROW(socket.Connect(), InvalidCall) << host.toStdString() << ':' << to;
  };
  refuses({}, port);
  refuses(u"127.0.0.2"_s, 0);
  refuses(u"127.0.0.2"_s, -1);
  refuses(u"127.0.0.2"_s, 65'536);
  EXPECT_EQ(socket.State(), SocketState::Closed);
  const auto peer = linked();
  refuses(u"127.0.0.2"_s, port);
  EXPECT_EQ(socket.State(), SocketState::Connected);
  socket.Close();
  const SilentAddress silent(port);
  connectTo(u"127.0.0.2"_s);
  EXPECT_EQ(socket.State(), SocketState::Connecting);
  refuses(u"127.0.0.2"_s, port);
  socket.Close();
  listen();
  refuses(u"127.0.0.2"_s, port);
  EXPECT_TRUE(errors.isEmpty());
}

TEST_F(PeerSocketTest, ARefusedConnectionIsAnErrorOnce) {
  connectTo(u"127.0.0.2"_s);
  ASSERT_TRUE(waitFor([&] { return !errors.isEmpty(); }));
  settle();
  EXPECT_EQ(errors.size(), 1);
  EXPECT_EQ(socket.State(), SocketState::Failed);
  EXPECT_NE(linked(), nullptr) << "the next attempt is free to go";
  socket.Close();
  EXPECT_EQ(socket.State(), SocketState::Closed);
}

TEST_F(PeerSocketTest, ANameThatIsNoneIsAnError) {
  connectTo(u"no such name"_s);
  ASSERT_TRUE(waitFor([&] { return !errors.isEmpty(); }));
  EXPECT_EQ(errors.size(), 1);
}

TEST_F(PeerSocketTest, ClosingAnAttemptTakesItsErrorBack) {
  state.gate.hold();
  connectTo(u"127.0.0.2"_s);
  waitForRefusal();
  EXPECT_EQ(socket.State(), SocketState::Connecting) << "not told yet";
  socket.Close();
  state.gate.release();
  settle();
  EXPECT_TRUE(errors.isEmpty());
}

TEST_F(PeerSocketTest, TheOtherEndsCloseIsNoEventAndTheNextConnectWorks) {
  auto peer = linked();
  peer->close();
  ASSERT_TRUE(becomes(SocketState::Closing));
  EXPECT_THROW(socket.SendData("x"), InvalidCall);
  settle();
  EXPECT_TRUE(errors.isEmpty());
  EXPECT_TRUE(totals.isEmpty());
  peer = linked();
  ASSERT_NE(peer, nullptr);
}

TEST_F(PeerSocketTest, TheOtherEndsResetIsNoEventAndTheNextConnectWorks) {
  auto peer = linked();
  peer->reset();
  ASSERT_TRUE(becomes(SocketState::Closing));
  settle();
  EXPECT_TRUE(errors.isEmpty());
  peer = linked();
  ASSERT_NE(peer, nullptr);
  EXPECT_TRUE(errors.isEmpty());
}

TEST_F(PeerSocketTest, WhatWasSentBeforeTheCloseStillArrives) {
  const auto peer = linked();
  peer->send("last words");
  peer->close();
  ASSERT_TRUE(waitFor([&] { return !data.isEmpty(); }));
  EXPECT_EQ(data, QList<QByteArray>{"last words"});
}

TEST_F(PeerSocketTest, WhileAPortalReadRunsNothingArrivesAndBehindItAllDoes) {
  const auto peer = linked();
  state.gate.hold();
  peer->send("first");
  settle();
  peer->send("second");
  const auto* below = socket.findChild<QTcpSocket*>();
  ASSERT_TRUE(waitFor([&] { return below->bytesAvailable() == 11; }));
  settle();
  EXPECT_TRUE(totals.isEmpty());
  state.gate.release();
  EXPECT_TRUE(totals.isEmpty()) << "whoever read is still at work";
  ASSERT_TRUE(waitFor([&] { return !data.isEmpty(); }));
  EXPECT_EQ(data, QList<QByteArray>{"firstsecond"});
}

TEST_F(PeerSocketTest, WhileAPortalReadRunsARequestAndAnErrorWait) {
  listen();
  state.gate.hold();
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(port));
  PeerSocket failing(u"TcpPeer(2)"_s, nullptr);
  const QSignalSpy failed(&failing, &PeerSocket::Error);
  failing.RemoteHost = u"127.0.0.2"_s;
  failing.RemotePort = port;
  failing.Connect();
  waitForRefusal();
  EXPECT_EQ(requests, 0);
  EXPECT_EQ(failed.count(), 0);
  state.gate.release();
  EXPECT_TRUE(waitFor([&] { return requests == 1 && failed.count() == 1; }));
}

TEST_F(PeerSocketTest, AReadIsBoundedHoweverMuchComes) {
  const auto peer = linked();
  const qsizetype whole = qsizetype{1} << 20;
  peer->send(QByteArray(whole, 'x'));
  qsizetype got = 0;
  ASSERT_TRUE(waitFor([&] {
    got = 0;
    for (const QByteArray& one : data) got += one.size();
    return got == whole;
  })) << got;
  for (const QByteArray& one : data) EXPECT_LE(one.size(), frameLimit);
  EXPECT_GE(data.size(), 16);
}

TEST_F(PeerSocketTest, AFloodThatNobodyReadsStaysWithTheSystem) {
  const auto peer = linked();
  state.gate.hold();
  peer->socket().setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, 4096);
  const qint64 offered = qint64{32} << 20;
  peer->socket().write(QByteArray(offered, 'x'));
  settle();
  // What neither our buffer nor the system's takes stays with the sender.
  EXPECT_GT(peer->socket().bytesToWrite(), offered / 2);
  state.gate.release();
}

TEST_F(PeerSocketTest, APeerThatNeverReadsCountsAsGoneAndBlocksNobody) {
  const auto peer = linked();
  peer->socket().setReadBufferSize(1);
  QElapsedTimer clock;
  clock.start();
  const QByteArray message(200'000, 'x');
  int sent = 0;
  while (socket.State() == SocketState::Connected && sent < 1000) {
    socket.SendData(message);
    ++sent;
    settle();
  }
  EXPECT_LT(sent, 200);
  EXPECT_EQ(socket.State(), SocketState::Closing);
  EXPECT_THROW(socket.SendData("x"), InvalidCall);
  socket.Close();
  EXPECT_LT(clock.elapsed(), 25'000);
  EXPECT_EQ(socket.State(), SocketState::Closed);
}

TEST_F(PeerSocketTest, WhatWasSentLeavesBeforeAClose) {
  const auto peer = linked();
  reads = false;
  peer->send("something that is never read");
  const QByteArray words(300'000, 'x');
  socket.SendData(words);
  ASSERT_TRUE(waitFor([&] { return !totals.isEmpty(); }));
  QByteArray got;
  QObject::connect(&peer->socket(), &QTcpSocket::readyRead, &peer->socket(),
                   [&] { got += peer->socket().readAll(); });
  socket.SendData("goodbye");
  // A close waits only half a second for the far end, which reads in this thread.
  const auto* below = socket.findChild<QTcpSocket*>();
  ASSERT_TRUE(waitFor([&] { return below->bytesToWrite() == 0; }));
  socket.Close();
  EXPECT_TRUE(waitFor([&] { return got.endsWith("goodbye"); }));
  EXPECT_EQ(got.size(), words.size() + 7);
}

TEST_F(PeerSocketTest, HalfOpenAndClosedOnesAreLetGo) {
  listen();
  for (int i = 0; i < 50; ++i) {
    RawPeer peer;
    ASSERT_TRUE(peer.connectTo(port)) << i;
    ASSERT_TRUE(waitFor([&] { return requests == i + 1; })) << i;
  }
  EXPECT_EQ(socket.State(), SocketState::Listening);
}

TEST_F(PeerSocketTest, OperationsThatTheStateDoesNotAllowFail) {
  EXPECT_THROW(socket.SendData("x"), InvalidCall);
  EXPECT_THROW(socket.GetData(), InvalidCall);
  PeerRequest none;
  EXPECT_THROW(socket.Accept(none), InvalidCall);
  listen();
  EXPECT_THROW(socket.Listen(), InvalidCall);
  EXPECT_NO_THROW(socket.Close());
  EXPECT_NO_THROW(socket.Close());
}

}  // namespace

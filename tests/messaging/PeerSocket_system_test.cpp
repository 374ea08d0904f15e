#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <latch>
#include <thread>

#include "messaging/PeerSocketFixture.h"
#include "messaging/rules/peer_frame.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// What the socket asks of the system below it.
class PeerSocketBelow : public PeerSocketFixture {
 protected:
  ~PeerSocketBelow() override {
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
  }

  static QTcpSocket& below(const PeerSocket& above) { return *above.findChild<QTcpSocket*>(); }

  /// As a program would whose pages go through a proxy that is not there.
  static void usePageProxy() {
    QNetworkProxy::setApplicationProxy({QNetworkProxy::HttpProxy, u"127.0.0.1"_s, 9});
  }

  /// A peer who has asked to be let in while a portal read runs.
  std::unique_ptr<RawPeer> waiting() {
    listen();
    state.gate.hold();
    auto peer = std::make_unique<RawPeer>();
    EXPECT_TRUE(peer->connectTo(port));
    const auto isThere = [this] { return !socket.findChildren<QTcpSocket*>().isEmpty(); };
    EXPECT_TRUE(waitFor(isThere));
    return peer;
  }

  /// How a line ended, told by the system itself.
  struct Rest {
    QByteArray bytes;
    bool isInOrder = false;  ///< and not broken off
  };
  static Rest restOf(int descriptor) {
    Rest rest;
    for (;;) {
      pollfd one{descriptor, POLLIN, 0};
      if (poll(&one, 1, peerPatience) != 1) return rest;
      char buffer[65536];
      const auto size = recv(descriptor, buffer, sizeof buffer, 0);
      if (size < 0 && errno == EAGAIN) continue;
      rest.isInOrder = size == 0;
      if (size <= 0) return rest;
      rest.bytes.append(buffer, size);
    }
  }
};

TEST_F(PeerSocketBelow, NothingWaitsForTheNextFrameAndADeadLineIsNoticed) {
  const auto isQuick = [](const PeerSocket& one) {
    return below(one).socketOption(QAbstractSocket::LowDelayOption).toInt() == 1 &&
           below(one).socketOption(QAbstractSocket::KeepAliveOption).toInt() == 1;
  };
  const auto peer = linked();
  EXPECT_TRUE(isQuick(socket));
  socket.Close();
  listen();
  RawPeer asking;
  ASSERT_TRUE(asking.connectTo(port));
  const auto isIn = [this] { return taken.State() == SocketState::Connected; };
  ASSERT_TRUE(waitFor(isIn));
  EXPECT_TRUE(isQuick(taken));
}

TEST_F(PeerSocketBelow, ThePagesProxyIsNotAskedForALine) {
  usePageProxy();
  socket.RemoteHost = u"192.0.2.1"_s;
  socket.RemotePort = port;
  socket.Connect();
  EXPECT_EQ(below(socket).proxy().type(), QNetworkProxy::NoProxy);
}

TEST_F(PeerSocketBelow, ThePagesProxyIsNotAskedToListenOnEveryAddress) {
  usePageProxy();
  socket.LocalPort = port;
  ASSERT_NO_THROW(socket.Listen());
  EXPECT_EQ(socket.findChild<QTcpServer*>()->proxy().type(), QNetworkProxy::NoProxy);
}

TEST_F(PeerSocketBelow, WhatAPeerSentBeforeItWasLetInIsRead) {
  const auto peer = waiting();
  peer->send("early");
  ASSERT_TRUE(waitFor([&] { return below(socket).bytesAvailable() == 5; }));
  state.gate.release();
  ASSERT_TRUE(waitFor([&] { return !data.isEmpty(); }));
  EXPECT_EQ(data, QList<QByteArray>{"early"});
}

TEST_F(PeerSocketBelow, WhatWasReadAlreadyWhenALineIsTakenOverIsToldToo) {
  RawListener listener(port);
  RawPeer peer;
  ASSERT_TRUE(peer.connectTo(port, u"127.0.0.2"_s));
  PeerRequest request = listener.takeSocket();
  ASSERT_NE(request, nullptr);
  peer.send("early");
  ASSERT_TRUE(waitFor([&] { return request->bytesAvailable() == 5; }));
  taken.Accept(request);
  ASSERT_TRUE(waitFor([&] { return !data.isEmpty(); }));
  EXPECT_EQ(data, QList<QByteArray>{"early"});
}

TEST_F(PeerSocketBelow, AFrameLeavesAtOnce) {
  const auto peer = linked();
  socket.SendData("now");
  // The program does nothing else meanwhile.
  pollfd arrival{static_cast<int>(peer->socket().socketDescriptor()), POLLIN, 0};
  EXPECT_EQ(poll(&arrival, 1, peerPatience), 1);
}

TEST_F(PeerSocketBelow, APeerWhoHasGoneBeforeItWasLetInIsSoSeen) {
  const auto peer = waiting();
  peer->close();
  const auto hasGone = [&] { return below(socket).state() == QAbstractSocket::UnconnectedState; };
  ASSERT_TRUE(waitFor(hasGone));
  state.gate.release();
  ASSERT_TRUE(waitFor([&] { return requests == 1; }));
  EXPECT_EQ(taken.State(), SocketState::Closing);
  EXPECT_TRUE(errors.isEmpty());
}

TEST_F(PeerSocketBelow, WhoIsNotYetLetInCannotFillTheMemory) {
  const auto peer = waiting();
  peer->socket().setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, 4096);
  const qint64 offered = qint64{32} << 20;
  peer->socket().write(QByteArray(offered, 'x'));
  const auto isFull = [&] { return below(socket).bytesAvailable() >= frameLimit; };
  ASSERT_TRUE(waitFor(isFull));
  settle();
  EXPECT_EQ(below(socket).bytesAvailable(), frameLimit);
  EXPECT_GT(peer->socket().bytesToWrite(), offered / 2);
}

TEST_F(PeerSocketBelow, OneWaitsToBeLetInAndTheOthersStayWithTheSystem) {
  const auto peer = waiting();
  RawPeer second;
  ASSERT_TRUE(second.connectTo(port));
  settle();
  EXPECT_EQ(socket.findChildren<QTcpSocket*>().size(), 1);
}

TEST_F(PeerSocketBelow, WhatTheSystemHasNotTakenYetLeavesBeforeAClose) {
  constexpr int small = 16 * 1024;
  bool isWhole = false;
  // A close waits for half a second, and on a busy machine the far end may not read so soon.
  for (int attempt = 0; attempt < 20 && !isWhole; ++attempt) {
    const auto peer = linked();
    below(socket).setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, small);
    peer->socket().setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, small);
    peer->socket().setReadBufferSize(1);
    QByteArray sent;
    while (below(socket).bytesToWrite() < small) {
      const QByteArray piece(small, 'x');
      socket.SendData(piece);
      sent += piece;
    }
    socket.SendData("goodbye");
    sent += "goodbye";
    ASSERT_GT(below(socket).bytesToWrite(), 0);
    const auto descriptor = static_cast<int>(peer->socket().socketDescriptor());
    Rest rest;
    std::latch begun(1);
    std::jthread reader([&] {
      begun.count_down();
      rest = restOf(descriptor);
    });
    begun.wait();
    socket.Close();
    reader.join();
    const QByteArray got = peer->socket().readAll() + rest.bytes;
    isWhole = rest.isInOrder && got == sent;
  }
  EXPECT_TRUE(isWhole);
}

TEST_F(PeerSocketBelow, ACloseWithSomethingUnreadBreaksNothingOff) {
  const auto peer = linked();
  reads = false;
  constexpr int rest = 30'000;
  peer->send(QByteArray(frameLimit + rest, 'x'));
  const auto isFull = [&] {
    int withTheSystem = 0;
    ioctl(static_cast<int>(below(socket).socketDescriptor()), FIONREAD, &withTheSystem);
    return withTheSystem == rest && below(socket).bytesAvailable() == frameLimit;
  };
  ASSERT_TRUE(waitFor(isFull));
  socket.SendData("goodbye");
  socket.Close();
  const Rest answer = restOf(static_cast<int>(peer->socket().socketDescriptor()));
  EXPECT_EQ(answer.bytes, "goodbye");
  EXPECT_TRUE(answer.isInOrder);
}

}  // namespace

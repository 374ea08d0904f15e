#pragma once

#include <gtest/gtest.h>

#include "forms/FormsState.h"
#include "messaging/PeerSocket.h"
#include "messaging/RawPeer.h"
#include "messaging/free_port.h"

namespace qinghe {

/// A socket that listens at 127.0.0.1 or connects to 127.0.0.2, another that takes who asks to be
/// let in, and what both of them told.
class PeerSocketFixture : public testing::Test {
 protected:
  PeerSocketFixture() {
    QObject::connect(&socket, &PeerSocket::ConnectionRequest, &socket,
                     [this](PeerRequest& request) {
                       ++requests;
                       if (takes) taken.Accept(request);
                     });
    for (PeerSocket* one : {&socket, &taken}) {
      QObject::connect(one, &PeerSocket::DataArrival, one, [this, one](qint64 total) {
        totals.append(total);
        if (reads) data.append(one->GetData());
      });
      QObject::connect(one, &PeerSocket::Error, one,
                       [this](const QString& words) { errors.append(words); });
    }
  }

  void listen() {
    socket.LocalAddress = QStringLiteral("127.0.0.1");
    socket.LocalPort = port;
    socket.Listen();
  }
  void connectTo(const QString& host) {
    socket.RemoteHost = host;
    socket.RemotePort = port;
    socket.Connect();
  }
  std::unique_ptr<RawPeer> linked() {
    RawListener listener(port);
    connectTo(QStringLiteral("127.0.0.2"));
    auto peer = listener.take();
    EXPECT_TRUE(becomes(SocketState::Connected));
    return peer;
  }
  bool becomes(SocketState wanted) {
    return waitFor([&] { return socket.State() == wanted; });
  }
  /// Until a connection to the partner's address has been refused, and so has one begun before.
  void waitForRefusal() const {
    RawPeer witness;
    EXPECT_FALSE(witness.connectTo(port, QStringLiteral("127.0.0.2")));
    settle();
  }
  static void settle() {
    for (int i = 0; i < 20; ++i) QCoreApplication::processEvents();
  }

  FormsState state;
  const int port = freePort();
  PeerSocket socket{QStringLiteral("TcpPeer(0)"), nullptr};
  PeerSocket taken{QStringLiteral("TcpPeer(1)"), nullptr};
  bool takes = true;
  bool reads = true;
  int requests = 0;
  QList<qint64> totals;
  QList<QByteArray> data;
  QStringList errors;
};

}  // namespace qinghe

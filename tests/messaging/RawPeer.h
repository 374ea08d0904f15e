#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <memory>

namespace qinghe {

/// Milliseconds; of use only on a machine that does much else.
inline constexpr int peerPatience = 60'000;

/// Whether it comes to this, the event loop running meanwhile.
template <class Predicate>
bool waitFor(Predicate predicate) {
  return QTest::qWaitFor(predicate, peerPatience);
}

/// The far end of a line: bytes, and nothing that knows what they mean.
class RawPeer {
 public:
  RawPeer() = default;
  explicit RawPeer(QTcpSocket* accepted) : socket_(accepted) { socket_->setParent(nullptr); }

  /// Whether somebody took the connection.
  bool connectTo(int port, const QString& host = QStringLiteral("127.0.0.1")) {
    socket_->connectToHost(host, static_cast<quint16>(port));
    const auto settled = [this] {
      return socket_->state() == QAbstractSocket::ConnectedState ||
             socket_->state() == QAbstractSocket::UnconnectedState;
    };
    return waitFor(settled) && socket_->state() == QAbstractSocket::ConnectedState;
  }

  void send(const QByteArray& bytes) {
    socket_->write(bytes);
    socket_->flush();
  }

  /// Whether exactly these bytes have come since the last call, waiting for them to come.
  testing::AssertionResult gets(const QByteArray& expected) {
    const auto enough = [&] {
      received_ += socket_->readAll();
      return received_.size() >= expected.size();
    };
    const bool came = waitFor(enough);
    const QByteArray got = std::exchange(received_, {});
    if (came && got == expected) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << testing::PrintToString(got) << " and not " << testing::PrintToString(expected);
  }

  bool isEnded() {
    const auto ended = [this] {
      received_ += socket_->readAll();
      return socket_->state() == QAbstractSocket::UnconnectedState;
    };
    return waitFor(ended);
  }
  bool isUp() const { return socket_->state() == QAbstractSocket::ConnectedState; }
  void close() { socket_->disconnectFromHost(); }
  /// Ends the line the hard way.
  void reset() {
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const linger hard{1, 0};
    setsockopt(static_cast<int>(socket_->socketDescriptor()), SOL_SOCKET, SO_LINGER, &hard,
               sizeof hard);
    socket_->abort();
  }

  QTcpSocket& socket() { return *socket_; }

 private:
  std::unique_ptr<QTcpSocket> socket_ = std::make_unique<QTcpSocket>();
  QByteArray received_;
};

/// A partner's address: somebody who listens there and takes who comes.
class RawListener {
 public:
  explicit RawListener(int port, const QString& host = QStringLiteral("127.0.0.2")) {
    if (!server_.listen(QHostAddress(host), static_cast<quint16>(port))) {
      ADD_FAILURE() << "cannot listen at " << host.toStdString() << ':' << port;
    }
  }

  /// Null when nobody came.
  std::unique_ptr<RawPeer> take() {
    if (!comes()) return nullptr;
    return std::make_unique<RawPeer>(server_.nextPendingConnection());
  }
  /// The same for somebody else to read from.
  std::unique_ptr<QTcpSocket> takeSocket() {
    if (!comes()) return nullptr;
    std::unique_ptr<QTcpSocket> socket(server_.nextPendingConnection());
    socket->setParent(nullptr);
    return socket;
  }
  bool isAsked() const { return server_.hasPendingConnections(); }
  void close() { server_.close(); }

 private:
  bool comes() {
    return waitFor([this] { return server_.hasPendingConnections(); });
  }

  QTcpServer server_;
};

}  // namespace qinghe

#include "messaging/PeerSocket.h"

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <utility>

#include "forms/FormsState.h"
#include "messaging/PeerListener.h"
#include "messaging/rules/peer_frame.h"
#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// What waits to be sent beyond this says that the other end does not read.
constexpr qint64 unsentLimit = qint64{1} << 20;
constexpr auto closingLimit = std::chrono::milliseconds(500);
constexpr int mostDrainedReads = 16;
constexpr qint32 lastPort = 65535;

quint16 portOf(qint32 port, qint32 first) {
  if (port < first || port > lastPort) throw InvalidCall(u"port %1"_s.arg(port));
  return static_cast<quint16>(port);
}

/// A peer of the older protocol as it is usually written, also where the socket serves both.
QString plainAddress(const QHostAddress& address) {
  bool isVersion4 = false;
  const QHostAddress version4(address.toIPv4Address(&isVersion4));
  return isVersion4 ? version4.toString() : address.toString();
}

/// Lets what was sent leave before the connection goes.
void finish(QTcpSocket& socket) {
  const QDeadlineTimer limit(closingLimit);
  const auto isUp = [&socket] { return socket.state() == QAbstractSocket::ConnectedState; };
  while (isUp() && socket.bytesToWrite() > 0 && !limit.hasExpired()) {
    if (!socket.waitForBytesWritten(static_cast<int>(limit.remainingTime()))) break;
  }
  // With something left unread the system would break the connection off, and what is still on its
  // way out with it.
  socket.readAll();
  for (int read = 0; read < mostDrainedReads && isUp() && socket.waitForReadyRead(0); ++read) {
    socket.readAll();
  }
  // With nothing left to send this ends the line in order.
  socket.abort();
}

}  // namespace

PeerSocket::PeerSocket(const QString& name, QObject* parent) : QObject(parent) {
  setObjectName(name);
  // Queued: whoever read from the portal is still at work with the answer.
  connect(&formsState().gate, &EventGate::opened, this, &PeerSocket::deliver, Qt::QueuedConnection);
}

PeerSocket::~PeerSocket() {
  if (socket_ != nullptr) socket_->disconnect(this);
}

SocketState PeerSocket::State() const {
  if (listener_ != nullptr) return SocketState::Listening;
  // Until its failure is told an attempt goes on, or whoever looks first would hush it up.
  if (error_) return SocketState::Connecting;
  if (socket_ == nullptr) return ended_;
  switch (socket_->state()) {
    case QAbstractSocket::HostLookupState:
      return SocketState::Resolving;
    case QAbstractSocket::ConnectingState:
      return SocketState::Connecting;
    case QAbstractSocket::ConnectedState:
      return socket_->bytesToWrite() > unsentLimit ? SocketState::Closing : SocketState::Connected;
    case QAbstractSocket::ClosingState:
      return SocketState::Closing;
    case QAbstractSocket::BoundState:
    case QAbstractSocket::ListeningState:
      return SocketState::Open;
    case QAbstractSocket::UnconnectedState:
      break;
  }
  return ended_;
}

void PeerSocket::Listen() {
  if (State() != SocketState::Closed) throw InvalidCall(u"Listen"_s);
  const quint16 port = portOf(LocalPort, 0);
  const QHostAddress address =
      LocalAddress.isEmpty() ? QHostAddress(QHostAddress::Any) : QHostAddress(LocalAddress);
  auto listener = std::make_unique<PeerListener>(this);
  if (address.isNull() || !listener->listen(address, port)) {
    throw InvalidCall(u"Listen: "_s + listener->errorString());
  }
  LocalPort = listener->serverPort();
  connect(listener.get(), &QTcpServer::newConnection, this, &PeerSocket::deliverSoon);
  listener_ = listener.release();
}

void PeerSocket::Connect() {
  const SocketState state = State();
  const bool isFree =
      state == SocketState::Closed || state == SocketState::Closing || state == SocketState::Failed;
  if (!isFree || RemoteHost.isEmpty()) throw InvalidCall(u"Connect"_s);
  const quint16 port = portOf(RemotePort, 1);
  Close();
  attempting_ = true;
  adopt(new QTcpSocket);
  socket_->connectToHost(RemoteHost, port);
}

void PeerSocket::Accept(PeerRequest& request) {
  if (request == nullptr) throw InvalidCall(u"Accept"_s);
  Close();
  adopt(request.release());
  RemoteHost = plainAddress(socket_->peerAddress());
  RemotePort = socket_->peerPort();
  if (socket_->state() != QAbstractSocket::ConnectedState) noteEnd();
  if (socket_->bytesAvailable() > 0) deliverSoon();
}

void PeerSocket::adopt(QTcpSocket* socket) {
  socket_ = socket;
  socket->setParent(this);
  socket->setReadBufferSize(frameLimit);
  socket->setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
  const auto beQuick = [socket] {
    // A frame is a read at the far end, so none should wait here for the next.
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
  };
  if (socket->state() == QAbstractSocket::ConnectedState) beQuick();
  connect(socket, &QTcpSocket::connected, this, [this, beQuick] {
    attempting_ = false;
    beQuick();
  });
  connect(socket, &QTcpSocket::errorOccurred, this, &PeerSocket::noteError);
  connect(socket, &QTcpSocket::disconnected, this, &PeerSocket::noteEnd);
  connect(socket, &QTcpSocket::readyRead, this, &PeerSocket::deliverSoon);
}

void PeerSocket::noteError() {
  if (!std::exchange(attempting_, false)) return;
  error_ = socket_->errorString();
  deliverSoon();
}

void PeerSocket::noteEnd() {
  if (ended_ == SocketState::Closed) ended_ = SocketState::Closing;
}

/// Never from within the socket's own signals: while one is being handled, it is not raised again.
void PeerSocket::deliverSoon() {
  QMetaObject::invokeMethod(this, &PeerSocket::deliver, Qt::QueuedConnection);
}

void PeerSocket::deliver() {
  if (formsState().gate.isHeld()) return;
  if (error_) {
    ended_ = SocketState::Failed;
    emit Error(*std::exchange(error_, std::nullopt));
  } else if (listener_ != nullptr && listener_->hasPendingConnections()) {
    PeerRequest request(listener_->nextPendingConnection());
    request->setParent(nullptr);
    emit ConnectionRequest(request);
  } else if (socket_ != nullptr && socket_->bytesAvailable() > 0) {
    emit DataArrival(socket_->bytesAvailable());
  }
}

void PeerSocket::SendData(const QByteArray& bytes) {
  if (State() != SocketState::Connected) throw InvalidCall(u"SendData"_s);
  if (socket_->write(bytes) != bytes.size()) throw InvalidCall(socket_->errorString());
  socket_->flush();
}

QByteArray PeerSocket::GetData() {
  if (socket_ == nullptr) throw InvalidCall(u"GetData"_s);
  return socket_->read(frameLimit);
}

void PeerSocket::Close() {
  attempting_ = false;
  error_.reset();
  if (auto* listener = std::exchange(listener_, nullptr)) {
    listener->close();
    listener->deleteLater();
  }
  if (auto* socket = std::exchange(socket_, nullptr)) {
    socket->disconnect(this);
    finish(*socket);
    socket->deleteLater();
  }
  ended_ = SocketState::Closed;
}

}  // namespace qinghe

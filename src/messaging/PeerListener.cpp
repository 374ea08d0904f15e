#include "messaging/PeerListener.h"

#include <QNetworkProxy>
#include <QTcpSocket>

#include "messaging/rules/peer_frame.h"

namespace qinghe {

namespace {

constexpr int backlog = 4;

}  // namespace

PeerListener::PeerListener(QObject* parent) : QTcpServer(parent) {
  // The proxy that pages go through is none for partners.
  setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
  setMaxPendingConnections(1);
  setListenBacklogSize(backlog);
}

void PeerListener::incomingConnection(qintptr descriptor) {
  auto* socket = new QTcpSocket(this);
  socket->setReadBufferSize(frameLimit);
  socket->setSocketDescriptor(descriptor);
  addPendingConnection(socket);
}

}  // namespace qinghe

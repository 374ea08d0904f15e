#include "messaging/PeerListener.h"

#include <QTcpSocket>

#include "messaging/rules/peer_frame.h"

namespace qinghe {

namespace {

constexpr int backlog = 4;

}  // namespace

PeerListener::PeerListener(QObject* parent) : QTcpServer(parent) {
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

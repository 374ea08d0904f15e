#pragma once

#include <QTcpServer>

namespace qinghe {

/// Lets one connection wait at a time; further ones stay with the system. What a waiting one has
/// sent is bounded like that of any other.
class PeerListener : public QTcpServer {
  Q_OBJECT

 public:
  explicit PeerListener(QObject* parent);

 protected:
  void incomingConnection(qintptr descriptor) override;
};

}  // namespace qinghe

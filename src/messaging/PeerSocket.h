#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "messaging/rules/SocketState.h"

class QTcpSocket;

namespace qinghe {

class PeerListener;

/// A connection that asks to be let in. Who leaves it where it is drops it.
using PeerRequest = std::unique_ptr<QTcpSocket>;

/// A TCP socket that listens, connects or is connected. Its events come from the event loop, one
/// after the other, and never while a portal read runs: what happened meanwhile comes behind it.
///
/// The end of a connection is no event; only the state tells. Operations that the state does not
/// allow throw `InvalidCall`.
class PeerSocket : public QObject {
  Q_OBJECT

 public:
  PeerSocket(const QString& name, QObject* parent);
  ~PeerSocket() override;

  QString LocalAddress;  ///< where to listen; empty for every address of the machine
  qint32 LocalPort = 0;
  QString RemoteHost;  ///< an address or a name; of an accepted connection, where it came from
  qint32 RemotePort = 0;

  /// A connection whose other end has stopped reading counts as gone.
  SocketState State() const;

  /// Throws `Failure` when the port cannot be had.
  void Listen();
  /// Begins to connect to the remote host and port. Failing later is an `Error` event.
  void Connect();
  /// Takes the connection; a listening socket closes itself before.
  void Accept(PeerRequest& request);
  /// Sends at once what the system takes at once; the rest goes when it can.
  void SendData(const QByteArray& bytes);
  /// What one read of the socket returns, `frameLimit` bytes at most.
  QByteArray GetData();
  /// From any state. What was sent before still goes out, which takes half a second at the most.
  void Close();

 signals:
  void ConnectionRequest(qinghe::PeerRequest& request);
  void DataArrival(qint64 bytesTotal);
  /// An attempt to connect has failed, the look-up of the name included.
  void Error(const QString& description);

 private:
  void adopt(QTcpSocket* socket);
  void noteError();
  void noteEnd();
  void deliver();
  void deliverSoon();

  QTcpSocket* socket_ = nullptr;
  PeerListener* listener_ = nullptr;
  SocketState ended_ = SocketState::Closed;  ///< the state once no connection lives
  bool attempting_ = false;
  std::optional<QString> error_;  ///< of an attempt that failed and was not told yet
};

}  // namespace qinghe

#include "messaging/free_port.h"

#include <QCoreApplication>
#include <QTcpServer>

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr int firstPort = 20'000;
constexpr int ports = 10'000;

bool isFree(int port) {
  for (const QString& host : {u"127.0.0.1"_s, u"127.0.0.2"_s}) {
    QTcpServer probe;
    if (!probe.listen(QHostAddress(host), static_cast<quint16>(port))) return false;
  }
  return true;
}

}  // namespace

int freePort() {
  static auto next = static_cast<int>(QCoreApplication::applicationPid() * 37 % ports);
  for (int tried = 0; tried < ports; ++tried) {
    const int port = firstPort + next++ % ports;
    if (isFree(port)) return port;
  }
  return 0;
}

}  // namespace qinghe

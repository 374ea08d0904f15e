#include "messaging/free_port.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <algorithm>
#include <deque>

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr int firstPort = 20'000;
constexpr int ports = 10'000;
constexpr std::size_t mostKept = 64;

bool isFree(int port) {
  for (const QString& host : {u"127.0.0.1"_s, u"127.0.0.2"_s}) {
    QTcpServer probe;
    if (!probe.listen(QHostAddress(host), static_cast<quint16>(port))) return false;
  }
  return true;
}

/// Keeps another test program from taking a port that this one has found free and not used yet: a
/// name that only one program can have. -1 when another has it.
int reserve(int port) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  const QByteArray text = "qinghe-test-port-" + QByteArray::number(port);
  std::copy(text.begin(), text.end(), name.sun_path + 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + text.size());
  if (bind(descriptor, reinterpret_cast<const sockaddr*>(&name), size) == 0) return descriptor;
  close(descriptor);
  return -1;
}

}  // namespace

int freePort() {
  static std::deque<int> kept;
  static auto next = static_cast<int>(QCoreApplication::applicationPid() * 37 % ports);
  for (int tried = 0; tried < ports; ++tried) {
    const int port = firstPort + next++ % ports;
    const int reservation = reserve(port);
    if (reservation < 0) continue;
    kept.push_back(reservation);
    if (kept.size() > mostKept) {
      close(kept.front());
      kept.pop_front();
    }
    if (isFree(port)) return port;
  }
  return 0;
}

}  // namespace qinghe

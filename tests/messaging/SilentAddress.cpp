#include "messaging/SilentAddress.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace qinghe {

namespace {

constexpr int waitingAtOnce = 16;
constexpr int mostRounds = 4;
constexpr int patience = 200;  // milliseconds until a connection counts as unanswered

sockaddr_in addressOf(int port, const QString& host) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<uint16_t>(port));
  inet_pton(AF_INET, host.toLatin1().constData(), &address.sin_addr);
  return address;
}

bool isAnswered(int descriptor) {
  pollfd one{descriptor, POLLOUT, 0};
  return poll(&one, 1, patience) == 1;
}

}  // namespace

SilentAddress::SilentAddress(int port, const QString& host) {
  const sockaddr_in address = addressOf(port, host);
  const auto* where = reinterpret_cast<const sockaddr*>(&address);
  descriptors_.append(socket(AF_INET, SOCK_STREAM, 0));
  const int reuse = 1;
  setsockopt(descriptors_[0], SOL_SOCKET, SO_REUSEADDR, &reuse, sizeof reuse);
  if (bind(descriptors_[0], where, sizeof address) != 0 || listen(descriptors_[0], 0) != 0) {
    ADD_FAILURE() << "cannot listen at " << host.toStdString() << ':' << port;
    return;
  }
  // So many that the queue is full whichever of them a busy machine answers late.
  for (int round = 0; round < mostRounds; ++round) {
    for (int waiting = 0; waiting < waitingAtOnce; ++waiting) {
      descriptors_.append(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
      connect(descriptors_.last(), where, sizeof address);
    }
    if (!isAnswered(descriptors_.last())) return;
  }
  ADD_FAILURE() << "the queue of " << host.toStdString() << " never fills";
}

SilentAddress::~SilentAddress() {
  for (const int descriptor : descriptors_) close(descriptor);
}

}  // namespace qinghe

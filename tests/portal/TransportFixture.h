#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <chrono>
#include <functional>
#include <future>
#include <list>
#include <utility>

#include "portal/GetHtml.h"
#include "portal/Inet.h"
#include "support/ScriptedServer.h"

/// An environment without proxy settings, put back at the end.
class ProxyEnvironment {
 public:
  ProxyEnvironment() {
    for (const char* name : names) {
      if (qEnvironmentVariableIsSet(name)) saved_.insert(name, qgetenv(name));
      qunsetenv(name);
    }
  }
  ~ProxyEnvironment() {
    for (const char* name : names) qunsetenv(name);
    for (auto entry = saved_.cbegin(); entry != saved_.cend(); ++entry)
      qputenv(entry.key().constData(), entry.value());
  }
  ProxyEnvironment(const ProxyEnvironment&) = delete;
  ProxyEnvironment& operator=(const ProxyEnvironment&) = delete;

 private:
  static constexpr const char* names[] = {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY",
                                          "all_proxy",  "ALL_PROXY",  "no_proxy",    "NO_PROXY"};
  QHash<QByteArray, QByteArray> saved_;
};

/// Holds an answer back until the test has seen what it wants to see before. Opens at its end.
class AnswerGate {
 public:
  AnswerGate() = default;
  ~AnswerGate() { open(); }
  AnswerGate(const AnswerGate&) = delete;
  AnswerGate& operator=(const AnswerGate&) = delete;

  void open() {
    if (!std::exchange(isOpen_, true)) promise_.set_value();
  }
  /// In front of an answer, for the server's thread, which may outlive the gate.
  std::function<void()> door() const {
    return [opening = opening_] { opening.wait_for(std::chrono::seconds(60)); };
  }

 private:
  bool isOpen_ = false;
  std::promise<void> promise_;
  std::shared_future<void> opening_ = promise_.get_future().share();
};

/// A port that refuses whoever comes, and that nobody else gets meanwhile.
class DeadPort {
 public:
  DeadPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    auto* raw = reinterpret_cast<sockaddr*>(&address_);
    EXPECT_EQ(::bind(socket_, raw, size), 0);
    EXPECT_EQ(::getsockname(socket_, raw, &size), 0);
  }
  ~DeadPort() { ::close(socket_); }
  DeadPort(const DeadPort&) = delete;
  DeadPort& operator=(const DeadPort&) = delete;

  quint16 number() const { return ntohs(address_.sin_port); }

 private:
  int socket_;
  sockaddr_in address_{};
};

/// A transfer control, a page reader on it, and a server to talk to.
class TransportFixture : public testing::Test {
 protected:
  using Clock = std::chrono::steady_clock;
  using Reply = ScriptedServer::Reply;

  TransportFixture() {
    inet.AccessType = 1;
    state.gWebServer = QStringLiteral("HTTP://") + server.host() + u'/';
  }

  QString url(const QString& path) const { return state.gWebServer + path; }

  /// Answers every request with the same bytes.
  void answer(const Reply& reply) {
    server.setHandler([reply](const QByteArray&) { return reply; });
  }
  void answer(const QByteArray& bytes, bool keepAlive = true) {
    Reply reply;
    reply.bytes = bytes;
    reply.keepAlive = keepAlive;
    answer(reply);
  }
  /// Answers every request with the page once the gate is open.
  void answerBehind(const AnswerGate& gate, const QByteArray& page) {
    server.setHandler([door = gate.door(), page](const QByteArray&) {
      door();
      return delayed({}, page);
    });
  }
  static Reply hanging() {
    Reply reply;
    reply.hang = true;
    return reply;
  }
  static Reply delayed(std::chrono::milliseconds delay, const QByteArray& page) {
    Reply reply;
    reply.bytes = ScriptedServer::ok(page);
    reply.delay = delay;
    return reply;
  }

  /// The first line of a recorded request, without its end.
  static QByteArray requestLine(const ScriptedServer& recorder, qsizetype index = 0) {
    const auto request = recorder.requests().value(index);
    return request.left(request.indexOf("\r\n"));
  }
  quint16 deadPort() { return deadPorts_.emplace_back().number(); }

  ProxyEnvironment environment;
  ScriptedServer server;
  qinghe::PortalState state;
  qinghe::Inet inet;
  qinghe::GetHtml html{state, inet};

 private:
  std::list<DeadPort> deadPorts_;
};

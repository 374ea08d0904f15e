#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <chrono>

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
  static quint16 deadPort() { return ScriptedServer().port(); }

  ProxyEnvironment environment;
  ScriptedServer server;
  qinghe::PortalState state;
  qinghe::Inet inet;
  qinghe::GetHtml html{state, inet};
};

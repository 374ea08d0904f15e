#include "HttpServer.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/use_awaitable.hpp>

#include "HttpConnection.h"

namespace qinghe::portal_server {

namespace net = boost::asio;

namespace {

constexpr auto flushAfter = std::chrono::milliseconds(200);
constexpr auto watchPause = std::chrono::milliseconds(100);
constexpr auto acceptPause = std::chrono::milliseconds(50);
constexpr auto plain = net::as_tuple(net::use_awaitable);

}  // namespace

HttpServer::HttpServer(net::io_context& context, Portal& portal, RequestLog& log, Limits limits)
    : context_(context),
      log_(log),
      limits_(limits),
      acceptor_(context),
      flushTimer_(context),
      farewellTimer_(context),
      watchTimer_(context),
      desk_(context, portal, limits, [this](const std::string& words) { tell(words); }) {}

HttpServer::Tcp::endpoint HttpServer::listen(const Tcp::endpoint& endpoint) {
  acceptor_.open(endpoint.protocol());
  acceptor_.set_option(net::socket_base::reuse_address(true));
  acceptor_.bind(endpoint);
  acceptor_.listen(net::socket_base::max_listen_connections);
  net::co_spawn(context_, accept(), net::detached);
  net::co_spawn(context_, watch(), net::detached);
  net::co_spawn(context_, desk_.keepHouse(), net::detached);
  return acceptor_.local_endpoint();
}

void HttpServer::stop() {
  if (stopping_) return;
  stopping_ = true;
  desk_.stop();
  boost::system::error_code ignored;
  acceptor_.close(ignored);
  for (HttpConnection* connection : connections_) connection->stopIfIdle();
  if (connections_.empty()) {
    watchTimer_.cancel();
    return;
  }
  farewellTimer_.expires_after(limits_.farewell);
  farewellTimer_.async_wait([this](boost::system::error_code error) {
    if (error) return;
    for (HttpConnection* connection : connections_) connection->cut();
  });
}

net::awaitable<void> HttpServer::accept() {
  net::steady_timer pause(context_);
  while (!stopping_) {
    auto [error, socket] = co_await acceptor_.async_accept(plain);
    if (error) {
      if (stopping_) break;
      // Out of descriptors, most likely; connections that end make room.
      pause.expires_after(acceptPause);
      co_await pause.async_wait(plain);
      continue;
    }
    auto connection = std::make_shared<HttpConnection>(*this, std::move(socket));
    if (!makeRoom(*connection)) {
      tell("too many connections, one turned away");
      continue;
    }
    net::co_spawn(
        context_, [connection] { return connection->serve(); }, net::detached);
  }
}

bool HttpServer::makeRoom(const HttpConnection& arrived) {
  std::size_t all = 0;
  std::size_t ofItsClient = 0;
  HttpConnection* oldest = nullptr;
  HttpConnection* oldestOfItsClient = nullptr;
  const auto older = [](HttpConnection* left, HttpConnection* right) {
    return !left || right->idleSince() < left->idleSince() ? right : left;
  };
  for (HttpConnection* each : connections_) {
    if (each->isCut()) continue;
    const bool related = each->address() == arrived.address();
    ++all;
    if (related) ++ofItsClient;
    if (each == &arrived || !each->isIdle()) continue;
    oldest = older(oldest, each);
    if (related) oldestOfItsClient = older(oldestOfItsClient, each);
  }
  HttpConnection* leaving = nullptr;
  if (ofItsClient > limits_.connectionsOfOneClient) {
    leaving = oldestOfItsClient;
  } else if (all > limits_.connections) {
    leaving = oldest;
  } else {
    return true;
  }
  if (leaving) leaving->cut();
  return leaving != nullptr;
}

// One look at all connections now and then costs less than a timer for each read and write.
net::awaitable<void> HttpServer::watch() {
  while (!stopping_ || !connections_.empty()) {
    watchTimer_.expires_after(watchPause);
    co_await watchTimer_.async_wait(plain);
    const auto now = std::chrono::steady_clock::now();
    for (HttpConnection* connection : connections_) connection->cutIfLate(now);
  }
}

void HttpServer::tell(const std::string& words) {
  log_.note(words);
  scheduleFlush();
}

void HttpServer::scheduleFlush() {
  if (flushDue_) return;
  flushDue_ = true;
  flushTimer_.expires_after(flushAfter);
  flushTimer_.async_wait([this](boost::system::error_code) {
    flushDue_ = false;
    log_.flush();
  });
}

}  // namespace qinghe::portal_server

#include "HttpServer.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/bind_executor.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/use_awaitable.hpp>

#include "AnswerPage.h"
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
      portal_(portal),
      log_(log),
      limits_(limits),
      acceptor_(context),
      flushTimer_(context),
      farewellTimer_(context),
      watchTimer_(context),
      houseTimer_(context) {}

HttpServer::~HttpServer() {
  writer_.join();
}

HttpServer::Tcp::endpoint HttpServer::listen(const Tcp::endpoint& endpoint) {
  acceptor_.open(endpoint.protocol());
  acceptor_.set_option(net::socket_base::reuse_address(true));
  acceptor_.bind(endpoint);
  acceptor_.listen(net::socket_base::max_listen_connections);
  net::co_spawn(context_, accept(), net::detached);
  net::co_spawn(context_, watch(), net::detached);
  net::co_spawn(context_, keepHouse(), net::detached);
  return acceptor_.local_endpoint();
}

void HttpServer::stop() {
  if (stopping_) return;
  stopping_ = true;
  boost::system::error_code ignored;
  acceptor_.close(ignored);
  houseTimer_.cancel();
  for (net::steady_timer* timer : heldBack_) timer->cancel();
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
    if (connections_.size() >= limits_.connections) {
      log_.note("too many connections, one turned away");
      scheduleFlush();
      continue;
    }
    auto connection = std::make_shared<HttpConnection>(*this, std::move(socket));
    net::co_spawn(
        context_, [connection] { return connection->serve(); }, net::detached);
  }
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

net::awaitable<PortalAnswer> HttpServer::answered(PortalRequest request) {
  if (!Portal::unwrapRelay(request)) {
    co_return unmarkedAnswer(200, "refused: the relay serves this portal's own pages");
  }
  noteVisit(request.address);
  const bool login = Portal::isLogin(request);
  if (login) {
    const auto wait = brake_.admit(request.address, LoginBrake::Clock::now());
    if (!wait) co_return unmarkedAnswer(200, "refused: too many failed logins");
    if (*wait > LoginBrake::Clock::duration{} && !co_await heldBack(*wait)) {
      co_return unmarkedAnswer(503, "refused: the server stops");
    }
  }
  if (!Portal::isWrite(request)) co_return portal_.answer(request);
  const auto work = [this, &request]() -> net::awaitable<PortalAnswer> {
    co_return portal_.answer(request);
  };
  PortalAnswer answer = co_await net::co_spawn(writer_, work, net::use_awaitable);
  if (login && answer.loginRefused) {
    brake_.failed(request.address, LoginBrake::Clock::now());
  } else if (login && answer.status == 200) {
    brake_.succeeded(request.address);
  }
  co_return answer;
}

net::awaitable<bool> HttpServer::heldBack(LoginBrake::Clock::duration wait) {
  if (stopping_) co_return false;
  net::steady_timer timer(context_, wait);
  heldBack_.insert(&timer);
  co_await timer.async_wait(plain);
  heldBack_.erase(&timer);
  co_return !stopping_;
}

net::awaitable<void> HttpServer::keepHouse() {
  while (!stopping_) {
    const auto now = Visits::Clock::now();
    visits_.forgetBefore(now - portal_.rules().offlineAfter);
    const auto work = [this, now, seen = visits_.all()]() -> net::awaitable<void> {
      portal_.keepHouse(seen, now);
      co_return;
    };
    const auto [failure] = co_await net::co_spawn(writer_, work, plain);
    tellFailure(failure);
    if (stopping_) break;
    houseTimer_.expires_after(limits_.house);
    co_await houseTimer_.async_wait(plain);
  }
}

// The request itself does not wait for this; it queues up behind what is written already.
void HttpServer::noteVisit(const std::string& address) {
  const auto now = Visits::Clock::now();
  if (!visits_.note(address, now)) return;
  net::co_spawn(
      writer_,
      [this, visit = Visit{address, now}]() -> net::awaitable<void> {
        portal_.welcome(visit);
        co_return;
      },
      net::bind_executor(context_,
                         [this](const std::exception_ptr& failure) { tellFailure(failure); }));
}

void HttpServer::tellFailure(const std::exception_ptr& failure) {
  if (!failure) return;
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception& error) {
    log_.note(std::string("housekeeping failed: ") + error.what());
    scheduleFlush();
  }
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

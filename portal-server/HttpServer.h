#pragma once

#include <boost/asio/awaitable.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <exception>
#include <set>
#include <string>

#include "Limits.h"
#include "LoginBrake.h"
#include "Portal.h"
#include "RequestLog.h"
#include "Visits.h"

namespace qinghe::portal_server {

class HttpConnection;

/// Listens, and serves each connection as a coroutine on the one thread that runs the context;
/// writing pages run one after the other on a thread of their own, so that reading never waits
/// for the disk.
class HttpServer {
 public:
  using Tcp = boost::asio::ip::tcp;

  HttpServer(boost::asio::io_context& context, Portal& portal, RequestLog& log, Limits limits);
  ~HttpServer();

  /// Starts to listen; port 0 takes a free one. The endpoint that it got. Throws on failure.
  Tcp::endpoint listen(const Tcp::endpoint& endpoint);
  /// Takes no more requests, lets those under way finish, and lets the context run dry.
  void stop();

 private:
  friend class HttpConnection;

  boost::asio::awaitable<void> accept();
  boost::asio::awaitable<PortalAnswer> answered(PortalRequest request);
  /// Waits out what the brake imposes; false when the server stops before that is over.
  boost::asio::awaitable<bool> heldBack(LoginBrake::Clock::duration wait);
  boost::asio::awaitable<void> keepHouse();
  void noteVisit(const std::string& address);
  void tellFailure(const std::exception_ptr& failure);
  void scheduleFlush();
  boost::asio::awaitable<void> watch();

  boost::asio::io_context& context_;
  Portal& portal_;
  RequestLog& log_;
  Limits limits_;
  LoginBrake brake_;
  Tcp::acceptor acceptor_;
  boost::asio::thread_pool writer_{1};
  boost::asio::steady_timer flushTimer_;
  boost::asio::steady_timer farewellTimer_;
  boost::asio::steady_timer watchTimer_;
  boost::asio::steady_timer houseTimer_;
  std::set<boost::asio::steady_timer*> heldBack_;
  Visits visits_;
  bool flushDue_ = false;
  bool stopping_ = false;
  std::set<HttpConnection*> connections_;
};

}  // namespace qinghe::portal_server

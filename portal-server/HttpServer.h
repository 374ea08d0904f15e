#pragma once

#include <boost/asio/awaitable.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <set>
#include <string>

#include "Limits.h"
#include "Portal.h"
#include "RequestDesk.h"
#include "RequestLog.h"

namespace qinghe::portal_server {

class HttpConnection;

/// Listens, and serves each connection as a coroutine on the one thread that runs the context.
///
/// Connections are bounded, in all and for one client; when there are too many, one that is idle
/// makes room.
class HttpServer {
 public:
  using Tcp = boost::asio::ip::tcp;

  HttpServer(boost::asio::io_context& context, Portal& portal, RequestLog& log, Limits limits);

  /// Starts to listen; port 0 takes a free one. The endpoint that it got. Throws on failure.
  Tcp::endpoint listen(const Tcp::endpoint& endpoint);
  /// Takes no more requests, lets those under way finish, and lets the context run dry.
  void stop();

 private:
  friend class HttpConnection;

  boost::asio::awaitable<void> accept();
  /// Whether there is room for one that has come, if need be in place of one that is idle.
  bool makeRoom(const HttpConnection& arrived);
  void tell(const std::string& words);
  void scheduleFlush();
  boost::asio::awaitable<void> watch();

  boost::asio::io_context& context_;
  RequestLog& log_;
  Limits limits_;
  Tcp::acceptor acceptor_;
  boost::asio::steady_timer flushTimer_;
  boost::asio::steady_timer farewellTimer_;
  boost::asio::steady_timer watchTimer_;
  bool flushDue_ = false;
  bool stopping_ = false;
  std::set<HttpConnection*> connections_;
  std::size_t unsent_ = 0;  ///< bytes of answers that clients have not taken yet
  RequestDesk desk_;
};

}  // namespace qinghe::portal_server

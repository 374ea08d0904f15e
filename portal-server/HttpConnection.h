#pragma once

#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "HttpServer.h"

namespace qinghe::portal_server {

/// One client's connection: reads requests, has them answered, writes each answer at once.
class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
 public:
  HttpConnection(HttpServer& server, boost::asio::ip::tcp::socket socket);
  ~HttpConnection();

  /// Runs until the client leaves, breaks a limit, or the server stops.
  boost::asio::awaitable<void> serve();
  void stopIfIdle();
  void cut();
  bool isCut() const { return !socket_.is_open(); }
  const std::string& address() const { return address_; }
  /// Whether nothing of a request has come, and since when.
  bool isIdle() const { return idle_; }
  std::chrono::steady_clock::time_point idleSince() const { return idleSince_; }
  /// Cuts the connection if the client has let its time run out.
  void cutIfLate(std::chrono::steady_clock::time_point now);

 private:
  static constexpr auto never = std::chrono::steady_clock::time_point::max();
  using Parser = boost::beast::http::request_parser<boost::beast::http::string_body>;

  /// What came, or the status to turn it away with.
  struct Incoming {
    unsigned refused = 0;
    std::string note;
    bool complete = false;  ///< whether there is something to answer
    std::string method;
    std::string target;
    bool http11 = true;
    std::string host;
    std::string origin;
    bool byBrowser = false;
    std::string contentType;
    std::string body;
    bool keepAlive = false;
  };

  static PortalAnswer refusal(const Incoming& incoming);
  boost::asio::awaitable<Incoming> receive();
  /// The size of the first line and headers, blank line included; 0 on failure, with `refused`.
  boost::asio::awaitable<std::size_t> receiveHead(Incoming& incoming);
  boost::asio::awaitable<void> receiveBody(Parser& parser, Incoming& incoming);
  boost::asio::awaitable<void> drain();
  /// From now on the client has so long for what it has to do, and more for many bytes.
  void allow(std::chrono::milliseconds time, std::size_t bytes = 0);
  /// Sends what did not fit the socket's buffer at once; false when the client does not take it.
  boost::asio::awaitable<bool> sendRest(std::string_view rest);
  boost::asio::awaitable<bool> send(const Incoming& incoming, PortalAnswer answer);
  boost::asio::awaitable<PortalAnswer> answer(const Incoming& incoming, PortalRequest& request);
  void log(const PortalRequest& request, const PortalAnswer& answer, std::size_t bytes,
           std::chrono::steady_clock::time_point began);

  HttpServer& server_;
  boost::asio::ip::tcp::socket socket_;
  boost::beast::flat_buffer buffer_;
  std::string address_;
  bool idle_ = true;
  std::chrono::steady_clock::time_point idleSince_ = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point deadline_ = never;
};

}  // namespace qinghe::portal_server

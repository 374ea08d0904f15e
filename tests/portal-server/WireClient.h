#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <string>
#include <string_view>

#include "AnswerText.h"

/// One plain connection to a server on 127.0.0.1; every wait has a limit.
class WireClient {
 public:
  struct Answer {
    unsigned status = 0;  ///< 0: the connection ended without a whole answer
    std::string head;
    std::string body;
    AnswerText text() const { return AnswerText::read(body); }
  };

  explicit WireClient(unsigned short port);
  /// The same from another address of the loopback network, as if on another machine.
  WireClient(unsigned short port, const std::string& from);

  bool send(std::string_view bytes);
  /// Reads one answer with its length, or what came until the end.
  Answer receive(bool headOnly = false);
  Answer get(const std::string& target);
  Answer post(const std::string& target, const std::string& body);
  /// Whether the server closes the connection, waiting for that within the limit.
  bool isClosed();

 private:
  bool readMore();

  boost::asio::io_context context_;
  boost::asio::ip::tcp::socket socket_;
  std::string buffer_;
};

#include "WireClient.h"

#include <sys/socket.h>

#include <array>
#include <boost/asio/write.hpp>
#include <cerrno>
#include <charconv>

namespace asio = boost::asio;

namespace {

constexpr long limitSeconds = 60;

std::size_t contentLength(std::string_view head) {
  constexpr std::string_view name = "Content-Length: ";
  const std::size_t at = head.find(name);
  if (at == std::string_view::npos) return 0;
  std::size_t length = 0;
  std::from_chars(head.data() + at + name.size(), head.data() + head.size(), length);
  return length;
}

}  // namespace

WireClient::WireClient(unsigned short port) : WireClient(port, "127.0.0.1") {}

WireClient::WireClient(unsigned short port, const std::string& from) : socket_(context_) {
  socket_.open(asio::ip::tcp::v4());
  socket_.bind({asio::ip::make_address(from), 0});
  socket_.connect({asio::ip::address_v4::loopback(), port});
  const timeval limit{.tv_sec = limitSeconds, .tv_usec = 0};
  ::setsockopt(socket_.native_handle(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  ::setsockopt(socket_.native_handle(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
}

bool WireClient::send(std::string_view bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t size =
        ::send(socket_.native_handle(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
    if (size <= 0) return false;
    sent += static_cast<std::size_t>(size);
  }
  return true;
}

bool WireClient::readMore() {
  std::array<char, 65536> block{};
  errno = 0;  // an end in order does not set it
  const ssize_t size = ::recv(socket_.native_handle(), block.data(), block.size(), 0);
  if (size <= 0) return false;
  buffer_.append(block.data(), static_cast<std::size_t>(size));
  return true;
}

WireClient::Answer WireClient::receive(bool headOnly) {
  Answer answer;
  std::size_t end = 0;
  while ((end = buffer_.find("\r\n\r\n")) == std::string::npos) {
    if (!readMore()) return answer;
  }
  answer.head = buffer_.substr(0, end + 2);
  buffer_.erase(0, end + 4);
  const std::size_t length = headOnly ? 0 : contentLength(answer.head);
  while (buffer_.size() < length) {
    if (!readMore()) return answer;
  }
  answer.body = buffer_.substr(0, length);
  buffer_.erase(0, length);
  std::from_chars(answer.head.data() + 9, answer.head.data() + 12, answer.status);
  return answer;
}

WireClient::Answer WireClient::get(const std::string& target) {
  send("GET " + target + " HTTP/1.1\r\nHost: portal\r\n\r\n");
  return receive();
}

WireClient::Answer WireClient::post(const std::string& target, const std::string& body) {
  send("POST " + target +
       " HTTP/1.1\r\nHost: portal\r\nContent-Type: "
       "application/x-www-form-urlencoded\r\nContent-Length: " +
       std::to_string(body.size()) + "\r\n\r\n" + body);
  return receive();
}

bool WireClient::isClosed() {
  while (readMore()) {
  }
  return errno != EAGAIN && errno != EWOULDBLOCK;
}

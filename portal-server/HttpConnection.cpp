#include "HttpConnection.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/status.hpp>
#include <string_view>
#include <tuple>

#include "AnswerPage.h"
#include "Multipart.h"
#include "RequestLine.h"
#include "picture_pages.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace net = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

namespace {

constexpr auto plain = net::as_tuple(net::use_awaitable);
constexpr std::size_t readAtOnce = 16 * 1024;
constexpr std::size_t mostKeptBuffer = 64 * 1024;
constexpr std::size_t bodyReadAtOnce = 64 * 1024;
constexpr std::size_t mostDrained = 16U << 20U;
constexpr auto drainTime = std::chrono::seconds(2);
constexpr std::string_view headEnd = "\r\n\r\n";
constexpr std::string_view continueLine = "HTTP/1.1 100 Continue\r\n\r\n";
constexpr std::string_view browserPolicy =
    "default-src 'none'; style-src 'unsafe-inline'; img-src 'self'; form-action 'self'; "
    "base-uri 'none'; frame-ancestors 'none'";
// In a browser somebody else's page would run as one of ours.
constexpr std::string_view foreignPolicy = "sandbox; default-src 'none'";

std::string addressOf(const net::ip::tcp::socket& socket) {
  boost::system::error_code error;
  const auto endpoint = socket.remote_endpoint(error);
  if (error) return {};
  net::ip::address address = endpoint.address();
  if (address.is_v6() && address.to_v6().is_v4_mapped()) {
    address = net::ip::make_address_v4(net::ip::v4_mapped, address.to_v6());
  }
  return address.to_string();
}

const boost::system::error_category& httpErrors() {
  return http::make_error_code(http::error::partial_message).category();
}

std::string_view viewOf(const beast::flat_buffer& buffer) {
  const auto data = buffer.cdata();
  return {static_cast<const char*>(data.data()), data.size()};
}

std::string_view viewOf(beast::string_view text) {
  return {text.data(), text.size()};
}

// What no browser leaves out all of, and the client never sends. A page may keep its browser from
// telling where it comes from, but not from telling its name.
bool isBrowsers(const http::fields& headers) {
  for (const char* telling : {"Origin", "Referer", "Sec-Fetch-Site", "Sec-Fetch-Mode"}) {
    if (headers.find(telling) != headers.end()) return true;
  }
  return lowered(viewOf(headers[http::field::user_agent])).starts_with("mozilla/");
}

// What a form or the client's own lines of "a=1&b=2" posted. False when a form is broken.
bool addPosted(PortalRequest& request, std::string_view contentType, std::string_view body) {
  request.posted = true;
  const auto boundary = formBoundary(contentType);
  if (!boundary) {
    request.parameters.add(body);
    return true;
  }
  const auto parts = parseForm(body, *boundary);
  if (!parts) return false;
  for (const FormPart& part : *parts) {
    if (part.isFile)
      request.file = part.bytes;
    else
      request.parameters.add(part.name, part.bytes);
  }
  return true;
}

std::string answerHead(const PortalAnswer& page, bool http11, bool keep) {
  std::string head(http11 ? "HTTP/1.1 " : "HTTP/1.0 ");
  head.append(std::to_string(page.status)).append(" ");
  head.append(viewOf(http::obsolete_reason(static_cast<http::status>(page.status))));
  head.append("\r\nServer: qinghe-portal\r\nContent-Type: ");
  head.append(page.contentType.empty() ? "text/html; charset=GBK" : page.contentType);
  if (!page.location.empty()) head.append("\r\nLocation: ").append(page.location);
  head.append("\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n");
  if (page.forBrowser) {
    head.append("Content-Security-Policy: ").append(browserPolicy).append("\r\n");
  } else if (page.foreign) {
    head.append("Content-Security-Policy: ").append(foreignPolicy).append("\r\n");
  }
  head.append(keep ? "Connection: keep-alive" : "Connection: close");
  head.append("\r\nContent-Length: ").append(std::to_string(page.body.size()));
  return head.append("\r\n\r\n");
}

}  // namespace

// Somebody who sent too big a picture gets words, not an empty page.
PortalAnswer HttpConnection::refusal(const Incoming& incoming) {
  const bool picture =
      incoming.refused == 413 && parseTarget(incoming.target).path == pictureUploadPath;
  PortalAnswer answer = picture ? imageTooBigPage() : unmarkedAnswer(incoming.refused, {});
  answer.note = incoming.note;
  return answer;
}

HttpConnection::HttpConnection(HttpServer& server, net::ip::tcp::socket socket)
    : server_(server),
      socket_(std::move(socket)),
      // The library gathers whatever stands between two chunks for as long as there is room.
      buffer_(server.limits_.requestLine + server.limits_.headers + 2 * bodyReadAtOnce),
      address_(addressOf(socket_)) {
  boost::system::error_code ignored;
  socket_.set_option(net::ip::tcp::no_delay(true), ignored);
  socket_.non_blocking(true, ignored);
  server_.connections_.insert(this);
}

HttpConnection::~HttpConnection() {
  server_.connections_.erase(this);
  if (server_.stopping_ && server_.connections_.empty()) {
    server_.farewellTimer_.cancel();
    server_.watchTimer_.cancel();
  }
}

void HttpConnection::stopIfIdle() {
  if (idle_) cut();
}

void HttpConnection::cut() {
  boost::system::error_code ignored;
  socket_.close(ignored);
}

void HttpConnection::cutIfLate(std::chrono::steady_clock::time_point now) {
  if (now < deadline_) return;
  deadline_ = never;
  if (!idle_) {
    server_.tell(address_ + " cut off: too slow");
  }
  cut();
}

void HttpConnection::allow(std::chrono::milliseconds time, std::size_t bytes) {
  const auto more =
      static_cast<std::chrono::milliseconds::rep>(bytes / server_.limits_.slowestRate);
  deadline_ = std::chrono::steady_clock::now() + time + std::chrono::milliseconds(more);
}

net::awaitable<void> HttpConnection::serve() {
  const auto self = shared_from_this();
  for (bool goOn = true; goOn && !server_.stopping_;) {
    const Incoming incoming = co_await receive();
    if (incoming.refused == 0 && !incoming.complete) break;
    // While the answer is made, nothing is the client's to do.
    deadline_ = never;
    const auto began = std::chrono::steady_clock::now();
    PortalRequest request{.path = {}, .parameters = {}, .address = address_, .host = {}};
    PortalAnswer page = co_await answer(incoming, request);
    log(request, page, page.body.size(), began);
    goOn = co_await send(incoming, std::move(page));
    if (incoming.refused != 0) co_await drain();
    // What one long request needed is not kept while its connection is idle.
    if (buffer_.capacity() > mostKeptBuffer) buffer_.shrink_to_fit();
  }
  boost::system::error_code ignored;
  socket_.shutdown(net::ip::tcp::socket::shutdown_send, ignored);
}

// Closing while the rest of a refused request still arrives would reset the connection, and the
// client would never see why.
net::awaitable<void> HttpConnection::drain() {
  boost::system::error_code ignored;
  socket_.shutdown(net::ip::tcp::socket::shutdown_send, ignored);
  allow(drainTime);
  for (std::size_t drained = 0; drained < mostDrained;) {
    buffer_.clear();
    const auto [error, size] = co_await socket_.async_read_some(buffer_.prepare(readAtOnce), plain);
    if (error) co_return;
    drained += size;
  }
}

net::awaitable<HttpConnection::Incoming> HttpConnection::receive() {
  Incoming incoming;
  const std::size_t size = co_await receiveHead(incoming);
  idle_ = false;
  if (size == 0) co_return incoming;
  const std::string_view head = viewOf(buffer_).substr(0, size);
  const std::size_t lineEnd = head.find("\r\n");
  const auto line = parseRequestLine(head.substr(0, lineEnd));
  if (!line) {
    incoming.refused = 400;
    incoming.note = "broken request line";
    co_return incoming;
  }
  incoming.method = line->method;
  incoming.target = line->target;
  incoming.http11 = line->http11;
  incoming.complete = true;
  // The headers go through the library's parser behind a request line that it knows.
  std::string neutral(line->method == "POST" ? "POST" : "GET");
  neutral.append(line->http11 ? " / HTTP/1.1" : " / HTTP/1.0").append(head.substr(lineEnd));
  Parser parser;
  parser.body_limit(server_.limits_.body);
  parser.header_limit(static_cast<std::uint32_t>(neutral.size()));
  boost::system::error_code error;
  parser.put(net::buffer(neutral), error);
  buffer_.consume(size);
  if (error || !parser.is_header_done()) {
    incoming.refused = error == http::error::body_limit ? 413 : 400;
    incoming.note = "broken headers";
    co_return incoming;
  }
  incoming.host = lowered(viewOf(parser.get()[http::field::host]));
  incoming.origin = lowered(viewOf(parser.get()[http::field::origin]));
  incoming.byBrowser = isBrowsers(parser.get());
  incoming.contentType = viewOf(parser.get()[http::field::content_type]);
  incoming.keepAlive = parser.keep_alive();
  if (!parser.is_done()) co_await receiveBody(parser, incoming);
  incoming.body = std::move(parser.get().body());
  co_return incoming;
}

net::awaitable<std::size_t> HttpConnection::receiveHead(Incoming& incoming) {
  idle_ = buffer_.size() == 0;
  idleSince_ = std::chrono::steady_clock::now();
  bool bounded = !idle_;
  allow(idle_ ? server_.limits_.idle : server_.limits_.transfer);
  std::size_t searched = 0;
  std::size_t lineEnd = std::string_view::npos;
  for (;;) {
    // Whatever has been looked at is not looked at again, however few bytes come at a time.
    const std::string_view got = viewOf(buffer_);
    const std::size_t end = got.find(headEnd, searched);
    if (lineEnd == std::string_view::npos) {
      lineEnd = got.substr(0, server_.limits_.requestLine + 2).find("\r\n", searched);
    }
    if (lineEnd == std::string_view::npos && got.size() > server_.limits_.requestLine) {
      incoming.refused = 414;
      incoming.note = "request line is too long";
      co_return 0;
    }
    const std::size_t headers = std::min(end, got.size()) - std::min(lineEnd, got.size());
    if (lineEnd != std::string_view::npos && headers > server_.limits_.headers) {
      incoming.refused = 431;
      incoming.note = "headers are too long";
      co_return 0;
    }
    if (end != std::string_view::npos) co_return end + headEnd.size();
    searched = got.size() < headEnd.size() ? 0 : got.size() - headEnd.size() + 1;
    if (!bounded && !got.empty()) {
      // From its first byte on, a request has to come within one bound, however it dribbles.
      bounded = true;
      allow(server_.limits_.transfer);
    }
    const auto [error, size] = co_await socket_.async_read_some(buffer_.prepare(readAtOnce), plain);
    if (error) co_return 0;
    idle_ = false;
    buffer_.commit(size);
  }
}

net::awaitable<void> HttpConnection::receiveBody(Parser& parser, Incoming& incoming) {
  allow(server_.limits_.transfer, parser.content_length().value_or(0));
  if (sameName(viewOf(parser.get()[http::field::expect]), "100-continue")) {
    co_await net::async_write(socket_, net::buffer(continueLine), plain);
  }
  const auto [error, size] = co_await http::async_read(socket_, buffer_, parser, plain);
  if (!error) co_return;
  if (error == http::error::body_limit) {
    incoming.refused = 413;
    incoming.note = "body is too large";
  } else if (parser.is_done() || error.category() != httpErrors()) {
    incoming.complete = false;
  } else {
    incoming.refused = 400;
    incoming.note = "broken body";
  }
}

net::awaitable<PortalAnswer> HttpConnection::answer(const Incoming& incoming,
                                                    PortalRequest& request) {
  if (incoming.refused != 0) co_return refusal(incoming);
  const std::string_view method = incoming.method;
  if (method != "GET" && method != "HEAD" && method != "POST") {
    co_return unmarkedAnswer(405, "unknown method");
  }
  const RequestTarget target = parseTarget(incoming.target);
  request.path = target.path;
  request.host = incoming.host.empty() ? target.host : incoming.host;
  request.parameters.add(target.query);
  if (method == "POST" && !addPosted(request, incoming.contentType, incoming.body)) {
    co_return unmarkedAnswer(400, "broken form");
  }
  request.origin = incoming.origin;
  request.byBrowser = incoming.byBrowser;
  co_return co_await server_.desk_.answered(request);
}

net::awaitable<bool> HttpConnection::send(const Incoming& incoming, PortalAnswer page) {
  const bool keep = incoming.refused == 0 && incoming.keepAlive && !server_.stopping_;
  std::string wire = answerHead(page, incoming.http11, keep);
  if (incoming.method != "HEAD") wire += page.body;
  // Nearly every answer fits the socket's buffer at once; only the rest of one is waited for.
  boost::system::error_code error;
  std::size_t sent = socket_.write_some(net::buffer(wire), error);
  if (error == net::error::would_block) error.clear();
  if (error) co_return false;
  if (sent < wire.size() && !co_await sendRest(std::string_view(wire).substr(sent))) {
    co_return false;
  }
  co_return keep;
}

net::awaitable<bool> HttpConnection::sendRest(std::string_view rest) {
  if (rest.size() > server_.limits_.unsent - std::min(server_.unsent_, server_.limits_.unsent)) {
    server_.tell(address_ + " cut off: too much is on its way already");
    cut();
    co_return false;
  }
  allow(server_.limits_.transfer, rest.size());
  server_.unsent_ += rest.size();
  const auto [error, sent] = co_await net::async_write(socket_, net::buffer(rest), plain);
  server_.unsent_ -= rest.size();
  co_return !error;
}

void HttpConnection::log(const PortalRequest& request, const PortalAnswer& page, std::size_t bytes,
                         std::chrono::steady_clock::time_point began) {
  const auto time = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - began);
  server_.log_.add({.address = address_,
                    .page = request.path,
                    .table = request.parameters.bytes("stable"),
                    .status = page.status,
                    .bytes = bytes,
                    .time = time,
                    .note = page.note});
  server_.scheduleFlush();
}

}  // namespace qinghe::portal_server

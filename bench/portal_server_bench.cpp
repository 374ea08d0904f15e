// One page of 20 rows of 10 columns from the portal server, at 1 and at 16 connections, against a
// bare Beast server that sends a fixed body of the same size. Both run in this process, on
// threads of their own, and are asked in turn by the same client. That client asks for one page
// again and again, which the portal keeps; beside that stands what it does when no request is like
// another and it reads every page from its store.

#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <boost/asio/as_tuple.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "DemoData.h"
#include "HttpServer.h"
#include "SqliteStore.h"

namespace {

namespace net = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using Tcp = net::ip::tcp;
using Clock = std::chrono::steady_clock;
using namespace qinghe::portal_server;

constexpr auto plain = net::as_tuple(net::use_awaitable);
constexpr int rounds = 5;
constexpr int requestsARound = 8'000;
const std::string request =
    "GET /_vti_product/_vti_detail_onepage.asp?STABLE=XIMU"
    "&STRDATA=id,ximu_no,ximu,jigex,zhko,gesh,lebi,chye,qiye,noth,"
    "&STOTHER=QIYE_ID%3D1&STPAGE=2&STPAGESIZE=20&STORDER=NOTH,ID HTTP/1.1\r\n"
    "Host: 127.0.0.1\r\n\r\n";

class PortalUnderTest {
 public:
  PortalUnderTest() {
    DemoData::fill(store_);
    port_ = server_.listen({net::ip::address_v4::loopback(), 0}).port();
    thread_ = std::thread([this] { context_.run(); });
  }
  ~PortalUnderTest() {
    net::post(context_, [this] { server_.stop(); });
    thread_.join();
  }
  unsigned short port() const { return port_; }

 private:
  std::string file(const char* name) const {
    return folder_.filePath(QString::fromLatin1(name)).toStdString();
  }

  QTemporaryDir folder_;
  SqliteStore store_{file("portal.db")};
  Portal portal_{store_};
  RequestLog log_{file("portal.log")};
  net::io_context context_{1};
  HttpServer server_{context_, portal_, log_, Limits{}};
  unsigned short port_ = 0;
  std::thread thread_;
};

class BareServer {
 public:
  explicit BareServer(std::string body) : body_(std::move(body)) {
    net::co_spawn(context_, accept(), net::detached);
    thread_ = std::thread([this] { context_.run(); });
  }
  ~BareServer() {
    context_.stop();
    thread_.join();
  }
  unsigned short port() const { return acceptor_.local_endpoint().port(); }

 private:
  net::awaitable<void> accept() {
    for (;;) {
      auto [error, socket] = co_await acceptor_.async_accept(plain);
      if (error) co_return;
      socket.set_option(Tcp::no_delay(true));
      net::co_spawn(context_, serve(beast::tcp_stream(std::move(socket))), net::detached);
    }
  }

  net::awaitable<void> serve(beast::tcp_stream stream) {
    beast::flat_buffer buffer;
    for (;;) {
      stream.expires_after(std::chrono::seconds(30));
      http::request<http::string_body> incoming;
      const auto [readError, read] = co_await http::async_read(stream, buffer, incoming, plain);
      if (readError) co_return;
      http::response<http::string_body> answer{http::status::ok, incoming.version()};
      answer.set(http::field::server, "bare");
      answer.set(http::field::content_type, "text/html; charset=GBK");
      answer.keep_alive(incoming.keep_alive());
      answer.body() = body_;
      answer.prepare_payload();
      const auto [writeError, written] = co_await http::async_write(stream, answer, plain);
      if (writeError) co_return;
    }
  }

  std::string body_;
  net::io_context context_{1};
  Tcp::acceptor acceptor_{context_, {net::ip::address_v4::loopback(), 0}};
  std::thread thread_;
};

// One answer, to learn how many bytes each of them has.
http::response<http::string_body> firstAnswer(unsigned short port) {
  net::io_context context;
  Tcp::socket socket(context);
  socket.connect({net::ip::address_v4::loopback(), port});
  net::write(socket, net::buffer(request));
  beast::flat_buffer buffer;
  http::response<http::string_body> answer;
  http::read(socket, buffer, answer);
  return answer;
}

struct Load {
  std::vector<double> microseconds;  // of each request
  double perSecond = 0;
};

enum class Pages { Same, Distinct };

// The same page, by a request that has not come before.
std::string distinctRequest() {
  static int number = 0;
  std::string distinct = request;
  return distinct.insert(distinct.find(" HTTP/1.1"), "&N=" + std::to_string(++number));
}

net::awaitable<void> ask(unsigned short port, std::size_t answerSize, int count, Pages pages,
                         Load& load) {
  Tcp::socket socket(co_await net::this_coro::executor);
  socket.connect({net::ip::address_v4::loopback(), port});
  socket.set_option(Tcp::no_delay(true));
  std::vector<char> answer(answerSize);
  for (int i = 0; i < count; ++i) {
    const std::string asked = pages == Pages::Same ? request : distinctRequest();
    const auto began = Clock::now();
    co_await net::async_write(socket, net::buffer(asked), net::use_awaitable);
    co_await net::async_read(socket, net::buffer(answer), net::use_awaitable);
    load.microseconds.push_back(
        std::chrono::duration<double, std::micro>(Clock::now() - began).count());
  }
}

Load run(unsigned short port, std::size_t answerSize, int connections, Pages pages) {
  Load load;
  net::io_context context(1);
  for (int i = 0; i < connections; ++i) {
    net::co_spawn(context, ask(port, answerSize, requestsARound / connections, pages, load),
                  net::detached);
  }
  const auto began = Clock::now();
  context.run();
  const double seconds = std::chrono::duration<double>(Clock::now() - began).count();
  load.perSecond = static_cast<double>(load.microseconds.size()) / seconds;
  return load;
}

std::size_t wireSize(const http::response<http::string_body>& answer) {
  std::size_t size = answer.body().size();
  beast::multi_buffer head;
  auto copy = answer;
  http::response_serializer<http::string_body> serializer(copy);
  serializer.split(true);
  beast::error_code error;
  while (!serializer.is_header_done()) {
    serializer.next(error, [&](beast::error_code&, const auto& buffers) {
      size += beast::buffer_bytes(buffers);
      serializer.consume(beast::buffer_bytes(buffers));
    });
  }
  return size;
}

double percentile(std::vector<double> values, double part) {
  const auto at = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + at, values.end());
  return values[static_cast<std::size_t>(at)];
}

struct Summary {
  std::vector<double> perSecond;
  std::vector<double> microseconds;

  void add(const Load& load) {
    perSecond.push_back(load.perSecond);
    microseconds.insert(microseconds.end(), load.microseconds.begin(), load.microseconds.end());
  }
  double median() const { return percentile(perSecond, 0.5); }
  double p50() const { return percentile(microseconds, 0.5); }
  double p99() const { return percentile(microseconds, 0.99); }
};

bool compare(int connections, unsigned short ours, std::size_t ourSize, unsigned short bare,
             std::size_t bareSize) {
  Summary portal;
  Summary readAnew;
  Summary beastAlone;
  for (int round = 0; round < rounds; ++round) {
    portal.add(run(ours, ourSize, connections, Pages::Same));
    readAnew.add(run(ours, ourSize, connections, Pages::Distinct));
    beastAlone.add(run(bare, bareSize, connections, Pages::Same));
  }
  const double ratio = portal.median() / beastAlone.median();
  const double tail = portal.p99() / portal.p50();
  std::printf("%2d connections: portal %8.0f/s  bare %8.0f/s  ratio %.2f (at least 0.5)\n",
              connections, portal.median(), beastAlone.median(), ratio);
  std::printf("                p50 %.0f us  p99 %.0f us  p99/p50 %.1f (under 5); bare %.0f, %.0f\n",
              portal.p50(), portal.p99(), tail, beastAlone.p50(), beastAlone.p99());
  std::printf("                no page twice %8.0f/s  ratio %.2f  p50 %.0f us  p99 %.0f us\n",
              readAnew.median(), readAnew.median() / beastAlone.median(), readAnew.p50(),
              readAnew.p99());
  return ratio >= 0.5 && tail < 5;
}

}  // namespace

int main() {
  const PortalUnderTest portal;
  const auto page = firstAnswer(portal.port());
  const BareServer bare(page.body());
  const auto fixed = firstAnswer(bare.port());
  std::printf("page of %zu bytes, %d requests a round, %d rounds each\n", page.body().size(),
              requestsARound, rounds);
  bool good = true;
  for (const int connections : {1, 16}) {
    good =
        compare(connections, portal.port(), wireSize(page), bare.port(), wireSize(fixed)) && good;
  }
  return good ? 0 : 1;
}

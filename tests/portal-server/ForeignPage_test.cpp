#include "ForeignPage.h"

#include <gtest/gtest.h>

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <future>
#include <thread>

#include "OwnNetwork.h"
#include "support/ScriptedServer.h"
#include "values/code_page.h"

using namespace qinghe::portal_server;
using namespace std::chrono_literals;
using Reply = ScriptedServer::Reply;
using boost::asio::ip::tcp;

namespace {

class ForeignPages : public testing::Test {
 protected:
  std::string address(const std::string& path = "/") const {
    return "http://127.0.0.1:" + std::to_string(server.port()) + path;
  }
  void answer(const QByteArray& bytes) {
    server.setHandler([bytes](const QByteArray&) { return Reply{.bytes = bytes}; });
  }
  static QByteArray answerOf(const QByteArray& headers, const QByteArray& body) {
    return "HTTP/1.1 200 OK\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
           "\r\n\r\n" + body;
  }
  static QByteArray redirectTo(const std::string& place) {
    return "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " +
           QByteArray::fromStdString(place) + "\r\n\r\n";
  }
  ForeignPage fetch(const std::string& url, const MayConnect& mayConnect = anywhere) {
    return fetchForeignPage(url, limits, mayConnect, stop);
  }
  static bool anywhere(const boost::asio::ip::tcp::endpoint&) { return true; }
  static bool outside(const boost::asio::ip::tcp::endpoint& place) {
    return isOutsideOwnNetwork(place.address());
  }

  ScriptedServer server;
  ForeignLimits limits{.time = 60s, .size = 100'000, .redirects = 3};
  std::atomic<bool> stop = false;
};

TEST_F(ForeignPages, ComeAsTheirOwnBytesWithTheCharsetOfTheirHeader) {
  const QByteArray body("\xCD\xAD\0\xFF page", 9);
  answer(answerOf("Content-Type: text/html; Charset=\"Big5\"\r\n", body));
  const auto page = fetch(address("/a?b=c&d"));
  EXPECT_EQ(page.failure, "");
  EXPECT_EQ(QByteArray::fromStdString(page.body), body);
  EXPECT_EQ(page.charset, "big5");
  EXPECT_EQ(page.status, 200);
  const auto request = server.requests().at(0);
  EXPECT_TRUE(request.startsWith("GET /a?b=c&d HTTP/1.1\r\n")) << request.toStdString();
  for (const char* telling : {"Cookie:", "Referer:", "Authorization:", "X-Forwarded-For:"}) {
    EXPECT_FALSE(request.contains(telling)) << telling;
  }
}

TEST_F(ForeignPages, ACharsetThatIsNoNameIsNotPassedOn) {
  const std::pair<const char*, const char*> types[] = {
      {"text/html", ""},
      {"text/html; charset=", ""},
      {"text/html; charset=utf-8\"x: y", "utf-8"},
      {"text/html; charset=<script>", ""},
      {"text/html; charset=aaaaaaaaaabbbbbbbbbbccccccccccddddddddddeeeeeeeeee", ""}};
  for (const auto& [type, charset] : types) {
    answer(answerOf(QByteArray("Content-Type: ") + type + "\r\n", "x"));
    EXPECT_EQ(fetch(address()).charset, charset) << type;
  }
}

TEST_F(ForeignPages, AnErrorPageIsAPage) {
  answer("HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\ngone");
  const auto page = fetch(address());
  EXPECT_EQ(page.status, 404);
  EXPECT_EQ(page.body, "gone");
}

TEST_F(ForeignPages, ChineseAndBlanksInAnAddressGoOutEscaped) {
  answer(answerOf({}, "x"));
  EXPECT_EQ(fetch(address("/\xD6\xBD \xBC\xDB?d=\xBD\xF1")).failure, "");
  EXPECT_TRUE(server.requestTargets().at(0).toUpper().startsWith("/%D6%BD%20%BC%DB?D=%BD%F1"))
      << server.requestTargets().at(0).toStdString();
}

TEST_F(ForeignPages, AreBoundedInSizeHoweverTheyCome) {
  const QByteArray big(100'001, 'x');
  const QByteArray packed = qCompress(QByteArray(5'000'000, 'x')).mid(4);
  const QList<Reply> replies = {{.bytes = answerOf({}, big)},
                                {.bytes = answerOf("Content-Encoding: deflate\r\n", packed)},
                                {.bytes = QByteArray(4096, 'x'),
                                 .keepAlive = false,
                                 .endlessChunk = 1'000'000,
                                 .head = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n"},
                                {.bytes = "X-Filler: " + QByteArray(900, 'y') + "\r\n",
                                 .keepAlive = false,
                                 .endlessChunk = 1'000'000,
                                 .head = "HTTP/1.1 200 OK\r\n"}};
  for (const Reply& reply : replies) {
    server.setHandler([reply](const QByteArray&) { return reply; });
    const auto page = fetch(address());
    EXPECT_EQ(page.failure, "too large");
    EXPECT_EQ(page.body, "");
  }
  answer(answerOf({}, big.left(100'000)));
  EXPECT_EQ(fetch(address()).body.size(), 100'000U);
  answer(answerOf("Content-Encoding: deflate\r\n", qCompress("packed").mid(4)));
  EXPECT_EQ(fetch(address()).body, "packed");
}

TEST_F(ForeignPages, AreBoundedInTimeHoweverSlowlyTheyCome) {
  limits.time = 400ms;
  const QList<Reply> replies = {{.hang = true},
                                {.bytes = "x",
                                 .keepAlive = false,
                                 .endlessChunk = 100'000,
                                 .head = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n",
                                 .pause = 20ms}};
  for (const Reply& reply : replies) {
    server.setHandler([reply](const QByteArray&) { return reply; });
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(fetch(address()).failure, "Timeout was reached");
    EXPECT_LT(std::chrono::steady_clock::now() - began, 60s);
  }
}

TEST_F(ForeignPages, FollowSoManyRedirectsAndNoMore) {
  server.setHandler([&](const QByteArray& request) {
    const int left = request.mid(5, 1).toInt();
    return left == 0 ? Reply{.bytes = answerOf({}, "there")}
                     : Reply{.bytes = redirectTo("/" + std::to_string(left - 1))};
  });
  EXPECT_EQ(fetch(address("/3")).body, "there");
  const auto page = fetch(address("/4"));
  EXPECT_NE(page.failure, "");
  EXPECT_EQ(page.body, "");
}

TEST_F(ForeignPages, NoOtherProtocolIsSpoken) {
  const std::string port = std::to_string(server.port());
  for (const std::string& other :
       {std::string("file:///etc/passwd"), "ftp://127.0.0.1:" + port + "/x",
        "gopher://127.0.0.1:" + port + "/_GET", "dict://127.0.0.1:" + port + "/x",
        "scp://127.0.0.1:" + port + "/x", std::string("ws://x"), std::string("javascript:1"),
        std::string("/etc/passwd"), std::string("127.0.0.1"), std::string("http://"),
        std::string("http://[::1"), std::string()}) {
    server.clear();
    const auto direct = fetch(other);
    EXPECT_NE(direct.failure, "") << other;
    EXPECT_EQ(server.connectionCount(), 0) << other;
    answer(redirectTo(other));
    const auto redirected = fetch(address());
    EXPECT_EQ(redirected.body, "") << other;
    EXPECT_LE(server.connectionCount(), 1) << other;
  }
}

TEST_F(ForeignPages, AreNotFetchedInsideTheOwnNetworkHoweverItIsWritten) {
  const std::string port = ":" + std::to_string(server.port()) + "/";
  for (const char* host :
       {"127.0.0.1", "localhost", "LOCALHOST.", "127.1", "2130706433", "0x7f000001", "017700000001",
        "0", "0.0.0.0", "[::1]", "[::]", "[::ffff:127.0.0.1]", "[0:0:0:0:0:ffff:7f00:1]",
        "user:pass@127.0.0.1", "%6c%6f%63%61%6c%68%6f%73%74"}) {
    EXPECT_NE(fetch("http://" + std::string(host) + port, outside).failure, "") << host;
  }
  EXPECT_EQ(server.connectionCount(), 0);
  EXPECT_EQ(fetch(address(), outside).failure, "an address that is not allowed");
}

TEST_F(ForeignPages, ARedirectIsCheckedLikeTheFirstAddress) {
  ScriptedServer inside;
  answer(redirectTo("http://127.0.0.1:" + std::to_string(inside.port()) + "/secret"));
  const auto first = server.port();
  const auto page = fetch(address(), [first](const auto& place) { return place.port() == first; });
  EXPECT_EQ(page.failure, "an address that is not allowed");
  EXPECT_EQ(page.body, "");
  EXPECT_EQ(inside.connectionCount(), 0);
}

TEST_F(ForeignPages, ANameIsJudgedByTheAddressOfEachConnection) {
  // A name that leads elsewhere the second time: the judge sees each address that is connected to.
  answer(redirectTo("http://localhost:" + std::to_string(server.port()) + "/again"));
  int asked = 0;
  const auto page =
      fetch("http://localhost:" + std::to_string(server.port()) + "/", [&](const auto& place) {
        EXPECT_TRUE(place.address().is_loopback());
        return place.address().is_v4() && ++asked == 1;
      });
  EXPECT_LE(server.requests().size(), 4);
  EXPECT_GE(asked, 1);
  EXPECT_NE(page.failure, "");
}

TEST_F(ForeignPages, ProxiesOfTheEnvironmentPlayNoPart) {
  ScriptedServer proxy;
  const QByteArray setting = "http://127.0.0.1:" + QByteArray::number(proxy.port());
  qputenv("http_proxy", setting);
  qputenv("all_proxy", setting);
  answer(answerOf({}, "direct"));
  EXPECT_EQ(fetch(address()).body, "direct");
  qunsetenv("http_proxy");
  qunsetenv("all_proxy");
  EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST_F(ForeignPages, HttpsIsSpokenAndACertificateThatNobodyVouchesForIsRefused) {
  boost::asio::io_context context;
  tcp::acceptor acceptor(context, {boost::asio::ip::address_v4::loopback(), 0});
  auto opening = std::async(std::launch::async, [&] {
    std::array<char, 1000> bytes{};
    const auto size = acceptor.accept().read_some(boost::asio::buffer(bytes));
    return std::string(bytes.data(), size);
  });
  const auto page =
      fetch("https://127.0.0.1:" + std::to_string(acceptor.local_endpoint().port()) + "/");
  EXPECT_NE(page.failure, "");
  // Where nobody has come, this one ends the waiting.
  tcp::socket(context).connect(acceptor.local_endpoint());
  const std::string said = opening.get();
  EXPECT_EQ(said.front(), '\x16') << "it offers to encrypt";
  EXPECT_EQ(said.find("GET"), std::string::npos) << "nothing goes out in the clear";
}

TEST_F(ForeignPages, AStopEndsAFetchSoon) {
  server.setHandler([](const QByteArray&) { return Reply{.hang = true}; });
  std::thread stopper([&] {
    EXPECT_TRUE(server.waitForRequests(1));
    stop = true;
  });
  EXPECT_EQ(fetch(address()).failure, "Operation was aborted by an application callback");
  stopper.join();
}

}  // namespace

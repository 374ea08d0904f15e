#include <gtest/gtest.h>

#include <string>

#include "PortalTest.h"
#include "RunningServer.h"
#include "WireClient.h"

using namespace std::string_literals;
using namespace qinghe::portal_server;

namespace {

const std::string path = "/_vti_login/_vti_detail_field_s.asp";
const std::string industries = path + "?STABLE=HAYE&STRDATA=id,haye,";

std::string many(int count, const std::string& piece) {
  std::string all;
  for (int i = 0; i < count; ++i) all += piece + std::to_string(i) + "=&";
  return all;
}

std::string posted(const std::string& headers, const std::string& body) {
  return "POST " + industries + " HTTP/1.1\r\nHost: p\r\n" + headers + "\r\n" + body;
}

struct OddRequest {
  const char* name;
  std::string bytes;
  unsigned status;  // 0: the connection ends without an answer
};

void PrintTo(const OddRequest& request, std::ostream* out) {
  *out << request.name;
}

class OddRequests : public testing::TestWithParam<OddRequest> {};

}  // namespace

TEST_P(OddRequests, AreAnsweredOrTurnedAwayAndTheNextClientIsServed) {
  static RunningServer server;
  WireClient client(server.port());
  client.send(GetParam().bytes);
  EXPECT_EQ(client.receive().status, GetParam().status);
  EXPECT_EQ(WireClient(server.port()).get(industries).text().rows.size(), 8U);
}

INSTANTIATE_TEST_SUITE_P(
    Wire, OddRequests,
    testing::Values(
        OddRequest{"zero byte in the target", "GET /\0 HTTP/1.1\r\n\r\n"s, 400},
        OddRequest{"escaped zero byte", "GET " + industries + "&STOTHER=id%3D%001 HTTP/1.1\r\n\r\n",
                   200},
        OddRequest{"zero byte in a header", "GET / HTTP/1.1\r\nX: a\0b\r\n\r\n"s, 400},
        OddRequest{"zero byte in front", "\0GET / HTTP/1.1\r\n\r\n"s, 400},
        OddRequest{"carriage return in the target", "GET /\rX HTTP/1.1\r\n\r\n", 400},
        OddRequest{"lone line feeds", "GET / HTTP/1.1\nHost: p\n\n\r\n\r\n", 400},
        OddRequest{"small method", "get / HTTP/1.1\r\n\r\n", 400},
        OddRequest{"long method", std::string(17, 'A') + " / HTTP/1.1\r\n\r\n", 400},
        OddRequest{"star", "OPTIONS * HTTP/1.1\r\n\r\n", 405},
        OddRequest{"tunnel", "CONNECT 10.0.0.1:22 HTTP/1.1\r\n\r\n", 405},
        OddRequest{"two blanks", "GET  / HTTP/1.1\r\n\r\n", 400},
        OddRequest{"HTTP/2 preface", "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", 400},
        OddRequest{"TLS hello", "\x16\x03\x01\x02\0\x01\0\x01\xFC\x03\x03\r\n\r\n"s, 400},
        OddRequest{"up the folders", "GET /../../../../etc/passwd HTTP/1.1\r\n\r\n", 404},
        OddRequest{"escaped up the folders", "GET /%2e%2e/%2e%2e/etc/passwd HTTP/1.1\r\n\r\n", 404},
        OddRequest{"broken escapes", "GET " + industries + "%&STOTHER=%zz%%%1 HTTP/1.1\r\n\r\n",
                   200},
        OddRequest{"broken code page",
                   "GET " + industries + "&STOTHER=haye%3D'%81\xFF\x80' HTTP/1.1\r\n\r\n", 200},
        OddRequest{"other site", "GET http://elsewhere" + industries + " HTTP/1.1\r\n\r\n", 200},
        OddRequest{"no host", "GET " + industries + " HTTP/1.0\r\n\r\n", 200},
        OddRequest{"two hosts", "GET / HTTP/1.1\r\nHost: a\r\nHost: b\r\n\r\n", 200},
        OddRequest{"continued header", "GET / HTTP/1.1\r\nX: a\r\n b\r\n\r\n", 200},
        OddRequest{"blank in a header's name", "GET / HTTP/1.1\r\nX : a\r\n\r\n", 400},
        OddRequest{"a thousand headers",
                   [] {
                     std::string head = "GET / HTTP/1.1\r\n";
                     for (int i = 0; i < 1000; ++i) head += "X" + std::to_string(i) + ": y\r\n";
                     return head + "\r\n";
                   }(),
                   200},
        OddRequest{"headers without an end",
                   "GET / HTTP/1.1\r\nX: " + std::string(70'000, 'a') + "\r\n", 431},
        OddRequest{"a line of a megabyte and more", "GET /" + std::string(1'100'000, 'a'), 414},
        OddRequest{"gigantic length", posted("Content-Length: 999999999999999999\r\n", ""), 413},
        OddRequest{"length beyond numbers",
                   posted("Content-Length: 99999999999999999999999999\r\n", ""), 400},
        OddRequest{"length with a sign", posted("Content-Length: +3\r\n", "a=1"), 400},
        OddRequest{"two lengths", posted("Content-Length: 3\r\nContent-Length: 5\r\n", "a=1"), 400},
        OddRequest{"length and chunks",
                   posted("Content-Length: 3\r\nTransfer-Encoding: chunked\r\n", "0\r\n\r\n"), 400},
        OddRequest{"chunk beyond numbers",
                   posted("Transfer-Encoding: chunked\r\n", "fffffffffffffffff\r\n"), 400},
        OddRequest{"gigantic chunk",
                   posted("Transfer-Encoding: chunked\r\n", "7fffffffffffffff\r\n"), 413},
        OddRequest{"chunk without its end",
                   posted("Transfer-Encoding: chunked\r\n", "3\r\na=1XX0\r\n\r\n"), 400},
        OddRequest{"endless words behind a chunk's size",
                   posted("Transfer-Encoding: chunked\r\n", "3;x=" + std::string(2'000'000, 'y')),
                   400},
        OddRequest{"trailers", posted("Transfer-Encoding: chunked\r\n", "0\r\nX: y\r\n\r\n"), 200},
        OddRequest{"unknown coding", posted("Transfer-Encoding: gzip\r\n", ""), 200},
        OddRequest{"as many parameters as are taken",
                   "GET " + industries + "&" + many(254, "x") + " HTTP/1.1\r\n\r\n", 200},
        OddRequest{"one parameter too many",
                   "GET " + industries + "&" + many(255, "x") + " HTTP/1.1\r\n\r\n", 400},
        OddRequest{"two hundred thousand parameters",
                   "GET /?" + many(100'000, "") + " HTTP/1.1\r\n\r\n", 400},
        OddRequest{"posted ones",
                   [] {
                     const std::string body = many(300'000, "a");
                     return posted("Content-Length: " + std::to_string(body.size()) + "\r\n", body);
                   }(),
                   400},
        OddRequest{"relayed ones",
                   "GET /_vti_comm/review.asp?" +
                       field("review", "http://p" + industries + "&" + many(300, "x")) +
                       " HTTP/1.1\r\nHost: p\r\n\r\n",
                   400},
        OddRequest{"relay within the relay",
                   "GET /_vti_comm/review.asp?" +
                       field("review", "http://p/_vti_comm/review.asp?review=http://p/") +
                       " HTTP/1.1\r\nHost: p\r\n\r\n",
                   200},
        OddRequest{"form without a boundary",
                   posted("Content-Type: multipart/form-data\r\nContent-Length: 3\r\n", "a=1"),
                   400}));

TEST(OddRequests, HundredsInOneGoAreAnsweredInTheirOrder) {
  RunningServer server;
  WireClient client(server.port());
  std::string all;
  for (int i = 0; i < 300; ++i) {
    all += "GET " + path + "?STABLE=HAYE&STRDATA=id,&STOTHER=id%3D" + std::to_string(i % 8 + 1) +
           " HTTP/1.1\r\nHost: p\r\n\r\n";
  }
  ASSERT_TRUE(client.send(all));
  for (int i = 0; i < 300; ++i) {
    ASSERT_EQ(client.receive().text().firstCell(), std::to_string(i % 8 + 1)) << i;
  }
}

TEST(OddRequests, ALineThatComesByteByByteIsServed) {
  RunningServer server;
  WireClient client(server.port());
  for (const char& byte : "GET " + industries + " HTTP/1.1\r\nHost: p\r\n\r\n") {
    ASSERT_TRUE(client.send({&byte, 1}));
  }
  EXPECT_EQ(client.receive().text().rows.size(), 8U);
}

class WholeParameters : public PortalTest {};

TEST_F(WholeParameters, NothingIsWrittenWhenSomeOfThemAreLeftOut) {
  Fields fields{{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "halb"}};
  for (int i = 0; i < 300; ++i) fields.emplace_back("structn" + std::to_string(i), "");
  const std::string name = stored("ximu", 1, "ximu");
  EXPECT_FALSE(ask("_vti_add.asp", fields).marked);
  EXPECT_EQ(answer_.status, 400U);
  EXPECT_EQ(stored("ximu", 1, "ximu"), name);
}

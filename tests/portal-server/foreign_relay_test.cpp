#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "RunningServer.h"
#include "SqliteStore.h"
#include "WireClient.h"
#include "support/ScriptedServer.h"

using namespace qinghe::portal_server;
using namespace std::chrono_literals;
using Reply = ScriptedServer::Reply;

namespace {

const std::string industries = "/_vti_login/_vti_detail_field_s.asp?STABLE=HAYE&STRDATA=id,haye,";

Limits limitsWith(std::chrono::milliseconds foreignTime) {
  Limits limits;
  limits.foreign.time = foreignTime;
  limits.farewell = 60s;
  return limits;
}

/// A portal whose first information service names a page elsewhere.
class ForeignRelay : public testing::Test {
 protected:
  explicit ForeignRelay(bool ownNetwork = true, Limits limits = {})
      : portal(limits, {.relayOwnNetwork = ownNetwork}) {
    list(1, address());
    client = std::make_unique<WireClient>(portal.port());
  }

  std::string address(const std::string& path = "/price") const {
    return "http://127.0.0.1:" + std::to_string(elsewhere.port()) + path;
  }
  /// What an operator does with the database.
  void list(std::int64_t service, const std::string& url, bool offered = true) {
    SqliteStore store(portal.databasePath());
    store.transact([&](StoreWriter& writer) {
      const Table& services = storedTable("info_fuwu");
      writer.update(
          services, service,
          {assign(services, "wazh", url), assign(services, "noth", std::int64_t{offered ? 1 : 0})});
    });
  }
  std::string relayRequest(const std::string& url) const {
    return "GET /_vti_comm/review.asp?" + field("review", url) +
           " HTTP/1.1\r\nHost: 127.0.0.1:" + std::to_string(portal.port()) + "\r\n\r\n";
  }
  WireClient::Answer relay(const std::string& url) {
    client->send(relayRequest(url));
    return client->receive();
  }
  void shows(const QByteArray& headers, const QByteArray& body) {
    const QByteArray bytes = "HTTP/1.1 200 OK\r\n" + headers +
                             "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
                             body;
    elsewhere.setHandler([bytes](const QByteArray&) { return Reply{.bytes = bytes}; });
  }

  ScriptedServer elsewhere;
  RunningServer portal;
  std::unique_ptr<WireClient> client;
};

class ForeignRelayByDefault : public ForeignRelay {
 protected:
  ForeignRelayByDefault() : ForeignRelay(false) {}
};

class HurriedForeignRelay : public ForeignRelay {
 protected:
  HurriedForeignRelay() : ForeignRelay(true, limitsWith(500ms)) {}
};

class PatientForeignRelay : public ForeignRelay {
 protected:
  PatientForeignRelay() : ForeignRelay(true, limitsWith(2min)) {}
};

TEST_F(ForeignRelay, HandsOverAListedPageAsItIsWithTheCharsetThatItDeclares) {
  shows("Content-Type: text/html; charset=utf-8\r\n", "<b>\xE7\xBA\xB8</b> start_pos");
  const auto answer = relay(address());
  EXPECT_EQ(answer.status, 200U);
  EXPECT_EQ(answer.body, "<b>\xE7\xBA\xB8</b> start_pos");
  EXPECT_NE(answer.head.find("Content-Type: text/html; charset=utf-8\r\n"), std::string::npos);
  EXPECT_NE(answer.head.find("Content-Security-Policy: sandbox; default-src 'none'\r\n"),
            std::string::npos);
}

TEST_F(ForeignRelay, SaysNothingOfACharsetWhereThePageDoesNot) {
  shows("Content-Type: text/html\r\nSet-Cookie: a=b\r\n", "<meta charset=big5>");
  const auto answer = relay(address());
  EXPECT_NE(answer.head.find("Content-Type: text/html\r\n"), std::string::npos);
  EXPECT_EQ(answer.head.find("Set-Cookie"), std::string::npos);
  EXPECT_NE(relay("HTTP://127.0.0.1:" + std::to_string(portal.port()) + industries)
                .head.find("charset=GBK"),
            std::string::npos);
}

TEST_F(ForeignRelay, TakesAnAddressWithChineseAndBlanksAroundIt) {
  list(1, "  " + address("/\xE7\xBA\xB8?d=\xE4\xBB\x8A&e=1") + " ");
  shows({}, "found");
  EXPECT_EQ(relay(address("/\xE7\xBA\xB8?d=\xE4\xBB\x8A&e=1")).body, "found");
}

TEST_F(ForeignRelay, RefusesWhateverIsNotListedAsItStands) {
  shows({}, "secret");
  for (const std::string& other :
       {address("/other"), address("/price?x"), address("/PRICE"), address("/price#x"),
        address("/price/"), address(" /price"), address("/price/../price"),
        "https" + address().substr(4), "http://user@" + address().substr(7),
        address().substr(0, address().size() - 1), std::string("file:///etc/passwd"),
        std::string("http://127.0.0.1/"), std::string("*"), std::string("%"), std::string()}) {
    const auto answer = relay(other);
    EXPECT_EQ(answer.status, 200U) << other;
    EXPECT_FALSE(answer.text().marked) << other;
    EXPECT_EQ(answer.body.find("secret"), std::string::npos) << other;
  }
  EXPECT_EQ(elsewhere.connectionCount(), 0);
}

TEST_F(ForeignRelay, RefusesAServiceThatIsOff) {
  list(1, address(), false);
  shows({}, "secret");
  EXPECT_EQ(relay(address()).body.find("secret"), std::string::npos);
  EXPECT_EQ(elsewhere.connectionCount(), 0);
}

TEST_F(ForeignRelay, DoesNotRelayTheRelay) {
  const std::string own = "http://127.0.0.1:" + std::to_string(portal.port());
  EXPECT_FALSE(relay(own + "/_vti_comm/review.asp?" + field("review", address())).text().marked);
  EXPECT_EQ(elsewhere.connectionCount(), 0);
}

TEST_F(ForeignRelay, AListedAddressOfAnotherProtocolIsNotFetched) {
  for (const std::string& other :
       {std::string("file:///etc/hostname"), "ftp" + address().substr(4)}) {
    list(1, other);
    const auto answer = relay(other);
    EXPECT_EQ(answer.status, 502U) << other;
    EXPECT_FALSE(answer.text().marked);
  }
  EXPECT_EQ(elsewhere.connectionCount(), 0);
}

TEST_F(ForeignRelayByDefault, NothingInsideTheOwnNetworkIsFetched) {
  shows({}, "secret");
  const std::string port = ":" + std::to_string(elsewhere.port()) + "/price";
  for (const std::string& url : {address(), "http://localhost" + port, "http://2130706433" + port,
                                 "http://[::ffff:127.0.0.1]" + port}) {
    list(1, url);
    const auto answer = relay(url);
    EXPECT_EQ(answer.status, 502U) << url;
    EXPECT_EQ(answer.body.find("secret"), std::string::npos) << url;
  }
  EXPECT_EQ(elsewhere.connectionCount(), 0);
  portal.stop();
  EXPECT_NE(portal.log().find("foreign page failed: an address that is not allowed"),
            std::string::npos);
}

TEST_F(ForeignRelayByDefault, ItsOwnPageOfAServiceIsStillItsOwn) {
  list(1, "/link/paper.asp");
  const std::string host = "127.0.0.1:" + std::to_string(portal.port());
  EXPECT_NE(relay("http://" + host + "/link/paper.asp").text().page.find("纸张参考价格"),
            std::string::npos);
}

TEST_F(HurriedForeignRelay, OthersAreServedWhileAPageKeepsWaiting) {
  elsewhere.setHandler([](const QByteArray&) { return Reply{.hang = true}; });
  client->send(relayRequest(address()));
  // On a busy machine the time may be over before anything has been asked for elsewhere.
  for (int i = 0; i < 100 && !elsewhere.waitForRequests(1, 1s); ++i) {
    EXPECT_EQ(client->receive().status, 502U);
    client->send(relayRequest(address()));
  }
  ASSERT_TRUE(elsewhere.waitForRequests(1));
  WireClient other(portal.port());
  for (int i = 0; i < 20; ++i) EXPECT_EQ(other.get(industries).status, 200U);
  const auto answer = client->receive();
  EXPECT_EQ(answer.status, 502U);
  EXPECT_FALSE(answer.text().marked);
}

TEST_F(PatientForeignRelay, OneClientKeepsOnlySoManyPagesWaiting) {
  elsewhere.setHandler([](const QByteArray&) { return Reply{.hang = true}; });
  std::vector<std::unique_ptr<WireClient>> waiting;
  for (std::size_t i = 0; i < Limits{}.foreignOfOneClient; ++i) {
    waiting.push_back(std::make_unique<WireClient>(portal.port()));
    waiting.back()->send(relayRequest(address()));
  }
  ASSERT_TRUE(elsewhere.waitForRequests(static_cast<int>(waiting.size())));
  EXPECT_EQ(relay(address()).status, 503U);
  EXPECT_EQ(client->get(industries).status, 200U);
}

TEST_F(PatientForeignRelay, AStopDoesNotWaitForAPage) {
  elsewhere.setHandler([](const QByteArray&) { return Reply{.hang = true}; });
  client->send(relayRequest(address()));
  ASSERT_TRUE(elsewhere.waitForRequests(1));
  portal.stop();
  EXPECT_EQ(client->receive().status, 502U) << "cut off in the end";
}

TEST_F(PatientForeignRelay, AClientThatLeavesMeanwhileDisturbsNobody) {
  elsewhere.setHandler([](const QByteArray&) { return Reply{.hang = true}; });
  client->send(relayRequest(address()));
  ASSERT_TRUE(elsewhere.waitForRequests(1));
  client.reset();
  EXPECT_EQ(WireClient(portal.port()).get(industries).status, 200U);
}

}  // namespace

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "RunningServer.h"
#include "WireClient.h"

using namespace std::chrono_literals;
using namespace qinghe::portal_server;

namespace {

using Crowd = std::vector<std::unique_ptr<WireClient>>;

constexpr const char* elsewhere = "127.0.0.2";
const std::string industries = "/_vti_login/_vti_detail_field_s.asp?STABLE=HAYE&STRDATA=id,haye,";
const std::string request = "GET " + industries + " HTTP/1.1\r\nHost: p\r\n\r\n";

// Each connection has been served once and is kept.
Crowd idleCrowd(const RunningServer& server, int size, const char* from = "127.0.0.1") {
  Crowd crowd;
  for (int i = 0; i < size; ++i) {
    crowd.push_back(std::make_unique<WireClient>(server.port(), from));
    EXPECT_EQ(crowd.back()->get(industries).status, 200U);
  }
  return crowd;
}

// Each one has been served once and has begun its next request.
Crowd busyCrowd(const RunningServer& server, int size, const char* from = "127.0.0.1") {
  Crowd crowd;
  for (int i = 0; i < size; ++i) {
    crowd.push_back(std::make_unique<WireClient>(server.port(), from));
    crowd.back()->send(request + "GET /");
    EXPECT_EQ(crowd.back()->receive().status, 200U);
  }
  return crowd;
}

}  // namespace

TEST(Crowd, WhoIsIdleLongestMakesRoomForTheNextOne) {
  Limits limits;
  limits.connections = 4;
  RunningServer server(limits);
  Crowd kept = idleCrowd(server, 4);
  EXPECT_EQ(kept.front()->get(industries).status, 200U);
  EXPECT_EQ(WireClient(server.port()).get(industries).status, 200U);
  EXPECT_TRUE(kept[1]->isClosed());
  for (const int other : {0, 2, 3}) {
    EXPECT_EQ(kept[static_cast<std::size_t>(other)]->get(industries).status, 200U) << other;
  }
}

TEST(Crowd, NobodyIsCutInTheMiddleOfARequest) {
  Limits limits;
  limits.connections = 3;
  limits.transfer = 10min;
  RunningServer server(limits);
  Crowd busy = busyCrowd(server, 3);
  EXPECT_TRUE(WireClient(server.port()).isClosed()) << "no room";
  for (const auto& client : busy) {
    client->send(request.substr(5));
    EXPECT_EQ(client->receive().status, 200U);
  }
  server.stop();
  EXPECT_NE(server.log().find("too many connections, one turned away"), std::string::npos);
}

TEST(Crowd, OneClientCannotTakeAllTheRoom) {
  Limits limits;
  limits.connections = 8;
  limits.connectionsOfOneClient = 4;
  limits.transfer = 10min;
  RunningServer server(limits);
  const Crowd busy = busyCrowd(server, 4);
  EXPECT_TRUE(WireClient(server.port()).isClosed());
  EXPECT_EQ(WireClient(server.port(), elsewhere).get(industries).status, 200U);
}

TEST(Crowd, AClientWithTooManyConnectionsLosesItsOwnIdleOnes) {
  Limits limits;
  limits.connectionsOfOneClient = 3;
  RunningServer server(limits);
  Crowd others = idleCrowd(server, 1, elsewhere);
  Crowd kept = idleCrowd(server, 3);
  EXPECT_EQ(WireClient(server.port()).get(industries).status, 200U);
  EXPECT_TRUE(kept[0]->isClosed());
  EXPECT_EQ(others[0]->get(industries).status, 200U);
  EXPECT_EQ(kept[1]->get(industries).status, 200U);
}

TEST(Crowd, ThousandConnectionsOneAfterTheOtherLeaveTheServerWell) {
  RunningServer server;
  Crowd first = idleCrowd(server, 1, elsewhere);
  Crowd crowd;
  for (int i = 0; i < 1'000; ++i) crowd.push_back(std::make_unique<WireClient>(server.port()));
  EXPECT_EQ(crowd.back()->get(industries).status, 200U);
  EXPECT_TRUE(crowd.front()->isClosed());
  EXPECT_EQ(first[0]->get(industries).status, 200U);
  crowd.clear();
  EXPECT_EQ(WireClient(server.port()).get(industries).status, 200U);
}

TEST(Crowd, ALargeUploadOverASlowLineHasItsTime) {
  Limits limits;
  limits.transfer = 200ms;
  limits.slowestRate = 1;
  RunningServer server(limits);
  const std::string body(200'000, 'x');
  const std::string head = "POST " + industries + " HTTP/1.1\r\nHost: p\r\nContent-Length: ";
  WireClient slow(server.port());
  slow.send(head + std::to_string(body.size()) + "\r\n\r\n");
  WireClient small(server.port());
  small.send(head + "10\r\n\r\n");
  EXPECT_TRUE(small.isClosed()) << "a few bytes need no time";
  slow.send(body);
  EXPECT_EQ(slow.receive().text().rows.size(), 8U);
}

namespace {

// Goods whose texts together are far more than what a socket takes at once.
void fillLongTexts(const RunningServer& server) {
  SqliteStore store(server.databasePath());
  store.transact([](StoreWriter& writer) {
    const Table& goods = storedTable("ximu");
    for (std::int64_t id = 1; id <= 20; ++id) {
      writer.update(goods, id, {assign(goods, "jish", std::string(1'000'000, 'x'))});
    }
  });
}

// Asks for all of them and takes nothing of the answer.
void askAndIgnore(WireClient& deaf) {
  deaf.send("GET /_vti_product/_vti_detail_field_s.asp?STABLE=XIMU&STRDATA=jish, HTTP/1.1\r\n\r\n");
}

// Whether the log says so before long; others are served all the time.
bool says(const RunningServer& server, const char* words) {
  WireClient other(server.port());
  const auto limit = std::chrono::steady_clock::now() + 120s;
  while (server.log().find(words) == std::string::npos) {
    if (std::chrono::steady_clock::now() > limit) return false;
    EXPECT_EQ(other.get(industries).text().rows.size(), 8U);
  }
  return true;
}

}  // namespace

TEST(Crowd, AnswersThatNobodyTakesAreBoundedTogether) {
  Limits limits;
  limits.unsent = 30'000'000;
  RunningServer server(limits);
  fillLongTexts(server);
  WireClient first(server.port());
  WireClient second(server.port());
  askAndIgnore(first);
  askAndIgnore(second);
  EXPECT_TRUE(says(server, "cut off: too much is on its way already"));
  const bool firstIsWhole = first.receive().body.size() > 20'000'000;
  const bool secondIsWhole = second.receive().body.size() > 20'000'000;
  EXPECT_NE(firstIsWhole, secondIsWhole) << "one alone fits";
  WireClient third(server.port());
  askAndIgnore(third);
  EXPECT_GT(third.receive().body.size(), 20'000'000U) << "and makes room";
}

TEST(Crowd, WhoTakesNothingOfAnAnswerIsCutOff) {
  Limits limits;
  limits.transfer = 300ms;
  limits.slowestRate = 1'000'000'000;
  RunningServer server(limits);
  fillLongTexts(server);
  WireClient deaf(server.port());
  askAndIgnore(deaf);
  EXPECT_TRUE(says(server, "cut off: too slow"));
}

#include <functional>
#include <future>
#include <memory>
#include <mutex>

#include "PortalTest.h"
#include "RunningServer.h"
#include "WireClient.h"

using namespace qinghe::portal_server;
using namespace std::chrono_literals;

namespace {

const std::string industries = "/_vti_login/_vti_detail_field_s.asp?STABLE=HAYE&STRDATA=id,haye,";

// One comparison of it with such a text is too much for in between.
std::string search(std::size_t length) {
  return "/_vti_product/_vti_detail_field_s.asp?STABLE=XIMU&STRDATA=id,&" +
         field("STOTHER", "jish like '%" + std::string(length, 'a') + "b%'");
}

/// Lets nobody search before it is opened.
class SearchGate : public StoreReader {
 public:
  explicit SearchGate(StoreReader& behind) : behind_(behind) {}

  void read(const Query& query, RowSink& sink) override {
    pass();
    behind_.read(query, sink);
  }
  std::int64_t count(const Table& table, const Expression& condition) override {
    pass();
    return behind_.count(table, condition);
  }

  bool isReached() { return reached_.get_future().wait_for(60s) == std::future_status::ready; }
  void open() { opened_.set_value(); }

 private:
  void pass() {
    std::call_once(first_, [this] { reached_.set_value(); });
    opening_.wait();
  }

  StoreReader& behind_;
  std::once_flag first_;
  std::promise<void> reached_;
  std::promise<void> opened_;
  std::shared_future<void> opening_ = opened_.get_future().share();
};

class GatedStore : public Store {
 public:
  explicit GatedStore(Store& behind) : searches(behind.patientReader()), behind_(behind) {}

  StoreReader& reader() override { return behind_.reader(); }
  StoreReader& patientReader() override { return searches; }
  std::uint32_t versionRead() override { return behind_.versionRead(); }
  std::uint32_t versionNow() override { return behind_.versionNow(); }
  void transact(const std::function<void(StoreWriter&)>& work) override { behind_.transact(work); }

  SearchGate searches;

 private:
  Store& behind_;
};

/// A portal with some goods whose texts are as long as a text can be.
class LongSearch : public testing::Test {
 protected:
  static void fill(const RunningServer& server) {
    SqliteStore store(server.databasePath());
    store.transact([](StoreWriter& writer) {
      const Table& goods = storedTable("ximu");
      const std::string text(1'000'000, 'a');
      for (const std::int64_t id : {1, 2, 3, 4}) {
        writer.update(goods, id, {assign(goods, "jish", id == 2 ? text + "b" : text)});
      }
    });
  }
};

TEST_F(LongSearch, IsAnsweredLikeAnyOther) {
  RunningServer server;
  fill(server);
  WireClient client(server.port());
  EXPECT_EQ(client.get(search(10)).text().column(0), std::vector<std::string>{"2"});
}

TEST_F(LongSearch, HasAThreadOfItsOwnWithSoManySeats) {
  Limits limits;
  limits.searchesAtOnce = 0;
  RunningServer server(limits);
  fill(server);
  WireClient client(server.port());
  const auto answer = client.get(search(10));
  EXPECT_EQ(answer.status, 503U);
  EXPECT_FALSE(answer.text().marked);
  EXPECT_EQ(client.get(industries).text().rows.size(), 8U) << "quick reads need no seat";
}

TEST_F(LongSearch, HoldsNobodyElseUp) {
  SearchGate* gate = nullptr;
  RunningServer server({}, {}, [&gate](Store& store) {
    auto gated = std::make_unique<GatedStore>(store);
    gate = &gated->searches;
    return gated;
  });
  fill(server);
  WireClient searching(server.port());
  searching.send("GET " + search(10) + " HTTP/1.1\r\nHost: p\r\n\r\n");
  EXPECT_TRUE(gate->isReached());
  WireClient other(server.port());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(other.get(industries).status, 200U);
    const auto login = other.get("/_vti_login/_vti_login2.asp?USER_NO=1001&USER_PASS=123456");
    EXPECT_EQ(login.text().firstCell(), "1") << "a write";
  }
  gate->open();
  EXPECT_EQ(searching.receive().text().column(0), std::vector<std::string>{"2"});
}

class ImpatientPortal : public PortalTest {
 protected:
  AnswerText list() {
    return ask("_vti_detail_field_s.asp",
               {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STOTHER", "ximu like '%x%'"}});
  }
};

TEST_F(ImpatientPortal, GivesUpASearchThatTakesTooLongAndAnswersTheNextOne) {
  EXPECT_TRUE(list().marked);
  SqliteStore hurried(folder_.filePath(QStringLiteral("portal.db")).toStdString(),
                      {.atOnce = 5s, .search = 0ms});
  auto portal = std::make_unique<Portal>(hurried);
  portal_.swap(portal);
  EXPECT_FALSE(list().marked);
  EXPECT_EQ(answer_.status, 503U);
  EXPECT_EQ(answer_.note, "refused: the search takes too long");
  portal_.swap(portal);
  EXPECT_TRUE(list().marked);
}

TEST_F(ImpatientPortal, AnswersAtOnceOnlyWhatTakesAMoment) {
  SqliteStore hurried(folder_.filePath(QStringLiteral("portal.db")).toStdString(),
                      {.atOnce = 0ms, .search = 5s});
  Portal portal(hurried);
  PortalRequest request{.path = "_vti_product/_vti_detail_field_s.asp",
                        .parameters = {},
                        .address = stranger,
                        .host = {}};
  request.parameters.add("STABLE=XIMU&STRDATA=id,ximu,");
  EXPECT_FALSE(portal.answerAtOnce(request));
  EXPECT_EQ(portal.answer(request).status, 200U);
  SqliteStore patient(folder_.filePath(QStringLiteral("portal.db")).toStdString(),
                      {.atOnce = 1h, .search = 1h});
  EXPECT_TRUE(Portal(patient).answerAtOnce(request));
}

TEST_F(ImpatientPortal, DoesNotCompareALongTextInBetweenHoweverMuchTimeThereIs) {
  const Table& goods = storedTable("ximu");
  store_->transact([&](StoreWriter& writer) {
    writer.update(goods, 1, {assign(goods, "jish", std::string(400'000, 'a'))});
  });
  SqliteStore patient(folder_.filePath(QStringLiteral("portal.db")).toStdString(),
                      {.atOnce = 1h, .search = 1h});
  Portal portal(patient);
  PortalRequest request{.path = "_vti_product/_vti_detail_field_s.asp",
                        .parameters = {},
                        .address = stranger,
                        .host = {}};
  request.parameters.add("STABLE=XIMU&STRDATA=id,&" + field("STOTHER", "jish like '%aaaaaaaab'"));
  EXPECT_TRUE(portal.answerAtOnce(request)) << "ten bytes in 400,000";
  request.parameters = {};
  request.parameters.add("STABLE=XIMU&STRDATA=id,&" + field("STOTHER", "jish like '%aaaaaaaaab'"));
  EXPECT_FALSE(portal.answerAtOnce(request)) << "eleven";
  EXPECT_TRUE(AnswerText::read(portal.answer(request).body).marked);
}

TEST_F(ImpatientPortal, ComparesAsTheEngineDoes) {
  const struct {
    const char* condition;
    std::size_t rows;
  } table[] = {{"haye like '图%'", 1},   {"haye like '%书'", 1}, {"haye like '_书'", 1},
               {"haye like '图'", 0},    {"haye like '%'", 8},   {"haye like ''", 0},
               {"haye like '图书%%'", 1}};
  for (const auto& row : table) {
    EXPECT_EQ(ask("_vti_detail_field_s.asp",
                  {{"STABLE", "HAYE"}, {"STRDATA", "id,"}, {"STOTHER", row.condition}})
                  .rows.size(),
              row.rows)
        << row.condition;
  }
  ask("_vti_add.asp",
      {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "ABC d\\ef"}});
  EXPECT_EQ(ask("_vti_detail_field_s.asp",
                {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STOTHER", "ximu like 'abc D\\E_'"}})
                .firstCell(),
            "1");
}

}  // namespace

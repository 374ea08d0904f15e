#include <functional>

#include "KeptAnswers.h"
#include "PortalTest.h"
#include "RunningServer.h"
#include "WireClient.h"

using namespace qinghe::portal_server;

namespace {

constexpr const char* list = "_vti_detail_field_s.asp";
constexpr const char* otherShop = "10.0.0.2";

/// The store, counting how often its rows are read for quick answers.
class CountingStore final : public Store, StoreReader {
 public:
  explicit CountingStore(Store& store) : store_(store) {}

  int readings() const { return readings_; }

  StoreReader& reader() override { return *this; }
  StoreReader& patientReader() override { return store_.patientReader(); }
  std::uint32_t versionRead() override { return store_.versionRead(); }
  std::uint32_t versionNow() override { return store_.versionNow(); }
  void transact(const std::function<void(StoreWriter&)>& work) override { store_.transact(work); }

 private:
  void read(const Query& query, RowSink& sink) override {
    ++readings_;
    store_.reader().read(query, sink);
  }
  std::int64_t count(const Table& table, const Expression& condition) override {
    ++readings_;
    return store_.reader().count(table, condition);
  }

  Store& store_;
  int readings_ = 0;
};

/// Quick readings at a portal that keeps answers.
class KeptPages : public PortalTest {
 protected:
  KeptPages() { portal_ = std::make_unique<Portal>(counting_); }

  AnswerText read(std::string_view page, const Fields& fields,
                  const std::string& address = bookshop) {
    return readTarget(query(page, fields), address);
  }
  AnswerText readTarget(const std::string& target, const std::string& address = bookshop) {
    const RequestTarget parsed = parseTarget(target);
    PortalRequest request{.path = parsed.path, .parameters = {}, .address = address, .host = host_};
    request.parameters.add(parsed.query);
    auto answer = portal_->answerAtOnce(request);
    EXPECT_TRUE(answer) << target;
    answer_ = answer ? std::move(*answer) : PortalAnswer{};
    return AnswerText::read(answer_.body);
  }
  std::string firstTitle(const std::string& address = bookshop) {
    return read(list, {{"STABLE", "XIMU"}, {"STRDATA", "ximu,"}, {"STOTHER", "id=1"}}, address)
        .firstCell();
  }
  void saveFirstTitle(const std::string& title) {
    ASSERT_TRUE(ask("_vti_add.asp",
                    {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", title}})
                    .marked);
  }

  CountingStore counting_{*store_};
};

TEST_F(KeptPages, TellWhatEverybodyMayReadWithoutReadingItAgain) {
  const struct {
    const char* page;
    Fields fields;
  } table[] = {
      {list, {{"STABLE", "HAYE"}, {"STRDATA", "id,haye,"}}},
      {"_vti_detail_onepage.asp",
       {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STPAGE", "2"}, {"STPAGESIZE", "5"}}},
      {"_vti_detail_page.asp", {{"STABLE", "XIMU"}, {"STPAGESIZE", "5"}}},
      {"_vti_login/_vti_detail.asp", {{"STABLE", "SHEN"}, {"STRUCTN", "3"}}},
  };
  firstTitle();  // the first reading finds that somebody has written
  for (const auto& row : table) {
    ASSERT_TRUE(read(row.page, row.fields).marked) << row.page;
    const std::string body = answer_.body;
    const int readings = counting_.readings();
    EXPECT_TRUE(read(row.page, row.fields, stranger).marked) << row.page;
    EXPECT_EQ(answer_.body, body) << row.page;
    EXPECT_EQ(counting_.readings(), readings) << row.page;
  }
}

TEST_F(KeptPages, TellWhatWasWrittenFromTheNextReadingOn) {
  for (int i = 0; i < 5; ++i) {
    const std::string title = "新书" + std::to_string(i);
    EXPECT_NE(firstTitle(), title);
    EXPECT_NE(firstTitle(stranger), title);
    saveFirstTitle(title);
    EXPECT_EQ(firstTitle(stranger), title);
    EXPECT_EQ(firstTitle(), title);
  }
}

TEST_F(KeptPages, TellWhatAnotherProcessHasWritten) {
  SqliteStore elsewhere(folder_.filePath(QStringLiteral("portal.db")).toStdString());
  const Table& goods = storedTable("ximu");
  for (const char* title : {"one", "two", "three"}) {
    EXPECT_NE(firstTitle(), title);
    elsewhere.transact([&](StoreWriter& writer) {
      writer.update(goods, 1, {assign(goods, "ximu", std::string(title))});
    });
    EXPECT_EQ(firstTitle(), title);
  }
}

TEST_F(KeptPages, TellNobodyWhatAnotherEnterpriseMayRead) {
  login("1002", "123456", otherShop);
  const struct {
    const char* page;
    Fields fields;
  } table[] = {
      {list, {{"STABLE", "GOHU"}, {"STRDATA", "id,gosh_id,kehu_id,"}}},
      {"_vti_detail_page.asp", {{"STABLE", "GOHU"}, {"STPAGESIZE", "1"}}},
      {list, {{"STABLE", "GOKU"}, {"STRDATA", "id,gohu_id,ximu,"}}},
      {list, {{"STABLE", "vGSKH"}, {"STRDATA", "gosh_id,kehu_id,"}}},
      {list, {{"STABLE", "QYXX"}, {"STRDATA", "id,user_pass,"}}},
      {list, {{"STABLE", "QYXX"}, {"STRDATA", "id,"}, {"STOTHER", "user_pass<>''"}}},
      {list, {{"STABLE", "QYXX"}, {"STRDATA", "id,"}, {"STORDER", "user_pass"}}},
  };
  for (const auto& row : table) {
    const std::string asked = query(row.page, row.fields);
    const auto own = read(row.page, row.fields).rows;
    EXPECT_EQ(read(row.page, row.fields).rows, own) << asked;
    EXPECT_FALSE(read(row.page, row.fields, stranger).marked) << asked;
    const AnswerText others = read(row.page, row.fields, otherShop);
    EXPECT_TRUE(others.marked) << asked;
    EXPECT_NE(others.rows, own) << asked;
  }
  // The machine passes from one to the other.
  ASSERT_TRUE(read(list, table[0].fields).marked);
  ask("_vti_login/_vti_logout2.asp", {{"USER_NO", "1001"}});
  EXPECT_FALSE(read(list, table[0].fields).marked);
  login("1002", "123456", bookshop);
  EXPECT_EQ(read(list, table[0].fields).rows, read(list, table[0].fields, otherShop).rows);
}

TEST_F(KeptPages, TellLinksByTheNameThatEachClientUses) {
  const Fields fields{{"STABLE", "FUWU"}, {"STRDATA", "wazh,"}, {"STOTHER", "id=1"}};
  const std::string page = std::string("_vti_login/") + list;
  for (const char* host : {"portal:8180", "shop.example", "portal:8180"}) {
    host_ = host;
    EXPECT_EQ(read(page, fields).firstCell(), "http://" + host_ + "/link/paper.asp");
  }
}

TEST_F(KeptPages, AreNotMistakenForOthersThatReadAlike) {
  const std::string path = std::string("/_vti_product/") + list + "?";
  firstTitle();
  const std::string kept = path + "STABLE=HAYE&STRDATA=id,&STOTHER=id%3D1";
  ASSERT_EQ(readTarget(kept).firstCell(), "1");
  for (const char* alike :
       {"STABLE=HAYE&STRDATA=id,STOTHERid%3D1", "STABLE=HAYE&STRDATA=id,%26STOTHER=id%3D1",
        "STABLE=HAYE&STRDATA=id,%00STOTHER%00id%3D1", "STABLE=HAYE&STRDATA=id,7:STOTHER4:id%3D1"}) {
    EXPECT_FALSE(readTarget(path + alike).marked) << alike;
  }
  std::string most = path + "STABLE=HAYE&STRDATA=id,";
  for (int i = 2; i < 256; ++i) most += "&x" + std::to_string(i) + "=";
  ASSERT_TRUE(readTarget(most).marked);
  EXPECT_FALSE(readTarget(most + "&one=more").marked);
  EXPECT_EQ(answer_.status, 400U);
}

TEST(KeptAnswersOnTheWire, AreOldForNobodyOnceAWriteIsAcknowledged) {
  const RunningServer server;
  WireClient writing(server.port());
  WireClient reading(server.port(), "127.0.0.2");
  ASSERT_EQ(
      writing.get("/_vti_login/_vti_login2.asp?USER_NO=1001&USER_PASS=123456").text().firstCell(),
      "1");
  const std::string title =
      "/_vti_product/_vti_detail_field_s.asp?STABLE=XIMU&STRDATA=ximu,&STOTHER=id%3D1";
  for (int i = 0; i < 50; ++i) {
    const std::string written = "Title " + std::to_string(i);
    ASSERT_NE(reading.get(title).text().firstCell(), written);
    ASSERT_TRUE(
        writing
            .get("/_vti_product/_vti_add.asp?stable=ximu&stother=id%3D1&" + field("XIMU", written))
            .text()
            .marked);
    ASSERT_EQ(reading.get(title).text().firstCell(), written);
  }
}

/// A store of which only the version is asked.
class VersionedStore final : public Store {
 public:
  StoreReader& reader() override { throw std::logic_error("no rows"); }
  StoreReader& patientReader() override { throw std::logic_error("no rows"); }
  std::uint32_t versionRead() override { return version; }
  std::uint32_t versionNow() override { return version; }
  void transact(const std::function<void(StoreWriter&)>&) override {}

  std::uint32_t version = 1;
};

class KeptAnswersTest : public testing::Test {
 protected:
  // Whether the answer to that path had to be made.
  bool isMade(const std::string& path, std::size_t size = 10, bool forAll = true) {
    bool made = false;
    const PortalRequest request{.path = path, .parameters = {}, .address = {}, .host = {}};
    const PortalAnswer answer = kept_.answered(request, [&] {
      made = true;
      store_.version += commitsMeanwhile_;
      return PortalAnswer{.body = std::string(size, 'x'), .forAll = forAll};
    });
    EXPECT_EQ(answer.body.size(), size);
    return made;
  }

  VersionedStore store_;
  KeptAnswers kept_{store_};
  std::uint32_t commitsMeanwhile_ = 0;
};

TEST_F(KeptAnswersTest, LastUntilTheNextCommit) {
  EXPECT_TRUE(isMade("a"));
  EXPECT_FALSE(isMade("a"));
  EXPECT_TRUE(isMade("b"));
  ++store_.version;
  EXPECT_TRUE(isMade("a"));
  EXPECT_FALSE(isMade("a"));
  EXPECT_TRUE(isMade("b"));
  ++store_.version;
  EXPECT_TRUE(isMade("c"));
  EXPECT_FALSE(isMade("c"));
  EXPECT_TRUE(isMade("a")) << "older than the one made last";
}

TEST_F(KeptAnswersTest, AreThoseForAllAlone) {
  EXPECT_TRUE(isMade("a", 10, false));
  EXPECT_TRUE(isMade("a", 10, false));
}

TEST_F(KeptAnswersTest, AreNotThoseDuringWhichSomebodyCommitted) {
  commitsMeanwhile_ = 1;
  EXPECT_TRUE(isMade("a"));
  commitsMeanwhile_ = 0;
  EXPECT_TRUE(isMade("a"));
  EXPECT_FALSE(isMade("a"));
}

TEST_F(KeptAnswersTest, TakeNoMoreRoomThanTheyMay) {
  EXPECT_TRUE(isMade("huge", KeptAnswers::largest));
  EXPECT_TRUE(isMade("huge", KeptAnswers::largest));
  constexpr std::size_t size = KeptAnswers::largest / 2;
  int made = 0;
  for (std::size_t bytes = 0; bytes < KeptAnswers::mostBytes; bytes += size) {
    EXPECT_TRUE(isMade("page " + std::to_string(++made), size));
  }
  EXPECT_FALSE(isMade("page " + std::to_string(made), size)) << "the last one";
  EXPECT_TRUE(isMade("page 1", size)) << "went when there was no more room";
}

}  // namespace

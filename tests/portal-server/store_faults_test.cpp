#include <sqlite3.h>

#include <QFile>
#include <future>

#include "PortalTest.h"
#include "support/system_faults.h"

using namespace qinghe::portal_server;

namespace {

/// What happens to the portal's file from outside.
class StoreFaults : public PortalTest {
 protected:
  std::string path() const { return folder_.filePath(QStringLiteral("portal.db")).toStdString(); }
  AnswerText save(const std::string& text) {
    return ask("_vti_add.asp",
               {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"JISH", text}});
  }
  std::string kept() { return stored("ximu", 1, "jish"); }
};

/// Another program's connection to a file.
class OtherProgram {
 public:
  explicit OtherProgram(const std::string& path) {
    if (sqlite3_open(path.c_str(), &database_) != SQLITE_OK) ADD_FAILURE() << path;
  }
  ~OtherProgram() { sqlite3_close(database_); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  void run(const std::string& statement) {
    EXPECT_EQ(sqlite3_exec(database_, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << statement << ": " << sqlite3_errmsg(database_);
  }

 private:
  sqlite3* database_ = nullptr;
};

TEST_F(StoreFaults, OnAFullDiskAWriteIsRefusedReadingGoesOnAndTheNextOneSucceeds) {
  ASSERT_TRUE(save("before").marked);
  {
    const SizeLimit full(200'000);
    EXPECT_FALSE(save(std::string(400'000, 'x')).marked);
    EXPECT_EQ(answer_.status, 500U);
    EXPECT_EQ(kept(), "before");
    EXPECT_FALSE(save(std::string(400'000, 'y')).marked) << "nor the next one";
    EXPECT_TRUE(
        ask("_vti_detail_field_s.asp", {{"STABLE", "XIMU"}, {"STRDATA", "id,jish,"}}).marked);
  }
  EXPECT_EQ(save("after").firstCell(), "1");
  EXPECT_EQ(kept(), "after");
}

TEST_F(StoreFaults, AWriteWaitsForAnotherProgramsAndReadingDoesNot) {
  OtherProgram backup(path());
  backup.run("BEGIN IMMEDIATE");
  auto saved = std::async(std::launch::async, [&] {
    PortalRequest request{
        .path = "_vti_product/_vti_add.asp", .parameters = {}, .address = bookshop, .host = {}};
    request.parameters.add(field("stable", "ximu") + "&" + field("stother", "id=1") + "&" +
                           field("JISH", "waited"));
    return portal_->answer(request).status;
  });
  for (int i = 0; i < 20; ++i) EXPECT_NE(kept(), "waited");
  backup.run("COMMIT");
  EXPECT_EQ(saved.get(), 200U);
  EXPECT_EQ(kept(), "waited");
}

TEST_F(StoreFaults, TwoPortalsOnOneFileTakeTurns) {
  SqliteStore second(path());
  auto other = std::make_unique<Portal>(second);
  ASSERT_TRUE(save("one").marked);
  portal_.swap(other);
  EXPECT_EQ(save("two").firstCell(), "1") << "the login counts here, too";
  portal_.swap(other);
  EXPECT_EQ(kept(), "two");
  EXPECT_EQ(save("three").firstCell(), "1");
}

TEST_F(StoreFaults, AReadingConnectionCannotWrite) {
  SqliteConnection reading(path(), {.time = std::chrono::seconds(10)});
  const Table& goods = storedTable("ximu");
  EXPECT_TRUE(reading.byId(goods, 1));
  EXPECT_THROW(reading.update(goods, 1, {assign(goods, "ximu", std::string("x"))}),
               std::runtime_error);
  EXPECT_THROW(reading.remove(goods, {}), std::runtime_error);
  EXPECT_EQ(rowCount("ximu"), 419);
}

TEST(OlderFile, IsBroughtUpToDateAndKeepsItsRows) {
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("old.db")).toStdString();
  {
    OtherProgram old(path);
    old.run("CREATE TABLE qyxx (id INTEGER PRIMARY KEY, USER_NO TEXT, user_pass TEXT, qiye TEXT)");
    old.run("INSERT INTO qyxx VALUES (7,'1007','geheim','老书店')");
    old.run("CREATE TABLE session (id INTEGER PRIMARY KEY, address TEXT, qiye_id INTEGER)");
    old.run("INSERT INTO session VALUES (1,'10.0.0.7',7)");
    old.run("CREATE TABLE ximu (id INTEGER PRIMARY KEY, qiye_id INTEGER, ximu TEXT, noth INTEGER)");
    old.run("INSERT INTO ximu VALUES (3,7,'论语',1)");
    old.run("CREATE TABLE of_its_operator (note TEXT)");
    old.run("INSERT INTO of_its_operator VALUES ('mine')");
  }
  for (int start = 1; start <= 2; ++start) {
    SqliteStore store(path);
    const auto goods = store.reader().byId(storedTable("ximu"), 3);
    ASSERT_TRUE(goods) << start;
    EXPECT_EQ(goods->text("ximu"), "论语");
    EXPECT_EQ(goods->text("jish"), "");
    EXPECT_EQ(goods->integer("diji"), 0);
    const auto company = store.reader().byId(storedTable("qyxx"), 7);
    EXPECT_EQ(company->text("user_no"), "1007");
    EXPECT_EQ(company->integer("online"), start - 1) << "logged in below";
    Portal portal(store);
    portal.keepHouse({}, Visits::Clock::now());
    PortalRequest request{
        .path = "_vti_login/_vti_login2.asp", .parameters = {}, .address = "10.0.0.7", .host = {}};
    request.parameters.add("USER_NO=1007&USER_PASS=geheim");
    EXPECT_EQ(AnswerText::read(portal.answer(request).body).firstCell(), "7");
  }
  OtherProgram(path).run("UPDATE of_its_operator SET note='still mine' WHERE note='mine'");
}

TEST(BrokenFile, IsToldAndLeftAsItIs) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("no.db"));
  const QByteArray letter(5000, 'x');
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(letter);
  file.close();
  EXPECT_THROW(SqliteStore(path.toStdString()), std::runtime_error);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), letter);
}

}  // namespace

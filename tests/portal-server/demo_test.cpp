#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <algorithm>
#include <chrono>
#include <memory>
#include <set>

#include "DemoData.h"
#include "PortalTest.h"
#include "column_value.h"
#include "local_demo.h"

using namespace qinghe::portal_server;

class Demo : public PortalTest {
 protected:
  std::int64_t count(const char* table, const char* column, std::int64_t value) {
    const Table& known = storedTable(table);
    return store_->reader().count(known, Expression::equal(known, column, value));
  }
};

TEST_F(Demo, HoldsAWholeTrade) {
  const struct {
    const char* table;
    std::int64_t least;
  } rows[] = {{"haye", 8},  {"shen", 34},     {"area", 300},   {"lebi", 60},      {"shxi", 30},
              {"cyxx", 20}, {"qyxx", 12},     {"ximu", 400},   {"fuwu", 10},      {"mumu", 7},
              {"tupi", 8},  {"qust", 5},      {"gohu", 40},    {"goku", 150},     {"dihu", 20},
              {"xixi", 7},  {"forum", 6},     {"publish", 15}, {"xiwe", 8},       {"docu", 7},
              {"help", 20}, {"info_fuwu", 1}, {"zidu", 4},     {"info_fuwu2", 2}, {"zidu2", 5},
              {"zhij", 10}};
  for (const auto& row : rows) EXPECT_GE(rowCount(row.table), row.least) << row.table;
}

TEST_F(Demo, HasCompaniesOfEveryLevelWithManyAndWithFewGoods) {
  for (const std::int64_t level : {0, 1, 2}) EXPECT_GE(count("qyxx", "user_level", level), 2);
  EXPECT_GT(count("ximu", "qiye_id", 1), 50);
  EXPECT_LT(count("ximu", "qiye_id", 2), 50);
  EXPECT_EQ(stored("qyxx", 1, "user_level"), "2");
  EXPECT_EQ(stored("qyxx", 2, "user_level"), "0");
}

TEST_F(Demo, HasOrdersInEveryStateAndReturns) {
  std::set<std::string> states;
  for (std::int64_t id = 1; id <= rowCount("gohu"); ++id) {
    std::string state;
    for (const char* flag : {"jhhs", "xshs", "fh", "sh"}) state += stored("gohu", id, flag);
    states.insert(state);
    EXPECT_NE(stored("gohu", id, "fhrq"), "");
  }
  EXPECT_EQ(states, (std::set<std::string>{"0000", "1000", "1100", "1110", "1111"}));
  bool returned = false;
  for (std::int64_t id = 1; id <= rowCount("goku"); ++id) {
    returned = returned || stored("goku", id, "shli").starts_with("-");
  }
  EXPECT_TRUE(returned);
}

TEST_F(Demo, EveryReferenceFindsItsRow) {
  for (std::int64_t id = 1; id <= rowCount("ximu"); ++id) {
    ASSERT_EQ(stored("lebi", std::stoll(stored("ximu", id, "lebi_id")), "lebi"),
              stored("ximu", id, "lebi"));
    const std::int64_t maker = std::stoll(stored("ximu", id, "chye_id"));
    ASSERT_EQ(maker > 500 ? stored("mumu", maker, "ximu") : stored("cyxx", maker, "qiye"),
              stored("ximu", id, "chye"));
    ASSERT_EQ(stored("qyxx", std::stoll(stored("ximu", id, "qiye_id")), "user_name"),
              stored("ximu", id, "qiye"));
  }
  for (std::int64_t id = 1; id <= rowCount("goku"); ++id) {
    ASSERT_NE(stored("gohu", std::stoll(stored("goku", id, "gohu_id")), "id"), "no row");
    ASSERT_EQ(stored("ximu", std::stoll(stored("goku", id, "ximu_id")), "ximu"),
              stored("goku", id, "ximu"));
  }
}

TEST_F(Demo, IsFilledIntoAnEmptyDatabaseAlone) {
  EXPECT_FALSE(DemoData::fill(*store_));
  EXPECT_EQ(rowCount("ximu"), 419);
}

TEST_F(Demo, TheNewestMessageIsOfYesterdayAndNoneIsTooOldToBeKept) {
  std::string newest;
  for (std::int64_t id = 1; id <= rowCount("xixi"); ++id) {
    newest = std::max(newest, stored("xixi", id, "dtime"));
  }
  // Filled when the tests began, which may have been yesterday by now.
  const auto day = [](int ago) {
    return storedLocal(std::chrono::system_clock::now() - std::chrono::days(ago)).substr(0, 10);
  };
  EXPECT_TRUE(newest.substr(0, 10) == day(1) || newest.substr(0, 10) == day(2)) << newest;
  portal_->keepHouse({}, std::chrono::system_clock::now());
  EXPECT_EQ(rowCount("xixi"), 7);
}

namespace {

struct CloseLocal {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Local = std::unique_ptr<sqlite3, CloseLocal>;

// A local database as it is delivered, filled for one demo enterprise.
Local localDatabase(const std::string& userNumber) {
  sqlite3* opened = nullptr;
  sqlite3_open(":memory:", &opened);
  Local local(opened);
  QFile schema(QStringLiteral(QINGHE_SCHEMA));
  EXPECT_TRUE(schema.open(QIODevice::ReadOnly));
  for (const std::string& sql : {schema.readAll().toStdString(), localDemoSql(userNumber)}) {
    char* error = nullptr;
    sqlite3_exec(opened, sql.c_str(), nullptr, nullptr, &error);
    EXPECT_EQ(error, nullptr) << error;
    sqlite3_free(error);
  }
  return local;
}

std::vector<std::vector<std::string>> rowsOf(const Local& local, const char* sql) {
  std::vector<std::vector<std::string>> rows;
  sqlite3_exec(
      local.get(), sql,
      [](void* into, int count, char** cells, char**) {
        auto& row = static_cast<std::vector<std::vector<std::string>>*>(into)->emplace_back();
        for (int i = 0; i < count; ++i) row.emplace_back(cells[i] ? cells[i] : "null");
        return 0;
      },
      &rows, nullptr);
  return rows;
}

}  // namespace

TEST_F(Demo, LocalDatabasesMirrorThePortalsRows) {
  for (const std::int64_t enterprise : {1, 2}) {
    const Local local = localDatabase(std::to_string(1000 + enterprise));
    const std::string id = std::to_string(enterprise);
    EXPECT_EQ(rowsOf(local, "SELECT id,R_ID,user_no,user_pass FROM QYXX"),
              (std::vector<std::vector<std::string>>{{"1", id, "100" + id, "123456"}}));
    const auto goods = rowsOf(
        local, "SELECT R_ID,QIYE_ID,qiye,LEBI_ID,CHYE_ID,XIMU,JIGEX,NOTH,SHXI,ZHKO FROM XIMU");
    EXPECT_EQ(std::ssize(goods), count("ximu", "qiye_id", enterprise));
    for (const auto& row : goods) {
      const std::int64_t twin = std::stoll(row[0]);
      EXPECT_LE(twin, 32767);
      EXPECT_EQ(stored("ximu", twin, "qiye_id"), id);
      EXPECT_EQ(row[1], "1");
      EXPECT_EQ(row[2], stored("ximu", twin, "qiye"));
      EXPECT_EQ(std::stod(row[3]), std::stod(stored("ximu", twin, "lebi_id")));
      EXPECT_EQ(row[5], stored("ximu", twin, "ximu"));
      EXPECT_EQ(row[6], stored("ximu", twin, "jigex"));
      EXPECT_EQ(row[7], stored("ximu", twin, "noth"));
      EXPECT_EQ(row[8], stored("ximu", twin, "shxi"));
      EXPECT_EQ(row[9], stored("ximu", twin, "zhko"));
    }
    EXPECT_EQ(std::ssize(rowsOf(local, "SELECT 1 FROM FUWU")),
              count("fuwu", "qiye_id", enterprise));
    EXPECT_EQ(rowsOf(local, "SELECT count(*) FROM XIMU WHERE instr(JISH,'<br>')>0")[0][0], "0");
    EXPECT_NE(rowsOf(local, "SELECT count(*) FROM XIMU WHERE instr(JISH,char(13,10))>0")[0][0],
              "0");
  }
  EXPECT_THROW(localDemoSql("9999"), std::logic_error);
}

TEST_F(Demo, LocalDatabasesHoldAHistoryWithSeveralContacts) {
  for (const std::string id : {"1", "2"}) {
    const Local local = localDatabase("100" + id);
    const auto rows = rowsOf(local, "SELECT qyxx_id,qyxx,user_id,UserName,content,dtime FROM XIXI");
    EXPECT_GE(rows.size(), 15U);
    std::set<std::string> contacts;
    for (const auto& row : rows) {
      EXPECT_TRUE(row[0] == id || row[2] == id);
      contacts.insert(row[0] == id ? row[2] : row[0]);
      EXPECT_EQ(row[1], stored("qyxx", std::stoll(row[0]), "user_name"));
      EXPECT_EQ(row[3], stored("qyxx", std::stoll(row[2]), "user_name"));
      EXPECT_NE(row[4], "");
      EXPECT_EQ(row[5].size(), 19U);
    }
    EXPECT_GE(contacts.size(), 4U);
    EXPECT_FALSE(contacts.contains(id));
    const auto number = [&](const char* condition) {
      return std::stoi(rowsOf(local, condition)[0][0]);
    };
    EXPECT_GE(number("SELECT count(*) FROM XIXI WHERE content LIKE '（由服务器中转）_%'"), 3);
    EXPECT_GE(number("SELECT count(*) FROM XIXI WHERE content NOT LIKE '%由服务器中转%'"), 10);
    EXPECT_EQ(number("SELECT count(*) FROM XIXI WHERE instr(content,'<br>')>0"), 0);
    EXPECT_GE(number("SELECT count(*) FROM XIXI WHERE instr(content,char(13,10))>0"), 1);
    EXPECT_EQ(number("SELECT count(*) FROM XIXI WHERE datetime(dtime) IS NULL"), 0);
  }
}

TEST_F(Demo, BothCompaniesRememberTheirConversationAlike) {
  const char* conversation =
      "SELECT user_id,content,dtime FROM XIXI WHERE qyxx_id+user_id=3 AND abs(qyxx_id-user_id)=1 "
      "ORDER BY dtime";
  const auto first = rowsOf(localDatabase("1001"), conversation);
  EXPECT_GE(first.size(), 8U);
  EXPECT_EQ(first, rowsOf(localDatabase("1002"), conversation));
}

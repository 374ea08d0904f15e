#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <algorithm>
#include <chrono>
#include <map>
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

TEST_F(Demo, EveryProvinceHasItsCities) {
  const struct {
    const char* province;
    std::int64_t cities;
  } rows[] = {{"1", 16},  {"2", 16},  {"3", 11},  {"4", 11},  {"5", 12},  {"6", 14},  {"7", 9},
              {"8", 13},  {"9", 16},  {"10", 13}, {"11", 11}, {"12", 16}, {"13", 9},  {"14", 11},
              {"15", 16}, {"16", 18}, {"17", 17}, {"18", 14}, {"19", 21}, {"20", 14}, {"21", 4},
              {"22", 26}, {"23", 21}, {"24", 9},  {"25", 16}, {"26", 7},  {"27", 10}, {"28", 14},
              {"29", 8},  {"30", 5},  {"31", 14}, {"32", 3},  {"33", 3},  {"34", 9}};
  EXPECT_EQ(std::ssize(rows), rowCount("shen"));
  for (const auto& row : rows) {
    EXPECT_EQ(count("area", "shen_id", std::stoll(row.province)), row.cities) << row.province;
  }
}

TEST_F(Demo, EveryIndustryHasCategoriesInTwoLevelsAndAttributesOfEachKind) {
  std::map<std::pair<std::string, std::string>, int> attributes;
  for (std::int64_t id = 1; id <= rowCount("shxi"); ++id) {
    ++attributes[{stored("shxi", id, "haye_id"), stored("shxi", id, "xuze")}];
  }
  std::set<std::string> withTop;
  std::set<std::string> withSecond;
  for (std::int64_t id = 1; id <= rowCount("lebi"); ++id) {
    const bool top = stored("lebi", id, "p_id") == "0";
    (top ? withTop : withSecond).insert(stored("lebi", id, "haye_id"));
  }
  EXPECT_EQ(std::ssize(withTop), rowCount("haye"));
  EXPECT_EQ(withSecond, withTop);
  for (std::int64_t industry = 1; industry <= rowCount("haye"); ++industry) {
    for (const char* kind : {"0", "1", "2"}) {
      EXPECT_GE((attributes[{std::to_string(industry), kind}]), 2) << industry << " " << kind;
    }
  }
}

TEST_F(Demo, TheAttributeTextsOfTheRecordsFitTheAttributesOfTheirIndustry) {
  const struct {
    const char* table;
    std::int64_t first;
    std::int64_t kind;
  } rows[] = {{"ximu", 1, 0}, {"fuwu", 1, 1}, {"mumu", 501, 2}};
  const auto attributes = [this](const std::string& industry, std::int64_t kind) {
    std::int64_t found = 0;
    for (std::int64_t id = 1; id <= rowCount("shxi"); ++id) {
      found += stored("shxi", id, "haye_id") == industry &&
               stored("shxi", id, "xuze") == std::to_string(kind);
    }
    return found;
  };
  std::map<std::pair<std::string, std::int64_t>, std::int64_t> expected;
  for (const auto& row : rows) {
    for (std::int64_t id = row.first; id < row.first + rowCount(row.table); ++id) {
      const std::string text = stored(row.table, id, "shxi");
      if (text.empty()) continue;
      const std::string industry =
          stored("qyxx", std::stoll(stored(row.table, id, "qiye_id")), "haye_id");
      auto [known, isNew] = expected.try_emplace({industry, row.kind});
      if (isNew) known->second = attributes(industry, row.kind);
      EXPECT_EQ(std::count(text.begin(), text.end(), ','), known->second) << row.table << " " << id;
    }
  }
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

TEST_F(Demo, LocalDatabasesHoldTheOrdersOfTheirEnterpriseAsThePortalDoes) {
  const char* columns[] = {"gohu_no", "ghrq", "gosh_id", "gosh", "kehu_id", "kehu", "feyo",
                           "fhrq",    "jhhs", "xshs",    "sh",   "fh",      "fhfs"};
  for (const std::string id : {"1", "2"}) {
    const Local local = localDatabase("100" + id);
    std::string names = "R_ID";
    for (const char* column : columns) names.append(",").append(column);
    const auto orders = rowsOf(local, ("SELECT " + names + " FROM GOHU").c_str());
    std::int64_t own = 0;
    for (std::int64_t order = 1; order <= rowCount("gohu"); ++order) {
      own += stored("gohu", order, "gosh_id") == id || stored("gohu", order, "kehu_id") == id;
    }
    EXPECT_EQ(std::ssize(orders), own);
    for (const auto& order : orders) {
      for (std::size_t i = 0; i < std::size(columns); ++i) {
        EXPECT_EQ(order[i + 1], stored("gohu", std::stoll(order[0]), columns[i])) << columns[i];
      }
    }
    // Headers and lines add up, and each line hangs on the copy of its order.
    const auto sums = rowsOf(local,
                             "SELECT max(abs(h.SHLI-l.q)+abs(h.JINE-l.a)+abs(h.YNSH-l.r)),count(*) "
                             "FROM GOHU h JOIN (SELECT GOHU_ID,R_ID,sum(SHLI) q,sum(JINE) a,"
                             "sum(YNSH) r FROM GOKU GROUP BY GOHU_ID,R_ID) l "
                             "ON l.GOHU_ID=h.id AND l.R_ID=h.R_ID");
    EXPECT_LT(std::stod(sums[0][0]), 0.001);
    EXPECT_EQ(sums[0][1], std::to_string(own));
    EXPECT_EQ(rowsOf(local, "SELECT 1 FROM GOKU GROUP BY R_ID,XIMU_ID HAVING count(*)>1").size(),
              0U)
        << "a copy holds each goods of an order once";
  }
}

TEST_F(Demo, LocalOrdersFillEveryStatisticOfBothSides) {
  for (const std::string id : {"1", "2"}) {
    const Local local = localDatabase("100" + id);
    for (const std::string own : {"kehu_id", "gosh_id"}) {
      const std::string partner = own == "kehu_id" ? "gosh_id" : "kehu_id";
      const std::string lines =
          " FROM GOHU JOIN GOKU ON GOKU.GOHU_ID=GOHU.id WHERE " + own + "=" + id;
      const auto number = [&](const std::string& what) {
        return std::stoi(rowsOf(local, ("SELECT " + what + lines).c_str())[0][0]);
      };
      const std::string side = id + own;
      EXPECT_GE(number("count(DISTINCT " + partner + ")"), id == "1" ? 2 : 1) << side;
      EXPECT_GE(number("count(DISTINCT substr(ghrq,1,7))"), 2) << side;
      EXPECT_GE(number("count(DISTINCT LEBI)"), 4) << side;
      EXPECT_GE(number("count(DISTINCT XIMU_ID)"), 6) << side;
      EXPECT_GE(number("sum(GOKU.SHLI<0)"), 1) << side << ": returns";
    }
  }
  // What a seller's details list are its goods in orders in which it is the customer.
  EXPECT_GE(
      std::stoi(rowsOf(localDatabase("1001"),
                       "SELECT count(*) FROM GOHU JOIN GOKU ON GOKU.GOHU_ID=GOHU.id "
                       "WHERE kehu_id=1 AND XIMU_ID IN (SELECT XIMU_ID FROM GOHU h JOIN GOKU l "
                       "ON l.GOHU_ID=h.id WHERE h.gosh_id=1)")[0][0]),
      3);
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

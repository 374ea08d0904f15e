#include <gtest/gtest.h>

#include "ConditionParser.h"
#include "PortalTest.h"
#include "Refusal.h"
#include "column_value.h"
#include "sql_text.h"

using namespace qinghe::portal_server;

namespace {

std::string shown(const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
  if (const auto* real = std::get_if<double>(&value)) return std::to_string(*real);
  return "'" + std::get<std::string>(value) + "'";
}

// The statement's condition with its values put back, for reading alone.
std::string meaning(const Table& table, const std::string& text) {
  const Sql sql = countSql(table, ConditionParser(table).parse(text));
  const std::size_t where = sql.text.find(" WHERE ");
  if (where == std::string::npos) return "";
  std::string result;
  std::size_t used = 0;
  for (const char c : sql.text.substr(where + 7)) {
    if (c == '?') {
      result += shown(sql.values.at(used++));
    } else if (c != '"') {
      result += c;
    }
  }
  return result;
}

}  // namespace

TEST(Condition, EveryTextThatTheClientSendsIsUnderstood) {
  const struct {
    const char* table;
    const char* text;
    const char* meaning;
  } rows[] = {
      {"ximu", "", ""},
      {"ximu", "NOTH=TRUE", "noth=1"},
      {"ximu", "noth=false", "noth=0"},
      {"ximu", "noth=1", "noth=1"},
      {"ximu", "noth=-1", "noth=1"},
      {"ximu", "QIYE_ID=7", "qiye_id=7"},
      {"ximu", "id=25 and qiye_id=7", "(id=25 AND qiye_id=7)"},
      {"ximu", "noth=true and qiye_id=7", "(noth=1 AND qiye_id=7)"},
      {"ximu", "noth=true and ximu like '%语文%'", "(noth=1 AND ximu LIKE '%语文%')"},
      {"ximu", "NOTH=TRUE AND XIMU='渡口的灯'", "(noth=1 AND ximu='渡口的灯')"},
      {"ximu", "id in (1,2,3) and qiye_id=1", "(id IN (1,2,3) AND qiye_id=1)"},
      {"ximu", "id in () and qiye_id=1", "(id IN () AND qiye_id=1)"},
      {"ximu", "ximu like 'a&lt;b'", "ximu LIKE 'a&lt;b'"},
      {"ximu", "ximu like 'a<b'", "ximu LIKE 'a&lt;b'"},
      {"ximu", "ximu='it''s'", "ximu='it's'"},
      {"lebi", "P_ID=0 AND HAYE_ID=3", "(p_id=0 AND haye_id=3)"},
      {"shxi", "HAYE_ID=3 and xuze=0", "(haye_id=3 AND xuze=0)"},
      {"forum", "border_id=0 or border_id=7", "(border_id=0 OR border_id=7)"},
      {"publish", "p_id=0 and forum_id=3", "(p_id=0 AND forum_id=3)"},
      {"xiwe", "P_ID=0 and (qiye_id=0 or qiye_id=7)", "(p_id=0 AND (qiye_id=0 OR qiye_id=7))"},
      {"docu", "P_ID=0 and(qiye_id=0 or qiye_id=7)", "(p_id=0 AND (qiye_id=0 OR qiye_id=7))"},
      {"gohu", "kehu_id=2 and ghrq&gt;=#3/9/2026# and ghrq&lt;=#11/18/2026#",
       "(kehu_id=2 AND ghrq>='2026-03-09 00:00:00' AND ghrq<='2026-11-18 00:00:00')"},
      {"gohu", "kehu_id=2 and gosh like '%青%'", "(kehu_id=2 AND gosh LIKE '%青%')"},
      {"gohu", "id<>5 and id &lt;&gt; 6 and id > 1 and id < 9",
       "(id<>5 AND id<>6 AND id>1 AND id<9)"},
      {"goku", "shli&lt;0", "shli<0"},
      {"goku", "shli>=2.5", "shli>=2.500000"},
      {"ximu", "((((id=1))))", "id=1"},
      {"ximu", "id=1 or id=2 and id=3", "(id=1 OR (id=2 AND id=3))"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(meaning(storedTable(row.table), row.text), row.meaning) << row.text;
  }
}

TEST(Condition, WhatDoesNotParseIsRefused) {
  for (const char* text : {"id",          "id=",
                           "=1",          "id==1",
                           "id=1 and",    "and id=1",
                           "id=1 or",     "(id=1",
                           "id=1)",       "()",
                           "id=1 id=2",   "id=x",
                           "id='5'",      "ximu=5",
                           "ximu like 5", "id like '5'",
                           "noth='true'", "noth=2 3",
                           "ximu='open",  "ximu like '%O'Neil%'",
                           "id in 1",     "id in (1",
                           "id in (1,)",  "id in (,1)",
                           "id in ('a')", "id=1.2.3",
                           "id=1a",       "id=-",
                           "id=--1",      "id=+1",
                           "id=0x10",     "id between 1 and 2",
                           "not id=1",    "id is null",
                           "id=1e5",      "id!=1",
                           "ximu=true",   "id=#1/1/2026#",
                           "unknown=1",   "id = id",
                           "1=1",         "id=1;",
                           "\xEF\xBF\xBD"}) {
    EXPECT_THROW(ConditionParser(storedTable("ximu")).parse(text), Refusal) << text;
  }
  EXPECT_THROW(ConditionParser(storedTable("gohu")).parse("ghrq=#13/40/2026#"), Refusal);
  EXPECT_THROW(ConditionParser(storedTable("gohu")).parse("ghrq=#1/1/2026"), Refusal);
  EXPECT_THROW(ConditionParser(storedTable("gohu")).parse("ghrq=20260101"), Refusal);
}

TEST(Condition, AttemptsToReachBeyondTheTableAreRefused) {
  for (const char* text : {"1=1 --",
                           "id=1; drop table ximu",
                           "id=1 union select user_pass from qyxx",
                           "id in (select id from qyxx)",
                           "ximu.id=1",
                           "id=1/*x*/",
                           "sqlite_version()='x'",
                           "id=(1)",
                           "length(ximu)=1",
                           "\"id\"=1",
                           "[id]=1",
                           "`id`=1",
                           "rowid=1",
                           "oid=1",
                           "ximu='' or randomblob(1000000000)",
                           "id=?1",
                           "id=:a",
                           "id=@a",
                           "ximu=x'41'",
                           "id=1 \\",
                           "id=1 | 1",
                           "id=1 & 1"}) {
    EXPECT_THROW(ConditionParser(storedTable("ximu")).parse(text), Refusal) << text;
  }
  for (const char* text : {"user_level=2", "submit_mode=1"}) {
    EXPECT_THROW(ConditionParser(storedTable("qyxx")).parse(text), Refusal) << text;
  }
}

TEST(Condition, DepthAndSizeAreBounded) {
  const auto brackets = [](std::size_t depth) {
    return std::string(depth, '(') + "id=1" + std::string(depth, ')');
  };
  ConditionParser parser(storedTable("ximu"));
  EXPECT_NO_THROW(parser.parse(brackets(32)));
  EXPECT_THROW(parser.parse(brackets(33)), Refusal);
  EXPECT_THROW(parser.parse(brackets(30'000)), Refusal);
  EXPECT_THROW(parser.parse(std::string(60'000, '(')), Refusal);

  const auto terms = [](int count) {
    std::string text = "id=0";
    for (int i = 1; i < count; ++i) text += " or id=" + std::to_string(i);
    return text;
  };
  EXPECT_NO_THROW(parser.parse(terms(200)));
  EXPECT_THROW(parser.parse(terms(201)), Refusal);

  const auto listed = [](int count) {
    std::string text = "id in (0";
    for (int i = 1; i < count; ++i) text += "," + std::to_string(i);
    return text + ")";
  };
  EXPECT_NO_THROW(parser.parse(listed(3'900)));
  EXPECT_THROW(parser.parse(listed(4'001)), Refusal);
  EXPECT_THROW(parser.parse("ximu='" + std::string(70'000, 'a') + "'"), Refusal);
  EXPECT_NO_THROW(parser.parse("ximu like '%a%b%c%'"));
  EXPECT_THROW(parser.parse("ximu like '%a%b%c%d%e%f%g%'"), Refusal);
  EXPECT_THROW(parser.parse("ximu like '" + std::string(601, 'a') + "'"), Refusal);
}

TEST(Order, KnownColumnsWithTheirDirections) {
  const Table& table = storedTable("gohu");
  const auto order = parseOrder(table, "ghrq DESC, ID asc,kehu");
  ASSERT_EQ(order.size(), 3U);
  EXPECT_EQ(order[0].column->name, "ghrq");
  EXPECT_TRUE(order[0].descending);
  EXPECT_EQ(order[1].column->name, "id");
  EXPECT_FALSE(order[1].descending);
  EXPECT_TRUE(parseOrder(table, "").empty());
  for (const char* text : {"x", "id desc desc", "id; drop", "id,,kehu", "1", "id descending",
                           "id,id,id,id,id,id,id,id,id", "random()"}) {
    EXPECT_THROW(parseOrder(table, text), Refusal) << text;
  }
  EXPECT_THROW(parseOrder(storedTable("ximu"), "jish"), Refusal) << "a long text is no order";
}

TEST(Fields, KnownColumnsInTheGivenOrder) {
  const Table& table = storedTable("ximu");
  const auto fields = parseFields(table, "ximu,id,ID,");
  ASSERT_EQ(fields.size(), 3U);
  EXPECT_EQ(fields[0]->name, "ximu");
  EXPECT_EQ(fields[2]->name, "id");
  EXPECT_EQ(parseFields(table, "id").size(), 1U);
  std::string many;
  for (int i = 0; i < 65; ++i) many += "id,";
  for (const std::string& text :
       {std::string(), std::string(","), std::string("id,,ximu,"), std::string("x,"),
        std::string("*"), std::string("id ximu"), std::string("count(*)"), many}) {
    EXPECT_THROW(parseFields(table, text), Refusal) << text;
  }
}

TEST(RowKey, NamesOneRowAndItsOwnerAndNothingElse) {
  const Table& goods = storedTable("ximu");
  EXPECT_EQ(parseRowKey(goods, "id=25 and qiye_id=7").id, 25);
  EXPECT_EQ(parseRowKey(goods, "id=25 and qiye_id=7").owner, 7);
  EXPECT_EQ(parseRowKey(goods, "id=0").id, 0);
  EXPECT_FALSE(parseRowKey(goods, "id=0").owner);
  EXPECT_EQ(parseRowKey(storedTable("goku"), "id=417 and gohu_id=88").owner, 88);
  for (const char* text : {"", "id=", "id>1", "id=1 or id=2", "qiye_id=7", "id=1 and noth=true",
                           "id=1.5", "id=-1", "id in (1)", "id=1 and (qiye_id=7 or qiye_id=8)"}) {
    EXPECT_THROW(parseRowKey(goods, text), Refusal) << text;
  }
}

TEST(ColumnValue, FollowsTheColumnsType) {
  const Table& orders = storedTable("gohu");
  const auto value = [&](const char* column, std::string_view text) -> std::string {
    const auto read = columnValue(*orders.column(column), text);
    return read ? shown(*read) : "refused";
  };
  EXPECT_EQ(value("gosh_id", "12"), "12");
  EXPECT_EQ(value("gosh_id", ""), "0");
  EXPECT_EQ(value("gosh_id", "x"), "refused");
  EXPECT_EQ(value("gosh_id", "1e300"), "refused");
  EXPECT_EQ(value("jine", "312.5"), "312.500000");
  EXPECT_EQ(value("jine", "250.00"), "250");
  EXPECT_EQ(value("jine", "面议"), "'面议'");
  EXPECT_EQ(value("feyo", "12元"), "'12元'");
  for (const char* on : {"1", "-1", "True", "true"}) EXPECT_EQ(value("fh", on), "1") << on;
  for (const char* off : {"0", "", "False"}) EXPECT_EQ(value("fh", off), "0") << off;
  EXPECT_EQ(value("fh", "maybe"), "refused");
  EXPECT_EQ(value("ghrq", "2026-3-9"), "'2026-03-09 00:00:00'");
  EXPECT_EQ(value("ghrq", "2026-3-9 8:05:00"), "'2026-03-09 08:05:00'");
  EXPECT_EQ(value("ghrq", ""), "''");
  EXPECT_EQ(value("ghrq", "soon"), "refused");
  EXPECT_EQ(value("gosh", std::string(4000, 'a')).size(), 4002U);
  EXPECT_EQ(value("gosh", std::string(4001, 'a')), "refused");
}

TEST(PrintedDate, IsUnpaddedWithTheTimeBehindIt) {
  EXPECT_EQ(printedDate("2026-03-09 00:00:00"), "2026-3-9");
  EXPECT_EQ(printedDate("2026-11-18 08:05:09"), "2026-11-18 8:05:09");
  EXPECT_EQ(printedDate("2026-11-18 20:00:00"), "2026-11-18 20:00:00");
  EXPECT_EQ(printedDate(""), "");
}

// The tree must mean in the store what it says.
class ConditionOnDemo : public PortalTest {};

TEST_F(ConditionOnDemo, SelectsTheRowsThatItNames) {
  const struct {
    const char* table;
    const char* text;
    std::int64_t rows;
  } rows[] = {
      {"ximu", "qiye_id=1", 118},
      {"ximu", "qiye_id=2", 8},
      {"ximu", "qiye_id=2 and noth=true", 7},
      {"ximu", "qiye_id=2 and noth=false", 1},
      {"ximu", "id in (1,2,3)", 3},
      {"ximu", "id in ()", 0},
      {"ximu", "qiye_id=2 and ximu like '%小树%'", 1},
      {"ximu", "qiye_id=2 and ximu='月亮邮局'", 1},
      {"ximu", "ximu_bh='a0001'", 1},
      {"gohu", "ghrq<#3/1/2026#", 0},
      {"gohu", "ghrq>=#3/1/2026#", 46},
      {"qyxx", "user_no='1001'", 1},
  };
  for (const auto& row : rows) {
    const Table& table = storedTable(row.table);
    EXPECT_EQ(store_->reader().count(table, ConditionParser(table).parse(row.text)), row.rows)
        << row.text;
  }
}

#include "store/CommandDialect.h"

#include "store/CommandLexer.h"
#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

struct Turn {
  const char* name;
  QString command;
  QString engine;
};

class Dialect : public testing::TestWithParam<Turn> {};

TEST_P(Dialect, TurnsOnlyWhatTheEngineDoesNotSpeak) {
  EXPECT_EQ(toEngine(GetParam().command), GetParam().engine);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, Dialect,
    testing::Values(
        Turn{"plain", u"SELECT *  FROM QYXX "_s, u"SELECT *  FROM QYXX "_s},
        Turn{"date", u"ghrq>=#3/9/2024#"_s, u"ghrq>='2024-03-09 00:00:00'"_s},
        Turn{"twoDates", u"a>=#1/1/2024# and a<=#12/31/2024#"_s,
             u"a>='2024-01-01 00:00:00' and a<='2024-12-31 00:00:00'"_s},
        Turn{"dateWithTime", u"a=#3/9/2024 8:05:07#"_s, u"a='2024-03-09 08:05:07'"_s},
        Turn{"noDate", u"a=#13/45/2024#"_s, u"a=#13/45/2024#"_s},
        Turn{"loneSign", u"a=#3/9/2024"_s, u"a=#3/9/2024"_s},
        Turn{"join", u"a&'年'&b"_s, u"a->>'年'->>b"_s},
        Turn{"joinInText", u"a='R&D #1/1/2024#'"_s, u"a='R&D #1/1/2024#'"_s},
        Turn{"doubledQuote", u"a='it''s & #1/1/2024#' & b"_s, u"a='it''s & #1/1/2024#' ->> b"_s},
        Turn{"joinInName", u"[a&b] & \"c&d\" & `e&f`"_s, u"[a&b] ->> \"c&d\" ->> `e&f`"_s},
        Turn{"strayQuote", u"a='O'Neil' and b=#1/1/2024#"_s, u"a='O'Neil' and b=#1/1/2024#"_s},
        Turn{"comment", u"a -- x & #1/1/2024#\n& b"_s, u"a -- x & #1/1/2024#\n->> b"_s},
        Turn{"trueStays", u"noth=true"_s, u"noth=true"_s}, Turn{"empty", u""_s, u""_s}),
    [](const auto& row) { return row.param.name; });

TEST(CommandLexer, PiecesPutTogetherAreTheCommandAgainWhereverItIsCut) {
  const QString whole =
      u"SHAPE {select 'a}''b' & [c d] from \"t\" where x>=#1/2/2003# /* y */ -- z\n} AS 名"_s;
  for (qsizetype length = 0; length <= whole.size(); ++length) {
    const QString command = whole.first(length);
    QString again;
    for (const Token& token : tokensOf(command)) again += token.text;
    EXPECT_EQ(again, command);
  }
}

TEST(SingleTableCommand, KnowsTheCommandsWhoseRowsAreThoseOfOneTable) {
  for (const QString& command :
       {u"SELECT * FROM XIMU"_s, u"SELECT *  FROM QYXX "_s, u"select * from ximu where noth=true"_s,
        u"SELECT * FROM XIXI WHERE QYXX_ID=1 OR USER_ID=1 order by dtime desc"_s,
        u"SELECT * FROM XIMU AS x WHERE x.id=1"_s, u"SELECT * FROM [XIMU] ;"_s,
        u"SELECT * FROM XIMU WHERE id IN (SELECT id FROM FUWU GROUP BY id)"_s}) {
    EXPECT_TRUE(singleTableCommand(command)) << command.toStdString();
  }
}

TEST(SingleTableCommand, KnowsTheOthers) {
  for (const QString& command :
       {u""_s, u"SELECT"_s, u"SELECT DISTINCT * FROM XIMU"_s, u"SELECT id FROM XIMU"_s,
        u"SELECT * FROM GOHU, GOKU"_s, u"SELECT * FROM GOHU JOIN GOKU ON 1"_s,
        u"SELECT * FROM GOHU g, GOKU"_s, u"SELECT * FROM (SELECT 1)"_s,
        u"SELECT * FROM XIMU UNION SELECT * FROM XIMU"_s, u"SELECT * FROM XIMU LIMIT 2"_s,
        u"SELECT * FROM XIMU GROUP BY XIMU"_s, u"DELETE * FROM XIMU"_s}) {
    EXPECT_FALSE(singleTableCommand(command)) << command.toStdString();
  }
}

TEST(SingleTableCommand, CutsTheCommandAtTheTable) {
  const auto parts = singleTableCommand(u"SELECT *  FROM  [a b] WHERE x=1 ORDER BY y ; "_s);
  ASSERT_TRUE(parts);
  EXPECT_EQ(parts->table, u"a b"_s);
  EXPECT_EQ(parts->tail, u"[a b] WHERE x=1 ORDER BY y"_s);
  EXPECT_TRUE(parts->ordered);
}

TEST(SortedDistinct, OrdersWhatHasNoOrderOfItsOwn) {
  EXPECT_EQ(withSortedDistinct(u"select distinct lebi FROM vLEBI where KEHU_ID=25 ; "_s, 1),
            u"select distinct lebi FROM vLEBI where KEHU_ID=25 ORDER BY 1"_s);
  EXPECT_EQ(withSortedDistinct(u"SELECT DISTINCT a, b FROM (SELECT * FROM t ORDER BY c)"_s, 2),
            u"SELECT DISTINCT a, b FROM (SELECT * FROM t ORDER BY c) ORDER BY 1,2"_s);
}

TEST(SortedDistinct, LeavesAnyOtherCommandAlone) {
  for (const QString& command :
       {u""_s, u"SELECT"_s, u"SELECT a FROM t"_s, u"SELECT DISTINCT a FROM t ORDER BY b"_s,
        u"SELECT DISTINCT a FROM t UNION SELECT b FROM u"_s, u"SELECT DISTINCT a FROM t LIMIT 1"_s,
        u"SELECT 'DISTINCT' FROM t"_s}) {
    EXPECT_EQ(withSortedDistinct(command, 1), command);
  }
}

TEST(SortedDistinct, TextsComeAsTextsWithoutCaseAndNumbersByValue) {
  const StoreFixture f;
  f.store.exec(
      u"INSERT INTO GOKU (GOHU_ID,XIMU_ID,LEBI) VALUES "
      "(1,10,'b'),(2,9,'10月'),(3,9,'B'),(4,9,'9月'),(5,9,'a')"_s);
  const auto walk = [&](const QString& command, const QString& field) {
    QStringList texts;
    for (Recordset set = f.open(command); !set.atEnd(); set.MoveNext()) texts << set.text(field);
    return texts.join(u' ');
  };
  EXPECT_EQ(walk(u"SELECT distinct lebi FROM GOKU"_s, u"lebi"_s).toLower(), u"10月 9月 a b"_s);
  EXPECT_EQ(walk(u"SELECT distinct XIMU_ID FROM GOKU"_s, u"XIMU_ID"_s), u"9 10"_s);
}

TEST(Dialect, JoiningTakesNullAsEmptyAndNumbersAsTheScreensShowThem) {
  const StoreFixture f;
  const auto joined = [&](const QString& expression) {
    return f.open(u"SELECT "_s + expression + u" AS x"_s).text(u"x"_s);
  };
  EXPECT_EQ(joined(u"NULL&'a'&NULL"_s), u"a"_s);
  EXPECT_EQ(joined(u"1.5&'年'&2"_s), u"1.5年2"_s);
  EXPECT_EQ(joined(u"2.0&''"_s), u"2"_s);
  EXPECT_EQ(joined(u"NULL&NULL"_s), u""_s);
}

TEST(Dialect, YearAndMonthReadStoredDatesAndAreNullForAnythingElse) {
  const StoreFixture f;
  auto set = f.open(
      u"SELECT year('2024-03-09 08:05:00') AS y, month('2024-03-09 08:05:00') AS m, "
      u"year(NULL) AS n, month('soon') AS s"_s);
  EXPECT_EQ(set.text(u"y"_s), u"2024"_s);
  EXPECT_EQ(set.text(u"m"_s), u"3"_s);
  EXPECT_TRUE(set.value(u"n"_s).isNull());
  EXPECT_TRUE(set.value(u"s"_s).isNull());
}

}  // namespace
}  // namespace qinghe

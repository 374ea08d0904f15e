#include "store/ShapedSet.h"

#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

TEST(ShapedSet, PlainCommandGivesOneLevelWithoutAName) {
  const StoreFixture f;
  f.store.exec(
      u"INSERT INTO XIMU (XIMU,JIGEX,QIYE_ID,NOTH) VALUES ('甲','1.50',3,1),('乙','2',4,0)"_s);
  const ShapedSetPtr set = f.shape(u"select * from ximu where qiye_id=3"_s);
  ASSERT_EQ(set->rowCount(), 1);
  EXPECT_EQ(set->name(), u""_s);
  EXPECT_EQ(set->columnIndex(u"jigeX"_s), set->columns().indexOf(u"JIGEX"_s));
  EXPECT_EQ(set->columnIndex(u"none"_s), -1);
  EXPECT_EQ(set->text(0, set->columnIndex(u"JIGEX"_s)), u"1.50"_s);
  EXPECT_EQ(set->text(0, set->columnIndex(u"NOTH"_s)), u"True"_s);
  EXPECT_EQ(set->value(0, set->columnIndex(u"NOTH"_s)), QVariant(true));
  EXPECT_EQ(set->text(0, set->columnIndex(u"SHXI"_s)), u""_s);
  EXPECT_TRUE(set->childNames().isEmpty());
  EXPECT_EQ(set->child(0, u"x"_s), nullptr);
}

TEST(ShapedSet, RefusesRowsAndColumnsItDoesNotHave) {
  const StoreFixture f;
  const ShapedSetPtr set =
      f.shape(u"SHAPE {SELECT 1 AS a} AS n APPEND ({SELECT 2 AS b} AS m RELATE a TO b) AS m"_s);
  EXPECT_THROW(set->value(-1, 0), StoreError);
  EXPECT_THROW(set->value(1, 0), StoreError);
  EXPECT_THROW(set->text(0, 1), StoreError);
  EXPECT_THROW(set->text(0, -1), StoreError);
  EXPECT_THROW(set->child(1, u"m"_s), StoreError);
  EXPECT_EQ(set->child(0, u"m"_s)->rowCount(), 0);
}

// Letters and numbers as one query, so that a test shows its rows where it uses them.
QString values(const QString& columns, const QString& rows) {
  return u"{WITH t("_s + columns + u") AS (VALUES "_s + rows + u") SELECT * FROM t}"_s;
}

TEST(ShapedSet, RelatesTextWithoutCaseNumbersByValueAndNullToNull) {
  const StoreFixture f;
  const ShapedSetPtr set = f.shape(
      u"SHAPE "_s + values(u"k"_s, u"('Ab'),(2),('2'),(NULL),('书')"_s) + u" AS n APPEND ("_s +
      values(u"p,v"_s,
             u"('aB','x'),(2.0,'y'),('2','z'),(NULL,'w'),('书','v'),"
             u"('AB','u')"_s) +
      u" AS m RELATE 'K' TO 'P') AS m"_s);
  ASSERT_EQ(set->rowCount(), 5);
  EXPECT_EQ(column(*set->child(0, u"M"_s), u"v"_s), (QStringList{u"x"_s, u"u"_s}))
      << "in the child's own order";
  EXPECT_EQ(column(*set->child(1, u"m"_s), u"v"_s), QStringList{u"y"_s});
  EXPECT_EQ(column(*set->child(2, u"m"_s), u"v"_s), QStringList{u"z"_s});
  EXPECT_EQ(column(*set->child(3, u"m"_s), u"v"_s), QStringList{u"w"_s});
  EXPECT_EQ(column(*set->child(4, u"m"_s), u"v"_s), QStringList{u"v"_s});
}

TEST(ShapedSet, RelatesOnSeveralColumnsWithoutMixingThemUp) {
  const StoreFixture f;
  const ShapedSetPtr set =
      f.shape(u"SHAPE "_s + values(u"a,b"_s, u"('x','yz'),('xy','z')"_s) + u" AS n APPEND ("_s +
              values(u"c,d,v"_s, u"('x','yz',1),('xy','z',2)"_s) +
              u" AS m RELATE 'a' TO 'c','b' TO 'd') AS m"_s);
  EXPECT_EQ(column(*set->child(0, u"m"_s), u"v"_s), QStringList{u"1"_s});
  EXPECT_EQ(column(*set->child(1, u"m"_s), u"v"_s), QStringList{u"2"_s});
}

TEST(ShapedSet, HasChildrenOfChildrenAtAnyDepth) {
  const StoreFixture f;
  QString command = values(u"k,depth"_s, u"(1,0)"_s) + u" AS m0"_s;
  constexpr int depth = 12;
  for (int i = 1; i <= depth; ++i) {
    command = u"(SHAPE "_s + values(u"k,depth"_s, u"(1,%1),(2,%1)"_s.arg(i)) +
              u" AS m%1 APPEND (%2 RELATE k TO k) AS m%3)"_s.arg(i).arg(command).arg(i - 1);
  }
  ShapedSetPtr level = f.shape(u"SHAPE {SELECT 1 AS k} AS top APPEND ("_s + command +
                               u" RELATE k TO k) AS m%1"_s.arg(depth));
  for (int i = depth; i >= 0; --i) {
    level = level->child(0, u"M%1"_s.arg(i));
    ASSERT_TRUE(level) << i;
    ASSERT_EQ(level->rowCount(), 1);
    EXPECT_EQ(level->name(), u"m%1"_s.arg(i));
    EXPECT_EQ(level->text(0, 1), QString::number(i));
  }
}

TEST(ShapedSet, ChildOutlivesTheLevelAbove) {
  const StoreFixture f;
  ShapedSetPtr child;
  {
    const ShapedSetPtr set = f.shape(
        u"SHAPE {SELECT 1 AS a} AS n APPEND ({SELECT 1 AS b, 'x' AS v} AS m RELATE a TO b) AS m"_s);
    EXPECT_EQ(set->childNames(), QStringList{u"m"_s});
    child = set->child(0, u"m"_s);
  }
  EXPECT_EQ(column(*child, u"v"_s), QStringList{u"x"_s});
}

TEST(ShapedSet, UnknownRelationColumnAndBrokenQueryFailWithWords) {
  const StoreFixture f;
  EXPECT_EQ(
      storeErrorOf([&] {
        f.shape(u"SHAPE {SELECT 1 AS a} AS n APPEND ({SELECT 1 AS b} AS m RELATE c TO b) AS m"_s);
      }),
      u"没有列 c"_s);
  EXPECT_EQ(
      storeErrorOf([&] {
        f.shape(u"SHAPE {SELECT 1 AS a} AS n APPEND ({SELECT 1 AS b} AS m RELATE a TO c) AS m"_s);
      }),
      u"没有列 c"_s);
  EXPECT_TRUE(
      storeErrorOf([&] { f.shape(u"SHAPE {SELECT missing} AS n"_s); }).contains(u"missing"_s));
}

TEST(ShapedSet, OfTwoColumnsWithOneNameTheFirstIsMeant) {
  const StoreFixture f;
  const ShapedSetPtr set = f.shape(u"SELECT 1 AS a, 2 AS A, 3 AS b"_s);
  EXPECT_EQ(set->columnIndex(u"b"_s), 2);
  EXPECT_EQ(set->columnIndex(u"a"_s), 0);
  EXPECT_EQ(set->columnIndex(u"A"_s), 0);
}

}  // namespace
}  // namespace qinghe

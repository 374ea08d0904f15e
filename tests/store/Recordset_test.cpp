#include "store/Recordset.h"

#include <sqlite3.h>

#include <QDateTime>

#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

const QString threeGoods =
    u"INSERT INTO XIMU (id,R_ID,QIYE_ID,XIMU,JIGEX,NOTH,LEBI_ID) VALUES "
    u"(3,30,1,'丙','9',1,2.5),(5,10,1,'Abc','25.50',0,7),(8,20,1,'it''s','0',1,NULL)"_s;

TEST(Recordset, WalksFromTheFirstRecordToTheEnd) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT * FROM XIMU WHERE QIYE_ID=1"_s);
  EXPECT_EQ(set.RecordCount(), 3);
  EXPECT_FALSE(set.atEnd());
  EXPECT_EQ(set.text(u"id"_s), u"3"_s) << "the first record is current from the start";
  EXPECT_EQ(column(set, u"XIMU"_s), (QStringList{u"丙"_s, u"Abc"_s, u"it's"_s}));
  EXPECT_TRUE(set.atEnd());
  set.MoveNext();
  EXPECT_TRUE(set.atEnd());
  set.MoveFirst();
  EXPECT_EQ(set.text(u"ID"_s), u"3"_s);
}

TEST(Recordset, EmptySetIsAtItsEndAndStaysUsable) {
  const StoreFixture f;
  Recordset set = f.open(u"SELECT *  FROM QYXX "_s);
  EXPECT_EQ(set.RecordCount(), 0);
  EXPECT_TRUE(set.atEnd());
  set.MoveFirst();
  set.MoveNext();
  set.Find(u"id = 0"_s);
  EXPECT_TRUE(set.atEnd());
  EXPECT_THROW(set.text(u"id"_s), StoreError);
  EXPECT_THROW(set.value(u"id"_s), StoreError);
  EXPECT_THROW(set.setValue(u"user_no"_s, u"1"_s), StoreError);
  EXPECT_NO_THROW(set.Update());
}

TEST(Recordset, StandsInTheTablesOrderWhateverIndexFindsItsRows) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  for (const QString& condition : {u""_s, u" WHERE R_ID>0"_s, u" WHERE R_ID IN (10,20,30)"_s,
                                   u" WHERE QIYE_ID=1 OR R_ID=10"_s, u" ; "_s}) {
    Recordset set = f.open(u"SELECT * FROM XIMU"_s + condition);
    EXPECT_EQ(column(set, u"id"_s), (QStringList{u"3"_s, u"5"_s, u"8"_s}))
        << condition.toStdString();
  }
  Recordset sorted = f.open(u"SELECT * FROM XIMU ORDER BY R_ID DESC"_s);
  EXPECT_EQ(column(sorted, u"id"_s), (QStringList{u"3"_s, u"8"_s, u"5"_s}));
}

TEST(Recordset, GivesValuesByNameWithoutRegardToCase) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"select * from ximu"_s);
  EXPECT_EQ(set.text(u"ximu"_s), u"丙"_s);
  EXPECT_EQ(set.text(u"XIMU"_s), u"丙"_s);
  EXPECT_EQ(set.text(u"Noth"_s), u"True"_s);
  int number = 0;
  EXPECT_EQ(storeErrorOf([&] { set.text(u"nothing"_s); }, &number), u"没有列 nothing"_s);
  EXPECT_EQ(number, SQLITE_RANGE);
  EXPECT_THROW(set.value(u""_s), StoreError);
}

TEST(Recordset, GivesTextAsTheScreensShowIt) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  f.store.exec(
      u"INSERT INTO GOHU (ghrq,fhrq,JINE) VALUES ('2024-03-09 00:00:00','2024-03-09 08:05:00',0.1)"_s);
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  EXPECT_EQ(set.text(u"LEBI_ID"_s), u"2.5"_s);
  EXPECT_EQ(set.text(u"SHXI"_s), u""_s);
  EXPECT_TRUE(set.value(u"SHXI"_s).isNull());
  EXPECT_EQ(set.value(u"NOTH"_s), QVariant(true));
  EXPECT_EQ(set.value(u"R_ID"_s), QVariant(30LL));
  set.MoveNext();
  EXPECT_EQ(set.text(u"NOTH"_s), u"False"_s);
  EXPECT_EQ(set.text(u"LEBI_ID"_s), u"7"_s);
  EXPECT_EQ(set.text(u"JIGEX"_s), u"25.50"_s);
  Recordset orders = f.open(u"SELECT * FROM GOHU"_s);
  EXPECT_EQ(orders.text(u"ghrq"_s), u"2024-3-9"_s);
  EXPECT_EQ(orders.text(u"fhrq"_s), u"2024-3-9 8:05:00"_s);
  EXPECT_EQ(orders.value(u"ghrq"_s).toDateTime().date(), QDate(2024, 3, 9));
  EXPECT_EQ(orders.text(u"JINE"_s), u"0.1"_s);
}

struct Search {
  const char* name;
  QString criterion;
  QString id;  // empty for the end
};

class Find : public testing::TestWithParam<Search> {};

TEST_P(Find, StandsOnTheFirstMatchOrAtTheEnd) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  set.Find(GetParam().criterion);
  EXPECT_EQ(set.atEnd() ? QString() : set.text(u"id"_s), GetParam().id);
  set.MoveFirst();
  EXPECT_EQ(set.text(u"id"_s), u"3"_s) << "usable afterwards";
}

INSTANTIATE_TEST_SUITE_P(
    Criteria, Find,
    testing::Values(Search{"byKey", u"ID=5"_s, u"5"_s}, Search{"blanks", u"id = 8"_s, u"8"_s},
                    Search{"lead", u"  id  =  3  "_s, u"3"_s}, Search{"none", u"id = 0"_s, u""_s},
                    Search{"negative", u"id=-5"_s, u""_s}, Search{"fraction", u"id=5.5"_s, u""_s},
                    Search{"huge", u"id=1e300"_s, u""_s}, Search{"quotedKey", u"id='5'"_s, u"5"_s},
                    Search{"noKey", u"id='x'"_s, u""_s}, Search{"number", u"R_ID=10"_s, u"5"_s},
                    Search{"double", u"lebi_id=2.5"_s, u"3"_s},
                    Search{"text", u"XIMU='aBC'"_s, u"5"_s},
                    Search{"doubledQuote", u"XIMU='it''s'"_s, u"8"_s},
                    Search{"flag", u"NOTH=False"_s, u"5"_s}, Search{"null", u"LEBI_ID=0"_s, u""_s},
                    Search{"numberInText", u"JIGEX=9"_s, u"3"_s},
                    Search{"bracketed", u"[R_ID]=20"_s, u"8"_s}),
    [](const auto& row) { return row.param.name; });

TEST(Find, RefusesWhatIsNoCriterionAndLeavesTheSetUsable) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  for (const QString& wrong :
       {u""_s, u"id"_s, u"id="_s, u"=5"_s, u"id>5"_s, u"id=abc"_s, u"id=5 or 1=1"_s,
        u"XIMU='it's'"_s, u"XIMU='x"_s, u"nothing=5"_s, u"id==5"_s}) {
    EXPECT_THROW(set.Find(wrong), StoreError) << wrong.toStdString();
    EXPECT_EQ(set.text(u"id"_s), u"3"_s);
  }
}

TEST(Find, SearchesForwardFromTheCurrentRecordItselfIncluded) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  set.Find(u"id=5"_s);
  set.Find(u"id=5"_s);
  EXPECT_EQ(set.text(u"id"_s), u"5"_s);
  set.Find(u"id=3"_s);
  EXPECT_TRUE(set.atEnd()) << "what lies behind is not found";
  set.Find(u"id=5"_s);
  EXPECT_TRUE(set.atEnd()) << "and from the end nothing is";
  set.MoveFirst();
  set.Find(u"NOTH=True"_s);
  EXPECT_EQ(set.text(u"id"_s), u"3"_s);
  set.MoveNext();
  set.Find(u"NOTH=True"_s);
  EXPECT_EQ(set.text(u"id"_s), u"8"_s);
}

TEST(Recordset, ReadsManyRowsAsTheyAreInWalksThatBeginAnywhere) {
  const StoreFixture f;
  f.store.exec(
      u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1500) "
      u"INSERT INTO XIMU (id,XIMU,R_ID) SELECT i*3, 'goods '||i, i%7 FROM n"_s);
  QStringList expected;
  for (const auto& row : f.store.rows(u"SELECT XIMU FROM XIMU ORDER BY id"_s)) {
    expected.append(row.first().toString());
  }
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  EXPECT_EQ(column(set, u"XIMU"_s), expected);
  for (const int start : {0, 1, 299, 1499}) {
    set.MoveFirst();
    set.Find(u"id=%1"_s.arg((start + 1) * 3));
    QStringList rest;
    for (; !set.atEnd(); set.MoveNext()) rest.append(set.text(u"XIMU"_s));
    EXPECT_EQ(rest, expected.mid(start));
  }
}

TEST(Recordset, ReadsAheadTheSameWhetherItsKeysStandCloseFarApartOrInAnotherOrder) {
  const StoreFixture f;
  f.store.exec(
      u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1200) "
      u"INSERT INTO XIMU (id,XIMU,R_ID,QIYE_ID) SELECT i, 'goods '||i, i%2, i%10 FROM n"_s);
  for (const QString& tail : {u""_s, u" WHERE R_ID=1"_s, u" WHERE QIYE_ID=3"_s,
                              u" ORDER BY id DESC"_s, u" WHERE R_ID=0 ORDER BY QIYE_ID, id"_s}) {
    Recordset set = f.open(u"SELECT * FROM XIMU"_s + tail);
    QStringList expected;
    for (const auto& row : f.store.rows(u"SELECT XIMU FROM XIMU"_s + tail)) {
      expected.append(row.first().toString());
    }
    EXPECT_EQ(column(set, u"XIMU"_s), expected) << tail.toStdString();
  }
}

TEST(Recordset, RowsDeletedAheadOfAWalkFailAloneWhereverTheyStand) {
  const StoreFixture f;
  f.store.exec(
      u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<600) "
      u"INSERT INTO XIMU (id) SELECT i FROM n"_s);
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  f.store.exec(u"DELETE FROM XIMU WHERE id IN (1,2,100,101,300,599,600)"_s);
  int id = 0;
  QList<int> failed;
  for (; !set.atEnd(); set.MoveNext()) {
    ++id;
    if (storeErrorOf([&] { EXPECT_EQ(set.text(u"id"_s), QString::number(id)); }) ==
        u"记录已被删除"_s) {
      failed.append(id);
    }
  }
  EXPECT_EQ(failed, (QList<int>{1, 2, 100, 101, 300, 599, 600}));
}

TEST(Recordset, KeepsItsRowsAndShowsTheValuesOfTheMomentWhenARecordIsFound) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT * FROM XIMU WHERE NOTH=true"_s);
  EXPECT_EQ(set.RecordCount(), 2);
  EXPECT_EQ(set.text(u"XIMU"_s), u"丙"_s);
  f.store.exec(u"INSERT INTO XIMU (XIMU,NOTH) VALUES ('new',1)"_s);
  f.store.exec(u"UPDATE XIMU SET XIMU='changed', NOTH=0 WHERE id=3"_s);
  EXPECT_EQ(set.RecordCount(), 2);
  set.MoveFirst();
  EXPECT_EQ(set.text(u"XIMU"_s), u"changed"_s);
  set.Find(u"id=3"_s);
  EXPECT_EQ(set.text(u"NOTH"_s), u"False"_s);
}

TEST(Recordset, DeletedRecordFailsWhenReadAndTheOthersDoNot) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT * FROM XIMU"_s);
  f.store.exec(u"DELETE FROM XIMU WHERE id=5"_s);
  EXPECT_EQ(set.text(u"id"_s), u"3"_s);
  set.MoveNext();
  EXPECT_EQ(storeErrorOf([&] { set.text(u"id"_s); }), u"记录已被删除"_s);
  set.MoveNext();
  EXPECT_EQ(set.text(u"id"_s), u"8"_s);
  set.MoveFirst();
  set.Find(u"R_ID=20"_s);
  EXPECT_EQ(set.text(u"id"_s), u"8"_s);
}

TEST(Recordset, SetsOfSeveralTablesOrOfChosenColumnsAreReadOnly) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  for (const QString& command :
       {u"SELECT distinct NOTH FROM XIMU"_s, u"SELECT XIMU AS NOTH FROM XIMU"_s,
        u"SELECT * FROM vXIMU UNION SELECT XIMU,XIMU,1,1 FROM XIMU"_s,
        u"SELECT * FROM XIMU, (SELECT 1)"_s, u"SELECT * FROM XIMU GROUP BY id"_s}) {
    Recordset set = f.open(command);
    ASSERT_GT(set.RecordCount(), 0) << command.toStdString();
    EXPECT_THROW(set.AddNew(), StoreError);
    EXPECT_THROW(set.setValue(u"NOTH"_s, true), StoreError);
    EXPECT_NO_THROW(set.Update());
    EXPECT_FALSE(set.atEnd());
  }
  EXPECT_THROW(f.open(u"SELECT * FROM vLEBI"_s).AddNew(), StoreError) << "a view has no rows";
}

TEST(Recordset, SearchesAndWalksASetOfChosenColumns) {
  const StoreFixture f;
  f.store.exec(threeGoods);
  Recordset set = f.open(u"SELECT DISTINCT XIMU, id FROM XIMU ORDER BY id DESC"_s);
  EXPECT_EQ(column(set, u"XIMU"_s), (QStringList{u"it's"_s, u"Abc"_s, u"丙"_s}));
  set.MoveFirst();
  set.Find(u"id=5"_s);
  EXPECT_EQ(set.text(u"XIMU"_s), u"Abc"_s);
  f.store.exec(u"DELETE FROM XIMU"_s);
  set.MoveFirst();
  EXPECT_EQ(set.text(u"XIMU"_s), u"it's"_s) << "it stays as it was read";
}

TEST(Recordset, WithoutAnOpenConnectionFailsInsteadOfCrashing) {
  EXPECT_EQ(storeErrorOf([] { Recordset(nullptr, u"SELECT * FROM XIMU"_s); }), u"数据库没有打开"_s);
  EXPECT_EQ(storeErrorOf([] { ShapedSet::open(nullptr, u"SELECT * FROM XIMU"_s); }),
            u"数据库没有打开"_s);
}

}  // namespace
}  // namespace qinghe

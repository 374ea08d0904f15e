#include <QDateTime>
#include <functional>

#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

struct FilledStore : StoreFixture {
  FilledStore() {
    store.exec(
        u"INSERT INTO XIMU (id,QIYE_ID,XIMU,GESH) VALUES (3,1,'甲','1'),(5,1,'Abc','2'),"
        u"(8,1,'丙','3')"_s);
  }
};

class RecordsetChange : public testing::Test, public FilledStore {
 public:
  QVariant cell(const QString& field, int id) const {
    return store.value(u"SELECT %1 FROM XIMU WHERE id=%2"_s.arg(field).arg(id));
  }
  Recordset goods = open(u"SELECT * FROM XIMU WHERE QIYE_ID=1"_s);
};

TEST_F(RecordsetChange, UpdateKeepsWhatWasSet) {
  goods.Find(u"id=5"_s);
  goods.setValue(u"ximu"_s, u"it's \"new\"\r\n新"_s);
  goods.setValue(u"NOTH"_s, true);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"it's \"new\"\r\n新"_s) << "shown before it is kept";
  EXPECT_EQ(goods.text(u"NOTH"_s), u"True"_s);
  EXPECT_EQ(cell(u"XIMU"_s, 5), u"Abc"_s);
  goods.Update();
  EXPECT_EQ(cell(u"XIMU"_s, 5), u"it's \"new\"\r\n新"_s);
  EXPECT_EQ(cell(u"NOTH"_s, 5), 1);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"it's \"new\"\r\n新"_s);
  EXPECT_EQ(cell(u"XIMU"_s, 3), u"甲"_s);
  EXPECT_EQ(goods.RecordCount(), 3);
}

TEST_F(RecordsetChange, UpdateWritesOnlyTheColumnsThatWereSet) {
  store.exec(
      u"CREATE TABLE log (x); CREATE TRIGGER t AFTER UPDATE OF XIMU ON XIMU BEGIN "
      u"INSERT INTO log VALUES (1); END"_s);
  goods.setValue(u"GESH"_s, u"7"_s);
  goods.Update();
  EXPECT_EQ(store.value(u"SELECT count(*) FROM log"_s), 0);
  goods.setValue(u"XIMU"_s, u"x"_s);
  goods.Update();
  EXPECT_EQ(store.value(u"SELECT count(*) FROM log"_s), 1);
}

TEST_F(RecordsetChange, AddedRecordIsCurrentHasItsKeyAndBelongsToTheSet) {
  goods.AddNew();
  EXPECT_FALSE(goods.atEnd());
  EXPECT_EQ(goods.text(u"id"_s), u""_s);
  EXPECT_EQ(goods.RecordCount(), 3);
  goods.setValue(u"XIMU"_s, u"新"_s);
  goods.Update();
  EXPECT_EQ(goods.text(u"id"_s), u"9"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"新"_s);
  EXPECT_EQ(goods.text(u"R_ID"_s), u"0"_s) << "the default";
  EXPECT_EQ(goods.RecordCount(), 4);
  goods.MoveFirst();
  goods.Find(u"id = 9"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"新"_s);
  goods.MoveNext();
  EXPECT_TRUE(goods.atEnd());
  EXPECT_EQ(column(goods, u"id"_s), (QStringList{u"3"_s, u"5"_s, u"8"_s, u"9"_s}));
}

TEST_F(RecordsetChange, RecordAddedToAnEmptySetCanBeChangedAtOnce) {
  Recordset set = open(u"SELECT * FROM GOHU WHERE R_ID=77"_s);
  set.AddNew();
  set.setValue(u"R_ID"_s, u"77"_s);
  set.setValue(u"ghrq"_s, QDate(2024, 3, 9));
  set.setValue(u"JHHS"_s, 1);
  set.setValue(u"SHER"_s, u"48.1"_s);
  set.setValue(u"FEYO"_s, u"as typed"_s);
  set.Update();
  const QString id = set.text(u"id"_s);
  set.setValue(u"gosh"_s, u"供商"_s);
  set.Update();
  EXPECT_EQ(set.text(u"id"_s), id);
  EXPECT_EQ(
      store.rows(u"SELECT R_ID,ghrq,jhhs,SHER,feyo,gosh FROM GOHU"_s),
      (QList<QVariantList>{{77LL, u"2024-03-09 00:00:00"_s, 1LL, 48.1, u"as typed"_s, u"供商"_s}}));
}

TEST_F(RecordsetChange, RecordAddedWithNothingSetTakesTheDefaults) {
  Recordset messages = open(u"SELECT * FROM XIXI"_s);
  messages.AddNew();
  messages.Update();
  EXPECT_EQ(messages.RecordCount(), 1);
  EXPECT_NE(messages.text(u"dtime"_s), u""_s);
}

TEST_F(RecordsetChange, SeveralRecordsCanBeAddedInTurn) {
  Recordset messages = open(u"SELECT * FROM XIXI"_s);
  for (int i = 1; i <= 300; ++i) {
    messages.AddNew();
    messages.setValue(u"content"_s, QString::number(i));
    messages.Update();
    ASSERT_EQ(messages.text(u"id"_s), QString::number(i));
  }
  EXPECT_EQ(messages.RecordCount(), 300);
  EXPECT_EQ(column(messages, u"content"_s).last(), u"300"_s);
}

TEST_F(RecordsetChange, PortalKeyTakesNumbersOfAnySizeOf32BitsAndNoWords) {
  goods.setValue(u"R_ID"_s, u"40000"_s);
  goods.Update();
  EXPECT_EQ(cell(u"R_ID"_s, 3), 40000);
  EXPECT_EQ(goods.text(u"R_ID"_s), u"40000"_s);
  for (const QString& wrong : {u""_s, u"abc"_s, u"12 ID"_s}) {
    EXPECT_THROW(goods.setValue(u"R_ID"_s, wrong), TypeMismatch) << wrong.toStdString();
  }
  EXPECT_THROW(goods.setValue(u"R_ID"_s, u"3000000000"_s), Overflow);
  goods.Update();
  EXPECT_EQ(cell(u"R_ID"_s, 3), 40000);
}

TEST_F(RecordsetChange, RefusedValueDropsTheWholeChangeSoThatNoHalfGoesOut) {
  goods.setValue(u"XIMU"_s, u"half"_s);
  EXPECT_THROW(goods.setValue(u"LEBI_ID"_s, u"no number"_s), TypeMismatch);
  goods.setValue(u"R_ID"_s, 12);
  goods.Update();
  EXPECT_EQ(cell(u"XIMU"_s, 3), u"甲"_s);
  EXPECT_EQ(cell(u"R_ID"_s, 3), 12);
}

TEST_F(RecordsetChange, RefusedValueInANewRecordTakesTheRecordBack) {
  goods.Find(u"id=0"_s);
  goods.AddNew();
  goods.setValue(u"XIMU"_s, u"half"_s);
  EXPECT_THROW(goods.setValue(u"nothing"_s, 1), StoreError);
  EXPECT_TRUE(goods.atEnd());
  goods.Update();
  EXPECT_EQ(goods.RecordCount(), 3);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIMU"_s), 3);
}

TEST_F(RecordsetChange, OwnKeyCannotBeSet) {
  EXPECT_THROW(goods.setValue(u"ID"_s, 99), StoreError);
  goods.Update();
  EXPECT_EQ(column(goods, u"id"_s), (QStringList{u"3"_s, u"5"_s, u"8"_s}));
}

TEST_F(RecordsetChange, CancelAndEveryMoveDropWhatWasSet) {
  const std::function<void()> ways[] = {[&] { goods.CancelUpdate(); }, [&] { goods.MoveFirst(); },
                                        [&] { goods.MoveNext(); }, [&] { goods.Find(u"id=8"_s); },
                                        [&] { goods.AddNew(), goods.CancelUpdate(); }};
  for (const auto& way : ways) {
    goods.MoveFirst();
    goods.setValue(u"XIMU"_s, u"dropped"_s);
    way();
    goods.Update();
    goods.MoveFirst();
    EXPECT_EQ(goods.text(u"XIMU"_s), u"甲"_s);
  }
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIMU WHERE XIMU='dropped'"_s), 0);
}

TEST_F(RecordsetChange, CancelledNewRecordLeadsBackToTheOneBefore) {
  goods.Find(u"id=5"_s);
  goods.AddNew();
  goods.setValue(u"XIMU"_s, u"x"_s);
  goods.CancelUpdate();
  EXPECT_EQ(goods.text(u"id"_s), u"5"_s);
  EXPECT_EQ(goods.RecordCount(), 3);
}

TEST_F(RecordsetChange, ChangeBySomebodyElseIsAnErrorAndNotOverwritten) {
  EXPECT_EQ(goods.text(u"XIMU"_s), u"甲"_s);
  store.exec(u"UPDATE XIMU SET GESH='theirs' WHERE id=3"_s);
  goods.setValue(u"XIMU"_s, u"mine"_s);
  EXPECT_EQ(storeErrorOf([&] { goods.Update(); }), u"记录已被他人修改"_s);
  EXPECT_EQ(cell(u"XIMU"_s, 3), u"甲"_s);
  EXPECT_EQ(cell(u"GESH"_s, 3), u"theirs"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"甲"_s) << "what was set is dropped";
  EXPECT_EQ(goods.text(u"GESH"_s), u"theirs"_s);
  goods.setValue(u"XIMU"_s, u"mine"_s);
  goods.Update();
  EXPECT_EQ(cell(u"XIMU"_s, 3), u"mine"_s);
  EXPECT_EQ(cell(u"GESH"_s, 3), u"theirs"_s);
}

TEST_F(RecordsetChange, ChangeIsHeldAgainstWhatWasSeenAlsoWhenTheRecordIsFoundAgain) {
  goods.Find(u"id=5"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"Abc"_s);
  store.exec(u"UPDATE XIMU SET XIMU='ABC' WHERE id=5"_s);
  goods.MoveFirst();
  goods.Find(u"id = 5"_s);
  goods.setValue(u"GESH"_s, u"mine"_s);
  EXPECT_THROW(goods.Update(), StoreError) << "also when only the case differs";
  EXPECT_EQ(cell(u"GESH"_s, 5), u"2"_s);
}

TEST_F(RecordsetChange, RecordThatIsLookedAtAgainCanBeChanged) {
  goods.Find(u"id=5"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"Abc"_s);
  store.exec(u"UPDATE XIMU SET XIMU='theirs' WHERE id=5"_s);
  goods.MoveFirst();
  goods.Find(u"id=5"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"theirs"_s);
  goods.setValue(u"GESH"_s, u"mine"_s);
  goods.Update();
  EXPECT_EQ(cell(u"GESH"_s, 5), u"mine"_s);
}

TEST_F(RecordsetChange, ChangeReadAheadInAWalkIsHeldAgainstThatReading) {
  for (goods.MoveFirst(); goods.text(u"id"_s) != u"5"_s;) goods.MoveNext();
  store.exec(u"UPDATE XIMU SET GESH='theirs' WHERE id=8"_s);
  goods.MoveNext();
  EXPECT_EQ(goods.text(u"id"_s), u"8"_s);
  const QString seen = goods.text(u"GESH"_s);
  goods.setValue(u"XIMU"_s, u"mine"_s);
  const bool kept = storeErrorOf([&] { goods.Update(); }) == u"nothing thrown"_s;
  EXPECT_EQ(kept, seen == u"theirs"_s);
  EXPECT_EQ(cell(u"GESH"_s, 8), u"theirs"_s);
}

TEST_F(RecordsetChange, DeletionBySomebodyElseIsAnError) {
  EXPECT_EQ(goods.text(u"XIMU"_s), u"甲"_s);
  store.exec(u"DELETE FROM XIMU WHERE id=3"_s);
  goods.setValue(u"XIMU"_s, u"mine"_s);
  EXPECT_EQ(storeErrorOf([&] { goods.Update(); }), u"记录已被删除"_s);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIMU"_s), 2);
  goods.MoveNext();
  EXPECT_EQ(goods.text(u"id"_s), u"5"_s);
}

TEST_F(RecordsetChange, SecondSetOfTheSameProgramIsSomebodyElseToo) {
  Recordset other = open(u"SELECT * FROM XIMU WHERE id=3"_s);
  EXPECT_EQ(goods.text(u"XIMU"_s), u"甲"_s);
  other.setValue(u"GESH"_s, u"theirs"_s);
  other.Update();
  goods.setValue(u"XIMU"_s, u"mine"_s);
  EXPECT_THROW(goods.Update(), StoreError);
  EXPECT_EQ(cell(u"GESH"_s, 3), u"theirs"_s);
}

TEST_F(RecordsetChange, OfTwoChangesBegunOnOneRecordTheSecondIsAnError) {
  Recordset other = open(u"SELECT * FROM XIMU WHERE id=3"_s);
  goods.setValue(u"XIMU"_s, u"mine"_s);
  other.setValue(u"GESH"_s, u"theirs"_s);
  other.Update();
  EXPECT_THROW(goods.Update(), StoreError);
  EXPECT_EQ(cell(u"XIMU"_s, 3), u"甲"_s);
}

TEST_F(RecordsetChange, OwnUpdatesInTurnAreNoChangeBySomebodyElse) {
  EXPECT_EQ(goods.text(u"XIMU"_s), u"甲"_s);
  for (int i = 0; i < 3; ++i) {
    goods.setValue(u"R_ID"_s, i);
    goods.Update();
    goods.setValue(u"GESH"_s, QString::number(i));
    goods.Update();
  }
  EXPECT_EQ(cell(u"R_ID"_s, 3), 2);
}

TEST_F(RecordsetChange, ChangeBetweenTwoOwnUpdatesIsAnError) {
  goods.setValue(u"GESH"_s, u"mine"_s);
  goods.Update();
  store.exec(u"UPDATE XIMU SET GESH='theirs' WHERE id=3"_s);
  goods.setValue(u"R_ID"_s, 5);
  EXPECT_THROW(goods.Update(), StoreError);
  EXPECT_EQ(cell(u"R_ID"_s, 3), 0);
}

TEST_F(RecordsetChange, RecordStaysInTheSetWhenItNoLongerMatchesTheCommand) {
  goods.setValue(u"QIYE_ID"_s, 2);
  goods.Update();
  EXPECT_EQ(goods.RecordCount(), 3);
  EXPECT_EQ(goods.text(u"QIYE_ID"_s), u"2"_s);
}

TEST_F(RecordsetChange, ChangesGoToATableWrittenWithAnAliasOrInBrackets) {
  for (const QString& command :
       {u"SELECT * FROM [XIMU] WHERE id=5"_s, u"SELECT * FROM XIMU AS x WHERE x.id=5"_s,
        u"SELECT * FROM \"ximu\" y WHERE y.id=5"_s}) {
    Recordset set = open(command);
    set.setValue(u"GESH"_s, command);
    set.Update();
    EXPECT_EQ(cell(u"GESH"_s, 5), command);
  }
}

}  // namespace
}  // namespace qinghe

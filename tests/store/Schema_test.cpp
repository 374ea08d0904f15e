#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

QStringList columnsOf(const TempStore& store, const QString& name) {
  QStringList columns;
  for (const QVariantList& row :
       store.rows(u"SELECT name FROM pragma_table_info('%1')"_s.arg(name))) {
    columns.append(row.first().toString().toLower());
  }
  return columns;
}

struct Expected {
  const char* name;
  const char* columns;
};

class Schema : public testing::TestWithParam<Expected> {};

TEST_P(Schema, HasTheColumnsThatTheProgramNames) {
  const TempStore store;
  const QStringList columns = columnsOf(store, QString::fromLatin1(GetParam().name));
  for (const QString& column : QString::fromLatin1(GetParam().columns).toLower().split(u' ')) {
    EXPECT_TRUE(columns.contains(column)) << column.toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Tables, Schema,
    testing::Values(
        Expected{"QYXX",
                 "id R_ID user_no user_name user_pass qiye dizh yobi dihu guji_id guji shen_id "
                 "shen area_id area haye_id haye chzh fuzh lixi shji huji zhye email khyh yhzh "
                 "shha jish yhly"},
        Expected{"XIMU",
                 "id R_ID QIYE_ID qiye LEBI_ID CHYE_ID XIMU_NO XIMU GESH LEBI CHYE SHXI JIGEX "
                 "ZHKO JISH NOTH"},
        Expected{"FUWU", "id R_ID QIYE_ID qiye XIMU_NO XIMU JIGEX ZHKO JISH NOTH SHXI"},
        Expected{"GOHU",
                 "id R_ID gohu_no ghrq gosh_id gosh kehu_id kehu feyo fhrq jhhs xshs sh fh fhfs "
                 "SHLI JINE ZHKO YNSH HEJI SHER"},
        Expected{"GOKU",
                 "id R_ID GOHU_ID XIMU XIMU_BH SHLI JIGE JINE ZHKO YNSH BAXI LING XIMU_ID GESH "
                 "XIMU_NO LEBI DAWE"},
        Expected{"DIHU",
                 "id dihu_no dhrq qyxx_id qyxx yhxx_id yhxx feyo fhrq hs fh fhfs ximus shlis "
                 "SHLI JINE ZHKO YNSH HEJI SHER"},
        Expected{"XIXI", "id qyxx_id user_id qyxx UserName content dtime"},
        Expected{"CYXX", "id R_ID"}, Expected{"YHXX", "id R_ID"},
        Expected{"vgskh", "gosh_id gosh kehu_id kehu"}, Expected{"vLEBI", "lebi GOSH_ID KEHU_ID"},
        Expected{"vXIMU", "ximu lebi kehu_id gosh_id"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Schema, DefaultsThePortalKeyToZeroAndStampsMessages) {
  const TempStore store;
  for (const QString& table : {u"QYXX"_s, u"XIMU"_s, u"FUWU"_s, u"GOHU"_s, u"GOKU"_s, u"DIHU"_s}) {
    store.exec(u"INSERT INTO "_s + table + u" DEFAULT VALUES"_s);
    EXPECT_EQ(store.value(u"SELECT R_ID FROM "_s + table), QVariant(0LL)) << table.toStdString();
  }
  store.exec(u"INSERT INTO XIXI DEFAULT VALUES"_s);
  EXPECT_TRUE(store
                  .value(u"SELECT dtime BETWEEN datetime('now','localtime','-1 minute') AND "
                         u"datetime('now','localtime','+1 minute') FROM XIXI"_s)
                  .toBool());
}

TEST(Schema, IndexesTheColumnsThatAreSearched) {
  const TempStore store;
  const auto plan = [&](const QString& command) {
    return store.rows(u"EXPLAIN QUERY PLAN "_s + command).first().last().toString();
  };
  for (const QString& command :
       {u"SELECT * FROM XIMU WHERE R_ID=1"_s, u"SELECT * FROM XIMU WHERE QIYE_ID=1"_s,
        u"SELECT * FROM FUWU WHERE R_ID=1"_s, u"SELECT * FROM FUWU WHERE QIYE_ID=1"_s,
        u"SELECT * FROM GOHU WHERE R_ID=1"_s, u"SELECT * FROM GOHU WHERE ghrq>='2024'"_s,
        u"SELECT * FROM GOKU WHERE R_ID=1"_s, u"SELECT * FROM GOKU WHERE GOHU_ID=1"_s,
        u"SELECT * FROM QYXX WHERE R_ID=1"_s}) {
    EXPECT_TRUE(plan(command).contains(u"USING INDEX"_s)) << plan(command).toStdString();
  }
}

TEST(Schema, FindsAnOrdersLineWithoutLookingAtItsOtherLines) {
  const TempStore store;
  const QString plan =
      store.rows(u"EXPLAIN QUERY PLAN SELECT * FROM GOKU WHERE R_ID=88 AND XIMU_ID=501"_s)
          .first()
          .last()
          .toString();
  EXPECT_TRUE(plan.contains(u"(R_ID=? AND XIMU_ID=?)"_s)) << plan.toStdString();
}

TEST(Schema, KeepsPricePackAndNoteAsTyped) {
  const StoreFixture f;
  Recordset set = f.open(u"SELECT * FROM XIMU WHERE QIYE_ID=1"_s);
  set.AddNew();
  set.setValue(u"JIGEX"_s, u"25.50"_s);
  set.setValue(u"GESH"_s, u"010"_s);
  set.setValue(u"ZHKO"_s, u"0.80"_s);
  set.Update();
  EXPECT_EQ(f.store.rows(u"SELECT JIGEX, GESH, ZHKO FROM XIMU"_s).first(),
            (QVariantList{u"25.50"_s, u"010"_s, u"0.80"_s}));
  EXPECT_EQ(set.text(u"JIGEX"_s), u"25.50"_s);
}

TEST(Schema, ComparesTextWithoutCaseButUserNumberAndPasswordExactly) {
  const StoreFixture f;
  f.store.exec(u"INSERT INTO QYXX (user_no,user_name,user_pass) VALUES ('Ab1','Shop','Geheim')"_s);
  const auto count = [&](const QString& condition) {
    return f.open(u"SELECT * FROM QYXX WHERE "_s + condition).RecordCount();
  };
  EXPECT_EQ(count(u"user_name='SHOP'"_s), 1);
  EXPECT_EQ(count(u"user_no='Ab1' and user_pass='Geheim'"_s), 1);
  EXPECT_EQ(count(u"user_no='ab1' and user_pass='Geheim'"_s), 0);
  EXPECT_EQ(count(u"user_no='Ab1' and user_pass='geheim'"_s), 0);
}

TEST(Schema, KeepsTheFileInOnePiece) {
  const TempStore store;
  EXPECT_EQ(store.value(u"PRAGMA journal_mode"_s).toString(), u"delete"_s);
}

}  // namespace
}  // namespace qinghe

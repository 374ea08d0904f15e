// Every reading command that the program's screens issue, as they issue it.
#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

const QString smallTrade =
    uR"(
  INSERT INTO QYXX (id,R_ID,user_no,user_name,user_pass) VALUES (1,25,'1001','示例书店','pass');
  INSERT INTO XIMU (id,R_ID,QIYE_ID,XIMU,NOTH) VALUES (1,501,1,'甲',1),(2,0,1,'乙',0),(3,9,2,'丙',1);
  INSERT INTO FUWU (id,R_ID,QIYE_ID,XIMU) VALUES (1,61,1,'配送');
  INSERT INTO GOHU (id,R_ID,gohu_no,gosh_id,gosh,kehu_id,kehu) VALUES
    (1,101,'G1',7,'供A',25,'示例书店'),(2,102,'G2',7,'供A',25,'示例书店'),
    (3,103,'G3',25,'示例书店',9,'客C');
  INSERT INTO GOKU (R_ID,GOHU_ID,XIMU_ID,XIMU,LEBI) VALUES
    (101,1,501,'甲','教材'),(101,1,502,'乙','小说'),(102,2,501,'甲','教材'),(103,3,601,'丁','教材');
  INSERT INTO XIXI (id,qyxx_id,qyxx,user_id,UserName,content,dtime) VALUES
    (1,25,'示例书店',7,'供A','早','2024-01-01 08:00:00'),
    (2,7,'供A',25,'示例书店','晚','2024-01-02 08:00:00'),
    (3,7,'供A',25,'旧店名','无',NULL);
)"_s;

struct Issued {
  const char* name;
  QString command;
  int rows;
  QString column;  // to look at in the first row
  QString text;
};

class ProgramCommand : public testing::TestWithParam<Issued> {};

TEST_P(ProgramCommand, Runs) {
  const StoreFixture f;
  f.store.exec(smallTrade);
  const Issued& issued = GetParam();
  Recordset set = f.open(issued.command);
  EXPECT_EQ(set.RecordCount(), issued.rows);
  EXPECT_EQ(set.atEnd() ? QString() : set.text(issued.column), issued.text);
  const ShapedSetPtr shape = f.shape(issued.command);
  EXPECT_EQ(shape->rowCount(), issued.rows);
}

INSTANTIATE_TEST_SUITE_P(
    Screens, ProgramCommand,
    testing::Values(
        Issued{"userList", u"SELECT *  FROM QYXX "_s, 1, u"user_no"_s, u"1001"_s},
        Issued{"localLogin", u"SELECT *  FROM QYXX WHERE user_no='1001' and user_pass='pass'"_s, 1,
               u"R_ID"_s, u"25"_s},
        Issued{"localLoginRefused",
               u"SELECT *  FROM QYXX WHERE user_no='1001' and user_pass='PASS'"_s, 0, u""_s, u""_s},
        Issued{"ownCompany", u"SELECT *  FROM QYXX WHERE r_id=25"_s, 1, u"user_name"_s,
               u"示例书店"_s},
        Issued{"goods", u"SELECT * FROM XIMU WHERE QIYE_ID=1"_s, 2, u"XIMU"_s, u"甲"_s},
        Issued{"goodsList", u"select * from ximu where qiye_id=1"_s, 2, u"ximu"_s, u"甲"_s},
        Issued{"offeredGoods", u"select * from ximu where noth=true"_s, 2, u"NOTH"_s, u"True"_s},
        Issued{"withdrawnGoods", u"select * from ximu where noth=false"_s, 1, u"NOTH"_s,
               u"False"_s},
        Issued{"goodsOfThePortal", u"SELECT * FROM XIMU WHERE R_ID=501"_s, 1, u"id"_s, u"1"_s},
        Issued{"unknownGoods", u"SELECT * FROM XIMU WHERE R_ID=7777"_s, 0, u""_s, u""_s},
        Issued{"services", u"SELECT * FROM FUWU WHERE QIYE_ID=1"_s, 1, u"XIMU"_s, u"配送"_s},
        Issued{"serviceOfThePortal", u"SELECT * FROM FUWU WHERE R_ID=61"_s, 1, u"id"_s, u"1"_s},
        Issued{"order", u"SELECT * FROM GOHU WHERE R_ID=102"_s, 1, u"gohu_no"_s, u"G2"_s},
        Issued{"orderLines", u"SELECT * FROM GOKU WHERE R_ID=101"_s, 2, u"XIMU"_s, u"甲"_s},
        Issued{"orderLine", u"SELECT * FROM GOKU WHERE R_ID=101 AND XIMU_ID=502"_s, 1, u"XIMU"_s,
               u"乙"_s},
        Issued{"messages", u"SELECT * FROM XIXI"_s, 3, u"content"_s, u"早"_s},
        Issued{"messagesOfOne", u"SELECT * FROM XIXI WHERE QYXX_ID=25"_s, 1, u"id"_s, u"1"_s},
        Issued{"history",
               u"SELECT * FROM XIXI WHERE QYXX_ID=25 OR USER_ID=25 order by dtime desc"_s, 3,
               u"dtime"_s, u"2024-1-2 8:00:00"_s},
        Issued{"contacts",
               u"SELECT DISTINCT QYXX_ID,QYXX From XIXI WHERE QYXX_ID=25 UNION SELECT DISTINCT "
               u"USER_ID AS QYXX_ID,USERNAME AS QYXX FROM XIXI WHERE USER_ID=25"_s,
               2, u"QYXX_ID"_s, u"25"_s},
        Issued{"suppliers", u"SELECT distinct gosh_id,gosh FROM vgskh where kehu_id=25"_s, 1,
               u"gosh"_s, u"供A"_s},
        Issued{"customers", u"SELECT distinct kehu_id,kehu FROM vgskh where gosh_id=25"_s, 1,
               u"KEHU"_s, u"客C"_s},
        Issued{"categoriesBought", u"SELECT distinct lebi FROM vLEBI WHERE KEHU_ID=25"_s, 2,
               u"LEBI"_s, u"小说"_s},
        Issued{"categoriesSold", u"SELECT distinct lebi FROM vLEBI WHERE GOSH_ID=25"_s, 1,
               u"LEBI"_s, u"教材"_s},
        Issued{"goodsBought", u"SELECT distinct ximu FROM vXIMU WHERE kehu_id=25"_s, 2, u"XIMU"_s,
               u"乙"_s},
        Issued{"goodsBoughtOfACategory",
               u"SELECT distinct ximu FROM vXIMU WHERE kehu_id=25 and lebi='小说'"_s, 1, u"XIMU"_s,
               u"乙"_s},
        Issued{"goodsSoldOfACategory",
               u"SELECT distinct ximu FROM vximu WHERE gosh_id=25 and lebi='教材'"_s, 1, u"XIMU"_s,
               u"丁"_s}),
    [](const auto& row) { return row.param.name; });

TEST(ProgramCommand, MessageHistoryIsNewestFirstWithTheUndatedLast) {
  const StoreFixture f;
  f.store.exec(smallTrade);
  Recordset set =
      f.open(u"SELECT * FROM XIXI WHERE QYXX_ID=25 OR USER_ID=25 order by dtime desc"_s);
  EXPECT_EQ(column(set, u"id"_s), (QStringList{u"2"_s, u"1"_s, u"3"_s}));
  set.MoveFirst();
  set.Find(u"id=3"_s);
  EXPECT_EQ(set.text(u"content"_s), u"无"_s);
  EXPECT_EQ(set.text(u"dtime"_s), u""_s);
}

TEST(ProgramCommand, QuoteInALoginFieldBreaksTheStatement) {
  const StoreFixture f;
  f.store.exec(smallTrade);
  EXPECT_THROW(f.open(u"SELECT *  FROM QYXX WHERE user_no='O'Neil' and user_pass='x'"_s),
               StoreError);
}

// The order print command, with what the screen read of seller and buyer put in as it stands.
QString printCommand(const QStringList& values, int order) {
  const QStringList aliases = {u"GSMC"_s, u"GSDZ"_s, u"GSYB"_s, u"GSDH"_s, u"GSLX"_s, u"GSKH"_s,
                               u"GSZH"_s, u"GSSH"_s, u"KHMC"_s, u"KHDZ"_s, u"KHYB"_s, u"KHDH"_s,
                               u"KHLX"_s, u"KHKH"_s, u"KHZH"_s, u"KHSH"_s};
  QString command = u"SHAPE {select gohu.*,"_s;
  for (qsizetype i = 0; i < aliases.size(); ++i) {
    const bool isLast = i + 1 == aliases.size();
    command +=
        u'\'' + values.value(i, u" "_s) + u"' AS "_s + aliases[i] + (isLast ? u"  "_s : u", "_s);
  }
  const QString id = QString::number(order);
  return command + u"from gohu where gohu.r_id="_s + id +
         u"}  AS Cmd_Gohu APPEND ({select * from goku where goku.r_id="_s + id +
         u"}  AS Cmd_goku RELATE 'ID' TO 'GOHU_ID') AS Cmd_goku"_s;
}

TEST(OrderPrintCommand, GivesTheHeaderWithBothPartiesAndItsLines) {
  const StoreFixture f;
  f.store.exec(smallTrade);
  const ShapedSetPtr orders = f.shape(printCommand({u"供A & 子} 公司 #1/2/2003#"_s}, 101));
  ASSERT_EQ(orders->rowCount(), 1);
  EXPECT_EQ(orders->name(), u"Cmd_Gohu"_s);
  const auto text = [&](const QString& field) {
    return orders->text(0, orders->columnIndex(field));
  };
  EXPECT_EQ(text(u"gohu_no"_s), u"G1"_s);
  EXPECT_EQ(text(u"GSMC"_s), u"供A & 子} 公司 #1/2/2003#"_s);
  EXPECT_EQ(text(u"KHSH"_s), u" "_s);
  EXPECT_EQ(text(u"JHHS"_s), u"False"_s);
  const ShapedSetPtr lines = orders->child(0, u"CMD_GOKU"_s);
  ASSERT_TRUE(lines);
  EXPECT_EQ(column(*lines, u"XIMU"_s), (QStringList{u"甲"_s, u"乙"_s}));
}

TEST(OrderPrintCommand, UnknownOrderIsEmptyAndAQuoteInACompanyFieldFails) {
  const StoreFixture f;
  f.store.exec(smallTrade);
  EXPECT_EQ(f.shape(printCommand({}, 999))->rowCount(), 0);
  EXPECT_THROW(f.shape(printCommand({u"O'Neil"_s}, 101)), StoreError);
}

}  // namespace
}  // namespace qinghe

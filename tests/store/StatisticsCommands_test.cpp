#include "statistics_commands.h"
#include "store_test_tools.h"
#include "values/numbers.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

// The company 25 buys from 7 and 8 and sells to 9 and 10; some lines are returns. One order is
// between others, in a month of its own.
const QString trade =
    uR"(
  INSERT INTO GOHU (id,R_ID,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu) VALUES
    (1,101,'G1','2024-03-09 00:00:00',7,'供A',25,'己'),
    (2,102,'G2','2024-03-31 00:00:00',8,'供B',25,'己'),
    (3,103,'G3','2024-11-02 00:00:00',7,'供A',25,'己'),
    (4,104,'G4','2024-03-15 00:00:00',25,'己',9,'客C'),
    (5,105,'G5','2024-04-01 00:00:00',25,'己',10,'客D'),
    (6,106,'G6','2024-03-20 00:00:00',7,'供A',9,'客C');
  INSERT INTO GOKU (R_ID,GOHU_ID,XIMU_ID,XIMU,LEBI,SHLI,JIGE,JINE,YNSH,BAXI,LING,DAWE) VALUES
    (101,1,501,'甲','教材',10,5,50,40,2,0,'册'),
    (101,1,502,'乙','小说',-2,10,-20,-16,0,-2,NULL),
    (102,2,501,'甲','教材',4,5,20,20.5,1,0,NULL),
    (103,3,503,'丙','小说',1,30,30,27,0,1,NULL),
    (104,4,601,'丁','教材',6,5,30,24,1,1,NULL),
    (104,4,602,'戊','工具',-1,8,-8,-8,0,-1,NULL),
    (105,5,601,'丁','教材',2,5,10,10,0,2,NULL),
    (106,6,501,'甲','教材',100,5,500,500,9,9,NULL);
)"_s;

// The tree as text: the group's fields, then its groups or lines in brackets.
QString tree(const ShapedSet& set, const std::vector<QStringList>& fields, std::size_t level = 0) {
  QStringList rows;
  for (qint64 row = 0; row < set.rowCount(); ++row) {
    QStringList texts;
    for (const QString& field : fields[level]) texts.append(set.text(row, set.columnIndex(field)));
    QString text = texts.join(u' ');
    for (const QString& child : set.childNames()) {
      text += u"["_s + tree(*set.child(row, child), fields, level + 1) + u"]"_s;
    }
    rows.append(text);
  }
  return rows.join(u"; "_s);
}

double sum(const ShapedSet& set, const QString& field) {
  double total = 0;
  for (qint64 row = 0; row < set.rowCount(); ++row) {
    const QStringList below = set.childNames();
    total += below.isEmpty() ? Val(set.text(row, set.columnIndex(field)))
                             : sum(*set.child(row, below.first()), field);
  }
  return total;
}

struct Report {
  const char* name;
  QString command;
  std::vector<QStringList> fields;
  QString rows;
  double receivable;  // the grand total
};

class Statistics : public testing::TestWithParam<Report> {};

TEST_P(Statistics, GiveTheGroupsAndLinesOfTheirDirection) {
  const StoreFixture f;
  f.store.exec(trade);
  const ShapedSetPtr top = f.shape(GetParam().command);
  EXPECT_EQ(tree(*top, GetParam().fields), GetParam().rows);
  EXPECT_DOUBLE_EQ(sum(*top, u"YNSH"_s), GetParam().receivable);
}

TEST_P(Statistics, OfAnEmptyFileAreEmpty) {
  const StoreFixture f;
  EXPECT_EQ(f.shape(GetParam().command)->rowCount(), 0);
}

const std::vector<QStringList> byCategory = {
    {u"lebi"_s}, {u"XIMU"_s}, {u"SHLI"_s, u"JINE"_s, u"thsl"_s, u"thje"_s, u"thys"_s}};
const std::vector<QStringList> byPartner = {
    {u"DAWE"_s}, {u"XIMU"_s}, {u"SHLI"_s, u"JINE"_s, u"thsl"_s, u"thje"_s, u"thys"_s}};
const std::vector<QStringList> byMonth = {
    {u"month_id"_s}, {u"ximu"_s}, {u"SHLI"_s, u"YNSH"_s, u"ghrq"_s, u"DAWE"_s}};
const std::vector<QStringList> details = {
    {u"XIMU"_s}, {u"gohu_no"_s, u"ghrq"_s, u"dawe"_s, u"shli"_s, u"baxi"_s, u"ling"_s}};

const QString purchaseMarch = u" and gohu.ghrq>=#3/1/2024# and gohu.ghrq<=#3/31/2024#"_s;
const QString salesMarch = u" and Gohu.ghrq>=#3/1/2024# and Gohu.ghrq<=#3/31/2024#"_s;

INSTANTIATE_TEST_SUITE_P(
    Purchases, Statistics,
    testing::Values(
        // Goods of two suppliers stand in a category once for each, with the lines of both.
        Report{"ByCategory", statistics::filled(statistics::purchaseByCategory), byCategory,
               u"小说[乙[-2 -20 -2 -20 -16]; 丙[1 30 0 0 0]]; "
               u"教材[甲[10 50 0 0 0; 4 20 0 0 0]; 甲[10 50 0 0 0; 4 20 0 0 0]]"_s,
               132},
        Report{"OneCategory",
               statistics::filled(statistics::purchaseByCategory, u" and gohu.gosh_id=7"_s,
                                  u" and goku.lebi='教材'"_s),
               byCategory, u"教材[甲[10 50 0 0 0]]"_s, 40},
        Report{
            "ByPartner", statistics::filled(statistics::purchaseByPartner), byPartner,
            u"供A[甲[10 50 0 0 0]; 乙[-2 -20 -2 -20 -16]; 丙[1 30 0 0 0]]; 供B[甲[4 20 0 0 0]]"_s,
            71.5},
        Report{"ByPartnerInMarch", statistics::filled(statistics::purchaseByPartner, purchaseMarch),
               byPartner, u"供A[甲[10 50 0 0 0]; 乙[-2 -20 -2 -20 -16]]; 供B[甲[4 20 0 0 0]]"_s,
               44.5},
        // The lines have no company of their own: those of the order between others come along.
        Report{"ByMonth", statistics::filled(statistics::purchaseByMonth), byMonth,
               // Months are texts, and sorted as texts.
               u"2024年11月[丙[1 27 2024-11-2 ]]; "
               u"2024年3月[甲[10 40 2024-3-9 册; 4 20.5 2024-3-31 ; 100 500 2024-3-20 ]; "
               u"乙[-2 -16 2024-3-9 ]]"_s,
               571.5},
        Report{"Details", statistics::filled(statistics::purchaseDetails), details,
               u"甲[G1 2024-3-9 供A 10 2 0; G2 2024-3-31 供B 4 1 0]; 乙[G1 2024-3-9 供A -2 0 -2]; "
               u"丙[G3 2024-11-2 供A 1 0 1]; 甲[G1 2024-3-9 供A 10 2 0; G2 2024-3-31 供B 4 1 0]"_s,
               132},
        Report{"DetailsOfOneGoods",
               statistics::filled(statistics::purchaseDetails, purchaseMarch, {},
                                  u" and goku.ximu='乙'"_s),
               details, u"乙[G1 2024-3-9 供A -2 0 -2]"_s, -16}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Sales, Statistics,
    testing::Values(
        Report{
            "ByCategory", statistics::filled(statistics::salesByCategory), byCategory,
            u"工具[戊[-1 -8 -1 -8 -8]]; 教材[丁[6 30 0 0 0; 2 10 0 0 0]; 丁[6 30 0 0 0; 2 10 0 0 0]]"_s,
            60},
        Report{"ByPartner",
               statistics::filled(statistics::salesByPartner, u" and Gohu.Kehu_id=9"_s), byPartner,
               u"客C[丁[6 30 0 0 0]; 戊[-1 -8 -1 -8 -8]]"_s, 16},
        Report{
            "ByMonth", statistics::filled(statistics::salesByMonth), byMonth,
            u"2024年3月[丁[6 24 2024-3-15 ]; 戊[-1 -8 2024-3-15 ]]; 2024年4月[丁[2 10 2024-4-1 ]]"_s,
            26},
        Report{"ByMonthInMarch", statistics::filled(statistics::salesByMonth, salesMarch), byMonth,
               u"2024年3月[丁[6 24 2024-3-15 ]; 戊[-1 -8 2024-3-15 ]]"_s, 16},
        // The lines of sold goods are looked for where the company is the customer.
        Report{"Details", statistics::filled(statistics::salesDetails), details,
               u"丁[]; 戊[]; 丁[]"_s, 0},
        Report{
            "DetailsWithFilter",
            statistics::filled(statistics::salesDetails, salesMarch, {}, u" and goku.ximu='丁'"_s),
            details, u"丁[]; 戊[]"_s, 0}),
    [](const auto& row) { return row.param.name; });

TEST(Statistics, DatesIncludeBothEndsAtMidnight) {
  const StoreFixture f;
  f.store.exec(trade);
  const auto names = [&](const QString& range) {
    return column(*f.shape(statistics::filled(statistics::purchaseByPartner, range)), u"DAWE"_s);
  };
  EXPECT_EQ(names(u" and gohu.ghrq>=#3/31/2024#"_s), (QStringList{u"供A"_s, u"供B"_s}));
  EXPECT_EQ(names(u" and gohu.ghrq>=#3/10/2024# and gohu.ghrq<=#3/31/2024#"_s),
            QStringList{u"供B"_s});
  EXPECT_EQ(names(u" and gohu.ghrq<=#3/8/2024#"_s), QStringList());
  f.store.exec(u"UPDATE GOHU SET ghrq='2024-03-31 10:00:00' WHERE id=2"_s);
  EXPECT_EQ(names(u" and gohu.ghrq>=#3/10/2024# and gohu.ghrq<=#3/31/2024#"_s), QStringList());
}

TEST(Statistics, GroupsOfOneNameInTwoSpellingsHoldEachLineOnce) {
  const StoreFixture f;
  f.store.exec(trade);
  f.store.exec(
      u"UPDATE GOKU SET LEBI='Books' WHERE id=2; UPDATE GOKU SET LEBI='BOOKS' WHERE id=4"_s);
  const ShapedSetPtr top = f.shape(statistics::filled(statistics::purchaseByCategory));
  ASSERT_EQ(top->rowCount(), 2);
  EXPECT_EQ(top->child(0, u"Cmd_Goku_lebi_ximu"_s)->rowCount(), 2);
}

TEST(Statistics, NameWithAnApostropheBreaksTheCommand) {
  const StoreFixture f;
  const QString category = u" and goku.lebi='children's'"_s;
  EXPECT_THROW(f.shape(statistics::filled(statistics::purchaseByCategory, {}, category)),
               StoreError);
  EXPECT_THROW(f.open(u"SELECT distinct ximu FROM vXIMU WHERE kehu_id=25 and lebi='children's'"_s),
               StoreError);
}

}  // namespace
}  // namespace qinghe

#include <QLineEdit>

#include "WizardFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class WizardLists : public WizardFixture {
 protected:
  static QStringList sorted(QStringList list) {
    list.sort();
    return list;
  }

  static QStringList partners(const StatisticsWizard& wizard) {
    QStringList result;
    for (int i = 0; i < wizard.comboDawe->count(); ++i) {
      result.append(wizard.comboDawe->itemText(i) + u' ' +
                    QString::number(wizard.comboDawe->itemDataAt(i)));
    }
    return sorted(result);
  }

  static int rowOf(const TreeView& tree, const QString& text) {
    return static_cast<int>(texts(tree).indexOf(text));
  }
};

TEST_F(WizardLists, HoldTheCategoriesAndPartnersOfTheirSide) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  auto& sales = wizard<FrmQueryXISH>();
  EXPECT_EQ(sorted(texts(*purchase.TreeView1)), sorted({u"教材"_s, u"小说"_s, u"百科"_s}))
      << "without blanks around";
  EXPECT_EQ(sorted(texts(*sales.TreeView1)), sorted({u"教材"_s, u"工具"_s}));
  EXPECT_EQ(partners(purchase), (QStringList{u"供A 7"_s, u"供B 8"_s}));
  EXPECT_EQ(partners(sales), (QStringList{u"客C 9"_s, u"客D 10"_s}));
  EXPECT_EQ(purchase.TreeView2->rootCount(), 0);
  EXPECT_FALSE(purchase.TreeView1->root(0)->icon(0).isNull());
}

TEST_F(WizardLists, AClickOnACategoryListsItsGoodsOfThatSide) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  click(*purchase.TreeView1, rowOf(*purchase.TreeView1, u"小说"_s));
  EXPECT_EQ(purchase.lebiClause, u" and goku.lebi='小说'"_s);
  EXPECT_EQ(sorted(texts(*purchase.TreeView2)), sorted({u"乙"_s, u"丙"_s}));
  EXPECT_EQ(purchase.TreeView2->root(0)->Tag, u"ximu"_s);
  click(*purchase.TreeView1, rowOf(*purchase.TreeView1, u"教材"_s));
  EXPECT_EQ(texts(*purchase.TreeView2), QStringList{u"甲"_s});

  auto& sales = wizard<FrmQueryXISH>();
  click(*sales.TreeView1, rowOf(*sales.TreeView1, u"教材"_s));
  EXPECT_EQ(texts(*sales.TreeView2), QStringList{u"丁"_s}) << "of two orders, once";
}

TEST_F(WizardLists, ThePickedGoodsStayInForceInAnotherCategory) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  click(*purchase.TreeView1, rowOf(*purchase.TreeView1, u"小说"_s));
  walkTo(purchase, 1);
  click(*purchase.TreeView2, rowOf(*purchase.TreeView2, u"乙"_s));
  EXPECT_EQ(purchase.ximuClause, u" and goku.ximu='乙'"_s);
  walkTo(purchase, 0);
  click(*purchase.TreeView1, rowOf(*purchase.TreeView1, u"教材"_s));
  EXPECT_EQ(purchase.ximuClause, u" and goku.ximu='乙'"_s);
  EXPECT_EQ(purchase.lebiClause, u" and goku.lebi='教材'"_s);
  purchase.unload();
  EXPECT_EQ(wizard<FrmQueryJIHU>().ximuClause, QString()) << "closing drops both";
  EXPECT_EQ(wizard<FrmQueryJIHU>().lebiClause, QString());
}

TEST_F(WizardLists, AnApostropheInACategoryLeavesItsGoodsEmpty) {
  addTrade();
  store.exec(u"UPDATE GOKU SET LEBI='children''s' WHERE LEBI='教材'"_s);
  auto& purchase = wizard<FrmQueryJIHU>();
  click(*purchase.TreeView1, rowOf(*purchase.TreeView1, u"小说"_s));
  EXPECT_EQ(purchase.TreeView2->rootCount(), 2);
  click(*purchase.TreeView1, rowOf(*purchase.TreeView1, u"children's"_s));
  EXPECT_EQ(purchase.lebiClause, u" and goku.lebi='children's'"_s);
  EXPECT_EQ(purchase.TreeView2->rootCount(), 0);
  takeAllDates(purchase);
  EXPECT_EQ(finish(purchase, 1), QString()) << "and its report does not open";
  EXPECT_TRUE(purchase.mCommand.contains(u"children's"_s));
  EXPECT_EQ(finish(purchase, 2), u"rptGOKU_DAWE"_s) << "the others never read it";
}

TEST_F(WizardLists, AFileWithoutTheTablesLeavesTheListsEmptyWithoutAWord) {
  store.exec(u"DROP VIEW vLEBI; DROP VIEW vgskh"_s);
  auto& sales = wizard<FrmQueryXISH>();
  EXPECT_TRUE(sales.isVisible());
  EXPECT_EQ(sales.TreeView1->rootCount(), 0);
  EXPECT_EQ(sales.comboDawe->count(), 0);
}

TEST_F(WizardLists, OneListThatFailsDoesNotTakeTheOtherAlong) {
  addTrade();
  store.exec(u"DROP VIEW vLEBI"_s);
  EXPECT_EQ(wizard<FrmQueryXISH>().comboDawe->count(), 2);
}

TEST_F(WizardLists, APartnerWithoutANumberIsStillListed) {
  addTrade();
  store.exec(u"UPDATE GOHU SET gosh_id=NULL WHERE gosh='供A'"_s);
  EXPECT_EQ(partners(wizard<FrmQueryJIHU>()), (QStringList{u"供A 0"_s, u"供B 8"_s}));
}

TEST_F(WizardLists, NamesAreShownAsPlainText) {
  addTrade();
  store.exec(u"UPDATE GOKU SET LEBI='<b>a</b>&b' WHERE LEBI='工具'"_s);
  auto& sales = wizard<FrmQueryXISH>();
  EXPECT_GE(rowOf(*sales.TreeView1, u"<b>a</b>&b"_s), 0);
}

}  // namespace

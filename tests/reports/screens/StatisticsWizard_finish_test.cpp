#include <QCheckBox>
#include <QLineEdit>

#include "WizardFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class WizardFinish : public WizardFixture {
 protected:
  static void pickPartner(StatisticsWizard& wizard, const QString& name) {
    wizard.comboDawe->setCurrentIndex(wizard.comboDawe->findText(name));
  }

  static void type(StatisticsWizard& wizard, const QString& text) {
    walkTo(wizard, 3);
    auto* editor = wizard.comboDawe->lineEdit();
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, text);
  }
};

TEST_F(WizardFinish, EachOptionOpensItsReportOrNothing) {
  addTrade();
  const QStringList purchaseReports{{}, u"rptGOKU_LEBI"_s,  u"rptGOKU_DAWE"_s, {},
                                    {}, u"rptGOKU_MONTH"_s, u"rptXIMU_GOKU"_s};
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  for (int i = 0; i < purchaseReports.size(); ++i) {
    EXPECT_EQ(finish(purchase, static_cast<std::size_t>(i)), purchaseReports.at(i)) << i;
  }
  const QStringList salesReports{
      {}, u"rptGOKU_LEBI"_s, u"rptGOKU_DAWE"_s, {}, {}, {}, {}, u"rptGOKU_MONTH"_s,
      {}, u"rptXIMU_GOKU"_s};
  auto& sales = wizard<FrmQueryXISH>();
  takeAllDates(sales);
  for (int i = 0; i < salesReports.size(); ++i) {
    EXPECT_EQ(finish(sales, static_cast<std::size_t>(i)), salesReports.at(i)) << i;
  }
}

TEST_F(WizardFinish, AnOptionWithoutAReportLeavesTheLastCommand) {
  auto& purchase = wizard<FrmQueryJIHU>();
  finish(purchase, 2);
  const QString command = purchase.mCommand;
  EXPECT_EQ(finish(purchase, 3), QString());
  EXPECT_EQ(purchase.mCommand, command);
  EXPECT_TRUE(purchase.isVisible());
}

TEST_F(WizardFinish, TheCommandCarriesDatesAndPartner) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.DTPickerFrom->setValue(QDate(2024, 3, 9));
  purchase.DTPickerTo->setValue(QDate(2024, 11, 2));
  pickPartner(purchase, u"供A"_s);
  finish(purchase, 2);
  EXPECT_EQ(purchase.rangeClause,
            u" and gohu.ghrq>=#3/9/2024# and gohu.ghrq<=#11/2/2024# and gohu.gosh_id=7"_s);
  EXPECT_EQ(purchase.mCommand, statisticsCommand(StatisticsReport::Partner, TradeSide::Purchase, 25,
                                                 {purchase.rangeClause, {}, {}}));
  auto& sales = wizard<FrmQueryXISH>();
  sales.DTPickerFrom->setValue(QDate(2024, 3, 9));
  sales.DTPickerTo->setValue(QDate(2024, 11, 2));
  pickPartner(sales, u"客D"_s);
  finish(sales, 2);
  EXPECT_EQ(sales.rangeClause,
            u" and Gohu.ghrq>=#3/9/2024# and Gohu.ghrq<=#11/2/2024# and Gohu.Kehu_id=10"_s);
}

TEST_F(WizardFinish, AClearedDateDropsThatEndOfTheRange) {
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.DTPickerFrom->setValue(QDate(2024, 3, 9));
  purchase.DTPickerTo->setValue(QDate(2024, 4, 1));
  walkTo(purchase, 2);
  purchase.DTPickerFrom->check()->click();
  finish(purchase, 5);
  EXPECT_EQ(purchase.rangeClause, u" and gohu.ghrq<=#4/1/2024#"_s);
  purchase.DTPickerFrom->check()->click();
  purchase.DTPickerTo->check()->click();
  finish(purchase, 5);
  EXPECT_EQ(purchase.rangeClause, u" and gohu.ghrq>=#3/9/2024#"_s);
  purchase.DTPickerFrom->check()->click();
  finish(purchase, 5);
  EXPECT_EQ(purchase.rangeClause, QString());
}

TEST_F(WizardFinish, ATypedPartnerFailsWithoutAWordAlsoWhenItIsInTheList) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  for (const QString& text : {u"ZZ"_s, u"ABC"_s}) {
    store.exec(u"UPDATE GOHU SET gosh='ABC' WHERE gosh='供A'"_s);
    type(purchase, text);
    EXPECT_EQ(finish(purchase, 1), QString());
    EXPECT_EQ(purchase.comboDawe->currentText(), text);
  }
  type(purchase, {});
  EXPECT_EQ(finish(purchase, 1), u"rptGOKU_LEBI"_s) << "an empty text is no partner";
  pickPartner(purchase, u"供B"_s);
  EXPECT_EQ(finish(purchase, 1), u"rptGOKU_LEBI"_s);
  walkTo(purchase, 3);
  QTest::keyClicks(purchase.comboDawe->lineEdit(), u"1"_s);
  EXPECT_EQ(finish(purchase, 1), QString()) << "typing behind a choice drops it";
}

TEST_F(WizardFinish, AnEmptyFileGivesReportsWithoutRows) {
  // The titles alone.
  const auto isEmpty = [this] { return csv().count(u'\n') == 1; };
  auto& purchase = wizard<FrmQueryJIHU>();
  auto& sales = wizard<FrmQueryXISH>();
  for (const std::size_t option : {1U, 2U, 5U}) {
    EXPECT_NE(finish(purchase, option), QString());
    EXPECT_TRUE(isEmpty());
  }
  for (const std::size_t option : {1U, 2U, 7U}) {
    EXPECT_NE(finish(sales, option), QString());
    EXPECT_TRUE(isEmpty());
  }
  EXPECT_EQ(finish(purchase, 6), u"rptXIMU_GOKU"_s);
  EXPECT_TRUE(isEmpty());
  EXPECT_EQ(finish(sales, 9), u"rptXIMU_GOKU"_s);
  EXPECT_TRUE(isEmpty());
}

TEST_F(WizardFinish, ARangeWithoutOrdersGivesHeadersAndNoMessage) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.DTPickerFrom->setValue(QDate(2023, 1, 1));
  purchase.DTPickerTo->setValue(QDate(2023, 12, 31));
  for (const std::size_t option : {2U, 5U}) {
    EXPECT_NE(finish(purchase, option), QString());
    EXPECT_EQ(csv().count(u'\n'), 1);
  }
  EXPECT_NE(finish(purchase, 6), QString());
  EXPECT_EQ(csv().count(u'\n'), 1);
}

TEST_F(WizardFinish, BothEndsOfTheRangeAreTheirDatesAtMidnight) {
  addTrade();
  store.exec(u"UPDATE GOHU SET ghrq='2024-03-31 08:00:00' WHERE id=2"_s);
  auto& purchase = wizard<FrmQueryJIHU>();
  const auto rows = [&](const QDate& from, const QDate& to) {
    purchase.DTPickerFrom->setValue(from);
    purchase.DTPickerTo->setValue(to);
    finish(purchase, 2);
    return csv();
  };
  EXPECT_FALSE(rows({2024, 3, 9}, {2024, 3, 31}).contains(u"供B"_s)) << "later on the last day";
  EXPECT_TRUE(rows({2024, 3, 31}, {2024, 4, 1}).contains(u"供B"_s));
  EXPECT_TRUE(rows({2024, 3, 9}, {2024, 3, 9}).contains(u"供A"_s));
  EXPECT_FALSE(rows({2024, 3, 10}, {2024, 3, 31}).contains(u"供A"_s));
}

TEST_F(WizardFinish, SumsQuantitiesForGoodsAndMoneyForGroupsAndAll) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  EXPECT_EQ(finish(purchase, 2), u"rptGOKU_DAWE"_s);
  EXPECT_EQ(csv(),
            u",数量:,金额:,退货数量:,退货金额:,应收:,退货应收:\n"
            u",10.000,50.000,0.000,0.000,40.000,0.000\n"
            u"甲,10.000,50.000,0.000,0.000,40.000,0.000\n"
            u",-2.000,-20.000,-2.000,-20.000,-16.000,-16.000\n"
            u"乙,-2.000,-20.000,-2.000,-20.000,-16.000,-16.000\n"
            u",1.000,30.000,0.000,0.000,27.000,0.000\n"
            u"丙,1.000,30.000,0.000,0.000,27.000,0.000\n"
            u"供A,,60.000,,-20.000,51.000,-16.000\n"
            u",4.000,20.000,0.000,0.000,20.500,0.000\n"
            u"己,4.000,20.000,0.000,0.000,20.500,0.000\n"
            u"供B,,20.000,,0.000,20.500,0.000\n"
            u"总计,,80.000,,-20.000,71.500,-16.000\n"_s);
  auto& sales = wizard<FrmQueryXISH>();
  takeAllDates(sales);
  EXPECT_EQ(finish(sales, 1), u"rptGOKU_LEBI"_s);
  EXPECT_EQ(csv(),
            u",数量:,金额:,退货数量:,退货金额:,应收:,退货应收:\n"
            u",-1.000,-8.000,-1.000,-8.000,-8.000,-8.000\n"
            u"戊,-1.000,-8.000,-1.000,-8.000,-8.000,-8.000\n"
            u"工具,,-8.000,,-8.000,-8.000,-8.000\n"
            // Sold to two customers: once for each of them, with the lines of both.
            u",6.000,30.000,0.000,0.000,24.000,0.000\n"
            u",2.000,10.000,0.000,0.000,10.000,0.000\n"
            u"丁,8.000,40.000,0.000,0.000,34.000,0.000\n"
            u",6.000,30.000,0.000,0.000,24.000,0.000\n"
            u",2.000,10.000,0.000,0.000,10.000,0.000\n"
            u"丁,8.000,40.000,0.000,0.000,34.000,0.000\n"
            u"教材,,80.000,,0.000,68.000,0.000\n"
            u"总计,,72.000,,-8.000,60.000,-8.000\n"_s);
}

TEST_F(WizardFinish, TheCategoryNarrowsTheReportByCategoryAlone) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  const auto rows = [&](std::size_t option) {
    finish(purchase, option);
    return csv();
  };
  QMap<std::size_t, QString> before;
  for (const std::size_t option : {1U, 2U, 5U, 6U}) before[option] = rows(option);
  EXPECT_TRUE(before[1].contains(u"小说"_s));
  purchase.lebiClause = u" and goku.lebi='教材'"_s;
  const QString byCategory = rows(1);
  EXPECT_FALSE(byCategory.contains(u"小说"_s));
  EXPECT_TRUE(byCategory.contains(u"教材"_s));
  for (const std::size_t option : {2U, 5U, 6U}) EXPECT_EQ(rows(option), before[option]);
}

TEST_F(WizardFinish, TheGoodsNarrowTheDetailsAlone) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  const auto rows = [&](std::size_t option) {
    finish(purchase, option);
    return csv();
  };
  QMap<std::size_t, QString> before;
  for (const std::size_t option : {1U, 2U, 5U}) before[option] = rows(option);
  purchase.ximuClause = u" and goku.ximu='乙'"_s;
  const QString details = rows(6);
  EXPECT_TRUE(details.contains(u"乙"_s));
  EXPECT_FALSE(details.contains(u"甲"_s));
  for (const std::size_t option : {1U, 2U, 5U}) EXPECT_EQ(rows(option), before[option]);
}

TEST_F(WizardFinish, SalesDetailsListTheGoodsSoldWithTheLinesBought) {
  addTrade();
  store.exec(
      u"INSERT INTO GOKU (R_ID,GOHU_ID,XIMU_ID,XIMU,SHLI,JIGE,JINE,YNSH,BAXI,LING) VALUES "
      u"(101,1,601,'丁',3,5,15,12,1,0)"_s);
  auto& sales = wizard<FrmQueryXISH>();
  takeAllDates(sales);
  EXPECT_EQ(finish(sales, 9), u"rptXIMU_GOKU"_s);
  const QString rows = csv();
  EXPECT_TRUE(rows.contains(u"丁"_s)) << rows.toStdString();
  EXPECT_TRUE(rows.contains(u"G1"_s)) << "the company is the customer of that one";
  EXPECT_FALSE(rows.contains(u"G4"_s)) << "and not of those it sold";
}

TEST_F(WizardFinish, ReturnsAloneStandInBothQuantities) {
  addTrade();
  store.exec(u"DELETE FROM GOKU WHERE SHLI>0 OR GOHU_ID<>1"_s);
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  EXPECT_EQ(finish(purchase, 5), u"rptGOKU_MONTH"_s);
  EXPECT_EQ(csv(),
            u",数量:,金额:,退货数量:,退货金额:,应收:,退货应收:\n"
            // The months are those of the orders, whatever is left in them; sorted as texts.
            u"2024年11月,,0.000,,0.000,0.000,0.000\n"
            u",-2.000,-20.000,-2.000,-20.000,-16.000,-16.000\n"
            u"乙,-2.000,-20.000,-2.000,-20.000,-16.000,-16.000\n"
            u"2024年3月,,-20.000,,-20.000,-16.000,-16.000\n"
            u"总计,,-20.000,,-20.000,-16.000,-16.000\n"_s);
}

TEST_F(WizardFinish, ASaleMakesNoMonthAmongThePurchases) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  EXPECT_EQ(finish(purchase, 5), u"rptGOKU_MONTH"_s);
  const QString rows = csv();
  EXPECT_TRUE(rows.contains(u"2024年3月"_s));
  EXPECT_TRUE(rows.contains(u"2024年11月"_s));
  EXPECT_FALSE(rows.contains(u"2024年4月"_s)) << "only sold then";
  EXPECT_FALSE(rows.contains(u"2024年5月"_s)) << "that order is between others";
}

TEST_F(WizardFinish, SalesWhoseLinesLostTheirCategoryAreOneBlankGroup) {
  addTrade();
  store.exec(u"UPDATE GOKU SET LEBI='' WHERE GOHU_ID IN (4,5)"_s);
  auto& sales = wizard<FrmQueryXISH>();
  EXPECT_EQ(texts(*sales.TreeView1), QStringList{QString()});
  takeAllDates(sales);
  EXPECT_EQ(finish(sales, 1), u"rptGOKU_LEBI"_s);
  const QStringList rows = csv().split(u'\n');
  EXPECT_TRUE(rows.contains(u",,72.000,,-8.000,60.000,-8.000"_s)) << csv().toStdString();
  EXPECT_TRUE(rows.contains(u"总计,,72.000,,-8.000,60.000,-8.000"_s));
  EXPECT_FALSE(rows.join(u'\n').contains(u"教材"_s));
}

TEST_F(WizardFinish, TheWizardStaysBehindTheReportForAnotherRun) {
  addTrade();
  auto& purchase = wizard<FrmQueryJIHU>();
  takeAllDates(purchase);
  pickPartner(purchase, u"供B"_s);
  EXPECT_EQ(finish(purchase, 2), u"rptGOKU_DAWE"_s);
  EXPECT_FALSE(reports().first()->isModal());
  EXPECT_TRUE(purchase.isVisible());
  EXPECT_EQ(purchase.mStep, 5);
  press(purchase, 4);
  EXPECT_EQ(reports().size(), 2);
  EXPECT_EQ(purchase.comboDawe->currentText(), u"供B"_s);
  purchase.unload();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(csv().contains(u"供B"_s)) << "and the report outlives it";
}

TEST_F(WizardFinish, AnUnreadableFileOpensNothingAndSaysNothing) {
  auto& purchase = wizard<FrmQueryJIHU>();
  store.exec(u"DROP TABLE GOKU"_s);
  EXPECT_EQ(finish(purchase, 1), QString());
  EXPECT_TRUE(purchase.isVisible());
}

TEST_F(WizardFinish, TheControlsWithoutUseChangeNothing) {
  auto& sales = wizard<FrmQueryXISH>();
  takeAllDates(sales);
  finish(sales, 1);
  const QString command = sales.mCommand;
  sales.ComboYewu->setEditText(u"某人"_s);
  sales.ComboKufa->setEditText(u"一库"_s);
  sales.numberBox->setText(u"G1"_s);
  sales.CheckDetail->setChecked(true);
  finish(sales, 1);
  EXPECT_EQ(sales.mCommand, command);
}

}  // namespace

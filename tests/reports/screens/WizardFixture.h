#pragma once

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "reports/screens/FrmQueryJIHU.h"
#include "reports/screens/FrmQueryXISH.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// A company, number 25, that buys from 7 and 8 and sells to 9 and 10; one order is between others.
/// Some lines are returns. It is logged in locally and has no network.
class WizardFixture : public ClientFixture {
 protected:
  WizardFixture() {
    beCompany(2, 0);
    goOffline();
  }
  ~WizardFixture() override {
    closeReports();
    EXPECT_TRUE(portal.requests().isEmpty()) << "statistics are read from the local file alone";
    EXPECT_TRUE(boxes->asked.isEmpty()) << "the wizards say nothing";
  }

  void addTrade() {
    store.exec(
        QStringLiteral("INSERT INTO GOHU (id,R_ID,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu) VALUES "
                       "(1,101,'G1','2024-03-09 00:00:00',7,'供A',25,'己'),"
                       "(2,102,'G2','2024-03-31 00:00:00',8,'供B',25,'己'),"
                       "(3,103,'G3','2024-11-02 00:00:00',7,'供A',25,'己'),"
                       "(4,104,'G4','2024-03-15 00:00:00',25,'己',9,'客C'),"
                       "(5,105,'G5','2024-04-01 00:00:00',25,'己',10,'客D'),"
                       "(6,106,'G6','2024-05-20 00:00:00',7,'供A',9,'客C');"
                       "INSERT INTO GOKU "
                       "(R_ID,GOHU_ID,XIMU_ID,XIMU,LEBI,SHLI,JIGE,JINE,YNSH,BAXI,LING) VALUES "
                       "(101,1,501,'甲','教材',10,5,50,40,2,0),"
                       "(101,1,502,'乙','小说',-2,10,-20,-16,0,-2),"
                       "(102,2,504,'己',' 百科 ',4,5,20,20.5,1,0),"
                       "(103,3,503,'丙','小说',1,30,30,27,0,1),"
                       "(104,4,601,'丁','教材',6,5,30,24,1,1),"
                       "(104,4,602,'戊','工具',-1,8,-8,-8,0,-1),"
                       "(105,5,601,'丁','教材',2,5,10,10,0,2),"
                       "(106,6,501,'甲','教材',100,5,500,500,9,9);"));
  }

  template <class Wizard>
  static Wizard& wizard() {
    return defaultInstance<Wizard>();
  }

  static void press(StatisticsWizard& wizard, std::size_t button) {
    QTest::mouseClick(wizard.cmdNav.at(button), Qt::LeftButton);
  }

  static void walkToTheEnd(StatisticsWizard& wizard) {
    while (wizard.mStep < 5) press(wizard, 3);
  }

  static void walkTo(StatisticsWizard& wizard, int step) {
    while (wizard.mStep < step) press(wizard, 3);
    while (wizard.mStep > step) press(wizard, 2);
  }

  static void takeAllDates(StatisticsWizard& wizard) {
    wizard.DTPickerFrom->setValue(std::nullopt);
    wizard.DTPickerTo->setValue(std::nullopt);
  }

  static void click(TreeView& tree, int row) {
    TreeNode* node = tree.root(row);
    ASSERT_NE(node, nullptr);
    tree.scrollToItem(node);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(node).center());
  }

  static QStringList texts(const TreeView& tree) {
    QStringList result;
    for (int row = 0; row < tree.rootCount(); ++row) result.append(tree.root(row)->text());
    return result;
  }

  static QList<QWidget*> reports() {
    QList<QWidget*> result;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName().startsWith(u"rpt")) result.append(window);
    }
    return result;
  }

  static void closeReports() { qDeleteAll(reports()); }

  /// Finishes with the option and gives the name of the report that opens, if one does.
  static QString finish(StatisticsWizard& wizard, std::size_t option) {
    closeReports();
    wizard.Option1.at(option)->setChecked(true);
    walkToTheEnd(wizard);
    press(wizard, 4);
    const QList<QWidget*> open = reports();
    EXPECT_LE(open.size(), 1);
    return open.isEmpty() ? QString() : open.first()->objectName();
  }

  /// The open report's rows, exported through its own action.
  QString csv() {
    if (reports().isEmpty()) return QStringLiteral("no report");
    const QString path = settingsFolder.filePath(QStringLiteral("report.csv"));
    boxes->expectFile(path);
    reports().first()->findChild<QAction*>(QStringLiteral("CSV"))->trigger();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll())
        .remove(QChar(0xFEFF))
        .replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  }
};

}  // namespace qinghe

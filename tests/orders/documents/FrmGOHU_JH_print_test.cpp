#include <QFile>

#include "OrderFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString partyColumns = u"qiye,dizh,yobi,dihu,lixi,khyh,yhzh,shha,"_s;

QList<QStringList> party(const QString& prefix) {
  QStringList cells;
  for (int i = 1; i <= 8; ++i) cells << prefix + QString::number(i);
  return {cells};
}

template <class Screen>
class Printing : public OrderFixture<Screen> {
 protected:
  ~Printing() override { closeReports(); }

  static QList<QWidget*> reports() {
    QList<QWidget*> found;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible() && window->objectName() == u"rptGOHU") found << window;
    }
    return found;
  }
  static void closeReports() { qDeleteAll(reports()); }

  /// The open report as a page of text.
  QString html() {
    if (reports().isEmpty()) return u"no report"_s;
    const QString path = this->settingsFolder.filePath(u"report.html"_s);
    this->boxes->expectFile(path);
    reports().first()->template findChild<QAction*>(u"HTML"_s)->trigger();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
  QStringList partyRequests(const QString& seller, const QString& buyer) {
    return {readTarget(u"QYXX"_s, partyColumns, u"id="_s + seller),
            readTarget(u"QYXX"_s, partyColumns, u"id="_s + buyer)};
  }
};

class PurchasePrint : public Printing<FrmGOHU_JH> {
 protected:
  PurchasePrint() { store.exec(u"DELETE FROM GOHU; DELETE FROM GOKU"_s); }
  void openSaved() {
    open(88, purchaseHeader(), twoLines());
    press(u"Save"_s);
    portal.clear();
  }
};

class SalesPrint : public Printing<FrmGOHU_XS> {};

}  // namespace

TEST_F(PurchasePrint, ReadsBothPartiesAndOpensTheReportOnTheLocalCopy) {
  openSaved();
  portal.answerWith({page(party(u"供"_s)), page(party(u"客"_s))});
  press(u"Print"_s);
  EXPECT_EQ(targets(), partyRequests(u"7"_s, u"25"_s));
  ASSERT_EQ(reports().size(), 1);
  const QString text = html();
  for (const auto& part :
       {u"供1"_s, u"供8"_s, u"客1"_s, u"客8"_s, u"大学语文"_s, u"G2003115-7"_s}) {
    EXPECT_TRUE(text.contains(part)) << part.toStdString();
  }
  EXPECT_TRUE(screen().isVisible()) << "the report blocks nothing";
}

TEST_F(PurchasePrint, PrintsTheLocalCopyAndNotTheScreen) {
  openSaved();
  row(0).setText(u"改名"_s);
  press(u"Print"_s);
  EXPECT_TRUE(html().contains(u"大学语文"_s));
  EXPECT_FALSE(html().contains(u"改名"_s));
}

TEST_F(PurchasePrint, SavesUnsavedChangesFirst) {
  openSaved();
  type(1, u"G9"_s);
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}}),
                     page(party(u"供"_s)), page(party(u"客"_s))});
  press(u"Print"_s);
  EXPECT_EQ(targets().mid(3), partyRequests(u"7"_s, u"25"_s));
  EXPECT_FALSE(screen().isDirty());
  EXPECT_EQ(status(), u"订单保存成功！！！"_s) << "that of the save before; printing says nothing";
  EXPECT_TRUE(html().contains(u"G9"_s));
}

TEST_F(PurchasePrint, AnEmptyCellOfAPartyBecomesABlankAndAMissingAnswerKeepsWhatWas) {
  openSaved();
  portal.answerWith(
      {page({{u"供1"_s, u""_s, u"供3"_s, u"供4"_s, u"供5"_s, u"供6"_s, u"供7"_s, u""_s}}),
       "<html></html>"});
  press(u"Print"_s);
  ASSERT_EQ(reports().size(), 1);
  EXPECT_TRUE(html().contains(u"供3"_s));
  closeReports();
  portal.answerWith({"<html></html>"});
  press(u"Print"_s);
  EXPECT_TRUE(html().contains(u"供3"_s));
}

TEST_F(PurchasePrint, AQuoteInACompanyFieldBreaksTheCommand) {
  openSaved();
  portal.answerWith(
      {page({{u"O'Neill"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s}})});
  boxes->expect(Answer::Ok);
  press(u"Print"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"网络锁定失败，操作无效"_s});
  EXPECT_TRUE(reports().isEmpty());
}

TEST_F(PurchasePrint, AStoreThatFailsTheSaveIsToldAndNothingIsPrinted) {
  openSaved();
  type(1, u"G9"_s);
  store.exec(
      u"CREATE TRIGGER full BEFORE UPDATE ON GOHU BEGIN SELECT RAISE(FAIL,'disk full'); END"_s);
  boxes->expect(Answer::Ok);
  press(u"Print"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"网络锁定失败，操作无效"_s});
  EXPECT_TRUE(reports().isEmpty());
  EXPECT_TRUE(screen().isDirty());
}

TEST_F(PurchasePrint, AnOrderThatNeverReachedThePortalPrintsWhatStandsUnderIdZero) {
  store.exec(
      u"INSERT INTO GOHU (id,R_ID,gohu_no) VALUES (3,0,'earlier');"
      "INSERT INTO GOKU (R_ID,GOHU_ID,XIMU_ID,XIMU) VALUES (0,3,9,'旧书')"_s);
  state.gCurrentOrderId = 0;
  portal.answerWith({"<html></html>"});
  screen();
  press(u"Print"_s);
  EXPECT_TRUE(html().contains(u"earlier"_s));
  EXPECT_TRUE(html().contains(u"旧书"_s));
}

TEST_F(PurchasePrint, FollowsTheOrderThatAListWasPressedOn) {
  openSaved();
  store.exec(u"INSERT INTO GOHU (id,R_ID,gohu_no) VALUES (30,99,'G99')"_s);
  state.gCurrentOrderId = 99;
  press(u"Print"_s);
  EXPECT_TRUE(html().contains(u"G99"_s));
}

TEST_F(SalesPrint, TheOwnCompanyIsTheSeller) {
  open(88, salesHeader(), salesLines());
  press(u"Save"_s);
  portal.clear();
  portal.answerWith({page(party(u"供"_s)), page(party(u"客"_s))});
  press(u"Print"_s);
  EXPECT_EQ(targets(), partyRequests(u"25"_s, u"9"_s));
  const QString text = html();
  EXPECT_LT(text.indexOf(u"供1"_s), text.indexOf(u"客1"_s));
}

#include "OrderFixture.h"
#include "orders/chooser/frmGetXIMU.h"
#include "support/cpu_time.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString lockFailed = u"网络锁定失败，操作无效"_s;
const QString tooLong = u"99999999999"_s;  // no number of 32 bits

class PurchaseFaults : public OrderFixture<FrmGOHU_JH> {
 protected:
  PurchaseFaults() { store.exec(u"DELETE FROM GOHU; DELETE FROM GOKU"_s); }
  Open& openOrder() { return open(88, purchaseHeader(), twoLines()); }
  void refreshWith(const QList<QByteArray>& pages) {
    portal.answerWith(pages);
    press(u"Refresh"_s);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  }
};

class RetailFaults : public OrderFixture<FrmDIHU_XS> {};

}  // namespace

TEST_F(PurchaseFaults, LinesThatBreakOffKeepTheRowsThatCameWhole) {
  openOrder();
  QList<QStringList> lines = twoLines();
  lines[1] = lines[1].first(7);
  refreshWith({page(purchaseHeader()), page(lines)});
  ASSERT_EQ(list().itemCount(), 1);
  EXPECT_EQ(row(0).key(), u"417 ID"_s);
  EXPECT_EQ(counts().join(u'|'), u"1|25|312.5|62.5|250|255.5|33.215"_s);
}

TEST_F(PurchaseFaults, ACellLongerThanTheReaderTakesEndsTheLines) {
  openOrder();
  QList<QStringList> lines = twoLines();
  lines[1][2] = QString(40'000, u'x');
  refreshWith({page(purchaseHeader()), page(lines)});
  EXPECT_EQ(list().itemCount(), 1);
}

TEST_F(PurchaseFaults, AHeaderThatBreaksOffFillsWhatCame) {
  openOrder();
  refreshWith({page({{u"88"_s, u"G9"_s, u"2003-2-1"_s}}), page(twoLines())});
  EXPECT_EQ(field(1), u"G9"_s);
  EXPECT_EQ(screen().DTPicker1->date(), QDate(2003, 2, 1));
  EXPECT_EQ(field(2), u"学苑书店"_s);
  EXPECT_EQ(screen().ComboFHFS->currentText(), u"快件"_s);
  EXPECT_EQ(list().itemCount(), 2);
}

TEST_F(PurchaseFaults, AnIdThatNoOrderCanHaveChangesNothing) {
  openOrder();
  refreshWith({page(purchaseHeader({{0, tooLong}, {1, u"G9"_s}})), page(twoLines())});
  EXPECT_EQ(id(), u"88"_s);
  EXPECT_EQ(state.gCurrentOrderId, 88);
  EXPECT_EQ(field(1), u"G2003115-7"_s);

  portal.clear();
  portal.answerWith({page({{tooLong}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().size(), 1) << "as with any header that failed, no line goes out";
  EXPECT_EQ(id(), u"88"_s);
  EXPECT_EQ(state.gCurrentOrderId, 88);
  EXPECT_EQ(store.value(u"SELECT R_ID FROM GOHU"_s).toInt(), 88);
}

TEST_F(PurchaseFaults, GoodsThatNoRecordCanBeAreToldAndTheLineStays) {
  openOrder();
  row(1).setSubItem(LineGoodsId, tooLong);
  state.gGoodsId = 7;
  boxes->expect(Answer::Ok);
  clickCell(1, LineName, Qt::RightButton);
  EXPECT_EQ(boxes->asked.last().mark, Mark::Critical);
  EXPECT_FALSE(screen().mnuGohu->isVisible());
  EXPECT_EQ(state.gGoodsId, 7);

  type(1, u"G9"_s);
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  boxes->asked.clear();
  boxes->expect(Answer::Ok);
  press(u"Save"_s);
  EXPECT_EQ(boxes->texts(), QStringList{lockFailed});
  EXPECT_EQ(targets().size(), 3) << "the portal has it all the same";
  EXPECT_TRUE(screen().isDirty());
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOKU"_s).toInt(), 1);
}

TEST_F(PurchaseFaults, ASaveGoesByTheOrderThatTheScreenShows) {
  openOrder();
  // As a press on a list's row leaves it.
  state.gCurrentOrderId = 99;
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  ASSERT_EQ(targets().size(), 3);
  EXPECT_TRUE(targets()[0].contains(u"&stother="_s + UrlEncodeField(u"id=88"_s) + u"&"_s));
  EXPECT_TRUE(targets()[2].contains(UrlEncodeField(u"id=418 and gohu_id=88"_s)));
  EXPECT_EQ(state.gCurrentOrderId, 88) << "the answer's";
  EXPECT_EQ(store.value(u"SELECT R_ID FROM GOHU"_s).toInt(), 88);
}

TEST_F(PurchaseFaults, WhatWasTakenBeforeAFailingLineIsNotLostByClosing) {
  openOrder();
  portal.answerWith(
      {page({{u"1"_s}}),
       page({{u"503"_s, u"普通物理"_s, u"教材"_s, u"8"_s, u""_s, u"3"_s, u"B3"_s, u"7-03"_s},
             {u"504"_s, u"化学"_s, u"教材"_s, u"8"_s, u""_s, u"3"_s, u"B4"_s, u"7-04"_s}})});
  new WhenShown<frmGetXIMU>(&screen(), [](frmGetXIMU& chooser) {
    chooser.ListView1->itemAt(0)->setSubItem(ChosenQuantity, u"5"_s);
    // More cartons than can be counted.
    chooser.ListView1->itemAt(1)->setSubItem(ChosenQuantity, u"3000000000"_s);
    QTest::mouseClick(chooser.commandC, Qt::LeftButton);
  });
  boxes->expect(Answer::Ok);
  // The total quantity is beyond its width now, too, which the next activation tells.
  boxes->expect(Answer::Ok);
  press(u"Ximu"_s);
  EXPECT_EQ(boxes->texts().first(), lockFailed);
  ASSERT_EQ(list().itemCount(), 4);
  EXPECT_EQ(row(2).subItem(LineQuantity), u"5"_s);
  EXPECT_TRUE(screen().isDirty());
  EXPECT_TRUE(QTest::qWaitFor([&] { return boxes->asked.size() == 2; }));
}

TEST_F(PurchaseFaults, AHundredThousandLinesAreLoadedAndEdited) {
  QByteArray lines("<table start_pos>");
  for (int i = 1; i <= 100'000; ++i) {
    const QByteArray cells[] = {QByteArray::number(i),
                                QByteArray::number(i),
                                "b",
                                "c",
                                "2",
                                "3",
                                "6",
                                "1",
                                "6",
                                "0",
                                "2",
                                "",
                                "12",
                                "n",
                                "l"};
    lines += "<tr>";
    for (const QByteArray& cell : cells) lines += "<td>" + cell + "</td>";
    lines += "</tr>";
  }
  lines += "</table>";
  const double begun = workedMilliseconds();
  state.gCurrentOrderId = 88;
  portal.answerWith({page(purchaseHeader()), lines});
  screen();
  ASSERT_EQ(list().itemCount(), 100'000);
  EXPECT_EQ(count(CountQuantity), u"200000"_s);
  const double loaded = workedMilliseconds();
  clickCell(0, LineQuantity);
  typeCell(u"3"_s);
  clickCell(1, LineName);
  EXPECT_EQ(count(CountQuantity), u"200001"_s);
  // An edit costs a small part of the load, however many lines there are.
  EXPECT_LT(workedMilliseconds() - loaded, std::max(loaded - begun, 1000.0));
}

TEST_F(RetailFaults, AHugeListAndQuantitiesThatAreNoneOnlyEndTheLines) {
  QString many = u"1"_s;
  for (int i = 2; i <= 5'000; ++i) many += u","_s + QString::number(i);
  const QStringList header{u"55"_s,    u"D-1"_s,  u"2003-1-15"_s, u"25"_s,        u"青禾书店"_s,
                           u"6"_s,     u"张三"_s, u"4"_s,         u"2003-1-20"_s, u"False"_s,
                           u"False"_s, u"自取"_s, many,           u"2,x,,1e400"_s};
  boxes->expect(Answer::Ok);  // the totals have no room for the last
  open(55, {header},
       {{u"1"_s, u"甲"_s, u"3"_s},
        {u"2"_s, u"乙"_s, u"3"_s},
        {u"3"_s, u"丙"_s, u"3"_s},
        {u"4"_s, u"丁"_s, u"3"_s}});
  ASSERT_EQ(list().itemCount(), 4);
  EXPECT_EQ(row(0).subItem(RetailAmount), u"6"_s);
  EXPECT_EQ(row(1).subItem(RetailAmount), u"0"_s) << "a word counts nothing";
  EXPECT_EQ(row(2).subItem(RetailAmount), u"0"_s);
  EXPECT_EQ(row(3).subItem(RetailAmount), QString()) << "beyond any number";
}

#include <QHeaderView>

#include "OrderFixture.h"
#include "messaging/frmPeer.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString columnsSent =
    u"id,dihu_no,dhrq,qyxx_id,qyxx,yhxx_id,yhxx,feyo,fhrq,hs,fh,fhfs,ximus,shlis,"_s;

class Retail : public OrderFixture<FrmDIHU_XS> {
 protected:
  static QList<QStringList> header(const QString& goods = u"501,502"_s,
                                   const QString& quantities = u"2,3.5"_s,
                                   const QString& confirmed = u"False"_s,
                                   const QString& shipped = u"False"_s) {
    return {{u"55"_s, u"D-1"_s, u"2003-1-15"_s, u"25"_s, u"青禾书店"_s, u"6"_s, u"张三"_s, u"4"_s,
             u"2003-1-20"_s, confirmed, shipped, u"自取"_s, goods, quantities}};
  }
  static QList<QStringList> goods() {
    return {{u"501"_s, u" 大学语文 "_s, u"12.5"_s}, {u"502"_s, u"高等数学"_s, u"30"_s}};
  }
  Open& openOrder(const QList<QStringList>& head = header(),
                  const QList<QStringList>& lines = goods()) {
    return open(55, head, lines);
  }
  static QString save(const QString& order, const Parameters& changes = {}) {
    Parameters fields{
        {u"DIHU_NO"_s, u"D-1"_s}, {u"DHRQ"_s, u"2003-1-15"_s}, {u"FHRQ"_s, u"2003-1-20"_s},
        {u"HS"_s, u"0"_s},        {u"FH"_s, u"0"_s},           {u"FHFS"_s, u"自取"_s},
        {u"SHLI"_s, u"6"_s},      {u"JINE"_s, u"130"_s},       {u"ZHKO"_s, u"0"_s},
        {u"YNSH"_s, u"130"_s},    {u"FEYO"_s, u"4"_s},         {u"HEJI"_s, u"134"_s},
        {u"SHER"_s, u"17.42"_s}};
    for (auto& [name, value] : fields) {
      for (const auto& [changed, to] : changes) {
        if (name == changed) value = to;
      }
    }
    return saveTarget(u"dihu"_s, u"36"_s, u"id="_s + order, fields);
  }
};

}  // namespace

TEST_F(Retail, LoadAsksForTheHeaderAndForItsGoodsAmongTheOwn) {
  state.gRetailOrderId = 55;
  portal.answerWith({page(header()), page(goods())});
  screen();
  EXPECT_EQ(
      targets(),
      QStringList({readTarget(u"DIHU"_s, columnsSent, u"id=55"_s),
                   readTarget(u"XIMU"_s, u"id,ximu,jigex,"_s, u"id in (501,502) and qiye_id=25"_s) +
                       u"&STORDER=ID"_s}));
  EXPECT_EQ(id(), u"55"_s);
  EXPECT_EQ(field(1), u"D-1"_s);
  EXPECT_EQ(field(2) + screen().txtFields(2)->Tag, u"青禾书店25"_s);
  EXPECT_EQ(field(3) + screen().txtFields(3)->Tag, u"张三6"_s);
  EXPECT_EQ(screen().DTPicker1->date(), QDate(2003, 1, 15));
  EXPECT_EQ(screen().DTPicker2->date(), QDate(2003, 1, 20));
  EXPECT_EQ(screen().ComboFHFS->currentText(), u"自取"_s);
  EXPECT_EQ(row(0).key(), u"501 ID"_s);
  EXPECT_EQ(row(0).icon(), u"Goku"_s);
  EXPECT_EQ(cells(0).join(u'|'), u"大学语文|2|12.5|25|1|25"_s);
  EXPECT_EQ(cells(1).join(u'|'), u"高等数学|3.5|30|105|1|105"_s);
  EXPECT_EQ(counts().join(u'|'), u"2|6|130|0|130|134|17.42"_s);
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(Retail, HasSixColumnsAndTheSellersButtons) {
  openOrder();
  EXPECT_EQ(screen().windowTitle(), u"销售订货单"_s);
  QStringList columns;
  EXPECT_EQ(list().header()->length(), list().viewport()->width());
  list().setSpreadsColumns(false);
  for (int i = 0; i < list().model()->columnCount(); ++i) {
    columns << u"%1 %2"_s.arg(list().model()->headerData(i, Qt::Horizontal).toString())
                   .arg(list().columnWidth(i));
  }
  EXPECT_EQ(columns.join(u'|'), u"商品 167|数量 67|单价 67|金额 67|折扣 67|应收 67"_s);
  EXPECT_EQ(buttons().join(u'|'), u"Print 打印|Save 保存|Refresh 刷新|Call 通知|Exit 退出"_s);
}

TEST_F(Retail, TheListCannotBeEdited) {
  openOrder();
  EXPECT_NE(screen().findChild<TextBox*>(u"TxtInputZK"_s), nullptr);
  for (int column = 0; column < 6; ++column) {
    clickCell(0, column);
    EXPECT_EQ(openInput(), QString());
  }
  list().setFocus();
  key(Qt::Key_Return);
  EXPECT_EQ(openInput(), QString());
}

TEST_F(Retail, FlagsBelongToTheSellerAloneAndLockAsOnASalesOrder) {
  openOrder(header(u"501"_s, u"2"_s, u"True"_s, u"True"_s), {goods().first()});
  EXPECT_TRUE(screen().CheckXSHS->isChecked());
  EXPECT_TRUE(screen().CheckFH->isChecked());
  EXPECT_FALSE(screen().CheckJHHS->isChecked());
  EXPECT_FALSE(screen().CheckSH->isChecked());
  const QStringList controls{u"txtFields(4)"_s, u"DTPicker2"_s, u"ComboFHFS"_s, u"CheckJHHS"_s,
                             u"CheckSH"_s,      u"CheckXSHS"_s, u"CheckFH"_s,   u"txtFields(1)"_s};
  EXPECT_EQ(usable(controls), QStringList({u"CheckXSHS"_s, u"CheckFH"_s}));
  screen().CheckXSHS->click();
  screen().CheckFH->click();
  reactivate();
  EXPECT_EQ(usable(controls), QStringList({u"txtFields(4)"_s, u"DTPicker2"_s, u"ComboFHFS"_s,
                                           u"CheckXSHS"_s, u"CheckFH"_s}));
}

TEST_F(Retail, AGoodsItemThatIsGoneShiftsTheQuantitiesBehindIt) {
  openOrder(header(u"500,501,502"_s, u"9,2,3"_s));
  EXPECT_EQ(row(0).text() + row(0).subItem(RetailQuantity), u"大学语文9"_s);
  EXPECT_EQ(row(1).text() + row(1).subItem(RetailQuantity), u"高等数学2"_s);
  EXPECT_EQ(list().itemCount(), 2);
}

TEST_F(Retail, MoreGoodsThanQuantitiesEndTheLoadAndTheRowsSoFarStay) {
  QList<QStringList> three = goods() + QList<QStringList>{{u"503"_s, u"物理"_s, u"8"_s}};
  openOrder(header(u"501,502,503"_s, u"2"_s), three);
  ASSERT_EQ(list().itemCount(), 2);
  EXPECT_EQ(cells(0).join(u'|'), u"大学语文|2|12.5|25|1|25"_s);
  EXPECT_EQ(cells(1).join(u'|'), u"高等数学||30|||"_s) << "what came before its quantity";
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(count(CountAmount), u"25"_s);
}

TEST_F(Retail, AnEmptyListOfGoodsIsAskedForAsItIs) {
  state.gRetailOrderId = 55;
  portal.answerWith({page(header(QString(), QString())), "<html></html>"});
  screen();
  EXPECT_EQ(
      targets().last(),
      readTarget(u"XIMU"_s, u"id,ximu,jigex,"_s, u"id in () and qiye_id=25"_s) + u"&STORDER=ID"_s);
  EXPECT_EQ(list().itemCount(), 0);
}

TEST_F(Retail, ASaveIsOneRequestAndNothingLocal) {
  openOrder();
  type(4, u" 6 "_s);
  screen().CheckXSHS->click();
  list().setFocus();
  portal.answerWith({page({{u"55"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets(), QStringList{save(u"55"_s, {{u"HS"_s, u"1"_s},
                                                  {u"FEYO"_s, u"6"_s},
                                                  {u"HEJI"_s, u"136"_s},
                                                  {u"SHER"_s, u"17.68"_s}})});
  EXPECT_EQ(status(), u"订单保存成功！！！"_s);
  EXPECT_FALSE(screen().isDirty());
  EXPECT_EQ(store.value(u"SELECT count(*) FROM DIHU WHERE R_ID=55"_s).toInt(), 0);
}

TEST_F(Retail, ASaveWithoutLinesWorksAndTakesTheAnsweredId) {
  openOrder(header(QString(), QString()), {});
  type(1, u" D-2 "_s);
  portal.answerWith({page({{u"56"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets(), QStringList{save(u"55"_s, {{u"DIHU_NO"_s, u"D-2"_s},
                                                  {u"SHLI"_s, u"0"_s},
                                                  {u"JINE"_s, u"0"_s},
                                                  {u"YNSH"_s, u"0"_s},
                                                  {u"HEJI"_s, u"4"_s},
                                                  {u"SHER"_s, u"0.52"_s}})});
  EXPECT_EQ(state.gRetailOrderId, 56);
  EXPECT_EQ(id(), u"56"_s);
  EXPECT_EQ(state.gCurrentOrderId, 55) << "that is the other document's";
}

TEST_F(Retail, AnAnswerWithoutRowsOrWithIdZeroIsAFailure) {
  for (const QByteArray& answer :
       {QByteArray("<html></html>"), QByteArray("<table start_pos></table>"), page({{u"0"_s}})}) {
    openOrder();
    type(4, u"6"_s);
    portal.answerWith({answer});
    press(u"Save"_s);
    EXPECT_EQ(status(), u"订单保存失败！！！"_s);
    EXPECT_TRUE(screen().isDirty());
    EXPECT_EQ(field(4), u"6"_s);
    EXPECT_TRUE(closingAsks());
  }
}

TEST_F(Retail, RefreshDropsTypedChargesAndSaysSoForAnOrderWithoutId) {
  openOrder();
  type(4, u"99"_s);
  portal.answerWith({page(header()), page(goods())});
  press(u"Refresh"_s);
  EXPECT_EQ(field(4), u"4"_s);
  EXPECT_TRUE(boxes->asked.isEmpty());
  state.gRetailOrderId = 0;
  boxes->expect(Answer::Ok);
  press(u"Refresh"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"订单未保存"_s});
}

TEST_F(Retail, PrintIsThereAndDoesNothing) {
  openOrder();
  type(4, u"6"_s);
  press(u"Print"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_TRUE(screen().isDirty());
  EXPECT_EQ(status(), QString());
}

TEST_F(Retail, CallAndHelpWorkAsOnTheOthers) {
  int shown = 0;
  state.openHelp = [&shown] { ++shown; };
  openOrder();
  QTest::keyClick(&list(), Qt::Key_F1);
  EXPECT_EQ(shown, 1);
  press(u"Call"_s);
  EXPECT_TRUE(isLoaded<frmPeer>());
}

TEST_F(Retail, ClosingWithYesClosesAlsoWhenTheSaveFailed) {
  openOrder();
  type(4, u"6"_s);
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(targets().size(), 1);
  EXPECT_FALSE(isOpen());
}

TEST_F(Retail, ClosingWithYesSavesOnce) {
  openOrder();
  type(4, u"6"_s);
  list().setFocus();
  portal.answerWith({page({{u"55"_s}})});
  boxes->expect(Answer::Cancel);
  EXPECT_FALSE(screen().unload());
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(targets(),
            QStringList{save(
                u"55"_s, {{u"FEYO"_s, u"6"_s}, {u"HEJI"_s, u"136"_s}, {u"SHER"_s, u"17.68"_s}})});
}

#include "OrderFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString saved = u"订单保存成功！！！"_s;

class PurchaseSave : public OrderFixture<FrmGOHU_JH> {
 protected:
  PurchaseSave() { store.exec(u"DELETE FROM GOHU; DELETE FROM GOKU"_s); }

  Open& openOrder(const QMap<int, QString>& changes = {},
                  const QList<QStringList>& lines = twoLines()) {
    return open(88, purchaseHeader(changes), lines);
  }
  Open& openNew() {
    state.gCurrentOrderId = 0;
    state.gPartnerId = 7;
    state.gPartnerName = u"学苑书店"_s;
    portal.answerWith({"<html></html>"});
    return screen();
  }
  void addRow(const QStringList& texts) {
    ListItem* item = list().addItem({}, texts[0], u"Goku"_s);
    for (int i = 1; i < texts.size(); ++i) item->setSubItem(i, texts[i]);
  }
  void addBook() {
    addRow({u"大学语文"_s, u"B1"_s, u"2"_s, u"10"_s, u"20"_s, u"1"_s, u"20"_s, u"0"_s, u"2"_s,
            u"501"_s, u""_s, u"12"_s, u" 7-01 "_s, u" 教材 "_s});
  }

  static QString headerTarget(const QString& order, const Parameters& changes = {}) {
    Parameters fields{{u"GOSH_ID"_s, u"7"_s},
                      {u"GOSH"_s, u"学苑书店"_s},
                      {u"KEHU_ID"_s, u"25"_s},
                      {u"KEHU"_s, u"青禾书店"_s},
                      {u"GOHU_NO"_s, u"G2003115-7"_s},
                      {u"GHRQ"_s, u"2003-1-15"_s},
                      {u"JHHS"_s, u"0"_s},
                      {u"SH"_s, u"0"_s},
                      {u"SHLI"_s, u"35"_s},
                      {u"JINE"_s, u"612.5"_s},
                      {u"ZHKO"_s, u"62.5"_s},
                      {u"YNSH"_s, u"550"_s},
                      {u"HEJI"_s, u"555.5"_s},
                      {u"SHER"_s, u"72.215"_s}};
    for (auto& [name, value] : fields) {
      for (const auto& [changed, to] : changes) {
        if (name == changed) value = to;
      }
    }
    return saveTarget(u"gohu"_s, u"36"_s, u"id="_s + order, fields);
  }
  static QString lineTarget(const QString& line, const QString& order, const QString& cells) {
    static const QStringList names{u"XIMU"_s, u"XIMU_BH"_s, u"SHLI"_s,    u"JIGE"_s, u"JINE"_s,
                                   u"ZHKO"_s, u"YNSH"_s,    u"BAXI"_s,    u"LING"_s, u"XIMU_ID"_s,
                                   u"BAZH"_s, u"GESH"_s,    u"XIMU_NO"_s, u"LEBI"_s};
    Parameters fields{{u"GOHU_ID"_s, order}};
    const QStringList texts = cells.split(u'|');
    for (int i = 0; i < names.size(); ++i) fields.append({names[i], texts[i]});
    return saveTarget(u"goku"_s, u"17"_s, u"id=%1 and gohu_id=%2"_s.arg(line, order), fields);
  }
  const QString firstLine = u"大学语文|B1|25|12.5|312.5|0.8|250|2|1|501|八折|12|7-01|教材"_s;
  const QString secondLine = u"高等数学|B2|10|30|300|1|300|0|0|502||0|7-02|教材"_s;

  QString localHeaders() {
    return texts(
        u"SELECT R_ID,gosh_id,gosh,kehu_id,kehu,gohu_no,ghrq,fhrq,jhhs,xshs,sh,fh,fhfs,SHLI,"
        "JINE,ZHKO,YNSH,feyo,HEJI,SHER FROM GOHU ORDER BY id"_s);
  }
  QString localLines() {
    return texts(
        u"SELECT R_ID,GOHU_ID-(SELECT min(id) FROM GOHU),XIMU,XIMU_BH,SHLI,JIGE,JINE,ZHKO,"
        "YNSH,BAXI,LING,XIMU_ID,GESH,XIMU_NO,LEBI,DAWE FROM GOKU ORDER BY id"_s);
  }
  QString texts(const QString& query) {
    QStringList lines;
    for (const QVariantList& values : store.rows(query)) {
      QStringList cells;
      for (const QVariant& value : values) cells << value.toString();
      lines << cells.join(u'|');
    }
    return lines.join(u'\n');
  }
};

}  // namespace

TEST_F(PurchaseSave, SendsTheHeaderAndEachLineInListOrder) {
  openOrder();
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(status(), saved);
  EXPECT_EQ(targets(), QStringList({headerTarget(u"88"_s), lineTarget(u"417"_s, u"88"_s, firstLine),
                                    lineTarget(u"418"_s, u"88"_s, secondLine)}));
  EXPECT_FALSE(screen().isDirty());
}

TEST_F(PurchaseSave, TheLineRequestAsBytes) {
  openOrder({}, {twoLines().last()});
  portal.answerWith({page({{u"88"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().last(),
            u"/_vti_product/_vti_add.asp?stable=%67%6F%6B%75&structn=%31%37"
            "&stother=%69%64%3D%34%31%38%20%61%6E%64%20%67%6F%68%75%5F%69%64%3D%38%38"
            "&GOHU_ID=%38%38&XIMU=%B8%DF%B5%C8%CA%FD%D1%A7&XIMU_BH=%42%32&SHLI=%31%30"
            "&JIGE=%33%30&JINE=%33%30%30&ZHKO=%31&YNSH=%33%30%30&BAXI=%30&LING=%30"
            "&XIMU_ID=%35%30%32&BAZH=&GESH=%30&XIMU_NO=%37%2D%30%32&LEBI=%BD%CC%B2%C4"_s);
}

TEST_F(PurchaseSave, KeepsTheWholeDocumentInTheLocalCopy) {
  openOrder({{9, u"True"_s}, {12, u"True"_s}});
  press(u"Save"_s);
  EXPECT_EQ(localHeaders(),
            u"88|7|学苑书店|25|青禾书店|G2003115-7|2003-01-15 00:00:00|2003-01-20 00:00:00|1|0|0|1|"
            "快件|35|612.5|62.5|550|5.5|555.5|72.215"_s);
  EXPECT_EQ(localLines(),
            u"88|0|大学语文|B1|25|12.5|312.5|0.8|250|2|1|501|12|7-01|教材|\n"
            "88|0|高等数学|B2|10|30|300|1|300|0|0|502|0|7-02|教材|"_s);
}

TEST_F(PurchaseSave, ASecondSaveUpdatesTheSameLocalRows) {
  openOrder();
  press(u"Save"_s);
  clickCell(1, LineQuantity);
  typeCell(u"0"_s);
  clickCell(0, LineName);
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOHU"_s).toInt(), 1);
  EXPECT_EQ(texts(u"SELECT XIMU_ID,SHLI FROM GOKU ORDER BY id"_s), u"501|25\n502|0"_s)
      << "a line of quantity 0 stays on the order";
}

TEST_F(PurchaseSave, ANewOrderGetsItsIdsAndTheNextSaveGoesByThem) {
  openNew();
  type(1, u" G2026-1 "_s);
  addBook();
  portal.answerWith({page({{u"90"_s}}), page({{u"700"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(id(), u"90"_s);
  EXPECT_EQ(state.gCurrentOrderId, 90);
  EXPECT_EQ(row(0).key(), u"700 ID"_s);
  ASSERT_EQ(targets().size(), 2);
  EXPECT_TRUE(targets()[0].contains(u"&stother="_s + UrlEncodeField(u"id=0"_s) + u"&"_s));
  EXPECT_TRUE(targets()[0].contains(u"&GOHU_NO="_s + UrlEncodeField(u"G2026-1"_s) + u"&"_s));
  EXPECT_TRUE(targets()[1].contains(u"&stother="_s + UrlEncodeField(u"id=0 and gohu_id=90"_s) +
                                    u"&GOHU_ID="_s + UrlEncodeField(u"90"_s)));
  EXPECT_EQ(texts(u"SELECT R_ID,gohu_no FROM GOHU"_s), u"90|G2026-1"_s);
  EXPECT_EQ(texts(u"SELECT R_ID,XIMU_NO,LEBI FROM GOKU"_s), u"90|7-01|教材"_s);
  portal.clear();
  portal.answerWith({page({{u"90"_s}}), page({{u"700"_s}})});
  press(u"Save"_s);
  EXPECT_TRUE(targets()[0].contains(u"&stother="_s + UrlEncodeField(u"id=90"_s)));
  EXPECT_TRUE(targets()[1].contains(u"&stother="_s + UrlEncodeField(u"id=700 and gohu_id=90"_s)));
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOHU"_s).toInt(), 1);
}

TEST_F(PurchaseSave, ANumberWithNothingBehindItsDashAndAnOrderWithoutLinesOrSupplierGoOut) {
  state.gPartnerId = 0;
  screen();
  portal.answerWith({page({{u"90"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(status(), saved);
  ASSERT_EQ(targets().size(), 1);
  EXPECT_TRUE(targets()[0].contains(u"&GOSH_ID="_s + UrlEncodeField(u"0"_s) + u"&GOSH=&"_s));
  EXPECT_TRUE(targets()[0].contains(u"&GOHU_NO="_s + UrlEncodeField(field(1)) + u"&"_s));
  EXPECT_TRUE(field(1).endsWith(u'-'));
}

TEST_F(PurchaseSave, AHeaderThatFailsSendsNoLineAndTheLocalCopyIsSavedAllTheSame) {
  for (const QByteArray& answer :
       {QByteArray("<html></html>"), QByteArray("<table start_pos></table>")}) {
    openOrder();
    portal.answerWith({answer});
    type(1, u"G1"_s);
    press(u"Save"_s);
    EXPECT_EQ(targets().size(), 1);
    EXPECT_EQ(status(), saved) << "the words speak for the local copy";
    EXPECT_FALSE(screen().isDirty());
    EXPECT_EQ(store.value(u"SELECT count(*) FROM GOKU"_s).toInt(), 2);
    EXPECT_EQ(id(), u"88"_s);
    EXPECT_TRUE(screen().unload());
    portal.clear();
  }
}

TEST_F(PurchaseSave, ALineThatFailsEndsTheSendingAndTheNextSaveSendsEverythingAgain) {
  for (const QByteArray& answer :
       {QByteArray("<html></html>"), page({{u"0"_s}}), QByteArray("<table start_pos></table>"),
        QByteArray("<table start_pos><tr></tr></table>")}) {
    openOrder();
    portal.answerWith({page({{u"88"_s}}), answer});
    press(u"Save"_s);
    EXPECT_EQ(targets().size(), 2);
    EXPECT_EQ(row(0).key(), u"417 ID"_s);
    EXPECT_EQ(status(), saved);
    EXPECT_EQ(store.value(u"SELECT count(*) FROM GOKU"_s).toInt(), 2);
    portal.clear();
    portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
    press(u"Save"_s);
    EXPECT_EQ(targets().size(), 3);
    EXPECT_TRUE(screen().unload());
    portal.clear();
  }
}

TEST_F(PurchaseSave, AnAnswerOfIdZeroMakesTheOrderANewOne) {
  openOrder();
  portal.answerWith({page({{u"0"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().size(), 1);
  EXPECT_EQ(state.gCurrentOrderId, 0);
  EXPECT_EQ(id(), u"0"_s);
  EXPECT_EQ(texts(u"SELECT R_ID FROM GOHU"_s), u"0"_s);
  portal.clear();
  portal.answerWith({page({{u"91"_s}}), page({{u"1"_s}}), page({{u"2"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().first(), headerTarget(u"0"_s));
  EXPECT_EQ(id(), u"91"_s);
}

TEST_F(PurchaseSave, RowsBehindTheFirstAreReadUntilAnIdIsZero) {
  openOrder();
  portal.answerWith({page({{u"88"_s}, {u"89"_s}}), page({{u"5"_s}, {u"6"_s}}),
                     page({{u"418"_s}, {u"0"_s}, {u"7"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(id(), u"89"_s);
  EXPECT_EQ(row(0).key(), u"6 ID"_s);
  EXPECT_EQ(row(1).key(), u"418 ID"_s);
  portal.clear();
  portal.answerWith({page({{u"90"_s}, {u"0"_s}, {u"91"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().size(), 1) << "a header that was answered by an id 0 sends no line";
  EXPECT_EQ(id(), u"0"_s);
}

TEST_F(PurchaseSave, OnlyAnIdOfZeroIsAFailure) {
  openOrder();
  portal.answerWith({page({{u"-8"_s}}), page({{u"-5"_s}}), page({{u"-6"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().size(), 3);
  EXPECT_EQ(id(), u"-8"_s);
  EXPECT_EQ(row(0).key(), u"-5 ID"_s);
  EXPECT_EQ(row(1).key(), u"-6 ID"_s);
}

TEST_F(PurchaseSave, ALineThatIsAnsweredByAnIdOfZeroEndsTheSending) {
  openOrder();
  portal.answerWith({page({{u"88"_s}}), page({{u"0"_s}, {u"5"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(targets().size(), 2);
  EXPECT_EQ(row(0).key(), u"417 ID"_s);
}

TEST_F(PurchaseSave, OrdersThatNeverReachedThePortalShareOneLocalRow) {
  openNew();
  type(1, u"first"_s);
  addBook();
  press(u"Save"_s);
  EXPECT_EQ(status(), saved);
  EXPECT_EQ(id(), u"0"_s);
  EXPECT_TRUE(screen().unload());
  openNew();
  type(1, u"second"_s);
  addRow({u"高等数学"_s, u"B2"_s, u"1"_s, u"30"_s, u"30"_s, u"1"_s, u"30"_s, u"0"_s, u"0"_s,
          u"502"_s, u""_s, u"0"_s, u""_s, u""_s});
  press(u"Save"_s);
  EXPECT_EQ(texts(u"SELECT R_ID,gohu_no FROM GOHU"_s), u"0|second"_s);
  EXPECT_EQ(texts(u"SELECT R_ID,XIMU_ID FROM GOKU ORDER BY id"_s), u"0|501\n0|502"_s);
}

TEST_F(PurchaseSave, TheSameGoodsTwiceKeepOneLocalLineTheLastSaved) {
  QList<QStringList> lines = twoLines();
  lines[1][1] = u"501"_s;
  openOrder({}, lines);
  press(u"Save"_s);
  EXPECT_EQ(texts(u"SELECT XIMU_ID,XIMU,SHLI FROM GOKU"_s), u"501|高等数学|10"_s);
}

TEST_F(PurchaseSave, ATimeOfDayThatThePortalKeepsGoesBackToIt) {
  openOrder({{2, u"2003-1-15 8:05:00"_s}});
  press(u"Save"_s);
  EXPECT_EQ(targets().first(), headerTarget(u"88"_s, {{u"GHRQ"_s, u"2003-1-15 8:05:00"_s}}));
  screen().DTPicker1->setDate({2003, 1, 16});
  press(u"Save"_s);
  EXPECT_EQ(targets().last(), headerTarget(u"88"_s, {{u"GHRQ"_s, u"2003-1-16 8:05:00"_s}}));
}

TEST_F(PurchaseSave, AStoreThatFailsGetsTheBoxAndTheOrderStaysUnsaved) {
  openOrder();
  type(1, u"G1"_s);
  store.exec(
      u"CREATE TRIGGER full BEFORE INSERT ON GOKU BEGIN SELECT RAISE(FAIL,'disk full'); END"_s);
  boxes->expect(Answer::Ok);
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  press(u"Save"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"网络锁定失败，操作无效"_s});
  EXPECT_TRUE(screen().isDirty());
  EXPECT_EQ(status(), QString());
  EXPECT_EQ(field(1), u"G1"_s);
  EXPECT_EQ(texts(u"SELECT gohu_no FROM GOHU"_s), u"G1"_s) << "the header was kept before";
  store.exec(u"DROP TRIGGER full"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), saved);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOKU"_s).toInt(), 2);
}

TEST_F(PurchaseSave, AnOrderThatCouldNotBeLoadedGoesOutWithoutAnIdAndTheStoreRefusesIt) {
  state.gCurrentOrderId = 88;
  portal.answerWith({"<html></html>"});
  screen();
  portal.clear();
  boxes->expect(Answer::Ok);
  press(u"Save"_s);
  EXPECT_TRUE(targets().first().contains(u"&stother="_s + UrlEncodeField(u"id="_s) + u"&"_s));
  EXPECT_EQ(boxes->texts(), QStringList{u"网络锁定失败，操作无效"_s});
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOHU"_s).toInt(), 0);
}

TEST_F(PurchaseSave, WhatIsBeingTypedIsSavedWhenItIsAcceptable) {
  openOrder();
  clickCell(1, LineQuantity);
  typeCell(u"11"_s);
  press(u"Save"_s);
  EXPECT_EQ(texts(u"SELECT SHLI,JINE FROM GOKU WHERE XIMU_ID=502"_s), u"11|330"_s);
  clickCell(1, LineQuantity);
  typeCell(u"x"_s);
  press(u"Save"_s);
  EXPECT_EQ(openInput(), u"TxtInputSL"_s);
  EXPECT_EQ(texts(u"SELECT SHLI,JINE FROM GOKU WHERE XIMU_ID=502"_s), u"11|330"_s);
  typeCell(u"12"_s);
  clickCell(0, LineName);
  EXPECT_TRUE(screen().isDirty());
}

TEST_F(PurchaseSave, ThePortalGoneBetweenAnyTwoRequestsLeavesWholeLocalRows) {
  for (int last = 0; last <= 3; ++last) {
    store.exec(u"DELETE FROM GOHU; DELETE FROM GOKU"_s);
    openOrder();
    type(1, u"G1"_s);
    const ScriptedServer::Reply cutOff{
        .bytes = "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n<table start_pos>",
        .keepAlive = false};
    portal.setHandler([count = 0, last, cutOff](const QByteArray&) mutable {
      if (count++ >= last) return cutOff;
      return ScriptedServer::Reply{.bytes =
                                       ScriptedServer::ok(page({{QString::number(87 + count)}}))};
    });
    press(u"Save"_s);
    EXPECT_EQ(targets().size(), std::min(last + 1, 3));
    EXPECT_EQ(status(), saved);
    EXPECT_EQ(texts(u"SELECT R_ID,gohu_no,HEJI FROM GOHU"_s), u"88|G1|555.5"_s);
    EXPECT_EQ(texts(u"SELECT XIMU_ID,SHLI,JINE FROM GOKU ORDER BY id"_s),
              u"501|25|312.5\n502|10|300"_s);
    EXPECT_TRUE(screen().unload());
    portal.clear();
  }
}

TEST_F(PurchaseSave, ClosingAsksAndYesSavesBeforeItGoes) {
  openOrder();
  type(1, u"G1"_s);
  boxes->expect(Answer::Cancel);
  EXPECT_FALSE(screen().unload());
  EXPECT_EQ(boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
  EXPECT_EQ(boxes->asked.last().buttons, Buttons::YesNoCancel);
  portal.answerWith({page({{u"88"_s}}), page({{u"417"_s}}), page({{u"418"_s}})});
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(targets().size(), 3);
  EXPECT_EQ(texts(u"SELECT gohu_no FROM GOHU"_s), u"G1"_s);
}

TEST_F(PurchaseSave, ClosingWithNoDropsTheEdits) {
  openOrder();
  type(1, u"G1"_s);
  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_EQ(store.value(u"SELECT count(*) FROM GOHU"_s).toInt(), 0);
}

TEST_F(PurchaseSave, AStoreThatFailsWhileClosingTellsItsErrorAndKeepsTheScreen) {
  openOrder();
  type(1, u"G1"_s);
  store.exec(
      u"CREATE TRIGGER full BEFORE INSERT ON GOHU BEGIN SELECT RAISE(FAIL,'disk full'); END"_s);
  boxes->expect(Answer::Yes);
  boxes->expect(Answer::Ok);
  EXPECT_FALSE(screen().unload());
  ASSERT_EQ(boxes->asked.size(), 2);
  EXPECT_EQ(boxes->asked.last().mark, Mark::Critical);
  EXPECT_TRUE(boxes->texts().last().contains(u"disk full"_s));
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(screen().isDirty());
  store.exec(u"DROP TRIGGER full"_s);
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(texts(u"SELECT gohu_no FROM GOHU"_s), u"G1"_s);
}

TEST_F(PurchaseSave, SaveWritesAlsoWhenNothingWasChanged) {
  openOrder();
  press(u"Save"_s);
  EXPECT_EQ(status(), saved);
  EXPECT_EQ(targets().size(), 1);
}

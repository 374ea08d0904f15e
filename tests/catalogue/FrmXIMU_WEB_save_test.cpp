#include <gtest/gtest.h>

#include <QFile>
#include <QSemaphore>

#include "PortalGoodsFixture.h"
#include "catalogue/FrmXIMU.h"
#include "portal/RequestBuilder.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class PortalGoodsSave : public PortalGoodsFixture {
 protected:
  QByteArray saveTarget(const QHash<QString, QString>& changed) {
    return targetOf("_vti_add.asp", saved(changed));
  }
  QList<QVariantList> mirror(const QString& columns) {
    return store.rows(u"SELECT %1 FROM XIMU ORDER BY id"_s.arg(columns));
  }
};

TEST_F(PortalGoodsSave, SendsSixValuesEncodedAndTenAsTheyStand) {
  openOnFirst();
  portalGives(u"71"_s);
  type(2, u"改名"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_EQ(target(0), saveTarget({{u"XIMU"_s, u"改名"_s}}));
  EXPECT_TRUE(target(0).contains("&XIMU=\xB8\xC4\xC3\xFB&GESH=010&"))
      << "the bytes of the code page stand bare in the request line";
}

struct RawRow {
  const char* name;
  QString typed;
  QByteArray sent;
};
void PrintTo(const RawRow& row, std::ostream* out) {
  *out << row.name;
}
class RawValues : public PortalGoodsSave, public testing::WithParamInterface<RawRow> {};

TEST_P(RawValues, GoIntoTheRequestLineByteForByte) {
  openOnFirst();
  portalGives(u"71"_s);
  type(2, GetParam().typed);
  press(u"Update"_s);
  const QByteArray line = portal.requests()[0].left(portal.requests()[0].indexOf("\r\n"));
  EXPECT_TRUE(line.contains("&XIMU_NO=N1&XIMU=" + GetParam().sent + "&GESH=010&"))
      << line.toStdString();
  EXPECT_TRUE(line.endsWith(" HTTP/1.1"));
}

const RawRow rawRows[] = {
    {"Blank", u"a b"_s, "a b"},
    {"Ampersand", u"a&b"_s, "a&b"},
    {"Percent", u"100%41"_s, "100%41"},
    {"Plus", u"C++"_s, "C++"},
    {"Quotes", u"'a' \"b\""_s, "'a' \"b\""},
    {"Brackets", u"<b>书</b>"_s, "<b>\xCA\xE9</b>"},
    {"Equals", u"a=b;c?d/e\\f"_s, "a=b;c?d/e\\f"},
    {"Chinese", u"论语"_s, "\xC2\xDB\xD3\xEF"},
    {"NotInTheCodePage", u"a\u0E01"_s, "a?"},
    {"Tab", u"a\tb"_s, "a%09b"},
    {"Delete", u"a\u007Fb"_s, "a%7Fb"},
    {"Empty", u""_s, ""},
};
INSTANTIATE_TEST_SUITE_P(PortalGoods, RawValues, testing::ValuesIn(rawRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(PortalGoodsSave, BlanksAroundAValueAreSentAsTheyWereTyped) {
  openOnFirst();
  const auto typed = typeWithBlanks({{u"XIMU_NO"_s, 1},
                                     {u"XIMU"_s, 2},
                                     {u"GESH"_s, 5},
                                     {u"LEBI"_s, 6},
                                     {u"CHYE"_s, 7},
                                     {u"SHXI"_s, 9},
                                     {u"JIGEX"_s, 3},
                                     {u"ZHKO"_s, 4}});
  portalGives(list().itemAt(0)->key());
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget(typed));
}

TEST_F(PortalGoodsSave, ANumberSignCutsTheRequest) {
  openOnFirst();
  portalGives(u"71"_s);
  type(2, u"C#入门"_s);
  press(u"Update"_s);
  const QByteArray whole = saveTarget({{u"XIMU"_s, u"C#入门"_s}});
  EXPECT_EQ(target(0), whole.first(whole.indexOf('#')));
}

TEST_F(PortalGoodsSave, ThroughAProxyTheRawRequestIsTheSameInItsAbsoluteForm) {
  openOnFirst();
  state.inetQuotes.AccessType = 2;
  state.inetQuotes.Proxy = portal.host();
  state.gWebServer = u"HTTP://portal.invalid/"_s;
  portalGives(u"71"_s);
  type(2, u"a b&书"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), "HTTP://portal.invalid" + saveTarget({{u"XIMU"_s, u"a b&书"_s}}));
}

TEST_F(PortalGoodsSave, InMixedModeTheWholeUrlIsEncodedOnceMore) {
  openOnFirst();
  state.gUnicode = 1;
  portalGives(u"71"_s);
  type(2, u"a b&书#1"_s);
  press(u"Update"_s);
  RequestBuilder request(state.gWebServer, paths::productAdd);
  for (const Parameter& each : saved({{u"XIMU"_s, u"a b&书#1"_s}})) {
    if (each.raw) {
      request.raw(each.name, each.value);
    } else {
      request.encoded(each.name, each.value);
    }
  }
  EXPECT_EQ(target(0), "/_vti_comm/review.asp?review=" + UrlEncodeField(request.url()).toLatin1());
  EXPECT_EQ(status(), u"保存成功！！！"_s);
}

TEST_F(PortalGoodsSave, WithoutAnyFetchInModeZeroTheSaveFails) {
  openOnFirst();
  state.gUnicode = 0;
  type(2, u"改"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(PortalGoodsSave, TheIdsAreTheNumbersOfTheTags) {
  openOnFirst();
  screen().txtFields(6)->Tag = u"31 XID"_s;
  screen().txtFields(7)->Tag = u"nichts"_s;
  portalGives(u"71"_s);
  type(2, u"改"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0),
            saveTarget({{u"XIMU"_s, u"改"_s}, {u"LEBI_ID"_s, u"31"_s}, {u"CHYE_ID"_s, u"0"_s}}));
}

TEST_F(PortalGoodsSave, ANewGoodsIsSentWithItsDefaultsAndMirroredUnderItsNewId) {
  openOnFirst();
  press(u"Add"_s);
  portalGives(u"50001"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget({{u"stother"_s, u"id=0 and qiye_id=25"_s},
                                   {u"XIMU_NO"_s, u"NO"_s},
                                   {u"XIMU"_s, u"新添商品"_s},
                                   {u"GESH"_s, u"1"_s},
                                   {u"LEBI"_s, QString()},
                                   {u"CHYE"_s, QString()},
                                   {u"SHXI"_s, QString()},
                                   {u"JIGEX"_s, u"0"_s},
                                   {u"ZHKO"_s, u"说明"_s},
                                   {u"NOTH"_s, u"True"_s}}));
  EXPECT_EQ(list().itemAt(2)->key(), u"50001 ID"_s);
  EXPECT_EQ(mirror(u"R_ID,QIYE_ID,qiye,LEBI_ID,CHYE_ID,XIMU_NO,XIMU,GESH,JIGEX,ZHKO,NOTH"_s),
            QList<QVariantList>({{50001, 1, u"青禾书店"_s, 12, 5, u"NO"_s, u"新添商品"_s, u"1"_s,
                                  u"0"_s, u"说明"_s, 1}}));
}

TEST_F(PortalGoodsSave, TheMirrorLacksTheAttributesAndTheNote) {
  openOnFirst();
  portalGives(u"71"_s);
  type(2, u"  论语 "_s);
  type(1, u" N 2 "_s);
  press(u"Update"_s);
  EXPECT_EQ(mirror(u"R_ID,QIYE_ID,qiye,LEBI_ID,CHYE_ID,XIMU_NO,XIMU,GESH,LEBI,CHYE,JIGEX,ZHKO,"
                   "JISH,SHXI,NOTH"_s),
            QList<QVariantList>(
                {{71, 1, u"青禾书店"_s, 12, 5, u"N 2"_s, u"论语"_s, u"010"_s, u"教材"_s,
                  u"青禾出版社"_s, u"25.50"_s, u"八折"_s, u"第一行\r\n第二行"_s, QVariant(), 0}}));
}

TEST_F(PortalGoodsSave, TheMirrorOfAnOldGoodsIsFoundByThePortalsIdAndKeepsItsAttributes) {
  store.exec(
      u"INSERT INTO XIMU (id,R_ID,QIYE_ID,XIMU,SHXI,NOTH) VALUES "
      "(1,70,1,'别的','x',1),(2,71,1,'旧名','精装,',1)"_s);
  openOnFirst();
  portalGives(u"71"_s);
  type(2, u"新名"_s);
  press(u"Update"_s);
  EXPECT_EQ(
      mirror(u"id,R_ID,XIMU,SHXI,NOTH"_s),
      QList<QVariantList>({{1, 70, u"别的"_s, u"x"_s, 1}, {2, 71, u"新名"_s, u"精装,"_s, 0}}));
}

TEST_F(PortalGoodsSave, AFailedPortalSaveLeavesTheLocalTableAlone) {
  openOnFirst();
  portal.answerWith({"<html></html>"});
  type(2, u"改"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_TRUE(mirror(u"id"_s).isEmpty());
}

TEST_F(PortalGoodsSave, AMirrorThatCannotBeWrittenFailsTheSaveAndKeepsTheEdit) {
  openOnFirst();
  store.exec(u"DROP TABLE XIMU"_s);
  portalGives(u"71"_s);
  type(2, u"改"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), 1) << "no long texts";
  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
}

TEST_F(PortalGoodsSave, TheQuestionAtARowClickNeverSendsTheLongTexts) {
  openOnFirst();
  turnTo(1);
  type(8, u"新介绍"_s);
  portal.answerWith(
      {page({{u"71"_s}}), page({record(u"40000"_s)}), page({record()}), page({{u"71"_s}})});
  boxes->expect(Answer::Yes);
  clickRow(1);
  EXPECT_EQ(target(0), saveTarget({}));
  ASSERT_EQ(portal.requests().size(), 2) << "the save, and the record that was clicked";
  EXPECT_EQ(mirror(u"JISH"_s), QList<QVariantList>({{u"新介绍"_s}})) << "but the mirror has it";

  clickRow(0);
  type(8, u"又一介绍"_s);
  press(u"Update"_s);
  ASSERT_TRUE(settled(6));
  EXPECT_TRUE(portal.body(4).endsWith("&JISH=" + UrlEncodeField(u"又一介绍"_s).toLatin1()));
}

TEST_F(PortalGoodsSave, ClosingSendsNeitherIntroductionNorNote) {
  openOnFirst();
  type(8, u"新介绍"_s);
  portalGives(u"71"_s);
  boxes->expect(Answer::Yes);
  press(u"Exit"_s);
  EXPECT_EQ(portal.requests().size(), 1);
  EXPECT_EQ(mirror(u"JISH"_s), QList<QVariantList>({{u"新介绍"_s}}));
}

TEST_F(PortalGoodsSave, ARecordClickedWhileANoteIsStillOnItsWayIsNotRead) {
  openOnFirst();
  portal.setHandler([](const QByteArray& request) {
    ScriptedServer::Reply reply{.bytes = ScriptedServer::ok(ScriptedServer::table({{u"71"_s}}))};
    reply.hang = request.startsWith("POST") && request.contains("LIUY=");
    return reply;
  });
  type(2, u"改"_s);
  press(u"Update"_s);
  ASSERT_TRUE(portal.waitForRequests(3));
  clickRow(1);
  EXPECT_EQ(portal.requests().size(), 3) << "the read is empty at once";
  EXPECT_EQ(field(2), u"改"_s);
  state.inetQuotes.Cancel();
}

TEST_F(PortalGoodsSave, TheScreenMayBeClosedWhileTheNoteWaitsForTheIntroduction) {
  openOnFirst();
  type(2, u"改"_s);
  type(10, u"等一等"_s);
  boxes->expect(Answer::No);
  QPointer<FrmXIMU_WEB> form = &screen();
  // The introduction is answered only behind the close, so that the note surely waits for it.
  QSemaphore closed;
  portal.setHandler([&](const QByteArray& request) {
    if (request.contains("JISH=")) {
      QMetaObject::invokeMethod(&state.tray, [&] {
        press(u"Exit"_s);
        closed.release();
      });
      closed.tryAcquire(1, 60'000);
    }
    return ScriptedServer::Reply{.bytes = ScriptedServer::ok(ScriptedServer::table({{u"71"_s}}))};
  });
  press(u"Update"_s);
  EXPECT_FALSE(isLoaded<FrmXIMU_WEB>());
  ASSERT_TRUE(settled(3));
  EXPECT_TRUE(portal.body(2).endsWith("&LIUY=" + UrlEncodeField(u"等一等"_s).toLatin1()));
  EXPECT_TRUE(QTest::qWaitFor([&] { return form.isNull(); })) << "and it goes in the end";
}

TEST_F(PortalGoodsSave, TheSameNameArrivesWholeFromTheLocalScreen) {
  store.exec(
      u"INSERT INTO XIMU (id,R_ID,QIYE_ID,XIMU,JIGEX,GESH) VALUES "
      "(1,71,1,'书','1','1')"_s);
  portalGives(u"71"_s);
  auto& local = defaultInstance<FrmXIMU>();
  local.txtFields(2)->setText(u"a b&c#d"_s);
  QAction* save = local.Toolbar1->button(u"Save"_s);
  QTest::mouseClick(local.Toolbar1->widgetForAction(save), Qt::LeftButton);
  EXPECT_TRUE(target(0).contains("&XIMU=" + UrlEncodeField(u"a b&c#d"_s).toLatin1() + "&GESH="));
}

TEST_F(PortalGoodsSave, ThereIsNoLimitOfRowsAndNoLookAtTheLogin) {
  state.gUserLevel = 0;
  state.gLoginMode = 2;
  QList<QStringList> rows;
  for (int row = 1; row <= 60; ++row) {
    rows.append({QString::number(row), u"书"_s, u"0"_s, u"True"_s});
  }
  open(rows);
  show(0, record(u"1"_s));
  portalGives(u"1"_s);
  type(2, u"改"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
}

/// The key "Print", which no button carries.
class PortalGoodsPrint : public PortalGoodsFixture {
 protected:
  ~PortalGoodsPrint() override { delete report(); }

  static QWidget* report() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == u"rptXIMU" && window->isVisible()) return window;
    }
    return nullptr;
  }
  QString csv() {
    const QString path = settingsFolder.filePath(u"list.csv"_s);
    boxes->expectFile(path);
    report()->findChild<QAction*>(u"CSV"_s)->trigger();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
};

TEST_F(PortalGoodsPrint, SavesWhatIsUnsavedAndShowsTheLiveGoodsOfAllCompanies) {
  store.exec(
      u"INSERT INTO XIMU (id,R_ID,QIYE_ID,XIMU,NOTH) VALUES "
      "(1,1,1,'甲书',1),(2,2,2,'别家的书',1),(3,3,1,'停售的书',0)"_s);
  openOnFirst();
  portalGives(u"71"_s);
  clickCheckBox(0);
  emit screen().Toolbar1->buttonClick(u"Print"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  ASSERT_TRUE(settled(1));
  EXPECT_EQ(portal.requests().size(), 1) << "no long texts";
  ASSERT_NE(report(), nullptr);
  const QString rows = csv();
  EXPECT_TRUE(rows.contains(u"甲书"_s));
  EXPECT_TRUE(rows.contains(u"别家的书"_s));
  EXPECT_FALSE(rows.contains(u"停售的书"_s));
}

TEST_F(PortalGoodsPrint, AFailedSaveIsToldAndTheListIsPrintedAllTheSame) {
  openOnFirst();
  clickCheckBox(0);
  portal.answerWith({"<html></html>"});
  emit screen().Toolbar1->buttonClick(u"Print"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_NE(report(), nullptr);
}

TEST_F(PortalGoodsPrint, OfflineNothingIsPrinted) {
  openOnFirst();
  goOffline();
  emit screen().Toolbar1->buttonClick(u"Print"_s);
  EXPECT_EQ(report(), nullptr);
}

}  // namespace

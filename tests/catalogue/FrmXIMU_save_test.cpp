#include <gtest/gtest.h>

#include "GoodsFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class FrmXIMUSave : public GoodsFixture {
 protected:
  QString addTarget(int portalId, const QString& name, const QString& checked) {
    const QList<std::pair<QString, QString>> values = {
        {u"?stable="_s, u"ximu"_s},
        {u"&structn="_s, u"18"_s},
        {u"&stother="_s, u"id=%1 and qiye_id=25"_s.arg(portalId)},
        {u"&QIYE_ID="_s, u"25"_s},
        {u"&QIYE="_s, u"青禾书店"_s},
        {u"&LEBI_ID="_s, u"12"_s},
        {u"&CHYE_ID="_s, u"5"_s},
        {u"&XIMU_NO="_s, u"N1"_s},
        {u"&XIMU="_s, name},
        {u"&GESH="_s, u"010"_s},
        {u"&LEBI="_s, u"教材"_s},
        {u"&CHYE="_s, u"青禾出版社"_s},
        {u"&SHXI="_s, u"平装"_s},
        {u"&JIGEX="_s, u"25.50"_s},
        {u"&ZHKO="_s, u"说明"_s},
        {u"&NOTH="_s, checked}};
    QString target = u"/_vti_product/_vti_add.asp"_s;
    for (const auto& [name_, value] : values) target += name_ + UrlEncodeField(value);
    return target;
  }
};

TEST_F(FrmXIMUSave, WritesTheLocalRowThenThePortalThenThePostedIntroduction) {
  portalGives(u"71"_s);
  type(2, u"新 & <名>"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
  ASSERT_TRUE(portal.waitForRequests(2));
  EXPECT_EQ(targets(), QStringList({addTarget(71, u"新 & <名>"_s, u"True"_s),
                                    u"/_vti_product/_vti_add.asp"_s}));
  EXPECT_EQ(portal.body(1), (u"stable="_s + UrlEncodeField(u"ximu"_s) + u"&stother="_s +
                             UrlEncodeField(u"id=71 and qiye_id=25"_s) + u"&JISH="_s +
                             UrlEncodeField(u"第一行\r\n第二行"_s))
                                .toLatin1());
  EXPECT_TRUE(portal.requests()[1].contains("Content-Type: application/x-www-form-urlencoded\r\n"));
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"新 & <名>"_s);
}

TEST_F(FrmXIMUSave, TheFirstBytesOnTheWireAreExactlyThese) {
  portalGives(u"71"_s);
  type(2, u"A中"_s);
  press(u"Save"_s);
  const QByteArray request = portal.requests()[0];
  EXPECT_TRUE(request.startsWith(
      "GET /_vti_product/_vti_add.asp?stable=%78%69%6D%75&structn=%31%38&stother="
      "%69%64%3D%37%31%20%61%6E%64%20%71%69%79%65%5F%69%64%3D%32%35&QIYE_ID=%32%35&QIYE="))
      << request.toStdString();
  EXPECT_TRUE(request.contains("&XIMU=%41%D6%D0&GESH=%30%31%30&"));
  EXPECT_TRUE(request.contains("&NOTH=%54%72%75%65 HTTP/1.1\r\n"));
}

TEST_F(FrmXIMUSave, InMixedModeTheWholeUrlTravelsThroughTheRelay) {
  state.gUnicode = 1;
  portalGives(u"71"_s);
  type(2, u"A"_s);
  press(u"Save"_s);
  const QString url = u"HTTP://"_s + portal.host() + addTarget(71, u"A"_s, u"True"_s);
  EXPECT_EQ(targets()[0], u"/_vti_comm/review.asp?review="_s + UrlEncodeField(url));
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
}

TEST_F(FrmXIMUSave, ANewRowGoesOutAsIdZeroAndKeepsThePortalsId) {
  press(u"Add"_s);
  type(1, u"N9"_s);
  type(2, u"  新书"_s);
  type(8, u"好书"_s);
  portalGives(u"555"_s);
  press(u"Save"_s);
  EXPECT_EQ(list().itemAt(2)->key(), u"3 ID"_s);
  EXPECT_EQ(list().itemAt(2)->text(), u"  新书"_s) << "the list row keeps leading blanks";
  EXPECT_TRUE(
      targets()[0].contains(u"&stother="_s + UrlEncodeField(u"id=0 and qiye_id=25"_s) + u"&"_s));
  EXPECT_EQ(store.rows(u"SELECT R_ID,QIYE_ID,qiye,XIMU_NO,XIMU,JIGEX,ZHKO,GESH,LEBI_ID,LEBI,"
                       "CHYE_ID,CHYE,JISH,SHXI,NOTH FROM XIMU WHERE id=3"_s),
            QList<QVariantList>({{555, 1, u"青禾书店"_s, u"N9"_s, u"新书"_s, u"0"_s, u"说明"_s,
                                  u"1"_s, 12.0, u""_s, 5.0, u""_s, u"好书"_s, u""_s, 1}}));
  ASSERT_TRUE(portal.waitForRequests(2));
  EXPECT_TRUE(portal.body(1).contains(UrlEncodeField(u"id=555 and qiye_id=25"_s).toLatin1()));
}

TEST_F(FrmXIMUSave, ASecondSaveWithoutAnEditDoesNothing) {
  portalGives(u"71"_s);
  type(2, u"一次"_s);
  press(u"Save"_s);
  ASSERT_TRUE(portal.waitForRequests(2));
  press(u"Save"_s);
  EXPECT_EQ(portal.requests().size(), 2);
}

TEST_F(FrmXIMUSave, PriceAndPackAreKeptAsTyped) {
  portalGives(u"71"_s);
  type(3, u"025.10"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT JIGEX FROM XIMU WHERE id=1"_s), QVariant(u"025.10"_s));
  EXPECT_EQ(store.value(u"SELECT GESH FROM XIMU WHERE id=1"_s), QVariant(u"010"_s));
}

TEST_F(FrmXIMUSave, BlanksStayAroundPackNoteAndIntroductionAndGoFromTheOthers) {
  beCompany(2, 0);
  for (const int index : {1, 2, 4, 5, 6, 7, 8, 9}) {
    screen().txtFields(index)->setText(u" 甲%1 "_s.arg(index));
  }
  press(u"Save"_s);
  EXPECT_EQ(store.rows(u"SELECT XIMU_NO,XIMU,ZHKO,GESH,LEBI,CHYE,JISH,SHXI FROM XIMU WHERE id=1"_s),
            QList<QVariantList>({{u"甲1"_s, u"甲2"_s, u" 甲4 "_s, u" 甲5 "_s, u"甲6"_s, u"甲7"_s,
                                  u" 甲8 "_s, u"甲9"_s}}));
}

TEST_F(FrmXIMUSave, AnEmptyAnswerFailsButTheLocalRowIsSaved) {
  portal.answerWith({"<html>no table</html>"});
  type(2, u"本地有"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_EQ(store.rows(u"SELECT XIMU,R_ID FROM XIMU WHERE id=1"_s),
            QList<QVariantList>({{u"本地有"_s, 71}}));
  press(u"Save"_s);
  EXPECT_EQ(portal.requests().size(), 1) << "the screen is not marked any more";
}

TEST_F(FrmXIMUSave, AFirstCellOfZeroIsARefusalThatChangesNoId) {
  portalGives(u"0"_s);
  type(2, u"改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_EQ(store.value(u"SELECT R_ID FROM XIMU WHERE id=1"_s).toInt(), 71);
  EXPECT_EQ(portal.requests().size(), 1) << "no introduction follows";
}

TEST_F(FrmXIMUSave, AMarkedTableWithoutRowsCountsAsSaved) {
  portal.answerWith({page({})});
  type(2, u"改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
}

struct IdRow {
  QString stored;
};

class FrmXIMUBadId : public FrmXIMUSave, public testing::WithParamInterface<IdRow> {};

TEST_P(FrmXIMUBadId, FailsThePortalSaveWithoutARequest) {
  store.exec(u"UPDATE XIMU SET R_ID=%1 WHERE id=1"_s.arg(GetParam().stored));
  type(2, u"改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"改"_s);
}

INSTANTIATE_TEST_SUITE_P(Ids, FrmXIMUBadId,
                         testing::Values(IdRow{u"32768"_s}, IdRow{u"NULL"_s}, IdRow{u"'x'"_s}));

TEST_F(FrmXIMUSave, AnAnswerBeyondSixteenBitsSucceedsOnceAndFailsFromThenOn) {
  portalGives(u"40000"_s);
  type(2, u"一"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
  EXPECT_EQ(portal.requests().size(), 1) << "the introduction cannot name the row";
  EXPECT_EQ(store.value(u"SELECT R_ID FROM XIMU WHERE id=1"_s).toInt(), 40000);
  type(2, u"二"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), 1);
}

struct PermissionRow {
  std::string name;
  qint16 mode;
  qint16 level;
  int rows;
  bool sent;
};

class FrmXIMUPermission : public FrmXIMUSave, public testing::WithParamInterface<PermissionRow> {};

TEST_P(FrmXIMUPermission, DecidesWhetherThePortalIsAsked) {
  beCompany(GetParam().mode, GetParam().level);
  fillUpTo(GetParam().rows);
  portalGives(u"71"_s);
  type(2, u"改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), GetParam().sent ? u"网络保存成功！！！"_s : u"本地保存成功！！！"_s);
  EXPECT_EQ(!portal.requests().isEmpty(), GetParam().sent);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"改"_s);
}

INSTANTIATE_TEST_SUITE_P(Rules, FrmXIMUPermission,
                         testing::Values(PermissionRow{"free_user_with_49_rows", 1, 0, 49, true},
                                         PermissionRow{"free_user_with_50_rows", 1, 0, 50, false},
                                         PermissionRow{"formal_user_with_50_rows", 1, 1, 50, true},
                                         PermissionRow{"vip_user_with_51_rows", 1, 2, 51, true},
                                         PermissionRow{"local_login", 2, 0, 2, false},
                                         PermissionRow{"nobody", 0, 2, 2, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(FrmXIMUSave, TheFiftiethRowCountsBeforeItIsSaved) {
  fillUpTo(49);
  press(u"Add"_s);
  type(2, u"第五十本"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"本地保存成功！！！"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(FrmXIMUSave, OfflineEveryKeyRunsAndThePortalStepFails) {
  goOffline();
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  type(2, u"改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"改"_s);
}

TEST_F(FrmXIMUSave, AToolbarSaveTakesAPriceThatWasNotValidated) {
  portalGives(u"71"_s);
  type(3, u"议价"_s);
  press(u"Save"_s);
  EXPECT_TRUE(boxes->asked.isEmpty()) << "the toolbar takes no focus, so nothing is validated";
  EXPECT_EQ(store.value(u"SELECT JIGEX FROM XIMU WHERE id=1"_s).toString(), u"议价"_s);
}

TEST_F(FrmXIMUSave, AnIntroductionsLineBreaksAreKeptAndTravelAsBr) {
  portalGives(u"71"_s);
  type(8, u"一\r\n二"_s);
  press(u"Save"_s);
  ASSERT_TRUE(portal.waitForRequests(2));
  EXPECT_TRUE(portal.body(1).endsWith("&JISH=%D2%BB%3C%62%72%3E%B6%FE"));
  EXPECT_EQ(store.value(u"SELECT JISH FROM XIMU WHERE id=1"_s).toString(), u"一\r\n二"_s);
}

struct ClosingRow {
  std::string name;
  Answer answer;
  bool closes;
  bool saves;
};

class FrmXIMUClosing : public FrmXIMUSave, public testing::WithParamInterface<ClosingRow> {};

TEST_P(FrmXIMUClosing, AsksAboutUnsavedEditsAndNeverAsksThePortal) {
  type(2, u"改"_s);
  boxes->expect(GetParam().answer);
  press(u"Exit"_s);
  ASSERT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(boxes->asked[0].text, u"数据尚未保存，是否保存"_s);
  EXPECT_EQ(boxes->asked[0].buttons, Buttons::YesNoCancel);
  EXPECT_EQ(isLoaded<FrmXIMU>(), !GetParam().closes);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(),
            GetParam().saves ? u"改"_s : u"大学语文"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
  if (!GetParam().closes) {
    EXPECT_EQ(field(2), u"改"_s);
  }
}

INSTANTIATE_TEST_SUITE_P(Answers, FrmXIMUClosing,
                         testing::Values(ClosingRow{"yes", Answer::Yes, true, true},
                                         ClosingRow{"no", Answer::No, true, false},
                                         ClosingRow{"cancel", Answer::Cancel, false, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(FrmXIMUSave, WithExactlyOneRecordItIsFoundAndUpdatedNotDoubled) {
  store.exec(u"DELETE FROM XIMU WHERE id=2"_s);
  portalGives(u"71"_s);
  type(2, u"唯一"_s);
  press(u"Save"_s);
  type(2, u"唯一二"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.rows(u"SELECT id,XIMU FROM XIMU"_s), QList<QVariantList>({{1, u"唯一二"_s}}));
}

TEST_F(FrmXIMUSave, TwoNewRowsInTurnBecomeTwoRecords) {
  portalGives(u"600"_s);
  press(u"Add"_s);
  type(2, u"甲"_s);
  press(u"Save"_s);
  press(u"Add"_s);
  type(2, u"乙"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.rows(u"SELECT XIMU FROM XIMU WHERE id>2 ORDER BY id"_s),
            QList<QVariantList>({{u"甲"_s}, {u"乙"_s}}));
  EXPECT_EQ(list().itemAt(3)->key(), u"4 ID"_s);
}

}  // namespace

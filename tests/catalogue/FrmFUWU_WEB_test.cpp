#include "catalogue/FrmFUWU_WEB.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "PortalEditorFixture.h"
#include "catalogue/pickers/frmGetSHXI.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> twoServices = {{u"81"_s, u"送货上门"_s, u"3"_s, u"True"_s},
                                        {u"82"_s, u"代订"_s, u"0"_s, u"True"_s}};
const QStringList delivery = {u"81"_s,   u"F1"_s,   u"送货上门"_s, u"5"_s,
                              u"市内"_s, u"当天"_s, u"按单,"_s,    u"请来电"_s};

class PortalServices : public PortalEditorFixture<FrmFUWU_WEB> {
 protected:
  void openOnFirst() {
    open(twoServices);
    show(0, delivery);
  }
  static QByteArray saveTarget(const QHash<QString, QString>& changed) {
    QList<Parameter> parameters = {{u"stable"_s, u"FUWU"_s},
                                   {u"structn"_s, u"18"_s},
                                   {u"stother"_s, u"id=81 and qiye_id=25"_s},
                                   {u"QIYE_ID"_s, u"25"_s},
                                   {u"QIYE"_s, u"青禾书店"_s},
                                   {u"XIMU_NO"_s, u"F1"_s},
                                   {u"XIMU"_s, u"送货上门"_s},
                                   {u"SHXI"_s, u"按单,"_s},
                                   {u"JIGEX"_s, u"5"_s},
                                   {u"ZHKO"_s, u"市内"_s},
                                   {u"NOTH"_s, u"True"_s}};
    for (Parameter& each : parameters) {
      if (changed.contains(each.name)) each.value = changed[each.name];
    }
    return targetOf("_vti_add.asp", parameters);
  }
  static QByteArray textBody(const QString& id, const QString& name, const QString& text) {
    return parameterText({{u"stable"_s, u"FUWU"_s},
                          {u"stother"_s, u"id=%1 and qiye_id=25"_s.arg(id)},
                          {name, text}});
  }
};

TEST_F(PortalServices, AsksForItsListAndItsRecords) {
  portal.answerWith({page({{u"1"_s}}), page(twoServices), page({delivery})});
  screen();
  clickRow(0);
  EXPECT_EQ(target(0), targetOf("_vti_detail_page.asp", {{u"STABLE"_s, u"FUWU"_s},
                                                         {u"STOTHER"_s, u"QIYE_ID=25"_s},
                                                         {u"STPAGESIZE"_s, u"10"_s}}));
  EXPECT_EQ(target(1), targetOf("_vti_detail_onepage.asp", {{u"STABLE"_s, u"FUWU"_s},
                                                            {u"STRDATA"_s, u"id,ximu,diji,noth,"_s},
                                                            {u"STOTHER"_s, u"QIYE_ID=25"_s},
                                                            {u"STPAGE"_s, u"1"_s},
                                                            {u"STPAGESIZE"_s, u"10"_s},
                                                            {u"STORDER"_s, u"NOTH,ID"_s}}));
  EXPECT_EQ(target(2), targetOf("_vti_detail_field_s.asp",
                                {{u"STABLE"_s, u"FUWU"_s},
                                 {u"STRDATA"_s, u"id,ximu_no,ximu,jigex,zhko,jish,shxi,liuy,"_s},
                                 {u"STOTHER"_s, u"id=81"_s}}));
  const QList<std::pair<int, QString>> shown = {
      {0, u"图书"_s}, {1, u"F1"_s},   {2, u"送货上门"_s}, {3, u"5"_s},
      {4, u"市内"_s}, {8, u"当天"_s}, {9, u"按单,"_s},    {10, u"请来电"_s}};
  for (const auto& [index, text] : shown) EXPECT_EQ(field(index), text) << index;
}

TEST_F(PortalServices, HasItsLabelsAndNoCategoryAndBrand) {
  open(twoServices);
  const QList<QStringList> labels = {{u"Label7"_s, u"行    业"_s},
                                     {u"Label3"_s, u"编    号"_s},
                                     {u"Label6"_s, u"名    称"_s},
                                     {u"Label5"_s, u"价    格"_s},
                                     {u"Label1"_s, u"说    明"_s}};
  for (const QStringList& label : labels) {
    ASSERT_NE(screen().findChild<QLabel*>(label[0]), nullptr);
    EXPECT_EQ(screen().findChild<QLabel*>(label[0])->text(), label[1]);
  }
  EXPECT_EQ(screen().findChild<QLabel*>(u"Label4"_s), nullptr);
  for (const int missing : {5, 6, 7, 11}) EXPECT_EQ(screen().txtFields(missing), nullptr);
  EXPECT_EQ(command(u"Command1"_s), nullptr);
  EXPECT_EQ(command(u"Command2"_s), nullptr);
  EXPECT_EQ(command(u"Command3"_s)->text(), u"其它"_s);
  EXPECT_EQ(screen().findChild<QWidget*>(u"txtSelect"_s), nullptr);
}

TEST_F(PortalServices, AllElevenValuesAreEncodedSoThatAMarkInANameArrives) {
  openOnFirst();
  portalGives(u"81"_s);
  type(2, u"a b&书#<1>"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget({{u"XIMU"_s, u"a b&书#<1>"_s}}));
  EXPECT_EQ(status(), u"保存成功！！！"_s);
}

TEST_F(PortalServices, BlanksAroundAValueAreSentAsTheyWereTyped) {
  openOnFirst();
  const auto typed = typeWithBlanks(
      {{u"XIMU_NO"_s, 1}, {u"XIMU"_s, 2}, {u"SHXI"_s, 9}, {u"JIGEX"_s, 3}, {u"ZHKO"_s, 4}});
  portalGives(list().itemAt(0)->key());
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget(typed));
}

TEST_F(PortalServices, ANewServiceInheritsTheAttributesAndTheNote) {
  openOnFirst();
  press(u"Add"_s);
  const QList<std::pair<int, QString>> shown = {
      {0, u"图书"_s}, {1, u"NO"_s},   {2, u"新添服务"_s}, {3, u"0"_s},
      {4, u"说明"_s}, {8, QString()}, {9, u"按单,"_s},    {10, u"请来电"_s}};
  for (const auto& [index, text] : shown) EXPECT_EQ(field(index), text) << index;
  portalGives(u"90"_s);
  press(u"Update"_s);
  ASSERT_TRUE(settled(3));
  EXPECT_EQ(target(0), saveTarget({{u"stother"_s, u"id=0 and qiye_id=25"_s},
                                   {u"XIMU_NO"_s, u"NO"_s},
                                   {u"XIMU"_s, u"新添服务"_s},
                                   {u"JIGEX"_s, u"0"_s},
                                   {u"ZHKO"_s, u"说明"_s}}));
  EXPECT_EQ(portal.body(1), textBody(u"90"_s, u"JISH"_s, QString()));
  EXPECT_EQ(portal.body(2), textBody(u"90"_s, u"LIUY"_s, u"请来电"_s));
}

TEST_F(PortalServices, TheLongTextsGoOutOnceWithASaveByTheToolbar) {
  openOnFirst();
  portalGives(u"81"_s);
  type(8, u"两天"_s);
  press(u"Update"_s);
  ASSERT_TRUE(settled(3));
  EXPECT_EQ(portal.body(1), textBody(u"81"_s, u"JISH"_s, u"两天"_s));
  EXPECT_EQ(portal.body(2), textBody(u"81"_s, u"LIUY"_s, u"请来电"_s));
  EXPECT_EQ(portal.requests().size(), 3);
}

TEST_F(PortalServices, TheQuestionsAtARowClickAndAtClosingSendThemToo) {
  openOnFirst();
  portalGives(u"81"_s);
  type(8, u"两天"_s);
  boxes->expect(Answer::Yes);
  clickRow(1);
  ASSERT_TRUE(settled(3));
  EXPECT_EQ(portal.body(1), textBody(u"81"_s, u"JISH"_s, u"两天"_s));
  EXPECT_EQ(portal.body(2), textBody(u"81"_s, u"LIUY"_s, u"请来电"_s));

  portal.clear();
  portalGives(u"82"_s);
  type(8, u"三天"_s);
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  ASSERT_TRUE(settled(3));
  EXPECT_EQ(portal.body(1), textBody(u"82"_s, u"JISH"_s, u"三天"_s));
}

TEST_F(PortalServices, TheClickedRecordIsNotReadWhileTheNoteIsOnItsWay) {
  openOnFirst();
  portal.setHandler([](const QByteArray& request) {
    ScriptedServer::Reply reply{.bytes = ScriptedServer::ok(ScriptedServer::table({{u"81"_s}}))};
    reply.hang = request.contains("LIUY=");
    return reply;
  });
  type(8, u"两天"_s);
  boxes->expect(Answer::Yes);
  clickRow(1);
  ASSERT_TRUE(portal.waitForRequests(3));
  EXPECT_EQ(field(8), u"两天"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  state.inetQuotes.Cancel();
  EXPECT_EQ(portal.requests().size(), 3);
}

TEST_F(PortalServices, ARefusedSaveSendsNoLongTextsAndMirrorsNothing) {
  openOnFirst();
  portalGives(u"0"_s);
  type(8, u"两天"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), 1);
  EXPECT_TRUE(store.rows(u"SELECT id FROM FUWU"_s).isEmpty());
}

TEST_F(PortalServices, TheLongTextsGoOutThoughTheMirrorFails) {
  openOnFirst();
  store.exec(u"DROP TABLE FUWU"_s);
  portalGives(u"81"_s);
  type(8, u"两天"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  ASSERT_TRUE(settled(3));
}

TEST_F(PortalServices, TheMirrorIsFoundByThePortalsIdAndLacksTheAttributes) {
  store.exec(
      u"INSERT INTO FUWU (id,R_ID,QIYE_ID,XIMU,SHXI,NOTH) VALUES (7,81,1,'旧','旧属性',0)"_s);
  openOnFirst();
  portalGives(u"81"_s);
  type(2, u" 送货 "_s);
  press(u"Update"_s);
  EXPECT_EQ(store.rows(u"SELECT id,R_ID,QIYE_ID,qiye,XIMU_NO,XIMU,JIGEX,ZHKO,JISH,SHXI,NOTH "
                       "FROM FUWU"_s),
            QList<QVariantList>({{7, 81, 1, u"青禾书店"_s, u"F1"_s, u"送货"_s, u"5"_s, u"市内"_s,
                                  u"当天"_s, u"旧属性"_s, 1}}));
}

TEST_F(PortalServices, APriceThatIsNoNumberIsRefusedHere) {
  openOnFirst();
  ASSERT_TRUE(QTest::qWaitFor([&] { return screen().window()->isActiveWindow(); }));
  type(3, u"abc"_s);
  boxes->expect(Answer::Ok);
  screen().txtFields(2)->editor()->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(boxes->texts(), QStringList{u"必须是数值,请重新输入"_s});
  EXPECT_TRUE(screen().txtFields(3)->editor()->hasFocus());
}

TEST_F(PortalServices, TheAttributesAreTheServicesOwnAndTheirGridGoesWithTheScreen) {
  openOnFirst();
  portal.answerWith({page({{u"1"_s, u"方式"_s}})});
  inPicker<frmGetSHXI>(
      [](frmGetSHXI& picker) { QTest::mouseClick(picker.commandC, Qt::LeftButton); });
  pressCommand(u"Command3"_s);
  EXPECT_TRUE(
      target(0).endsWith("&STOTHER=" + UrlEncodeField(u"HAYE_ID=3 and xuze=1"_s).toLatin1()));
  EXPECT_EQ(field(9), u"按单,"_s);
  EXPECT_TRUE(screen().unload());
  EXPECT_FALSE(isLoaded<frmGetSHXI>());
}

TEST_F(PortalServices, WithoutALinkOrAnIndustryTheAttributesCannotBePicked) {
  state.gHayeId = 0;
  open(twoServices);
  EXPECT_FALSE(command(u"Command3"_s)->isEnabled());
}

}  // namespace

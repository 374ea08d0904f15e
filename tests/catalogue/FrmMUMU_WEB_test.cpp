#include "catalogue/FrmMUMU_WEB.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "PortalEditorFixture.h"
#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetSHEN.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetSHXI.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> twoBrands = {{u"61"_s, u"青松牌"_s, u"3"_s, u"True"_s},
                                      {u"62"_s, u"白鹤牌"_s, u"0"_s, u"False"_s}};
const QStringList pine = {u"61"_s, u"P1"_s,   u"青松牌"_s, u"5"_s,      u"起价"_s,
                          u"12"_s, u"13"_s,   u"福建"_s,   u"131"_s,    u"厦门"_s,
                          u"21"_s, u"文具"_s, u"红,"_s,    u"老字号"_s, u"欢迎"_s};

class PortalBrands : public PortalEditorFixture<FrmMUMU_WEB> {
 protected:
  void openOnFirst() {
    open(twoBrands);
    show(0, pine);
  }
  static QByteArray saveTarget(const QHash<QString, QString>& changed) {
    QList<Parameter> parameters = {{u"stable"_s, u"mumu"_s},
                                   {u"structn"_s, u"18"_s},
                                   {u"stother"_s, u"id=61 and qiye_id=25"_s},
                                   {u"QIYE_ID"_s, u"25"_s},
                                   {u"QIYE"_s, u"青禾书店"_s},
                                   {u"SHEN_ID"_s, u"13"_s},
                                   {u"AREA_ID"_s, u"131"_s},
                                   {u"LEBI_ID"_s, u"21"_s},
                                   {u"XIMU_NO"_s, u"P1"_s},
                                   {u"XIMU"_s, u"青松牌"_s},
                                   {u"GESH"_s, u"12"_s},
                                   {u"SHEN"_s, u"福建"_s},
                                   {u"AREA"_s, u"厦门"_s},
                                   {u"LEBI"_s, u"文具"_s},
                                   {u"SHXI"_s, u"红,"_s},
                                   {u"JIGEX"_s, u"5"_s},
                                   {u"ZHKO"_s, u"起价"_s},
                                   {u"NOTH"_s, u"True"_s}};
    for (Parameter& each : parameters) {
      if (changed.contains(each.name)) each.value = changed[each.name];
    }
    return targetOf("_vti_add.asp", parameters);
  }
  void expectShown(const QStringList& shown) {
    for (int index = 0; index < shown.size(); ++index) {
      EXPECT_EQ(field(index), shown[index]) << index;
    }
  }
};

TEST_F(PortalBrands, AsksForTheCompanysOwnBrands) {
  portal.answerWith({page({{u"1"_s}}), page(twoBrands), page({pine})});
  screen();
  clickRow(0);
  EXPECT_EQ(target(0), targetOf("_vti_detail_page.asp", {{u"STABLE"_s, u"MUMU"_s},
                                                         {u"STOTHER"_s, u"QIYE_ID=25"_s},
                                                         {u"STPAGESIZE"_s, u"10"_s}}));
  EXPECT_EQ(target(1), targetOf("_vti_detail_onepage.asp", {{u"STABLE"_s, u"MUMU"_s},
                                                            {u"STRDATA"_s, u"id,ximu,diji,noth,"_s},
                                                            {u"STOTHER"_s, u"QIYE_ID=25"_s},
                                                            {u"STPAGE"_s, u"1"_s},
                                                            {u"STPAGESIZE"_s, u"10"_s},
                                                            {u"STORDER"_s, u"NOTH,ID"_s}}));
  EXPECT_EQ(target(2),
            targetOf("_vti_detail_field_s.asp", {{u"STABLE"_s, u"MUMU"_s},
                                                 {u"STRDATA"_s,
                                                  u"id,ximu_no,ximu,jigex,zhko,gesh,shen_id,shen,"
                                                  "area_id,area,lebi_id,lebi,shxi,jish,liuy,"_s},
                                                 {u"STOTHER"_s, u"id=61"_s}}));
}

TEST_F(PortalBrands, ARecordFillsTheTwelveFieldsAndThreeTags) {
  openOnFirst();
  expectShown({u"图书"_s, u"P1"_s, u"青松牌"_s, u"5"_s, u"起价"_s, u"12"_s, u"福建"_s, u"厦门"_s,
               u"文具"_s, u"红,"_s, u"老字号"_s, u"欢迎"_s});
  EXPECT_EQ(screen().txtFields(6)->Tag, u"13"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"131"_s);
  EXPECT_EQ(screen().txtFields(8)->Tag, u"21"_s);
}

TEST_F(PortalBrands, LabelsAreSingleControlsAndThePackStandsAtTheFoot) {
  open(twoBrands);
  const QList<QStringList> labels = {
      {u"Label7"_s, u"行    业"_s}, {u"Label3"_s, u"编    号"_s}, {u"Label6"_s, u"名    称"_s},
      {u"Label5"_s, u"价    格"_s}, {u"Label1"_s, u"价格说明"_s}, {u"Label8"_s, u"个 /  包"_s},
      {u"Label2"_s, u"省    份"_s}, {u"Label9"_s, u"地    区"_s}, {u"Label4"_s, u"类    别"_s}};
  for (const QStringList& label : labels) {
    ASSERT_NE(screen().findChild<QLabel*>(label[0]), nullptr) << label[0].toStdString();
    EXPECT_EQ(screen().findChild<QLabel*>(label[0])->text(), label[1]);
  }
  for (const int above : {0, 1, 2, 3, 4, 6, 7, 8, 9}) {
    EXPECT_LT(screen().txtFields(above)->y(), screen().txtFields(5)->y()) << above;
  }
}

TEST_F(PortalBrands, AllEighteenValuesAreEncodedSoThatAMarkInANameArrives) {
  openOnFirst();
  portalGives(u"61"_s);
  type(2, u"a&b"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget({{u"XIMU"_s, u"a&b"_s}}));
  EXPECT_EQ(status(), u"保存成功！！！"_s);
}

TEST_F(PortalBrands, BlanksAroundAValueAreSentAsTheyWereTyped) {
  openOnFirst();
  const auto typed = typeWithBlanks({{u"XIMU_NO"_s, 1},
                                     {u"XIMU"_s, 2},
                                     {u"GESH"_s, 5},
                                     {u"SHEN"_s, 6},
                                     {u"AREA"_s, 7},
                                     {u"LEBI"_s, 8},
                                     {u"SHXI"_s, 9},
                                     {u"JIGEX"_s, 3},
                                     {u"ZHKO"_s, 4}});
  portalGives(list().itemAt(0)->key());
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget(typed));
}

TEST_F(PortalBrands, AddClearsAllFieldsAndKeepsTheIds) {
  openOnFirst();
  press(u"Add"_s);
  expectShown({u"图书"_s, u"NO"_s, u"新添品牌"_s, u"0"_s, u"说明"_s, u"1"_s, QString(), QString(),
               QString(), QString(), QString(), QString()});
  portalGives(u"99"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget({{u"stother"_s, u"id=0 and qiye_id=25"_s},
                                   {u"XIMU_NO"_s, u"NO"_s},
                                   {u"XIMU"_s, u"新添品牌"_s},
                                   {u"GESH"_s, u"1"_s},
                                   {u"SHEN"_s, QString()},
                                   {u"AREA"_s, QString()},
                                   {u"LEBI"_s, QString()},
                                   {u"SHXI"_s, QString()},
                                   {u"JIGEX"_s, u"0"_s},
                                   {u"ZHKO"_s, u"说明"_s}}));
}

TEST_F(PortalBrands, NothingIsKeptLocally) {
  openOnFirst();
  portalGives(u"61"_s);
  type(2, u"改"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_TRUE(store.rows(u"SELECT id FROM XIMU UNION ALL SELECT id FROM FUWU"_s).isEmpty());
}

TEST_F(PortalBrands, AfterASaveAtARowClickTheIntroductionWaitsForTheToolbar) {
  openOnFirst();
  type(10, u"百年老店"_s);
  portal.answerWith({page({{u"61"_s}}), page({pine}), page({{u"62"_s}})});
  boxes->expect(Answer::Yes);
  clickRow(1);
  EXPECT_EQ(portal.requests().size(), 2);
  type(10, u"白鹤的介绍"_s);
  press(u"Update"_s);
  ASSERT_TRUE(settled(5));
  EXPECT_EQ(portal.body(3), parameterText({{u"stable"_s, u"mumu"_s},
                                           {u"stother"_s, u"id=62 and qiye_id=25"_s},
                                           {u"JISH"_s, u"白鹤的介绍"_s}}));
}

TEST_F(PortalBrands, ClosingWithYesSendsNeitherIntroductionNorNote) {
  openOnFirst();
  type(11, u"新留言"_s);
  portalGives(u"61"_s);
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(portal.requests().size(), 1);
}

TEST_F(PortalBrands, ProvinceAreaAndCategoryArePickedApart) {
  openOnFirst();
  portal.answerWith({page({{u"11"_s, u"北京"_s}, {u"12"_s, u"上海"_s}})});
  inPicker<frmGetSHEN>([](frmGetSHEN& picker) { acceptRow(picker, 1); });
  pressCommand(u"Command1"_s);
  EXPECT_EQ(screen().txtFields(6)->Tag, u"12 ID"_s);
  EXPECT_EQ(field(6), u"上海"_s);
  EXPECT_EQ(field(7), u"厦门"_s) << "the old area stays";

  portal.answerWith({page({{u"121"_s, u"徐汇"_s}})});
  inPicker<frmGetAREA>([](frmGetAREA& picker) { acceptRow(picker, 0); });
  pressCommand(u"Command2"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"121 ID"_s);
  EXPECT_EQ(field(7), u"徐汇"_s);

  portal.answerWith({page({{u"31"_s, u"办公"_s}}), page({})});
  inPicker<frmGetLEBI>([](frmGetLEBI& picker) {
    TreeNode* node = picker.TreeView1->root(0)->childNode(0);
    QTest::mouseClick(picker.TreeView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                      picker.TreeView1->labelRect(node).center());
    QTest::mouseClick(picker.commandC, Qt::LeftButton);
  });
  pressCommand(u"Command4"_s);
  EXPECT_EQ(screen().txtFields(8)->Tag, u"31 XID"_s);
  EXPECT_EQ(field(8), u"办公"_s);

  portal.clear();
  portalGives(u"61"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget({{u"SHEN_ID"_s, u"12"_s},
                                   {u"SHEN"_s, u"上海"_s},
                                   {u"AREA_ID"_s, u"121"_s},
                                   {u"AREA"_s, u"徐汇"_s},
                                   {u"LEBI_ID"_s, u"31"_s},
                                   {u"LEBI"_s, u"办公"_s}}));
}

TEST_F(PortalBrands, AChoiceWithoutANameIsNone) {
  openOnFirst();
  portal.answerWith({page({{u"11"_s, QString()}})});
  inPicker<frmGetSHEN>([](frmGetSHEN& picker) { acceptRow(picker, 0); });
  pressCommand(u"Command1"_s);
  EXPECT_EQ(screen().txtFields(6)->Tag, u"13"_s);
  EXPECT_EQ(field(6), u"福建"_s);
}

TEST_F(PortalBrands, TheAttributesAreThoseOfBrandsAndOnlyTheirGridGoesWithTheScreen) {
  openOnFirst();
  portal.answerWith({page({{u"1"_s, u"颜色"_s}})});
  inPicker<frmGetSHXI>(
      [](frmGetSHXI& picker) { QTest::mouseClick(picker.commandC, Qt::LeftButton); });
  pressCommand(u"Command3"_s);
  EXPECT_TRUE(
      target(0).endsWith("&STOTHER=" + UrlEncodeField(u"HAYE_ID=3 and xuze=2"_s).toLatin1()));
  for (const QString& name : {u"Command1"_s, u"Command4"_s}) {
    portal.answerWith({page({{u"11"_s, u"北京"_s}})});
    inPicker<Picker>([](Picker& picker) { QTest::mouseClick(picker.commandT, Qt::LeftButton); });
    pressCommand(name);
  }
  EXPECT_TRUE(screen().unload());
  EXPECT_FALSE(isLoaded<frmGetSHXI>());
  EXPECT_TRUE(isLoaded<frmGetSHEN>());
  EXPECT_TRUE(isLoaded<frmGetLEBI>());
}

TEST_F(PortalBrands, WithoutALinkOrAnIndustryNothingCanBePicked) {
  state.gHayeId = 0;
  open(twoBrands);
  for (const QString& name : {u"Command1"_s, u"Command2"_s, u"Command3"_s, u"Command4"_s}) {
    EXPECT_FALSE(command(name)->isEnabled()) << name.toStdString();
  }
}

TEST_F(PortalBrands, PriceAndPackMustBeNumbersToBeLeft) {
  openOnFirst();
  ASSERT_TRUE(QTest::qWaitFor([&] { return screen().window()->isActiveWindow(); }));
  for (const int index : {3, 5}) {
    type(index, u"abc"_s);
    boxes->expect(Answer::Ok);
    screen().txtFields(1)->editor()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(boxes->texts().last(), u"必须是数值,请重新输入"_s);
    type(index, u"1"_s);
  }
  EXPECT_EQ(boxes->asked.size(), 2);
}

}  // namespace

#include "catalogue/FrmFUWU.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "EditorFixture.h"
#include "portal/url_encode.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// The local services of a company with two of them, the first known to the portal.
class Services : public EditorFixture<FrmFUWU> {
 protected:
  Services() {
    beCompany(1, 0);
    store.exec(
        u"INSERT INTO FUWU (id,R_ID,QIYE_ID,qiye,XIMU_NO,XIMU,JIGEX,ZHKO,JISH,SHXI,NOTH) VALUES "
        "(1,81,1,'青禾书店','F1','送货上门','5','市内','当天',  '按单', 1),"
        "(2,0,1,'青禾书店','F2','代订','0','','','', 0)"_s);
  }
};

TEST_F(Services, ListAndPaneShowTheServicesInTheColumnsOfTheGoods) {
  ASSERT_EQ(list().itemCount(), 2);
  EXPECT_EQ(screen().windowTitle(), u"服务登记(本地)"_s);
  EXPECT_EQ(list().model()->headerData(0, Qt::Horizontal).toString(), u"商品名称"_s);
  EXPECT_EQ(list().itemAt(0)->icon(), u"Ximu"_s);
  const QList<std::pair<int, QString>> shown = {{0, u"图书"_s}, {1, u"F1"_s},   {2, u"送货上门"_s},
                                                {3, u"5"_s},    {4, u"市内"_s}, {8, u"当天"_s},
                                                {9, u"按单"_s}};
  for (const auto& [index, text] : shown) EXPECT_EQ(field(index), text) << index;
  for (const int missing : {5, 6, 7, 10}) EXPECT_EQ(screen().txtFields(missing), nullptr);
  EXPECT_EQ(screen().findChild<QWidget*>(u"txtSelect"_s), nullptr);
}

TEST_F(Services, LabelsAreSingleControls) {
  const QList<std::pair<QString, QString>> labels = {
      {u"Label7"_s, u"行    业"_s}, {u"Label3"_s, u"编    号"_s}, {u"Label6"_s, u"名    称"_s},
      {u"Label5"_s, u"价    格"_s}, {u"Label1"_s, u"说    明"_s}, {u"Label4"_s, u"介    绍"_s}};
  for (const auto& [name, caption] : labels) {
    auto* label = screen().findChild<QLabel*>(name);
    ASSERT_NE(label, nullptr) << name.toStdString();
    EXPECT_EQ(label->text(), caption);
  }
}

TEST_F(Services, HasThreeButtonsAndNeitherPrintNorHelp) {
  EXPECT_EQ(screen().Toolbar1->actions().size(), 3);
  for (const QString& key : {u"Add"_s, u"Save"_s, u"Exit"_s}) {
    EXPECT_EQ(screen().Toolbar1->button(key)->toolTip(), key);
  }
}

TEST_F(Services, TheKeyDeleteHasNoEffectAndSaysSo) {
  emit screen().Toolbar1->buttonClick(u"Delete"_s);
  EXPECT_EQ(status(), u"暂无效"_s);
  EXPECT_EQ(list().itemCount(), 2);
}

TEST_F(Services, AddClearsAllButTheAttributeText) {
  press(u"Add"_s);
  EXPECT_EQ(list().itemAt(2)->text(), u"新添服务"_s);
  const QList<std::pair<int, QString>> shown = {{0, u"图书"_s}, {1, u"NO"_s},   {2, u"新添服务"_s},
                                                {3, u"0"_s},    {4, u"说明"_s}, {8, QString()},
                                                {9, u"按单"_s}};
  for (const auto& [index, text] : shown) EXPECT_EQ(field(index), text) << index;
}

TEST_F(Services, SaveSendsItsSevenFieldsAllEncodedAndThenTheIntroduction) {
  portalGives(u"81"_s);
  type(2, u"A&B"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
  ASSERT_TRUE(portal.waitForRequests(2));
  QString target = u"/_vti_product/_vti_add.asp"_s;
  const QList<std::pair<QString, QString>> values = {{u"?stable="_s, u"FUWU"_s},
                                                     {u"&structn="_s, u"18"_s},
                                                     {u"&stother="_s, u"id=81 and qiye_id=25"_s},
                                                     {u"&QIYE_ID="_s, u"25"_s},
                                                     {u"&QIYE="_s, u"青禾书店"_s},
                                                     {u"&XIMU_NO="_s, u"F1"_s},
                                                     {u"&XIMU="_s, u"A&B"_s},
                                                     {u"&JIGEX="_s, u"5"_s},
                                                     {u"&ZHKO="_s, u"市内"_s},
                                                     {u"&NOTH="_s, u"True"_s}};
  for (const auto& [name, value] : values) target += name + UrlEncodeField(value);
  EXPECT_EQ(targets()[0], target);
  EXPECT_EQ(portal.body(1),
            (u"stable="_s + UrlEncodeField(u"FUWU"_s) + u"&stother="_s +
             UrlEncodeField(u"id=81 and qiye_id=25"_s) + u"&JISH="_s + UrlEncodeField(u"当天"_s))
                .toLatin1());
}

TEST_F(Services, AnythingMayBeTypedAsAPrice) {
  ASSERT_TRUE(QTest::qWaitFor([&] { return screen().window()->isActiveWindow(); }));
  portalGives(u"81"_s);
  type(3, u"abc"_s);
  screen().txtFields(2)->editor()->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(screen().txtFields(2)->editor()->hasFocus());
  EXPECT_TRUE(boxes->asked.isEmpty());
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT JIGEX FROM FUWU WHERE id=1"_s).toString(), u"abc"_s);
}

TEST_F(Services, TheAttributeTextComesFromTheStoreAndIsNeverWritten) {
  portalGives(u"81"_s);
  type(9, u"改过"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT SHXI FROM FUWU WHERE id=1"_s).toString(), u"按单"_s);
  EXPECT_FALSE(targets()[0].contains(u"SHXI"_s));
}

TEST_F(Services, ANewServiceGetsItsRowAndThePortalsId) {
  press(u"Add"_s);
  type(2, u"  新服务"_s);
  portalGives(u"99"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.rows(u"SELECT R_ID,QIYE_ID,qiye,XIMU_NO,XIMU,JIGEX,ZHKO,JISH,SHXI,NOTH "
                       "FROM FUWU WHERE id=3"_s),
            QList<QVariantList>({{99, 1, u"青禾书店"_s, u"NO"_s, u"新服务"_s, u"0"_s, u"说明"_s,
                                  u""_s, QVariant(), 1}}));
}

TEST_F(Services, ClosingAsksAboutUnsavedEdits) {
  type(2, u"改"_s);
  boxes->expect(Answer::Yes);
  press(u"Exit"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
  EXPECT_EQ(store.value(u"SELECT XIMU FROM FUWU WHERE id=1"_s).toString(), u"改"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
}

}  // namespace

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

#include "RegistrationFixture.h"
#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetHAYE.h"
#include "account/registration/frmGetSHEN.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class CompanyRecord : public RegistrationFixture {
 protected:
  /// As the company that the portal knows.
  void known() {
    beCompany(1, 1);
    portal.answerWith({page({knownRow()})});
    screen();
  }

  QStringList texts0() {
    QStringList texts;
    for (int i = 0; i <= 10; ++i) texts.append(screen().TxtField0(i)->text());
    return texts;
  }
};

TEST_F(CompanyRecord, ForANewCompanyAsksForNothingAndLeavesThePhoneOpen) {
  state.gShenId = 7;
  EXPECT_EQ(screen().windowTitle(), u"用户信息"_s);
  EXPECT_TRUE(screen().isVisible());
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_FALSE(screen().TxtField0(1)->isReadOnly());
  EXPECT_EQ(texts0().join(QString()), QString());
  EXPECT_TRUE(screen().Toolbar1->button(u"Save"_s)->isEnabled());
  EXPECT_EQ(state.gShenId, 0) << "no cities of a province that somebody chose before";
}

TEST_F(CompanyRecord, HasItsNamesAndLabels) {
  const QList<std::pair<QString, QString>> captions = {
      {u"TxtField0(0)"_s, u"编    号"_s},   {u"TxtField0(1)"_s, u"注册电话*"_s},
      {u"TxtField0(2)"_s, u"口    令*"_s},  {u"TxtField0(3)"_s, u"全    称*"_s},
      {u"TxtField0(4)"_s, u"地    址*"_s},  {u"TxtField0(5)"_s, u"邮    编*"_s},
      {u"TxtField0(6)"_s, u"电    话*"_s},  {u"TxtField0(7)"_s, u"国    家*"_s},
      {u"TxtField0(8)"_s, u"省    份*"_s},  {u"TxtField0(9)"_s, u"城    市*"_s},
      {u"TxtField0(10)"_s, u"行    业*"_s}, {u"TxtField1(0)"_s, u"传    真"_s},
      {u"TxtField1(1)"_s, u"负 责 人"_s},   {u"TxtField1(2)"_s, u"联 系 人"_s},
      {u"TxtField1(3)"_s, u"手    机"_s},   {u"TxtField1(4)"_s, u"呼    机"_s},
      {u"TxtField1(5)"_s, u"主    页"_s},   {u"TxtField1(6)"_s, u"邮    箱"_s},
      {u"TxtField1(7)"_s, u"开户银行"_s},   {u"TxtField1(8)"_s, u"帐 户 号"_s},
      {u"TxtField1(9)"_s, u"税    号"_s}};
  QMap<QString, QString> labels;
  for (const auto* label : screen().SSTab1->findChildren<QLabel*>()) {
    if (label->buddy() != nullptr) labels[label->buddy()->parent()->objectName()] = label->text();
  }
  for (const auto& [box, caption] : captions) {
    EXPECT_EQ(labels.value(box), caption) << box.toStdString();
  }
  const QStringList names = {
      u"TxtField0(0)"_s, u"TxtField0(10)"_s, u"TxtField1(0)"_s, u"TxtField1(9)"_s,
      u"TxtField3(0)"_s, u"TxtField3(1)"_s,  u"ImagePICT"_s,    u"WebBrowserPICT"_s,
      u"Command1"_s,     u"Command2"_s,      u"Command3"_s,     u"Command4"_s,
      u"Command5"_s,     u"Toolbar1"_s,      u"StatusBar1"_s,   u"SSTab1"_s};
  for (const QString& name : names) {
    EXPECT_NE(screen().findChild<QWidget*>(name), nullptr) << name.toStdString();
  }
  EXPECT_EQ(screen().TxtField0(11), nullptr);
  EXPECT_EQ(screen().TxtField1(10), nullptr);
}

TEST_F(CompanyRecord, ReadsTheRowByteByByte) {
  known();
  EXPECT_EQ(
      targets(),
      QStringList{
          u"/_vti_login/_vti_detail_field_s.asp?STABLE=%51%59%58%58&STRDATA="_s +
          UrlEncodeField(u"id,user_no,user_name,user_pass,qiye,dizh,yobi,dihu,guji_id,shen_id,"
                         "area_id,haye_id,guji,shen,area,haye,chzh,fuzh,lixi,shji,huji,zhye,email,"
                         "khyh,yhzh,shha,jish,yhly,"_s) +
          u"&STOTHER=%69%64%3D%32%35"_s});
}

TEST_F(CompanyRecord, ShowsTheRowInItsControls) {
  known();
  EXPECT_EQ(texts0(),
            QStringList({u"1001"_s, u"0637-1"_s, u"secret"_s, u"青禾书店"_s, u"山门外18号"_s,
                         u"526800"_s, u"0637"_s, u"中国"_s, u"江苏"_s, u"南京"_s, u"图书"_s}));
  const QStringList ids = {u"1"_s, u"10"_s, u"90"_s, u"3"_s};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(screen().TxtField0(7 + i)->Tag, ids[i]);
  const QStringList more = {u"传真1"_s,    u"沈青禾"_s, u"沈女士"_s,   u"138"_s,  u"呼1"_s,
                            u"www.1.cn"_s, u"a@b"_s,    u"江苏银行"_s, u"6222"_s, u"9100"_s};
  for (int i = 0; i < more.size(); ++i) EXPECT_EQ(screen().TxtField1(i)->text(), more[i]);
  EXPECT_EQ(screen().TxtField3(0)->text(), u"介绍\r\n二"_s);
  EXPECT_EQ(screen().TxtField3(1)->text(), u"留言"_s);
}

TEST_F(CompanyRecord, LocksThePhoneOfAKnownCompanyAndTakesItsProvince) {
  known();
  EXPECT_TRUE(screen().TxtField0(1)->isReadOnly());
  EXPECT_FALSE(screen().TxtField0(2)->isReadOnly());
  EXPECT_EQ(state.gShenId, 10);
}

TEST_F(CompanyRecord, IsUnchangedBehindTheLoad) {
  known();
  press(u"Save"_s);
  EXPECT_EQ(portal.requests().size(), 1);
  EXPECT_TRUE(notices.isEmpty());
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(CompanyRecord, ARowThatDoesNotComeLeavesTheFieldsEmptyAndThePhoneLocked) {
  beCompany(1, 1);
  portal.answerWith({"<html></html>"});
  EXPECT_EQ(texts0().join(QString()), QString());
  EXPECT_TRUE(screen().TxtField0(1)->isReadOnly());
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_TRUE(notices.isEmpty());
}

TEST_F(CompanyRecord, AsksForThePictureOnlyWhenPicturesAreWanted) {
  known();
  EXPECT_EQ(screen().WebBrowserPICT->asked(), u"about:blank"_s);
  EXPECT_TRUE(screen().WebBrowserPICT->staysOnHost());
  screen().unload();
  state.gViewPict = 1;
  EXPECT_EQ(screen().WebBrowserPICT->asked(),
            state.gWebServer + u"_vti_login/_vti_image.asp?id=25"_s);
}

TEST_F(CompanyRecord, ANewCompanyHasNoPicture) {
  state.gViewPict = 1;
  EXPECT_EQ(screen().WebBrowserPICT->asked(), u"about:blank"_s);
}

TEST_F(CompanyRecord, OfflineItSaysSoAndCannotSave) {
  beCompany(2, 0);
  state.gShenId = 7;
  goOffline();
  EXPECT_TRUE(screen().isVisible());
  EXPECT_EQ(notices, QStringList{u"网络连接失败||"_s});
  EXPECT_FALSE(screen().Toolbar1->button(u"Save"_s)->isEnabled());
  EXPECT_FALSE(screen().TxtField0(1)->isReadOnly());
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_EQ(state.gShenId, 7);
  EXPECT_EQ(state.tray.state(), Tray::State::Offline) << "the check behind the notice";
}

TEST_F(CompanyRecord, OfflineToolbarAndPickersDoNothing) {
  screen();
  goOffline();
  press(u"Save"_s);
  press(u"Exit"_s);
  EXPECT_TRUE(isLoaded<FrmRegister_QY>());
  screen().SSTab1->setTab(4);
  press(screen().Command1);
  screen().SSTab1->setTab(0);
  for (auto* button :
       {screen().Command2, screen().Command3, screen().Command4, screen().Command5}) {
    press(button);
  }
  EXPECT_FALSE(isLoaded<frmGetHAYE>() || isLoaded<frmGetSHEN>() || isLoaded<frmGetAREA>());
  EXPECT_EQ(texts0().join(QString()), QString());
  EXPECT_TRUE(boxes->asked.isEmpty() && boxes->filesAsked.isEmpty() && notices.isEmpty());
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(CompanyRecord, TheCountryIsFilledInWithoutAList) {
  press(screen().Command3);
  EXPECT_EQ(screen().TxtField0(7)->text(), u"中国"_s);
  EXPECT_EQ(screen().TxtField0(7)->Tag, u"1"_s);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(CompanyRecord, AChosenProvinceDecidesTheCitiesAndAnotherOneLeavesTheCity) {
  portal.answerWith(
      {page({{u"10"_s, u"江苏"_s}, {u"11"_s, u"浙江"_s}}), page({{u"103"_s, u"杭州"_s}})});
  screen();
  whileShown<frmGetSHEN>([this](frmGetSHEN& picker) {
    EXPECT_EQ(state.tray.state(), Tray::State::Waiting);
    pressRow(picker.ListView1, 1);
    press(picker.commandC);
  });
  press(screen().Command4);
  EXPECT_EQ(screen().TxtField0(8)->text(), u"浙江"_s);
  EXPECT_EQ(screen().TxtField0(8)->Tag, u"11 ID"_s);
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  whileShown<frmGetAREA>([](frmGetAREA& picker) {
    pressRow(picker.ListView1, 0);
    press(picker.commandC);
  });
  press(screen().Command5);
  EXPECT_EQ(screen().TxtField0(9)->text(), u"杭州"_s);
  EXPECT_EQ(screen().TxtField0(9)->Tag, u"103 ID"_s);
  EXPECT_TRUE(targets().last().endsWith(UrlEncodeField(u"SHEN_ID=11"_s)));
  whileShown<frmGetSHEN>([](frmGetSHEN& picker) {
    pressRow(picker.ListView1, 0);
    press(picker.commandC);
  });
  press(screen().Command4);
  EXPECT_EQ(screen().TxtField0(8)->text(), u"江苏"_s);
  EXPECT_EQ(screen().TxtField0(9)->text(), u"杭州"_s) << "the city stays";
}

TEST_F(CompanyRecord, TheIndustryComesFromItsPicker) {
  portal.answerWith({page({{u"3"_s, u"图书"_s}})});
  screen();
  whileShown<frmGetHAYE>([](frmGetHAYE& picker) {
    pressRow(picker.ListView1, 0);
    press(picker.commandC);
  });
  press(screen().Command2);
  EXPECT_EQ(screen().TxtField0(10)->text(), u"图书"_s);
  EXPECT_EQ(screen().TxtField0(10)->Tag, u"3 ID"_s);
}

TEST_F(CompanyRecord, ACancelledPickerLeavesTheField) {
  known();
  portal.answerWith({page({{u"9"_s, u"上海"_s}})});
  using Steps = std::function<void(frmGetSHEN&)>;
  const QList<Steps> ways = {
      [](frmGetSHEN& picker) { press(picker.commandT); },
      [](frmGetSHEN& picker) { QTest::keyClick(&picker, Qt::Key_Escape); },
      [](frmGetSHEN& picker) { press(picker.commandC); },  // nothing was clicked
  };
  for (const Steps& way : ways) {
    whileShown<frmGetSHEN>(way);
    press(screen().Command4);
    EXPECT_EQ(screen().TxtField0(8)->text(), u"江苏"_s);
    EXPECT_EQ(screen().TxtField0(8)->Tag, u"10"_s);
  }
}

TEST_F(CompanyRecord, TypingIntoTheFirstFurtherFieldsClearsTheirTags) {
  known();
  for (int index = 0; index <= 3; ++index) {
    auto* box = screen().TxtField1(index);
    box->Tag = u"5"_s;
    box->setText(u"vorher"_s);
    EXPECT_EQ(box->Tag, u"5"_s) << "no focus, no typing";
  }
  screen().SSTab1->setTab(1);
  for (int index = 0; index <= 3; ++index) {
    auto* box = screen().TxtField1(index);
    box->editor()->setFocus();
    QTest::keyClicks(box->editor(), u"x"_s);
    EXPECT_EQ(box->Tag, index < 3 ? u"0"_s : u"5"_s) << index;
  }
}

TEST_F(CompanyRecord, APickerEndsThatWatch) {
  known();
  screen().SSTab1->setTab(1);
  auto* box = screen().TxtField1(0);
  box->editor()->setFocus();
  box->Tag = u"5"_s;
  screen().SSTab1->setTab(0);
  press(screen().Command3);
  box->setText(u"anders"_s);
  EXPECT_EQ(box->Tag, u"5"_s);
}

TEST_F(CompanyRecord, APictureIsChosenFromThisMachineShownAndSentNowhere) {
  QTemporaryDir folder;
  const QString path = folder.filePath(u"店面.jpg"_s);
  QImage(64, 48, QImage::Format_RGB32).save(path);
  screen().SSTab1->setTab(4);
  boxes->expectFile(path);
  press(screen().Command1);
  ASSERT_EQ(boxes->filesAsked.size(), 1);
  EXPECT_EQ(boxes->filesAsked[0].title, u"选择图片"_s);
  EXPECT_EQ(boxes->filesAsked[0].filter, u"Access (*.jpg)"_s);
  EXPECT_EQ(boxes->filesAsked[0].directory, QString());
  EXPECT_EQ(boxes->filesAsked[0].fileName, QString());
  EXPECT_EQ(screen().ImagePICT->Tag, path);
  EXPECT_FALSE(screen().ImagePICT->isEmpty());

  boxes->expectFile(std::nullopt);
  press(screen().Command1);
  EXPECT_EQ(boxes->filesAsked[1].directory, folder.path());
  EXPECT_EQ(boxes->filesAsked[1].fileName, u"店面.jpg"_s);
  EXPECT_EQ(screen().ImagePICT->Tag, path) << "a cancelled dialog changes nothing";
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(screen().unload()) << "a picture is no change of the record";
}

TEST_F(CompanyRecord, AFileThatIsNoPictureShowsNothing) {
  QTemporaryDir folder;
  const QString path = folder.filePath(u"x.jpg"_s);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("no picture");
  file.close();
  screen().SSTab1->setTab(4);
  for (const QString& name : {path, folder.filePath(u"missing.jpg"_s)}) {
    boxes->expectFile(name);
    press(screen().Command1);
    EXPECT_TRUE(screen().ImagePICT->isEmpty());
    EXPECT_EQ(screen().ImagePICT->Tag, name);
  }
}

TEST_F(CompanyRecord, UnloadTakesItsPickersWithIt) {
  portal.answerWith({page({})});
  screen();
  defaultInstance<frmGetSHEN>();
  defaultInstance<frmGetAREA>();
  defaultInstance<frmGetHAYE>();
  press(u"Exit"_s);
  EXPECT_FALSE(isLoaded<FrmRegister_QY>());
  EXPECT_FALSE(isLoaded<frmGetSHEN>() || isLoaded<frmGetAREA>() || isLoaded<frmGetHAYE>());
}

}  // namespace

#include "catalogue/FrmQUST_WEB.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLabel>

#include "EditorFixture.h"
#include "portal/url_encode.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> twoSurveys = {{u"7"_s, u"读者调查"_s, u"3"_s, u"False"_s},
                                       {u"9"_s, u"馆配调查"_s, u"12"_s, u"True"_s}};
const QList<QStringList> first = {{u"2"_s, u"D1"_s, u"读者调查"_s, u"谢谢参加"_s}};
const QList<QStringList> second = {{u"4"_s, u"D2"_s, u"馆配调查"_s, u"多谢"_s}};

QString rowsTarget(const QString& fields, const QString& condition, const QString& order = {}) {
  QString target = u"/_vti_product/_vti_detail_field_s.asp?STABLE="_s + UrlEncodeField(u"QUST"_s) +
                   u"&STRDATA="_s + UrlEncodeField(fields) + u"&STOTHER="_s +
                   UrlEncodeField(condition);
  if (!order.isEmpty()) target += u"&STORDER="_s + UrlEncodeField(order);
  return target;
}

class Surveys : public EditorFixture<FrmQUST_WEB> {
 protected:
  Surveys() {
    beCompany(1, 0);
    portal.answerWith({page(twoSurveys), page(first)});
  }

  QString saveTarget(int id, const QString& number, const QString& name, const QString& answer,
                     const QString& live) {
    const QList<std::pair<QString, QString>> values = {
        {u"?stable="_s, u"qust"_s}, {u"&stother="_s, u"id=%1 and qiye_id=25"_s.arg(id)},
        {u"&QIYE_ID="_s, u"25"_s},  {u"&QUST_NO="_s, number},
        {u"&QUST="_s, name},        {u"&ANSW="_s, answer},
        {u"&NOTH="_s, live}};
    QString target = u"/_vti_product/_vti_add.asp"_s;
    for (const auto& [name_, value] : values) target += name_ + UrlEncodeField(value);
    return target;
  }
};

TEST_F(Surveys, LoadListsThemAndShowsTheFirst) {
  ASSERT_EQ(list().itemCount(), 2);
  EXPECT_EQ(targets(),
            QStringList({rowsTarget(u"id,qust,diji,noth,"_s, u"QIYE_ID=25"_s, u"NOTH,ID"_s),
                         rowsTarget(u"lebi_id,qust_no,qust,answ,"_s, u"id=7"_s)}));
  EXPECT_EQ(list().itemAt(0)->key(), u"7 ID"_s);
  EXPECT_EQ(list().itemAt(0)->subItem(1), u"3"_s);
  EXPECT_FALSE(list().itemAt(0)->isChecked()) << "what is not live comes first";
  EXPECT_TRUE(list().itemAt(1)->isChecked());
  const QStringList shown = {u"2"_s, u"D1"_s, u"读者调查"_s, u"谢谢参加"_s};
  for (int index = 0; index < shown.size(); ++index) EXPECT_EQ(field(index), shown[index]);
  EXPECT_TRUE(isEnabled(u"Add"_s));
  EXPECT_TRUE(isEnabled(u"Update"_s));
}

TEST_F(Surveys, HasItsLabelsAndColumns) {
  const QStringList labels = {u"类    别"_s, u"编    号"_s, u"名    称"_s, u"答    复"_s};
  for (int index = 0; index < labels.size(); ++index) {
    EXPECT_EQ(screen().findChild<QLabel*>(u"LabelXM(%1)"_s.arg(index))->text(), labels[index]);
  }
  EXPECT_EQ(screen().windowTitle(), u"调查登记"_s);
  EXPECT_EQ(list().model()->headerData(0, Qt::Horizontal).toString(), u"名称"_s);
  EXPECT_EQ(list().model()->headerData(1, Qt::Horizontal).toString(), u"浏览"_s);
}

TEST_F(Surveys, UpdateWithNothingChangedMakesNoRequest) {
  press(u"Update"_s);
  EXPECT_EQ(portal.requests().size(), 2);
  EXPECT_EQ(status(), QString());
}

TEST_F(Surveys, UpdateSendsTheFieldsAndTakesTheAnsweredId) {
  screen();
  portal.answerWith({page({{u"8"_s}})});
  type(2, u"改名 & <问>"_s);
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_EQ(targets().last(), saveTarget(7, u"D1"_s, u"改名 & <问>"_s, u"谢谢参加"_s, u"False"_s));
  EXPECT_EQ(list().itemAt(0)->key(), u"8 ID"_s);
  EXPECT_EQ(list().itemAt(0)->text(), u"改名 & <问>"_s);
}

TEST_F(Surveys, ARefusalAndAnEmptyAnswerFailAndKeepTheEdit) {
  screen();
  for (const QByteArray& answer : {page({{u"0"_s}}), QByteArray("<html></html>")}) {
    portal.answerWith({answer});
    type(2, field(2) + u"改"_s);
    press(u"Update"_s);
    EXPECT_EQ(status(), u"保存失败！！！"_s);
    EXPECT_EQ(list().itemAt(0)->key(), u"7 ID"_s);
  }
  portal.answerWith({page({{u"7"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s) << "the screen was still marked";
}

TEST_F(Surveys, AddMakesAMarkedRowThatGoesOutAsIdZero) {
  press(u"Add"_s);
  EXPECT_EQ(list().itemAt(2)->text(), u"新添调查"_s);
  const QStringList shown = {u"图书"_s, u"NO"_s, u"新添调查"_s, u"谢谢"_s};
  for (int index = 0; index < shown.size(); ++index) EXPECT_EQ(field(index), shown[index]);
  portal.answerWith({page({{u"33"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(targets().last(), saveTarget(0, u"NO"_s, u"新添调查"_s, u"谢谢"_s, u"True"_s));
  EXPECT_EQ(list().itemAt(2)->key(), u"33 ID"_s);
}

TEST_F(Surveys, AnUnsavedSurveyRaisesTheQuestionAtAClickOnAnother) {
  press(u"Add"_s);
  boxes->expect(Answer::Cancel);
  clickRow(0);
  EXPECT_EQ(boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
  EXPECT_EQ(field(2), u"新添调查"_s) << "the pane stays";
  EXPECT_EQ(list().selectedItem(), list().itemAt(0)) << "the selection has moved";
}

TEST_F(Surveys, YesSavesUnderTheRowSelectedBeforeTheClickAndThenLoadsTheClickedOne) {
  screen();
  type(2, u"改名"_s);
  portal.answerWith({page({{u"7"_s}}), page(second)});
  boxes->expect(Answer::Yes);
  clickRow(1);
  EXPECT_EQ(targets()[2], saveTarget(7, u"D1"_s, u"改名"_s, u"谢谢参加"_s, u"False"_s));
  EXPECT_EQ(targets()[3], rowsTarget(u"lebi_id,qust_no,qust,answ,"_s, u"id=9"_s));
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_EQ(field(1), u"D2"_s);
  EXPECT_EQ(list().itemAt(0)->text(), u"改名"_s);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(boxes->asked.size(), 1) << "a load does not mark the screen";
}

TEST_F(Surveys, AFailedSaveAtARowClickStillSaysSavedAndLoadsTheClickedRow) {
  screen();
  type(2, u"改名"_s);
  portal.answerWith({"<html></html>", page(second)});
  boxes->expect(Answer::Yes);
  clickRow(1);
  EXPECT_EQ(status(), u"保存成功！！！"_s);
  EXPECT_EQ(field(1), u"D2"_s);
}

TEST_F(Surveys, NoDropsTheEdit) {
  screen();
  type(2, u"改名"_s);
  portal.answerWith({page(second)});
  boxes->expect(Answer::No);
  clickRow(1);
  EXPECT_EQ(portal.requests().size(), 3);
  EXPECT_EQ(field(2), u"馆配调查"_s);
}

TEST_F(Surveys, TickingAnotherRowSelectsItWithoutLoadingAndASaveWritesThePaneUnderIt) {
  screen();
  clickCheckBox(1);
  EXPECT_EQ(list().selectedItem(), list().itemAt(1));
  EXPECT_EQ(field(1), u"D1"_s);
  portal.answerWith({page({{u"9"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(targets().last(), saveTarget(9, u"D1"_s, u"读者调查"_s, u"谢谢参加"_s, u"False"_s));
}

TEST_F(Surveys, SaveAsItGoesOverTheWire) {
  screen();
  type(3, u"一\r\n<"_s);
  portalGives(u"7"_s);
  press(u"Update"_s);
  EXPECT_EQ(targets().last(),
            u"/_vti_product/_vti_add.asp?stable=%71%75%73%74"
            "&stother=%69%64%3D%37%20%61%6E%64%20%71%69%79%65%5F%69%64%3D%32%35"
            "&QIYE_ID=%32%35&QUST_NO=%44%31&QUST=%B6%C1%D5%DF%B5%F7%B2%E9"
            "&ANSW=%D2%BB%3C%62%72%3E%26%6C%74%3B&NOTH=%46%61%6C%73%65"_s);
}

TEST_F(Surveys, EveryBoxMarksTheScreen) {
  screen();
  for (int index = 0; index < 4; ++index) {
    type(index, field(index) + u"改"_s);
    boxes->expect(Answer::Cancel);
    EXPECT_FALSE(screen().unload()) << index;
    portalGives(u"7"_s);
    press(u"Update"_s);
  }
  EXPECT_EQ(boxes->asked.size(), 4);
  EXPECT_TRUE(screen().unload());
}

TEST_F(Surveys, EveryLoggedInLevelAdds) {
  for (const qint16 level : {qint16{-1}, qint16{0}, qint16{1}, qint16{2}}) {
    state.gUserLevel = level;
    portal.answerWith({page(twoSurveys), page(first)});
    EXPECT_EQ(isEnabled(u"Add"_s), level >= 0) << level;
    EXPECT_TRUE(isEnabled(u"Update"_s)) << level;
    ASSERT_TRUE(screen().unload());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_F(Surveys, EveryRowOfTheAnswerNamesTheSurveyAndTheLastOneStays) {
  screen();
  type(2, u"改名"_s);
  portal.answerWith({page({{u"12"_s}, {u"13"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(list().itemAt(0)->key(), u"13 ID"_s);
}

TEST_F(Surveys, OnlyTheWordTrueTicksASurvey) {
  portal.answerWith(
      {page({{u"7"_s, u"a"_s, u"3"_s, u"true"_s}, {u"9"_s, u"b"_s, u"3"_s, u"1"_s}}), page(first)});
  EXPECT_FALSE(list().itemAt(0)->isChecked());
  EXPECT_FALSE(list().itemAt(1)->isChecked());
}

TEST_F(Surveys, ASurveyThatThePortalDoesNotTellChangesNoField) {
  screen();
  portal.answerWith({page({})});
  clickRow(1);
  EXPECT_EQ(field(2), u"读者调查"_s);
  EXPECT_TRUE(isEnabled(u"Add"_s));
  EXPECT_TRUE(isEnabled(u"Update"_s));
  EXPECT_TRUE(screen().unload()) << "and marks nothing";
}

TEST_F(Surveys, YesAtAClickSavesANewSurveyUnderIdZero) {
  press(u"Add"_s);
  portal.answerWith({page({{u"33"_s}}), page(second)});
  boxes->expect(Answer::Yes);
  clickRow(1);
  EXPECT_EQ(targets()[2], saveTarget(0, u"NO"_s, u"新添调查"_s, u"谢谢"_s, u"True"_s));
  EXPECT_EQ(list().itemAt(2)->key(), u"33 ID"_s);
  EXPECT_EQ(field(1), u"D2"_s);
}

TEST_F(Surveys, AFailedSaveAtClosingClosesAllTheSame) {
  screen();
  type(3, u"改"_s);
  portal.answerWith({"<html></html>"});
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(targets().last(), saveTarget(7, u"D1"_s, u"读者调查"_s, u"改"_s, u"False"_s));
}

TEST_F(Surveys, NoAtClosingDropsTheEdit) {
  screen();
  type(3, u"改"_s);
  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(portal.requests().size(), 2);
}

TEST_F(Surveys, OfflineATickMarksNothing) {
  screen();
  goOffline();
  clickCheckBox(1);
  EXPECT_EQ(list().selectedItem(), list().itemAt(0));
  EXPECT_TRUE(screen().unload()) << "without a question";
}

TEST_F(Surveys, ExitLeavesWhileTheLinkStands) {
  screen();
  press(u"Exit"_s);
  EXPECT_FALSE(isLoaded<FrmQUST_WEB>());
}

TEST_F(Surveys, OfflineNothingButTheCloseBoxWorks) {
  screen();
  goOffline();
  press(u"Add"_s);
  press(u"Exit"_s);
  clickRow(1);
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_TRUE(isLoaded<FrmQUST_WEB>());
  EXPECT_EQ(portal.requests().size(), 2);
  EXPECT_TRUE(screen().unload());
}

TEST_F(Surveys, ClosingAsksSavesAndReports) {
  screen();
  type(3, u"改"_s);
  portal.answerWith({page({{u"7"_s}})});
  boxes->expect(Answer::Cancel);
  EXPECT_FALSE(screen().unload());
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(targets().last(), saveTarget(7, u"D1"_s, u"读者调查"_s, u"改"_s, u"False"_s));
}

TEST_F(Surveys, APortalWithoutAnswerLeavesAnEmptyUsableScreen) {
  portal.answerWith({"<html></html>"});
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_TRUE(isEnabled(u"Add"_s));
  EXPECT_FALSE(isEnabled(u"Update"_s));
}

}  // namespace

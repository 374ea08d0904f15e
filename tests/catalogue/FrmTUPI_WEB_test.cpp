#include "catalogue/FrmTUPI_WEB.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "PortalEditorFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> twoPictures = {{u"51"_s, u"门面"_s, u"3"_s, u"False"_s},
                                        {u"52"_s, u"书架"_s, u"0"_s, u"True"_s}};
const QStringList front = {u"51"_s, u"门面"_s, u"http://example.invalid/a"_s, u"新装修"_s,
                           u"请看"_s};

class PortalPictures : public PortalEditorFixture<FrmTUPI_WEB> {
 protected:
  void openOnFirst() {
    portal.answerWith({page(twoPictures), page({front})});
    clickRow(0);
    portal.clear();
  }
  static QByteArray saveTarget(const QString& id, const QString& name, const QString& link,
                               const QString& live) {
    return targetOf("_vti_add.asp", {{u"stable"_s, u"tupi"_s},
                                     {u"stother"_s, u"id=%1 and qiye_id=25"_s.arg(id)},
                                     {u"QIYE_ID"_s, u"25"_s},
                                     {u"QIYE"_s, u"青禾书店"_s},
                                     {u"XIMU"_s, name},
                                     {u"ZHKO"_s, link},
                                     {u"NOTH"_s, live}});
  }
};

TEST_F(PortalPictures, TheListComesInOneAnswerWithoutALookAtTheLink) {
  goOffline();
  state.gHayeId = 0;
  portal.answerWith({page(twoPictures)});
  EXPECT_EQ(list().itemCount(), 2);
  EXPECT_EQ(portal.requestTargets(),
            QList<QByteArray>(
                {targetOf("_vti_detail_field_s.asp", {{u"STABLE"_s, u"TUPI"_s},
                                                      {u"STRDATA"_s, u"id,ximu,diji,noth,"_s},
                                                      {u"STOTHER"_s, u"QIYE_ID=25"_s},
                                                      {u"STORDER"_s, u"NOTH,ID"_s}})}));
  EXPECT_TRUE(links->asked.isEmpty());
}

TEST_F(PortalPictures, ManyRecordsComeInASingleAnswer) {
  QList<QStringList> rows;
  for (int row = 1; row <= 3000; ++row) {
    rows.append({QString::number(row), u"图%1"_s.arg(row), u"0"_s, u"True"_s});
  }
  portal.answerWith({page(rows)});
  EXPECT_EQ(list().itemCount(), 3000);
  EXPECT_EQ(list().itemAt(2999)->text(), u"图3000"_s);
  EXPECT_EQ(portal.requests().size(), 1);
}

TEST_F(PortalPictures, ARecordShowsItsFourFields) {
  portal.answerWith({page(twoPictures), page({front})});
  clickRow(0);
  EXPECT_EQ(target(1),
            targetOf("_vti_detail_field_s.asp", {{u"STABLE"_s, u"TUPI"_s},
                                                 {u"STRDATA"_s, u"id,ximu,zhko,jish,liuy,"_s},
                                                 {u"STOTHER"_s, u"id=51"_s}}));
  const QList<std::pair<int, QString>> shown = {{0, u"图书"_s},
                                                {1, u"门面"_s},
                                                {2, u"http://example.invalid/a"_s},
                                                {8, u"新装修"_s},
                                                {10, u"请看"_s}};
  for (const auto& [index, text] : shown) EXPECT_EQ(field(index), text) << index;
}

TEST_F(PortalPictures, HasItsLabelsAndNoPagesAndPickers) {
  openOnFirst();
  const QStringList labels = {u"行    业"_s, u"链    接"_s, u"编号名称"_s};
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(screen().findChild<QLabel*>(u"LabelXM(%1)"_s.arg(index))->text(), labels[index]);
  }
  EXPECT_EQ(screen().findChild<QLabel*>(u"LabelXM(2)"_s)->buddy(), screen().txtFields(1)->editor());
  EXPECT_EQ(screen().findChild<QLabel*>(u"LabelXM(1)"_s)->buddy(), screen().txtFields(2)->editor());
  for (const int missing : {3, 4, 5, 6, 7, 9}) {
    EXPECT_EQ(screen().txtFields(missing), nullptr) << missing;
  }
  for (const QString& name : {u"Command1"_s, u"Command3"_s, u"Command5"_s}) {
    EXPECT_EQ(command(name), nullptr);
  }
}

TEST_F(PortalPictures, ASaveSendsSevenValuesEncodedAndThenTheLongTexts) {
  openOnFirst();
  type(1, u"门面&<新>"_s);
  portalGives(u"51"_s);
  press(u"Update"_s);
  ASSERT_TRUE(settled(3));
  EXPECT_EQ(target(0), saveTarget(u"51"_s, u"门面&<新>"_s, front[2], u"False"_s));
  EXPECT_EQ(list().itemAt(0)->text(), u"门面&<新>"_s);
  EXPECT_EQ(portal.body(1), parameterText({{u"stable"_s, u"tupi"_s},
                                           {u"stother"_s, u"id=51 and qiye_id=25"_s},
                                           {u"JISH"_s, u"新装修"_s}}));
  EXPECT_EQ(portal.body(2), parameterText({{u"stable"_s, u"tupi"_s},
                                           {u"stother"_s, u"id=51 and qiye_id=25"_s},
                                           {u"LIUY"_s, u"请看"_s}}));
}

TEST_F(PortalPictures, ANewRecordStartsWithTheLinkAndTheTextsOfTheOneShownBefore) {
  openOnFirst();
  press(u"Add"_s);
  EXPECT_EQ(field(1), u"新添图片"_s);
  EXPECT_EQ(field(2), front[2]);
  EXPECT_EQ(field(8), u"新装修"_s);
  EXPECT_EQ(field(10), u"请看"_s);
  portalGives(u"77"_s);
  press(u"Update"_s);
  EXPECT_EQ(target(0), saveTarget(u"0"_s, u"新添图片"_s, front[2], u"True"_s));
}

TEST_F(PortalPictures, AddMarksTheScreenOnlyWhereItChangesAField) {
  openOnFirst();
  press(u"Add"_s);
  portalGives(u"77"_s);
  press(u"Update"_s);
  ASSERT_TRUE(settled(3));
  portal.clear();
  press(u"Add"_s);
  press(u"Update"_s);
  EXPECT_TRUE(portal.requests().isEmpty()) << "the new row shows what the old one did";
}

TEST_F(PortalPictures, ASaveAtARowClickSendsNoLongTexts) {
  openOnFirst();
  type(8, u"改"_s);
  portal.answerWith({page({{u"51"_s}}), page({front})});
  boxes->expect(Answer::Yes);
  clickRow(1);
  EXPECT_EQ(portal.requests().size(), 2);
}

TEST_F(PortalPictures, NothingIsAskedOfANumber) {
  openOnFirst();
  type(1, u"abc"_s);
  screen().txtFields(2)->editor()->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

}  // namespace

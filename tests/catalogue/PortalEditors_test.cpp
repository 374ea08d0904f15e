// What the four editors with a picture page have in common.

#include <gtest/gtest.h>

#include "PortalEditorKinds.h"

using namespace qinghe;
using namespace qinghe::portal_editors;
using namespace Qt::StringLiterals;

namespace {

template <class Kind>
class PortalEditors : public PortalEditorsFixture<Kind> {};
TYPED_TEST_SUITE(PortalEditors, Kinds);

TYPED_TEST(PortalEditors, HaveTheirCaptionColumnsTabsAndButtons) {
  this->state.gShxiKind = 7;  // of an editor that was opened before
  this->openTwo();
  auto& screen = this->screen();
  EXPECT_EQ(screen.windowTitle(), text(TypeParam::caption));
  EXPECT_EQ(this->list().model()->headerData(0, Qt::Horizontal).toString(),
            text(TypeParam::column));
  EXPECT_EQ(this->list().model()->headerData(1, Qt::Horizontal).toString(), u"浏览"_s);
  QStringList tabs;
  for (int tab = 0; tab < screen.SSTab1->count(); ++tab) tabs.append(screen.SSTab1->tabText(tab));
  EXPECT_EQ(tabs, QStringList({u"基本"_s, u"介绍"_s, u"图片"_s, u"留言"_s}));
  EXPECT_EQ(screen.SSTab1->objectName(), u"SSTab1"_s);

  QStringList buttons;
  for (const QAction* action : screen.Toolbar1->actions()) {
    buttons.append(action->objectName() + u'/' + action->text() + u'/' + action->toolTip());
  }
  EXPECT_EQ(buttons, QStringList({u"Add/增加/Add"_s, u"Update/保存/Save"_s, u"Exit/退出/Exit"_s}));
  EXPECT_EQ(this->state.gShxiKind, TypeParam::kind);
}

TYPED_TEST(PortalEditors, TheFirstColumnLeavesRoomForTheViews) {
  this->openTwo();
  auto& list = this->list();
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return list.columnWidth(0) == list.viewport()->width() - 660 / 15; }));
  EXPECT_LE(list.columnViewportPosition(1) + list.columnWidth(1), list.viewport()->width());
}

TYPED_TEST(PortalEditors, LoadListsTheRowsAndShowsNoRecord) {
  this->openTwo();
  ASSERT_EQ(this->list().itemCount(), 2);
  const ListItem* row = this->list().itemAt(1);
  EXPECT_EQ(row->key(), u"40000 ID"_s);
  EXPECT_EQ(row->text(), u"乙"_s);
  EXPECT_EQ(row->subItem(1), u"12"_s);
  EXPECT_EQ(row->icon(), u"Ximu"_s);
  EXPECT_TRUE(row->isChecked());
  EXPECT_FALSE(this->list().itemAt(0)->isChecked());
  EXPECT_EQ(this->name(), QString());
  EXPECT_EQ(this->field(0), QString());
  EXPECT_TRUE(this->isEnabled(u"Add"_s));
  EXPECT_FALSE(this->isEnabled(u"Update"_s));
  EXPECT_EQ(this->shownPage(), u"about:blank"_s);
  EXPECT_TRUE(this->screen().unload()) << "a load does not mark the screen";
}

TYPED_TEST(PortalEditors, ALiveFlagIsExactlyTrue) {
  this->portal.setHandler([](const QByteArray&) {
    return ScriptedServer::Reply{
        .bytes = ScriptedServer::ok(ScriptedServer::table({{u"1"_s, u"甲"_s, u"0"_s, u"true"_s},
                                                           {u"2"_s, u"乙"_s, u"0"_s, u"1"_s},
                                                           {u"3"_s, u"丙"_s, u"0"_s, u"-1"_s},
                                                           {u"4"_s, u"丁"_s, u"0"_s, u""_s}}))};
  });
  ASSERT_EQ(this->list().itemCount(), 4);
  for (int row = 0; row < 4; ++row) EXPECT_FALSE(this->list().itemAt(row)->isChecked()) << row;
}

TYPED_TEST(PortalEditors, AnUnknownUserMayNotAdd) {
  this->state.gUserLevel = -1;
  this->openTwo();
  EXPECT_FALSE(this->isEnabled(u"Add"_s));
}

TYPED_TEST(PortalEditors, APortalWithoutAnswerLeavesAnEmptyUsableScreen) {
  this->portal.answerWith({"<html></html>"});
  EXPECT_EQ(this->list().itemCount(), 0);
  EXPECT_TRUE(this->isEnabled(u"Add"_s));
  EXPECT_FALSE(this->isEnabled(u"Update"_s));
  this->press(u"Add"_s);
  EXPECT_TRUE(this->isEnabled(u"Update"_s)) << "at once, on an empty list, too";
  this->portalGives(u"9"_s);
  this->press(u"Update"_s);
  EXPECT_EQ(this->status(), u"保存成功！！！"_s);
  EXPECT_EQ(this->list().itemAt(0)->key(), u"9 ID"_s);
}

TYPED_TEST(PortalEditors, OfflineNoKeyOfTheToolbarAndNoClickDoesAnything) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->goOffline();
  for (const QString& key : {u"Add"_s, u"Update"_s, u"Exit"_s}) this->press(key);
  this->clickRow(1);
  EXPECT_EQ(this->list().itemCount(), 2);
  EXPECT_TRUE(isLoaded<typename TypeParam::Screen>());
  EXPECT_EQ(this->name(), u"改"_s);
  EXPECT_EQ(this->status(), QString());
  EXPECT_TRUE(this->portal.requests().isEmpty());
  this->boxes->expect(Answer::No);
  EXPECT_TRUE(this->screen().window()->close()) << "the close box is the way out";
}

TYPED_TEST(PortalEditors, OfflineATickChangesNothingButTheBox) {
  this->openTwo();
  this->goOffline();
  this->clickCheckBox(1);
  EXPECT_FALSE(this->list().itemAt(1)->isChecked());
  EXPECT_EQ(this->list().selectedItem(), this->list().itemAt(0));
  EXPECT_TRUE(this->screen().unload()) << "nothing to save";
}

TYPED_TEST(PortalEditors, AClickLoadsTheRecordAndDoesNotMarkTheScreen) {
  this->openTwo();
  this->show(1, this->record(u"40000"_s, u"乙"_s));
  EXPECT_EQ(this->name(), u"乙"_s);
  EXPECT_EQ(this->field(0), u"图书"_s);
  EXPECT_TRUE(this->isEnabled(u"Update"_s));
  this->press(u"Update"_s);
  EXPECT_TRUE(this->portal.requests().isEmpty()) << "nothing has changed";
  EXPECT_EQ(this->status(), QString());
}

TYPED_TEST(PortalEditors, EnterLoadsTheSelectedRecordWhichMayBeTheOnlyOne) {
  this->openTwo();
  this->portal.answerWith({this->page({this->record(u"71"_s, u"甲"_s)})});
  QTest::keyClick(&this->list(), Qt::Key_Return);
  EXPECT_EQ(this->name(), u"甲"_s);
  EXPECT_TRUE(this->isEnabled(u"Update"_s));
}

TYPED_TEST(PortalEditors, AnIdThatThePortalDoesNotKnowLeavesTheFields) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  for (const QByteArray& answer : {ScriptedServer::table({}), QByteArray("<html></html>")}) {
    this->portal.answerWith({answer});
    this->clickRow(1);
    EXPECT_EQ(this->name(), u"甲"_s);
  }
}

TYPED_TEST(PortalEditors, AnAnswerThatBreaksOffShowsTheFieldsThatCame) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->portal.answerWith(
      {this->page({this->record(u"40000"_s, u"乙"_s).mid(0, TypeParam::nameCell + 1)})});
  this->clickRow(1);
  EXPECT_EQ(this->name(), u"乙"_s);
  EXPECT_TRUE(this->isEnabled(u"Update"_s));
}

TYPED_TEST(PortalEditors, ARefusalAndAnEmptyAnswerFailAndKeepTheEdit) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改名"_s);
  for (const QByteArray& answer : {this->page({{u"0"_s}}), QByteArray("<html></html>"),
                                   QByteArray("<table start_pos><tr><td>9"), QByteArray()}) {
    this->portal.clear();
    this->portal.answerWith({answer});
    this->press(u"Update"_s);
    EXPECT_EQ(this->status(), u"保存失败！！！"_s);
    EXPECT_EQ(this->list().itemAt(0)->key(), u"71 ID"_s);
    EXPECT_EQ(this->list().itemAt(0)->text(), u"甲"_s);
    EXPECT_EQ(this->portal.requests().size(), 1) << "no long text follows";
  }
  this->portalGives(u"71"_s);
  this->press(u"Update"_s);
  EXPECT_EQ(this->status(), u"保存成功！！！"_s) << "the screen was still marked";
}

TYPED_TEST(PortalEditors, ADeadPortalFailsTheSave) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改名"_s);
  this->portal.setHandler([](const QByteArray&) {
    ScriptedServer::Reply reply;
    reply.reset = true;
    return reply;
  });
  this->press(u"Update"_s);
  EXPECT_EQ(this->status(), u"保存失败！！！"_s);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the pointer is back";
}

TYPED_TEST(PortalEditors, ASavedRowTakesTheAnsweredIdAndTheNameAsItWasTyped) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"  改名 "_s);
  this->portalGives(u"72"_s);
  this->press(u"Update"_s);
  EXPECT_EQ(this->list().itemAt(0)->key(), u"72 ID"_s);
  EXPECT_EQ(this->list().itemAt(0)->text(), u"  改名 "_s);
}

TYPED_TEST(PortalEditors, TheLongTextsFollowASaveByTheToolbarUnderItsNewId) {
  this->openTwo();
  this->press(u"Add"_s);
  this->turnTo(1);
  this->type(TypeParam::intro, u"第一行\r\n第二行 & 完"_s);
  this->turnTo(3);
  this->type(TypeParam::note, u"谢谢"_s);
  this->portalGives(u"50001"_s);
  this->press(u"Update"_s);
  ASSERT_TRUE(this->settled(3));
  const QString table = TypeParam::kind == 1 ? u"FUWU"_s : text(TypeParam::picture);
  const QString selection = u"id=50001 and qiye_id=25"_s;
  EXPECT_EQ(this->portal.body(1), parameterText({{u"stable"_s, table},
                                                 {u"stother"_s, selection},
                                                 {u"JISH"_s, u"第一行\r\n第二行 & 完"_s}}));
  EXPECT_EQ(
      this->portal.body(2),
      parameterText({{u"stable"_s, table}, {u"stother"_s, selection}, {u"LIUY"_s, u"谢谢"_s}}));
  for (const int post : {1, 2}) {
    EXPECT_TRUE(this->portal.requests()[post].startsWith("POST /_vti_product/_vti_add.asp HTTP"));
  }
}

TYPED_TEST(PortalEditors, AClickWithUnsavedEditsAsks) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->boxes->expect(Answer::Cancel);
  this->clickRow(1);
  EXPECT_EQ(this->boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
  EXPECT_EQ(this->boxes->asked[0].buttons, Buttons::YesNoCancel);
  EXPECT_EQ(this->name(), u"改"_s) << "the pane stays";
  EXPECT_EQ(this->list().selectedItem(), this->list().itemAt(1)) << "the selection has moved";
  EXPECT_TRUE(this->portal.requests().isEmpty());
}

TYPED_TEST(PortalEditors, NoAtAClickDropsTheEditAndLoads) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->boxes->expect(Answer::No);
  this->show(1, this->record(u"40000"_s, u"乙"_s));
  EXPECT_EQ(this->name(), u"乙"_s);
  EXPECT_EQ(this->status(), QString());
  EXPECT_TRUE(this->screen().unload()) << "nothing to save";
}

TYPED_TEST(PortalEditors, YesAtAClickSavesUnderTheRowSelectedBefore) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->portalGives(u"71"_s);
  this->boxes->expect(Answer::Yes);
  this->clickRow(1);
  EXPECT_EQ(this->savedIds(), QStringList{u"id=71 and qiye_id=25"_s});
  EXPECT_EQ(this->list().itemAt(0)->text(), u"改"_s);
  EXPECT_EQ(this->list().itemAt(1)->text(), u"乙"_s);
  EXPECT_EQ(this->list().itemAt(1)->key(), u"40000 ID"_s);
  EXPECT_EQ(this->status(), u"保存成功！！！"_s);
  ASSERT_TRUE(this->settled(1 + TypeParam::longTextsAtClick));
}

TYPED_TEST(PortalEditors, AnEarlierTickStillRulesWhereAYesSavesTo) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->clickCheckBox(1);
  this->portalGives(u"40000"_s);
  this->boxes->expect(Answer::Yes);
  this->clickRow(0);
  EXPECT_EQ(this->savedIds(), QStringList{u"id=40000 and qiye_id=25"_s});
  EXPECT_EQ(this->list().itemAt(1)->text(), u"甲"_s) << "the pane's name under the ticked row";
}

TYPED_TEST(PortalEditors, AfterACancelTheClickedRowIsTheOneSavedTo) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->boxes->expect(Answer::Cancel);
  this->clickRow(1);
  this->portalGives(u"40000"_s);
  this->boxes->expect(Answer::Yes);
  this->clickRow(0);
  EXPECT_EQ(this->savedIds(), QStringList{u"id=40000 and qiye_id=25"_s});
}

TYPED_TEST(PortalEditors, AFailedSaveAtAClickStillSaysSavedAndGoesOn) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->portal.answerWith({"<html></html>", this->page({this->record(u"40000"_s, u"乙"_s)})});
  this->boxes->expect(Answer::Yes);
  this->clickRow(1);
  EXPECT_EQ(this->status(), u"保存成功！！！"_s);
  EXPECT_EQ(this->name(), u"乙"_s);
  EXPECT_EQ(this->list().itemAt(0)->text(), u"甲"_s);
}

TYPED_TEST(PortalEditors, TickingAnotherRowSelectsItWithoutLoadingAndASaveOverwritesIt) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->clickCheckBox(1);
  EXPECT_EQ(this->list().selectedItem(), this->list().itemAt(1));
  EXPECT_EQ(this->name(), u"甲"_s);
  EXPECT_TRUE(this->portal.requests().isEmpty());
  this->portalGives(u"40000"_s);
  this->press(u"Update"_s);
  EXPECT_EQ(this->savedIds(), QStringList{u"id=40000 and qiye_id=25"_s});
  EXPECT_TRUE(this->target(0).endsWith("&NOTH=" + UrlEncodeField(u"False"_s).toLatin1()));
  EXPECT_EQ(this->list().itemAt(1)->text(), u"甲"_s);
}

TYPED_TEST(PortalEditors, TickingTheShownRowSendsItsFlag) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->clickCheckBox(0);
  this->portalGives(u"71"_s);
  this->press(u"Update"_s);
  EXPECT_TRUE(this->target(0).endsWith("&NOTH=" + UrlEncodeField(u"True"_s).toLatin1()));
}

TYPED_TEST(PortalEditors, AddMakesATickedSelectedRowWithoutKeyAndIcon) {
  this->openTwo();
  this->press(u"Add"_s);
  const ListItem* row = this->list().itemAt(2);
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->text(), text(TypeParam::newRow));
  EXPECT_EQ(row->key(), QString());
  EXPECT_EQ(row->icon(), QString());
  EXPECT_TRUE(row->isChecked());
  EXPECT_EQ(this->list().selectedItem(), row);
  EXPECT_EQ(this->name(), text(TypeParam::newRow));
  EXPECT_EQ(this->field(0), u"图书"_s);
  EXPECT_TRUE(this->isEnabled(u"Update"_s));
  this->portalGives(u"88"_s);
  this->press(u"Update"_s);
  EXPECT_EQ(this->savedIds(), QStringList{u"id=0 and qiye_id=25"_s});
  EXPECT_EQ(this->list().itemAt(2)->key(), u"88 ID"_s);
}

TYPED_TEST(PortalEditors, ClosingAsksAndYesSaves) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->boxes->expect(Answer::Cancel);
  EXPECT_FALSE(this->screen().unload());
  this->portalGives(u"71"_s);
  this->boxes->expect(Answer::Yes);
  this->press(u"Exit"_s);
  EXPECT_FALSE(isLoaded<typename TypeParam::Screen>());
  EXPECT_EQ(this->savedIds(), QStringList{u"id=71 and qiye_id=25"_s});
  ASSERT_TRUE(this->settled(1 + TypeParam::longTextsAtClick));
  EXPECT_EQ(this->portal.requests().size(), 1 + TypeParam::longTextsAtClick);
}

TYPED_TEST(PortalEditors, ClosingWithYesClosesThoughTheSaveFails) {
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->type(TypeParam::name, u"改"_s);
  this->portal.answerWith({"<html></html>"});
  this->boxes->expect(Answer::Yes);
  EXPECT_TRUE(this->screen().unload());
}

}  // namespace

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

#include "GoodsFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class FrmXIMUList : public GoodsFixture {};

TEST_F(FrmXIMUList, ListsTheCompanysRowsWithTheirLiveFlags) {
  addGoods(3, 0, u"别家的书"_s, true, 2);
  ASSERT_EQ(list().itemCount(), 2);
  EXPECT_EQ(list().itemAt(0)->text(), u"大学语文"_s);
  EXPECT_EQ(list().itemAt(0)->key(), u"1 ID"_s);
  EXPECT_EQ(list().itemAt(0)->icon(), u"Ximu"_s);
  EXPECT_TRUE(list().itemAt(0)->isChecked());
  EXPECT_FALSE(list().itemAt(1)->isChecked());
  EXPECT_EQ(list().model()->headerData(0, Qt::Horizontal).toString(), u"商品名称"_s);
}

TEST_F(FrmXIMUList, ShowsTheFirstRowOnLoadWithoutUnsavedMark) {
  EXPECT_EQ(list().selectedItem(), list().itemAt(0));
  const QStringList shown = {
      u"图书"_s, u"N1"_s,         u"大学语文"_s,         u"25.50"_s, u"说明"_s, u"010"_s,
      u"教材"_s, u"青禾出版社"_s, u"第一行\r\n第二行"_s, u"平装"_s};
  for (int index = 0; index < shown.size(); ++index) EXPECT_EQ(field(index), shown[index]) << index;
  EXPECT_EQ(screen().txtFields(6)->Tag, u"12"_s);
  EXPECT_EQ(screen().txtFields(7)->Tag, u"5"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), QString()) << "nothing was edited, so nothing is saved";
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(FrmXIMUList, HasItsLabelsAndButtons) {
  const QStringList labels = {u"行    业"_s, u"编    号"_s, u"名    称"_s,
                              u"价    格"_s, u"说    明"_s, u"箱 /  包"_s,
                              u"类    别"_s, u"品    牌"_s, u"介    绍"_s};
  for (int index = 0; index < labels.size(); ++index) {
    auto* label = screen().findChild<QLabel*>(u"LabelXM(%1)"_s.arg(index));
    ASSERT_NE(label, nullptr) << index;
    EXPECT_EQ(label->text(), labels[index]);
  }
  EXPECT_EQ(screen().findChild<QLabel*>(u"LabelXM(9)"_s), nullptr);
  EXPECT_EQ(screen().windowTitle(), u"商品登记(本地)"_s);
  const QList<QStringList> buttons = {{u"Print"_s, u"打印"_s, u"Print"_s},
                                      {u"Add"_s, u"增加"_s, u"Add"_s},
                                      {u"Save"_s, u"保存"_s, u"Save"_s},
                                      {u"Exit"_s, u"退出"_s, u"Exit"_s}};
  for (const QStringList& button : buttons) {
    QAction* action = screen().Toolbar1->button(button[0]);
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->text(), button[1]);
    EXPECT_EQ(action->toolTip(), button[2]);
  }
  const auto* search = screen().findChild<QLineEdit*>(u"txtSelect.editor"_s);
  ASSERT_NE(search, nullptr);
  EXPECT_EQ(search->placeholderText(), u"查找"_s);
  EXPECT_NE(screen().findChild<QWidget*>(u"Splitter"_s), nullptr);
}

TEST_F(FrmXIMUList, EmptyListLeavesSaveDisabledAndAddEnabled) {
  store.exec(u"DELETE FROM XIMU"_s);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_TRUE(isEnabled(u"Add"_s));
  EXPECT_FALSE(isEnabled(u"Save"_s));
}

TEST_F(FrmXIMUList, ClickingAnotherRowDropsUnsavedEditsWithoutAsking) {
  type(2, u"改过的名字"_s);
  clickRow(1);
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(field(2), u"高等数学"_s);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"大学语文"_s);
  clickRow(0);
  EXPECT_EQ(field(2), u"大学语文"_s);
}

TEST_F(FrmXIMUList, TheLoadOfAClickMarksTheScreenAgainWhereATextDiffers) {
  goOffline();
  clickRow(1);
  boxes->expect(Answer::No);
  EXPECT_TRUE(screen().unload());
  ASSERT_EQ(boxes->texts(), QStringList{u"数据尚未保存，是否保存"_s});
}

TEST_F(FrmXIMUList, AClickOnTheSameRowLeavesTheScreenUnmarked) {
  clickRow(0);
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(FrmXIMUList, TickingOnlineSelectsAndLoadsTheRowAndMarksIt) {
  clickCheckBox(1);
  EXPECT_EQ(list().selectedItem(), list().itemAt(1));
  EXPECT_EQ(field(2), u"高等数学"_s);
  EXPECT_TRUE(list().itemAt(1)->isChecked());
  portalGives(u"90"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT NOTH FROM XIMU WHERE id=2"_s).toInt(), 1);
}

TEST_F(FrmXIMUList, TickingTheSelectedRowMarksItAndKeepsItsEdits) {
  type(2, u"新名"_s);
  clickCheckBox(0);
  EXPECT_EQ(field(2), u"新名"_s);
  portalGives(u"71"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.rows(u"SELECT XIMU,NOTH FROM XIMU WHERE id=1"_s),
            QList<QVariantList>({{u"新名"_s, 0}}));
}

TEST_F(FrmXIMUList, TickingOfflineChangesNothingButTheBox) {
  goOffline();
  clickCheckBox(1);
  EXPECT_TRUE(list().itemAt(1)->isChecked());
  EXPECT_EQ(list().selectedItem(), list().itemAt(0));
  press(u"Save"_s);
  EXPECT_EQ(status(), QString());
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_FALSE(list().itemAt(1)->isChecked()) << "the tick is gone at the next load";
}

TEST_F(FrmXIMUList, AddMakesACheckedSelectedRowWithItsDefaults) {
  press(u"Add"_s);
  ASSERT_EQ(list().itemCount(), 3);
  const ListItem* row = list().itemAt(2);
  EXPECT_EQ(list().selectedItem(), row);
  EXPECT_EQ(row->text(), u"新添商品"_s);
  EXPECT_EQ(row->key(), QString());
  EXPECT_EQ(row->icon(), QString());
  EXPECT_TRUE(row->isChecked());
  const QStringList shown = {u"图书"_s, u"NO"_s,   u"新添商品"_s, u"0"_s,    u"说明"_s,
                             u"1"_s,    QString(), QString(),     QString(), QString()};
  for (int index = 0; index < shown.size(); ++index) EXPECT_EQ(field(index), shown[index]) << index;
  EXPECT_EQ(screen().txtFields(6)->Tag, u"12"_s) << "the ids of the row shown before stay";
}

TEST_F(FrmXIMUList, OnAnEmptyListANewRowMustBeClickedBeforeItCanBeSaved) {
  store.exec(u"DELETE FROM XIMU"_s);
  press(u"Add"_s);
  EXPECT_FALSE(isEnabled(u"Save"_s));
  clickRow(0);
  EXPECT_TRUE(isEnabled(u"Save"_s));
  EXPECT_EQ(field(2), u"新添商品"_s) << "there is no record to load, so the fields stay";
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT count(*) FROM XIMU"_s).toInt(), 0) << "the click cleared the mark";
  type(2, u"第一本"_s);
  portalGives(u"5"_s);
  press(u"Save"_s);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU"_s).toString(), u"第一本"_s);
}

TEST_F(FrmXIMUList, ARowWhoseIdIsBeyondSixteenBitsCannotBeLoadedAndCannotBeSaved) {
  addGoods(40000, 0, u"第四万本"_s, true);
  ASSERT_EQ(list().itemCount(), 3);
  boxes->expect(Answer::Ok);
  clickRow(2);
  EXPECT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(field(2), u"大学语文"_s);
  EXPECT_FALSE(isEnabled(u"Save"_s));
}

TEST_F(FrmXIMUList, TextFromTheStoreIsShownAsPlainText) {
  store.exec(u"UPDATE XIMU SET XIMU='<b>粗</b>&amp;' WHERE id=1"_s);
  EXPECT_EQ(list().itemAt(0)->text(), u"<b>粗</b>&amp;"_s);
  EXPECT_EQ(field(2), u"<b>粗</b>&amp;"_s);
}

struct PriceRow {
  int field;
  QString text;
  bool accepted;
};

class FrmXIMUValidation : public GoodsFixture, public testing::WithParamInterface<PriceRow> {};

TEST_P(FrmXIMUValidation, HoldsTheFocusOnAPriceOrPackThatIsNoNumber) {
  ASSERT_TRUE(QTest::qWaitFor([&] { return screen().window()->isActiveWindow(); }));
  type(GetParam().field, GetParam().text);
  QWidget* editor = screen().txtFields(GetParam().field)->editor();
  ASSERT_TRUE(editor->hasFocus());
  if (!GetParam().accepted) boxes->expect(Answer::Ok);
  screen().txtFields(2)->editor()->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(QTest::qWaitFor([&] { return editor->hasFocus() != GetParam().accepted; }));
  EXPECT_EQ(boxes->texts(),
            GetParam().accepted ? QStringList() : QStringList{u"必须是数值,请重新输入"_s});
  EXPECT_EQ(field(GetParam().field), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Fields, FrmXIMUValidation,
                         testing::Values(PriceRow{3, u"abc"_s, false}, PriceRow{3, u""_s, false},
                                         PriceRow{3, u"12元"_s, false}, PriceRow{3, u"-5"_s, true},
                                         PriceRow{3, u"1,234.5"_s, true},
                                         PriceRow{5, u"一"_s, false}, PriceRow{5, u"99"_s, true},
                                         PriceRow{4, u"abc"_s, true}));

TEST_F(FrmXIMUList, F1OpensTheHelpWithOrWithoutALink) {
  int opened = 0;
  state.openHelp = [&] { ++opened; };
  QTest::keyClick(screen().txtFields(2)->editor(), Qt::Key_F1);
  goOffline();
  QTest::keyClick(&list(), Qt::Key_F1);
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(screen().Toolbar1->button(u"Help"_s), nullptr);
}

}  // namespace

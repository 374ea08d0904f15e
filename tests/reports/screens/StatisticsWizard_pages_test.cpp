#include <QCheckBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>

#include "WizardFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class WizardPages : public WizardFixture {
 protected:
  static std::string buttons(const StatisticsWizard& wizard) {
    std::string result;
    for (const std::size_t i : {1U, 2U, 3U, 4U}) {
      result += wizard.cmdNav.at(i)->isEnabled() ? '1' : '0';
    }
    return result;
  }
};

TEST_F(WizardPages, StartOnTheFirstPageWithTodayAndTheCategoryOption) {
  const QDate before = QDate::currentDate();
  for (StatisticsWizard* wizard : {static_cast<StatisticsWizard*>(&wizard<FrmQueryJIHU>()),
                                   static_cast<StatisticsWizard*>(&wizard<FrmQueryXISH>())}) {
    EXPECT_TRUE(wizard->isVisible());
    EXPECT_EQ(wizard->mStep, 0);
    EXPECT_FALSE(wizard->mCanFinish);
    EXPECT_EQ(wizard->SSTab1->tab(), 0);
    EXPECT_EQ(buttons(*wizard), "1010");
    EXPECT_TRUE(wizard->Option1.at(1)->isChecked());
    for (const DatePicker* picker : {wizard->DTPickerFrom, wizard->DTPickerTo}) {
      ASSERT_TRUE(picker->value().has_value());
      EXPECT_GE(*picker->value(), before);
      EXPECT_LE(*picker->value(), QDate::currentDate());
    }
    EXPECT_EQ(wizard->comboDawe->listIndex(), -1);
    EXPECT_EQ(wizard->comboDawe->currentText(), QString());
  }
}

TEST_F(WizardPages, FinishIsOfferedOnlyAfterWalkingToTheEnd) {
  auto& purchase = wizard<FrmQueryJIHU>();
  const std::vector<std::pair<int, std::string>> walk{
      {3, "1110"}, {3, "1110"}, {3, "1110"}, {3, "1110"}, {3, "1101"},  // to page 5
      {2, "1110"},                                                      // page 4 takes it away
      {3, "1101"}, {2, "1110"}, {2, "1110"}, {2, "1110"}, {2, "1110"}, {2, "1010"}};
  int page = 0;
  for (const auto& [button, wanted] : walk) {
    press(purchase, static_cast<std::size_t>(button));
    page += button == 3 ? 1 : -1;
    EXPECT_EQ(purchase.mStep, page);
    EXPECT_EQ(purchase.SSTab1->tab(), page);
    EXPECT_EQ(buttons(purchase), wanted) << "on page " << page;
    EXPECT_EQ(purchase.mCanFinish, page == 5);
  }
}

TEST_F(WizardPages, AJumpToAnEarlyPageKeepsWhatTheGroupingsDecided) {
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.SetStep(5);
  purchase.SetStep(2);
  EXPECT_TRUE(purchase.mCanFinish);
  EXPECT_EQ(buttons(purchase), "1111");
  purchase.SetStep(4);
  EXPECT_EQ(buttons(purchase), "1110");
}

TEST_F(WizardPages, AreNotWalkedByTheirTabs) {
  auto& purchase = wizard<FrmQueryJIHU>();
  press(purchase, 3);
  QTabBar* tabs = purchase.SSTab1->tabBar();
  QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(4).center());
  EXPECT_EQ(purchase.SSTab1->tab(), 1);
  QTest::keyClick(purchase.SSTab1, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(purchase.SSTab1->tab(), 1);
  EXPECT_EQ(purchase.mStep, 1);
}

TEST_F(WizardPages, HaveTheirCaptionsFramesAndPictures) {
  const auto check = [](StatisticsWizard& wizard) {
    const QStringList tabs{u"部门"_s,     u"选择类别"_s, u"日期范围"_s,
                           u"进货范围"_s, u"分组条件"_s, u"显示方式"_s};
    const QStringList frames{u"商品类别"_s, u"商品名称"_s, u"日期范围"_s,
                             u"订单范围"_s, u"商品汇总"_s, u"商品明细"_s};
    ASSERT_EQ(wizard.SSTab1->count(), 6);
    for (int page = 0; page < 6; ++page) {
      EXPECT_EQ(wizard.SSTab1->tabText(page), tabs.at(page));
      const auto* frame = wizard.findChild<QGroupBox*>(u"Frame%1"_s.arg(page + 1));
      ASSERT_NE(frame, nullptr);
      EXPECT_EQ(frame->title(), frames.at(page));
      EXPECT_TRUE(wizard.SSTab1->widget(page)->isAncestorOf(frame));
      const auto* picture = wizard.findChild<QLabel*>(u"imgStep(%1)"_s.arg(page));
      ASSERT_NE(picture, nullptr);
      EXPECT_FALSE(picture->pixmap().isNull());
      EXPECT_TRUE(wizard.SSTab1->widget(page)->isAncestorOf(picture));
    }
    const QStringList captions{u"取消"_s, u"上一步(&B)"_s, u"下一步(&N)"_s, u"完成(&F)"_s};
    for (int i = 0; i < 4; ++i) {
      const auto* button = wizard.picNav->findChild<QPushButton*>(u"cmdNav(%1)"_s.arg(i + 1));
      ASSERT_NE(button, nullptr);
      EXPECT_EQ(button->text(), captions.at(i));
    }
    for (const QString& name :
         {u"SSTab1"_s, u"TreeView1"_s, u"TreeView2"_s, u"DTPickerFrom"_s, u"DTPickerTo"_s,
          u"comboDawe"_s, u"ComboYewu"_s, u"ComboKufa"_s, u"CheckDetail"_s, u"picNav"_s}) {
      EXPECT_NE(wizard.findChild<QWidget*>(name), nullptr) << name.toStdString();
    }
    EXPECT_EQ(wizard.CheckDetail->text(), u"只看合计数"_s);
  };
  check(wizard<FrmQueryJIHU>());
  check(wizard<FrmQueryXISH>());
}

TEST_F(WizardPages, DifferInTheirWords) {
  const auto labels = [](const StatisticsWizard& wizard) {
    QStringList result;
    for (const auto* label : wizard.findChild<QGroupBox*>(u"Frame4"_s)->findChildren<QLabel*>()) {
      result.append(label->text());
    }
    return result;
  };
  auto& purchase = wizard<FrmQueryJIHU>();
  auto& sales = wizard<FrmQueryXISH>();
  EXPECT_EQ(purchase.objectName(), u"FrmQueryJIHU"_s);
  EXPECT_EQ(sales.objectName(), u"FrmQueryXISH"_s);
  EXPECT_EQ(purchase.windowTitle(), u"订单进货统计"_s);
  EXPECT_EQ(sales.windowTitle(), u"订单销售统计"_s);
  EXPECT_EQ(labels(purchase), (QStringList{u"进货单位"_s, u"业务员"_s, u"入库"_s, u"进货单号"_s}));
  EXPECT_EQ(labels(sales), (QStringList{u"销售单位"_s, u"业务员"_s, u"出库"_s, u"销售单号"_s}));
  EXPECT_NE(purchase.findChild<TextBox*>(u"TextJihu_no"_s), nullptr);
  EXPECT_NE(sales.findChild<TextBox*>(u"TextXish_no"_s), nullptr);
}

TEST_F(WizardPages, OfferTheirOptionsOnTheLastTwo) {
  struct Row {
    StatisticsWizard& wizard;
    int groupings;
    QStringList texts;
  };
  const std::vector<Row> rows{
      {wizard<FrmQueryJIHU>(),
       6,
       {u"按月分组"_s, u"按商品分类"_s, u"按供商分组"_s, u"按库房分组"_s, u"按业务员分组"_s,
        u"按月分组"_s, u"商品明细表"_s}},
      {wizard<FrmQueryXISH>(),
       8,
       {u"按月分组"_s, u"按商品分类"_s, u"按客户分组"_s, u"按客户每日分组"_s, u"按库房分组"_s,
        u"按库房每日分组"_s, u"按业务员分组"_s, u"按月分组"_s, u"商品明细"_s, u"商品明细"_s}}};
  for (const Row& row : rows) {
    ASSERT_EQ(static_cast<qsizetype>(row.wizard.Option1.size()), row.texts.size());
    for (int i = 0; i < row.texts.size(); ++i) {
      const auto* option = row.wizard.findChild<QRadioButton*>(u"Option1(%1)"_s.arg(i));
      ASSERT_NE(option, nullptr);
      EXPECT_EQ(option->text(), row.texts.at(i));
      EXPECT_TRUE(row.wizard.SSTab1->widget(i < row.groupings ? 4 : 5)->isAncestorOf(option)) << i;
    }
  }
}

TEST_F(WizardPages, HoldOneExclusiveSetOfOptions) {
  auto& purchase = wizard<FrmQueryJIHU>();
  walkTo(purchase, 5);
  purchase.Option1.at(6)->click();
  EXPECT_FALSE(purchase.Option1.at(1)->isChecked());
  press(purchase, 2);
  purchase.Option1.at(3)->click();
  EXPECT_FALSE(purchase.Option1.at(6)->isChecked());
}

TEST_F(WizardPages, AreDoneWithTheKeyboardAlone) {
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&purchase));
  EXPECT_TRUE(purchase.TreeView1->hasFocus());
  // A mnemonic's press shows for a moment before it counts.
  QTest::keyClick(&purchase, Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return purchase.mStep == 1; }));
  QTest::keyClick(&purchase, Qt::Key_B, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return purchase.mStep == 0; }));
  purchase.cmdNav.at(3)->setFocus();
  for (int i = 0; i < 5; ++i) QTest::keyClick(purchase.cmdNav.at(3), Qt::Key_Return);
  EXPECT_EQ(purchase.mStep, 5);
  // The options here are reached although the chosen one is on the page before.
  purchase.CheckDetail->setFocus();
  QTest::keyClick(purchase.CheckDetail, Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_TRUE(purchase.Option1.at(6)->hasFocus());
  QTest::keyClick(purchase.Option1.at(6), Qt::Key_Space);
  EXPECT_TRUE(purchase.Option1.at(6)->isChecked());
  QTest::keyClick(&purchase, Qt::Key_F, Qt::AltModifier);
  ASSERT_TRUE(QTest::qWaitFor([] { return reports().size() == 1; }));
  EXPECT_EQ(reports().first()->objectName(), u"rptXIMU_GOKU"_s);
}

TEST_F(WizardPages, TheFocusOfAButtonThatGoesOffIsHandedToTheOneBesideIt) {
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&purchase));
  purchase.cmdNav.at(3)->setFocus();
  for (int i = 0; i < 5; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(purchase.mStep, 5);
  EXPECT_TRUE(purchase.cmdNav.at(4)->hasFocus()) << "so that Enter finishes";
  purchase.cmdNav.at(2)->setFocus();
  for (int i = 0; i < 5; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(purchase.mStep, 0);
  EXPECT_TRUE(purchase.cmdNav.at(3)->hasFocus());
}

TEST_F(WizardPages, TabComesToTheChosenOption) {
  auto& purchase = wizard<FrmQueryJIHU>();
  purchase.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&purchase));
  const auto tabbed = [&purchase] {
    purchase.cmdNav.at(purchase.mStep == 5 ? 4 : 3)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    return QApplication::focusWidget()->objectName();
  };
  walkTo(purchase, 4);
  EXPECT_EQ(tabbed(), u"Option1(1)"_s);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_TRUE(purchase.Option1.at(2)->isChecked());
  EXPECT_EQ(tabbed(), u"Option1(2)"_s);
  walkTo(purchase, 5);
  EXPECT_EQ(tabbed(), u"Option1(6)"_s) << "although the chosen one is on the page before";
  walkTo(purchase, 4);
  EXPECT_EQ(tabbed(), u"Option1(2)"_s);
  EXPECT_TRUE(purchase.Option1.at(2)->isChecked());
}

TEST_F(WizardPages, EscapeAndCancelUnload) {
  press(wizard<FrmQueryJIHU>(), 1);
  EXPECT_FALSE(isLoaded<FrmQueryJIHU>());
  QTest::keyClick(wizard<FrmQueryXISH>().TreeView1, Qt::Key_Escape);
  EXPECT_FALSE(isLoaded<FrmQueryXISH>());
}

}  // namespace

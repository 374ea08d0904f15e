#include <gtest/gtest.h>

#include <QTimer>

#include "SearchFixture.h"
#include "orders/chooser/frmGetQYXXX.h"
#include "orders/chooser/frmGetXIMU.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "orders/documents/FrmGOHU_JH.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "support/PortalProcess.h"
#include "values/numbers.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// A demo company in the book trade, logged in at a running portal with its demo trade.
class SearchAtPortal : public SearchFixture {
 protected:
  SearchAtPortal() {
    state.gWebServer = u"HTTP://"_s + running.host() + u"/"_s;
    state.gQiyeId = 1;
    state.gPageSize = 15;
    const QString login = RequestBuilder(state.gWebServer, paths::login)
                              .encoded(u"USER_NO"_s, u"1001"_s)
                              .encoded(u"USER_PASS"_s, u"123456"_s)
                              .encoded(u"SOFT_VER"_s, u"1.0"_s)
                              .url();
    EXPECT_TRUE(readPortal(login, EmptyAnswer::IsFailure, [](GetHtml& html) {
      html.GetRowItem();
      return true;
    }));
  }

  TreeNode* category(const QString& name) {
    const TreeNode* root = screen().TreeView1->root(0);
    for (int index = 0; index < root->childCount(); ++index) {
      if (root->childNode(index)->text() == name) return root->childNode(index);
    }
    return nullptr;
  }
  void find(int tab, const QList<TextBox*>& boxes_, const QStringList& words, QPushButton* button) {
    screen().SSTab1->setTab(tab);
    for (int field = 0; field < boxes_.size(); ++field) boxes_[field]->setText(words[field]);
    click(button);
  }
  void findGoods(const QStringList& words) {
    find(1, {screen().TxtField1(0), screen().TxtField1(1), screen().TxtField1(2)}, words,
         screen().Command1);
  }
  QStringList column(int number) {
    QStringList cells;
    for (int row = 0; row < list().itemCount(); ++row) {
      const ListItem* item = list().itemAt(row);
      cells << (number == 0 ? item->text() : item->subItem(number));
    }
    return cells;
  }
  /// Loads the pages that are left.
  void loadAll() {
    while (screen().Command5->isVisible()) click(screen().Command5);
  }

  PortalProcess running;
};

TEST_F(SearchAtPortal, TheTreeHasTwoLevelsOfTheOwnIndustry) {
  TreeNode* upper = category(u"文学"_s);
  ASSERT_NE(upper, nullptr);
  clickNode(upper);
  ASSERT_EQ(upper->childCount(), 4);
  EXPECT_EQ(upper->childNode(0)->text(), u"小说"_s);
  clickNode(upper->childNode(0));
  EXPECT_GT(list().itemCount(), 0);
}

TEST_F(SearchAtPortal, GoodsAreFoundByPartsOfTheirNameCategoryAndAttributes) {
  findGoods({u"语言"_s, {}, {}});
  ASSERT_GT(list().itemCount(), 0);
  for (const QString& name : names()) EXPECT_TRUE(name.contains(u"语言"_s));
  const qsizetype byName = list().itemCount();

  findGoods({u"语言"_s, u"建筑"_s, u"精装"_s});
  EXPECT_GT(list().itemCount(), 0);
  EXPECT_LE(list().itemCount(), byName);

  findGoods({{}, {}, u"16开"_s});
  EXPECT_GT(list().itemCount(), 0);
  findGoods({u"没有这样的书"_s, {}, {}});
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_FALSE(screen().Command5->isVisible());
}

TEST_F(SearchAtPortal, AQuoteInAWordFindsNothingAndHarmsNothing) {
  findGoods({u"x' or '1'='1"_s, {}, {}});
  EXPECT_EQ(list().itemCount(), 0);
  findGoods({u"语言"_s, {}, {}});
  EXPECT_GT(list().itemCount(), 0);
}

TEST_F(SearchAtPortal, PagesFollowOneAnotherWithoutGapsInTheOrderOfTheirIds) {
  findGoods({{}, {}, u"平装"_s});
  EXPECT_TRUE(screen().Command5->isVisible());
  loadAll();
  ASSERT_GT(list().itemCount(), 40);
  double last = 0;
  for (int row = 0; row < list().itemCount(); ++row) {
    const double id = Val(list().itemAt(row)->key());
    EXPECT_GT(id, last);
    last = id;
    EXPECT_EQ(list().itemAt(row)->tag(), QString::number(row / 15 + 1));
  }
}

TEST_F(SearchAtPortal, EnterprisesAndBrandsLeadToTheirGoods) {
  find(2, {screen().TxtField2(0), screen().TxtField2(1)}, {u"书"_s, u"南京"_s}, screen().Command2);
  ASSERT_EQ(screen().ListView2->itemCount(), 1);
  EXPECT_EQ(screen().ListView2->itemAt(0)->text(), u"青禾书店"_s);
  press(*screen().ListView2, 0);
  loadAll();
  EXPECT_GT(list().itemCount(), 100);
  for (const QString& enterprise : column(4)) EXPECT_EQ(enterprise, u"青禾书店"_s);

  find(3, {screen().TxtField3(0), screen().TxtField3(1)}, {u"青禾"_s, u"散文"_s},
       screen().Command3);
  ASSERT_EQ(screen().ListView3->itemCount(), 1);
  press(*screen().ListView3, 0);
  ASSERT_GT(list().itemCount(), 0);
  for (const QString& brand : column(7)) EXPECT_EQ(brand, u"501"_s);
}

TEST_F(SearchAtPortal, LikeGoodsOfARowAreFound) {
  findGoods({u"爸爸的大衣"_s, {}, {}});
  ASSERT_GT(list().itemCount(), 0);
  const QString brand = list().itemAt(0)->subItem(7);
  choose(0, u"mnuXimuy"_s);
  ASSERT_GT(list().itemCount(), 0);
  for (const QString& name : names()) EXPECT_EQ(name, u"爸爸的大衣"_s);
  choose(0, u"mnuChyey"_s);
  ASSERT_GT(list().itemCount(), 1);
  for (const QString& one : column(7)) EXPECT_EQ(one, brand);
}

TEST_F(SearchAtPortal, FromAFoundRowTheChooserShowsAllGoodsOfItsEnterprise) {
  find(2, {screen().TxtField2(0), screen().TxtField2(1)}, {u"小树苗"_s, {}}, screen().Command2);
  press(*screen().ListView2, 0);
  loadAll();
  const qsizetype sold = list().itemCount();
  ASSERT_GT(sold, 15);
  press(list(), 0, Qt::RightButton);
  screen().mnuGetx->close();
  EXPECT_EQ(state.gPartnerName, u"小树苗童书馆"_s);

  auto& chooser = defaultInstance<frmGetXIMU>();
  chooser.mOrderIdList = u","_s + textOf(Val(list().itemAt(1)->key())) + u',';
  chooser.showForm();
  EXPECT_EQ(chooser.ListView1->itemCount(), 15);
  ASSERT_TRUE(chooser.Command2->isVisible());
  EXPECT_EQ(chooser.Command2->text(), u"50%"_s);
  click(chooser.Command2);
  ASSERT_EQ(chooser.ListView1->itemCount(), sold);
  for (int row = 0; row < sold; ++row) {
    const ListItem* goods = chooser.ListView1->itemAt(row);
    EXPECT_EQ(goods->key(), list().itemAt(row)->key());
    EXPECT_EQ(goods->text(), list().itemAt(row)->subItem(1));
    EXPECT_EQ(goods->subItem(ChosenPrice), list().itemAt(row)->subItem(2));
    EXPECT_EQ(goods->subItem(ChosenQuantity), u"0"_s);
    EXPECT_GT(Val(goods->subItem(ChosenCartonSize)), 0);
    EXPECT_EQ(goods->isChecked(), row == 1);
  }
}

TEST_F(SearchAtPortal, AFoundRowBecomesAnOrderWithLinesTypedByKeyboardAlone) {
  findGoods({u"雨后的集市"_s, {}, {}});
  ASSERT_GT(list().itemCount(), 0);
  choose(0, u"mnuGOHU_JH"_s);
  auto& order = defaultInstance<FrmGOHU_JH>();
  EXPECT_EQ(order.txtFields(2)->text(), list().itemAt(0)->subItem(4));

  QTimer timer;
  timer.setInterval(1);
  QObject::connect(&timer, &QTimer::timeout, &timer, [&timer] {
    if (!isLoaded<frmGetXIMU>()) return;
    auto& chooser = defaultInstance<frmGetXIMU>();
    if (!chooser.isVisible() || QApplication::activeWindow() != &chooser) return;
    timer.stop();
    chooser.ListView1->setFocus();
    const auto key = [](Qt::Key one) { QTest::keyClick(QApplication::focusWidget(), one); };
    key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), u"25"_s);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), u"0.8"_s);
    key(Qt::Key_Return);
    key(Qt::Key_Escape);
    chooser.commandC->setFocus();
    key(Qt::Key_Return);
  });
  timer.start();
  auto* bar = order.Toolbar1;
  QTest::mouseClick(bar->widgetForAction(bar->button(u"Ximu"_s)), Qt::LeftButton);

  ASSERT_EQ(order.ListView1->itemCount(), 1);
  const ListItem& line = *order.ListView1->itemAt(0);
  EXPECT_EQ(line.subItem(2), u"25"_s);
  EXPECT_EQ(line.subItem(5), u"0.8"_s);
  EXPECT_EQ(Val(line.subItem(4)), 25 * Val(line.subItem(3)));
  EXPECT_FALSE(defaultInstance<frmGetXIMU>().isVisible());
}

TEST_F(SearchAtPortal, TheChooserWorksThroughTheRelayToo) {
  state.gPartnerId = 9;
  state.gUnicode = 1;
  EXPECT_EQ(defaultInstance<frmGetXIMU>().ListView1->itemCount(), 15);
  EXPECT_EQ(defaultInstance<frmGetXIMU>().Command2->text(), u"50%"_s);
}

TEST_F(SearchAtPortal, DetailsShowGoodsWithTheirAttributesAndTheEnterprise) {
  state.gGoodsId = 1;
  const auto& goods = defaultInstance<frmGetXIMUX>();
  QStringList shown;
  for (int row = 0; row < goods.ListView1->itemCount(); ++row) {
    shown << goods.ListView1->itemAt(row)->text() + u'=' + goods.ListView1->itemAt(row)->subItem(1);
  }
  EXPECT_EQ(shown.first(), u"名称=砖石的语言"_s);
  EXPECT_TRUE(shown.contains(u"价格=72.00"_s));
  EXPECT_TRUE(shown.contains(u"作者=江寻"_s));
  EXPECT_TRUE(shown.contains(u"开本=16开"_s));
  EXPECT_TRUE(goods.Text2->text().contains(u"。\r\n本版"_s)) << goods.Text2->text().toStdString();

  state.gPartnerId = 2;
  EXPECT_EQ(defaultInstance<frmGetQYXXX>().ListView1->itemAt(0)->subItem(1), u"明溪书屋"_s);
}

}  // namespace

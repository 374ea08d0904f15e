#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLabel>

#include "SearchFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

using GoodsSearch = SearchFixture;

TEST_F(GoodsSearch, OpensWithItsTabsColumnsAndTheUpperCategories) {
  EXPECT_EQ(screen().windowTitle(), u"商品检索"_s);
  EXPECT_TRUE(screen().isVisible());
  QStringList tabs;
  for (int tab = 0; tab < screen().SSTab1->count(); ++tab) tabs << screen().SSTab1->tabText(tab);
  EXPECT_EQ(tabs, (QStringList{u"类别"_s, u"商品"_s, u"企业"_s, u"品牌"_s}));
  EXPECT_EQ(screen().SSTab1->tab(), 0);
  const QList<std::pair<QString, int>> columns = {
      {u"编号"_s, 2000}, {u"书名称"_s, 2500}, {u"价格"_s, 1000}, {u"折扣"_s, 1500},
      {u"企业"_s, 2500}, {u"品牌"_s, 2500},   {QString(), 0},    {QString(), 0}};
  ASSERT_EQ(list().model()->columnCount(), columns.size());
  EXPECT_EQ(list().header()->length(), list().viewport()->width());
  list().setSpreadsColumns(false);
  for (int column = 0; column < columns.size(); ++column) {
    EXPECT_EQ(list().model()->headerData(column, Qt::Horizontal).toString(), columns[column].first);
    EXPECT_EQ(list().columnWidth(column), columns[column].second / 15);
  }
  for (const ListView* names : {screen().ListView2, screen().ListView3}) {
    ASSERT_EQ(names->model()->columnCount(), 1);
    EXPECT_EQ(names->model()->headerData(0, Qt::Horizontal).toString(), u"名称"_s);
  }
  EXPECT_FALSE(screen().Command5->isVisible());
  EXPECT_EQ(targets(), QStringList{categoriesTarget(0)});

  const TreeNode* root = screen().TreeView1->root(0);
  EXPECT_EQ(root->text(), u"图书"_s);
  EXPECT_EQ(root->Tag, u"haye"_s);
  EXPECT_TRUE(root->isExpanded());
  ASSERT_EQ(root->childCount(), 2);
  EXPECT_EQ(root->childNode(0)->text(), u"文学"_s);
  EXPECT_EQ(root->childNode(0)->Key, u"13 XID"_s);
  EXPECT_EQ(root->childNode(0)->Tag, u"lebi1"_s);
  EXPECT_EQ(root->childNode(1)->Key, u"22 XID"_s);
}

TEST_F(GoodsSearch, HasItsFieldsWithTheirLabels) {
  const QList<std::pair<TextBox*, QString>> fields = {
      {screen().TxtField1(0), u"名    称"_s}, {screen().TxtField1(1), u"类    别"_s},
      {screen().TxtField1(2), u"属    性"_s}, {screen().TxtField2(0), u"名    称"_s},
      {screen().TxtField2(1), u"地    址"_s}, {screen().TxtField3(0), u"名    称"_s},
      {screen().TxtField3(1), u"介    绍"_s}};
  for (const auto& [box, caption] : fields) {
    const auto labels = screen().findChildren<QLabel*>();
    const auto label = std::ranges::find_if(
        labels, [box](const QLabel* one) { return one->buddy() == box->editor(); });
    ASSERT_NE(label, labels.end()) << box->objectName().toStdString();
    EXPECT_EQ((*label)->text(), caption);
    EXPECT_EQ((*label)->textFormat(), Qt::PlainText);
  }
  EXPECT_EQ(screen().TxtField1(0)->objectName(), u"TxtField1(0)"_s);
  EXPECT_EQ(screen().TxtField3(1)->objectName(), u"TxtField3(1)"_s);
  EXPECT_EQ(screen().TxtField2(2), nullptr);
}

TEST_F(GoodsSearch, TheRequestsOfAQueryGoOutByteByByte) {
  nextAnswers({page({}), page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  clickNode(screen().TreeView1->root(0)->childNode(0));
  EXPECT_EQ(
      portal.requestTargets(),
      (QList<QByteArray>{
          "/_vti_login/_vti_detail_field_s.asp?STABLE=%4C%45%42%49&STRDATA=%69%64%2C%6C%65%62%69%2C"
          "&STOTHER=%50%5F%49%44%3D%31%33%20%41%4E%44%20%48%41%59%45%5F%49%44%3D%33",
          "/_vti_product/_vti_detail_onepage.asp?STABLE=%58%49%4D%55"
          "&STRDATA=%69%64%2C%78%69%6D%75%5F%6E%6F%2C%78%69%6D%75%2C%6A%69%67%65%78%2C%7A%68%6B%6F"
          "%2C%71%69%79%65%2C%63%68%79%65%2C%71%69%79%65%5F%69%64%2C%63%68%79%65%5F%69%64%2C"
          "&STOTHER=%4E%4F%54%48%3D%54%52%55%45%20%41%4E%44%20%4C%45%42%49%5F%49%44%3D%31%33"
          "&STPAGE=%31&STPAGESIZE=%32&STORDER=%4E%4F%54%48%2C%49%44",
          "/_vti_product/_vti_detail_page.asp?STABLE=%58%49%4D%55"
          "&STOTHER=%4E%4F%54%48%3D%54%52%55%45%20%41%4E%44%20%4C%45%42%49%5F%49%44%3D%31%33"
          "&STPAGESIZE=%32"}));
}

TEST_F(GoodsSearch, AResultRowHoldsItsCellsKeyIconAndPage) {
  fillResult({found(u"7"_s, u"大学语文"_s)});
  ASSERT_EQ(list().itemCount(), 1);
  const ListItem& row = *list().itemAt(0);
  EXPECT_EQ(row.key(), u"7 ID"_s);
  EXPECT_EQ(row.icon(), u"Ximu"_s);
  EXPECT_EQ(row.tag(), u"1"_s);
  QStringList cells{row.text()};
  for (int column = 1; column < 8; ++column) cells << row.subItem(column);
  EXPECT_EQ(cells, found(u"7"_s, u"大学语文"_s).mid(1));
}

// Categories.

TEST_F(GoodsSearch, TheRootAsksForNothing) {
  fillResult({found(u"7"_s, u"大学语文"_s)});
  clickNode(screen().TreeView1->root(0));
  EXPECT_EQ(list().itemCount(), 1);
  EXPECT_EQ(portal.requests().size(), 0);
  EXPECT_EQ(state.tray.state(), Tray::State::Connected) << "but looks at the link";
  goOffline();
  clickNode(screen().TreeView1->root(0));
  EXPECT_EQ(state.tray.state(), Tray::State::Offline);
}

TEST_F(GoodsSearch, AnUpperCategoryFetchesItsChildrenOnceAndAsksForItsGoods) {
  TreeNode* upper = screen().TreeView1->root(0)->childNode(0);
  nextAnswers({page({{u"14"_s, u"小说"_s}, {u"15"_s, u"散文"_s}}),
               page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  clickNode(upper);
  EXPECT_EQ(targets(),
            QStringList{categoriesTarget(13)} + queryTargets(u"NOTH=TRUE AND LEBI_ID=13"_s));
  ASSERT_EQ(upper->childCount(), 2);
  EXPECT_TRUE(upper->isExpanded());
  EXPECT_EQ(upper->childNode(0)->Key, u"14 XID"_s);
  EXPECT_EQ(upper->childNode(0)->Tag, u"lebi2"_s);
  EXPECT_EQ(names(), QStringList{u"大学语文"_s});

  nextAnswers({page({found(u"9"_s, u"高等数学"_s)}), count(u"1"_s)});
  clickNode(upper);
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND LEBI_ID=13"_s));
  EXPECT_EQ(names(), QStringList{u"高等数学"_s}) << "the list was cleared before";
}

TEST_F(GoodsSearch, ALowerCategoryAsksForItsGoodsAlone) {
  TreeNode* upper = screen().TreeView1->root(0)->childNode(0);
  nextAnswers({page({{u"14"_s, u"小说"_s}}), page({}), count(u"0"_s)});
  clickNode(upper);
  nextAnswers({page({found(u"9"_s, u"高等数学"_s)}), count(u"1"_s)});
  clickNode(upper->childNode(0));
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND LEBI_ID=14"_s));
  EXPECT_EQ(upper->childNode(0)->childCount(), 0) << "two levels and no more";
}

TEST_F(GoodsSearch, TheKeysWalkTheTreeAsClicksDo) {
  nextAnswers({page({}), page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  auto* tree = screen().TreeView1;
  tree->setSelectedNode(tree->root(0));
  QTest::keyClick(tree, Qt::Key_Down);
  EXPECT_EQ(targets().size(), 3);
  EXPECT_EQ(names(), QStringList{u"大学语文"_s});
}

TEST_F(GoodsSearch, WithoutALinkANodeAsksForNothing) {
  fillResult({found(u"7"_s, u"大学语文"_s)});
  goOffline();
  clickNode(screen().TreeView1->root(0)->childNode(1));
  EXPECT_EQ(portal.requests().size(), 0);
  EXPECT_EQ(list().itemCount(), 1);
}

// Words.

struct WordsCase {
  std::string name;
  QStringList words;
  QString query;
};

class GoodsByWords : public SearchFixture, public testing::WithParamInterface<WordsCase> {};

TEST_P(GoodsByWords, AreAskedForByTheWordsAsTyped) {
  screen().SSTab1->setTab(1);
  for (int field = 0; field < 3; ++field) {
    screen().TxtField1(field)->setText(GetParam().words[field]);
  }
  nextAnswers({page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  click(screen().Command1);
  EXPECT_EQ(targets(), queryTargets(GetParam().query));
  EXPECT_EQ(names(), QStringList{u"大学语文"_s});
}

INSTANTIATE_TEST_SUITE_P(
    GoodsSearch, GoodsByWords,
    testing::Values(
        WordsCase{"Name", {u"语文"_s, {}, {}}, u"noth=true and ximu like '%语文%'"_s},
        WordsCase{"Category", {{}, u"教材"_s, {}}, u"noth=true and lebi like '%教材%'"_s},
        WordsCase{
            "All",
            {u"语文"_s, u"教材"_s, u"16开"_s},
            u"noth=true and ximu like '%语文%' and lebi like '%教材%' and shxi like '%16开%'"_s},
        WordsCase{
            "AQuoteGoesAsItStands", {u"it's"_s, {}, {}}, u"noth=true and ximu like '%it's%'"_s}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(GoodsSearch, AQuoteIsSentByteByByteAsItWasTyped) {
  screen().SSTab1->setTab(1);
  screen().TxtField1(0)->setText(u"a'b"_s);
  nextAnswers({page({})});
  click(screen().Command1);
  EXPECT_TRUE(portal.requestTargets().first().contains(
      "&STOTHER=%6E%6F%74%68%3D%74%72%75%65%20%61%6E%64%20%78%69%6D%75%20%6C%69%6B%65%20%27%25"
      "%61%27%62%25%27&"));
}

TEST_F(GoodsSearch, WithoutAWordTheListIsClearedAndNothingAskedFor) {
  fillResult({found(u"7"_s, u"大学语文"_s)});
  screen().SSTab1->setTab(1);
  click(screen().Command1);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_EQ(portal.requests().size(), 0);
}

TEST_F(GoodsSearch, EnterInAFieldFinds) {
  screen().SSTab1->setTab(1);
  screen().TxtField1(2)->setText(u"平装"_s);
  nextAnswers({page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  QTest::keyClick(screen().TxtField1(2)->editor(), Qt::Key_Return);
  EXPECT_EQ(targets(), queryTargets(u"noth=true and shxi like '%平装%'"_s));
}

TEST_F(GoodsSearch, WithoutALinkNoButtonDoesAnything) {
  fillResult({found(u"7"_s, u"大学语文"_s)}, u"3"_s);
  goOffline();
  click(screen().Command5);
  EXPECT_EQ(screen().Command5->text(), u"33%"_s);
  screen().TxtField1(0)->setText(u"语文"_s);
  screen().TxtField2(0)->setText(u"书"_s);
  screen().TxtField3(0)->setText(u"青禾"_s);
  const QList<QPushButton*> buttons = {screen().Command1, screen().Command2, screen().Command3};
  for (int tab = 1; tab <= 3; ++tab) {
    screen().SSTab1->setTab(tab);
    click(buttons[tab - 1]);
  }
  EXPECT_EQ(list().itemCount(), 1);
  EXPECT_EQ(portal.requests().size(), 0);
}

TEST_F(GoodsSearch, TabWalksFromTheFieldsOverTheirButtonToWhatWasFound) {
  const struct {
    int tab;
    QStringList walk;
  } cases[] = {
      {0, {u"TreeView1"_s, u"ListView1"_s}},
      {1,
       {u"TxtField1(0).editor"_s, u"TxtField1(1).editor"_s, u"TxtField1(2).editor"_s, u"Command1"_s,
        u"ListView1"_s}},
      {2,
       {u"TxtField2(0).editor"_s, u"TxtField2(1).editor"_s, u"Command2"_s, u"ListView2"_s,
        u"ListView1"_s}},
      {3,
       {u"TxtField3(0).editor"_s, u"TxtField3(1).editor"_s, u"Command3"_s, u"ListView3"_s,
        u"ListView1"_s}},
  };
  fillResult({found(u"7"_s, u"大学语文"_s)}, u"3"_s);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&screen()));
  for (const auto& [tab, walk] : cases) {
    screen().SSTab1->setTab(tab);
    screen().SSTab1->setFocus();
    QStringList reached;
    while (reached.size() <= walk.size()) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      reached << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(reached, walk + QStringList{u"Command5"_s});
  }
}

// Enterprises and brands.

TEST_F(GoodsSearch, EnterprisesAreListedAndAPressAsksForTheGoodsOfOne) {
  screen().SSTab1->setTab(2);
  screen().TxtField2(0)->setText(u"书"_s);
  screen().TxtField2(1)->setText(u"北京"_s);
  nextAnswers({page({{u"31"_s, u"云集书社"_s}, {u"77"_s, u"明溪书屋"_s}})});
  click(screen().Command2);
  EXPECT_EQ(targets(), QStringList{rowsTarget(u"_vti_login"_s, u"QYXX"_s, u"id,qiye,"_s,
                                              u"qiye like '%书%' and dizh like '%北京%'"_s)});
  ListView& enterprises = *screen().ListView2;
  ASSERT_EQ(enterprises.itemCount(), 2);
  EXPECT_EQ(enterprises.itemAt(1)->key(), u"77 ID"_s);
  EXPECT_EQ(enterprises.itemAt(1)->text(), u"明溪书屋"_s);
  EXPECT_EQ(enterprises.itemAt(1)->icon(), u"Qyxx"_s);

  nextAnswers({page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  press(enterprises, 1);
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND QIYE_ID=77"_s));
  EXPECT_EQ(names(), QStringList{u"大学语文"_s});
}

TEST_F(GoodsSearch, BrandsAreListedAndAPressAsksForTheGoodsOfOne) {
  screen().SSTab1->setTab(3);
  screen().TxtField3(0)->setText(u"青"_s);
  screen().TxtField3(1)->setText(u"丛书"_s);
  nextAnswers({page({{u"501"_s, u"青禾文库"_s}})});
  click(screen().Command3);
  EXPECT_EQ(targets(), QStringList{rowsTarget(u"_vti_product"_s, u"mumu"_s, u"id,ximu,"_s,
                                              u"ximu like '%青%' and jish like '%丛书%'"_s)});
  ListView& brands = *screen().ListView3;
  ASSERT_EQ(brands.itemCount(), 1);
  EXPECT_EQ(brands.itemAt(0)->key(), u"501 ID"_s);
  EXPECT_EQ(brands.itemAt(0)->icon(), u"Ximu"_s);

  nextAnswers({page({found(u"7"_s, u"大学语文"_s)}), count(u"1"_s)});
  press(brands, 0);
  EXPECT_EQ(targets(), queryTargets(u"NOTH=TRUE AND CHYE_ID=501"_s));
}

TEST_F(GoodsSearch, NoWordOfAnEnterpriseOrBrandClearsTheirListAndAsksForNothing) {
  struct Case {
    int tab;
    QPushButton* find;
    ListView* names;
  };
  for (const auto& [tab, find, names] : {Case{2, screen().Command2, screen().ListView2},
                                         Case{3, screen().Command3, screen().ListView3}}) {
    names->addItem(u"1 ID"_s, u"一"_s);
    screen().SSTab1->setTab(tab);
    portal.clear();
    click(find);
    EXPECT_EQ(names->itemCount(), 0);
    EXPECT_EQ(portal.requests().size(), 0);
  }
}

TEST_F(GoodsSearch, TheSecondWordAloneBeginsTheCondition) {
  screen().SSTab1->setTab(2);
  screen().TxtField2(1)->setText(u"北京"_s);
  nextAnswers({page({})});
  click(screen().Command2);
  EXPECT_EQ(targets(), QStringList{rowsTarget(u"_vti_login"_s, u"QYXX"_s, u"id,qiye,"_s,
                                              u"dizh like '%北京%'"_s)});
  screen().SSTab1->setTab(3);
  screen().TxtField3(1)->setText(u"丛书"_s);
  nextAnswers({page({})});
  click(screen().Command3);
  EXPECT_EQ(targets(), QStringList{rowsTarget(u"_vti_product"_s, u"mumu"_s, u"id,ximu,"_s,
                                              u"jish like '%丛书%'"_s)});
}

TEST_F(GoodsSearch, APressBesideTheRowsAsksForNothing) {
  screen().SSTab1->setTab(2);
  ListView& enterprises = *screen().ListView2;
  enterprises.addItem(u"31 ID"_s, u"云集书社"_s);
  portal.clear();
  QTest::mouseClick(enterprises.viewport(), Qt::LeftButton, {},
                    QPoint(20, enterprises.viewport()->height() - 5));
  EXPECT_EQ(portal.requests().size(), 0);
}

TEST_F(GoodsSearch, AnEnterpriseOrBrandThatWentBetweenPressAndReleaseAsksForNothing) {
  struct Case {
    int tab;
    ListView* names;
    TextBox* word;
  };
  for (const auto& [tab, names, word] : {Case{2, screen().ListView2, screen().TxtField2(0)},
                                         Case{3, screen().ListView3, screen().TxtField3(0)}}) {
    screen().SSTab1->setTab(tab);
    names->addItem(u"31 ID"_s, u"云集书社"_s);
    const QPoint place = names->cellRect(names->itemAt(0)).center();
    QTest::mousePress(names->viewport(), Qt::LeftButton, {}, place);
    word->setText(u"书"_s);
    nextAnswers({page({})});
    QTest::keyClick(word->editor(), Qt::Key_Return);
    ASSERT_EQ(names->itemCount(), 0);
    ASSERT_EQ(portal.requests().size(), 1);
    QTest::mouseRelease(names->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(portal.requests().size(), 1);
  }
}

TEST_F(GoodsSearch, EnterOnAnEnterpriseOrBrandAsksForItsGoods) {
  struct Case {
    int tab;
    ListView* names;
    QString query;
  };
  for (const auto& [tab, names, query] :
       {Case{2, screen().ListView2, u"NOTH=TRUE AND QIYE_ID=31"_s},
        Case{3, screen().ListView3, u"NOTH=TRUE AND CHYE_ID=31"_s}}) {
    screen().SSTab1->setTab(tab);
    names->addItem(u"31 ID"_s, u"云集书社"_s);
    nextAnswers({page({}), count(u"0"_s)});
    QTest::keyClick(names, Qt::Key_Return);
    EXPECT_EQ(targets(), queryTargets(query));
  }
}

// Failures.

TEST_F(GoodsSearch, AResultThatBreaksOffKeepsTheRowsThatCame) {
  QByteArray broken = page({found(u"1"_s, u"一"_s), found(u"2"_s, u"二"_s)});
  broken.truncate(broken.lastIndexOf("<td"));
  broken += "</table>";
  nextAnswers({page({}), broken, count(u"2"_s)});
  clickNode(screen().TreeView1->root(0)->childNode(0));
  EXPECT_EQ(names(), QStringList{u"一"_s});
  EXPECT_EQ(screen().Command5->text(), u"50%"_s) << "the count is asked for all the same";
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(GoodsSearch, APortalThatIsGoneLeavesTheListsEmptyWithoutAWord) {
  screen();
  portal.setHandler([](const QByteArray&) {
    ScriptedServer::Reply reply;
    reply.reset = true;
    return reply;
  });
  clickNode(screen().TreeView1->root(0)->childNode(0));
  screen().SSTab1->setTab(2);
  screen().TxtField2(0)->setText(u"书"_s);
  click(screen().Command2);
  screen().SSTab1->setTab(3);
  screen().TxtField3(0)->setText(u"书"_s);
  click(screen().Command3);
  EXPECT_EQ(list().itemCount(), 0);
  EXPECT_EQ(screen().ListView2->itemCount(), 0);
  EXPECT_EQ(screen().ListView3->itemCount(), 0);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(GoodsSearch, WithoutCategoriesTheRootStandsAlone) {
  portal.answerWith({"<html>gone</html>"});
  EXPECT_EQ(screen().TreeView1->rootCount(), 1);
  EXPECT_EQ(screen().TreeView1->root(0)->childCount(), 0);
  EXPECT_TRUE(screen().isVisible());
}

TEST_F(GoodsSearch, ThroughTheRelayItFindsTheSame) {
  state.gUnicode = 1;
  screen();
  EXPECT_EQ(targets(), QStringList{u"/_vti_comm/review.asp?review="_s +
                                   encoded(u"HTTP://"_s + portal.host() + categoriesTarget(0))});
  EXPECT_EQ(screen().TreeView1->root(0)->childCount(), 2);
}

}  // namespace

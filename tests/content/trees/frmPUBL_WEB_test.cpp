#include "content/trees/frmPUBL_WEB.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTest>

#include "TreeFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString loadForums =
    u"/_vti_product/_vti_detail_field_s.asp"
    "?STABLE=%66%6F%72%75%6D"
    "&STRDATA=%69%64%2C%66%6F%72%75%6D%5F%6E%61%6D%65%2C%62%6F%72%64%65%72%5F%69%64%2C"
    "&STOTHER=%62%6F%72%64%65%72%5F%69%64%3D%30%20%6F%72%20%62%6F%72%64%65%72%5F%69%64%3D%32%35"
    "&STORDER=%49%44"_s;

/// Below the root: a forum of all (1) and two of the company (3, 4).
class Forums : public TreeFixture {
 protected:
  Forums() {
    beCompany(1, 2);
    answer({page({{u"1"_s, u"综合讨论"_s, u"0"_s},
                  {u"3"_s, u"青禾读书会"_s, u"25"_s},
                  {u"4"_s, u"馆配交流"_s, u"25"_s}})});
  }

  TreeScreen& open() override { return defaultInstance<frmPUBL_WEB>(); }

  TreeNode* ofAll() { return root()->childNode(0); }
  TreeNode* own() { return root()->childNode(1); }

  /// The company's first forum with two posts below it.
  void openForum() {
    screen();
    answer({page({{u"7"_s, u"书标贴在哪里？"_s}, {u"9"_s, u"数据能给 MARC 格式吗？"_s}})});
    click(own());
  }
  /// Its first post, without replies, shown.
  TreeNode* openPost() {
    openForum();
    answer({page({}), page({{u"黄惊蛰"_s, u"2026-8-20 10:02:00"_s, u"1"_s, u"正文"_s}})});
    TreeNode* post = own()->childNode(0);
    click(post);
    return post;
  }

  static QString postsTarget(const QString& condition) {
    return rowsTarget({{u"STABLE"_s, u"publish"_s},
                       {u"STRDATA"_s, u"id,content,"_s},
                       {u"STOTHER"_s, condition},
                       {u"STORDER"_s, u"ID"_s}});
  }
  static QString postTarget(const QString& id) {
    return rowsTarget({{u"STABLE"_s, u"publish"_s},
                       {u"STRDATA"_s, u"user_name,publish_time,return_num,content,"_s},
                       {u"STOTHER"_s, u"ID="_s + id}});
  }
  static QString saveTarget(const QString& id, const QString& name, const QString& live) {
    return addTarget({{u"stable"_s, u"forum"_s},
                      {u"stother"_s, u"id="_s + id},
                      {u"BORDER_ID"_s, u"25"_s},
                      {u"BORDER_NAME"_s, u"青禾书店"_s},
                      {u"FORUM_NAME"_s, name},
                      {u"NOTH"_s, live}});
  }
  static QString deleteTarget(const QString& id) {
    return u"/_vti_product/_vti_delete.asp"_s +
           query({{u"stable"_s, u"publish"_s}, {u"stother"_s, u"id="_s + id}});
  }
};

TEST_F(Forums, LoadShowsTheForumsThatTheCompanyMaySee) {
  EXPECT_EQ(screen().windowTitle(), u"论坛管理"_s);
  EXPECT_EQ(screen().objectName(), u"frmPUBL_WEB"_s);
  EXPECT_EQ(targets(), QStringList(loadForums));
  ASSERT_EQ(tree().rootCount(), 1);
  EXPECT_EQ(root()->Key, u"0 ID"_s);
  EXPECT_EQ(root()->text(), u"论坛"_s);
  EXPECT_EQ(root()->Tag, u"bume"_s);
  EXPECT_TRUE(root()->isExpanded());
  EXPECT_EQ(below(root()), QStringList({u"1 FID|综合讨论|glob"_s, u"3 FID|青禾读书会|forum"_s,
                                        u"4 FID|馆配交流|forum"_s}));
  for (TreeNode* node : {root(), ofAll(), own()}) {
    EXPECT_FALSE(node->icon(0).isNull());
    EXPECT_FALSE(node->isChecked()) << "the live flag is not read";
  }
  EXPECT_EQ(allowed(), QStringList());
  EXPECT_EQ(tree().selectedNode(), nullptr);
  EXPECT_EQ(status(), QString());
}

TEST_F(Forums, ASilentPortalLeavesTheRootAlone) {
  answer({noTable()});
  EXPECT_EQ(below(root()), QStringList());
  EXPECT_TRUE(root()->isExpanded());
  EXPECT_EQ(status(), QString());
}

TEST_F(Forums, RowsBeforeABrokenOneStay) {
  answer({page({{u"1"_s, u"综合讨论"_s, u"0"_s}, {u"3"_s}})});
  EXPECT_EQ(below(root()), QStringList(u"1 FID|综合讨论|glob"_s));
}

TEST_F(Forums, AnOwnForumLoadsItsPostsOnceAndCanBeRenamed) {
  openForum();
  EXPECT_EQ(targets().last(), postsTarget(u"p_id=0 and forum_id=3"_s));
  EXPECT_EQ(below(own()), QStringList({u"7 PID|书标贴在哪里？|publish"_s,
                                       u"9 PID|数据能给 MARC 格式吗？|publish"_s}));
  EXPECT_TRUE(own()->isExpanded());
  EXPECT_EQ(allowed(), QStringList(u"Update"_s));
  EXPECT_EQ(text(), QString());
  click(own());
  EXPECT_EQ(portal.requests().size(), 2) << "a second click finds the posts";
  EXPECT_EQ(below(own()).size(), 2);
}

TEST_F(Forums, AForumWithoutPostsIsAskedAgainAtEachClick) {
  screen();
  answer({page({})});
  click(own());
  click(own());
  EXPECT_EQ(portal.requests().size(), 3);
}

TEST_F(Forums, AFailedLoadOfPostsLeavesTheTreeAsItWas) {
  screen();
  answer({noTable()});
  click(own());
  EXPECT_EQ(below(own()), QStringList());
  EXPECT_EQ(allowed(), QStringList(u"Update"_s)) << "the forum was chosen all the same";
  EXPECT_EQ(status(), QString());
}

TEST_F(Forums, AForumOfAllLeavesTheFlagsOfTheNodeClickedBefore) {
  screen();
  answer({page({})});
  click(ofAll());
  EXPECT_EQ(allowed(), QStringList());
  click(own());
  click(ofAll());
  EXPECT_EQ(allowed(), QStringList(u"Update"_s));
  click(root());
  click(ofAll());
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
  EXPECT_EQ(portal.requests().size(), 2) << "it shows no posts here";
  EXPECT_EQ(below(ofAll()), QStringList());
}

TEST_F(Forums, AForumOfAllAfterALeafPostLeavesTheDeletion) {
  openPost();
  click(ofAll());
  EXPECT_EQ(allowed(), QStringList(u"Delete"_s));
}

TEST_F(Forums, UpdateOnAForumOfAllAsksThePortalWhichRefuses) {
  screen();
  answer({page({}), noTable()});
  click(own());
  click(ofAll());
  press(u"Update"_s);
  EXPECT_EQ(targets().last(), saveTarget(u"1"_s, u"综合讨论"_s, u"False"_s));
  EXPECT_EQ(status(), u"保存失败！！！"_s);
}

TEST_F(Forums, APostLoadsItsRepliesAndIsShown) {
  openForum();
  answer({page({{u"8"_s, u"可以，请在订单里注明。"_s}}),
          page({{u"黄惊蛰"_s, u"2026-8-20 10:02:00"_s, u"1"_s, u"第一行<br>第二行"_s}})});
  TreeNode* post = own()->childNode(0);
  click(post);
  EXPECT_EQ(targets()[2], postsTarget(u"P_ID=7"_s));
  EXPECT_EQ(targets()[3], postTarget(u"7"_s));
  EXPECT_EQ(below(post), QStringList(u"8 PID|可以，请在订单里注明。|publish"_s));
  EXPECT_TRUE(post->isExpanded());
  EXPECT_EQ(text(), u"黄惊蛰\r\n2026-8-20 10:02:00\r\n1\r\n第一行\r\n第二行"_s);
}

TEST_F(Forums, APostWhoseRepliesWereJustShownCanBeDeletedAndASecondClickWithdrawsIt) {
  openForum();
  answer({page({{u"8"_s, u"可以"_s}}), page({{u"黄"_s, u"2026-8-20"_s, u"1"_s, u"正文"_s}})});
  TreeNode* post = own()->childNode(0);
  click(post);
  EXPECT_EQ(allowed(), QStringList(u"Delete"_s));
  click(post);
  EXPECT_EQ(allowed(), QStringList());
  EXPECT_EQ(portal.requests().size(), 5) << "the post is shown again, its replies stay";
  EXPECT_EQ(targets().last(), postTarget(u"7"_s));
  EXPECT_EQ(below(post).size(), 1);
}

TEST_F(Forums, APostIsShownThoughItsRepliesFail) {
  openForum();
  answer({noTable(), page({{u"黄"_s, u"2026-8-20"_s, u"0"_s, u"正文"_s}})});
  click(own()->childNode(0));
  EXPECT_EQ(text(), u"黄\r\n2026-8-20\r\n0\r\n正文"_s);
}

TEST_F(Forums, APostThatThePortalDoesNotTellLeavesTheTextAsItWas) {
  openPost();
  const QString before = text();
  for (const QByteArray& reply : {page({}), noTable()}) {
    answer({page({}), reply});
    click(own()->childNode(1));
    EXPECT_EQ(text(), before);
  }
}

TEST_F(Forums, MarkupInAPostIsPlainText) {
  openForum();
  const QString content = u"&amp;nbsp;\"'; drop table"_s;
  answer({page({}), page({{u"x"_s, u""_s, u""_s, content}})});
  click(own()->childNode(0));
  EXPECT_EQ(text(), u"x\r\n\r\n\r\n"_s + content);
  auto* box = qobject_cast<QPlainTextEdit*>(screen().txtFields(0)->editor());
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(box->isReadOnly()) << "posts are written elsewhere";
}

TEST_F(Forums, OnlyTheHighestLevelAddsAndEveryLevelRenames) {
  for (const qint16 level : {qint16{-1}, qint16{0}, qint16{1}, qint16{2}}) {
    state.gUserLevel = level;
    answer({page({{u"3"_s, u"青禾读书会"_s, u"25"_s}}), page({})});
    click(root());
    EXPECT_EQ(allowed(), level == 2 ? QStringList(u"Add"_s) : QStringList()) << level;
    click(root()->childNode(0));
    EXPECT_EQ(allowed(), QStringList(u"Update"_s)) << level;
    leave();
  }
}

TEST_F(Forums, AddMakesAForumThatIsNamedInPlaceAndSaved) {
  click(root());
  press(u"Add"_s);
  TreeNode* added = root()->childNode(3);
  ASSERT_NE(added, nullptr);
  EXPECT_EQ(below(root()).last(), u"|新添论坛|forum"_s);
  EXPECT_FALSE(added->isChecked());
  EXPECT_FALSE(added->icon(0).isNull());
  EXPECT_EQ(tree().selectedNode(), added);
  EXPECT_EQ(allowed(), QStringList({u"Add"_s, u"Update"_s}));
  EXPECT_EQ(portal.requests().size(), 1) << "nothing is sent before the save";

  typeLabel(u"新书 & <预告>"_s);
  answer({page({{u"31"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(targets().last(), saveTarget(u"0"_s, u"新书 & <预告>"_s, u"False"_s));
  EXPECT_EQ(added->Key, u"31 ID"_s);
  EXPECT_EQ(added->text(), u"新书 & <预告>"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s);

  answer({page({})});
  click(added);
  EXPECT_EQ(targets().last(), postsTarget(u"p_id=0 and forum_id=31"_s)) << "the id is read back";
}

TEST_F(Forums, SaveAsItGoesOverTheWire) {
  screen();
  answer({page({})});
  click(own());
  press(u"Update"_s);
  EXPECT_EQ(targets().last(),
            u"/_vti_product/_vti_add.asp?stable=%66%6F%72%75%6D&stother=%69%64%3D%33"
            "&BORDER_ID=%32%35&BORDER_NAME=%C7%E0%BA%CC%CA%E9%B5%EA"
            "&FORUM_NAME=%C7%E0%BA%CC%B6%C1%CA%E9%BB%E1&NOTH=%46%61%6C%73%65"_s);
}

TEST_F(Forums, AddWithoutASelectedNodeDoesNothing) {
  click(root());
  tree().setSelectedNode(nullptr);
  press(u"Add"_s);
  EXPECT_EQ(below(root()).size(), 3);
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
}

TEST_F(Forums, AForumJustAddedAsksForThePostsOfForumZero) {
  click(root());
  press(u"Add"_s);
  answer({page({})});
  click(root()->childNode(3));
  EXPECT_EQ(targets().last(), postsTarget(u"p_id=0 and forum_id=0"_s));
}

TEST_F(Forums, RenamingStaysLocalUntilUpdate) {
  openForum();
  const auto sent = portal.requests().size();
  for (TreeNode* node : {root(), ofAll(), own(), own()->childNode(0)}) {
    tree().setSelectedNode(node);
    typeLabel(u"改名"_s);
    tree().finishLabelEdit();
    EXPECT_EQ(node->text(), u"改名"_s);
  }
  EXPECT_EQ(portal.requests().size(), sent);
  EXPECT_EQ(allowed(), QStringList(u"Update"_s));
}

TEST_F(Forums, ATickIsOnlySentWithTheSave) {
  openForum();
  clickCheckBox(own());
  clickCheckBox(ofAll());
  EXPECT_EQ(tree().selectedNode(), own());
  EXPECT_EQ(allowed(), QStringList(u"Update"_s));
  EXPECT_EQ(portal.requests().size(), 2);
  answer({page({{u"3"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(targets().last(), saveTarget(u"3"_s, u"青禾读书会"_s, u"True"_s));
  EXPECT_EQ(own()->Key, u"3 ID"_s);
}

TEST_F(Forums, ARefusalAndAnAnswerWithoutATableFailAndKeepTheKey) {
  openForum();
  for (const QByteArray& reply :
       {noTable(), page({{u"0"_s}}), page({{u"x"_s}}), QByteArray(), QByteArray("start_pos")}) {
    screen().StatusBar1->setText({});
    answer({reply});
    press(u"Update"_s);
    EXPECT_EQ(status(), u"保存失败！！！"_s) << reply.toStdString();
    EXPECT_EQ(own()->Key, u"3 FID"_s);
    EXPECT_EQ(allowed(), QStringList(u"Update"_s));
  }
}

TEST_F(Forums, EveryRowOfTheAnswerNamesTheForumAndTheLastOneStays) {
  openForum();
  answer({page({{u"12"_s}, {u"13"_s}})});
  press(u"Update"_s);
  EXPECT_EQ(own()->Key, u"13 ID"_s);
  answer({page({})});
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存成功！！！"_s) << "a table without rows names nothing";
  EXPECT_EQ(own()->Key, u"13 ID"_s);
}

TEST_F(Forums, ForumsMayEndUpWithEqualKeys) {
  openForum();
  answer({page({{u"4"_s}})});
  press(u"Update"_s);
  answer({page({{u"4"_s}})});
  click(root()->childNode(2));
  press(u"Update"_s);
  EXPECT_EQ(own()->Key, root()->childNode(2)->Key);
  EXPECT_EQ(targets().last(), saveTarget(u"4"_s, u"馆配交流"_s, u"False"_s));
}

TEST_F(Forums, DeleteRemovesThePostThatThePortalHasDeleted) {
  openPost();
  answer({page({{u"0"_s}})});
  press(u"Delete"_s);
  EXPECT_EQ(targets().last(), deleteTarget(u"7"_s));
  EXPECT_EQ(targets().last(),
            u"/_vti_product/_vti_delete.asp"
            "?stable=%70%75%62%6C%69%73%68&stother=%69%64%3D%37"_s);
  EXPECT_EQ(below(own()), QStringList(u"9 PID|数据能给 MARC 格式吗？|publish"_s));
  EXPECT_EQ(status(), u"删除成功！！！"_s);
}

TEST_F(Forums, AnAnswerThatIsZeroAsANumberRemovesThePost) {
  openPost();
  answer({page({{u"0.0"_s}})});
  press(u"Delete"_s);
  EXPECT_EQ(below(own()).size(), 1);
}

TEST_F(Forums, NothingIsSelectedBehindADeletionSoThatTheNextOneFails) {
  openPost();
  answer({page({{u"0"_s}})});
  press(u"Delete"_s);
  EXPECT_EQ(tree().selectedNode(), nullptr);
  const auto sent = portal.requests().size();
  press(u"Delete"_s);
  EXPECT_EQ(status(), u"删除失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), sent);
  EXPECT_EQ(below(own()).size(), 1);
}

TEST_F(Forums, TheDeletionsTextTellsOnlyThatThePortalHasAnswered) {
  openPost();
  for (const QString& count : {u"2"_s, u"-1"_s}) {
    screen().StatusBar1->setText({});
    answer({page({{count}})});
    press(u"Delete"_s);
    EXPECT_EQ(status(), u"删除成功！！！"_s);
    EXPECT_EQ(below(own()).size(), 2) << "the post is kept";
  }
  answer({page({})});
  press(u"Delete"_s);
  EXPECT_EQ(status(), u"删除成功！！！"_s);
  EXPECT_EQ(below(own()).size(), 2);
}

TEST_F(Forums, ADeletionWithoutATableFailsAndKeepsThePost) {
  openPost();
  answer({noTable()});
  press(u"Delete"_s);
  EXPECT_EQ(status(), u"删除失败！！！"_s);
  EXPECT_EQ(below(own()).size(), 2);
  EXPECT_EQ(allowed(), QStringList(u"Delete"_s));
}

TEST_F(Forums, SeveralRowsOfADeletionRemoveOnePost) {
  openPost();
  answer({page({{u"0"_s}, {u"0"_s}})});
  press(u"Delete"_s);
  EXPECT_EQ(below(own()).size(), 1);
}

TEST_F(Forums, NothingHereAsksForTheLink) {
  screen();
  goOffline();
  state.gAccessType = 0;
  links->asked.clear();
  answer({page({{u"7"_s, u"帖子"_s}})});
  click(own());
  press(u"Update"_s);
  EXPECT_EQ(below(own()).size(), 1);
  EXPECT_EQ(links->asked, QStringList());
  press(u"Exit"_s);
  EXPECT_FALSE(isLoaded<frmPUBL_WEB>());
}

TEST_F(Forums, InTheModeThatFetchesNothingAllRequestsFail) {
  openPost();
  state.gUnicode = 0;
  const auto sent = portal.requests().size();
  press(u"Delete"_s);
  EXPECT_EQ(status(), u"删除失败！！！"_s);
  click(own());
  press(u"Update"_s);
  EXPECT_EQ(status(), u"保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), sent);
}

TEST_F(Forums, AnUnreachablePortalFailsLikeASilentOne) {
  openPost();
  state.gWebServer = u"HTTP://127.0.0.1:1/"_s;
  press(u"Delete"_s);
  EXPECT_EQ(status(), u"删除失败！！！"_s);
  EXPECT_EQ(screen().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Forums, TheExpanderLoadsNothingAndChoosesNothing) {
  openForum();
  click(root());
  clickExpander(own());
  EXPECT_FALSE(own()->isExpanded());
  EXPECT_EQ(tree().selectedNode(), root());
  EXPECT_EQ(allowed(), QStringList(u"Add"_s));
  EXPECT_EQ(portal.requests().size(), 2);
}

TEST_F(Forums, TheArrowKeysChooseLikeTheMouse) {
  screen();
  answer({page({{u"7"_s, u"帖子"_s}})});
  click(ofAll());
  QTest::keyClick(&tree(), Qt::Key_Down);
  EXPECT_EQ(tree().selectedNode(), own());
  EXPECT_EQ(below(own()).size(), 1);
  EXPECT_EQ(allowed(), QStringList(u"Update"_s));
}

TEST_F(Forums, NeitherPaneBecomesTooNarrow) {
  auto& bar = *screen().findChild<QWidget*>(u"Splitter"_s);
  EXPECT_EQ(bar.width(), 5);
  auto& panes = *bar.parentWidget();
  const auto dragTo = [&](int x) {
    QTest::mousePress(&bar, Qt::LeftButton, {}, QPoint(1, 50));
    QTest::mouseMove(&bar, bar.mapFrom(&panes, QPoint(x, 50)));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(1, 50));
    return bar.x();
  };
  EXPECT_EQ(dragTo(2), 42);
  EXPECT_EQ(dragTo(panes.width() - 3), panes.width() - 42);
}

}  // namespace

#include "content/views/frmHELP.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "portal/url_encode.h"
#include "support/ClientFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> topTopics = {{u"1"_s, u"开始使用"_s}, {u"5"_s, u"商品"_s}};

QString helpTarget(const QString& fields, const QString& condition) {
  return u"/_vti_login/_vti_detail_field_s.asp?STABLE=%48%45%4C%50&STRDATA="_s +
         UrlEncodeField(fields) + u"&STOTHER="_s + UrlEncodeField(condition);
}
QString childrenTarget(int parent) {
  return helpTarget(u"id,help_no,"_s, u"P_ID=%1"_s.arg(parent));
}
QString textTarget(int id) {
  return helpTarget(u"help,"_s, u"ID=%1"_s.arg(id));
}

class Help : public ClientFixture {
 protected:
  Help() { portal.answerWith({page(topTopics)}); }

  frmHELP& screen() {
    auto& form = defaultInstance<frmHELP>();
    QApplication::setActiveWindow(form.window());
    return form;
  }
  TreeView& tree() { return *screen().TreeView1; }
  TreeNode* root() { return tree().root(0); }
  TreeNode* topic(int index) { return root()->childNode(index); }
  QString text() { return screen().txtFields->text(); }

  void press(const TreeNode* node, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(tree().viewport(), button, Qt::NoModifier,
                      tree().visualItemRect(node).center());
  }
  void release(const TreeNode* node, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(tree().viewport(), button, Qt::NoModifier,
                        tree().visualItemRect(node).center());
  }
};

TEST_F(Help, LoadShowsTheRootAndAsksForItsTopicsByteByByte) {
  EXPECT_EQ(screen().windowTitle(), u"系统帮助"_s);
  EXPECT_EQ(screen().objectName(), u"frmHELP"_s);
  ASSERT_EQ(portal.requests().size(), 1);
  EXPECT_TRUE(portal.requests()[0].startsWith(
      "GET /_vti_login/_vti_detail_field_s.asp?STABLE=%48%45%4C%50&STRDATA="
      "%69%64%2C%68%65%6C%70%5F%6E%6F%2C&STOTHER=%50%5F%49%44%3D%30 HTTP/1.1\r\n"))
      << portal.requests()[0].toStdString();
  ASSERT_EQ(tree().rootCount(), 1);
  EXPECT_EQ(root()->text(), u"欢迎使用青禾云集帮助"_s);
  EXPECT_EQ(root()->Tag, u"haye"_s);
  EXPECT_FALSE(root()->icon(0).isNull());
  EXPECT_TRUE(root()->isExpanded());
  ASSERT_EQ(root()->childCount(), 2);
  EXPECT_EQ(topic(0)->Key, u"1 XID"_s);
  EXPECT_EQ(topic(0)->text(), u"开始使用"_s);
  EXPECT_EQ(topic(0)->Tag, u"help"_s);
  EXPECT_FALSE(topic(0)->icon(0).isNull());
  EXPECT_EQ(text(), QString());
}

TEST_F(Help, APressOnATopicReadsItsTopicsAndThenItsText) {
  screen();
  portal.answerWith({page({{u"2"_s, u"登录与注册"_s}}), page({{u"先登录。<br>再注册。"_s}})});
  press(topic(0));
  EXPECT_EQ(targets().mid(1), QStringList({childrenTarget(1), textTarget(1)}));
  ASSERT_EQ(topic(0)->childCount(), 1);
  EXPECT_EQ(topic(0)->childNode(0)->Key, u"2 XID"_s);
  EXPECT_TRUE(topic(0)->isExpanded());
  EXPECT_EQ(text(), u"先登录。\r\n再注册。"_s);
  release(topic(0));
  EXPECT_EQ(portal.requests().size(), 3) << "the release asks for nothing";
  EXPECT_EQ(tree().selectedNode(), topic(0));
}

TEST_F(Help, ASecondPressOnATopicWithTopicsAsksForItsTextOnly) {
  screen();
  portal.answerWith({page({{u"2"_s, u"登录"_s}}), page({{u"先"_s}}), page({{u"后"_s}})});
  press(topic(0));
  release(topic(0));
  press(topic(0));
  EXPECT_EQ(targets().mid(3), QStringList{textTarget(1)});
  EXPECT_EQ(topic(0)->childCount(), 1);
  EXPECT_EQ(text(), u"后"_s);
}

TEST_F(Help, ATopicWithoutTopicsIsAskedForThemAtEachPress) {
  screen();
  portal.answerWith({page({}), page({{u"文"_s}}), page({}), page({{u"本"_s}})});
  press(topic(1));
  release(topic(1));
  press(topic(1));
  EXPECT_EQ(targets().mid(1),
            QStringList({childrenTarget(5), textTarget(5), childrenTarget(5), textTarget(5)}));
  EXPECT_EQ(text(), u"本"_s);
}

TEST_F(Help, AnyButtonPressesAndTheRootReactsToNothing) {
  screen();
  press(root());
  release(root());
  QTest::mousePress(tree().viewport(), Qt::LeftButton, {}, QPoint(200, tree().height() - 20));
  EXPECT_EQ(portal.requests().size(), 1);
  portal.answerWith({page({}), page({{u"文"_s}})});
  press(topic(0), Qt::RightButton);
  EXPECT_EQ(text(), u"文"_s);
}

TEST_F(Help, APressOnAnExpanderOnlyFolds) {
  screen();
  portal.answerWith({page({{u"2"_s, u"登录"_s}}), page({{u"文"_s}})});
  press(topic(0));
  release(topic(0));
  ASSERT_TRUE(topic(0)->isExpanded());
  QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().expanderRect(topic(0)).center());
  EXPECT_FALSE(topic(0)->isExpanded());
  EXPECT_EQ(portal.requests().size(), 3);
}

TEST_F(Help, TheArrowKeysReadTheTopicThatTheyReach) {
  screen();
  portal.answerWith({page({}), page({{u"文"_s}})});
  tree().setFocus();
  tree().setSelectedNode(root());
  QTest::keyClick(&tree(), Qt::Key_Down);
  EXPECT_EQ(targets().mid(1), QStringList({childrenTarget(1), textTarget(1)}));
  EXPECT_EQ(text(), u"文"_s);
}

TEST_F(Help, WithoutAnAnswerTreeAndTextStayAsTheyWere) {
  screen();
  portal.answerWith({page({}), page({{u"文"_s}})});
  press(topic(0));
  release(topic(0));
  portal.answerWith({"<html>error</html>"});
  press(topic(1));
  EXPECT_EQ(topic(1)->childCount(), 0);
  EXPECT_EQ(text(), u"文"_s);
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Help, APortalThatIsDownLeavesTheRootAlone) {
  portal.setHandler([](const QByteArray&) { return ScriptedServer::Reply{.reset = true}; });
  EXPECT_EQ(root()->childCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(Help, TheTextCannotBeChangedAndShowsMarkupAsItStands) {
  screen();
  portal.answerWith({page({}), page({{u"&amp;lt;b&amp;gt; &nbsp;"_s}})});
  press(topic(0));
  EXPECT_TRUE(screen().txtFields->isReadOnly());
  EXPECT_EQ(text(), u"&amp;lt;b&amp;gt; &nbsp;"_s);
}

TEST_F(Help, TheBarKeepsBothPanes) {
  auto* bar = screen().findChild<QWidget*>(u"Splitter"_s);
  ASSERT_NE(bar, nullptr);
  QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, QPoint(2, 50));
  QTest::mouseMove(bar, QPoint(-1000, 50));
  QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, QPoint(-1000, 50));
  EXPECT_NEAR(tree().width(), 42, 4);
}

TEST_F(Help, ExitLeavesAndOpeningAgainReadsTheTopicsAnew) {
  screen();
  QTest::mouseClick(screen().Toolbar1->widgetForAction(screen().Toolbar1->button(u"Exit"_s)),
                    Qt::LeftButton);
  EXPECT_FALSE(isLoaded<frmHELP>());
  EXPECT_EQ(root()->childCount(), 2);
  EXPECT_EQ(targets(), QStringList({childrenTarget(0), childrenTarget(0)}));
}

TEST_F(Help, StaysOneWindowHoweverOftenItIsAskedFor) {
  state.openHelp = [] { defaultInstance<frmHELP>().showForm(); };
  state.openHelp();
  auto* first = &defaultInstance<frmHELP>();
  state.openHelp();
  EXPECT_EQ(&defaultInstance<frmHELP>(), first);
  EXPECT_EQ(portal.requests().size(), 1);
}

}  // namespace

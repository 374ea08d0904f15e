#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include "forms/TreeView.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// A narrow tree with a thread of fifteen nodes, each below the one before.
class TreeWidths : public testing::Test {
 protected:
  TreeWidths() {
    tree.setRootIsDecorated(true);
    thread.append(tree.addRoot(u"论坛"_s, u"Bume"_s));
    while (thread.size() < 15) {
      TreeNode* node = tree.addChild(*thread.last(), u"书标贴在书脊下方三厘米处"_s, u"Publish"_s);
      thread.last()->setExpanded(true);
      thread.append(node);
    }
    tree.resize(240, 500);
    tree.show();
    QApplication::setActiveWindow(&tree);
    tree.setFocus();
  }

  QScrollBar& bar() { return *tree.horizontalScrollBar(); }
  bool barBecomes(bool needed) {
    return QTest::qWaitFor([&] { return (bar().maximum() > 0) == needed; }, 5000);
  }
  int seenOf(TreeNode* node) { return tree.labelRect(node).width(); }

  TreeView tree{u"TreeView1"_s};
  QList<TreeNode*> thread;
};

TEST_F(TreeWidths, TheDeepestLabelCanBeScrolledIntoView) {
  ASSERT_TRUE(barBecomes(true));
  const int whole = seenOf(thread[1]);
  EXPECT_LT(seenOf(thread[14]), whole) << "cut at the edge";
  bar().setValue(bar().maximum());
  EXPECT_EQ(seenOf(thread[14]), whole);
  EXPECT_EQ(tree.labelRect(thread[1]).left(), 0) << "and this one begins beside the tree";
  EXPECT_LE(tree.labelRect(thread[14]).right(), tree.viewport()->width());
}

TEST_F(TreeWidths, GoingToANodeShowsTheBeginningOfItsLabelAndGoingBackThatOfTheRoot) {
  ASSERT_TRUE(barBecomes(true));
  tree.setSelectedNode(thread[14]);
  EXPECT_EQ(seenOf(thread[14]), seenOf(thread[13])) << "there is room for it";
  const int scrolled = bar().value();
  EXPECT_GT(scrolled, 0);
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.labelRect(thread[14]).center());
  EXPECT_EQ(bar().value(), scrolled) << "a click on what is seen moves nothing";
  QTest::keyClick(&tree, Qt::Key_Up);
  EXPECT_LE(bar().value(), scrolled);
  EXPECT_GT(bar().value(), 0) << "and a step to a neighbour little";
  tree.setSelectedNode(thread[0]);
  EXPECT_EQ(bar().value(), 0);
}

TEST_F(TreeWidths, ALabelLongerThanTheTreeIsShownFromItsBeginning) {
  thread[14]->setText(QString(150, u'书'));
  ASSERT_TRUE(QTest::qWaitFor([this] { return bar().maximum() > 1000; }, 5000));
  tree.scrollTo(tree.indexFromItem(thread[14]));
  const QRect label = tree.visualItemRect(thread[14]);
  EXPECT_GE(label.left(), tree.indentation()) << "with its expander";
  EXPECT_LT(label.left(), tree.viewport()->width() / 2);
}

TEST_F(TreeWidths, ATreeWithRoomHasNoBar) {
  ASSERT_TRUE(barBecomes(true));
  tree.resize(900, 500);
  EXPECT_TRUE(barBecomes(false));
  for (const int width : {700, 500, 800}) {
    tree.resize(width, 500);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return tree.header()->length() == tree.viewport()->width(); }, 5000))
        << width;
    EXPECT_EQ(bar().maximum(), 0);
  }
  tree.resize(240, 500);
  EXPECT_TRUE(barBecomes(true));
  thread[1]->setExpanded(false);
  EXPECT_TRUE(barBecomes(false)) << "what is folded away needs no width";
  thread[1]->setExpanded(true);
  EXPECT_TRUE(barBecomes(true));
}

TEST_F(TreeWidths, ARowIsClickedAtItsFarEndToo) {
  tree.resize(900, 500);
  ASSERT_TRUE(barBecomes(false));
  QStringList clicked;
  QObject::connect(&tree, &TreeView::nodeClick, &tree,
                   [&](TreeNode* node) { clicked.append(node->text()); });
  const QPoint farEnd(tree.viewport()->width() - 5, tree.visualItemRect(thread[0]).center().y());
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, farEnd);
  EXPECT_EQ(clicked, QStringList(u"论坛"_s));
}

TEST_F(TreeWidths, ALabelIsEditedWithinWhatIsSeen) {
  tree.setLabelEdit(true);
  thread[3]->setText(QString(150, u'书'));
  tree.setSelectedNode(thread[3]);
  QTest::keyClick(&tree, Qt::Key_F2);
  auto* editor = tree.findChild<QLineEdit*>(u"TreeView1.editor"_s);
  ASSERT_NE(editor, nullptr);
  EXPECT_TRUE(tree.viewport()->rect().contains(editor->geometry()));
  EXPECT_GT(editor->width(), 60);
  tree.resize(220, 400);
  tree.doItemsLayout();
  EXPECT_TRUE(tree.viewport()->rect().contains(editor->geometry())) << "and stays there";
}

}  // namespace

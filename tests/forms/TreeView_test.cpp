#include "forms/TreeView.h"

#include <gtest/gtest.h>

#include <QTest>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class TreeViewTest : public testing::Test {
 protected:
  TreeViewTest() {
    tree.resize(200, 200);
    tree.show();
    QObject::connect(&tree, &TreeView::nodeClick, &tree,
                     [this](TreeNode* node) { clicked.append(node->text()); });
  }

  void fill() {
    for (const QString& text : {u"a"_s, u"b"_s, u"c"_s}) tree.addRoot(text, u"Lebi"_s, u"tag"_s);
  }

  TreeView tree{u"TreeView1"_s};
  QStringList clicked;
};

TEST_F(TreeViewTest, TellsClicksAndKeysAndNotWhatCodeDoes) {
  fill();
  tree.setCurrentItem(tree.root(2));
  EXPECT_EQ(clicked, QStringList());
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                    tree.visualItemRect(tree.root(1)).center());
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(100, 190));
  QTest::keyClick(&tree, Qt::Key_Up);
  QTest::keyClick(&tree, Qt::Key_Up);
  EXPECT_EQ(clicked, (QStringList{u"b"_s, u"a"_s})) << "not where nothing is, nor at the end";
}

TEST_F(TreeViewTest, TheSpaceKeyClicksTheOnlyNode) {
  tree.addRoot(u"a"_s, u"Lebi"_s);
  tree.setFocus();
  QTest::keyClick(&tree, Qt::Key_Down);
  clicked.clear();
  QTest::keyClick(&tree, Qt::Key_Space);
  EXPECT_EQ(clicked, QStringList{u"a"_s});
  EXPECT_TRUE(tree.root(0)->isSelected());
}

TEST_F(TreeViewTest, NodesKeepTheirWholeTextAndShowOneLine) {
  const QString text = QString(500, u'长') + u"\n<b>end</b>"_s;
  const TreeNode* node = tree.addRoot(text, u"Ximu"_s, u"ximu"_s);
  EXPECT_EQ(node->text(), text);
  EXPECT_EQ(node->Tag, u"ximu"_s);
  EXPECT_FALSE(static_cast<const QTreeWidgetItem*>(node)->text(0).contains(u'\n'));
  EXPECT_FALSE(node->icon(0).isNull());
}

TEST_F(TreeViewTest, ClearingLeavesNoNode) {
  fill();
  EXPECT_EQ(tree.rootCount(), 3);
  tree.clearNodes();
  EXPECT_EQ(tree.rootCount(), 0);
  EXPECT_EQ(tree.root(0), nullptr);
  EXPECT_EQ(clicked, QStringList());
}

TEST_F(TreeViewTest, TellsPressesOfAnyButtonAndFindsTheNodeBesideItsExpander) {
  fill();
  TreeNode* child = tree.addChild(*tree.root(1), u"b1"_s, u"Help"_s, u"help"_s);
  tree.root(1)->setExpanded(true);
  QStringList pressed;
  QObject::connect(&tree, &TreeView::mouseDown, &tree,
                   [&](Qt::MouseButton button, const QPoint& position) {
                     const TreeNode* node = tree.nodeUnder(position);
                     pressed.append(QString::number(button) + (node ? node->text() : u"-"_s));
                   });
  const QPoint middle = tree.visualItemRect(child).center();
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, middle);
  QTest::mouseDClick(tree.viewport(), Qt::RightButton, {}, middle);
  QTest::mouseRelease(tree.viewport(), Qt::RightButton, {}, middle);
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(1, middle.y()));
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(100, 190));
  EXPECT_EQ(pressed, QStringList({u"1b1"_s, u"2b1"_s, u"1-"_s, u"1-"_s}));
  EXPECT_EQ(child->Tag, u"help"_s);
  EXPECT_EQ(tree.root(1)->childCount(), 1);
}

TEST_F(TreeViewTest, TellsKeysApartFromTheMouse) {
  fill();
  QStringList keyed;
  QObject::connect(&tree, &TreeView::nodeKey, &tree,
                   [&](TreeNode* node) { keyed.append(node->text()); });
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                    tree.visualItemRect(tree.root(1)).center());
  EXPECT_EQ(keyed, QStringList());
  QTest::keyClick(&tree, Qt::Key_Up);
  EXPECT_EQ(keyed, QStringList{u"a"_s});
}

}  // namespace

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "forms/TreeView.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// A tree with check boxes and label editing, of two roots; the first has two children.
class TreeLabels : public testing::Test {
 protected:
  TreeLabels() {
    tree.setCheckBoxes(true);
    tree.setLabelEdit(true);
    tree.setRootIsDecorated(true);
    first = tree.addRoot(u"一"_s, u"Lebi"_s, u"root"_s);
    child = tree.addChild(*first, u"一之一"_s, u"Ximu"_s, u"ximu"_s);
    sibling = tree.addChild(*first, u"一之二"_s, u"Ximu"_s, u"ximu"_s);
    second = tree.addRoot(u"二"_s, u"Lebi"_s, u"root"_s);
    first->setExpanded(true);
    tree.resize(400, 200);
    tree.show();
    QApplication::setActiveWindow(&tree);
    tree.setFocus();
    QObject::connect(&tree, &TreeView::nodeClick, &tree,
                     [this](TreeNode* node) { events.append(u"click "_s + node->text()); });
    QObject::connect(&tree, &TreeView::nodeCheck, &tree,
                     [this](TreeNode* node) { events.append(u"check "_s + node->text()); });
  }

  void clickAt(const QPoint& position, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(tree.viewport(), button, {}, position);
  }
  void clickLabel(TreeNode* node) { clickAt(tree.labelRect(node).center()); }

  QLineEdit* editor() const { return tree.findChild<QLineEdit*>(u"TreeView1.editor"_s); }
  /// Opens the editor on the selected node and types over its text.
  void typeLabel(const QString& text) {
    QTest::keyClick(&tree, Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    editor()->selectAll();
    editor()->insert(text);
  }
  bool editorCloses() const {
    return QTest::qWaitFor([this] { return editor() == nullptr; }, 5000);
  }

  TreeView tree{u"TreeView1"_s};
  TreeNode* first;
  TreeNode* child;
  TreeNode* sibling;
  TreeNode* second;
  QStringList events;
};

TEST_F(TreeLabels, NothingIsSelectedUntilSomebodySelects) {
  EXPECT_EQ(tree.selectedNode(), nullptr);
  tree.setSelectedNode(child);
  EXPECT_EQ(tree.selectedNode(), child);
  tree.setSelectedNode(nullptr);
  EXPECT_EQ(tree.selectedNode(), nullptr);
  EXPECT_EQ(events, QStringList());
}

TEST_F(TreeLabels, SelectingByCodeOpensTheBranch) {
  first->setExpanded(false);
  EXPECT_TRUE(tree.labelRect(child).isEmpty());
  tree.setSelectedNode(child);
  EXPECT_TRUE(first->isExpanded());
  EXPECT_FALSE(tree.labelRect(child).isEmpty());
}

TEST_F(TreeLabels, NodesKnowTheirPlace) {
  EXPECT_EQ(child->parentNode(), first);
  EXPECT_EQ(first->parentNode(), nullptr);
  EXPECT_EQ(first->childNode(1), sibling);
  EXPECT_EQ(first->childNode(2), nullptr);
}

TEST_F(TreeLabels, AClickIsAClickOnTheImageOrTheText) {
  const QRect label = tree.labelRect(child);
  clickAt({label.left() + 2, label.center().y()});
  clickAt({label.right() - 2, label.center().y()});
  EXPECT_EQ(events, QStringList({u"click 一之一"_s, u"click 一之一"_s}));
  EXPECT_EQ(tree.selectedNode(), child);
}

TEST_F(TreeLabels, ThePlaceBesideALabelIsNoNode) {
  const QRect label = tree.labelRect(child);
  for (const QPoint& beside : {QPoint(label.right() + 10, label.center().y()),
                               QPoint(3, label.center().y()), QPoint(100, 190)}) {
    clickAt(beside);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, beside);
  }
  EXPECT_EQ(events, QStringList());
  EXPECT_EQ(tree.selectedNode(), nullptr);
}

TEST_F(TreeLabels, TheExpanderOpensAndClosesWithoutAClickOrASelection) {
  clickAt(tree.expanderRect(first).center());
  EXPECT_FALSE(first->isExpanded());
  clickAt(tree.expanderRect(first).center());
  EXPECT_TRUE(first->isExpanded());
  EXPECT_EQ(events, QStringList());
  EXPECT_EQ(tree.selectedNode(), nullptr);
  EXPECT_TRUE(tree.expanderRect(second).isEmpty()) << "it has no children";
}

TEST_F(TreeLabels, APressOnACheckBoxIsOnlyTheCheck) {
  tree.setSelectedNode(second);
  clickAt(tree.checkRect(child).center());
  EXPECT_TRUE(child->isChecked());
  clickAt(tree.checkRect(child).center());
  EXPECT_FALSE(child->isChecked());
  EXPECT_EQ(events, QStringList({u"check 一之一"_s, u"check 一之一"_s}));
  EXPECT_EQ(tree.selectedNode(), second);
}

TEST_F(TreeLabels, TheSpaceKeyTicksTheSelectedNode) {
  QTest::keyClick(&tree, Qt::Key_Space);
  EXPECT_EQ(events, QStringList()) << "nothing is selected";
  tree.setSelectedNode(child);
  QTest::keyClick(&tree, Qt::Key_Space);
  EXPECT_TRUE(child->isChecked());
  EXPECT_EQ(events, QStringList(u"check 一之一"_s));
}

TEST_F(TreeLabels, TickingByCodeIsNoEvent) {
  child->setChecked(true);
  EXPECT_TRUE(child->isChecked());
  EXPECT_EQ(events, QStringList());
}

TEST_F(TreeLabels, ATreeWithoutCheckBoxesHasNone) {
  TreeView plain(u"TreeView2"_s);
  TreeNode* node = plain.addRoot(u"一"_s, u"Lebi"_s);
  plain.show();
  EXPECT_TRUE(plain.checkRect(node).isEmpty());
  EXPECT_FALSE(node->data(0, Qt::CheckStateRole).isValid());
}

TEST_F(TreeLabels, TheSecondPressOfADoubleClickIsAClickAndLeavesTheBranchOpen) {
  const QPoint place = tree.labelRect(first).center();
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, place);
  QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, place);
  QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(events, QStringList({u"click 一"_s, u"click 一"_s}));
  EXPECT_TRUE(first->isExpanded());
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(TreeLabels, CtrlDoesNotTakeTheSelectionAwayAndADragDoesNotMoveIt) {
  clickLabel(child);
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::ControlModifier,
                    tree.labelRect(child).center());
  EXPECT_EQ(tree.selectedNode(), child);
  events.clear();
  QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, tree.labelRect(child).center());
  QTest::mouseMove(tree.viewport(), tree.labelRect(sibling).center());
  QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, tree.labelRect(sibling).center());
  EXPECT_EQ(tree.selectedNode(), child);
  EXPECT_EQ(events, QStringList()) << "released on another node";
}

TEST_F(TreeLabels, TheRightButtonSelectsWithoutAClick) {
  clickAt(tree.labelRect(child).center(), Qt::RightButton);
  EXPECT_EQ(tree.selectedNode(), child);
  EXPECT_EQ(events, QStringList());
}

TEST_F(TreeLabels, AClickOnTheSelectedLabelOpensTheEditor) {
  clickLabel(child);
  EXPECT_EQ(editor(), nullptr) << "the first click selects";
  clickLabel(child);
  EXPECT_TRUE(QTest::qWaitFor([this] { return editor() != nullptr; }, 5000));
  EXPECT_EQ(editor()->text(), u"一之一"_s);
}

TEST_F(TreeLabels, EnterKeepsAndEscDropsWhatWasTyped) {
  tree.setSelectedNode(child);
  typeLabel(u"新名"_s);
  QTest::keyClick(editor(), Qt::Key_Return);
  EXPECT_TRUE(editorCloses());
  EXPECT_EQ(child->text(), u"新名"_s);
  typeLabel(u"别名"_s);
  QTest::keyClick(editor(), Qt::Key_Escape);
  EXPECT_TRUE(editorCloses());
  EXPECT_EQ(child->text(), u"新名"_s);
  EXPECT_EQ(events, QStringList());
}

TEST_F(TreeLabels, GoingToAnotherNodeKeepsWhatWasTyped) {
  tree.setSelectedNode(child);
  typeLabel(u"新名"_s);
  clickLabel(sibling);
  EXPECT_TRUE(editorCloses());
  EXPECT_EQ(child->text(), u"新名"_s);
  EXPECT_EQ(events, QStringList(u"click 一之二"_s));
}

TEST_F(TreeLabels, CodeFinishesAnOpenEditor) {
  tree.finishLabelEdit();
  tree.setSelectedNode(child);
  typeLabel(u"新名"_s);
  tree.finishLabelEdit();
  EXPECT_EQ(child->text(), u"新名"_s);
  EXPECT_TRUE(editorCloses());
  tree.finishLabelEdit();
  EXPECT_EQ(child->text(), u"新名"_s);
}

TEST_F(TreeLabels, TheEditorHasTheWholeTextAndAnUntouchedOneKeepsIt) {
  const QString text = QString(300, u'长') + u"\r\n<b>"_s;
  child->setText(text);
  EXPECT_EQ(child->text(), text);
  tree.setSelectedNode(child);
  QTest::keyClick(&tree, Qt::Key_F2);
  ASSERT_NE(editor(), nullptr);
  tree.finishLabelEdit();
  EXPECT_EQ(child->text(), text);
  EXPECT_LE(static_cast<const QTreeWidgetItem*>(child)->text(0).size(), 200);
}

TEST_F(TreeLabels, TheHighlightIsAsWideAsTheLabel) {
  tree.setSelectedNode(child);
  const QImage seen = tree.viewport()->grab().toImage();
  const QRect label = tree.labelRect(child);
  const QRgb background = tree.palette().color(QPalette::Base).rgb();
  EXPECT_NE(seen.pixel(label.right() - 1, label.top() + 1), background);
  EXPECT_EQ(seen.pixel(label.right() + 5, label.center().y()), background);
  EXPECT_EQ(seen.pixel(5, label.center().y()), background);
}

TEST_F(TreeLabels, LabelsOfAPlainTreeAreNotEdited) {
  tree.setLabelEdit(false);
  tree.setSelectedNode(child);
  QTest::keyClick(&tree, Qt::Key_F2);
  EXPECT_EQ(editor(), nullptr);
  const QRect row = tree.visualItemRect(sibling);
  clickAt({row.right() - 3, row.center().y()});
  EXPECT_EQ(events, QStringList(u"click 一之二"_s)) << "its rows are clicked in their whole width";
}

TEST_F(TreeLabels, RemovingTheSelectedNodeSelectsNoOther) {
  tree.setSelectedNode(child);
  tree.removeNode(child);
  EXPECT_EQ(first->childCount(), 1);
  EXPECT_EQ(tree.selectedNode(), nullptr);
  tree.setSelectedNode(sibling);
  tree.removeNode(first);
  EXPECT_EQ(tree.rootCount(), 1);
  EXPECT_EQ(tree.selectedNode(), nullptr) << "it stood below the removed one";
  tree.removeNode(nullptr);
  EXPECT_EQ(events, QStringList());
}

TEST_F(TreeLabels, RemovingAnotherNodeKeepsTheSelection) {
  tree.setSelectedNode(sibling);
  tree.removeNode(child);
  EXPECT_EQ(tree.selectedNode(), sibling);
}

TEST_F(TreeLabels, EqualKeysAreAllowed) {
  child->Key = sibling->Key = u"7 ID"_s;
  EXPECT_EQ(child->Key, sibling->Key);
  EXPECT_EQ(second->Key, QString());
}

TEST_F(TreeLabels, AClearedTreeForgetsThePressedNode) {
  QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, tree.labelRect(child).center());
  tree.clearNodes();
  QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, QPoint(30, 30));
  EXPECT_EQ(events, QStringList());
  EXPECT_EQ(tree.selectedNode(), nullptr);
}

}  // namespace

#include "forms/TreeView.h"

#include <QHeaderView>
#include <QKeyEvent>

#include "forms/Icons.h"

namespace qinghe {

namespace {

constexpr qsizetype longestShown = 200;

}  // namespace

TreeNode::TreeNode(const QString& text, const QString& imageKey) : text_(text) {
  setText(0, text.left(longestShown).simplified());
  setIcon(0, iconFor(imageKey));
}

TreeView::TreeView(const QString& name, QWidget* parent) : QTreeWidget(parent) {
  setObjectName(name);
  setColumnCount(1);
  header()->hide();
  setUniformRowHeights(true);
  setRootIsDecorated(false);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  connect(this, &QTreeWidget::itemClicked, this,
          [this](QTreeWidgetItem* item) { emit nodeClick(static_cast<TreeNode*>(item)); });
}

TreeNode* TreeView::addRoot(const QString& text, const QString& imageKey, const QString& tag) {
  auto* node = new TreeNode(text, imageKey);
  node->Tag = tag;
  addTopLevelItem(node);
  return node;
}

TreeNode* TreeView::root(int index) const {
  return static_cast<TreeNode*>(topLevelItem(index));
}

void TreeView::keyPressEvent(QKeyEvent* event) {
  const auto* before = currentItem();
  QTreeWidget::keyPressEvent(event);
  auto* now = currentItem();
  // A tree of one node has nowhere to go to: the space key clicks where one is.
  const bool here = event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier;
  if (now == nullptr || (now == before && !here)) return;
  setCurrentItem(now);
  emit nodeClick(static_cast<TreeNode*>(now));
}

}  // namespace qinghe

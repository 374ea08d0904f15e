#pragma once

#include <QTreeWidget>

namespace qinghe {

/// A node of a `TreeView`. Its text may come from outside: it is shown in one line, as plain text.
class TreeNode : public QTreeWidgetItem {
 public:
  TreeNode(const QString& text, const QString& imageKey);

  QString text() const { return text_; }  ///< the whole text

  QString Tag;

 private:
  QString text_;
};

/// A tree of nodes with icons.
class TreeView : public QTreeWidget {
  Q_OBJECT

 public:
  explicit TreeView(const QString& name, QWidget* parent = nullptr);

  TreeNode* addRoot(const QString& text, const QString& imageKey, const QString& tag = {});
  void clearNodes() { clear(); }
  int rootCount() const { return topLevelItemCount(); }
  TreeNode* root(int index) const;  ///< null outside the tree

 signals:
  /// The user clicked a node, went to it with a key, or pressed the space key on it; code never
  /// raises it.
  void nodeClick(qinghe::TreeNode* node);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace qinghe

#pragma once

#include "content/trees/TreeScreen.h"

namespace qinghe {

/// What tells the news from the documents.
struct TreeEditorKind {
  QString form;
  QString caption;
  QString table;
  QString rootText;
  QString newItemText;
  QString ownKind;       ///< tag of the company's own items
  QString textName;      ///< of the text box, for screen readers
  QString ownCondition;  ///< behind the parent's id and before the company's, bracket left open
};

/// Keeps a tree of titles, each with a long text, on the portal: the company's own and, to be read,
/// those of all. An item's check box is its published flag. Own items are changed, and both get
/// children.
class TreeEditor : public TreeScreen {
  Q_OBJECT

 protected:
  explicit TreeEditor(const TreeEditorKind& kind);

  void nodeClick(TreeNode& node) override;
  void nodeCheck(TreeNode& node) override;
  void buttonClick(const QString& key) override;
  bool LoadChildren(TreeNode& node) override { return LoadItems(node, idOf(node)); }

 private:
  void allowFor(const TreeNode& node);
  bool LoadItems(TreeNode& node, double parentId);
  bool ShowItem(double id);
  bool SaveItemHead(TreeNode& node);
  bool SaveItemBody(const TreeNode& node);
  bool saveSelected();

  TreeEditorKind kind_;
  bool mChecked = false;  ///< a check box was changed; kept with the state, and asked by nobody
};

}  // namespace qinghe

#pragma once

#include "content/trees/TreeScreen.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// A tree screen, driven through its controls.
class TreeFixture : public ClientFixture {
 protected:
  using Fields = QList<std::pair<QString, QString>>;

  /// The screen's default instance, made and loaded on first use.
  virtual TreeScreen& open() = 0;

  TreeScreen& screen();
  TreeView& tree() { return *screen().TreeView1; }
  TreeNode* root() { return tree().root(0); }
  QString status() { return screen().StatusBar1->text(); }
  QString text() { return screen().txtFields(0)->text(); }

  /// Unloads the screen for good.
  void leave();
  void press(const QString& key);
  /// The keys of the buttons that can be pressed, but for the one that leaves.
  QStringList allowed();

  void click(TreeNode* node) { clickAt(tree().labelRect(node).center()); }
  void clickCheckBox(TreeNode* node) { clickAt(tree().checkRect(node).center()); }
  void clickExpander(TreeNode* node) { clickAt(tree().expanderRect(node).center()); }
  /// Types over the label of the selected node, and leaves the editor open.
  void typeLabel(const QString& label);

  /// What stands below a node, as "key|text|kind".
  static QStringList below(const TreeNode* node);
  /// The child with that text, null when there is none.
  static TreeNode* childOf(const TreeNode* node, const QString& text);

  static QString rowsTarget(const Fields& fields);
  static QString addTarget(const Fields& fields);
  static QString query(const Fields& fields);

  void answer(const QList<QByteArray>& pages) { portal.answerWith(pages); }
  /// A page of the portal without a table.
  static QByteArray noTable() { return "<html></html>"; }

 private:
  void clickAt(const QPoint& position);
};

}  // namespace qinghe

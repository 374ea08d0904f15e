#pragma once

#include <QList>
#include <QString>

#include "forms/Form.h"
#include "forms/StatusBar.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "forms/TreeView.h"

namespace qinghe {

struct TreeButton {
  QString key;
  QString caption;
  QString toolTip;
};

/// What tells one tree screen from another to the eye.
struct TreeLook {
  QString form;
  QString caption;
  QString rootText;
  QString rootImage;
  QString textName;  ///< of the text box, for screen readers
  QList<TreeButton> buttons;
};

/// The pattern of the screens that keep a tree of texts on the portal: the tree with check boxes
/// and labels edited in place, a bar, the text of the chosen node, a toolbar and a status bar.
/// A node's kind stands in its tag; its id is the leading number of its key, 0 for a node just
/// added.
class TreeScreen : public Form {
  Q_OBJECT

 public:
  /// There is one, 0; null for any other.
  TextBox* txtFields(int index) const { return index == 0 ? text_ : nullptr; }

  Toolbar* Toolbar1;
  TreeView* TreeView1;
  StatusBar* StatusBar1;

 protected:
  explicit TreeScreen(const TreeLook& look);

  virtual void nodeClick(TreeNode& node) = 0;
  virtual void nodeCheck(TreeNode& node);
  virtual void buttonClick(const QString& key);
  /// Loads what stands below a node into it; its nodes stay as they are on any failure.
  virtual bool LoadChildren(TreeNode& node) = 0;

  /// The root, its children, the toolbar.
  void onLoad() override;

  void UpdateToolbar();
  /// A new last child with that key, its parent opened.
  TreeNode& addNode(TreeNode& parent, const QString& key, const QString& text, const QString& image,
                    const QString& kind);
  /// As "Add" does: a child of the selected node, without a key, which becomes the selected node
  /// with its label open for its name. Null, and nothing done, when none is selected.
  TreeNode* addBelowSelected(const QString& text, const QString& image, const QString& kind);
  void reportSave(bool saved);

  static double idOf(const TreeNode& node);

  bool mCanAdd = false;
  bool mCanUpdate = false;
  bool mCanDelete = false;

 private:
  void layOut();

  TreeLook look_;
  TextBox* text_;
};

/// The kind of a tree's root.
inline constexpr QStringView rootKind = u"bume";
/// The kind of what is open to all and belongs to the portal.
inline constexpr QStringView globalKind = u"glob";

}  // namespace qinghe

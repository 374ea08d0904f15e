#pragma once

#include <QTreeWidget>

namespace qinghe {

class LabelDelegate;

/// A node of a `TreeView`. Its text may come from outside: it is shown in one line, as plain text.
/// Changes by code show at once and raise no event.
class TreeNode : public QTreeWidgetItem {
 public:
  TreeNode(const QString& text, const QString& imageKey);

  QString text() const { return text_; }  ///< the whole text
  void setText(const QString& text);
  bool isChecked() const { return checkState(0) == Qt::Checked; }
  void setChecked(bool checked);
  TreeNode* parentNode() const;          ///< null for a root
  TreeNode* childNode(int index) const;  ///< null outside the children

  QVariant data(int column, int role) const override;
  void setData(int column, int role, const QVariant& value) override;

  QString Key;  ///< need not be unique
  QString Tag;

 private:
  QString text_;
};

/// A tree of nodes with icons and, if told so, check boxes and labels that are edited in place: F2
/// or a click on the selected node's label opens the editor, Enter keeps the new text, Esc the old.
/// Where labels are edited, a node is its image and text, and its row beside them is empty space;
/// elsewhere the row can be clicked in its whole width. An expander is never part of it.
///
/// However deep a node lies, its whole line can be scrolled to; going to a node brings the
/// beginning of its label into view.
///
/// No node is selected until the user or code selects one. The signals tell what the user does,
/// never what code does.
class TreeView : public QTreeWidget {
  Q_OBJECT

 public:
  explicit TreeView(const QString& name, QWidget* parent = nullptr);

  /// For the nodes added from then on.
  void setCheckBoxes(bool on) { checkBoxes_ = on; }
  bool hasCheckBoxes() const { return checkBoxes_; }
  void setLabelEdit(bool on);
  bool hasLabelEdit() const { return editTriggers() != NoEditTriggers; }
  /// Keeps what stands in an open label editor, and closes it.
  void finishLabelEdit();

  TreeNode* addRoot(const QString& text, const QString& imageKey, const QString& tag = {});
  /// Adds a last child.
  TreeNode* addChild(TreeNode& parent, const QString& text, const QString& imageKey,
                     const QString& tag = {});
  void clearNodes();
  /// The node and all below it; nothing is selected when it was, or held, the selected node.
  void removeNode(TreeNode* node);
  int rootCount() const { return topLevelItemCount(); }
  TreeNode* root(int index) const;  ///< null outside the tree

  TreeNode* selectedNode() const;        ///< null when none is
  void setSelectedNode(TreeNode* node);  ///< and makes it visible; null for none

  /// Where a node's image and text, as far as they can be seen, its check box and its expander
  /// stand in the viewport. Empty for what it has not, and for a node in a collapsed branch.
  QRect labelRect(const TreeNode* node) const;
  QRect checkRect(const TreeNode* node) const;
  QRect expanderRect(const TreeNode* node) const;
  /// The node whose row stands there, its indentation and expander left out; null in empty space.
  TreeNode* nodeUnder(const QPoint& viewportPosition) const;

  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 signals:
  /// A press of a mouse button, before what it does; the second press of a double click is one
  /// like any other.
  void mouseDown(Qt::MouseButton button, const QPoint& position);
  /// The keys' share of `nodeClick`, before it.
  void nodeKey(qinghe::TreeNode* node);
  /// The user clicked a node, or went to it with a key; in a tree without check boxes also pressed
  /// the space key on it. The selection already stands on it.
  void nodeClick(qinghe::TreeNode* node);
  /// The user changed a check box, by mouse or space key; alone, without selection or click.
  void nodeCheck(qinghe::TreeNode* node);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  int sizeHintForColumn(int column) const override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;

 private:
  enum class Place { Nothing, Label, CheckBox, Expander };

  TreeNode* newNode(const QString& text, const QString& imageKey, const QString& tag) const;
  Place placeOf(const TreeNode* node, const QPoint& position) const;
  void toggle(TreeNode* node);
  void press(const QMouseEvent& event);

  LabelDelegate* labels_;
  bool checkBoxes_ = false;
  Place pressedOn_ = Place::Nothing;
  TreeNode* pressed_ = nullptr;  ///< the node of a label that the left button went down on
  bool secondPress_ = false;     ///< of a double click
};

}  // namespace qinghe

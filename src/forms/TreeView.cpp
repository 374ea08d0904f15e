#include "forms/TreeView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <utility>

#include "forms/Icons.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr qsizetype longestShown = 200;
constexpr int checkMargin = 3;

QString inOneLine(const QString& text) {
  return text.left(longestShown).simplified();
}

}  // namespace

TreeNode::TreeNode(const QString& text, const QString& imageKey) {
  setText(text);
  setIcon(0, iconFor(imageKey));
}

void TreeNode::setText(const QString& text) {
  text_ = text;
  QTreeWidgetItem::setData(0, Qt::DisplayRole, inOneLine(text));
}

void TreeNode::setChecked(bool checked) {
  setCheckState(0, checked ? Qt::Checked : Qt::Unchecked);
}

TreeNode* TreeNode::parentNode() const {
  return static_cast<TreeNode*>(parent());
}

TreeNode* TreeNode::childNode(int index) const {
  return static_cast<TreeNode*>(child(index));
}

// An editor gets and gives the whole text, and not the line that is shown of it.
QVariant TreeNode::data(int column, int role) const {
  return role == Qt::EditRole ? QVariant(text_) : QTreeWidgetItem::data(column, role);
}

void TreeNode::setData(int column, int role, const QVariant& value) {
  if (role == Qt::EditRole) {
    setText(value.toString());
  } else {
    QTreeWidgetItem::setData(column, role, value);
  }
}

/// Paints no more than the label, so that what is highlighted is what can be clicked.
class LabelDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* editor() const { return editor_; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    auto label = option;
    const auto* tree = static_cast<const TreeView*>(parent());
    if (tree->hasLabelEdit())
      label.rect.setWidth(qMin(option.rect.width(), sizeHint(option, index).width()));
    QStyledItemDelegate::paint(painter, label, index);
  }

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    editor_ = QStyledItemDelegate::createEditor(parent, option, index);
    editor_->setObjectName(this->parent()->objectName() + u".editor"_s);
    return editor_;
  }

  // A line can be longer than the tree is wide; what is typed stays in view.
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override {
    QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    const QRect seen = editor->geometry() & editor->parentWidget()->rect();
    if (!seen.isEmpty()) editor->setGeometry(seen);
  }

 private:
  mutable QPointer<QWidget> editor_;
};

TreeView::TreeView(const QString& name, QWidget* parent)
    : QTreeWidget(parent), labels_(new LabelDelegate(this)) {
  setObjectName(name);
  setColumnCount(1);
  header()->hide();
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  setUniformRowHeights(true);
  setRootIsDecorated(false);
  setExpandsOnDoubleClick(false);
  setItemDelegate(labels_);
  setLabelEdit(false);
}

void TreeView::setLabelEdit(bool on) {
  setEditTriggers(on ? EditTriggers(SelectedClicked | EditKeyPressed) : NoEditTriggers);
}

void TreeView::finishLabelEdit() {
  QWidget* editor = labels_->editor();
  if (editor == nullptr || state() != EditingState) return;
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
}

TreeNode* TreeView::newNode(const QString& text, const QString& imageKey,
                            const QString& tag) const {
  auto* node = new TreeNode(text, imageKey);
  node->Tag = tag;
  // Clicks on check boxes are taken here, and not by the items.
  node->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
  if (checkBoxes_) node->setChecked(false);
  return node;
}

TreeNode* TreeView::addRoot(const QString& text, const QString& imageKey, const QString& tag) {
  auto* node = newNode(text, imageKey, tag);
  addTopLevelItem(node);
  return node;
}

TreeNode* TreeView::addChild(TreeNode& parent, const QString& text, const QString& imageKey,
                             const QString& tag) {
  auto* node = newNode(text, imageKey, tag);
  parent.addChild(node);
  return node;
}

void TreeView::clearNodes() {
  pressed_ = nullptr;
  clear();
}

void TreeView::removeNode(TreeNode* node) {
  if (node == nullptr) return;
  bool selected = false;
  for (auto* above = selectedNode(); above != nullptr; above = above->parentNode()) {
    selected = selected || above == node;
  }
  pressed_ = nullptr;
  delete node;
  // The view would hand the selection to a neighbour that nobody chose.
  if (selected) clearSelection();
}

TreeNode* TreeView::root(int index) const {
  return static_cast<TreeNode*>(topLevelItem(index));
}

TreeNode* TreeView::selectedNode() const {
  return static_cast<TreeNode*>(selectedItems().value(0));
}

void TreeView::setSelectedNode(TreeNode* node) {
  if (node == nullptr) {
    clearSelection();
    return;
  }
  setCurrentItem(node, 0, QItemSelectionModel::ClearAndSelect);
  scrollTo(indexFromItem(node));
}

QRect TreeView::labelRect(const TreeNode* node) const {
  auto rect = node == nullptr ? QRect() : visualItemRect(node);
  if (rect.isEmpty()) return {};
  const int wanted = rect.left() + sizeHintForIndex(indexFromItem(node)).width();
  rect.setRight(qMin(rect.right(), wanted - 1));
  if (checkBoxes_) rect.setLeft(checkRect(node).right() + 1 + checkMargin);
  rect.setLeft(qMax(rect.left(), 0));
  rect.setRight(qMin(rect.right(), viewport()->width() - 1));
  return rect;
}

QRect TreeView::checkRect(const TreeNode* node) const {
  const auto rect = node == nullptr || !checkBoxes_ ? QRect() : visualItemRect(node);
  if (rect.isEmpty()) return {};
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = rect;
  option.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  option.text = node->text();
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
}

QRect TreeView::expanderRect(const TreeNode* node) const {
  if (node == nullptr || node->childCount() == 0) return {};
  if (node->parent() == nullptr && !rootIsDecorated()) return {};
  const auto rect = visualItemRect(node);
  if (rect.isEmpty()) return {};
  return {rect.left() - indentation(), rect.top(), indentation(), rect.height()};
}

// As wide as the longest line, and never narrower than the tree.
int TreeView::sizeHintForColumn(int column) const {
  return qMax(QTreeWidget::sizeHintForColumn(column), viewport()->width());
}

void TreeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
  // The view itself would go back to the left edge of a column that is wider than it.
  QScrollBar* bar = horizontalScrollBar();
  const int before = bar->value();
  QTreeWidget::scrollTo(index, hint);
  bar->setValue(before);
  const QRect row = visualRect(index);
  if (row.isEmpty()) return;
  const int begin = row.left() - indentation();
  const int end = row.left() + sizeHintForIndex(index).width();
  const int beyond = qMax(0, end - viewport()->width());
  bar->setValue(bar->value() + qMin(beyond, begin));
}

TreeView::Place TreeView::placeOf(const TreeNode* node, const QPoint& position) const {
  if (node == nullptr) return Place::Nothing;
  const auto grab = QMargins(checkMargin, checkMargin, checkMargin, checkMargin);
  if (checkRect(node).marginsAdded(grab).contains(position) && checkBoxes_) return Place::CheckBox;
  const auto label = hasLabelEdit() ? labelRect(node) : visualItemRect(node);
  if (label.contains(position)) return Place::Label;
  return expanderRect(node).contains(position) ? Place::Expander : Place::Nothing;
}

TreeNode* TreeView::nodeUnder(const QPoint& viewportPosition) const {
  auto* item = itemAt(viewportPosition);
  const bool beside = item == nullptr || !visualItemRect(item).contains(viewportPosition);
  return beside ? nullptr : static_cast<TreeNode*>(item);
}

QItemSelectionModel::SelectionFlags TreeView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* /*event*/) const {
  return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void TreeView::toggle(TreeNode* node) {
  node->setChecked(!node->isChecked());
  emit nodeCheck(node);
}

void TreeView::press(const QMouseEvent& event) {
  const auto position = event.position().toPoint();
  emit mouseDown(event.button(), position);
  // Whoever heard of the press may have changed the tree.
  auto* node = static_cast<TreeNode*>(itemAt(position));
  pressedOn_ = placeOf(node, position);
  pressed_ = event.button() == Qt::LeftButton && pressedOn_ == Place::Label ? node : nullptr;
  if (event.button() == Qt::LeftButton && pressedOn_ == Place::CheckBox) toggle(node);
}

void TreeView::mousePressEvent(QMouseEvent* event) {
  event->accept();
  secondPress_ = false;
  press(*event);
  // Elsewhere the view would select the row.
  if (pressedOn_ == Place::Label || pressedOn_ == Place::Expander) {
    QTreeWidget::mousePressEvent(event);
  }
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  secondPress_ = true;
  press(*event);
  // Also ends the wait for a label editor that the first click began.
  if (pressedOn_ == Place::Label) QTreeWidget::mouseDoubleClickEvent(event);
  if (pressedOn_ == Place::Expander) QTreeWidget::mousePressEvent(event);
}

void TreeView::mouseMoveEvent(QMouseEvent* event) {
  // A drag over the rows would select them one after the other.
  if (event->buttons() == Qt::NoButton) QTreeWidget::mouseMoveEvent(event);
}

void TreeView::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  const auto place = std::exchange(pressedOn_, Place::Nothing);
  auto* node = std::exchange(pressed_, nullptr);
  // The view's part in a click is the expander, and the wait for a label editor.
  const bool opensEditor = place == Place::Label && !secondPress_;
  if (opensEditor || place == Place::Expander) QTreeWidget::mouseReleaseEvent(event);
  const bool left = event->button() == Qt::LeftButton;
  if (left && node != nullptr && itemAt(event->position().toPoint()) == node) emit nodeClick(node);
}

void TreeView::keyPressEvent(QKeyEvent* event) {
  const bool space = event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier;
  if (space && checkBoxes_) {
    event->accept();
    if (selectedNode() != nullptr) toggle(selectedNode());
    return;
  }
  const auto* before = currentItem();
  QTreeWidget::keyPressEvent(event);
  auto* now = static_cast<TreeNode*>(currentItem());
  // A tree of one node has nowhere to go to: the space key clicks where one is.
  if (now == nullptr || (now == before && !space)) return;
  setCurrentItem(now);
  emit nodeKey(now);
  emit nodeClick(now);
}

void TreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
  // Where the label alone is the node, the highlight begins with it.
  const bool bare = hasLabelEdit() && selectionModel()->isSelected(index);
  if (bare) painter->fillRect(rect, palette().base());
  QTreeWidget::drawBranches(painter, rect, index);
}

void TreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
  QTreeWidget::drawRow(painter, option, index);
  if (!checkBoxes_) return;
  // Styles draw an empty box so faintly that it is lost in a dark theme or on a selected row.
  const bool selected = selectionModel()->isSelected(index);
  auto colour = palette().color(selected ? QPalette::HighlightedText : QPalette::Text);
  colour.setAlpha(130);
  painter->setPen(colour);
  painter->setBrush(Qt::NoBrush);
  const auto* node = static_cast<TreeNode*>(itemFromIndex(index));
  painter->drawRect(checkRect(node).adjusted(0, 0, -1, -1));
}

}  // namespace qinghe

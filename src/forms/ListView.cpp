#include "forms/ListView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyle>

#include "forms/ListModel.h"
#include "forms/spread_widths.h"

namespace qinghe {

ListView::ListView(const QString& name, QWidget* parent)
    : QTreeView(parent), model_(new ListModel(this)) {
  setObjectName(name);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(SingleSelection);
  setSelectionBehavior(SelectRows);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
  setTabKeyNavigation(false);
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setHighlightSections(false);
  header()->setStretchLastSection(false);  // widths are what the screens make them
  setModel(model_);
  connect(header(), &QHeaderView::sectionClicked, this, [this](int column) {
    // The header has turned its own mark already, whether somebody sorts now or not.
    setSortMark(header()->isSortIndicatorShown());
    emit columnClick(column);
  });
  connect(header(), &QHeaderView::sectionResized, this,
          [this] { edgeMoved_ = edgeMoved_ || (titlePressed_ && !spreading_); });
  connect(model_, &QAbstractItemModel::rowsInserted, this, &ListView::spreadSoon);
  header()->viewport()->installEventFilter(this);
}

ListView::~ListView() = default;

void ListView::addColumn(const QString& title, int width) {
  toldWidths_ << width;
  model_->addColumn(title);
  setColumnWidth(model_->columnCount() - 1, width);
}

void ListView::clearColumns() {
  model_->clearColumns();
  toldWidths_.clear();
  edgeMoved_ = false;
}

void ListView::setColumnWidths(const QList<int>& widths) {
  const auto columns = qMin<qsizetype>(widths.size(), model_->columnCount());
  for (int column = 0; column < columns; ++column) setColumnWidth(column, widths[column]);
}

void ListView::setColumnWidth(int column, int width) {
  if (column < 0 || column >= toldWidths_.size()) return;
  toldWidths_[column] = width;
  QTreeView::setColumnWidth(column, width);
  spread();
}

void ListView::setSpreadsColumns(bool on) {
  spreads_ = on;
  // It measures at each change of size: the rows in sight and some behind are enough.
  if (on) header()->setResizeContentsPrecision(100);
  const auto widths = toldWidths_;
  setColumnWidths(widths);
}

void ListView::setFillingColumn(int column, int inset) {
  fillingColumn_ = column;
  fillingInset_ = inset;
  fill();
}

void ListView::fill() {
  const int width = viewport()->width() - fillingInset_;
  if (fillingColumn_ >= 0 && !edgeMoved_ && width > 0) setColumnWidth(fillingColumn_, width);
}

void ListView::spread() {
  spreadingSoon_ = false;
  if (!spreads_ || edgeMoved_ || spreading_) return;
  const QScopedValueRollback busy(spreading_, true);
  QList<int> shown;
  QList<ColumnRoom> columns;
  for (int column = 0; column < toldWidths_.size(); ++column) {
    if (toldWidths_[column] <= 0 || isColumnHidden(column)) continue;
    shown << column;
    columns << ColumnRoom{toldWidths_[column],
                          qMax(sizeHintForColumn(column), header()->sectionSizeHint(column))};
  }
  const auto widths = spreadWidths(columns, viewport()->width());
  for (qsizetype i = 0; i < shown.size(); ++i) QTreeView::setColumnWidth(shown[i], widths[i]);
}

void ListView::spreadSoon() {
  // The cells are filled behind the row, and other rows come with it.
  if (!spreads_ || edgeMoved_ || spreadingSoon_) return;
  spreadingSoon_ = true;
  QMetaObject::invokeMethod(this, &ListView::spread, Qt::QueuedConnection);
}

void ListView::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  fill();
  spread();
}

bool ListView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == header()->viewport()) {
    const auto type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
      titlePressed_ = true;
    } else if (type == QEvent::MouseButtonRelease) {
      titlePressed_ = false;
    }
  }
  return QTreeView::eventFilter(watched, event);
}

void ListView::setCheckBoxes(bool on) {
  model_->setCheckBoxes(on);
}

bool ListView::hasCheckBoxes() const {
  return model_->hasCheckBoxes();
}

ListItem* ListView::addItem(const QString& key, const QString& text, const QString& icon) {
  auto* item = model_->add(key, text, icon);
  // A mark over rows that are in no order any more would not tell the truth.
  if (header()->isSortIndicatorShown()) setSortMark(false);
  if (item->row() == 0) select(indexOf(item));
  return item;
}

void ListView::clearItems() {
  model_->clear();
}

void ListView::removeItem(ListItem* item) {
  if (item == nullptr) return;
  model_->remove(item);
  if (!currentIndex().isValid() && model_->count() > 0) select(model_->index(0, 0));
}

int ListView::itemCount() const {
  return model_->count();
}

ListItem* ListView::itemAt(int row) const {
  return model_->at(row);
}

ListItem* ListView::itemUnder(const QPoint& viewportPosition) const {
  model_->announce();
  const auto index = indexAt(viewportPosition);
  return index.isValid() ? model_->at(index.row()) : nullptr;
}

void ListView::sortByColumn(int column) {
  const bool again = column == sortColumn_ && sortOrder_ == Qt::AscendingOrder;
  sortColumn_ = column;
  sortOrder_ = again ? Qt::DescendingOrder : Qt::AscendingOrder;
  model_->sort(column, sortOrder_);
  setSortMark(true);
}

void ListView::setSortMark(bool shown) {
  header()->setSortIndicatorShown(shown);
  header()->setSortIndicator(sortColumn_, sortOrder_);
}

ListItem* ListView::selectedItem() const {
  const auto index = currentIndex();
  return index.isValid() ? model_->at(index.row()) : nullptr;
}

void ListView::setSelectedItem(ListItem* item) {
  const auto index = indexOf(item);
  if (!index.isValid()) return;
  select(index);
  scrollTo(index);
}

QRect ListView::cellRect(const ListItem* item, int column) const {
  const auto index = indexOf(item);
  return index.isValid() ? visualRect(index.siblingAtColumn(column)) : QRect();
}

QRect ListView::checkRect(const ListItem* item) const {
  const auto index = indexOf(item);
  if (!index.isValid() || !model_->hasCheckBoxes()) return {};
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.index = index;
  option.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
  option.text = item->text();
  return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this);
}

QModelIndex ListView::indexOf(const ListItem* item) const {
  if (item == nullptr || model_->at(item->row()) != item) return {};
  model_->announce();
  return model_->index(item->row(), 0);
}

void ListView::select(const QModelIndex& index) {
  selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

QItemSelectionModel::SelectionFlags ListView::selectionCommand(const QModelIndex& index,
                                                               const QEvent* /*event*/) const {
  if (!index.isValid()) return QItemSelectionModel::NoUpdate;
  return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

void ListView::press(const QMouseEvent& event) {
  const auto position = event.position().toPoint();
  const auto button = event.button();
  pressed_ |= button;
  emit mouseDown(button, position);
  auto* item = itemUnder(position);
  if (item == nullptr) return;
  if (button == Qt::LeftButton && checkRect(item).adjusted(-3, -3, 3, 3).contains(position)) {
    toggle(item);
  } else if (button == Qt::LeftButton || button == Qt::RightButton) {
    select(indexOf(item));
    emit itemClick(item);
  }
}

void ListView::toggle(ListItem* item) {
  item->setChecked(!item->isChecked());
  emit itemCheck(item);
}

void ListView::mousePressEvent(QMouseEvent* event) {
  event->accept();
  press(*event);
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  const auto position = event->position().toPoint();
  press(*event);
  const auto index = indexAt(position);
  if (index.isValid()) emit doubleClicked(index);
  emit mouseDoubleClick(event->button(), position);
}

void ListView::mouseMoveEvent(QMouseEvent* event) {
  // A drag over the rows would select them one after the other.
  if (event->buttons() == Qt::NoButton) QTreeView::mouseMoveEvent(event);
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  const auto button = event->button();
  if (!pressed_.testFlag(button)) return;
  pressed_ &= ~Qt::MouseButtons(button);
  emit mouseUp(button, event->position().toPoint());
}

bool ListView::keyOnSelected(int key) {
  const bool checks = key == Qt::Key_Space && model_->hasCheckBoxes();
  const bool clicks = !checks && clickKeys_.contains(key);
  if (auto* item = selectedItem(); item != nullptr && checks) {
    toggle(item);
  } else if (item != nullptr && clicks) {
    emit itemClick(item);
  }
  return clicks || key == Qt::Key_Space;
}

void ListView::keyPressEvent(QKeyEvent* event) {
  model_->announce();
  const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (plain && keyOnSelected(event->key())) {
    event->accept();
    return;
  }
  const auto* before = selectedItem();
  QTreeView::keyPressEvent(event);
  auto* now = selectedItem();
  if (now != nullptr && now != before) emit itemClick(now);
}

void ListView::paintEvent(QPaintEvent* event) {
  model_->announce();
  QTreeView::paintEvent(event);
}

void ListView::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
  QTreeView::drawRow(painter, option, index);
  if (!model_->hasCheckBoxes()) return;
  // Styles draw an empty box so faintly that it is lost in a dark theme or on a selected row.
  const bool selected = selectionModel()->isSelected(index);
  auto colour = palette().color(selected ? QPalette::HighlightedText : QPalette::Text);
  colour.setAlpha(130);
  painter->setPen(colour);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(checkRect(model_->at(index.row())).adjusted(0, 0, -1, -1));
}

bool ListView::viewportEvent(QEvent* event) {
  model_->announce();
  return QTreeView::viewportEvent(event);
}

}  // namespace qinghe

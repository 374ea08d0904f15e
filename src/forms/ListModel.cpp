#include "forms/ListModel.h"

#include <algorithm>

#include "forms/Icons.h"

namespace qinghe {

namespace {

/// Up to here each row is announced at once.
constexpr int shortList = 64;

constexpr int mostColumns = 256;

/// Items stand in blocks, the first of which is small.
constexpr int firstBlock = 32;
constexpr int largestBlock = 1024;

/// Of a longer text no cell shows more, but measuring all of it for each painting takes long.
constexpr qsizetype longestShown = 1000;

/// A row is one line high; line breaks and the like would spoil it.
QString inOneLine(const QString& text) {
  if (text.size() > longestShown) return inOneLine(text.left(longestShown)) + u'…';
  const auto isBreak = [](QChar c) {
    return c < u' ' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator;
  };
  if (std::none_of(text.begin(), text.end(), isBreak)) return text;
  auto line = text;
  line.replace(QLatin1String("\r\n"), QLatin1String(" "));
  for (auto& c : line) {
    if (isBreak(c)) c = u' ';
  }
  return line;
}

}  // namespace

void ListItem::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  model_->noteChange(this, 0);
}

QString ListItem::subItem(int column) const {
  const auto place = static_cast<size_t>(column - 1);
  return place < cells_.size() ? cells_[place]
                               : moreCells_.value(column - 1 - static_cast<int>(cells_.size()));
}

QString& ListItem::cell(int column) {
  const auto place = static_cast<size_t>(column - 1);
  if (place < cells_.size()) return cells_[place];
  const auto more = column - 1 - static_cast<int>(cells_.size());
  if (moreCells_.size() <= more) moreCells_.resize(more + 1);
  return moreCells_[more];
}

void ListItem::setSubItem(int column, const QString& text) {
  if (column < 1 || column > mostColumns) return;
  auto& here = cell(column);
  if (here == text) return;
  here = text;
  model_->noteChange(this, column);
}

void ListItem::setIcon(const QString& imageKey) {
  if (imageKey == icon_) return;
  icon_ = imageKey;
  model_->noteChange(this, 0);
}

void ListItem::setChecked(bool checked) {
  if (checked == checked_) return;
  checked_ = checked;
  model_->noteChange(this, 0);
}

ListModel::ListModel(QObject* parent) : QAbstractItemModel(parent) {}

QModelIndex ListModel::index(int row, int column, const QModelIndex& parent) const {
  const bool there =
      !parent.isValid() && row >= 0 && row < announced_ && column >= 0 && column < columnCount();
  return there ? createIndex(row, column, rows_[static_cast<size_t>(row)]) : QModelIndex();
}

QModelIndex ListModel::parent(const QModelIndex& /*child*/) const {
  return {};
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : announced_;
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(titles_.size());
}

bool ListModel::hasChildren(const QModelIndex& parent) const {
  return !parent.isValid() && announced_ > 0 && !titles_.isEmpty();
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  auto flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
  if (checkBoxes_ && index.column() == 0) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= announced_) return {};
  const auto& item = *rows_[static_cast<size_t>(index.row())];
  const bool first = index.column() == 0;
  switch (role) {
    case Qt::DisplayRole:
      return inOneLine(first ? item.text_ : item.subItem(index.column()));
    case Qt::DecorationRole:
      return first && !item.icon_.isEmpty() ? icon(item.icon_) : QVariant();
    case Qt::CheckStateRole:
      if (!first || !checkBoxes_) return {};
      return static_cast<int>(item.checked_ ? Qt::Checked : Qt::Unchecked);
    default:
      return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return titles_.value(section);
}

void ListModel::sort(int column, Qt::SortOrder order) {
  announce();
  emit layoutAboutToBeChanged({}, VerticalSortHint);
  const auto before = persistentIndexList();
  const auto text = [column](const ListItem* item) {
    return column == 0 ? item->text_ : item->subItem(column);
  };
  std::ranges::stable_sort(rows_, [&text, order](const ListItem* left, const ListItem* right) {
    const int difference = text(left).compare(text(right), Qt::CaseInsensitive);
    return order == Qt::AscendingOrder ? difference < 0 : difference > 0;
  });
  int row = 0;
  for (auto* item : rows_) item->row_ = row++;
  QModelIndexList behind;
  for (const auto& index : before) {
    const auto* item = static_cast<const ListItem*>(index.internalPointer());
    behind << createIndex(item->row_, index.column(), index.internalPointer());
  }
  changePersistentIndexList(before, behind);
  emit layoutChanged({}, VerticalSortHint);
}

void ListModel::addColumn(const QString& title) {
  const int column = columnCount();
  beginInsertColumns({}, column, column);
  titles_ << title;
  endInsertColumns();
}

void ListModel::clearColumns() {
  if (titles_.isEmpty()) return;
  beginRemoveColumns({}, 0, columnCount() - 1);
  titles_.clear();
  endRemoveColumns();
}

void ListModel::setCheckBoxes(bool on) {
  if (on == checkBoxes_) return;
  announce();
  checkBoxes_ = on;
  if (announced_ > 0 && columnCount() > 0) {
    emit dataChanged(index(0, 0), index(announced_ - 1, 0), {Qt::CheckStateRole});
  }
}

ListItem* ListModel::add(const QString& key, const QString& text, const QString& icon) {
  auto* item = freeItem();
  item->model_ = this;
  item->row_ = count();
  item->key_ = key;
  item->text_ = text;
  item->icon_ = icon;
  rows_.push_back(item);
  if (count() <= shortList || count() >= 2 * announced_) {
    announce();
  } else if (!announcing_) {
    announcing_ = true;
    QMetaObject::invokeMethod(this, &ListModel::announce, Qt::QueuedConnection);
  }
  return item;
}

ListItem* ListModel::freeItem() {
  if (!free_.empty()) {
    auto* item = free_.back();
    free_.pop_back();
    return item;
  }
  if (unused_ == 0) {
    lastBlock_ = blocks_.empty() ? firstBlock : qMin(2 * lastBlock_, largestBlock);
    blocks_.push_back(std::make_unique<ListItem[]>(static_cast<size_t>(lastBlock_)));
    unused_ = lastBlock_;
  }
  return &blocks_.back()[static_cast<size_t>(lastBlock_ - unused_--)];
}

void ListModel::announce() {
  announcing_ = false;
  if (announced_ == count()) return;
  beginInsertRows({}, announced_, count() - 1);
  announced_ = count();
  endInsertRows();
}

void ListModel::remove(ListItem* item) {
  announce();
  const auto row = item->row_;
  if (at(row) != item) return;
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  --announced_;
  for (auto behind = rows_.begin() + row; behind != rows_.end(); ++behind) --(*behind)->row_;
  endRemoveRows();
  *item = {};
  free_.push_back(item);
}

void ListModel::clear() {
  if (rows_.empty()) return;
  beginResetModel();
  rows_.clear();
  free_.clear();
  blocks_.clear();
  unused_ = 0;
  announced_ = 0;
  endResetModel();
}

ListItem* ListModel::at(int row) const {
  return row >= 0 && row < count() ? rows_[static_cast<size_t>(row)] : nullptr;
}

void ListModel::noteChange(const ListItem* item, int column) {
  if (item->row_ >= announced_ || column >= columnCount()) return;
  const auto cell = index(item->row_, column);
  emit dataChanged(cell, cell);
}

QVariant ListModel::icon(const QString& key) const {
  auto found = icons_.find(key);
  if (found == icons_.end()) found = icons_.insert(key, iconFor(key));
  return *found;
}

}  // namespace qinghe

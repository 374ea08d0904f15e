#include "forms/CellEditor.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

#include "forms/Prompts.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

int pixels(int twips) {
  return qRound(twips / 15.0);
}

int lessTwips(int length, int twips) {
  return pixels(length * 15 - twips);
}

bool isReturn(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool isInputKey(int key) {
  return isReturn(key) || key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Escape ||
         key == Qt::Key_Up || key == Qt::Key_Down;
}

bool isListKey(int key) {
  return isReturn(key) || key == Qt::Key_F2;
}

Qt::KeyboardModifiers modifiersOf(const QKeyEvent& event) {
  auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
  if (event.key() == Qt::Key_Backtab) modifiers &= ~Qt::ShiftModifier;
  return modifiers;
}

}  // namespace

CellEditor::CellEditor(ListView* list, QList<CellColumn> columns, const CellPlace& place)
    : QObject(list),
      list_(list),
      viewport_(list->viewport()),
      columns_(std::move(columns)),
      place_(place) {
  for (const CellColumn& column : columns_) addInput(column);
  watchList();
}

void CellEditor::addInput(const CellColumn& column) {
  auto* input = new TextBox(column.input, TextBox::Lines::One, list_->parentWidget());
  input->hide();
  input->onValidate = [this] { return isLeavable(); };
  input->editor()->installEventFilter(this);
  connect(input, &TextBox::changed, this, &CellEditor::changed);
  connect(input, &TextBox::gotFocus, input, &TextBox::selectAll);
  connect(input, &TextBox::lostFocus, this, &CellEditor::finish);
  inputs_.push_back(input);
}

void CellEditor::watchList() {
  list_->installEventFilter(this);
  viewport_->installEventFilter(this);
  connect(list_, &ListView::mouseDown, this, [this](Qt::MouseButton, const QPoint& position) {
    hitRow_ = list_->itemUnder(position);
  });
  connect(list_, &ListView::mouseUp, this, &CellEditor::release);
  // Rows that go take the input with them, which holds one of them.
  connect(list_->model(), &QAbstractItemModel::rowsAboutToBeRemoved, this, &CellEditor::forget);
  connect(list_->model(), &QAbstractItemModel::modelAboutToBeReset, this, &CellEditor::forget);
  for (auto* bar : {list_->horizontalScrollBar(), list_->verticalScrollBar()}) {
    connect(bar, &QScrollBar::valueChanged, this, &CellEditor::place);
  }
  connect(list_->header(), &QHeaderView::sectionResized, this, &CellEditor::place);
}

TextBox* CellEditor::input(const QString& name) const {
  for (auto* input : inputs_) {
    if (input->objectName() == name) return input;
  }
  return nullptr;
}

bool CellEditor::isTouchable(const ListItem* row) const {
  return row != nullptr && row->key() != u"Count ID";
}

void CellEditor::release(Qt::MouseButton button, const QPoint& position) {
  if (!isTouchable(hitRow_)) return;
  editRow_ = hitRow_;
  if (button == Qt::RightButton) {
    emit rightReleased(editRow_, list_->viewport()->mapToGlobal(position));
  } else if (button == Qt::LeftButton && (!mayOpen || mayOpen())) {
    const int index = inputAt(position.x());
    if (index >= 0) open(editRow_, columns_[index].column);
  }
}

int CellEditor::inputAt(int x) const {
  for (int i = 0; i < columns_.size(); ++i) {
    const int left = list_->columnViewportPosition(columns_[i].column);
    const int right = left + list_->columnWidth(columns_[i].column);
    if (x > left && (columns_[i].upToTheRightEnd || x < right)) return i;
  }
  return -1;
}

bool CellEditor::open(ListItem* row, int column) {
  int index = 0;
  while (index < columns_.size() && columns_[index].column != column) ++index;
  if (row == nullptr || index == columns_.size() || !leave()) return false;
  hitRow_ = row;
  editRow_ = row;
  open_ = index;
  auto* input = inputs_[static_cast<std::size_t>(index)];
  input->editor()->setAccessibleName(
      list_->model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
  input->setText(row->subItem(column));
  place();
  input->show();
  input->raise();
  input->setFocus(Qt::OtherFocusReason);
  return true;
}

void CellEditor::place() {
  if (!isOpen()) return;
  const int column = columns_[open_].column;
  const auto cell = list_->cellRect(editRow_, column);
  const int height = lessTwips(list_->cellRect(list_->itemAt(0)).height(), place_.lessHeight);
  const int width = lessTwips(list_->columnWidth(column), place_.lessWidth);
  // Below the titles and inside the frame, where the list counts its rows and columns from.
  const auto inside = list_->viewport()->pos() - QPoint(list_->frameWidth(), list_->frameWidth());
  const auto corner = list_->pos() + inside + cell.topLeft() +
                      QPoint(pixels(place_.rightOfCell), pixels(place_.belowRow));
  inputs_[static_cast<std::size_t>(open_)]->setGeometry(QRect(corner, QSize(width, height)));
}

QString CellEditor::complaint() const {
  const auto& check = columns_[open_].complaint;
  return check ? check(inputs_[static_cast<std::size_t>(open_)]->text()) : QString();
}

bool CellEditor::isLeavable() {
  if (!isOpen()) return true;
  const auto text = complaint();
  if (text.isEmpty()) return true;
  prompts().ask(list_->window(), {text});
  return false;
}

void CellEditor::close() {
  auto* input = inputs_[static_cast<std::size_t>(open_)];
  open_ = -1;
  // A focus that a hidden input leaves behind goes anywhere.
  if (input->editor()->hasFocus()) list_->setFocus(Qt::OtherFocusReason);
  input->hide();
}

void CellEditor::finish() {
  if (!isOpen()) return;
  const int index = open_;
  close();
  if (hitRow_ == nullptr || editRow_ == nullptr) return;
  const auto& afterLeave = columns_[index].afterLeave;
  if (afterLeave) afterLeave(*editRow_, inputs_[static_cast<std::size_t>(index)]->text());
}

bool CellEditor::leave() {
  if (!isLeavable()) return false;
  finish();
  return true;
}

void CellEditor::takeAcceptable() {
  if (isOpen() && complaint().isEmpty()) finish();
}

void CellEditor::hide() {
  if (isOpen()) close();
}

void CellEditor::forget() {
  hide();
  hitRow_ = nullptr;
  editRow_ = nullptr;
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event) {
  // By its address: a list on its way out no longer knows its viewport.
  if (watched == viewport_) {
    if (event->type() == QEvent::Resize) place();
    return false;
  }
  if (watched == list_ && event->type() == QEvent::ContextMenu) {
    // The mouse's own comes with its release.
    return static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard &&
           menuKey();
  }
  const bool press = event->type() == QEvent::KeyPress;
  if (!press && event->type() != QEvent::ShortcutOverride) return false;
  const auto& keyEvent = *static_cast<QKeyEvent*>(event);
  if (modifiersOf(keyEvent) != Qt::NoModifier) return false;
  const int key = keyEvent.key();
  const bool onList = watched == list_;
  if (!(onList ? isListKey(key) : isInputKey(key) && isOpen())) return false;
  if (!press) {
    event->accept();
    return false;
  }
  return onList ? openFirst() : inputKey(key);
}

bool CellEditor::menuKey() {
  auto* row = list_->selectedItem();
  if (!isTouchable(row)) return false;
  editRow_ = row;
  emit rightReleased(row, list_->viewport()->mapToGlobal(list_->cellRect(row).bottomLeft()));
  return true;
}

bool CellEditor::openFirst() {
  const auto* row = list_->selectedItem();
  if (!isTouchable(row)) return false;
  if (mayOpen && !mayOpen()) return false;
  return openNext(row->row(), -1, 1);
}

bool CellEditor::inputKey(int key) {
  if (key == Qt::Key_Escape) {
    hide();
  } else if (key == Qt::Key_Up || key == Qt::Key_Down) {
    walkRows(key == Qt::Key_Up ? -1 : 1);
  } else {
    walk(key == Qt::Key_Backtab ? -1 : 1);
  }
  return true;
}

void CellEditor::walk(int step) {
  const int index = open_;
  const int row = editRow_->row();
  if (leave() && (!mayOpen || mayOpen())) openNext(row, index, step);
}

bool CellEditor::openNext(int row, int index, int step) {
  const auto count = static_cast<int>(columns_.size());
  index += step;
  if (index < 0 || index >= count) {
    row += step;
    index = step > 0 ? 0 : count - 1;
  }
  return openAt(touchableRow(row, step), index);
}

void CellEditor::walkRows(int step) {
  const int index = open_;
  const int row = touchableRow(editRow_->row() + step, step);
  if (list_->itemAt(row) != nullptr && leave() && (!mayOpen || mayOpen())) openAt(row, index);
}

int CellEditor::touchableRow(int row, int step) const {
  while (list_->itemAt(row) != nullptr && !isTouchable(list_->itemAt(row))) row += step;
  return row;
}

bool CellEditor::openAt(int row, int index) {
  auto* item = list_->itemAt(row);
  if (item == nullptr) return false;
  const int column = columns_[index].column;
  list_->setSelectedItem(item);
  list_->scrollTo(list_->currentIndex().siblingAtColumn(column));
  return open(item, column);
}

}  // namespace qinghe

#include "forms/Splitter.h"

#include <QEvent>
#include <QMouseEvent>

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr int barWidth = 3;
constexpr int grabMargin = 2;

}  // namespace

SplitPane::SplitPane(QWidget* first, QWidget* second, QWidget* parent)
    : QWidget(parent), first_(first), second_(second), bar_(new QWidget(this)) {
  first_->setParent(this);
  second_->setParent(this);
  bar_->setObjectName(u"Splitter"_s);
  bar_->setAutoFillBackground(true);
  paintBar(false);
  // The panes cover all but the bar and the margins beside it, so the pointer of the whole is
  // seen there alone.
  setCursor(Qt::SplitHCursor);
  first_->setCursor(Qt::ArrowCursor);
  second_->setCursor(Qt::ArrowCursor);
  installEventFilter(this);
  bar_->installEventFilter(this);
}

void SplitPane::setPosition(int x) {
  if (x == position_) return;
  position_ = x;
  layOut();
  emit moved();
}

QSize SplitPane::sizeHint() const {
  const auto left = first_->sizeHint();
  const auto right = second_->sizeHint();
  return {left.width() + barWidth + 2 * grabMargin + right.width(),
          qMax(left.height(), right.height())};
}

QSize SplitPane::minimumSizeHint() const {
  return {2 * leastPane_ + barWidth,
          qMax(first_->minimumSizeHint().height(), second_->minimumSizeHint().height())};
}

void SplitPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (position_ == 0) position_ = qMax(leastPane_, width() / 3);
  layOut();
}

bool SplitPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched != bar_ && watched != this) return QWidget::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      press(*static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseMove:
      if (dragging_) drag(*static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) finishDrag();
      return true;
    case QEvent::LayoutRequest:
      updateGeometry();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void SplitPane::press(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton) {
    finishDrag();
    return;
  }
  dragging_ = true;
  grabOffset_ = mapFromGlobal(event.globalPosition()).toPoint().x() - bar_->x();
  paintBar(true);
  bar_->raise();
}

void SplitPane::drag(const QMouseEvent& event) {
  const int x = mapFromGlobal(event.globalPosition()).toPoint().x() - grabOffset_;
  bar_->move(qBound(0, x, width() - barWidth), 0);
}

void SplitPane::finishDrag() {
  if (!dragging_) return;
  dragging_ = false;
  paintBar(false);
  const int x = bar_->x();
  const bool kept = x >= leastPane_ && x <= width() - leastPane_ && x != position_;
  if (kept) position_ = x;
  layOut();
  if (kept) emit moved();
}

void SplitPane::paintBar(bool dragged) {
  auto colours = palette();
  colours.setColor(QPalette::Window, dragged ? QColor(Qt::black) : colours.color(QPalette::Button));
  bar_->setPalette(colours);
}

void SplitPane::layOut() {
  // A window that became too narrow for the wanted place gets it back when it grows.
  const int most = qMax(leastPane_, width() - leastPane_);
  const int x = qBound(qMin(leastPane_, most), position_, most);
  const int left = x - grabMargin;
  const int right = x + barWidth + grabMargin;
  first_->setGeometry(0, 0, qMax(0, left), height());
  bar_->setGeometry(x, 0, barWidth, height());
  second_->setGeometry(right, 0, qMax(0, width() - right), height());
}

}  // namespace qinghe

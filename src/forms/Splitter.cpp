#include "forms/Splitter.h"

#include <QEvent>
#include <QMouseEvent>

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

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

void SplitPane::setPosition(int position) {
  if (position == position_) return;
  position_ = position;
  layOut();
  emit moved();
}

void SplitPane::setOrientation(Qt::Orientation orientation) {
  orientation_ = orientation;
  setCursor(orientation == Qt::Horizontal ? Qt::SplitHCursor : Qt::SplitVCursor);
  layOut();
}

void SplitPane::setBarName(const QString& name) {
  bar_->setObjectName(name);
}

void SplitPane::setBarWidth(int pixels) {
  barWidth_ = pixels;
  layOut();
}

int SplitPane::along(const QPoint& point) const {
  return orientation_ == Qt::Horizontal ? point.x() : point.y();
}

int SplitPane::length() const {
  return orientation_ == Qt::Horizontal ? width() : height();
}

QRect SplitPane::slice(int from, int size) const {
  return orientation_ == Qt::Horizontal ? QRect(from, 0, size, height())
                                        : QRect(0, from, width(), size);
}

QSize SplitPane::sizeHint() const {
  const auto first = first_->sizeHint();
  const auto second = second_->sizeHint();
  const int between = barWidth_ + 2 * grabMargin;
  if (orientation_ == Qt::Vertical) {
    return {qMax(first.width(), second.width()), first.height() + between + second.height()};
  }
  return {first.width() + between + second.width(), qMax(first.height(), second.height())};
}

QSize SplitPane::minimumSizeHint() const {
  const auto first = first_->minimumSizeHint();
  const auto second = second_->minimumSizeHint();
  const int least = 2 * leastPane_ + barWidth_;
  if (orientation_ == Qt::Vertical) return {qMax(first.width(), second.width()), least};
  return {least, qMax(first.height(), second.height())};
}

void SplitPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (position_ == 0) position_ = qMax(leastPane_, length() / 3);
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
    case QEvent::PaletteChange:
      if (watched == this) paintBar(dragging_);
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
  grabOffset_ = along(mapFromGlobal(event.globalPosition()).toPoint()) - along(bar_->pos());
  paintBar(true);
  bar_->raise();
}

void SplitPane::drag(const QMouseEvent& event) {
  const int place = along(mapFromGlobal(event.globalPosition()).toPoint()) - grabOffset_;
  bar_->move(slice(qBound(0, place, length() - barWidth_), barWidth_).topLeft());
}

void SplitPane::finishDrag() {
  if (!dragging_) return;
  dragging_ = false;
  paintBar(false);
  const int most = qMax(leastPane_, length() - leastPane_);
  int place = along(bar_->pos());
  if (clamping_) place = qBound(leastPane_, place, most);
  const bool kept = place >= leastPane_ && place <= length() - leastPane_ && place != position_;
  if (kept) position_ = place;
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
  const int most = qMax(leastPane_, length() - leastPane_);
  const int place = qBound(qMin(leastPane_, most), position_, most);
  const int behind = place + barWidth_ + grabMargin;
  first_->setGeometry(slice(0, qMax(0, place - grabMargin)));
  bar_->setGeometry(slice(place, barWidth_));
  second_->setGeometry(slice(behind, qMax(0, length() - behind)));
}

}  // namespace qinghe

#include "reports/PreviewPage.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int kGap = 14;  ///< around and between the pages, pixels
constexpr int kCachedPixels = 64 << 20;
constexpr double kZoomStep = 1.25;

}  // namespace

PreviewPage::PreviewPage(PageLayout& pages, QWidget* parent)
    : QAbstractScrollArea(parent), pages_(pages), painted_(kCachedPixels) {
  setObjectName(u"PreviewPage"_s);
  setAccessibleName(u"报表页面"_s);
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Mid);
  viewport()->setAutoFillBackground(true);
  // Always there, so that fitting to the width does not chase its own tail.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setFrameShape(QFrame::NoFrame);
}

double PreviewPage::pixelsPerMillimetre() const {
  return logicalDpiX() / 25.4 * zoom_;
}

QSize PreviewPage::pageSize() const {
  const double scale = pixelsPerMillimetre();
  return {std::max(1, qRound(pages_.paper().width * scale)),
          std::max(1, qRound(pages_.paper().height * scale))};
}

QRect PreviewPage::pageRect(int index) const {
  const QSize size = pageSize();
  const int spare = viewport()->width() - size.width();
  const int x = spare >= 2 * kGap ? spare / 2 : kGap - horizontalScrollBar()->value();
  const int y = kGap + index * (size.height() + kGap) - verticalScrollBar()->value();
  return {QPoint(x, y), size};
}

int PreviewPage::pageAt(int y) const {
  const int step = pageSize().height() + kGap;
  const int index = (y + verticalScrollBar()->value() - kGap / 2) / step;
  return std::clamp(index, 0, pages_.knownPages() - 1);
}

int PreviewPage::currentPage() const {
  return pageAt(viewport()->height() / 2) + 1;
}

void PreviewPage::showPage(int page) {
  const int index = std::clamp(page, 1, pages_.knownPages()) - 1;
  const QSize size = pageSize();
  int top = index * (size.height() + kGap);
  // A page lower than the view stands in its middle, so that it is the current one.
  top -= std::max(0, (viewport()->height() - size.height() - 2 * kGap) / 2);
  verticalScrollBar()->setValue(top);
}

void PreviewPage::setZoom(double zoom) {
  fitted_ = false;
  applyZoom(zoom);
}

void PreviewPage::fitWidth() {
  fitted_ = true;
  const double wanted = viewport()->width() - 2 * kGap;
  applyZoom(wanted / (pages_.paper().width * logicalDpiX() / 25.4));
}

void PreviewPage::applyZoom(double zoom) {
  zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
  // What stands in the middle of the view stays there.
  const double before = pageSize().height() + kGap;
  const int middle = viewport()->height() / 2;
  const double position = (verticalScrollBar()->value() + middle - kGap) / before;
  if (zoom != zoom_) {
    zoom_ = zoom;
    painted_.clear();
  }
  updateScrollBars();
  const bool atTop = verticalScrollBar()->value() == 0;
  if (!atTop) {
    verticalScrollBar()->setValue(qRound(position * (pageSize().height() + kGap)) + kGap - middle);
  }
  viewport()->update();
  emit zoomChanged(zoom_);
}

void PreviewPage::updateScrollBars() {
  const QSize size = pageSize();
  const QSize view = viewport()->size();
  const qint64 height = kGap + qint64{pages_.knownPages()} * (size.height() + kGap);
  constexpr qint64 kMost = 2'000'000'000;
  verticalScrollBar()->setRange(
      0, static_cast<int>(std::clamp<qint64>(height - view.height(), 0, kMost)));
  verticalScrollBar()->setPageStep(view.height());
  verticalScrollBar()->setSingleStep(48);
  horizontalScrollBar()->setRange(0, std::max(0, size.width() + 2 * kGap - view.width()));
  horizontalScrollBar()->setPageStep(view.width());
  horizontalScrollBar()->setSingleStep(48);
}

void PreviewPage::pagesFound() {
  // Pages painted before the last one was found lack the number of pages.
  if (pages_.isComplete()) painted_.clear();
  updateScrollBars();
  viewport()->update();
}

const QPixmap* PreviewPage::painted(int index) {
  if (const QPixmap* there = painted_.object(index)) return there;
  const double ratio = devicePixelRatioF();
  const QSize size = pageSize() * ratio;
  auto* pixmap = new QPixmap(size);
  pixmap->fill(Qt::white);
  try {
    const ReportPage page = pages_.page(index);
    QPainter painter(pixmap);
    const double scale = pixelsPerMillimetre() * ratio / ReportPainter::kUnitsPerMillimetre;
    painter.scale(scale, scale);
    painter_.paint(painter, page);
  } catch (const Failure& failure) {
    if (failure.description() != lastFailure_) {
      lastFailure_ = failure.description();
      emit failed(lastFailure_);
    }
  }
  pixmap->setDevicePixelRatio(ratio);
  // One page must always fit, however large it is painted.
  const int cost =
      static_cast<int>(std::min<qint64>(qint64{size.width()} * size.height() * 4, kCachedPixels));
  painted_.insert(index, pixmap, cost);
  return painted_.object(index);
}

void PreviewPage::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const int last = pageAt(event->rect().bottom());
  for (int index = pageAt(event->rect().top()); index <= last; ++index) {
    const QRect rect = pageRect(index);
    if (!rect.intersects(event->rect())) continue;
    painter.fillRect(rect.translated(2, 2), QColor(0, 0, 0, 60));
    if (const QPixmap* pixmap = painted(index)) painter.drawPixmap(rect.topLeft(), *pixmap);
  }
}

void PreviewPage::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  if (fitted_) {
    fitWidth();
  } else {
    updateScrollBars();
  }
}

void PreviewPage::scrollContentsBy(int, int) {
  viewport()->update();
  const int page = currentPage();
  if (page == lastPage_) return;
  lastPage_ = page;
  emit currentPageChanged(page);
}

void PreviewPage::wheelEvent(QWheelEvent* event) {
  if (!event->modifiers().testFlag(Qt::ControlModifier)) {
    QAbstractScrollArea::wheelEvent(event);
    return;
  }
  constexpr double kNotch = 120;
  setZoom(zoom_ * std::pow(kZoomStep, event->angleDelta().y() / kNotch));
  event->accept();
}

void PreviewPage::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Home:
      verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMinimum);
      break;
    case Qt::Key_End:
      verticalScrollBar()->triggerAction(QAbstractSlider::SliderToMaximum);
      break;
    case Qt::Key_Space:
      verticalScrollBar()->triggerAction(event->modifiers().testFlag(Qt::ShiftModifier)
                                             ? QAbstractSlider::SliderPageStepSub
                                             : QAbstractSlider::SliderPageStepAdd);
      break;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

}  // namespace qinghe

#include "shell/brand_picture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

namespace qinghe {

namespace {

// All shapes are drawn in a unit square and scaled, so they are sharp at every size.
QPainterPath cloud(QPointF leftFoot, qreal width) {
  const qreal x = leftFoot.x();
  const qreal y = leftFoot.y();
  const qreal w = width;
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addRoundedRect(QRectF(x, y - 0.2 * w, w, 0.2 * w), 0.1 * w, 0.1 * w);
  path.addEllipse(QPointF(x + 0.3 * w, y - 0.2 * w), 0.17 * w, 0.17 * w);
  path.addEllipse(QPointF(x + 0.58 * w, y - 0.24 * w), 0.22 * w, 0.22 * w);
  return path;
}

// A hill that runs over the whole width; `low` and `high` are its heights at the edges.
QPainterPath hill(const QRectF& box, qreal left, qreal middle, qreal right) {
  const auto at = [&box](qreal x, qreal y) {
    return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
  };
  QPainterPath path(at(0, 1));
  path.lineTo(at(0, left));
  path.cubicTo(at(0.3, left - 0.06), at(0.45, middle + 0.05), at(0.62, middle));
  path.cubicTo(at(0.8, middle - 0.05), at(0.9, right), at(1, right));
  path.lineTo(at(1, 1));
  path.closeSubpath();
  return path;
}

}  // namespace

void paintBrandMark(QPainter& painter, const QRectF& box) {
  QSvgRenderer mark(QStringLiteral(":/icons/qinghe.svg"));
  mark.render(&painter, box);
}

void paintSplashPicture(QPainter& painter, const QRectF& box) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);

  QLinearGradient sky(box.topLeft(), box.bottomLeft());
  sky.setColorAt(0, QColor(0xDF, 0xF1, 0xF7));
  sky.setColorAt(0.75, QColor(0xFA, 0xFD, 0xF6));
  painter.fillRect(box, sky);

  const qreal w = box.width();
  const qreal h = box.height();
  painter.setBrush(QColor(255, 255, 255, 210));
  painter.drawPath(cloud(box.topLeft() + QPointF(0.46 * w, 0.20 * h), 0.17 * w));
  painter.drawPath(cloud(box.topLeft() + QPointF(0.56 * w, 0.64 * h), 0.24 * w));

  painter.setBrush(QColor(0xBF, 0xE3, 0xB4));
  painter.drawPath(hill(box, 0.80, 0.70, 0.62));
  painter.setBrush(QColor(0x7F, 0xC4, 0x83));
  painter.drawPath(hill(box, 0.76, 0.80, 0.72));
  QLinearGradient field(0, box.top() + 0.8 * h, 0, box.bottom());
  field.setColorAt(0, QColor(0x2E, 0x8B, 0x57));
  field.setColorAt(1, QColor(0x14, 0x5F, 0x4B));
  painter.setBrush(field);
  painter.drawPath(hill(box, 0.86, 0.84, 0.80));

  const qreal side = 0.30 * h;
  paintBrandMark(painter, QRectF(box.right() - 0.08 * w - side, box.top() + 0.12 * h, side, side));
  painter.restore();
}

}  // namespace qinghe

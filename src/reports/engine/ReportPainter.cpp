#include "reports/engine/ReportPainter.h"

#include <QImageReader>
#include <QPaintEngine>
#include <QPen>
#include <QtMath>
#include <algorithm>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr double kUnits = ReportPainter::kUnitsPerMillimetre;

/// The picture drawn at the size it is shown in: scaled pixels would be ragged on the screen.
QImage readLogo(int pixels) {
  QImageReader reader(u":/icons/Logo.svg"_s);
  if (!reader.canRead()) return {};
  reader.setScaledSize(reader.size().scaled(pixels, pixels, Qt::KeepAspectRatio));
  return reader.read();
}

/// Pixels of the device for a width in report units; a PDF has none and gets twice its resolution.
int pixelsFor(const QPainter& painter, double width) {
  const bool pixels = painter.paintEngine()->type() == QPaintEngine::Raster;
  return std::clamp(qCeil(width * painter.deviceTransform().m11() * (pixels ? 1 : 2)), 8, 512);
}

/// Below this a shrunken number can no longer be read.
constexpr double kLeastPoints = 4;

/// Numbers, dates, codes: cut off they would be wrong, or another one's. Names are not.
bool isOnlyWhole(const QString& text) {
  constexpr qsizetype kMostCharacters = 40;
  if (text.size() > kMostCharacters) return false;
  const auto fits = [](QChar c) { return c >= u' ' && c <= u'~' && !c.isLower(); };
  return std::ranges::any_of(text, [](QChar c) { return c.isDigit(); }) &&
         std::ranges::all_of(text, fits);
}

}  // namespace

void ReportPainter::paint(QPainter& painter, const ReportPage& page) {
  painter.save();
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                         QPainter::SmoothPixmapTransform | QPainter::LosslessImageRendering);
  current_ = nullptr;
  painter.setPen(Qt::black);
  for (const auto& placed : page.boxes) {
    switch (placed.box->kind) {
      case ReportBox::Kind::Line:
        paintLine(painter, placed);
        break;
      case ReportBox::Kind::Image:
        paintImage(painter, placed);
        break;
      default:
        paintText(painter, placed);
    }
  }
  painter.restore();
}

void ReportPainter::paintText(QPainter& painter, const PlacedBox& placed) {
  if (placed.text.isEmpty()) return;
  const ReportBox& box = *placed.box;
  const int size = std::clamp(qRound(box.points * kUnitsPerInch / 72.0), 4, 2000);
  TextFitter& fitter = fitters_.of(size, box.bold);
  double width = 0;
  double scale = 1;
  const double room = placed.rect.width() * kUnits;
  QString text = fitter.fit(placed.text, room, &width);
  if (text != placed.text && isOnlyWhole(placed.text)) {
    const double wanted = fitter.widthOf(placed.text);
    if (box.points * room >= kLeastPoints * wanted) {
      text = placed.text;
      scale = room / wanted;
      width = room;
    }
  }
  if (text.isEmpty()) return;
  double x = placed.rect.x() * kUnits;
  if (box.align == ReportBox::Align::Right) x += room - width;
  if (box.align == ReportBox::Align::Center) x += (room - width) / 2;
  const double spare = placed.rect.height() * kUnits - fitter.ascent() - fitter.descent();
  const double y = placed.rect.y() * kUnits + spare / 2 + fitter.ascent();
  if (scale < 1) {
    const QTransform before = painter.transform();
    painter.translate(x, y);
    painter.scale(scale, scale);
    drawText(painter, fitter, {}, text);
    painter.setTransform(before);
    return;
  }
  drawText(painter, fitter, {x, y}, text);
}

void ReportPainter::drawText(QPainter& painter, TextFitter& fitter, const QPointF& place,
                             const QString& text) {
  if (const QGlyphRun* glyphs = fitter.glyphs(text)) {
    painter.drawGlyphRun(place, *glyphs);
    return;
  }
  if (current_ != &fitter) {
    painter.setFont(fitter.font());
    current_ = &fitter;
  }
  painter.drawText(place, text);
}

void ReportPainter::paintLine(QPainter& painter, const PlacedBox& placed) {
  const QPen before = painter.pen();
  QPen pen(Qt::black, placed.box->weight * kUnits);
  pen.setCapStyle(Qt::FlatCap);
  painter.setPen(pen);
  painter.drawLine(QLineF(placed.rect.topLeft() * kUnits, placed.rect.bottomRight() * kUnits));
  painter.setPen(before);
}

void ReportPainter::paintImage(QPainter& painter, const PlacedBox& placed) {
  const QSizeF room = placed.rect.size() * kUnits;
  const int pixels = pixelsFor(painter, std::min(room.width(), room.height()));
  if (!logos_.contains(pixels)) logos_.insert(pixels, readLogo(pixels));
  const QImage& logo = logos_[pixels];
  if (logo.isNull()) return;
  const QSizeF size = QSizeF(logo.size()).scaled(room, Qt::KeepAspectRatio);
  QRectF target(QPointF(), size);
  target.moveCenter(placed.rect.center() * kUnits);
  painter.drawImage(target, logo);
}

}  // namespace qinghe

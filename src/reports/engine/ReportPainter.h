#pragma once

#include <QHash>
#include <QImage>
#include <QPainter>

#include "reports/engine/PageLayout.h"
#include "reports/engine/TextFitter.h"

namespace qinghe {

/// Paints pages to a screen, a printer or a PDF, the same everywhere: black on whatever is there.
///
/// A text too wide for its box is cut with "…"; a number, date or code is painted smaller instead,
/// down to 4 points.
///
/// Keep one for all pages of a document; it holds the fonts and the picture.
class ReportPainter {
 public:
  /// Report units to the inch: every half point is a whole number of them.
  static constexpr int kUnitsPerInch = 288;
  static constexpr double kUnitsPerMillimetre = kUnitsPerInch / 25.4;

  /// Paints in report units from the painter's origin, the paper's left upper corner.
  void paint(QPainter& painter, const ReportPage& page);

 private:
  void paintText(QPainter& painter, const PlacedBox& placed);
  void drawText(QPainter& painter, TextFitter& fitter, const QPointF& place, const QString& text);
  void paintLine(QPainter& painter, const PlacedBox& placed);
  void paintImage(QPainter& painter, const PlacedBox& placed);

  TextFitters fitters_;
  const TextFitter* current_ = nullptr;
  QHash<int, QImage> logos_;  ///< by their width in pixels
};

}  // namespace qinghe

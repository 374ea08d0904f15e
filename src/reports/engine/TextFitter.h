#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <vector>

namespace qinghe {

/// One font of the reports with the widths of its characters, so that a text is measured by adding
/// them up. Report fonts have no kerning, which makes the sum exact for all scripts whose letters
/// stand side by side; other texts are measured as a whole.
class TextFitter {
 public:
  /// `pixelSize` in the units that texts are measured in.
  TextFitter(int pixelSize, bool bold);

  const QFont& font() const { return font_; }
  double ascent() const { return ascent_; }
  double descent() const { return descent_; }

  double widthOf(const QString& text);
  /// The text as one line of plain text that fits the width, cut with "…" where it is too long;
  /// empty when not even that fits.
  QString fit(const QString& text, double width, double* fittedWidth);

  /// The text as glyphs beside one another, which spares the painter to find them out each time;
  /// null for a text that needs more than that, or another font for some letter. Lives until the
  /// next call.
  const QGlyphRun* glyphs(const QString& text);

 private:
  double widthOf(QChar character);
  quint32 glyphOf(QChar character);
  double simpleWidth(QStringView text, double limit, qsizetype* fitting);

  QFont font_;
  QFontMetricsF metrics_;
  double ascent_, descent_;
  std::vector<float> widths_;
  QRawFont raw_;
  std::vector<qint64> glyphs_;  ///< of characters; -1 for not looked up yet
  std::vector<quint32> runGlyphs_;
  std::vector<QPointF> runPlaces_;
  QGlyphRun run_;
};

/// The fonts of one painter, made when first used.
class TextFitters {
 public:
  TextFitter& of(int pixelSize, bool bold);

 private:
  std::map<std::pair<int, bool>, std::unique_ptr<TextFitter>> fitters_;
};

/// The families that reports are set in, best first: Latin and Chinese from one design.
QStringList reportFamilies();

/// The font of report texts; one size for the screen, the printer and a PDF, without hinting.
QFont reportFont(int pixelSize, bool bold);

}  // namespace qinghe

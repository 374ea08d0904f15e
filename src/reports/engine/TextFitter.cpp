#include "reports/engine/TextFitter.h"

#include <algorithm>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr QChar kEllipsis(0x2026);
constexpr double kTolerance = 0.01;
/// No box holds as many characters; a text from outside may be of any length.
constexpr qsizetype kMostCharacters = 600;

/// Letters that neither join nor combine, in the reading direction of the page.
bool isSimple(QChar character) {
  const char16_t code = character.unicode();
  return (code >= 0x20 && code < 0x300 && code != 0xAD) || (code >= 0x2010 && code <= 0x2027) ||
         (code >= 0x2030 && code < 0x205F) || (code >= 0x20A0 && code < 0x20D0) ||
         (code >= 0x2100 && code < 0x2C00) || (code >= 0x3000 && code < 0x302A) ||
         (code >= 0x3030 && code < 0x3099) || (code >= 0x309B && code < 0xA4D0) ||
         (code >= 0xAC00 && code < 0xD7A4) || (code >= 0xF900 && code < 0xFB00) ||
         (code >= 0xFF01 && code < 0xFFE7);
}

bool isSimple(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return isSimple(c); });
}

/// Line ends, tabs and other control characters become blanks: a box is one line.
QString oneLine(const QString& text) {
  QString line = text.left(kMostCharacters);
  for (QChar& character : line) {
    const auto category = character.category();
    if (category == QChar::Other_Control || category == QChar::Separator_Line ||
        category == QChar::Separator_Paragraph) {
      character = u' ';
    }
  }
  return line;
}

}  // namespace

QStringList reportFamilies() {
  return {u"Noto Sans CJK SC"_s,    u"Noto Sans SC"_s,      u"Source Han Sans SC"_s,
          u"WenQuanYi Micro Hei"_s, u"WenQuanYi Zen Hei"_s, u"Droid Sans Fallback"_s,
          u"AR PL UMing CN"_s,      u"sans-serif"_s};
}

QFont reportFont(int pixelSize, bool bold) {
  QFont font;
  font.setFamilies(reportFamilies());
  font.setPixelSize(pixelSize);
  font.setBold(bold);
  font.setKerning(false);
  // The same widths on paper and at every zoom.
  font.setHintingPreference(QFont::PreferNoHinting);
  // Shaping gives figures behind a letter glyphs of their own, which no reader of a PDF can name;
  // nothing that is printed here needs it.
  font.setStyleStrategy(QFont::PreferNoShaping);
  return font;
}

TextFitter::TextFitter(int pixelSize, bool bold)
    : font_(reportFont(pixelSize, bold)),
      metrics_(font_),
      ascent_(metrics_.ascent()),
      descent_(metrics_.descent()),
      widths_(0x10000, -1.0F),
      raw_(QRawFont::fromFont(font_)),
      glyphs_(0x10000, -1) {
  run_.setRawFont(raw_);
}

double TextFitter::widthOf(QChar character) {
  float& width = widths_[character.unicode()];
  if (width < 0) width = static_cast<float>(metrics_.horizontalAdvance(character));
  return static_cast<double>(width);
}

quint32 TextFitter::glyphOf(QChar character) {
  qint64& glyph = glyphs_[character.unicode()];
  if (glyph < 0) {
    const auto found = raw_.glyphIndexesForString(QString(character));
    glyph = found.size() == 1 ? found.first() : 0;
  }
  return static_cast<quint32>(glyph);
}

const QGlyphRun* TextFitter::glyphs(const QString& text) {
  if (!raw_.isValid() || !isSimple(text)) return nullptr;
  runGlyphs_.clear();
  runPlaces_.clear();
  double x = 0;
  for (const QChar character : text) {
    const quint32 glyph = glyphOf(character);
    if (glyph == 0) return nullptr;
    runGlyphs_.push_back(glyph);
    runPlaces_.emplace_back(x, 0);
    x += widthOf(character);
  }
  run_.setRawData(runGlyphs_.data(), runPlaces_.data(), static_cast<int>(runGlyphs_.size()));
  return &run_;
}

/// Adds up widths until the limit is passed; `fitting` is the number of characters within it.
double TextFitter::simpleWidth(QStringView text, double limit, qsizetype* fitting) {
  double sum = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const double width = widthOf(text[i]);
    if (sum + width > limit) {
      *fitting = i;
      return sum;
    }
    sum += width;
  }
  *fitting = text.size();
  return sum;
}

double TextFitter::widthOf(const QString& text) {
  if (!isSimple(text)) return metrics_.horizontalAdvance(text);
  double sum = 0;
  for (const QChar character : text) sum += widthOf(character);
  return sum;
}

QString TextFitter::fit(const QString& text, double width, double* fittedWidth) {
  const QString line = oneLine(text);
  if (!isSimple(line)) {
    QString cut = metrics_.elidedText(line, Qt::ElideRight, width + kTolerance);
    *fittedWidth = metrics_.horizontalAdvance(cut);
    // A single letter may come back although it is too wide.
    return *fittedWidth > width + kTolerance ? QString() : cut;
  }
  qsizetype fitting = 0;
  *fittedWidth = simpleWidth(line, width + kTolerance, &fitting);
  if (fitting == line.size() && line.size() == text.size()) return line;
  const double mark = widthOf(kEllipsis);
  if (mark > width) {
    *fittedWidth = 0;
    return {};
  }
  *fittedWidth = simpleWidth(line, width + kTolerance - mark, &fitting) + mark;
  return line.left(fitting) + kEllipsis;
}

TextFitter& TextFitters::of(int pixelSize, bool bold) {
  auto& fitter = fitters_[{pixelSize, bold}];
  if (!fitter) fitter = std::make_unique<TextFitter>(pixelSize, bold);
  return *fitter;
}

}  // namespace qinghe

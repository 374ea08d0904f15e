#include "reports/engine/page_text.h"

#include <QLocale>
#include <cmath>
#include <optional>

#include "values/dates.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

struct NumberFormat {
  int decimals = 0;
  bool grouped = false;
};

std::optional<NumberFormat> readFormat(QStringView format) {
  constexpr qsizetype kMostDecimals = 10;
  const qsizetype point = format.indexOf(u'.');
  const QStringView whole = point < 0 ? format : format.first(point);
  const QStringView decimals = point < 0 ? QStringView() : format.sliced(point + 1);
  const bool grouped = whole == u"#,##0";
  if (!grouped && whole != u"0") return std::nullopt;
  if (point >= 0 && (decimals.isEmpty() || decimals.size() > kMostDecimals)) return std::nullopt;
  if (decimals.count(u'0') != decimals.size()) return std::nullopt;
  return NumberFormat{static_cast<int>(decimals.size()), grouped};
}

/// The whole number of the last decimals, rounded as a reader would: 2.0005 becomes 2001 although
/// its binary value is below it.
double roundAsRead(double value, double scale) {
  const double scaled = value * scale;
  const double nearest = std::round(scaled);
  // Only what is all but a half needs a look at its digits.
  constexpr double kFarFromHalf = 0.49;
  constexpr double kExact = 1e12;
  if (std::abs(scaled - nearest) < kFarFromHalf && std::abs(scaled) < kExact) return nearest;
  return std::round(QString::number(scaled, 'g', 15).toDouble());
}

/// So many last decimals with their point, not exceeding what a double tells apart.
QString withPoint(double lastDecimals, int decimals) {
  QString digits = QString::number(static_cast<qint64>(std::abs(lastDecimals)));
  if (decimals > 0) {
    digits = digits.rightJustified(decimals + 1, u'0');
    digits.insert(digits.size() - decimals, u'.');
  }
  return lastDecimals < 0 ? u'-' + digits : digits;
}

}  // namespace

QString expandPageText(const QString& text, const PageNumbers& numbers) {
  if (!text.contains(u'%')) return text;
  QString out;
  out.reserve(text.size() + 8);
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar next = text[i] == u'%' && i + 1 < text.size() ? text[i + 1] : QChar();
    if (next == u'p') {
      out += QString::number(numbers.page);
    } else if (next == u'P') {
      if (numbers.pages >= 0) out += QString::number(numbers.pages);
    } else if (next == u'd' || next == u'D') {
      out += textOf(numbers.date);
    } else {
      out += text[i];
      continue;
    }
    ++i;
  }
  return out;
}

QString formatNumber(double value, const QString& format) {
  const auto known = readFormat(format);
  // Beyond 15 digits there are no decimals left to round.
  if (!known || !std::isfinite(value) || std::abs(value) >= 1e15) return textOf(value);
  const double scale = std::pow(10.0, known->decimals);
  const double lastDecimals = roundAsRead(value, scale);
  constexpr double kMostTold = 9e15;
  if (!known->grouped && std::abs(lastDecimals) < kMostTold) {
    return withPoint(lastDecimals, known->decimals);
  }
  const double rounded = lastDecimals == 0 ? 0.0 : lastDecimals / scale;
  if (!known->grouped) return QString::number(rounded, 'f', known->decimals);
  QLocale plain = QLocale::c();
  plain.setNumberOptions(QLocale::DefaultNumberOptions);
  return plain.toString(rounded, 'f', known->decimals);
}

QString formatText(const QString& text, const QString& format) {
  if (format.isEmpty() || !IsNumeric(text)) return text;
  return formatNumber(Val(text.contains(u',') ? QString(text).remove(u',') : text), format);
}

}  // namespace qinghe

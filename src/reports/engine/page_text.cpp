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

std::optional<NumberFormat> readFormat(const QString& format) {
  constexpr qsizetype kMostDecimals = 10;
  const qsizetype point = format.indexOf(u'.');
  const QString whole = point < 0 ? format : format.left(point);
  const QString decimals = point < 0 ? QString() : format.mid(point + 1);
  const bool grouped = whole == u"#,##0"_s;
  if (!grouped && whole != u"0"_s) return std::nullopt;
  if (point >= 0 && (decimals.isEmpty() || decimals.size() > kMostDecimals)) return std::nullopt;
  if (decimals.count(u'0') != decimals.size()) return std::nullopt;
  return NumberFormat{static_cast<int>(decimals.size()), grouped};
}

/// Rounds what a reader sees, so that 2.0005 becomes 2.001 although its binary value is below it.
double roundAsRead(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double scaled = QString::number(value * scale, 'g', 15).toDouble();
  const double rounded = std::round(scaled) / scale;
  return rounded == 0.0 ? 0.0 : rounded;
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
  const double rounded = roundAsRead(value, known->decimals);
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

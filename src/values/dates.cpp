#include "values/dates.h"

#include <QRegularExpression>

#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// The number of so many digits at a place, -1 when there is anything else.
int digits(QStringView text, qsizetype from, int count) {
  int number = 0;
  for (qsizetype i = from; i < from + count; ++i) {
    const int digit = text[i].unicode() - u'0';
    if (digit < 0 || digit > 9) return -1;
    number = number * 10 + digit;
  }
  return number;
}

/// Times here are what a clock on the wall shows: without a zone, no hour is skipped or doubled.
std::optional<QDateTime> made(QDate date, QTime time) {
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  return QDateTime(date, time, Qt::UTC);
}

/// "2024-03-09 08:05:00", as local files keep dates: whole reports are made of these.
std::optional<QDateTime> readKeptDate(QStringView text) {
  constexpr qsizetype length = 19;
  if (text.size() != length || text[4] != u'-' || text[7] != u'-' || text[10] != u' ' ||
      text[13] != u':' || text[16] != u':') {
    return std::nullopt;
  }
  return made(QDate(digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2)),
              QTime(digits(text, 11, 2), digits(text, 14, 2), digits(text, 17, 2)));
}

}  // namespace

QString textOf(QDate value) {
  return u"%1-%2-%3"_s.arg(value.year()).arg(value.month()).arg(value.day());
}

QString textOf(const QDateTime& value) {
  const QString day = textOf(value.date());
  const QTime time = value.time();
  if (time.hour() == 0 && time.minute() == 0 && time.second() == 0) return day;
  return day + time.toString(u" H:mm:ss"_s);
}

std::optional<QDateTime> readDate(QStringView text) {
  if (const auto kept = readKeptDate(text)) return kept;
  static const QRegularExpression pattern(
      u"^ *(?:(?<year>[0-9]{4})(?<mark>[-/])(?<month>[0-9]{1,2})\\k<mark>(?<day>[0-9]{1,2})"
      "|(?<month2>[0-9]{1,2})/(?<day2>[0-9]{1,2})/(?<year2>[0-9]{4}))"
      "(?: +(?<hour>[0-9]{1,2}):(?<minute>[0-9]{1,2})(?::(?<second>[0-9]{1,2}))?)? *$"_s);
  constexpr qsizetype longestDate = 64;
  if (text.size() > longestDate) return std::nullopt;
  const QRegularExpressionMatch match = pattern.match(text.toString());
  if (!match.hasMatch()) return std::nullopt;
  const auto number = [&match](const QString& name) { return match.capturedView(name).toInt(); };
  const bool yearFirst = match.hasCaptured(u"year"_s);
  const QDate date = yearFirst ? QDate(number(u"year"_s), number(u"month"_s), number(u"day"_s))
                               : QDate(number(u"year2"_s), number(u"month2"_s), number(u"day2"_s));
  const QTime time(number(u"hour"_s), number(u"minute"_s), number(u"second"_s));
  return made(date, time);
}

QDateTime toDate(QStringView text) {
  const auto value = readDate(text);
  if (!value) throw TypeMismatch(text.left(40).toString());
  return *value;
}

QString conditionDate(QDate value) {
  return u"#%1/%2/%3#"_s.arg(value.month()).arg(value.day()).arg(value.year());
}

}  // namespace qinghe

#include "column_value.h"

#include <QDateTime>
#include <QString>
#include <cmath>

#include "text_codec.h"
#include "values/dates.h"
#include "values/numbers.h"

namespace qinghe::portal_server {

namespace {

constexpr std::size_t longestText = 4000;
constexpr std::size_t longestLongText = 1U << 20U;

QString qString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string stored(const QDateTime& moment) {
  return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString();
}

QDateTime dateTime(std::chrono::system_clock::time_point moment) {
  const auto sinceEpoch = moment.time_since_epoch();
  return QDateTime::fromSecsSinceEpoch(
      std::chrono::floor<std::chrono::seconds>(sinceEpoch).count());
}

std::optional<Value> wholeValue(std::string_view text) {
  const QString number = qString(text).trimmed();
  if (number.isEmpty()) return Value{std::int64_t{0}};
  if (!IsNumeric(number)) return {};
  const double value = Val(number);
  if (!(std::abs(value) < 1e15)) return {};
  return Value{static_cast<std::int64_t>(std::llround(roundHalfEven(value)))};
}

std::optional<Value> numericValue(std::string_view text) {
  if (text.size() > longestText) return {};
  const QString number = qString(text).trimmed();
  if (number.isEmpty()) return Value{std::int64_t{0}};
  if (!IsNumeric(number)) return Value{storedText(text)};
  const double value = Val(number);
  if (!std::isfinite(value)) return {};
  if (value == std::trunc(value) && std::abs(value) < 1e15) {
    return Value{static_cast<std::int64_t>(value)};
  }
  return Value{value};
}

std::optional<Value> flagValue(std::string_view text) {
  if (text.empty() || text == "0" || sameName(text, "false")) return Value{std::int64_t{0}};
  if (text == "1" || text == "-1" || sameName(text, "true")) return Value{std::int64_t{1}};
  return {};
}

}  // namespace

std::optional<Value> columnValue(const Column& column, std::string_view text) {
  switch (column.type) {
    case Type::Integer:
      return wholeValue(text);
    case Type::Numeric:
      return numericValue(text);
    case Type::Flag:
      return flagValue(text);
    case Type::Date: {
      if (text.empty()) return Value{std::string()};
      auto date = storedDate(text);
      return date ? std::optional<Value>(std::move(*date)) : std::nullopt;
    }
    case Type::Text:
    case Type::ExactText:
    case Type::LongText:
      break;
  }
  const std::size_t limit = column.type == Type::LongText ? longestLongText : longestText;
  if (text.size() > limit) return {};
  return Value{storedText(text)};
}

std::optional<std::string> storedDate(std::string_view text) {
  if (text.size() > 40) return {};
  const auto date = readDate(qString(text).trimmed());
  if (!date) return {};
  return stored(*date);
}

std::string printedDate(std::string_view stored) {
  if (stored.size() < 10) return std::string(stored);
  const auto unpadded = [&](std::size_t at) {
    return stored.substr(stored[at] == '0' ? at + 1 : at, stored[at] == '0' ? 1 : 2);
  };
  std::string printed(stored.substr(0, 5));
  printed.append(unpadded(5)).append("-").append(unpadded(8));
  if (stored.size() >= 19 && stored.substr(11, 8) != "00:00:00") {
    printed.append(" ").append(unpadded(11)).append(stored.substr(13, 6));
  }
  return printed;
}

std::string storedNow() {
  return stored(QDateTime::currentDateTime());
}

std::string storedLocal(std::chrono::system_clock::time_point moment) {
  return stored(dateTime(moment));
}

std::string storedUtc(std::chrono::system_clock::time_point moment) {
  return stored(dateTime(moment).toUTC());
}

std::string storedToday() {
  return stored(QDate::currentDate().startOfDay());
}

}  // namespace qinghe::portal_server

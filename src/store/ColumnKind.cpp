#include "store/ColumnKind.h"

#include <QDateTime>
#include <array>
#include <charconv>
#include <cmath>

#include "store/CommandDialect.h"
#include "values/dates.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

namespace {

bool isText(const QVariant& value) {
  return value.typeId() == QMetaType::QString;
}

bool isDate(const QVariant& value) {
  return value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QDateTime;
}

bool isNull(const QVariant& value) {
  if (isDate(value)) return !value.toDateTime().isValid();
  return !value.isValid() || (value.isNull() && !isText(value));
}

double numberOf(const QVariant& value) {
  if (isText(value)) return toDouble(value.toString());
  bool isNumber = false;
  const double number = value.toDouble(&isNumber);
  if (!isNumber || isDate(value)) throw TypeMismatch(value.toString());
  return number;
}

bool booleanOf(const QVariant& value) {
  return isText(value) ? toBoolean(value.toString()) : numberOf(value) != 0;
}

QDateTime dateOf(const QVariant& value) {
  if (isDate(value)) return value.toDateTime();
  if (isText(value)) return toDate(value.toString());
  throw TypeMismatch(value.toString());
}

}  // namespace

QString textOf(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return textOf(value.toBool());
    case QMetaType::Float:
    case QMetaType::Double:
      return textOf(value.toDouble());
    case QMetaType::QDate:
      return textOf(value.toDate());
    case QMetaType::QDateTime:
      return textOf(value.toDateTime());
    default:
      return value.toString();
  }
}

ColumnKind columnKind(const char* declaredType) {
  const QByteArray type = QByteArray(declaredType).toUpper();
  if (type.startsWith("BOOL")) return ColumnKind::Boolean;
  if (type.startsWith("DATE") || type.startsWith("TIMESTAMP")) return ColumnKind::Date;
  if (type.contains("INT")) return ColumnKind::Integer;
  for (const char* number : {"DOUB", "REAL", "FLOA", "NUM", "DECI", "CURRENCY"}) {
    if (type.startsWith(number)) return ColumnKind::Number;
  }
  return ColumnKind::Text;
}

StoredValue toStored(ColumnKind kind, const QVariant& value) {
  if (isNull(value)) return std::monostate();
  switch (kind) {
    case ColumnKind::Integer:
      return static_cast<qint64>(toInt32(numberOf(value)));
    case ColumnKind::Number:
      return numberOf(value);
    case ColumnKind::Boolean:
      return static_cast<qint64>(booleanOf(value));
    case ColumnKind::Date:
      return storedDate(dateOf(value)).toUtf8();
    case ColumnKind::Text:
      break;
  }
  return textOf(value).toUtf8();
}

QVariant fromStored(ColumnKind kind, const StoredValue& value) {
  if (const auto* whole = std::get_if<qint64>(&value)) {
    if (kind == ColumnKind::Boolean) return *whole != 0;
    return static_cast<qlonglong>(*whole);
  }
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* utf8 = std::get_if<QByteArray>(&value)) {
    const QString text = QString::fromUtf8(*utf8);
    if (kind == ColumnKind::Date) {
      if (const auto date = readDate(text)) return *date;
    }
    return text;
  }
  return {};
}

QString textOfStored(ColumnKind kind, const StoredValue& value) {
  if (const auto* whole = std::get_if<qint64>(&value)) return textOfStored(kind, *whole);
  if (const auto* number = std::get_if<double>(&value)) return textOfStored(*number);
  const auto* utf8 = std::get_if<QByteArray>(&value);
  return utf8 ? textOfStored(kind, QByteArrayView(*utf8)) : QString();
}

QString textOfStored(ColumnKind kind, qint64 value) {
  return kind == ColumnKind::Boolean ? textOf(value != 0) : textOf(value);
}

QString textOfStored(double value) {
  // The shortest digits that mean the value, where they are no more than 15, are the same text as
  // the general rule's and much quicker to find; amounts and quantities all go this way.
  const double size = std::abs(value);
  if (size >= 0.1 && size < 1e15) {
    std::array<char, 32> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                            std::chars_format::fixed);
    const auto length = end - digits.data();
    constexpr int mostDigits = 15;
    if (error == std::errc() && length <= mostDigits) {
      return QString::fromLatin1(digits.data(), length);
    }
  }
  return textOf(value);
}

QString textOfStored(ColumnKind kind, QByteArrayView utf8) {
  const QString text = QString::fromUtf8(utf8);
  if (kind != ColumnKind::Date) return text;
  const auto date = readDate(text);
  return date ? textOf(*date) : text;
}

}  // namespace qinghe

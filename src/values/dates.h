#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace qinghe {

/// "2024-3-9", with " 8:05:00" behind it when the time of day is not midnight.
QString textOf(const QDateTime& value);
QString textOf(QDate value);

/// Reads "yyyy-M-d", "yyyy/M/d" and "M/d/yyyy", each with an optional " H:mm:ss" (or " H:mm").
/// No value when the text is none of these.
std::optional<QDateTime> readDate(QStringView text);

/// As `readDate`, but throws `TypeMismatch`.
QDateTime toDate(QStringView text);

/// A date for a condition: "#3/9/2024#", month first, unpadded.
QString conditionDate(QDate value);

}  // namespace qinghe

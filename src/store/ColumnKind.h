#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <variant>

namespace qinghe {

/// How a column's values are read and written, told by its declared type.
enum class ColumnKind { Text, Integer, Number, Boolean, Date };

/// The kind of a declared type; an expression has none and counts as text.
ColumnKind columnKind(const char* declaredType);

/// A value as the engine keeps it; text is UTF-8.
using StoredValue = std::variant<std::monostate, qint64, double, QByteArray>;

/// Turns a value into what a column of this kind keeps. A text must be wholly of the kind. Throws
/// `TypeMismatch` and `Overflow` (whole numbers are of 32 bits); an invalid value is a null.
StoredValue toStored(ColumnKind kind, const QVariant& value);

/// Any value as text: null as the empty text, the rest as the values rules say.
QString textOf(const QVariant& value);

/// The other way round; text in a date column that is no date stays text.
QVariant fromStored(ColumnKind kind, const StoredValue& value);
QString textOfStored(ColumnKind kind, const StoredValue& value);
QString textOfStored(ColumnKind kind, qint64 value);
QString textOfStored(double value);
QString textOfStored(ColumnKind kind, QByteArrayView utf8);

}  // namespace qinghe

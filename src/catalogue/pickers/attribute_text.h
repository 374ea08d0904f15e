#pragma once

#include <QStringList>

namespace qinghe {

/// The values of a company's attributes as one text, each with a comma behind it. No names travel
/// with them, so a value's place tells which attribute it belongs to.

/// The values in their places. What stands behind the last comma is dropped.
QStringList attributeValues(const QString& text);

/// The text of these values; a comma in a value becomes a semicolon.
QString attributeText(const QStringList& values);

}  // namespace qinghe

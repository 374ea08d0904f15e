#pragma once

#include <QString>
#include <QStringView>

namespace qinghe {

/// The product of two cells' leading numbers as a cell's text: up to 15 significant digits, not
/// rounded to cents. Throws `Overflow` when it is beyond a double.
QString cellProduct(QStringView left, QStringView right);

}  // namespace qinghe

#pragma once

#include <QString>
#include <functional>

namespace qinghe {

/// The next row of a list whose text contains `wanted`, looked for from behind the selected row to
/// the end and then from the top down to the selected row, which comes last. -1 when there is none.
/// Rows are counted from 0; `selected` is -1 in a list without one.
int findRow(int rows, int selected, const std::function<QString(int row)>& textOf,
            const QString& wanted, Qt::CaseSensitivity sensitivity);

}  // namespace qinghe

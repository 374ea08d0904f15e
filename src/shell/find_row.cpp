#include "shell/find_row.h"

namespace qinghe {

int findRow(int rows, int selected, const std::function<QString(int row)>& textOf,
            const QString& wanted, Qt::CaseSensitivity sensitivity) {
  for (int step = 1; step <= rows; ++step) {
    const int row = (selected + step) % rows;
    if (textOf(row).contains(wanted, sensitivity)) return row;
  }
  return -1;
}

}  // namespace qinghe

#include "forms/spread_widths.h"

#include <algorithm>
#include <numeric>

namespace qinghe {

namespace {

/// Gives the columns whose texts are cut what they lack, as far as it reaches; returns what is
/// left.
int uncut(const QList<ColumnRoom>& columns, QList<int>& widths, int spare) {
  const auto lacking = [&columns](qsizetype i) { return columns[i].needed - columns[i].told; };
  QList<qsizetype> cut;
  for (qsizetype i = 0; i < columns.size(); ++i) {
    if (lacking(i) > 0) cut << i;
  }
  std::ranges::sort(cut, {}, lacking);
  auto waiting = static_cast<int>(cut.size());
  for (const auto i : cut) {
    const int given = qMin(lacking(i), spare / waiting--);
    widths[i] += given;
    spare -= given;
  }
  return spare;
}

}  // namespace

QList<int> spreadWidths(const QList<ColumnRoom>& columns, int room) {
  QList<int> widths;
  for (const ColumnRoom& column : columns) widths << column.told;
  qint64 toldLeft = std::accumulate(widths.cbegin(), widths.cend(), qint64{0});
  if (toldLeft <= 0 || toldLeft >= room) return widths;
  qint64 spare = uncut(columns, widths, room - static_cast<int>(toldLeft));
  for (qsizetype i = 0; i < columns.size() && toldLeft > 0; ++i) {
    // Of what is still there, so that no pixel is lost by rounding.
    const qint64 given = spare * columns[i].told / toldLeft;
    widths[i] += static_cast<int>(given);
    spare -= given;
    toldLeft -= columns[i].told;
  }
  return widths;
}

}  // namespace qinghe

#pragma once

#include <QList>

namespace qinghe {

/// A shown column of a list, in pixels.
struct ColumnRoom {
  int told;    ///< as wide as its screen made it
  int needed;  ///< as wide as its texts are
};

/// Widths that fill the room: what the told widths leave goes first to the columns whose texts are
/// cut, the least cut before the others, and then to all in proportion to their told widths. No
/// column becomes narrower than told, so that they are wider than the room when that is small.
QList<int> spreadWidths(const QList<ColumnRoom>& columns, int room);

}  // namespace qinghe

#pragma once

#include <vector>

#include "reports/engine/ReportLayout.h"
#include "store/ShapedSet.h"

namespace qinghe {

/// The sections in the order they print, page header and footer aside.
enum class Band { ReportHeader, GroupHeader, Detail, GroupFooter, ReportFooter, End };

/// Walks the bands of a report over its tree of data, one after the other, and can be set back to
/// any place it has been at.
///
/// Level 0 is the top set; the groups of the layout are levels 0 to n-1, the detail rows level n.
class BandCursor {
 public:
  /// A place in the report, small enough to keep one for each page.
  struct Place {
    Band band = Band::ReportHeader;
    int level = 0;
    std::vector<qint64> rows;
  };

  /// The layout must outlive the cursor; a null set is an empty one.
  BandCursor(const ReportLayout& layout, ShapedSetPtr top);

  Band band() const { return band_; }
  int level() const { return level_; }  ///< of the group or detail section the cursor is at
  int detailLevel() const { return detailLevel_; }
  bool hasRows() const;  ///< whether the top set has any

  void next();
  /// Whether the row that the cursor is in or behind is the last of its set.
  bool isLastRow(int level) const { return row(level) + 1 >= count(level); }
  /// Detail rows from this one to the end of its set, this one included.
  qint64 detailsLeft() const;
  /// Moves `count` detail rows on; at most `detailsLeft()`.
  void skipDetails(qint64 count);

  Place place() const;
  void seek(const Place& place);

  /// The set of a level at this place, null when the place is not inside one of its groups.
  const ShapedSet* set(int level) const;
  qint64 row(int level) const { return rows_[static_cast<size_t>(level)]; }

 private:
  void enter(int level);
  void leave(int level);
  ShapedSetPtr childOf(int level) const;
  qint64 count(int level) const;

  const ReportLayout* layout_;
  int detailLevel_;
  Band band_ = Band::ReportHeader;
  int level_ = 0;
  std::vector<ShapedSetPtr> sets_;
  std::vector<qint64> rows_;
};

/// The name of the set that the rows of a level come from.
const QString& memberOfLevel(const ReportLayout& layout, int level);

/// The section printed for a band, null for `Band::End`.
const ReportSection* sectionOf(const ReportLayout& layout, Band band, int level);

}  // namespace qinghe

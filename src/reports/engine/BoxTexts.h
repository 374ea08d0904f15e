#pragma once

#include <QHash>

#include "reports/engine/BandCursor.h"
#include "reports/engine/GroupSums.h"

namespace qinghe {

/// The level of the tree that a member names, without regard to case; -1 when there is none.
int levelOfMember(const ReportLayout& layout, const ShapedSetPtr& top, const QString& member);

/// The text of each box at a place in the report. A field that does not exist, or that belongs to a
/// row which is not current there, is empty.
class BoxTexts {
 public:
  /// The layout must outlive it.
  BoxTexts(const ReportLayout& layout, ShapedSetPtr top);

  /// Labels come as they stand in the layout.
  QString text(const ReportBox& box, const BandCursor& cursor);

 private:
  struct Binding {
    int level = -1;
    const ShapedSet* set = nullptr;
    int column = -1;
  };

  QString fieldText(const ReportBox& box, const BandCursor& cursor);
  QString sumText(const ReportBox& box, const BandCursor& cursor);

  const ReportLayout& layout_;
  ShapedSetPtr top_;
  GroupSums sums_;
  QHash<const ReportBox*, Binding> bindings_;
};

}  // namespace qinghe

#pragma once

#include <QHash>
#include <memory>
#include <vector>

#include "reports/engine/BandCursor.h"

namespace qinghe {

/// The sums that a report's function boxes show: each row is read once, when a sum that it belongs
/// to is first looked at, and the sum of a group is made of the sums of the groups in it.
class GroupSums {
 public:
  /// The layout must outlive it.
  GroupSums(const ReportLayout& layout, ShapedSetPtr top);
  ~GroupSums();

  /// The sum for a box in a section of the group the cursor is in at `level`; -1 is the whole
  /// report.
  double value(const ReportBox& box, const BandCursor& cursor, int level);

 private:
  struct Key {
    int level;
    QString field;
  };
  struct Group;

  void collect(const ReportSection& section);
  void total(Group& group, int level, const ShapedSetPtr& rows);
  void addRows(Group& group, int level, const ShapedSet& rows) const;

  const ReportLayout& layout_;
  ShapedSetPtr top_;
  std::vector<Key> keys_;
  QHash<const ReportBox*, size_t> keyOfBox_;
  std::unique_ptr<Group> report_;
};

}  // namespace qinghe

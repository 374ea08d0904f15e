#include "reports/engine/GroupSums.h"

#include <cmath>

#include "reports/engine/BoxTexts.h"
#include "values/numbers.h"

namespace qinghe {

namespace {

/// Adds with the lost low digits kept aside, so that a column of amounts sums to what a reader adds
/// up by hand however many lines it has.
struct Total {
  double sum = 0;
  double lost = 0;

  void add(double value) {
    const double next = sum + value;
    lost += std::abs(sum) >= std::abs(value) ? (sum - next) + value : (value - next) + sum;
    sum = next;
  }
  double value() const { return std::isfinite(lost) ? sum + lost : sum; }
};

double numberAt(const ShapedSet& set, qint64 row, int column) {
  const QVariant value = set.value(row, column);
  switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Int:
    case QMetaType::LongLong:
      return value.toDouble();
    case QMetaType::UnknownType:
      return 0;
    case QMetaType::QString:
      return Val(value.toString());
    default:
      return Val(set.text(row, column));
  }
}

}  // namespace

struct GroupSums::Group {
  std::vector<Total> sums;
  std::vector<Group> parts;  ///< one for each row of the level below, if that is a group
  bool done = false;
};

GroupSums::GroupSums(const ReportLayout& layout, ShapedSetPtr top)
    : layout_(layout), top_(std::move(top)), report_(std::make_unique<Group>()) {
  collect(layout.reportHeader);
  for (const auto& group : layout.groups) {
    collect(group.header);
    collect(group.footer);
  }
  collect(layout.reportFooter);
}

GroupSums::~GroupSums() = default;

void GroupSums::collect(const ReportSection& section) {
  const int detailLevel = static_cast<int>(layout_.groups.size());
  for (const auto& box : section.boxes) {
    if (box.kind != ReportBox::Kind::Sum) continue;
    const int level = box.member.isEmpty() ? detailLevel : levelOfMember(layout_, top_, box.member);
    if (level < 0) continue;
    size_t index = 0;
    while (index < keys_.size() &&
           (keys_[index].level != level ||
            keys_[index].field.compare(box.field, Qt::CaseInsensitive) != 0)) {
      ++index;
    }
    if (index == keys_.size()) keys_.push_back({level, box.field});
    keyOfBox_.insert(&box, index);
  }
}

void GroupSums::addRows(Group& group, int level, const ShapedSet& rows) const {
  for (size_t key = 0; key < keys_.size(); ++key) {
    if (keys_[key].level != level) continue;
    const int column = rows.columnIndex(keys_[key].field);
    if (column < 0) continue;
    Total& sum = group.sums[key];
    const qint64 count = rows.rowCount();
    for (qint64 row = 0; row < count; ++row) sum.add(numberAt(rows, row, column));
  }
}

void GroupSums::total(Group& group, int level, const ShapedSetPtr& rows) {
  if (group.done) return;
  group.sums.assign(keys_.size(), Total());
  if (rows) {
    const int below = level + 1;
    addRows(group, below, *rows);
    if (below < static_cast<int>(layout_.groups.size())) {
      const qint64 count = rows->rowCount();
      group.parts.resize(static_cast<size_t>(count));
      const QString& member = memberOfLevel(layout_, below + 1);
      for (qint64 row = 0; row < count; ++row) {
        Group& part = group.parts[static_cast<size_t>(row)];
        if (!part.done) total(part, below, rows->child(row, member));
        for (size_t key = 0; key < keys_.size(); ++key) {
          group.sums[key].add(part.sums[key].value());
        }
      }
    }
  }
  group.done = true;
}

double GroupSums::value(const ReportBox& box, const BandCursor& cursor, int level) {
  const auto key = keyOfBox_.constFind(&box);
  if (key == keyOfBox_.cend()) return 0;
  Group* group = report_.get();
  ShapedSetPtr rows = top_;
  for (int at = 0; at <= level; ++at) {
    if (!rows) return 0;
    const auto row = static_cast<size_t>(cursor.row(at));
    if (group->parts.empty()) group->parts.resize(static_cast<size_t>(rows->rowCount()));
    if (row >= group->parts.size()) return 0;
    group = &group->parts[row];
    if (!group->done) rows = rows->child(cursor.row(at), memberOfLevel(layout_, at + 1));
  }
  total(*group, level, rows);
  return group->sums[*key].value();
}

}  // namespace qinghe

#include "reports/engine/BandCursor.h"

#include <algorithm>

namespace qinghe {

const QString& memberOfLevel(const ReportLayout& layout, int level) {
  const auto index = static_cast<size_t>(level);
  return index < layout.groups.size() ? layout.groups[index].member : layout.detailMember;
}

const ReportSection* sectionOf(const ReportLayout& layout, Band band, int level) {
  const auto index = static_cast<size_t>(level);
  switch (band) {
    case Band::ReportHeader:
      return &layout.reportHeader;
    case Band::GroupHeader:
      return &layout.groups[index].header;
    case Band::Detail:
      return &layout.detail;
    case Band::GroupFooter:
      return &layout.groups[index].footer;
    case Band::ReportFooter:
      return &layout.reportFooter;
    case Band::End:
      break;
  }
  return nullptr;
}

BandCursor::BandCursor(const ReportLayout& layout, ShapedSetPtr top)
    : layout_(&layout),
      detailLevel_(static_cast<int>(layout.groups.size())),
      sets_(layout.groups.size() + 1),
      rows_(layout.groups.size() + 1, 0) {
  sets_.front() = std::move(top);
}

bool BandCursor::hasRows() const {
  return count(0) > 0;
}

const ShapedSet* BandCursor::set(int level) const {
  return level >= 0 && level <= detailLevel_ ? sets_[static_cast<size_t>(level)].get() : nullptr;
}

qint64 BandCursor::count(int level) const {
  const auto& set = sets_[static_cast<size_t>(level)];
  return set ? set->rowCount() : 0;
}

ShapedSetPtr BandCursor::childOf(int level) const {
  const auto& set = sets_[static_cast<size_t>(level)];
  return set ? set->child(row(level), memberOfLevel(*layout_, level + 1)) : nullptr;
}

void BandCursor::enter(int level) {
  level_ = level;
  band_ = level == detailLevel_ ? Band::Detail : Band::GroupHeader;
}

void BandCursor::leave(int level) {
  auto& row = rows_[static_cast<size_t>(level)];
  if (++row < count(level)) {
    enter(level);
    return;
  }
  if (level > 0) sets_[static_cast<size_t>(level)] = nullptr;
  row = 0;
  band_ = level == 0 ? Band::ReportFooter : Band::GroupFooter;
  level_ = std::max(0, level - 1);
}

void BandCursor::next() {
  switch (band_) {
    case Band::ReportHeader:
      if (hasRows()) {
        enter(0);
      } else {
        band_ = Band::ReportFooter;
      }
      break;
    case Band::GroupHeader: {
      const int below = level_ + 1;
      sets_[static_cast<size_t>(below)] = childOf(level_);
      rows_[static_cast<size_t>(below)] = 0;
      if (count(below) > 0) {
        enter(below);
      } else {
        band_ = Band::GroupFooter;
      }
      break;
    }
    case Band::Detail:
      leave(detailLevel_);
      break;
    case Band::GroupFooter:
      leave(level_);
      break;
    case Band::ReportFooter:
      band_ = Band::End;
      break;
    case Band::End:
      break;
  }
}

qint64 BandCursor::detailsLeft() const {
  return band_ == Band::Detail ? count(detailLevel_) - row(detailLevel_) : 0;
}

void BandCursor::skipDetails(qint64 many) {
  const qint64 steps = std::min(many, detailsLeft());
  if (steps <= 0) return;
  rows_[static_cast<size_t>(detailLevel_)] += steps - 1;
  leave(detailLevel_);
}

BandCursor::Place BandCursor::place() const {
  return {band_, level_, rows_};
}

void BandCursor::seek(const Place& place) {
  band_ = place.band;
  level_ = place.level;
  rows_ = place.rows;
  std::fill(sets_.begin() + 1, sets_.end(), nullptr);
  const bool inGroups =
      band_ == Band::GroupHeader || band_ == Band::Detail || band_ == Band::GroupFooter;
  for (int above = 0; inGroups && above < level_; ++above) {
    sets_[static_cast<size_t>(above) + 1] = childOf(above);
  }
}

}  // namespace qinghe

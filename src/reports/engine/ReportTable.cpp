#include "reports/engine/ReportTable.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace qinghe {

namespace {

bool hasText(const ReportBox& box) {
  return box.kind == ReportBox::Kind::Label || box.kind == ReportBox::Kind::Field ||
         box.kind == ReportBox::Kind::Sum;
}

double shared(const ReportBox& box, const ReportTable::Column& column) {
  return std::min(box.x + box.width, column.right) - std::max(box.x, column.left);
}

/// The boxes of a section line by line from above, each line from the left.
std::vector<std::vector<const ReportBox*>> linesOf(const ReportSection& section) {
  std::map<long, std::vector<const ReportBox*>> lines;
  for (const auto& box : section.boxes) {
    if (hasText(box)) lines[std::lround((box.y + box.height / 2) * 2)].push_back(&box);
  }
  std::vector<std::vector<const ReportBox*>> sorted;
  for (auto& [y, boxes] : lines) {
    std::stable_sort(boxes.begin(), boxes.end(),
                     [](const auto* a, const auto* b) { return a->x < b->x; });
    sorted.push_back(std::move(boxes));
  }
  return sorted;
}

}  // namespace

ReportTable::ReportTable(const ReportLayout& layout, ShapedSetPtr data)
    : layout_(layout), data_(data), texts_(layout, std::move(data)) {
  addColumns(layout.detail);
  for (const auto& group : layout.groups) addColumns(group.footer);
  addColumns(layout.reportFooter);
  std::stable_sort(columns_.begin(), columns_.end(),
                   [](const auto& a, const auto& b) { return a.left < b.left; });
  takeTitles(layout.reportHeader, true);
  takeTitles(layout.pageHeader, true);
  for (const auto& group : layout.groups) takeTitles(group.header, false);
}

void ReportTable::addColumns(const ReportSection& section) {
  for (const auto& box : section.boxes) {
    if (!hasText(box) || columnOf(box) >= 0) continue;
    columns_.push_back({QString(), box.x, box.x + box.width, box.align == ReportBox::Align::Right});
  }
}

/// The first column that the box stands over or under, for the better half of the narrower one.
int ReportTable::columnOf(const ReportBox& box) const {
  for (size_t i = 0; i < columns_.size(); ++i) {
    const double width = std::min(box.width, columns_[i].right - columns_[i].left);
    if (shared(box, columns_[i]) > width / 2) return static_cast<int>(i);
  }
  return -1;
}

/// The lowest line of labels that stand over columns, each over one of its own, are the titles.
void ReportTable::takeTitles(const ReportSection& section, bool headingsToo) {
  auto lines = linesOf(section);
  const bool untitled = std::all_of(columns_.begin(), columns_.end(),
                                    [](const auto& column) { return column.title.isEmpty(); });
  if (untitled && !lines.empty() && lines.back().size() > 1) {
    for (const auto* box : lines.back()) {
      const int column = columnOf(*box);
      if (box->kind == ReportBox::Kind::Label && column >= 0) {
        columns_[static_cast<size_t>(column)].title = box->text;
      }
    }
    lines.pop_back();
  }
  if (!headingsToo) return;
  for (const auto& line : lines) {
    for (const auto* box : line) {
      if (box->kind == ReportBox::Kind::Label && !box->text.isEmpty()) headings_ << box->text;
    }
  }
}

QStringList ReportTable::titles() const {
  QStringList titles;
  for (const auto& column : columns_) titles << column.title;
  return titles;
}

void ReportTable::visitSection(const ReportSection& section, const BandCursor& cursor,
                               const std::function<void(const Row&)>& take) {
  const bool free = cursor.band() == Band::GroupHeader;
  for (const auto& line : linesOf(section)) {
    Row row{cursor.band(), {}};
    if (!free) row.cells.resize(static_cast<qsizetype>(columns_.size()));
    bool onlyTitles = free;
    for (const auto* box : line) {
      const QString text = texts_.text(*box, cursor);
      if (box->kind != ReportBox::Kind::Label) onlyTitles = false;
      if (free) {
        row.cells << text;
      } else if (const int column = columnOf(*box); column >= 0) {
        QString& cell = row.cells[column];
        cell = cell.isEmpty() ? text : cell + u' ' + text;
      }
    }
    // The line of titles stands at the head of the table already.
    if (onlyTitles && line.size() > 1) continue;
    take(row);
  }
}

void ReportTable::visit(const std::function<void(const Row&)>& take) {
  BandCursor cursor(layout_, data_);
  cursor.next();
  for (; cursor.band() != Band::End; cursor.next()) {
    if (cursor.band() == Band::ReportFooter && !cursor.hasRows()) continue;
    visitSection(*sectionOf(layout_, cursor.band(), cursor.level()), cursor, take);
  }
}

}  // namespace qinghe

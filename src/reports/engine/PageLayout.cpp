#include "reports/engine/PageLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qinghe {

namespace {

/// Heights are sums of tenths of millimetres; without it a page that is exactly full would not be.
constexpr double kTolerance = 1e-6;

double heightOf(const ReportSection& section) {
  return std::isfinite(section.height) && section.height > 0 ? section.height : 0;
}

/// Heights of the sections that close behind the last row of a level: its group's footer, the next
/// one's above where that group was a last row, too, and so on to the report's. They sum up what
/// stands before them and say little on a page of their own.
double closingBehind(const ReportLayout& layout, const BandCursor& at, int level) {
  double height = 0;
  while (level-- > 0) {
    height += heightOf(layout.groups[static_cast<size_t>(level)].footer);
    if (!at.isLastRow(level)) return height;
  }
  return height + heightOf(layout.reportFooter);
}

}  // namespace

PaperFormat PaperFormat::forLayout(const ReportLayout& layout) {
  PaperFormat paper;
  if (layout.landscape) std::swap(paper.width, paper.height);
  return paper;
}

PageLayout::PageLayout(ReportLayout layout, ShapedSetPtr data, QDate date)
    : PageLayout(layout, std::move(data), date, PaperFormat::forLayout(layout)) {}

PageLayout::PageLayout(ReportLayout layout, ShapedSetPtr data, QDate date, const PaperFormat& paper)
    : layout_(std::move(layout)),
      data_(std::move(data)),
      date_(date),
      paper_(paper),
      texts_(layout_, data_),
      cursor_(layout_, data_),
      rest_(cursor_.place()) {
  findPages(1);
}

double PageLayout::bodyBottom() const {
  return paper_.height - paper_.bottom - heightOf(layout_.pageFooter);
}

bool PageLayout::findPages(int pages) {
  if (complete_) return false;
  cursor_.seek(rest_);
  for (int i = 0; i < pages && !complete_; ++i) {
    // Noted only once the page is done, so that a failure leaves all as it was before it.
    auto start = cursor_.place();
    fill(starts_.empty(), nullptr);
    starts_.push_back(std::move(start));
    rest_ = cursor_.place();
    complete_ = cursor_.band() == Band::End;
  }
  return !complete_;
}

int PageLayout::pageCount() {
  while (findPages(1000)) {
  }
  return knownPages();
}

ReportPage PageLayout::page(int index) {
  while (index >= knownPages() && findPages(1000)) {
  }
  ReportPage page;
  page.number = index + 1;
  if (index < 0 || index >= knownPages()) return page;
  cursor_.seek(starts_[static_cast<size_t>(index)]);
  fill(index == 0, [&](const ReportSection& section, double top, double room, bool ofPage) {
    place(section, top, room, ofPage, &page);
  });
  return page;
}

/// Report header and page header; returns where the body begins.
double PageLayout::startPage(bool first, const Sink& sink, bool* placed) {
  double y = paper_.top;
  const double bottom = bodyBottom();
  if (first && cursor_.band() == Band::ReportHeader) {
    const double height = heightOf(layout_.reportHeader);
    if (height > 0) {
      if (sink) sink(layout_.reportHeader, y, bottom - y, false);
      y += height;
      *placed = true;
    }
    cursor_.next();
  }
  const double height = heightOf(layout_.pageHeader);
  if (height > 0 && y + height <= bottom + kTolerance) {
    if (sink) sink(layout_.pageHeader, y, bottom - y, true);
    y += height;
  }
  if (heightOf(layout_.pageFooter) > 0 && sink) {
    sink(layout_.pageFooter, bottom, paper_.height - paper_.bottom - bottom, true);
  }
  return y;
}

/// What must stand on one page from the cursor on: a header with all down to its first row, and a
/// last row with the footers behind it.
double PageLayout::keptTogether() const {
  double height = heightOf(*sectionOf(layout_, cursor_.band(), cursor_.level()));
  BandCursor ahead = cursor_;
  while (ahead.band() == Band::GroupHeader) {
    ahead.next();
    height += heightOf(*sectionOf(layout_, ahead.band(), ahead.level()));
  }
  if (ahead.band() == Band::ReportFooter) return height;
  const int level = ahead.band() == Band::Detail ? ahead.detailLevel() : ahead.level();
  return ahead.isLastRow(level) ? height + closingBehind(layout_, ahead, level) : height;
}

/// As many detail rows as fit, at least the one that was found to fit.
void PageLayout::fillDetails(double* y, double bottom, const Sink& sink) {
  const double height = heightOf(layout_.detail);
  const double room = std::max(0.0, bottom - *y);
  const qint64 left = cursor_.detailsLeft();
  qint64 fitting = static_cast<qint64>(std::min((room + kTolerance) / height, 1e15));
  fitting = std::clamp<qint64>(fitting, 1, left);
  const bool last = fitting == left && left > 1;
  const double all =
      static_cast<double>(left) * height + closingBehind(layout_, cursor_, cursor_.detailLevel());
  if (last && all > room + kTolerance) --fitting;
  if (sink) {
    for (qint64 i = 0; i < fitting; ++i) {
      const double top = *y + static_cast<double>(i) * height;
      sink(layout_.detail, top, bottom - top, false);
      cursor_.skipDetails(1);
    }
  } else {
    cursor_.skipDetails(fitting);
  }
  *y += static_cast<double>(fitting) * height;
}

/// Moves the cursor over one page. A page takes at least one section, however high, so that every
/// report comes to its end.
void PageLayout::fill(bool first, const Sink& sink) {
  const double bottom = bodyBottom();
  bool placed = false;
  double y = startPage(first, sink, &placed);
  const double fullBody = bottom - paper_.top - heightOf(layout_.pageHeader);
  while (cursor_.band() != Band::End) {
    const ReportSection& section = *sectionOf(layout_, cursor_.band(), cursor_.level());
    const double height = heightOf(section);
    const bool emptyTotals = cursor_.band() == Band::ReportFooter && !cursor_.hasRows();
    if (height <= 0 || emptyTotals) {
      if (cursor_.band() == Band::Detail) {
        cursor_.skipDetails(cursor_.detailsLeft());
      } else {
        cursor_.next();
      }
      continue;
    }
    double needed = placed ? keptTogether() : height;
    if (needed > std::max(fullBody, height) + kTolerance) needed = height;
    if (placed && y + needed > bottom + kTolerance) return;
    if (cursor_.band() == Band::Detail) {
      fillDetails(&y, bottom, sink);
    } else {
      if (sink) sink(section, y, bottom - y, false);
      y += height;
      cursor_.next();
    }
    placed = true;
  }
}

void PageLayout::place(const ReportSection& section, double top, double room, bool ofPage,
                       ReportPage* page) {
  PageNumbers numbers;
  numbers.page = page->number;
  numbers.pages = complete_ ? knownPages() : -1;
  numbers.date = date_;
  for (const auto& box : section.boxes) {
    // What a section has beyond the page is cut off: below it stands the footer.
    if (box.y > room) continue;
    const double height = std::min(box.height, room - box.y);
    const double width = std::min(box.width, paper_.width - paper_.left - paper_.right - box.x);
    if (width < 0 || height < 0) continue;
    PlacedBox placed{&box, QRectF(paper_.left + box.x, top + box.y, width, height), {}};
    if (!ofPage) {
      placed.text = texts_.text(box, cursor_);
    } else if (box.kind == ReportBox::Kind::Label) {
      placed.text = expandPageText(box.text, numbers);
    }
    page->boxes.push_back(std::move(placed));
  }
}

}  // namespace qinghe

#pragma once

#include <QRectF>
#include <functional>
#include <vector>

#include "reports/engine/BandCursor.h"
#include "reports/engine/BoxTexts.h"
#include "reports/engine/page_text.h"

namespace qinghe {

/// The paper and what is kept free at its edges, in millimetres.
struct PaperFormat {
  double width = 210, height = 297;
  double left = 15, top = 14, right = 15, bottom = 12;

  /// A4 in the direction that the layout asks for.
  static PaperFormat forLayout(const ReportLayout& layout);
};

/// A box at its place on the paper, in millimetres from the paper's left upper corner.
struct PlacedBox {
  const ReportBox* box;  ///< lives as long as the `PageLayout`
  QRectF rect;
  QString text;
};

struct ReportPage {
  int number = 1;  ///< from 1
  std::vector<PlacedBox> boxes;
};

/// Lays a report out on pages without painting it.
///
/// Only the place where each page starts is kept; it is found by counting heights, without reading
/// the rows' values, in as small steps as the caller likes. The boxes of a page are made when the
/// page is asked for. Reading the data may throw `StoreError`.
class PageLayout {
 public:
  PageLayout(ReportLayout layout, ShapedSetPtr data, QDate date);
  PageLayout(ReportLayout layout, ShapedSetPtr data, QDate date, const PaperFormat& paper);
  PageLayout(const PageLayout&) = delete;
  PageLayout& operator=(const PageLayout&) = delete;

  const ReportLayout& layout() const { return layout_; }
  const ShapedSetPtr& data() const { return data_; }
  const PaperFormat& paper() const { return paper_; }
  QDate date() const { return date_; }

  /// Finds the starts of up to `pages` further pages; false when all are known.
  bool findPages(int pages);
  bool isComplete() const { return complete_; }
  int knownPages() const { return static_cast<int>(starts_.size()); }
  /// The number of pages, at least 1; finds what is not found yet.
  int pageCount();

  /// The page with the index, from 0; an empty one beyond the end. As long as not all pages are
  /// found, "%P" stays blank.
  ReportPage page(int index);

 private:
  using Sink = std::function<void(const ReportSection&, double top, double room, bool ofPage)>;

  void fill(bool first, const Sink& sink);
  double startPage(bool first, const Sink& sink, bool* placed);
  void fillDetails(double* y, double bottom, const Sink& sink);
  double keptTogether() const;
  double bodyBottom() const;
  void place(const ReportSection& section, double top, double room, bool ofPage, ReportPage* page);

  ReportLayout layout_;
  ShapedSetPtr data_;
  QDate date_;
  PaperFormat paper_;
  BoxTexts texts_;
  BandCursor cursor_;
  std::vector<BandCursor::Place> starts_;
  BandCursor::Place rest_;  ///< where the search for starts goes on
  bool complete_ = false;
};

}  // namespace qinghe

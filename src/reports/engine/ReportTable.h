#pragma once

#include <QDate>
#include <QStringList>
#include <functional>
#include <vector>

#include "reports/engine/BoxTexts.h"

namespace qinghe {

/// A report as one table, for files that have rows and columns instead of pages: the boxes of
/// detail rows and footers that stand under one another are one column, titled by the label above.
class ReportTable {
 public:
  struct Column {
    QString title;
    double left = 0, right = 0;
    bool isNumber = false;  ///< stands at the right edge of its column
  };

  /// The layout must outlive it.
  ReportTable(const ReportLayout& layout, ShapedSetPtr data);

  const std::vector<Column>& columns() const { return columns_; }
  QStringList titles() const;
  /// The words above the table: those labels of report header and page header that title no column.
  QStringList headings() const { return headings_; }

  struct Row {
    Band band;
    QStringList cells;  ///< one for each column; for a group header its texts as they follow
  };
  /// Gives the rows in printing order; sections without text give none. Reading may throw
  /// `StoreError`.
  void visit(const std::function<void(const Row&)>& take);

 private:
  void addColumns(const ReportSection& section);
  void takeTitles(const ReportSection& section, bool headingsToo);
  int columnOf(const ReportBox& box) const;
  void visitSection(const ReportSection& section, const BandCursor& cursor,
                    const std::function<void(const Row&)>& take);

  const ReportLayout& layout_;
  ShapedSetPtr data_;
  BoxTexts texts_;
  std::vector<Column> columns_;
  QStringList headings_;
};

}  // namespace qinghe

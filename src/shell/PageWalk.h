#pragma once

#include <QString>

namespace qinghe {

/// Where a list stands that comes from the portal page by page: the page that came last, of how
/// many, and how long a page is. Rows are counted by the portal; it may count before the first page
/// is asked for or behind it.
class PageWalk {
 public:
  /// Goes back to the first page; the count stays as it was told last.
  void start() { pageNo_ = 1; }
  void setPageSize(qint16 rows) { pageSize_ = rows; }
  /// Takes the page count from a cell of the portal's answer, by its leading number. Throws
  /// `Overflow` beyond 32 bits and keeps the old one.
  void takeCount(const QString& cell);
  /// Goes on to the next page; false, and nothing happens, when the last one is there.
  bool next();

  qint32 pageNo() const { return pageNo_; }
  qint32 pageCount() const { return pageCount_; }
  qint16 pageSize() const { return pageSize_; }
  /// Whether a button for more pages is worth showing.
  bool hasMorePages() const { return pageCount_ > 1; }
  /// How much is there, in whole percent: "33%". Empty while no page is counted.
  QString percentage() const;

 private:
  qint32 pageNo_ = 1;
  qint32 pageCount_ = 0;
  qint16 pageSize_ = 0;
};

}  // namespace qinghe

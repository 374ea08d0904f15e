#pragma once

#include <QDate>
#include <QString>

namespace qinghe {

/// What the page texts of one page need to know.
struct PageNumbers {
  int page = 1;    ///< from 1
  int pages = -1;  ///< below 0 while it is not known yet: its place stays blank
  QDate date;
};

/// A label with "%p" (page), "%P" (pages), "%d" and "%D" (the date) filled in; any other "%" stays.
QString expandPageText(const QString& text, const PageNumbers& numbers);

/// A number in a format such as "0", "0.000" or "#,##0.00": rounded half away from zero as its 15
/// digits read, never a negative zero. An empty or unknown format gives the plain text of the
/// number.
QString formatNumber(double value, const QString& format);

/// A data text in a format: numeric texts as `formatNumber`, others and the empty one unchanged.
QString formatText(const QString& text, const QString& format);

}  // namespace qinghe

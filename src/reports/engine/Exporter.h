#pragma once

#include <QString>

#include "reports/engine/PageLayout.h"

namespace qinghe {

/// How an export ended; `error` is plain text for a message box, empty when all went well.
struct [[nodiscard]] ExportResult {
  QString error;
  bool ok() const { return error.isEmpty(); }
};

/// Pages from 1, both ends included; 0 for the first and the last of the report.
struct PageRange {
  int from = 0, to = 0;
};

/// Each writes a whole file or none: an existing file of that name stays as it was until the new
/// one is on the disk, and stays for good when writing fails.
///
/// PDF: paper of the report's size, text that can be selected.
ExportResult exportPdf(PageLayout& pages, const QString& path, PageRange range = {});

/// One page with one table, UTF-8, well-formed also as XML; all text is escaped.
ExportResult exportHtml(PageLayout& pages, const QString& path);

/// UTF-8 with byte order mark, a title row, CR LF, quoted where RFC 4180 asks for it.
///
/// A cell that a spreadsheet would run as a formula (it begins with = + - @ tab or CR and is no
/// number) and a cell that begins with an apostrophe get one apostrophe in front. So no text from
/// outside is run, numbers stay numbers, and the text can be had back: drop one apostrophe wherever
/// a cell begins with it.
ExportResult exportCsv(PageLayout& pages, const QString& path);

}  // namespace qinghe

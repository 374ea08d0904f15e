#pragma once

#include <QPrinter>

#include "reports/engine/Exporter.h"
#include "reports/engine/PageLayout.h"

namespace qinghe {

/// Sets a printer up as the report wants it: paper, direction, name of the job.
void preparePrinter(const PageLayout& pages, QPrinter* printer);

/// Prints the pages of the printer's range. Other paper than the report's gets the pages smaller or
/// as they are, never cut. A printer that writes a PDF file is served by `exportPdf`, so that
/// nothing half-written stays.
ExportResult printReport(PageLayout& pages, QPrinter& printer);

}  // namespace qinghe

#include "reports/ReportPrinter.h"

#include <QPainter>
#include <algorithm>

#include "reports/engine/ReportPainter.h"
#include "values/failure.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

PageRange rangeOf(const QPrinter& printer) {
  if (printer.printRange() != QPrinter::PageRange) return {};
  return {printer.fromPage(), printer.toPage()};
}

/// Paints one page as large as it was laid out, smaller where the paper is.
void paintPage(QPainter& painter, ReportPainter& paintedBy, const QPrinter& printer,
               const PaperFormat& paper, const ReportPage& page) {
  const QRectF sheet = printer.paperRect(QPrinter::Millimeter);
  const double fit = std::min({1.0, sheet.width() / paper.width, sheet.height() / paper.height});
  const double scale = printer.resolution() * fit / ReportPainter::kUnitsPerInch;
  painter.save();
  painter.scale(scale, scale);
  paintedBy.paint(painter, page);
  painter.restore();
}

}  // namespace

void preparePrinter(const PageLayout& pages, QPrinter* printer) {
  printer->setPageSize(QPageSize(QPageSize::A4));
  printer->setPageOrientation(pages.layout().landscape ? QPageLayout::Landscape
                                                       : QPageLayout::Portrait);
  printer->setFullPage(true);
  printer->setDocName(pages.layout().caption);
}

ExportResult printReport(PageLayout& pages, QPrinter& printer) {
  if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
    return exportPdf(pages, printer.outputFileName(), rangeOf(printer));
  }
  const ExportResult failure{u"打印失败，请检查打印机"_s};
  try {
    const int count = pages.pageCount();
    const PageRange range = rangeOf(printer);
    const int from = std::clamp(range.from, 1, count);
    const int to = range.to <= 0 ? count : std::clamp(range.to, from, count);
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer)) return failure;
    ReportPainter paintedBy;
    for (int page = from; page <= to; ++page) {
      if (page > from && !printer.newPage()) return failure;
      paintPage(painter, paintedBy, printer, pages.paper(), pages.page(page - 1));
    }
    return painter.end() && printer.printerState() != QPrinter::Error ? ExportResult{} : failure;
  } catch (const Failure& caught) {
    printer.abort();
    return {caught.description()};
  }
}

}  // namespace qinghe

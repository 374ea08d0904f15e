#include "reports/engine/Exporter.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <algorithm>
#include <functional>
#include <memory>

#include "reports/engine/PdfTextDevice.h"
#include "reports/engine/ReportPainter.h"
#include "reports/engine/ReportTable.h"
#include "values/dates.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

ExportResult failed(const QString& path, const QString& reason) {
  return {u"文件无法写入："_s + path + u'\n' + reason};
}

/// Runs the writer on a file that takes its place only when all is written.
ExportResult writeFile(const QString& path, const std::function<bool(QFileDevice&)>& write) {
  // A device or a pipe must be written to, not replaced by a file.
  const QFileInfo there(path);
  const bool inPlace = there.exists() && !there.isFile() && !there.isDir();
  std::unique_ptr<QFileDevice> file;
  if (inPlace) {
    file = std::make_unique<QFile>(path);
  } else {
    file = std::make_unique<QSaveFile>(path);
  }
  if (!file->open(QIODevice::WriteOnly)) return failed(path, file->errorString());
  try {
    const bool written = write(*file) && file->flush() && file->error() == QFileDevice::NoError;
    if (auto* atomic = qobject_cast<QSaveFile*>(file.get())) {
      if (!written) {
        const QString reason = atomic->errorString();
        atomic->cancelWriting();
        return failed(path, reason);
      }
      if (!atomic->commit()) return failed(path, atomic->errorString());
      return {};
    }
    if (!written) return failed(path, file->errorString());
    return {};
  } catch (const Failure& failure) {
    if (auto* atomic = qobject_cast<QSaveFile*>(file.get())) atomic->cancelWriting();
    return failed(path, failure.description());
  }
}

/// Collects text and writes it in large pieces.
class TextSink {
 public:
  explicit TextSink(QIODevice& device) : device_(device) {}

  void add(const QString& text) {
    constexpr qsizetype kPiece = 1 << 16;
    buffer_ += text.toUtf8();
    if (buffer_.size() >= kPiece) flush();
  }
  bool flush() {
    ok_ = ok_ && device_.write(buffer_) == buffer_.size();
    buffer_.clear();
    return ok_;
  }

 private:
  QIODevice& device_;
  QByteArray buffer_;
  bool ok_ = true;
};

/// Text for markup; characters that no page may hold become U+FFFD.
QString escaped(const QString& text) {
  QString out = text.toHtmlEscaped();
  for (qsizetype i = 0; i < out.size(); ++i) {
    const QChar character = out[i];
    const bool pair =
        character.isHighSurrogate() && i + 1 < out.size() && out[i + 1].isLowSurrogate();
    if (pair) {
      ++i;
      continue;
    }
    const char16_t code = character.unicode();
    const bool control = code < 0x20 && code != '\t' && code != '\n' && code != '\r';
    if (control || character.isSurrogate() || code == 0xFFFE || code == 0xFFFF) {
      out[i] = QChar(QChar::ReplacementCharacter);
    }
  }
  return out;
}

QString csvCell(const QString& text) {
  static const QString triggers = u"=+-@\t\r"_s;
  QString cell = text;
  const bool formula = !text.isEmpty() && triggers.contains(text[0]) && !IsNumeric(text);
  if (formula || text.startsWith(u'\'')) cell.prepend(u'\'');
  const bool quote = cell.contains(u'"') || cell.contains(u',') || cell.contains(u'\n') ||
                     cell.contains(u'\r') || cell.startsWith(u' ') || cell.endsWith(u' ');
  if (!quote) return cell;
  cell.replace(u'"', u"\"\""_s);
  return u'"' + cell + u'"';
}

QString csvLine(const QStringList& cells) {
  QStringList out;
  for (const auto& cell : cells) out << csvCell(cell);
  return out.join(u',') + u"\r\n"_s;
}

QString htmlHead(const ReportLayout& layout, const ReportTable& table) {
  QString out =
      u"<!DOCTYPE html>\n<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"zh-CN\">\n"
      u"<head>\n<meta charset=\"utf-8\"/>\n<title>"_s +
      escaped(layout.caption) +
      u"</title>\n<style>\n"
      u"body { font-family: \"Noto Sans CJK SC\", sans-serif; margin: 2em; }\n"
      u"table { border-collapse: collapse; }\n"
      u"th { text-align: left; border-bottom: 2px solid; }\n"
      u"th, td { padding: 0.2em 0.8em; }\n"
      u"td { border-bottom: 1px solid #ccc; }\n"
      u".number { text-align: right; font-variant-numeric: tabular-nums; }\n"
      u".sum td { font-weight: bold; }\n"
      u"</style>\n</head>\n<body>\n"_s;
  QStringList headings = table.headings();
  if (headings.isEmpty()) headings << layout.caption;
  for (const auto& heading : headings) out += u"<h1>"_s + escaped(heading) + u"</h1>\n"_s;
  out += u"<table>\n<thead><tr>"_s;
  for (const auto& column : table.columns()) {
    out += (column.isNumber ? u"<th class=\"number\">"_s : u"<th>"_s) + escaped(column.title) +
           u"</th>"_s;
  }
  return out + u"</tr></thead>\n<tbody>\n"_s;
}

QString htmlRow(const ReportTable& table, const ReportTable::Row& row) {
  const auto& columns = table.columns();
  if (row.band == Band::GroupHeader) {
    return u"<tr><td colspan=\"%1\">"_s.arg(qMax<size_t>(1, columns.size())) +
           escaped(row.cells.join(u' ')) + u"</td></tr>\n"_s;
  }
  QString out = row.band == Band::Detail ? u"<tr>"_s : u"<tr class=\"sum\">"_s;
  for (size_t i = 0; i < columns.size(); ++i) {
    out += (columns[i].isNumber ? u"<td class=\"number\">"_s : u"<td>"_s) +
           escaped(row.cells[static_cast<qsizetype>(i)]) + u"</td>"_s;
  }
  return out + u"</tr>\n"_s;
}

}  // namespace

ExportResult exportPdf(PageLayout& pages, const QString& path, PageRange range) {
  return writeFile(path, [&](QFileDevice& file) {
    const int count = pages.pageCount();
    const int from = std::clamp(range.from, 1, count);
    const int to = range.to <= 0 ? count : std::clamp(range.to, from, count);
    PdfTextDevice device(file, reportFont(36, false));
    QPdfWriter writer(&device);
    const PaperFormat& paper = pages.paper();
    writer.setPageLayout(
        QPageLayout(QPageSize(QSizeF(paper.width, paper.height), QPageSize::Millimeter),
                    QPageLayout::Portrait, QMarginsF()));
    writer.setResolution(ReportPainter::kUnitsPerInch);
    writer.setTitle(pages.layout().caption);
    writer.setCreator(QCoreApplication::applicationName());
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    ReportPainter paintedBy;
    for (int page = from; page <= to; ++page) {
      if (page > from && !writer.newPage()) return false;
      paintedBy.paint(painter, pages.page(page - 1));
      // Nothing is gained by going on when the disk is full.
      if (file.error() != QFileDevice::NoError) return false;
    }
    return painter.end();
  });
}

ExportResult exportHtml(PageLayout& pages, const QString& path) {
  return writeFile(path, [&](QFileDevice& file) {
    ReportTable table(pages.layout(), pages.data());
    TextSink out(file);
    out.add(htmlHead(pages.layout(), table));
    table.visit([&](const ReportTable::Row& row) { out.add(htmlRow(table, row)); });
    out.add(u"</tbody>\n</table>\n<p>"_s + escaped(textOf(pages.date())) +
            u"</p>\n</body>\n</html>\n"_s);
    return out.flush();
  });
}

ExportResult exportCsv(PageLayout& pages, const QString& path) {
  return writeFile(path, [&](QFileDevice& file) {
    ReportTable table(pages.layout(), pages.data());
    TextSink out(file);
    out.add(QString(QChar(0xFEFF)) + csvLine(table.titles()));
    table.visit([&](const ReportTable::Row& row) { out.add(csvLine(row.cells)); });
    return out.flush();
  });
}

}  // namespace qinghe

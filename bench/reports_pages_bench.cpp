// Pages of a statistics report of 100,000 lines: finding them and painting them into a PDF, against
// bare QPdfWriter painting the same texts at the same places, and against LibreOffice turning the
// same rows from CSV into a PDF. Then the file's size a page, and how soon the first page of a
// short and of a very long report stands on the screen.

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <stdexcept>

#include "report_trade.h"
#include "reports/ReportWindow.h"
#include "reports/engine/ReportPainter.h"
#include "reports/engine/commands.h"
#include "resources/resources.h"
#include "shell/AppState.h"
#include "store/Connection.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr int manyLines = 100'000;
constexpr int fewLines = 200;
constexpr int rounds = 3;
constexpr int windowRounds = 15;
constexpr double paintBar = 1.3;
constexpr double officeBar = 3;
constexpr double firstPageBar = 1.5;
const QDate today(2026, 11, 21);

ShapedSetPtr rowsOf(const QString& path) {
  return ShapedSet::open(std::make_shared<Connection>(path),
                         statisticsCommand(StatisticsReport::Partner, TradeSide::Purchase, 25, {}));
}

double secondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

void require(const ExportResult& result) {
  if (!result.ok()) throw std::runtime_error(result.error.toStdString());
}

/// A text as it stands on a page, with nothing left to find out.
struct Text {
  QPointF place;
  QString text;
  int font;
};

struct Texts {
  std::vector<QFont> fonts;
  std::vector<std::vector<Text>> pages;
  qsizetype count = 0;
};

/// All texts of the report, cut and placed as the report's painter does.
Texts textsOf(PageLayout& layout) {
  Texts all;
  std::map<std::pair<int, bool>, int> fontOf;
  TextFitters fitters;
  const double units = ReportPainter::kUnitsPerMillimetre;
  for (int index = 0; index < layout.pageCount(); ++index) {
    auto& page = all.pages.emplace_back();
    for (const PlacedBox& placed : layout.page(index).boxes) {
      if (placed.text.isEmpty()) continue;
      const int size = qRound(placed.box->points * ReportPainter::kUnitsPerInch / 72.0);
      TextFitter& fitter = fitters.of(size, placed.box->bold);
      const auto [font, isNew] =
          fontOf.try_emplace({size, placed.box->bold}, static_cast<int>(all.fonts.size()));
      if (isNew) all.fonts.push_back(fitter.font());
      double width = 0;
      const QString text = fitter.fit(placed.text, placed.rect.width() * units, &width);
      const bool right = placed.box->align == ReportBox::Align::Right;
      page.push_back({{right ? placed.rect.right() * units - width : placed.rect.x() * units,
                       placed.rect.y() * units + fitter.ascent()},
                      text,
                      font->second});
      ++all.count;
    }
  }
  return all;
}

void paintBare(const Texts& texts, const QString& path) {
  QPdfWriter writer(path);
  writer.setPageSize(QPageSize(QPageSize::A4));
  writer.setPageMargins(QMarginsF());
  writer.setResolution(ReportPainter::kUnitsPerInch);
  QPainter painter(&writer);
  bool first = true;
  for (const auto& page : texts.pages) {
    if (!first) writer.newPage();
    first = false;
    int font = -1;
    for (const Text& text : page) {
      if (text.font != font) painter.setFont(texts.fonts.at(static_cast<std::size_t>(text.font)));
      font = text.font;
      painter.drawText(text.place, text.text);
    }
  }
}

bool report(const char* what, double ours, double other, double ratio, double bar, bool met) {
  std::printf("%-24s %9.1f ms, %9.1f ms, ratio %.2f (bar %.2f)%s\n", what, ours * 1e3, other * 1e3,
              ratio, bar, met ? "" : "  MISSED");
  return met;
}

bool paintBench(const QString& store, const QTemporaryDir& folder) {
  const ShapedSetPtr rows = rowsOf(store);
  PageLayout layout(rptGOKU_DAWE(), rows, today);
  const Texts texts = textsOf(layout);
  const QString ours = folder.filePath(u"ours.pdf"_s);
  const QString bare = folder.filePath(u"bare.pdf"_s);
  double least = std::numeric_limits<double>::max();
  double leastBare = least;
  double leastPages = least;
  double leastBoxes = least;
  for (int round = 0; round < rounds; ++round) {
    leastBare = std::min(leastBare, secondsOf([&] { paintBare(texts, bare); }));
    leastPages = std::min(leastPages, secondsOf([&] {
                            PageLayout fresh(rptGOKU_DAWE(), rows, today);
                            fresh.pageCount();
                          }));
    leastBoxes = std::min(leastBoxes, secondsOf([&] {
                            PageLayout fresh(rptGOKU_DAWE(), rows, today);
                            for (int page = fresh.pageCount() - 1; page >= 0; --page) {
                              fresh.page(page);
                            }
                          }));
    least = std::min(least, secondsOf([&] {
                       PageLayout fresh(rptGOKU_DAWE(), rows, today);
                       require(exportPdf(fresh, ours));
                     }));
  }
  const auto pages = static_cast<double>(texts.pages.size());
  std::printf(
      "%.0f pages, %lld texts; finding the pages %.1f ms, their boxes %.1f ms; %.0f pages/s; %.1f "
      "KiB a page, "
      "bare %.1f KiB\n",
      pages, static_cast<long long>(texts.count), leastPages * 1e3, leastBoxes * 1e3, pages / least,
      static_cast<double>(QFile(ours).size()) / pages / 1024,
      static_cast<double>(QFile(bare).size()) / pages / 1024);
  const double ratio = least / leastBare;
  return report("PDF, bare QPdfWriter", least, leastBare, ratio, paintBar, ratio <= paintBar);
}

bool officeBench(const QString& store, const QTemporaryDir& folder) {
  const QString office = QStandardPaths::findExecutable(u"soffice"_s);
  if (office.isEmpty()) {
    std::printf("LibreOffice is not installed; not compared\n");
    return true;
  }
  const ShapedSetPtr rows = rowsOf(store);
  PageLayout layout(rptGOKU_DAWE(), rows, today);
  const QString csv = folder.filePath(u"rows.csv"_s);
  require(exportCsv(layout, csv));
  const double ours = secondsOf([&] {
    PageLayout fresh(rptGOKU_DAWE(), rows, today);
    require(exportPdf(fresh, folder.filePath(u"again.pdf"_s)));
  });
  const QStringList arguments{u"-env:UserInstallation=file://"_s + folder.filePath(u"office"_s),
                              u"--headless"_s,
                              u"--infilter=CSV:44,34,UTF8"_s,
                              u"--convert-to"_s,
                              u"pdf"_s,
                              u"--outdir"_s,
                              folder.path()};
  // The first start makes the profile; only the second counts.
  const QString little = folder.filePath(u"little.csv"_s);
  QFile file(little);
  if (!file.open(QIODevice::WriteOnly) || file.write("a,b\n") != 4) return false;
  file.close();
  QProcess::execute(office, arguments + QStringList{little});
  const double other = secondsOf([&] { QProcess::execute(office, arguments + QStringList{csv}); });
  if (!QFile::exists(folder.filePath(u"rows.pdf"_s))) {
    throw std::runtime_error("LibreOffice wrote no PDF");
  }
  const double times = other / ours;
  return report("PDF, LibreOffice", ours, other, times, officeBar, times >= officeBar);
}

/// From data that is read to the first page on the screen.
double firstPage(const ShapedSetPtr& rows) {
  std::unique_ptr<ReportWindow> window;
  const double seconds = secondsOf([&] {
    window = std::make_unique<ReportWindow>(rptGOKU_DAWE(), rows);
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->grab();
  });
  return seconds;
}

bool windowBench(const QString& longStore, const QString& shortStore) {
  const ShapedSetPtr many = rowsOf(longStore);
  const ShapedSetPtr few = rowsOf(shortStore);
  double least = std::numeric_limits<double>::max();
  double leastShort = least;
  for (int round = 0; round < windowRounds; ++round) {
    leastShort = std::min(leastShort, firstPage(few));
    least = std::min(least, firstPage(many));
  }
  PageLayout longest(rptGOKU_DAWE(), many, today);
  PageLayout shortest(rptGOKU_DAWE(), few, today);
  std::printf("first page of %d and of %d pages:\n", longest.pageCount(), shortest.pageCount());
  const double ratio = least / leastShort;
  return report("first page on screen", least, leastShort, ratio, firstPageBar,
                ratio <= firstPageBar);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  initResources();
  try {
    const AppState state;  // windows belong to one
    const QTemporaryDir folder(u"pages_bench_XXXXXX"_s);
    const QString many = folder.filePath(u"many.MDB"_s);
    const QString few = folder.filePath(u"few.MDB"_s);
    const QString longest = folder.filePath(u"longest.MDB"_s);
    makeTrade(many, manyLines);
    makeTrade(few, fewLines);
    makeTrade(longest, 2 * manyLines + manyLines / 2);
    bool met = paintBench(many, folder);
    met = windowBench(longest, few) && met;
    met = officeBench(many, folder) && met;
    return met ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}

// The statistics from their command to all their sums, against a plain GROUP BY on the same file
// that gives the same sums: the goods' by the engine, those of groups and all added up from them.
// And the same at a quarter of the lines, and the memory that a line of a report takes.

#include <malloc.h>
#include <sqlite3.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <stdexcept>

#include "report_trade.h"
#include "reports/engine/GroupSums.h"
#include "reports/engine/commands.h"
#include "store/Connection.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr int manyLines = 100'000;
constexpr int fewLines = 25'000;
constexpr int rounds = 7;
constexpr double bar = 4;
constexpr double linearBar = 1.5;

/// What a run found: the total of the amounts, and a number that is another when any goods' sum is.
struct Found {
  double total = 0;
  double goods = 0;
};

struct Report {
  const char* name;
  StatisticsReport report;
  const ReportLayout& layout;
  const char* plain;  ///< key of the group, then the six sums; amounts in the second
};

#define QINGHE_SUMS                                                                              \
  "sum(k.SHLI),sum(k.JINE),sum(iif(k.SHLI<0,k.SHLI,0)),sum(iif(k.SHLI<0,k.JINE,0)),sum(k.YNSH)," \
  "sum(iif(k.SHLI<0,k.YNSH,0)) FROM GOHU h, GOKU k WHERE h.id=k.GOHU_ID AND h.kehu_id=25 AND "   \
  "h.ghrq>='2024-01-01 00:00:00' AND h.ghrq<='2026-12-31 00:00:00' GROUP BY "

const std::array<Report, 4>& reports() {
  static const std::array<Report, 4> all{
      {{"by category", StatisticsReport::Category, rptGOKU_LEBI(),
        "SELECT k.LEBI," QINGHE_SUMS "k.LEBI,h.gosh_id,k.XIMU_ID,k.XIMU"},
       {"by partner", StatisticsReport::Partner, rptGOKU_DAWE(),
        "SELECT h.gosh_id," QINGHE_SUMS "h.gosh_id,k.XIMU_ID,k.XIMU"},
       {"by month", StatisticsReport::Month, rptGOKU_MONTH(),
        "SELECT strftime('%Y',h.ghrq)||'年'||CAST(strftime('%m',h.ghrq) AS INTEGER)||'月' AS "
        "m," QINGHE_SUMS "m,k.XIMU_ID,k.XIMU"},
       {"details", StatisticsReport::Detail, rptXIMU_GOKU(),
        "SELECT h.gosh_id," QINGHE_SUMS "h.gosh_id,k.XIMU_ID,k.XIMU"}}};
  return all;
}

#undef QINGHE_SUMS

QString commandOf(const Report& report) {
  const StatisticsFilter filter{
      dateClause(TradeSide::Purchase, QDate(2024, 1, 1), QDate(2026, 12, 31)), {}, {}};
  return statisticsCommand(report.report, TradeSide::Purchase, 25, filter);
}

const ReportBox& amounts(const ReportSection& section) {
  for (const ReportBox& box : section.boxes) {
    if (box.kind == ReportBox::Kind::Sum &&
        box.field.compare(u"jine"_s, Qt::CaseInsensitive) == 0) {
      return box;
    }
  }
  throw std::runtime_error("a report without amounts");
}

/// All sums of a report, as its footers will show them.
class Summed {
 public:
  Summed(const Report& report, const std::shared_ptr<Connection>& connection)
      : layout_(report.layout),
        rows_(ShapedSet::open(connection, commandOf(report))),
        cursor_(layout_, rows_),
        sums_(layout_, rows_) {
    // The sum of the whole takes all others in; the details have none.
    if (!layout_.reportFooter.boxes.empty()) {
      total_ = sums_.value(amounts(layout_.reportFooter), cursor_, -1);
      return;
    }
    for (qint64 row = 0; row < rows_->rowCount(); ++row) total_ += goodsAt({row, 0});
  }

  Found found() {
    Found found{total_, 0};
    const bool grouped = layout_.groups.size() > 1;
    for (qint64 row = 0; row < rows_->rowCount(); ++row) {
      const auto goods = grouped ? rows_->child(row, layout_.groups[1].member) : nullptr;
      const qint64 count = grouped ? goods->rowCount() : 1;
      for (qint64 i = 0; i < count; ++i) {
        const double sum = grouped ? goodsAt({row, i, 0}) : goodsAt({row, 0});
        found.goods += sum * sum;
      }
    }
    return found;
  }

 private:
  double goodsAt(const std::vector<qint64>& rows) {
    const int level = static_cast<int>(layout_.groups.size()) - 1;
    cursor_.seek({Band::GroupFooter, level, rows});
    return sums_.value(amounts(layout_.groups.back().footer), cursor_, level);
  }

  const ReportLayout& layout_;
  ShapedSetPtr rows_;
  BandCursor cursor_;
  GroupSums sums_;
  double total_ = 0;
};

Found plain(const Report& report, const QString& path) {
  BareStore file(path);
  sqlite3_stmt* rows = file.prepare(report.plain);
  Found found;
  std::array<double, 6> group{};
  std::array<double, 6> all{};
  std::string key;
  while (sqlite3_step(rows) == SQLITE_ROW) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows, 0));
    if (key != text) {
      key = text;
      group.fill(0);
    }
    for (std::size_t i = 0; i < group.size(); ++i) {
      const double sum = sqlite3_column_double(rows, static_cast<int>(i) + 1);
      group.at(i) += sum;
      all.at(i) += sum;
    }
    const double amount = sqlite3_column_double(rows, 2);
    found.goods += amount * amount;
  }
  sqlite3_finalize(rows);
  found.total = all[1];
  return found;
}

double secondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

bool same(double one, double other) {
  return std::abs(one - other) <= 1e-9 * std::max(1.0, std::abs(other));
}

struct Times {
  double ours = std::numeric_limits<double>::max();
  double plain = ours;
  double few = ours;  ///< ours at a quarter of the lines
};

double summedIn(const Report& report, const std::shared_ptr<Connection>& connection,
                const Found& wanted) {
  std::unique_ptr<Summed> summed;
  const double seconds = secondsOf([&] { summed = std::make_unique<Summed>(report, connection); });
  const Found found = summed->found();
  if (!same(found.total, wanted.total) || !same(found.goods, wanted.goods)) {
    throw std::runtime_error("the sums differ");
  }
  return seconds;
}

/// In turns, so that what else the machine does falls on all alike.
Times measure(const Report& report, const QString& many, const QString& few) {
  const auto manyRows = std::make_shared<Connection>(many);
  const auto fewRows = std::make_shared<Connection>(few);
  const Found wantedOfFew = plain(report, few);
  Times least;
  for (int round = 0; round < rounds; ++round) {
    Found wanted;
    least.plain = std::min(least.plain, secondsOf([&] { wanted = plain(report, many); }));
    least.ours = std::min(least.ours, summedIn(report, manyRows, wanted));
    least.few = std::min(least.few, summedIn(report, fewRows, wantedOfFew));
  }
  return least;
}

double bytesOfLine(const Report& report, const QString& path) {
  const auto connection = std::make_shared<Connection>(path);
  const auto used = [] {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
  };
  const double before = used();
  const Summed summed(report, connection);
  return (used() - before) / manyLines;
}

bool run() {
  const QTemporaryDir folder(u"reports_bench_XXXXXX"_s);
  const QString many = folder.filePath(u"many.MDB"_s);
  const QString few = folder.filePath(u"few.MDB"_s);
  makeTrade(many, manyLines);
  makeTrade(few, fewLines);
  bool met = true;
  for (const Report& report : reports()) {
    const Times times = measure(report, many, few);
    const double ratio = times.ours / times.plain;
    const double growth = times.ours / times.few / (manyLines / fewLines);
    met = met && ratio <= bar && growth <= linearBar;
    std::printf(
        "%-12s %7.1f ms, GROUP BY %7.1f ms, ratio %.2f (bar %.2f)%s; growth %.2f of linear (bar "
        "%.2f)%s; %.0f bytes a line\n",
        report.name, times.ours * 1e3, times.plain * 1e3, ratio, bar,
        ratio <= bar ? "" : "  MISSED", growth, linearBar, growth <= linearBar ? "" : "  MISSED",
        bytesOfLine(report, many));
  }
  return met;
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  try {
    return run() ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}

// The local store against bare SQLite on the same file: a walk over all values as text, single-row
// updates, and searches by key. Both sides run in turn in one process, and the ratios are printed.

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <stdexcept>
#include <vector>

#include "store/Connection.h"
#include "store/Recordset.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int goodsRows = 100'000;
constexpr int updateRows = 1'000;
constexpr int rounds = 7;

/// A bare handle, closed with the object.
class Bare {
 public:
  explicit Bare(const QString& path) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    if (sqlite3_open_v2(path.toUtf8().constData(), &handle_, flags, nullptr) != SQLITE_OK) {
      throw std::runtime_error("cannot open");
    }
  }
  ~Bare() { sqlite3_close(handle_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  void exec(const QString& sql) {
    if (sqlite3_exec(handle_, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(handle_));
    }
  }
  sqlite3_stmt* prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(handle_));
    }
    return statement;
  }

 private:
  sqlite3* handle_ = nullptr;
};

double millisecondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Runs both sides in turn, so that what disturbs one disturbs the other, and gives the least time
/// of each.
std::pair<double, double> leastOf(const std::function<void()>& ours,
                                  const std::function<void()>& bare, int times = rounds) {
  double least = std::numeric_limits<double>::max();
  double leastBare = least;
  for (int i = 0; i < times; ++i) {
    leastBare = std::min(leastBare, millisecondsOf(bare));
    least = std::min(least, millisecondsOf(ours));
  }
  return {least, leastBare};
}

bool report(const char* what, std::pair<double, double> times, double bar) {
  const double ratio = times.first / times.second;
  std::printf("%-46s %9.2f ms, bare %9.2f ms, ratio %.2f (bar %.2f)%s\n", what, times.first,
              times.second, ratio, bar, ratio <= bar ? "" : "  MISSED");
  return ratio <= bar;
}

QString fileWithGoods(const QTemporaryDir& folder, int rows) {
  const QString path = folder.filePath(u"%1.MDB"_s.arg(rows));
  Bare file(path);
  QFile schema(QStringLiteral(QINGHE_SCHEMA));
  if (!schema.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the schema");
  file.exec(u"PRAGMA synchronous = OFF"_s);
  file.exec(QString::fromUtf8(schema.readAll()));
  file.exec(
      u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<%1) "
      u"INSERT INTO XIMU (id,R_ID,QIYE_ID,qiye,LEBI_ID,CHYE_ID,XIMU_NO,XIMU,GESH,LEBI,CHYE,SHXI,"
      u"JIGEX,ZHKO,JISH,NOTH) SELECT i, i*7%32768, 1, '示例书店', i%40, i%90+0.5, "
      u"'978-7-'||printf('%06d',i), '青禾文库第'||i||'卷', '20', '文学', '青禾出版社', "
      u"'开本:16;装帧:平装', printf('%.2f', i%100+0.5), '0.85', '内容介绍，第'||i||'卷。', i%2 FROM n"_s
          .arg(rows));
  return path;
}

bool walk(const QString& path) {
  const auto connection = std::make_shared<qinghe::Connection>(path);
  Bare file(path);
  const QStringList fields = {u"id"_s,      u"R_ID"_s,    u"QIYE_ID"_s, u"qiye"_s,
                              u"LEBI_ID"_s, u"CHYE_ID"_s, u"XIMU_NO"_s, u"XIMU"_s,
                              u"GESH"_s,    u"LEBI"_s,    u"CHYE"_s,    u"SHXI"_s,
                              u"JIGEX"_s,   u"ZHKO"_s,    u"JISH"_s,    u"NOTH"_s};
  qsizetype length = 0;
  qsizetype bareLength = 0;
  const auto ours = [&] {
    qinghe::Recordset set(connection, u"SELECT * FROM XIMU WHERE QIYE_ID=1"_s);
    for (; !set.atEnd(); set.MoveNext()) {
      for (const QString& field : fields) length += set.text(field).size();
    }
  };
  const auto bare = [&] {
    sqlite3_stmt* statement = file.prepare("SELECT * FROM XIMU WHERE QIYE_ID=1");
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int column = 0; column < 16; ++column) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        bareLength += QString::fromUtf8(text, sqlite3_column_bytes(statement, column)).size();
      }
    }
    sqlite3_finalize(statement);
  };
  const auto times = leastOf(ours, bare);
  if (length == 0 || bareLength == 0) throw std::runtime_error("nothing was read");
  return report("100,000 rows, all columns as text", times, 1.5);
}

double median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

// One update of ours and one bare, in turn, each on a file of its own: what else the disk does
// falls on both alike, and the medians leave its stalls out.
bool update(const char* what, const QString& path, const QString& barePath) {
  const auto connection = std::make_shared<qinghe::Connection>(path);
  qinghe::Recordset set(connection, u"SELECT * FROM XIMU"_s);
  const auto ours = [&](int row) {
    set.MoveFirst();
    set.Find(u"id=%1"_s.arg(row));
    set.setValue(u"XIMU"_s, u"改名"_s);
    set.setValue(u"JIGEX"_s, u"25.50"_s);
    set.Update();
  };
  Bare file(barePath);
  file.exec(u"PRAGMA synchronous = EXTRA"_s);
  sqlite3_stmt* statement = file.prepare("UPDATE XIMU SET XIMU=?, JIGEX=? WHERE id=?");
  const auto bare = [&](int row) {
    sqlite3_bind_text(statement, 1, "改名", -1, SQLITE_STATIC);
    sqlite3_bind_text(statement, 2, "25.50", -1, SQLITE_STATIC);
    sqlite3_bind_int(statement, 3, row);
    if (sqlite3_step(statement) != SQLITE_DONE) throw std::runtime_error("not updated");
    sqlite3_reset(statement);
  };
  std::vector<double> times;
  std::vector<double> bareTimes;
  for (int row = 1; row <= updateRows; ++row) {
    bareTimes.push_back(millisecondsOf([&] { bare(row); }));
    times.push_back(millisecondsOf([&] { ours(row); }));
  }
  sqlite3_finalize(statement);
  return report(what, {median(times) * updateRows, median(bareTimes) * updateRows}, 1.2);
}

// One search and one value read, over keys spread through the whole set.
double microsecondsOfFind(const QString& path, int rows) {
  constexpr int searches = 20'000;
  const auto connection = std::make_shared<qinghe::Connection>(path);
  qinghe::Recordset set(connection, u"SELECT * FROM XIMU"_s);
  set.Find(u"id=1"_s);
  qsizetype length = 0;
  const auto search = [&] {
    for (int i = 0; i < searches; ++i) {
      set.MoveFirst();
      set.Find(u"id=%1"_s.arg(static_cast<qint64>(i) * 7919 % rows + 1));
      length += set.text(u"XIMU"_s).size();
    }
  };
  double least = std::numeric_limits<double>::max();
  for (int i = 0; i < rounds; ++i) least = std::min(least, millisecondsOf(search));
  if (length == 0) throw std::runtime_error("nothing was found");
  return least * 1000 / searches;
}

}  // namespace

int main() {
  try {
    const QTemporaryDir folder(QStringLiteral("store_bench"));
    const QString path = fileWithGoods(folder, goodsRows);
    bool held = walk(path);
    const QString file = fileWithGoods(folder, updateRows);
    const QString twin = folder.filePath(u"twin.MDB"_s);
    if (!QFile::copy(file, twin)) throw std::runtime_error("cannot copy");
    held = update("1,000 single-row updates", file, twin) && held;
    const double few = microsecondsOfFind(folder.filePath(u"%1.MDB"_s.arg(updateRows)), updateRows);
    const double many = microsecondsOfFind(path, goodsRows);
    // A hundred times the rows: a tree one level deeper and caches missed, and no more than that.
    const bool flat = many <= few * 2;
    std::printf("%-46s %9.2f us, in 1,000 rows %9.2f us, ratio %.2f (bar 2.00)%s\n",
                "Find by id in 100,000 rows and one value", many, few, many / few,
                flat ? "" : "  MISSED");
    return held && flat ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}

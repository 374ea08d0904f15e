#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <limits>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>

#include "Store.h"
#include "sql_text.h"

namespace qinghe::portal_server {

/// One connection to the database file, with the statements it has prepared. Used by one thread.
class SqliteConnection final : public StoreWriter {
 public:
  using Clock = std::chrono::steady_clock;

  /// How far one statement may go before it is given up with `TooSlow`.
  struct ReadLimits {
    Clock::duration time;
    /// Of one comparison with a pattern: the pattern's bytes times the text's.
    std::int64_t comparison = std::numeric_limits<std::int64_t>::max();
  };

  /// Opens the file for writing, making it when it is missing. Throws `std::runtime_error`.
  explicit SqliteConnection(const std::string& path);
  /// Opens the file for reading alone.
  SqliteConnection(const std::string& path, ReadLimits limits);

  void read(const Query& query, RowSink& sink) override;
  std::int64_t count(const Table& table, const Expression& condition) override;
  std::int64_t insert(const Table& table, const std::vector<Assignment>& row) override;
  void update(const Table& table, std::int64_t id, const std::vector<Assignment>& row) override;
  void remove(const Table& table, const Expression& condition) override;

  /// Runs a fixed statement of our own, whose rows nobody reads.
  void execute(const std::string& statement);
  /// A number that changes with each commit, of other processes too: as of the last reading here,
  /// and as of this moment.
  std::uint32_t versionRead();
  std::uint32_t versionNow();
  /// The names of the columns that a stored table has by now.
  std::vector<std::string> columnNames(std::string_view storage);

 private:
  struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;
  struct Prepared {
    std::string text;
    Statement statement;
  };

  sqlite3_stmt* prepared(const std::string& text);
  sqlite3_stmt* bound(const Sql& sql);
  bool step(sqlite3_stmt* statement);
  void run(const Sql& sql);
  [[noreturn]] void fail(const std::string& what);
  void open(const std::string& path, int flags);
  /// Lets the engine ask now and then, and at each comparison, whether it may go on.
  void boundReading();
  bool isLate() const { return Clock::now() > deadline_; }
  static void like(sqlite3_context* context, int count, sqlite3_value** values);

  std::unique_ptr<sqlite3, CloseDatabase> database_;
  std::list<Prepared> recent_;  // the one used last stands in front
  std::unordered_map<std::string_view, std::list<Prepared>::iterator> byText_;
  ReadLimits limits_{Clock::duration::max()};
  Clock::time_point deadline_ = Clock::time_point::max();
};

}  // namespace qinghe::portal_server

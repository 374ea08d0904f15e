#include "SqliteConnection.h"

#include <stdexcept>

namespace qinghe::portal_server {

namespace {

constexpr std::size_t mostStatements = 256;
constexpr int stepsAtOnce = 500;
constexpr int busyMilliseconds = 10'000;

// Leaves a statement ready for its next use, whatever happened to this one.
class ResetOnExit {
 public:
  explicit ResetOnExit(sqlite3_stmt* statement) : statement_(statement) {}
  ~ResetOnExit() {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
  ResetOnExit(const ResetOnExit&) = delete;
  ResetOnExit& operator=(const ResetOnExit&) = delete;

 private:
  sqlite3_stmt* statement_;
};

int bindValue(sqlite3_stmt* statement, int at, const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    return sqlite3_bind_int64(statement, at, *whole);
  }
  if (const auto* real = std::get_if<double>(&value)) {
    return sqlite3_bind_double(statement, at, *real);
  }
  const std::string& text = std::get<std::string>(value);
  return sqlite3_bind_text64(statement, at, text.data(), text.size(), SQLITE_TRANSIENT,
                             SQLITE_UTF8);
}

std::string_view textOf(sqlite3_value* value) {
  const auto* text = static_cast<const char*>(sqlite3_value_blob(value));
  const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
  return text ? std::string_view(text, size) : std::string_view();
}

// Columns hold what their type says and are never null, so only numbers as typed need a look.
// The value is read in place: the connection belongs to one thread.
Cell cellAt(sqlite3_stmt* statement, int at, Type type) {
  sqlite3_value* value = sqlite3_column_value(statement, at);
  if (type == Type::Integer || type == Type::Flag) return std::int64_t{sqlite3_value_int64(value)};
  if (type == Type::Numeric) {
    const int kept = sqlite3_value_type(value);
    if (kept == SQLITE_INTEGER) return std::int64_t{sqlite3_value_int64(value)};
    if (kept == SQLITE_FLOAT) return sqlite3_value_double(value);
  }
  return textOf(value);
}

}  // namespace

SqliteConnection::SqliteConnection(const std::string& path) {
  open(path, SQLITE_OPEN_CREATE);
  // A reader never waits for the disk, and what is committed survives a power cut.
  execute("PRAGMA journal_mode=WAL");
  execute("PRAGMA synchronous=FULL");
}

SqliteConnection::SqliteConnection(const std::string& path, ReadLimits limits) : limits_(limits) {
  open(path, 0);
  execute("PRAGMA query_only=1");
  boundReading();
}

void SqliteConnection::open(const std::string& path, int flags) {
  // Counting what all threads allocate would cost each of them a lock a time.
  [[maybe_unused]] static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | flags, nullptr);
  database_.reset(opened);
  if (result != SQLITE_OK) fail("cannot open " + path);
  sqlite3_busy_timeout(opened, busyMilliseconds);
  sqlite3_limit(opened, SQLITE_LIMIT_ATTACHED, 0);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
}

void SqliteConnection::boundReading() {
  const auto late = [](void* self) {
    return static_cast<const SqliteConnection*>(self)->isLate() ? 1 : 0;
  };
  sqlite3_progress_handler(database_.get(), stepsAtOnce, late, this);
  // The engine's own comparison, which it would not leave before the end.
  sqlite3_create_function_v2(database_.get(), "like", 2,
                             SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, this,
                             &SqliteConnection::like, nullptr, nullptr, nullptr);
}

void SqliteConnection::like(sqlite3_context* context, int, sqlite3_value** values) {
  const auto* self = static_cast<const SqliteConnection*>(sqlite3_user_data(context));
  const auto* pattern = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values[1]));
  const std::int64_t cost =
      std::int64_t{sqlite3_value_bytes(values[0])} * sqlite3_value_bytes(values[1]);
  if (cost > self->limits_.comparison || self->isLate()) {
    sqlite3_result_error_code(context, SQLITE_INTERRUPT);
  } else if (pattern && text) {
    sqlite3_result_int(context, sqlite3_strlike(pattern, text, 0) == 0);
  }
}

void SqliteConnection::read(const Query& query, RowSink& sink) {
  sqlite3_stmt* statement = bound(selectSql(query));
  const ResetOnExit reset(statement);
  while (step(statement)) {
    sink.beginRow();
    int at = 0;
    for (const Column* column : query.fields) {
      sink.cell(*column, cellAt(statement, at++, column->type));
    }
    sink.endRow();
  }
}

std::int64_t SqliteConnection::count(const Table& table, const Expression& condition) {
  sqlite3_stmt* statement = bound(countSql(table, condition));
  const ResetOnExit reset(statement);
  return step(statement) ? sqlite3_column_int64(statement, 0) : 0;
}

std::int64_t SqliteConnection::insert(const Table& table, const std::vector<Assignment>& row) {
  run(insertSql(table, row));
  return sqlite3_last_insert_rowid(database_.get());
}

void SqliteConnection::update(const Table& table, std::int64_t id,
                              const std::vector<Assignment>& row) {
  if (!row.empty()) run(updateSql(table, id, row));
}

void SqliteConnection::remove(const Table& table, const Expression& condition) {
  run(removeSql(table, condition));
}

void SqliteConnection::execute(const std::string& statement) {
  run({.text = statement});
}

std::uint32_t SqliteConnection::versionRead() {
  unsigned version = 0;
  if (sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_DATA_VERSION, &version) !=
      SQLITE_OK) {
    fail("cannot tell the version");
  }
  return version;
}

std::uint32_t SqliteConnection::versionNow() {
  // Any reading looks whether somebody has committed; this one reads nothing else.
  execute("PRAGMA data_version");
  return versionRead();
}

std::vector<std::string> SqliteConnection::columnNames(std::string_view storage) {
  sqlite3_stmt* statement =
      bound({.text = "SELECT name FROM pragma_table_info(?)", .values = {std::string(storage)}});
  const ResetOnExit reset(statement);
  std::vector<std::string> names;
  while (step(statement)) names.emplace_back(textOf(sqlite3_column_value(statement, 0)));
  return names;
}

sqlite3_stmt* SqliteConnection::prepared(const std::string& text) {
  if (const auto known = byText_.find(text); known != byText_.end()) {
    recent_.splice(recent_.begin(), recent_, known->second);
    return known->second->statement.get();
  }
  sqlite3_stmt* statement = nullptr;
  const int size = static_cast<int>(text.size()) + 1;
  if (sqlite3_prepare_v3(database_.get(), text.c_str(), size, SQLITE_PREPARE_PERSISTENT, &statement,
                         nullptr) != SQLITE_OK) {
    fail("cannot prepare");
  }
  recent_.push_front({text, Statement(statement)});
  byText_.emplace(recent_.front().text, recent_.begin());
  if (recent_.size() > mostStatements) {
    byText_.erase(recent_.back().text);
    recent_.pop_back();
  }
  return statement;
}

sqlite3_stmt* SqliteConnection::bound(const Sql& sql) {
  sqlite3_stmt* statement = prepared(sql.text);
  int at = 0;
  for (const Value& value : sql.values) {
    if (bindValue(statement, ++at, value) != SQLITE_OK) fail("cannot bind");
  }
  if (limits_.time != Clock::duration::max()) deadline_ = Clock::now() + limits_.time;
  return statement;
}

bool SqliteConnection::step(sqlite3_stmt* statement) {
  const int result = sqlite3_step(statement);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) fail("cannot run");
  return false;
}

void SqliteConnection::run(const Sql& sql) {
  sqlite3_stmt* statement = bound(sql);
  const ResetOnExit reset(statement);
  while (step(statement)) {
  }
}

void SqliteConnection::fail(const std::string& what) {
  if (database_ && sqlite3_errcode(database_.get()) == SQLITE_INTERRUPT) throw TooSlow(what);
  const char* words = database_ ? sqlite3_errmsg(database_.get()) : "out of memory";
  throw std::runtime_error(what + ": " + words);
}

}  // namespace qinghe::portal_server

#include "store/Statement.h"

#include <sqlite3.h>

#include <utility>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestQuote = 200;

class GateScope {
 public:
  GateScope(Access& gate, Access access) : gate_(gate), before_(std::exchange(gate, access)) {}
  ~GateScope() { gate_ = before_; }
  GateScope(const GateScope&) = delete;
  GateScope& operator=(const GateScope&) = delete;

 private:
  Access& gate_;
  Access before_;
};

bool isOnlySpace(const QByteArray& tail) {
  for (const char c : tail) {
    if (c != ' ' && c != ';' && (c < '\t' || c > '\r')) return false;
  }
  return true;
}

}  // namespace

StoreError engineError(sqlite3* handle, const QString& tried) {
  constexpr int primaryCode = 0xff;
  const QString words = QString::fromUtf8(sqlite3_errmsg(handle));
  const QString quote = tried.size() > longestQuote ? tried.first(longestQuote) + u"…"_s : tried;
  return StoreError(sqlite3_errcode(handle) & primaryCode, words + u" ("_s + quote + u')');
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

Statement::Statement(sqlite3* handle, Access& gate, const QString& sql, Access access)
    : handle_(handle), gate_(&gate), access_(access), sql_(sql) {
  if (sql.contains(QChar(0))) throw StoreError(SQLITE_ERROR, u"NUL (%1)"_s.arg(sql.first(20)));
  const QByteArray utf8 = sql.toUtf8();
  sqlite3_stmt* statement = nullptr;
  const char* tail = nullptr;
  const GateScope scope(gate, access);
  const int result = sqlite3_prepare_v2(handle, utf8.constData(), static_cast<int>(utf8.size()),
                                        &statement, &tail);
  statement_.reset(statement);
  if (result != SQLITE_OK) throw engineError(handle, sql);
  if (!statement) throw StoreError(SQLITE_ERROR, u"空命令"_s);
  if (!isOnlySpace(QByteArray(tail))) {
    throw StoreError(SQLITE_ERROR,
                     u"只能执行一条命令 (%1)"_s.arg(sql.first(std::min(longestQuote, sql.size()))));
  }
  if (access == Access::Read && !sqlite3_stmt_readonly(statement)) {
    throw StoreError(SQLITE_AUTH,
                     u"命令只能读取 (%1)"_s.arg(sql.first(std::min(longestQuote, sql.size()))));
  }
}

int Statement::columnCount() const {
  return sqlite3_column_count(get());
}

QString Statement::columnName(int column) const {
  return QString::fromUtf8(sqlite3_column_name(get(), column));
}

ColumnKind Statement::kindOf(int column) const {
  return columnKind(sqlite3_column_decltype(get(), column));
}

std::vector<ColumnKind> Statement::kinds() const {
  std::vector<ColumnKind> kinds;
  for (int column = 0; column < columnCount(); ++column) kinds.push_back(kindOf(column));
  return kinds;
}

void Statement::bind(int parameter, const StoredValue& value) {
  int result = SQLITE_OK;
  if (const auto* whole = std::get_if<qint64>(&value)) {
    result = sqlite3_bind_int64(get(), parameter, *whole);
  } else if (const auto* number = std::get_if<double>(&value)) {
    result = sqlite3_bind_double(get(), parameter, *number);
  } else if (const auto* utf8 = std::get_if<QByteArray>(&value)) {
    result = sqlite3_bind_text64(get(), parameter, utf8->constData(),
                                 static_cast<sqlite3_uint64>(utf8->size()), SQLITE_TRANSIENT,
                                 SQLITE_UTF8);
  } else {
    result = sqlite3_bind_null(get(), parameter);
  }
  if (result != SQLITE_OK) fail();
}

bool Statement::step() {
  const GateScope scope(*gate_, access_);
  const int result = sqlite3_step(get());
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  fail();
}

void Statement::reset() {
  sqlite3_reset(get());
}

void Statement::run() {
  while (step()) {
  }
  reset();
}

void Statement::fail() {
  const StoreError error = engineError(handle_, sql_);
  reset();
  throw error;
}

}  // namespace qinghe

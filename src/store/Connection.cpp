#include "store/Connection.h"

#include <sqlite3.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <string_view>

#include "store/CommandDialect.h"
#include "store/ConnectionPrivate.h"
#include "values/dates.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// More than the program's commands ever need; statements with odd column sets do not pile up.
constexpr qsizetype mostKeptStatements = 64;

bool mayCall(const char* function) {
  return function && std::string_view(function) != "load_extension";
}

int authorize(void* gate, int action, const char*, const char* name, const char*, const char*) {
  const Access access = *static_cast<const Access*>(gate);
  if (access == Access::Own) return SQLITE_OK;
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_RECURSIVE:
      return SQLITE_OK;
    case SQLITE_FUNCTION:
      return mayCall(name) ? SQLITE_OK : SQLITE_DENY;
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
      return access == Access::Change ? SQLITE_OK : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

QByteArrayView textArgument(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text, text ? sqlite3_value_bytes(value) : 0};
}

template <int (QDate::*part)() const>
void partOfDate(sqlite3_context* context, int, sqlite3_value** arguments) {
  const auto date = readDate(QString::fromUtf8(textArgument(arguments[0])));
  if (date) {
    sqlite3_result_int(context, (date->date().*part)());
  } else {
    sqlite3_result_null(context);
  }
}

QByteArray joinable(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_FLOAT:
      return textOfStored(sqlite3_value_double(value)).toUtf8();
    default:
      return textArgument(value).toByteArray();
  }
}

void join(sqlite3_context* context, int, sqlite3_value** arguments) {
  const QByteArray joined = joinable(arguments[0]) + joinable(arguments[1]);
  sqlite3_result_text64(context, joined.constData(), static_cast<sqlite3_uint64>(joined.size()),
                        SQLITE_TRANSIENT, SQLITE_UTF8);
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void teach(sqlite3* handle, const char* name, int arguments, Function function) {
  constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  sqlite3_create_function_v2(handle, name, arguments, flags, nullptr, function, nullptr, nullptr,
                             nullptr);
}

bool isOpenFailure(int code) {
  return code == SQLITE_CANTOPEN || code == SQLITE_PERM || code == SQLITE_AUTH;
}

[[noreturn]] void failOpen(int code, const QString& words, const QString& path) {
  throw StoreError(isOpenFailure(code) ? StoreError::cannotOpen : code,
                   words + u" ("_s + path + u')');
}

std::unique_ptr<SQLite::Database> openFile(const QString& path, int busyTimeout) {
  const QFileInfo file(path);
  if (!file.isFile()) failOpen(SQLITE_CANTOPEN, u"找不到数据库文件"_s, path);
  // To the engine an empty file is an empty database; to a user it is a broken one.
  if (file.size() == 0) {
    failOpen(SQLITE_NOTADB, QString::fromLatin1(sqlite3_errstr(SQLITE_NOTADB)), path);
  }
  const QByteArray name = QFile::encodeName(file.absoluteFilePath());
  try {
    // The program works in one thread, so the engine need not guard each call.
    return std::make_unique<SQLite::Database>(
        name.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, busyTimeout);
  } catch (const SQLite::Exception& error) {
    failOpen(error.getErrorCode(), QString::fromUtf8(error.getErrorStr()), path);
  }
}

}  // namespace

Connection::Connection(const QString& path, std::chrono::milliseconds busyTimeout)
    : d(std::make_unique<Private>()) {
  d->path = path;
  d->database = openFile(path, static_cast<int>(busyTimeout.count()));
  sqlite3* handle = d->handle();
  // The file may be any file that a user picked; nothing in it is to be trusted.
  sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  teach(handle, "year", 1, partOfDate<&QDate::year>);
  teach(handle, "month", 1, partOfDate<&QDate::month>);
  // The engine lets programs give this operator a meaning; here it is what "&" is turned into.
  teach(handle, "->>", 2, join);
  sqlite3_set_authorizer(handle, authorize, &d->gate);
  try {
    d->run(u"SELECT count(*) FROM sqlite_master"_s);
    // The folder, too, or a power cut could bring back the journal of what was called saved.
    d->run(u"PRAGMA synchronous = EXTRA"_s);
    // A copy of the one file is a whole backup, which write-ahead logging would break.
    d->run(u"PRAGMA journal_mode = DELETE"_s);
    d->run(u"PRAGMA cell_size_check = ON"_s);
  } catch (const StoreError& error) {
    failOpen(error.number(), QString::fromLatin1(sqlite3_errstr(error.number())), path);
  }
}

Connection::~Connection() = default;

QString Connection::path() const {
  return d->path;
}

Statement Connection::Private::command(const QString& text, Access access) {
  const QString engine = toEngine(text);
  Statement statement(handle(), gate, engine, access);
  const QString sorted = withSortedDistinct(engine, statement.columnCount());
  return sorted == engine ? std::move(statement) : Statement(handle(), gate, sorted, access);
}

std::shared_ptr<Statement> Connection::Private::kept(const QString& sql) {
  if (const auto found = keptStatements.value(sql)) return found;
  const auto made = std::make_shared<Statement>(handle(), gate, sql, Access::Own);
  if (keptStatements.size() >= mostKeptStatements) keptStatements.clear();
  keptStatements.insert(sql, made);
  return made;
}

StoreTransaction::StoreTransaction(Connection::Private& connection, const QString& begin)
    : connection_(connection) {
  connection_.run(begin);
}

StoreTransaction::~StoreTransaction() {
  if (sqlite3_get_autocommit(connection_.handle())) return;
  try {
    connection_.run(u"ROLLBACK"_s);
  } catch (const StoreError&) {
    // The engine has rolled back by itself.
  }
}

void StoreTransaction::commit() {
  connection_.run(u"COMMIT"_s);
}

Connection::Private& opened(const std::shared_ptr<Connection>& connection) {
  if (!connection) throw StoreError(SQLITE_MISUSE, u"数据库没有打开"_s);
  return connection->internals();
}

}  // namespace qinghe

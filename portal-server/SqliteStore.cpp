#include "SqliteStore.h"

#include <algorithm>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

// An older file lacks the columns that came later; nothing is ever taken away.
void bringUpToDate(SqliteConnection& connection, const Table& table) {
  connection.execute(createTableSql(table));
  const auto present = connection.columnNames(table.storage);
  for (const Column& column : table.columns) {
    const bool known = std::any_of(present.begin(), present.end(), [&](const std::string& name) {
      return sameName(name, column.name);
    });
    if (!known) connection.execute(addColumnSql(table, column));
  }
  for (const std::string& statement : createIndexSql(table)) connection.execute(statement);
}

// A comparison cannot be interrupted; beyond a millisecond it is no work for in between.
constexpr std::int64_t quickComparison = 4'000'000;

SqliteConnection::ReadLimits quickly(SqliteStore::Patience patience) {
  return {.time = patience.atOnce, .comparison = quickComparison};
}

SqliteConnection::ReadLimits thoroughly(SqliteStore::Patience patience) {
  return {.time = patience.search};
}

}  // namespace

SqliteStore::SqliteStore(const std::string& path, Patience patience)
    : writing_(path), reading_(path, quickly(patience)), searching_(path, thoroughly(patience)) {
  transact([&](StoreWriter&) {
    for (const Table& table : allTables()) {
      if (!table.distinct) bringUpToDate(writing_, table);
    }
  });
}

void SqliteStore::transact(const std::function<void(StoreWriter&)>& work) {
  writing_.execute("BEGIN IMMEDIATE");
  try {
    work(writing_);
    writing_.execute("COMMIT");
  } catch (...) {
    try {
      writing_.execute("ROLLBACK");
    } catch (const std::runtime_error&) {
      // The engine has rolled back by itself; the first failure is the one to tell.
    }
    throw;
  }
}

}  // namespace qinghe::portal_server

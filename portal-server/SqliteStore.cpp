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

}  // namespace

SqliteStore::SqliteStore(const std::string& path)
    : writing_(path, SqliteConnection::Mode::Writing),
      reading_(path, SqliteConnection::Mode::Reading) {
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

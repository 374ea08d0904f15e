#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <QHash>
#include <memory>

#include "store/Connection.h"
#include "store/Statement.h"

namespace qinghe {

/// What the sets need of a connection.
struct Connection::Private {
  QString path;
  Access gate = Access::Read;
  std::unique_ptr<SQLite::Database> database;
  QHash<QString, std::shared_ptr<Statement>> keptStatements;

  sqlite3* handle() const { return database->getHandle(); }

  /// A command from outside, turned into the engine's dialect.
  Statement command(const QString& text, Access access);
  /// One of the store's own statements, prepared once and kept.
  std::shared_ptr<Statement> kept(const QString& sql);
  void run(const QString& sql) { kept(sql)->run(); }
};

/// A transaction that is rolled back unless committed.
class StoreTransaction {
 public:
  /// `begin` is "BEGIN" to read several rows as one moment, "BEGIN IMMEDIATE" to write.
  StoreTransaction(Connection::Private& connection, const QString& begin);
  ~StoreTransaction();
  StoreTransaction(const StoreTransaction&) = delete;
  StoreTransaction& operator=(const StoreTransaction&) = delete;
  void commit();

 private:
  Connection::Private& connection_;
};

/// The open connection's inside; throws `StoreError` when there is none.
Connection::Private& opened(const std::shared_ptr<Connection>& connection);

}  // namespace qinghe

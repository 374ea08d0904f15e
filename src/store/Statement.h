#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "store/ColumnKind.h"
#include "store/StoreError.h"

struct sqlite3;
struct sqlite3_stmt;

namespace qinghe {

/// What a statement may do; the connection's authorizer asks for it.
enum class Access {
  Read,    ///< a command from outside: rows are read and nothing else
  Change,  ///< a command from outside that also adds, changes and deletes rows
  Own,     ///< the store's own statements
};

/// The engine's last failure on `handle`, and what was tried.
StoreError engineError(sqlite3* handle, const QString& tried);

/// One prepared statement. Every failure throws `StoreError`, with the statement reset.
class Statement {
 public:
  /// `access` is the connection's word for its authorizer; it is set while the engine prepares and
  /// steps, since a step may prepare anew.
  Statement(sqlite3* handle, Access& gate, const QString& sql, Access access);

  sqlite3_stmt* get() const { return statement_.get(); }
  int columnCount() const;
  QString columnName(int column) const;
  ColumnKind kindOf(int column) const;
  std::vector<ColumnKind> kinds() const;

  void bind(int parameter, const StoredValue& value);
  bool step();  ///< true while there is a row
  void reset();
  void run();  ///< steps to the end and resets

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const;
  };
  [[noreturn]] void fail();

  sqlite3* handle_;
  Access* gate_;
  Access access_;
  QString sql_;
  std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
};

}  // namespace qinghe

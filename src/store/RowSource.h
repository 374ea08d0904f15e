#pragma once

#include <memory>
#include <optional>

#include "store/ColumnNames.h"
#include "store/Connection.h"
#include "store/KeyList.h"
#include "store/RowBuffer.h"
#include "store/TableInfo.h"

namespace qinghe {

/// The rows of a reading command. Those of one table are a keyset: keys first, values when they
/// are needed, a page ahead of a walk. Those of any other command are read at once and stay as they
/// were.
class RowSource {
 public:
  RowSource(std::shared_ptr<Connection> connection, const QString& command);

  const std::optional<TableInfo>& table() const { return table_; }
  const ColumnNames& columns() const { return columns_; }
  const std::vector<ColumnKind>& kinds() const { return kinds_; }
  qint64 size() const { return table_ ? keys_.size() : rows_.rowCount(); }
  KeyList& keys() { return keys_; }

  /// Where a row's values stand now, read if they are not at hand.
  struct Place {
    const RowBuffer& rows;
    qsizetype row;
  };
  Place at(qint64 position);
  bool holds(qint64 position) const {
    return position >= first_ && position < first_ + rows_.rowCount();
  }
  /// Lets what was read of a keyset go, so that the next value is read anew.
  void forget();

 private:
  void readKeys(const QString& command);
  void readAll(Statement& statement);
  void readPage(qint64 first, qint64 count);
  void readRow(qint64 position);
  void readSpan(qint64 first, qint64 count);

  std::shared_ptr<Connection> connection_;
  std::optional<TableInfo> table_;
  ColumnNames columns_;
  std::vector<ColumnKind> kinds_;
  QString rowQuery_;
  QString spanQuery_;
  KeyList keys_;
  RowBuffer rows_;
  qint64 first_ = 0;
  qint64 pageSize_ = 1;
};

}  // namespace qinghe

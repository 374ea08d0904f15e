#pragma once

#include <map>
#include <optional>

#include "store/RowBuffer.h"
#include "store/TableInfo.h"

namespace qinghe {

/// Writes single rows of one table, each in one transaction.
class RowWriter {
 public:
  using Values = std::map<int, StoredValue>;  ///< by column

  RowWriter(Connection::Private& connection, const TableInfo& table)
      : connection_(connection), table_(table) {}

  /// Both give the row as it stands afterwards, defaults and key included.
  RowBuffer insert(const Values& values);
  /// Nothing when the row is no longer as it was in `before`.
  std::optional<RowBuffer> update(qint64 key, const Values& values, const RowBuffer& before,
                                  qsizetype row);

 private:
  RowBuffer run(const QString& sql, const std::vector<StoredValue>& parameters);

  Connection::Private& connection_;
  const TableInfo& table_;
};

}  // namespace qinghe

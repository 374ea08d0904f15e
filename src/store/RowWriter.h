#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "store/Connection.h"
#include "store/RowBuffer.h"
#include "store/TableInfo.h"

namespace qinghe {

/// Writes single rows of one table, each in one transaction.
class RowWriter {
 public:
  using Values = std::map<int, StoredValue>;  ///< by column

  RowWriter(std::shared_ptr<Connection> connection, const TableInfo& table);

  /// Both give the row as it stands afterwards, defaults and key included.
  RowBuffer insert(const Values& values);
  /// Nothing when the row is no longer as it was in `before`, whose only row it is.
  std::optional<RowBuffer> update(qint64 key, const Values& values, const RowBuffer& before);

 private:
  QString insertCommand(const Values& values) const;
  QString updateCommand(const Values& values) const;
  RowBuffer run(Statement& statement) const;

  std::shared_ptr<Connection> connection_;
  const TableInfo& table_;
  // The update of the time before: a screen's saves set the same columns again and again.
  std::vector<int> updatedColumns_;
  std::shared_ptr<Statement> update_;
};

}  // namespace qinghe

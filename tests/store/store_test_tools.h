#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <memory>

#include "store/Connection.h"
#include "store/Recordset.h"
#include "store/ShapedSet.h"
#include "store/StoreError.h"
#include "support/TempStore.h"
#include "support/text_printing.h"

namespace qinghe {

/// A fresh file with a connection to it, and short words for what tests do with them.
class StoreFixture {
 public:
  TempStore store;
  std::shared_ptr<Connection> connection = std::make_shared<Connection>(store.path());

  Recordset open(const QString& command) const { return Recordset(connection, command); }
  ShapedSetPtr shape(const QString& command) const { return ShapedSet::open(connection, command); }
};

/// The words of the `StoreError` that `action` throws; "nothing thrown" when it throws none.
template <typename Action>
QString storeErrorOf(Action action, int* number = nullptr) {
  try {
    action();
  } catch (const StoreError& error) {
    if (number) *number = error.number();
    return error.description();
  }
  return QStringLiteral("nothing thrown");
}

/// A whole column of a set, in order, by a walk from the first record.
inline QStringList column(Recordset& set, const QString& field) {
  QStringList values;
  for (set.MoveFirst(); !set.atEnd(); set.MoveNext()) values.append(set.text(field));
  return values;
}

inline QStringList column(const ShapedSet& set, const QString& field) {
  QStringList values;
  for (qint64 row = 0; row < set.rowCount(); ++row) {
    values.append(set.text(row, set.columnIndex(field)));
  }
  return values;
}

}  // namespace qinghe

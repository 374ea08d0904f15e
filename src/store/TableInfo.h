#pragma once

#include <QStringList>
#include <optional>
#include <vector>

#include "store/ColumnKind.h"

namespace qinghe {

class Statement;

/// A table whose rows have a whole-number key of their own, so that they can be found and changed
/// one by one.
struct TableInfo {
  QString name;
  QStringList columns;
  std::vector<ColumnKind> kinds;
  int keyColumn = -1;

  QString quotedName() const;
  QString quotedColumn(int column) const;
  QString quotedKey() const { return quotedColumn(keyColumn); }

  /// The table of this name, from a statement that selects all its columns. Asks the engine's own
  /// memory, so that opening a set costs no query more. Nothing for a view, an unknown name, or a
  /// table without such a key.
  static std::optional<TableInfo> read(const Statement& wholeRows, const QString& name);
};

}  // namespace qinghe

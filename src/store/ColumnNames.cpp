#include "store/ColumnNames.h"

#include <sqlite3.h>

#include "store/Statement.h"

namespace qinghe {

using namespace Qt::StringLiterals;

ColumnNames::ColumnNames(const Statement& statement) {
  for (int column = 0; column < statement.columnCount(); ++column) {
    const QString name = statement.columnName(column);
    const bool isSecond = names_.contains(name, Qt::CaseInsensitive);
    names_.append(name);
    lookup_.append(isSecond ? QString() : name);
  }
}

int ColumnNames::indexOf(QStringView name) const {
  if (name.isEmpty()) return -1;
  const qsizetype count = lookup_.size();
  for (qsizetype tried = 0; tried < count; ++tried) {
    if (next_ >= count) next_ = 0;
    const QStringView candidate = lookup_[next_++];
    if (candidate.size() != name.size()) continue;
    if (candidate == name || candidate.compare(name, Qt::CaseInsensitive) == 0) {
      return static_cast<int>(next_ - 1);
    }
  }
  return -1;
}

int ColumnNames::require(QStringView name) const {
  const int index = indexOf(name);
  if (index < 0) throw StoreError(SQLITE_RANGE, u"没有列 %1"_s.arg(name));
  return index;
}

}  // namespace qinghe

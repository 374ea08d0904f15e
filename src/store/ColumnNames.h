#pragma once

#include <QStringList>
#include <QStringView>

namespace qinghe {

class Statement;

/// The columns of a set by name, without regard to case; of two with one name the first is meant.
class ColumnNames {
 public:
  ColumnNames() = default;
  explicit ColumnNames(const Statement& statement);

  const QStringList& all() const { return names_; }
  /// -1 when there is none. Quick for callers that ask for column after column.
  int indexOf(QStringView name) const;
  /// Throws `StoreError` when there is none.
  int require(QStringView name) const;

 private:
  QStringList names_;
  QStringList lookup_;
  mutable qsizetype next_ = 0;
};

}  // namespace qinghe

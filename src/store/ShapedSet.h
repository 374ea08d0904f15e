#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <vector>

namespace qinghe {

class Connection;

/// The result of a hierarchical command: rows with named child sets of any depth. A plain command
/// gives one level. Names compare without regard to case.
///
/// A level is a lazy view on its rows; values read as `Recordset` reads them.
class ShapedSet {
 public:
  /// Runs a SHAPE command or a plain reading command. Throws `StoreError`.
  static std::shared_ptr<const ShapedSet> open(const std::shared_ptr<Connection>& connection,
                                               const QString& command);
  virtual ~ShapedSet() = default;

  virtual QString name() const = 0;  ///< the alias the command gave it, empty for a plain one
  virtual qint64 rowCount() const = 0;
  virtual QStringList columns() const = 0;
  virtual int columnIndex(const QString& name) const = 0;  ///< -1 when there is none
  virtual QVariant value(qint64 row, int column) const = 0;
  virtual QString text(qint64 row, int column) const;

  virtual QStringList childNames() const = 0;
  /// The rows of the named child that belong to `row`, in the child's own order; null when there is
  /// no such child.
  virtual std::shared_ptr<const ShapedSet> child(qint64 row, const QString& name) const = 0;
};

using ShapedSetPtr = std::shared_ptr<const ShapedSet>;

}  // namespace qinghe

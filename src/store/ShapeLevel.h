#pragma once

#include <QHash>
#include <memory>
#include <vector>

#include "store/ColumnNames.h"
#include "store/Connection.h"
#include "store/RowBuffer.h"
#include "store/ShapeParser.h"

namespace qinghe {

/// One query of a hierarchical command, run once, with all its rows and the levels below it.
class ShapeLevel {
 public:
  using Rows = std::vector<qint64>;

  ShapeLevel(const std::shared_ptr<Connection>& connection, const ShapeCommand& command);

  /// A level below, with the rows of it that belong to each row here.
  struct Link {
    QString name;
    std::shared_ptr<const ShapeLevel> level;
    std::vector<int> columns;                               ///< of the upper level
    QHash<QByteArray, std::shared_ptr<const Rows>> groups;  ///< by relation key
  };

  const QString& name() const { return name_; }
  const ColumnNames& columns() const { return columns_; }
  const RowBuffer& rows() const { return rows_; }
  const std::vector<Link>& links() const { return links_; }
  const Link* link(const QString& name) const;
  /// The rows of the link's level that belong to `row`: those whose related columns hold the same,
  /// numbers by value, text without case, and null like null, as the groups were made.
  std::shared_ptr<const Rows> related(const Link& link, qint64 row) const;

 private:
  Link makeLink(const std::shared_ptr<Connection>& connection,
                const ShapeCommand::Child& child) const;

  QString name_;
  ColumnNames columns_;
  RowBuffer rows_;
  std::vector<Link> links_;
};

}  // namespace qinghe

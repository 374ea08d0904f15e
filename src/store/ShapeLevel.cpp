#include "store/ShapeLevel.h"

#include "store/ConnectionPrivate.h"

namespace qinghe {

namespace {

QByteArray keyOf(const RowBuffer& rows, qint64 row, const std::vector<int>& columns) {
  QByteArray key;
  for (const int column : columns) rows.appendKey(key, row, column);
  return key;
}

}  // namespace

ShapeLevel::ShapeLevel(const std::shared_ptr<Connection>& connection, const ShapeCommand& command)
    : name_(command.name) {
  {
    Statement statement = opened(connection).command(command.sql, Access::Read);
    columns_ = ColumnNames(statement);
    rows_ = RowBuffer(statement.kinds());
    while (statement.step()) rows_.append(statement);
  }
  for (const ShapeCommand::Child& child : command.children) {
    links_.push_back(makeLink(connection, child));
  }
}

ShapeLevel::Link ShapeLevel::makeLink(const std::shared_ptr<Connection>& connection,
                                      const ShapeCommand::Child& child) const {
  ShapeCommand named = child.command;
  named.name = child.name;
  Link link{child.name, std::make_shared<ShapeLevel>(connection, named), {}, {}};
  std::vector<int> childColumns;
  for (const ShapeCommand::Relation& relation : child.relations) {
    link.columns.push_back(columns_.require(relation.parentColumn));
    childColumns.push_back(link.level->columns().require(relation.childColumn));
  }
  QHash<QByteArray, std::shared_ptr<Rows>> groups;
  const RowBuffer& below = link.level->rows();
  for (qint64 row = 0; row < below.rowCount(); ++row) {
    std::shared_ptr<Rows>& group = groups[keyOf(below, row, childColumns)];
    if (!group) group = std::make_shared<Rows>();
    group->push_back(row);
  }
  for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
    link.groups.insert(group.key(), group.value());
  }
  return link;
}

const ShapeLevel::Link* ShapeLevel::link(const QString& name) const {
  for (const Link& candidate : links_) {
    if (candidate.name.compare(name, Qt::CaseInsensitive) == 0) return &candidate;
  }
  return nullptr;
}

std::shared_ptr<const ShapeLevel::Rows> ShapeLevel::related(const Link& link, qint64 row) const {
  static const auto none = std::make_shared<const Rows>();
  return link.groups.value(keyOf(rows_, row, link.columns), none);
}

}  // namespace qinghe

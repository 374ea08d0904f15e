#pragma once

#include <QString>
#include <vector>

namespace qinghe {

/// A hierarchical command taken apart: a query with a name, and the children appended to it.
struct ShapeCommand {
  struct Relation {
    QString parentColumn;
    QString childColumn;
  };
  struct Child;

  QString sql;
  QString name;  ///< the alias, empty when there is none
  std::vector<Child> children;
};

struct ShapeCommand::Child {
  ShapeCommand command;
  QString name;  ///< the alias of the whole child, or else that of its query
  std::vector<Relation> relations;
};

/// How deep children and brackets may stand in each other.
constexpr int maxShapeDepth = 64;

/// Whether the command is a hierarchical one and not a plain query.
bool isShapeCommand(QStringView command);

/// Reads SHAPE {sql} [AS] name APPEND (child [AS] name RELATE 'a' TO 'b', ...) [AS] name, ... where
/// a child is again such a command, a {sql}, or either in brackets. Words and names are read
/// without regard to case, names with or without quotes. Throws `StoreError`.
ShapeCommand parseShape(QStringView command);

}  // namespace qinghe

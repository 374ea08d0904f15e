#include "Expression.h"

#include <algorithm>

namespace qinghe::portal_server {

Expression Expression::equal(const Table& table, std::string_view column, Value value) {
  return {.kind = Kind::Compare, .column = table.column(column), .values = {std::move(value)}};
}

Expression Expression::oneOf(const Table& table, std::string_view column,
                             const std::vector<std::int64_t>& ids) {
  return {.kind = Kind::In, .column = table.column(column), .values = {ids.begin(), ids.end()}};
}

Expression Expression::allOf(std::vector<Expression> children) {
  std::erase_if(children, [](const Expression& child) { return child.kind == Kind::Always; });
  if (children.empty()) return {};
  if (children.size() == 1) return std::move(children.front());
  return {.kind = Kind::And, .children = std::move(children)};
}

Expression Expression::anyOf(std::vector<Expression> children) {
  if (children.size() == 1) return std::move(children.front());
  return {.kind = Kind::Or, .children = std::move(children)};
}

bool Expression::touches(Access access) const {
  if (column && column->access == access) return true;
  return std::any_of(children.begin(), children.end(),
                     [&](const Expression& child) { return child.touches(access); });
}

}  // namespace qinghe::portal_server

#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "tables.h"

namespace qinghe::portal_server {

/// A value as it is kept: flags are 0 and 1, dates "2024-03-09 00:00:00", texts UTF-8.
using Value = std::variant<std::int64_t, double, std::string>;

/// A condition over known columns. It holds values, never pieces of a statement.
struct Expression {
  enum class Kind : std::uint8_t {
    Always,
    Compare,  ///< column comparison value
    Like,     ///< column like pattern
    In,       ///< column in values; no values match nothing
    InRows,   ///< column in the ids of the rows of `rowsOf` for which the one child holds
    And,
    Or,
  };

  Kind kind = Kind::Always;
  const Column* column = nullptr;
  const char* comparison = "=";
  std::vector<Value> values = {};
  std::vector<Expression> children = {};
  const Table* rowsOf = nullptr;

  static Expression equal(const Table& table, std::string_view column, Value value);
  static Expression oneOf(const Table& table, std::string_view column,
                          const std::vector<std::int64_t>& ids);
  static Expression allOf(std::vector<Expression> children);
  static Expression anyOf(std::vector<Expression> children);

  /// Whether the condition looks at a column of that access.
  bool touches(Access access) const;
};

struct OrderTerm {
  const Column* column;
  bool descending;
};

}  // namespace qinghe::portal_server

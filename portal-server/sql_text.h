#pragma once

#include <string>
#include <vector>

#include "Store.h"

namespace qinghe::portal_server {

/// A statement with "?" for every value, and the values in order.
struct Sql {
  std::string text;
  std::vector<Value> values = {};
};

/// The statements of the SQLite store. Names come from the table of tables alone; whatever came
/// with a request is a bound value.
Sql selectSql(const Query& query);
Sql countSql(const Table& table, const Expression& condition);
Sql insertSql(const Table& table, const std::vector<Assignment>& row);
Sql updateSql(const Table& table, std::int64_t id, const std::vector<Assignment>& row);
Sql removeSql(const Table& table, const Expression& condition);

std::string createTableSql(const Table& table);
std::string addColumnSql(const Table& table, const Column& column);
std::vector<std::string> createIndexSql(const Table& table);

}  // namespace qinghe::portal_server

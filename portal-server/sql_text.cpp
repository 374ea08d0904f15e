#include "sql_text.h"

namespace qinghe::portal_server {

namespace {

std::string quoted(std::string_view name) {
  return '"' + std::string(name) + '"';
}

void appendList(Sql& sql, const std::vector<Value>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) sql.text += i == 0 ? "?" : ",?";
  sql.values.insert(sql.values.end(), values.begin(), values.end());
}

void appendExpression(Sql& sql, const Expression& expression) {
  switch (expression.kind) {
    case Expression::Kind::Always:
      sql.text += "1";
      return;
    case Expression::Kind::Compare:
      sql.text += quoted(expression.column->name) + expression.comparison + "?";
      sql.values.push_back(expression.values.front());
      return;
    case Expression::Kind::Like:
      sql.text += quoted(expression.column->name) + " LIKE ?";
      sql.values.push_back(expression.values.front());
      return;
    case Expression::Kind::In:
      sql.text += quoted(expression.column->name) + " IN (";
      appendList(sql, expression.values);
      sql.text += ")";
      return;
    case Expression::Kind::InRows:
      sql.text += quoted(expression.column->name) + " IN (SELECT \"id\" FROM " +
                  quoted(expression.rowsOf->storage) + " WHERE ";
      appendExpression(sql, expression.children.front());
      sql.text += ")";
      return;
    case Expression::Kind::And:
    case Expression::Kind::Or:
      break;
  }
  const char* joint = expression.kind == Expression::Kind::And ? " AND " : " OR ";
  for (std::size_t i = 0; i < expression.children.size(); ++i) {
    sql.text += i == 0 ? "(" : joint;
    appendExpression(sql, expression.children[i]);
  }
  sql.text += ")";
}

void appendWhere(Sql& sql, const Expression& condition) {
  if (condition.kind == Expression::Kind::Always) return;
  sql.text += " WHERE ";
  appendExpression(sql, condition);
}

void appendOrder(Sql& sql, const Query& query) {
  std::string terms;
  for (const OrderTerm& term : query.order) {
    if (!terms.empty()) terms += ",";
    terms += quoted(term.column->name);
    if (term.descending) terms += " DESC";
  }
  // Pages of one list must not overlap, so equal rows need an order too.
  if (query.table->hasId()) {
    terms += terms.empty() ? "\"id\"" : ",\"id\"";
  } else if (terms.empty()) {
    terms = quoted(query.fields.front()->name);
  }
  sql.text.append(" ORDER BY ").append(terms);
}

std::string columnSql(const Column& column) {
  const std::string name = quoted(column.name);
  switch (column.type) {
    case Type::Integer:
    case Type::Flag:
      return name + " INTEGER NOT NULL DEFAULT 0";
    case Type::Numeric:
      return name + " NUMERIC NOT NULL DEFAULT 0";
    case Type::Date:
    case Type::ExactText:
      return name + " TEXT NOT NULL DEFAULT ''";
    case Type::Text:
    case Type::LongText:
      break;
  }
  return name + " TEXT NOT NULL DEFAULT '' COLLATE NOCASE";
}

}  // namespace

Sql selectSql(const Query& query) {
  Sql sql{.text = query.table->distinct ? "SELECT DISTINCT " : "SELECT "};
  for (std::size_t i = 0; i < query.fields.size(); ++i) {
    if (i > 0) sql.text += ",";
    sql.text += quoted(query.fields[i]->name);
  }
  sql.text.append(" FROM ").append(quoted(query.table->storage));
  appendWhere(sql, query.condition);
  appendOrder(sql, query);
  sql.text += " LIMIT ? OFFSET ?";
  sql.values.emplace_back(query.limit);
  sql.values.emplace_back(query.offset);
  return sql;
}

Sql countSql(const Table& table, const Expression& condition) {
  Sql sql{.text = std::string("SELECT COUNT(*) FROM ").append(quoted(table.storage))};
  if (table.distinct) {
    sql.text = "SELECT COUNT(*) FROM (SELECT DISTINCT ";
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      if (i > 0) sql.text += ",";
      sql.text += quoted(table.columns[i].name);
    }
    sql.text.append(" FROM ").append(quoted(table.storage));
  }
  appendWhere(sql, condition);
  if (table.distinct) sql.text += ")";
  return sql;
}

Sql insertSql(const Table& table, const std::vector<Assignment>& row) {
  Sql sql{.text = std::string("INSERT INTO ").append(quoted(table.storage))};
  if (row.empty()) {
    sql.text += " DEFAULT VALUES";
    return sql;
  }
  for (std::size_t i = 0; i < row.size(); ++i) {
    sql.text.append(i == 0 ? "(" : ",").append(quoted(row[i].column->name));
    sql.values.push_back(row[i].value);
  }
  sql.text += ") VALUES (";
  for (std::size_t i = 0; i < row.size(); ++i) sql.text += i == 0 ? "?" : ",?";
  sql.text += ")";
  return sql;
}

Sql updateSql(const Table& table, std::int64_t id, const std::vector<Assignment>& row) {
  Sql sql{.text = std::string("UPDATE ").append(quoted(table.storage)).append(" SET ")};
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (i > 0) sql.text += ",";
    sql.text += quoted(row[i].column->name) + "=?";
    sql.values.push_back(row[i].value);
  }
  sql.text += " WHERE \"id\"=?";
  sql.values.emplace_back(id);
  return sql;
}

Sql removeSql(const Table& table, const Expression& condition) {
  Sql sql{.text = std::string("DELETE FROM ").append(quoted(table.storage))};
  appendWhere(sql, condition);
  return sql;
}

std::string createTableSql(const Table& table) {
  std::string sql("CREATE TABLE IF NOT EXISTS ");
  sql.append(quoted(table.storage)).append(" (");
  for (const Column& column : table.columns) {
    if (column.name == "id") {
      sql.append("\"id\" INTEGER PRIMARY KEY");
    } else {
      sql.append(",").append(columnSql(column));
    }
  }
  return sql.append(")");
}

std::string addColumnSql(const Table& table, const Column& column) {
  std::string sql("ALTER TABLE ");
  return sql.append(quoted(table.storage)).append(" ADD COLUMN ").append(columnSql(column));
}

std::vector<std::string> createIndexSql(const Table& table) {
  std::vector<std::string> statements;
  for (const std::string_view index : table.indexes) {
    std::string name(table.storage);
    name.append("_").append(std::to_string(statements.size() + 1));
    std::string sql("CREATE INDEX IF NOT EXISTS ");
    sql.append(quoted(name)).append(" ON ").append(quoted(table.storage));
    sql.append(" (").append(index).append(")");
    statements.push_back(std::move(sql));
  }
  return statements;
}

}  // namespace qinghe::portal_server

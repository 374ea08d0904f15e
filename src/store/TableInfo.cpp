#include "store/TableInfo.h"

#include <sqlite3.h>

#include "store/Statement.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

QString quoted(const QString& name) {
  QString text;
  text.reserve(name.size() + 2);
  text += u'"';
  text += name.contains(u'"') ? QString(name).replace(u'"', u"\"\""_s) : name;
  text += u'"';
  return text;
}

bool isTable(sqlite3* handle, const QByteArray& name) {
  return sqlite3_table_column_metadata(handle, nullptr, name.constData(), nullptr, nullptr, nullptr,
                                       nullptr, nullptr, nullptr) == SQLITE_OK;
}

}  // namespace

QString TableInfo::quotedName() const {
  return quoted(name);
}

QString TableInfo::quotedColumn(int column) const {
  return quoted(columns.at(column));
}

std::optional<TableInfo> TableInfo::read(const Statement& wholeRows, const QString& name) {
  sqlite3* handle = sqlite3_db_handle(wholeRows.get());
  const QByteArray utf8 = name.toUtf8();
  if (!isTable(handle, utf8)) return std::nullopt;
  TableInfo table;
  table.name = name;
  table.kinds = wholeRows.kinds();
  int keyColumns = 0;
  for (int column = 0; column < wholeRows.columnCount(); ++column) {
    const char* type = nullptr;
    int isKey = 0;
    if (sqlite3_table_column_metadata(handle, nullptr, utf8.constData(),
                                      sqlite3_column_name(wholeRows.get(), column), &type, nullptr,
                                      nullptr, &isKey, nullptr) != SQLITE_OK) {
      return std::nullopt;
    }
    table.columns.append(wholeRows.columnName(column));
    if (isKey == 0) continue;
    ++keyColumns;
    if (qstricmp(type, "INTEGER") == 0) table.keyColumn = column;
  }
  if (keyColumns != 1 || table.keyColumn < 0) return std::nullopt;
  return table;
}

}  // namespace qinghe

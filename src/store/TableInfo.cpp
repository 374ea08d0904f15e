#include "store/TableInfo.h"

#include <sqlite3.h>

#include "store/ConnectionPrivate.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

QString quoted(QString name) {
  return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

QByteArray bytesOf(const Statement& row, int column) {
  return QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(row.get(), column)));
}

bool isTable(Connection::Private& connection, const QString& name) {
  const auto query = connection.kept(
      u"SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ? COLLATE NOCASE"_s);
  query->bind(1, name.toUtf8());
  const bool found = query->step();
  query->reset();
  return found;
}

}  // namespace

QString TableInfo::quotedName() const {
  return quoted(name);
}

QString TableInfo::quotedColumn(int column) const {
  return quoted(columns.at(column));
}

std::optional<TableInfo> TableInfo::read(Connection::Private& connection, const QString& name) {
  if (!isTable(connection, name)) return std::nullopt;
  TableInfo table;
  table.name = name;
  int keyColumns = 0;
  const auto query = connection.kept(u"SELECT name, type, pk FROM pragma_table_info(?)"_s);
  query->bind(1, name.toUtf8());
  while (query->step()) {
    const QByteArray type = bytesOf(*query, 1);
    if (sqlite3_column_int(query->get(), 2) > 0) {
      ++keyColumns;
      if (type.compare("INTEGER", Qt::CaseInsensitive) == 0) {
        table.keyColumn = static_cast<int>(table.columns.size());
      }
    }
    table.columns.append(QString::fromUtf8(bytesOf(*query, 0)));
    table.kinds.push_back(columnKind(type.constData()));
  }
  query->reset();
  if (keyColumns != 1 || table.keyColumn < 0) return std::nullopt;
  return table;
}

}  // namespace qinghe

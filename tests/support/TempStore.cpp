#include "TempStore.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <QFile>
#include <stdexcept>

namespace {

constexpr int busyLimit = 30'000;

QVariant cell(const SQLite::Column& column) {
  switch (column.getType()) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return static_cast<qlonglong>(column.getInt64());
    case SQLITE_FLOAT:
      return column.getDouble();
    case SQLITE_BLOB:
      return QByteArray(static_cast<const char*>(column.getBlob()), column.getBytes());
    default:
      return QString::fromStdString(column.getString());
  }
}

std::string schema() {
  QFile file(QStringLiteral(QINGHE_SCHEMA));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the schema");
  return file.readAll().toStdString();
}

}  // namespace

TempStore::TempStore() {
  if (!folder_.isValid()) throw std::runtime_error("no temporary folder");
  SQLite::Database database(path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  // A test's file need not outlive the power.
  database.exec("PRAGMA synchronous = OFF");
  database.exec(schema());
}

QString TempStore::path() const {
  return folder_.filePath(QStringLiteral("DATA.MDB"));
}

void TempStore::exec(const QString& sql) const {
  SQLite::Database database(path().toStdString(), SQLite::OPEN_READWRITE, busyLimit);
  database.exec("PRAGMA synchronous = OFF");
  database.exec(sql.toStdString());
}

QVariant TempStore::value(const QString& sql) const {
  const QList<QVariantList> all = rows(sql);
  return all.isEmpty() ? QVariant() : all.first().value(0);
}

QList<QVariantList> TempStore::rows(const QString& sql) const {
  SQLite::Database database(path().toStdString(), SQLite::OPEN_READONLY, busyLimit);
  SQLite::Statement statement(database, sql.toStdString());
  QList<QVariantList> all;
  while (statement.executeStep()) {
    QVariantList row;
    for (int i = 0; i < statement.getColumnCount(); ++i) row.append(cell(statement.getColumn(i)));
    all.append(row);
  }
  return all;
}

#include "store/RowWriter.h"

#include "store/ConnectionPrivate.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

std::vector<int> columnsOf(const RowWriter::Values& values) {
  std::vector<int> columns;
  for (const auto& [column, value] : values) columns.push_back(column);
  return columns;
}

}  // namespace

RowWriter::RowWriter(std::shared_ptr<Connection> connection, const TableInfo& table)
    : connection_(std::move(connection)), table_(table) {}

QString RowWriter::insertCommand(const Values& values) const {
  QStringList names;
  for (const auto& [column, value] : values) names.append(table_.quotedColumn(column));
  const QStringList places(names.size(), u"?"_s);
  const QString content =
      names.isEmpty() ? u" DEFAULT VALUES"_s
                      : u" ("_s + names.join(u',') + u") VALUES ("_s + places.join(u',') + u')';
  return u"INSERT INTO "_s + table_.quotedName() + content + u" RETURNING *"_s;
}

QString RowWriter::updateCommand(const Values& values) const {
  constexpr qsizetype usualLength = 1000;
  QString command;
  command.reserve(usualLength);
  command.append(u"UPDATE ").append(table_.quotedName());
  QStringView before = u" SET ";
  for (const auto& [column, value] : values) {
    command.append(before).append(table_.quotedColumn(column)).append(u"=?");
    before = u",";
  }
  command.append(u" WHERE ").append(table_.quotedKey()).append(u"=?");
  for (int column = 0; column < table_.columns.size(); ++column) {
    if (column == table_.keyColumn) continue;
    command.append(u" AND ").append(table_.quotedColumn(column)).append(u" COLLATE BINARY IS ?");
  }
  return command.append(u" RETURNING *");
}

// One statement is one transaction, and RETURNING hands its row back without a second read.
RowBuffer RowWriter::run(Statement& statement) const {
  RowBuffer written(table_.kinds);
  while (statement.step()) written.append(statement);
  statement.reset();
  return written;
}

RowBuffer RowWriter::insert(const Values& values) {
  const auto statement = opened(connection_).kept(insertCommand(values));
  int parameter = 0;
  for (const auto& [column, value] : values) statement->bind(++parameter, value);
  return run(*statement);
}

std::optional<RowBuffer> RowWriter::update(qint64 key, const Values& values,
                                           const RowBuffer& before) {
  std::vector<int> columns = columnsOf(values);
  if (!update_ || updatedColumns_ != columns) {
    update_ = opened(connection_).kept(updateCommand(values));
    updatedColumns_ = std::move(columns);
  }
  int parameter = 0;
  for (const auto& [column, value] : values) update_->bind(++parameter, value);
  update_->bind(++parameter, key);
  for (int column = 0; column < before.columnCount(); ++column) {
    if (column != table_.keyColumn) update_->bind(++parameter, before.stored(0, column));
  }
  RowBuffer written = run(*update_);
  if (written.rowCount() == 0) return std::nullopt;
  return written;
}

}  // namespace qinghe

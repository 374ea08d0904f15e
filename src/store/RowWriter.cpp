#include "store/RowWriter.h"

#include "store/ConnectionPrivate.h"

namespace qinghe {

using namespace Qt::StringLiterals;

// One statement is one transaction, and RETURNING hands its row back without a second read.
RowBuffer RowWriter::run(const QString& sql, const std::vector<StoredValue>& parameters) {
  const auto statement = connection_.kept(sql);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    statement->bind(static_cast<int>(i) + 1, parameters[i]);
  }
  RowBuffer written(table_.kinds);
  while (statement->step()) written.append(*statement);
  statement->reset();
  return written;
}

RowBuffer RowWriter::insert(const Values& values) {
  QStringList names;
  QStringList places;
  std::vector<StoredValue> parameters;
  for (const auto& [column, value] : values) {
    names.append(table_.quotedColumn(column));
    places.append(u"?"_s);
    parameters.push_back(value);
  }
  const QString content =
      names.isEmpty() ? u" DEFAULT VALUES"_s
                      : u" ("_s + names.join(u',') + u") VALUES ("_s + places.join(u',') + u')';
  return run(u"INSERT INTO "_s + table_.quotedName() + content + u" RETURNING *"_s, parameters);
}

std::optional<RowBuffer> RowWriter::update(qint64 key, const Values& values,
                                           const RowBuffer& before, qsizetype row) {
  QStringList sets;
  std::vector<StoredValue> parameters;
  for (const auto& [column, value] : values) {
    sets.append(table_.quotedColumn(column) + u"=?"_s);
    parameters.push_back(value);
  }
  QString condition = table_.quotedKey() + u"=?"_s;
  parameters.emplace_back(key);
  for (int column = 0; column < table_.columns.size(); ++column) {
    if (column == table_.keyColumn) continue;
    condition += u" AND "_s + table_.quotedColumn(column) + u" COLLATE BINARY IS ?"_s;
    parameters.push_back(before.stored(row, column));
  }
  RowBuffer written = run(u"UPDATE "_s + table_.quotedName() + u" SET "_s + sets.join(u',') +
                              u" WHERE "_s + condition + u" RETURNING *"_s,
                          parameters);
  if (written.rowCount() == 0) return std::nullopt;
  return written;
}

}  // namespace qinghe

#include "store/RowSource.h"

#include <sqlite3.h>

#include <algorithm>

#include "store/CommandDialect.h"
#include "store/ConnectionPrivate.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// A row that is looked at alone is read alone; a walk reads ahead in growing steps.
constexpr qint64 largestPage = 256;
constexpr qint64 pageGrowth = 4;

// Whether the keys rise with few others between them, so that one scan reads them all.
bool isSpan(const KeyList& keys, qint64 first, qint64 count) {
  constexpr qint64 mostScanned = 2;
  const qint64 last = first + count - 1;
  for (qint64 position = first; position < last; ++position) {
    if (keys.at(position) >= keys.at(position + 1)) return false;
  }
  return keys.at(last) - keys.at(first) < mostScanned * count;
}

}  // namespace

RowSource::RowSource(std::shared_ptr<Connection> connection, const QString& command)
    : connection_(std::move(connection)) {
  Connection::Private& store = opened(connection_);
  Statement statement = store.command(command, Access::Read);
  columns_ = ColumnNames(statement);
  kinds_ = statement.kinds();
  rows_ = RowBuffer(kinds_);
  if (const auto parts = singleTableCommand(command)) {
    table_ = TableInfo::read(statement, parts->table);
    if (table_) {
      // Without an order of its own a set stands in the table's, whatever index finds its rows.
      const QString order = parts->ordered ? QString() : u"\nORDER BY "_s + table_->quotedKey();
      readKeys(u"SELECT "_s + table_->quotedKey() + u" FROM "_s + parts->tail + order);
      return;
    }
  }
  readAll(statement);
}

void RowSource::readKeys(const QString& command) {
  const QString key = table_->quotedKey();
  const QString values = u"SELECT * FROM "_s + table_->quotedName() + u" WHERE "_s + key;
  rowQuery_ = values + u" = ?"_s;
  spanQuery_ = values + u" BETWEEN ? AND ? ORDER BY "_s + key;
  Statement statement = opened(connection_).command(command, Access::Read);
  while (statement.step()) keys_.append(sqlite3_column_int64(statement.get(), 0));
}

void RowSource::readAll(Statement& statement) {
  while (statement.step()) rows_.append(statement);
}

RowSource::Place RowSource::at(qint64 position) {
  if (!holds(position)) {
    const bool isWalk = rows_.rowCount() > 0 && position == first_ + rows_.rowCount();
    pageSize_ = isWalk ? std::min(pageSize_ * pageGrowth, largestPage) : 1;
    readPage(position, std::min(pageSize_, size() - position));
  }
  return {rows_, static_cast<qsizetype>(position - first_)};
}

void RowSource::readPage(qint64 first, qint64 count) {
  rows_.clear();
  first_ = first;
  try {
    if (count > 1 && isSpan(keys_, first, count)) {
      readSpan(first, count);
    } else {
      std::optional<StoreTransaction> moment;
      if (count > 1) moment.emplace(opened(connection_), u"BEGIN"_s);
      for (qint64 position = first; position < first + count; ++position) readRow(position);
      if (moment) moment->commit();
    }
  } catch (...) {
    rows_.clear();
    throw;
  }
}

void RowSource::readRow(qint64 position) {
  const auto query = opened(connection_).kept(rowQuery_);
  query->bind(1, keys_.at(position));
  if (query->step()) {
    rows_.append(*query);
  } else {
    rows_.appendMissing();
  }
  query->reset();
}

void RowSource::readSpan(qint64 first, qint64 count) {
  const auto query = opened(connection_).kept(spanQuery_);
  query->bind(1, keys_.at(first));
  query->bind(2, keys_.at(first + count - 1));
  qint64 position = first;
  while (query->step()) {
    const qint64 key = sqlite3_column_int64(query->get(), table_->keyColumn);
    while (keys_.at(position) < key) {
      rows_.appendMissing();
      ++position;
    }
    if (keys_.at(position) != key) continue;
    rows_.append(*query);
    ++position;
  }
  query->reset();
  for (; position < first + count; ++position) rows_.appendMissing();
}

void RowSource::forget() {
  if (!table_) return;
  rows_.clear();
  pageSize_ = 1;
}

}  // namespace qinghe

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

}  // namespace

RowSource::RowSource(std::shared_ptr<Connection> connection, const QString& command)
    : connection_(std::move(connection)) {
  Connection::Private& store = opened(connection_);
  Statement statement = store.command(command, Access::Read);
  columns_ = ColumnNames(statement);
  kinds_ = statement.kinds();
  rows_ = RowBuffer(kinds_);
  if (const auto parts = singleTableCommand(command)) {
    table_ = TableInfo::read(store, parts->table);
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
  rowQuery_ =
      u"SELECT * FROM "_s + table_->quotedName() + u" WHERE "_s + table_->quotedKey() + u" = ?"_s;
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
  Connection::Private& store = opened(connection_);
  const auto query = store.kept(rowQuery_);
  try {
    std::optional<StoreTransaction> moment;
    if (count > 1) moment.emplace(store, u"BEGIN"_s);
    for (qint64 position = first; position < first + count; ++position) {
      query->bind(1, keys_.at(position));
      if (query->step()) {
        rows_.append(*query);
      } else {
        rows_.appendMissing();
      }
      query->reset();
    }
    if (moment) moment->commit();
  } catch (...) {
    rows_.clear();
    throw;
  }
}

void RowSource::forget() {
  if (!table_) return;
  rows_.clear();
  pageSize_ = 1;
}

}  // namespace qinghe

#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Expression.h"

namespace qinghe::portal_server {

struct Query {
  const Table* table;
  std::vector<const Column*> fields;
  Expression condition = {};
  std::vector<OrderTerm> order = {};
  std::int64_t limit = -1;  ///< -1: all rows
  std::int64_t offset = 0;
};

/// A cell as the store holds it; a text lives until the next cell is read.
using Cell = std::variant<std::int64_t, double, std::string_view>;

/// Where the rows of a query go.
class RowSink {
 public:
  virtual ~RowSink() = default;
  virtual void beginRow() = 0;
  virtual void cell(const Column& column, const Cell& cell) = 0;
  virtual void endRow() = 0;
};

struct Assignment {
  const Column* column;
  Value value;
};

/// One row read into memory, cells found by column name.
class Record {
 public:
  void add(const Column& column, Value value) { cells_.push_back({&column, std::move(value)}); }
  std::int64_t integer(std::string_view column) const;
  std::string text(std::string_view column) const;

 private:
  std::vector<Assignment> cells_;
};

/// Reading was given up because it took longer than its reader may.
class TooSlow : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads committed rows. Every failure of the store is an exception.
class StoreReader {
 public:
  virtual ~StoreReader() = default;
  virtual void read(const Query& query, RowSink& sink) = 0;
  virtual std::int64_t count(const Table& table, const Expression& condition) = 0;

  std::vector<Record> records(const Query& query);
  /// The first row for which the condition holds, with all columns.
  std::optional<Record> first(const Table& table, const Expression& condition);
  std::optional<Record> byId(const Table& table, std::int64_t id);
};

/// Writes inside one transaction and reads what it has written.
class StoreWriter : public StoreReader {
 public:
  /// The new row's id. Columns that are not assigned get 0, off or the empty text.
  virtual std::int64_t insert(const Table& table, const std::vector<Assignment>& row) = 0;
  virtual void update(const Table& table, std::int64_t id, const std::vector<Assignment>& row) = 0;
  virtual void remove(const Table& table, const Expression& condition) = 0;
};

/// Where everything is kept. Each reader, and the writing, belongs to one thread at a time.
class Store {
 public:
  virtual ~Store() = default;
  /// For what takes a moment: gives up early, so that nobody waits for another one's search.
  virtual StoreReader& reader() = 0;
  /// A number that is another one after each commit of anybody: as that reader's last reading
  /// found it, and as it is at this moment. On the reader's thread; throws as reading does.
  virtual std::uint32_t versionRead() = 0;
  virtual std::uint32_t versionNow() = 0;
  /// For long searches: gives up after some seconds.
  virtual StoreReader& patientReader() = 0;
  /// Runs `work` in one transaction: all of it is kept when it returns, on disk, and none of it
  /// when it throws.
  virtual void transact(const std::function<void(StoreWriter&)>& work) = 0;
};

/// An assignment by column name; the column must exist.
Assignment assign(const Table& table, std::string_view column, Value value);

}  // namespace qinghe::portal_server

#include "Store.h"

#include <stdexcept>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

Value owned(const Cell& cell) {
  if (const auto* text = std::get_if<std::string_view>(&cell)) return std::string(*text);
  if (const auto* real = std::get_if<double>(&cell)) return *real;
  return std::get<std::int64_t>(cell);
}

class RecordSink final : public RowSink {
 public:
  void beginRow() override { records_.emplace_back(); }
  void cell(const Column& column, const Cell& cell) override {
    records_.back().add(column, owned(cell));
  }
  void endRow() override {}
  std::vector<Record> take() { return std::move(records_); }

 private:
  std::vector<Record> records_;
};

std::vector<const Column*> allColumns(const Table& table) {
  std::vector<const Column*> columns;
  for (const Column& column : table.columns) columns.push_back(&column);
  return columns;
}

}  // namespace

std::int64_t Record::integer(std::string_view column) const {
  for (const Assignment& cell : cells_) {
    if (!sameName(cell.column->name, column)) continue;
    const auto* value = std::get_if<std::int64_t>(&cell.value);
    return value ? *value : 0;
  }
  return 0;
}

std::string Record::text(std::string_view column) const {
  for (const Assignment& cell : cells_) {
    if (!sameName(cell.column->name, column)) continue;
    if (const auto* value = std::get_if<std::string>(&cell.value)) return *value;
    if (const auto* value = std::get_if<std::int64_t>(&cell.value)) return std::to_string(*value);
  }
  return {};
}

std::vector<Record> StoreReader::records(const Query& query) {
  RecordSink sink;
  read(query, sink);
  return sink.take();
}

std::optional<Record> StoreReader::first(const Table& table, const Expression& condition) {
  auto found =
      records({.table = &table, .fields = allColumns(table), .condition = condition, .limit = 1});
  if (found.empty()) return {};
  return std::move(found.front());
}

std::optional<Record> StoreReader::byId(const Table& table, std::int64_t id) {
  return first(table, Expression::equal(table, "id", id));
}

Assignment assign(const Table& table, std::string_view column, Value value) {
  const Column* known = table.column(column);
  if (!known) throw std::logic_error("no column " + std::string(column));
  return {known, std::move(value)};
}

}  // namespace qinghe::portal_server

#include "RecordWriter.h"

#include <algorithm>
#include <array>

#include "Refusal.h"
#include "column_value.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

using Row = std::vector<Assignment>;

// Deeper than any tree that a person keeps.
constexpr int deepestTree = 100;

constexpr std::array<std::string_view, 5> requestNames{"stable", "structn", "stother", "stid",
                                                       "sid"};

bool belongsToRequest(std::string_view name) {
  return std::any_of(requestNames.begin(), requestNames.end(),
                     [&](std::string_view each) { return sameName(each, name); });
}

const Assignment* posted(const Row& row, std::string_view column) {
  const auto found = std::find_if(
      row.begin(), row.end(), [&](const Assignment& cell) { return cell.column->name == column; });
  return found == row.end() ? nullptr : &*found;
}

std::optional<std::int64_t> postedNumber(const Row& row, std::string_view column) {
  const Assignment* cell = posted(row, column);
  if (!cell) return {};
  const auto* number = std::get_if<std::int64_t>(&cell->value);
  return number ? std::optional(*number) : std::nullopt;
}

bool isEmptyDate(const Assignment& cell) {
  if (cell.column->type != Type::Date) return false;
  const auto* text = std::get_if<std::string>(&cell.value);
  return text && text->empty();
}

// Orders always answer with dates: an order without a ship date is expected on its own day.
void fillDates(const Table& table, Row& row) {
  if (!posted(row, "ghrq")) row.push_back(assign(table, "ghrq", storedToday()));
  if (!posted(row, "fhrq")) {
    row.push_back(assign(table, "fhrq", Value(posted(row, "ghrq")->value)));
  }
}

// A party of an order never changes; naming another one is a mistake, not a wish.
std::int64_t party(const std::optional<Record>& order, const Row& row, std::string_view column) {
  const auto named = postedNumber(row, column);
  if (!order) {
    if (!named) throw Refusal("order without its parties");
    return *named;
  }
  const std::int64_t kept = order->integer(column);
  if (named && *named != kept) throw Refusal("order of other parties");
  return kept;
}

}  // namespace

std::vector<Assignment> postedRow(const Table& table, const Parameters& parameters) {
  Row row;
  for (const Parameters::Parameter& parameter : parameters.all()) {
    if (belongsToRequest(parameter.name)) continue;
    const Column* column = table.visibleColumn(parameter.name);
    if (!column || column->access == Access::Server) throw Refusal("unknown column in a write");
    auto value = columnValue(*column, utf8FromCodePage(parameter.value));
    if (!value) throw Refusal("value does not fit its column");
    row.push_back({column, std::move(*value)});
  }
  return row;
}

std::int64_t RecordWriter::save(const Table& table, const RowKey& key,
                                const Parameters& parameters) {
  if (visitors_.empty()) throw Refusal("nobody is logged in at the address");
  Row row = postedRow(table, parameters);
  switch (table.rule) {
    case WriteRule::Owner:
    case WriteRule::Importing:
      return saveOwned(table, key, std::move(row));
    case WriteRule::Order:
      return saveOrder(table, key, std::move(row));
    case WriteRule::OrderLine:
      return saveLine(table, key, row);
    case WriteRule::None:
      break;
  }
  throw Refusal("table is not written");
}

std::int64_t RecordWriter::saveOwned(const Table& table, const RowKey& key, Row row) {
  const auto named = postedNumber(row, table.owner);
  if (named && key.owner && *named != *key.owner) throw Refusal("two owners");
  const auto owner = key.owner ? key.owner : named;
  if (owner && !contains(visitors_, *owner)) throw Refusal("foreign write");
  std::erase_if(row, isEmptyDate);

  const auto kept = key.id > 0 ? store_.byId(table, key.id) : std::nullopt;
  if (kept) {
    const std::int64_t keptOwner = kept->integer(table.owner);
    if (contains(visitors_, keptOwner) && (!owner || *owner == keptOwner)) {
      checkParent(table, row, key.id, keptOwner);
      return change(table, key.id, row);
    }
  }
  // Another company's goods, taken into the own catalogue, arrive under their old id paired with
  // the new owner. That pair finds no row, and a new one is made.
  const bool imported = table.rule == WriteRule::Importing && key.owner.has_value();
  if (key.id > 0 && !imported) throw Refusal("foreign write");
  if (!named) throw Refusal("new row without its owner");
  checkParent(table, row, 0, *named);
  return store_.insert(table, row);
}

std::int64_t RecordWriter::saveOrder(const Table& table, const RowKey& key, Row row) {
  const auto kept = key.id > 0 ? store_.byId(table, key.id) : std::nullopt;
  if (key.id > 0 && !kept) throw Refusal("unknown order");
  const bool buyerHere = contains(visitors_, party(kept, row, "kehu_id"));
  const bool sellerHere = contains(visitors_, party(kept, row, "gosh_id"));
  if (!buyerHere && !sellerHere) throw Refusal("foreign write");
  checkHalves(row, buyerHere, sellerHere);
  std::erase_if(row, isEmptyDate);
  if (kept) return change(table, key.id, row);
  fillDates(table, row);
  return store_.insert(table, row);
}

std::int64_t RecordWriter::saveLine(const Table& table, const RowKey& key, const Row& row) {
  const auto named = postedNumber(row, table.owner);
  if (!key.owner || (named && *named != *key.owner)) throw Refusal("line of no order");
  const auto order = store_.byId(storedTable("gohu"), *key.owner);
  const bool own = order && (contains(visitors_, order->integer("gosh_id")) ||
                             contains(visitors_, order->integer("kehu_id")));
  if (!own) throw Refusal("foreign write");
  if (key.id > 0) {
    const auto kept = store_.byId(table, key.id);
    if (!kept || kept->integer(table.owner) != *key.owner) throw Refusal("line of another order");
    return change(table, key.id, row);
  }
  if (!named) throw Refusal("new row without its order");
  return store_.insert(table, row);
}

std::int64_t RecordWriter::change(const Table& table, std::int64_t id, const Row& row) {
  store_.update(table, id, row);
  return id;
}

void RecordWriter::checkParent(const Table& table, const Row& row, std::int64_t id,
                               std::int64_t owner) {
  const auto parent = postedNumber(row, "p_id");
  if (!parent || *parent == 0) return;
  auto item = store_.byId(table, *parent);
  if (!item) throw Refusal("item below none");
  const std::int64_t parentOwner = item->integer(table.owner);
  if (parentOwner != 0 && parentOwner != owner) throw Refusal("item below a foreign one");
  // A ring of items would hang below no root, out of everybody's reach.
  for (int depth = 1; item; ++depth) {
    if (depth == deepestTree || item->integer("id") == id) throw Refusal("item below itself");
    item = store_.byId(table, item->integer("p_id"));
  }
}

void RecordWriter::checkHalves(const Row& row, bool buyerHere, bool sellerHere) const {
  for (const Assignment& cell : row) {
    const bool foreign = (cell.column->access == Access::Buyer && !buyerHere) ||
                         (cell.column->access == Access::Seller && !sellerHere);
    if (foreign) throw Refusal("the other party's half of an order");
  }
}

}  // namespace qinghe::portal_server

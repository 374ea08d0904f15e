#pragma once

#include "ConditionParser.h"
#include "Parameters.h"
#include "Store.h"
#include "sessions.h"

namespace qinghe::portal_server {

/// Makes and changes rows for whoever is logged in at the asking address.
///
/// Only the posted columns change. What the asking enterprises do not own is refused, as are
/// unknown columns, values of a wrong type and a new row that does not say whose it is.
class RecordWriter {
 public:
  RecordWriter(StoreWriter& store, Visitors visitors)
      : store_(store), visitors_(std::move(visitors)) {}

  /// The id of the changed or new row. Throws `Refusal`.
  std::int64_t save(const Table& table, const RowKey& key, const Parameters& parameters);

 private:
  using Row = std::vector<Assignment>;

  std::int64_t saveOwned(const Table& table, const RowKey& key, Row row);
  std::int64_t saveOrder(const Table& table, const RowKey& key, Row row);
  std::int64_t saveLine(const Table& table, const RowKey& key, const Row& row);
  std::int64_t change(const Table& table, std::int64_t id, const Row& row);
  /// An item of a tree stands below one of its own enterprise, or one of all, and not below itself.
  void checkParent(const Table& table, const Row& row, std::int64_t id, std::int64_t owner);
  void checkHalves(const Row& row, bool buyerHere, bool sellerHere) const;

  StoreWriter& store_;
  Visitors visitors_;
};

/// The posted values of a table's columns; names that belong to the request itself are skipped.
/// Throws `Refusal` for unknown columns and values that do not fit.
std::vector<Assignment> postedRow(const Table& table, const Parameters& parameters);

}  // namespace qinghe::portal_server

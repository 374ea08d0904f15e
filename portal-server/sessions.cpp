#include "sessions.h"

#include <algorithm>
#include <chrono>

#include "Refusal.h"
#include "column_value.h"

namespace qinghe::portal_server {

namespace {

const Table& sessionTable() {
  static const Table& table = storedTable("session");
  return table;
}

const Table& enterpriseTable() {
  static const Table& table = storedTable("qyxx");
  return table;
}

Expression at(const std::string& address, std::int64_t enterprise) {
  return Expression::allOf({Expression::equal(sessionTable(), "address", address),
                            Expression::equal(sessionTable(), "qiye_id", enterprise)});
}

Expression ownRows(const Table& table, const Visitors& visitors) {
  if (!table.parent.empty()) {
    const Table& parent = storedTable(table.parent);
    return {.kind = Expression::Kind::InRows,
            .column = table.column(table.owner),
            .children = {ownRows(parent, visitors)},
            .rowsOf = &parent};
  }
  std::vector<Expression> own;
  for (const std::string_view column : table.readers) {
    own.push_back(Expression::oneOf(table, column, visitors));
  }
  return Expression::anyOf(std::move(own));
}

}  // namespace

Visitors loggedInAt(StoreReader& store, const std::string& address) {
  Visitors visitors;
  for (const Record& row : store.records({.table = &sessionTable(),
                           .fields = {sessionTable().column("qiye_id")},
                           .condition = Expression::equal(sessionTable(), "address", address)})) {
    visitors.push_back(row.integer("qiye_id"));
  }
  return visitors;
}

bool contains(const Visitors& visitors, std::int64_t enterprise) {
  return std::find(visitors.begin(), visitors.end(), enterprise) != visitors.end();
}

void logIn(StoreWriter& store, const std::string& address, std::int64_t enterprise) {
  const Table& table = sessionTable();
  const std::string now = storedUtc(std::chrono::system_clock::now());
  store.remove(table, at(address, enterprise));
  store.insert(table, {assign(table, "address", address), assign(table, "qiye_id", enterprise),
                       assign(table, "since", now), assign(table, "seen", now)});
  store.update(enterpriseTable(), enterprise,
               {assign(enterpriseTable(), "ipurl", address),
                assign(enterpriseTable(), "online", std::int64_t{1})});
}

void logOut(StoreWriter& store, const std::string& address, std::int64_t enterprise) {
  store.remove(sessionTable(), at(address, enterprise));
  // It may still be logged in on another machine; that one is then where it is reached. Whether
  // anybody sits there, the next look at who is present tells.
  const auto others =
      store.records({.table = &sessionTable(),
                     .fields = {sessionTable().column("address")},
                     .condition = Expression::equal(sessionTable(), "qiye_id", enterprise),
                     .order = {{sessionTable().column("seen"), true}},
                     .limit = 1});
  store.update(enterpriseTable(), enterprise,
               {assign(enterpriseTable(), "ipurl",
                       others.empty() ? address : others.front().text("address")),
                assign(enterpriseTable(), "online", std::int64_t{!others.empty()})});
}

Expression readScope(const Table& table, bool secret, const Visitors& visitors) {
  const bool isPrivate = !table.readers.empty() || !table.parent.empty();
  if (!isPrivate && !secret) return {};
  if (visitors.empty()) throw Refusal("nobody is logged in at the address");
  std::vector<Expression> scope;
  if (isPrivate) scope.push_back(ownRows(table, visitors));
  if (secret) scope.push_back(Expression::oneOf(table, table.owner, visitors));
  return Expression::allOf(std::move(scope));
}

}  // namespace qinghe::portal_server

#include "housekeeping.h"

#include <algorithm>
#include <map>

#include "column_value.h"
#include "sessions.h"

namespace qinghe::portal_server {

namespace {

using Addresses = std::vector<std::string>;

const Table& sessionTable() {
  static const Table& table = storedTable("session");
  return table;
}

const Table& enterpriseTable() {
  static const Table& table = storedTable("qyxx");
  return table;
}

Expression compared(const Table& table, std::string_view column, const char* comparison,
                    std::string value) {
  return {.kind = Expression::Kind::Compare,
          .column = table.column(column),
          .comparison = comparison,
          .values = {std::move(value)}};
}

// Several enterprises can be logged in on one machine; a request counts for each of them, as it
// does not say whose it is.
void noteSeen(StoreWriter& store, const Visit& visit) {
  const Table& table = sessionTable();
  for (const Record& session : store.records({.table = &table,
                               .fields = {table.column("id")},
                               .condition = Expression::equal(table, "address", visit.address)})) {
    store.update(table, session.integer("id"), {assign(table, "seen", storedUtc(visit.at))});
  }
}

// Where each enterprise has been since then, the latest place last.
std::map<std::int64_t, Addresses> seenSince(StoreReader& store, const std::string& moment) {
  const Table& table = sessionTable();
  const Column* seen = table.column("seen");
  std::map<std::int64_t, Addresses> places;
  for (const Record& session : store.records({.table = &table,
                               .fields = {table.column("qiye_id"), table.column("address"), seen},
                               .condition = compared(table, "seen", ">=", moment),
                               .order = {{seen, false}}})) {
    places[session.integer("qiye_id")].push_back(session.text("address"));
  }
  return places;
}

void setOnline(StoreWriter& store, std::int64_t enterprise, const std::string& address) {
  store.update(enterpriseTable(), enterprise,
               {assign(enterpriseTable(), "ipurl", address),
                assign(enterpriseTable(), "online", std::int64_t{1})});
}

}  // namespace

void updatePresence(StoreWriter& store, const std::vector<Visit>& visits,
                    Visits::Clock::time_point now, std::chrono::minutes offlineAfter) {
  for (const Visit& visit : visits) noteSeen(store, visit);
  auto places = seenSince(store, storedUtc(now - offlineAfter));
  const Table& table = enterpriseTable();
  for (const Record& enterprise :
       store.records({.table = &table,
       .fields = {table.column("id"), table.column("ipurl")},
       .condition = Expression::equal(table, "online", std::int64_t{1})})) {
    const std::int64_t id = enterprise.integer("id");
    const auto found = places.find(id);
    if (found == places.end()) {
      store.update(table, id, {assign(table, "online", std::int64_t{0})});
      continue;
    }
    // Of two machines in use the one told so far stays, or the address would swing to and fro.
    const Addresses& seen = found->second;
    const bool stays = std::find(seen.begin(), seen.end(), enterprise.text("ipurl")) != seen.end();
    if (!stays) setOnline(store, id, seen.back());
    places.erase(found);
  }
  for (const auto& [id, seen] : places) setOnline(store, id, seen.back());
}

void welcomeBack(StoreWriter& store, const Visit& visit) {
  noteSeen(store, visit);
  for (const std::int64_t id : loggedInAt(store, visit.address)) {
    const auto enterprise = store.byId(enterpriseTable(), id);
    if (enterprise && enterprise->integer("online") == 0) setOnline(store, id, visit.address);
  }
}

void dropOldLogins(StoreWriter& store, Visits::Clock::time_point now, std::chrono::days keep) {
  store.remove(sessionTable(), compared(sessionTable(), "seen", "<", storedUtc(now - keep)));
}

void dropOldMessages(StoreWriter& store, Visits::Clock::time_point now, std::chrono::days keep) {
  const Table& messages = storedTable("xixi");
  store.remove(messages, compared(messages, "dtime", "<", storedLocal(now - keep)));
}

}  // namespace qinghe::portal_server

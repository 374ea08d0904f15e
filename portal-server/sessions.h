#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Store.h"

namespace qinghe::portal_server {

/// The enterprises that are logged in at an address; several can be, on one machine.
using Visitors = std::vector<std::int64_t>;

Visitors loggedInAt(StoreReader& store, const std::string& address);
bool contains(const Visitors& visitors, std::int64_t enterprise);

/// Notes a login or a logout, with the enterprise's address and online flag.
void logIn(StoreWriter& store, const std::string& address, std::int64_t enterprise);
void logOut(StoreWriter& store, const std::string& address, std::int64_t enterprise);

/// What a reader may see of a table: its own rows where the table is private or where the request
/// names a secret column, else everything. Throws `Refusal` when nobody is logged in for that.
Expression readScope(const Table& table, bool secret, const Visitors& visitors);

}  // namespace qinghe::portal_server

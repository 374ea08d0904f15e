#pragma once

#include <string>

namespace qinghe::portal_server {

/// The statements that fill an empty local database of one demo enterprise with its own row and
/// its copies of the portal's goods, services, orders and messages. Throws `std::logic_error` for
/// an unknown number.
std::string localDemoSql(const std::string& userNumber);

}  // namespace qinghe::portal_server

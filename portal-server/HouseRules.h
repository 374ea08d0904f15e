#pragma once

#include <chrono>

namespace qinghe::portal_server {

/// What the operator sets.
struct HouseRules {
  std::chrono::days keepMessages{30};     ///< an older message leaves the inbox
  std::chrono::minutes offlineAfter{15};  ///< without a request, an enterprise counts as gone
  std::chrono::days keepLogins{7};        ///< without a request, a login is forgotten
  bool relayOwnNetwork = false;  ///< the relay fetches listed pages inside the own network, too
};

}  // namespace qinghe::portal_server

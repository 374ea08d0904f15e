#pragma once

#include <chrono>

namespace qinghe::portal_server {

/// What the operator sets about how long things last.
struct HouseRules {
  std::chrono::days keepMessages{30};     ///< an older message leaves the inbox
  std::chrono::minutes offlineAfter{15};  ///< without a request, an enterprise counts as gone
};

}  // namespace qinghe::portal_server

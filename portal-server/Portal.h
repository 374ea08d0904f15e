#pragma once

#include <string>
#include <vector>

#include "HouseRules.h"
#include "PortalRequest.h"
#include "Store.h"
#include "Visits.h"

namespace qinghe::portal_server {

/// All pages by their paths, over one store.
///
/// Reading pages are answered on the thread that asks; writing ones on the one thread that
/// writes. Nothing that a request holds makes an answer throw.
class Portal {
 public:
  explicit Portal(Store& store, HouseRules rules = {}) : store_(store), rules_(rules) {}

  /// Replaces a request for the relay page by the request that it carries, for the same client.
  /// False when that one is not for a page of this portal.
  static bool unwrapRelay(PortalRequest& request);

  static bool isWrite(const PortalRequest& request);
  static bool isLogin(const PortalRequest& request);

  PortalAnswer answer(const PortalRequest& request);

  /// What is done now and then, on the writing thread: who is present, which messages are old.
  /// Throws when the store fails.
  void keepHouse(const std::vector<Visit>& visits, Visits::Clock::time_point now);
  /// The same for one address that asks again after a long silence, without delay.
  void welcome(const Visit& visit);
  const HouseRules& rules() const { return rules_; }

 private:
  Store& store_;
  HouseRules rules_;
};

}  // namespace qinghe::portal_server

#pragma once

#include <string>

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// All pages by their paths, over one store.
///
/// Reading pages are answered on the thread that asks; writing ones on the one thread that
/// writes. Nothing that a request holds makes an answer throw.
class Portal {
 public:
  explicit Portal(Store& store) : store_(store) {}

  /// Replaces a request for the relay page by the request that it carries, for the same client.
  /// False when that one is not for a page of this portal.
  static bool unwrapRelay(PortalRequest& request);

  static bool isWrite(const PortalRequest& request);
  static bool isLogin(const PortalRequest& request);

  PortalAnswer answer(const PortalRequest& request);

 private:
  Store& store_;
};

}  // namespace qinghe::portal_server

#pragma once

#include "PortalRequest.h"
#include "Store.h"
#include "tables.h"

namespace qinghe::portal_server {

/// Small pages that a browser shows.

PortalAnswer welcomePage(const PortalRequest& request, StoreReader& store);
/// Today's paper prices, the page that an information service of the demo reads.
PortalAnswer paperPage(const PortalRequest& request, StoreReader& store);
/// The collect page of the slow submit mode: nothing is ever deposited, so nothing lies ready.
PortalAnswer closePage(const PortalRequest& request, StoreReader& store);

}  // namespace qinghe::portal_server

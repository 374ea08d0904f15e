#pragma once

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// The public page of the enterprise with the user number `stuserno`: who it is, and its live
/// goods, services, brands and pictures.
PortalAnswer previewPage(const PortalRequest& request, StoreReader& store);

}  // namespace qinghe::portal_server

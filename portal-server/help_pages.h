#pragma once

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// The help tree as pages: beside the tree the topic `id`, or a welcome without one. Whole for
/// every tree, one that bites its tail included.
PortalAnswer helpPage(const PortalRequest& request, StoreReader& store);

}  // namespace qinghe::portal_server

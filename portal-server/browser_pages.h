#pragma once

#include "PortalRequest.h"
#include "Store.h"
#include "tables.h"

namespace qinghe::portal_server {

/// The pages that a browser shows. They are whole pages for every input; what is not there is
/// said in words.

PortalAnswer welcomePage(const PortalRequest& request, StoreReader& store);
/// The help tree as one page of topics.
PortalAnswer helpPage(const PortalRequest& request, StoreReader& store);
/// The public page of the enterprise with the user number `stuserno`.
PortalAnswer previewPage(const PortalRequest& request, StoreReader& store);
/// Today's paper prices, the page that an information service of the demo reads.
PortalAnswer paperPage(const PortalRequest& request, StoreReader& store);
/// The picture page of an enterprise, `id`.
PortalAnswer enterpriseImagePage(const PortalRequest& request, StoreReader& store);
/// The picture page of a record, `stable` and `id`.
PortalAnswer recordImagePage(const PortalRequest& request, StoreReader& store);
/// The collect page of the slow submit mode: nothing is ever deposited, so nothing lies ready.
PortalAnswer closePage(const PortalRequest& request, StoreReader& store);

}  // namespace qinghe::portal_server

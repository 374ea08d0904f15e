#pragma once

#include "PortalRequest.h"
#include "Store.h"
#include "tables.h"

namespace qinghe::portal_server {

/// The pages that list rows. Each throws `Refusal` for what it does not answer.

/// All rows for a condition: `STABLE`, `STRDATA`, `STOTHER`, `STORDER`.
PortalAnswer listPage(Family family, const PortalRequest& request, StoreReader& store);
/// One page of them: also `STPAGE`, from 1, and `STPAGESIZE`.
PortalAnswer onePage(Family family, const PortalRequest& request, StoreReader& store);
/// The number of pages: `STABLE`, `STOTHER`, `STPAGESIZE`.
PortalAnswer pageCount(Family family, const PortalRequest& request, StoreReader& store);
/// A whole public table by its structure: `STABLE`, and `STRUCTN` cells a row.
PortalAnswer structurePage(const PortalRequest& request, StoreReader& store);

}  // namespace qinghe::portal_server

#pragma once

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// The pages of an enterprise's own account, each inside one transaction.

/// `USER_NO`, `USER_PASS`: the row of seven cells, the first of them 0 when they do not match.
PortalAnswer loginPage(const PortalRequest& request, StoreWriter& store);
/// `USER_NO`: ends what that enterprise has open at the asking address. The table has no row.
PortalAnswer logoutPage(const PortalRequest& request, StoreWriter& store);
/// `stid` and the fields: "id=0" registers a new enterprise and logs it in, its own id changes
/// its row. Answers as a login does. Throws `Refusal`.
PortalAnswer registrationPage(const PortalRequest& request, StoreWriter& store);
/// `sid` and a long text of the own row. Throws `Refusal`.
PortalAnswer updateLoginPage(const PortalRequest& request, StoreWriter& store);

}  // namespace qinghe::portal_server

#pragma once

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// The pages that change business rows, each inside one transaction. A `Refusal` undoes all.

/// Adds or changes a row: `stable`, `stother`, and the fields. Answers its id.
PortalAnswer addPage(const PortalRequest& request, StoreWriter& store);
/// Deletes a post without replies in an own forum: `stable`, `stother`. Answers 0, or the number
/// of replies that keep the post.
PortalAnswer deletePage(const PortalRequest& request, StoreWriter& store);
/// Stores a message for another enterprise. Answers its id.
PortalAnswer insertMessagePage(const PortalRequest& request, StoreWriter& store);

}  // namespace qinghe::portal_server

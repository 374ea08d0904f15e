#pragma once

#include "Store.h"

namespace qinghe::portal_server {

/// Gives some companies and records of the demo trade a drawn picture: covers of books, brands,
/// places. Records that are not there are passed over.
void fillDemoPictures(Store& store);

}  // namespace qinghe::portal_server

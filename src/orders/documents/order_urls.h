#pragma once

#include <QString>

#include "orders/order_requests.h"
#include "portal/RequestBuilder.h"

namespace qinghe {

/// A read from the portal's rows, without an order of the rows yet.
RequestBuilder readRequest(const ReadRequest& read);

/// A save, every value encoded.
QString saveUrl(const SaveRequest& save);

}  // namespace qinghe

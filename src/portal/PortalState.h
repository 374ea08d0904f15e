#pragma once

#include <QString>

#include "portal/ResponseCursor.h"

namespace qinghe {

/// What every portal request reads and writes of the application state.
struct PortalState {
  ResponseCursor gResponse;  ///< the current answer, eaten row by row
  qint16 gUnicode = 0;       ///< submit mode of reads: 0 none, 1 through the relay, 2 direct
  QString gWebServer;        ///< "HTTP://" + host + "/"
};

}  // namespace qinghe

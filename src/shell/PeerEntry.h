#pragma once

#include <QString>

namespace qinghe {

/// One conversation slot of the messenger. It outlives the messenger's window.
struct PeerEntry {
  qint32 qyxx_id = 0;  ///< the partner's enterprise id on the portal, 0 until known
  QString qyxx;        ///< the partner's name; without one the slot is not listed
  QString ipurl;       ///< where to connect to, or where the partner connected from
  qint32 port = 0;
  bool online = false;  ///< the portal's flag after a look-up, the socket's state after a refresh
};

}  // namespace qinghe

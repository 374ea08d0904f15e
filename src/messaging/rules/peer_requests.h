#pragma once

#include <QString>

#include "messaging/rules/MessageRow.h"

namespace qinghe {

/// The messenger's requests to the portal at `server`.

/// Name, address and online flag of an enterprise.
QString partnerRequest(const QString& server, qint32 partnerId);
/// Leaves a message with the portal.
QString relayRequest(const QString& server, const Party& to, const Party& from,
                     const QString& text);
/// The messages that wait for an enterprise.
QString inboxRequest(const QString& server, qint16 enterpriseId);

}  // namespace qinghe

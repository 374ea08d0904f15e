#pragma once

#include <QDateTime>
#include <functional>

#include "messaging/rules/MessageRow.h"
#include "shell/PeerEntry.h"

namespace qinghe {

/// What the messenger asks of the portal. Each shows the hourglass and is false on any failure and
/// for an answer without a table; a table without rows is true.

/// Writes an enterprise's name, address and online flag into `peer`, cell by cell: what was written
/// before a failure stays. Its port becomes `port`.
bool readPartner(qint32 partnerId, qint32 port, PeerEntry& peer);

/// Leaves a message for somebody with the portal.
bool leaveMessage(const Party& to, const QString& text);

/// A message that waited at the portal.
struct RelayedMessage {
  Party sender;
  QDateTime dtime;
  QString content;
};

/// Hands over each message that waits for the user's enterprise.
bool readInbox(const std::function<void(const RelayedMessage&)>& take);

/// The enterprise that is logged in.
Party ownParty();

}  // namespace qinghe

#include "messaging/peer_portal.h"

#include "messaging/rules/peer_requests.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/dates.h"
#include "values/numbers.h"

namespace qinghe {

bool readPartner(qint32 partnerId, qint32 port, PeerEntry& peer) {
  return readPortal(partnerRequest(app().gWebServer, partnerId), EmptyAnswer::IsFailure,
                    [&](GetHtml& html) {
                      peer.qyxx_id = partnerId;
                      peer.qyxx = html.GetRowItem();
                      peer.ipurl = html.GetRowItem();
                      peer.port = port;
                      peer.online = toBoolean(html.GetRowItem());
                      return true;
                    });
}

bool leaveMessage(const Party& to, const QString& text) {
  return readPortal(relayRequest(app().gWebServer, to, ownParty(), text), EmptyAnswer::IsFailure,
                    [](GetHtml& html) {
                      // What the row says is of no use, but without a read the next row is this
                      // one again.
                      html.GetRowItem();
                      return true;
                    });
}

bool readInbox(const std::function<void(const RelayedMessage&)>& take) {
  return readPortal(inboxRequest(app().gWebServer, app().gQiyeId), EmptyAnswer::IsFailure,
                    [&](GetHtml& html) {
                      RelayedMessage message;
                      message.sender.id = toInt32(html.GetRowItem());
                      message.sender.name = html.GetRowItem();
                      message.dtime = toDate(html.GetRowItem());
                      message.content = html.GetRowItem();
                      take(message);
                      return true;
                    });
}

Party ownParty() {
  return {app().gQiyeId, app().gUserName};
}

}  // namespace qinghe

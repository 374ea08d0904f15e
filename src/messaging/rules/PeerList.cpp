#include "messaging/rules/PeerList.h"

#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

PeerEntry& PeerList::at(qsizetype slot) const {
  if (slot < 0 || slot >= peers_.size()) throw InvalidCall(u"gPeers(%1)"_s.arg(slot));
  return peers_[slot];
}

bool PeerList::isInbound(qint32 partnerId, qsizetype sockets) const {
  for (qsizetype slot = 1; slot < sockets; ++slot) {
    if (at(slot).qyxx_id == partnerId) return true;
  }
  return false;
}

QList<PeerItem> PeerList::refresh(const QList<SocketState>& sockets) const {
  QList<PeerItem> items;
  for (qsizetype slot = 0; slot < sockets.size(); ++slot) {
    PeerEntry& peer = at(slot);
    peer.online = sockets[slot] == SocketState::Connected;
    if (peer.qyxx.isEmpty()) continue;
    items.append({u"%1 ID"_s.arg(slot), peer.qyxx, linkImage(peer.online)});
  }
  return items;
}

QString linkImage(bool linked) {
  return linked ? u"LK"_s : u"NL"_s;
}

qint16 slotOfKey(QStringView key) {
  return toInt16(Val(key));
}

int placeOfKey(const QStringList& keys, qint32 id) {
  int place = 1;
  for (const QString& key : keys) {
    if (Val(key) == id) break;
    ++place;
  }
  return place;
}

}  // namespace qinghe

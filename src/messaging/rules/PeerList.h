#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "messaging/rules/SocketState.h"
#include "shell/PeerEntry.h"

namespace qinghe {

/// A line of the messenger's chooser.
struct PeerItem {
  QString key;    ///< the slot and " ID"
  QString text;   ///< the partner's name
  QString image;  ///< "LK" linked, "NL" not linked
};

/// The conversation slots and the rules by which partners are listed and found in them.
class PeerList {
 public:
  explicit PeerList(QList<PeerEntry>& peers) : peers_(peers) {}

  /// Throws `InvalidCall` for a slot that is not there.
  PeerEntry& at(qsizetype slot) const;
  /// Makes slots up to `last`, keeping what the others hold.
  void resize(qsizetype last) const { peers_.resize(last + 1); }

  /// Whether one of the inbound slots, from 1 below `sockets`, is this partner's.
  bool isInbound(qint32 partnerId, qsizetype sockets) const;

  /// Sets each slot's flag from its socket, and gives a line for each slot that has a name.
  QList<PeerItem> refresh(const QList<SocketState>& sockets) const;

 private:
  QList<PeerEntry>& peers_;
};

/// The image of a chooser line.
QString linkImage(bool linked);

/// The slot behind a chooser line's key. Throws `Overflow` when the number is no slot's.
qint16 slotOfKey(QStringView key);

/// The 1-based place of the first key whose number is `id`, one behind the last when there is none.
/// The numbers of the keys are slots and not enterprises, so they only ever meet by chance.
int placeOfKey(const QStringList& keys, qint32 id);

}  // namespace qinghe

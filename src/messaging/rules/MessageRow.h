#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <optional>
#include <utility>
#include <vector>

#include "messaging/rules/peer_log.h"

namespace qinghe {

/// An enterprise as a message's row names it.
struct Party {
  qint32 id = 0;
  QString name;
};

/// A row of `XIXI`: who it went to, who wrote it, and what it says.
struct MessageRow {
  Party addressee;
  Party author;
  std::optional<QDateTime> dtime;  ///< without one the table says when
  QString content;

  /// The columns in the order they are set.
  std::vector<std::pair<QString, QVariant>> fields() const;
};

/// The row of a message; a relayed one has the relay's mark in front of its text.
MessageRow messageRow(const Party& addressee, const Party& author, const QString& text, Road road);

}  // namespace qinghe

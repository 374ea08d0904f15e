#pragma once

#include <QDateTime>
#include <QString>

namespace qinghe {

/// How a message travels: straight to the partner, or stored and forwarded by the portal.
enum class Road { Direct, Relay };

/// What marks a relayed message: behind its text in a log, in front of it in its row.
inline constexpr QStringView relayMark = u"（由服务器中转）";

/// A log on the screen keeps this many characters, the newest ones.
inline constexpr qsizetype logLimit = qsizetype{1} << 20;

/// What is put on top of a log for a message, with CR LF for each line break.
QString sentLog(const QString& partner, const QDateTime& when, const QString& text, Road road);
QString receivedLog(const QString& sender, const QDateTime& when, const QString& text, Road road);

}  // namespace qinghe

#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace qinghe {

/// The bodies that are no chat text. They are told apart by the whole body and by case.
inline constexpr QStringView helloBody = u"LINK";
inline constexpr QStringView goodbyeBody = u"UNLINK";

/// Longer reads of a peer's socket are cut into several.
inline constexpr qsizetype frameLimit = qsizetype{64} * 1024;

/// What one read of a peer's socket says, as far as it can be made out.
struct PeerFrame {
  std::optional<qint32> id;     ///< with an "@" and a number that fits
  std::optional<QString> name;  ///< with an "@" and a "," behind it
  QString body;                 ///< likewise; may hold further frames that arrived together
};

/// "<id>@<name>,<body>" in the code page. Nothing is escaped: a comma in the name cuts it short at
/// the far end.
QByteArray writeFrame(qint32 senderId, const QString& senderName, const QString& body);

/// Takes a whole read for one frame. Bytes that are no text of the code page become "?".
PeerFrame readFrame(QByteArrayView bytes);

}  // namespace qinghe

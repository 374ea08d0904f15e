#include "messaging/rules/peer_frame.h"

#include "values/code_page.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

std::optional<qint32> idOf(QStringView text) {
  try {
    return toInt32(Val(text));
  } catch (const Failure&) {
    return std::nullopt;
  }
}

}  // namespace

QByteArray writeFrame(qint32 senderId, const QString& senderName, const QString& body) {
  return toCodePage(textOf(senderId) + u'@' + senderName + u',' + body);
}

PeerFrame readFrame(QByteArrayView bytes) {
  QString text = fromCodePage(bytes);
  text.replace(QChar(QChar::ReplacementCharacter), u'?');
  PeerFrame frame;
  const qsizetype at = text.indexOf(u'@');
  if (at < 0) return frame;
  frame.id = idOf(QStringView(text).first(at));
  const qsizetype comma = text.indexOf(u',', at);
  if (comma < 0) return frame;
  frame.name = text.sliced(at + 1, comma - at - 1);
  frame.body = text.sliced(comma + 1);
  return frame;
}

}  // namespace qinghe

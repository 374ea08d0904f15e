#include "messaging/rules/peer_log.h"

#include "values/dates.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

QString entry(const QString& head, const QDateTime& when, const QString& text, Road road) {
  const QString lineBreak = u"\r\n"_s;
  QString result = head + lineBreak + textOf(when) + lineBreak + text + lineBreak;
  if (road == Road::Relay) result += relayMark.toString() + lineBreak;
  return result + lineBreak;
}

}  // namespace

QString sentLog(const QString& partner, const QDateTime& when, const QString& text, Road road) {
  return entry(u"发送："_s + partner, when, text, road);
}

QString receivedLog(const QString& sender, const QDateTime& when, const QString& text, Road road) {
  return entry(u"接收："_s + sender, when, text, road);
}

}  // namespace qinghe

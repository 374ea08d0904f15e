#include "messaging/rules/peer_requests.h"

#include "portal/RequestBuilder.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

QString partnerRequest(const QString& server, qint32 partnerId) {
  return RequestBuilder(server, paths::loginRows)
      .encoded(u"STABLE"_s, u"QYXX"_s)
      .encoded(u"STRDATA"_s, u"qiye,ipurl,online,"_s)
      .encoded(u"STOTHER"_s, u"ID="_s + textOf(partnerId))
      .url();
}

// The page that stores has its names in another case than the two that read.
QString relayRequest(const QString& server, const Party& to, const Party& from,
                     const QString& text) {
  return RequestBuilder(server, paths::insertMessage)
      .encoded(u"stable"_s, u"xixi"_s)
      .encoded(u"structn"_s, u"7"_s)
      .encoded(u"QYXX_ID"_s, textOf(to.id))
      .encoded(u"QYXX"_s, to.name)
      .encoded(u"USER_ID"_s, textOf(from.id))
      .encoded(u"USERNAME"_s, from.name)
      .encoded(u"CONTENT"_s, text)
      .url();
}

QString inboxRequest(const QString& server, qint16 enterpriseId) {
  return RequestBuilder(server, paths::productRows)
      .encoded(u"STABLE"_s, u"xixi"_s)
      .encoded(u"STRDATA"_s, u"user_id,username,dTime,content,"_s)
      .encoded(u"STOTHER"_s, u"qyxx_id="_s + textOf(enterpriseId))
      .url();
}

}  // namespace qinghe

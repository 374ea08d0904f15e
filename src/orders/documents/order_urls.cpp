#include "orders/documents/order_urls.h"

#include "shell/AppState.h"

namespace qinghe {

using namespace Qt::StringLiterals;

RequestBuilder readRequest(const ReadRequest& read) {
  return RequestBuilder(app().gWebServer, paths::productRows)
      .encoded(u"STABLE"_s, read.table)
      .encoded(u"STRDATA"_s, read.columns)
      .encoded(u"STOTHER"_s, read.condition);
}

QString saveUrl(const SaveRequest& save) {
  RequestBuilder request(app().gWebServer, paths::productAdd);
  request.encoded(u"stable"_s, save.table)
      .encoded(u"structn"_s, save.columnCount)
      .encoded(u"stother"_s, save.condition);
  for (const RequestField& field : save.fields) request.encoded(field.name, field.value);
  return request.url();
}

}  // namespace qinghe

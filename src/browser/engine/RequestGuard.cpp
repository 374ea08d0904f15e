#include "browser/engine/RequestGuard.h"

#include "browser/BrowserEngine.h"

namespace qinghe {

RequestGuard::RequestGuard(PageOwner& owner, QObject* parent)
    : QWebEngineUrlRequestInterceptor(parent), owner_(owner) {}

void RequestGuard::interceptRequest(QWebEngineUrlRequestInfo& info) {
  if (!owner_.mayFetch(info.requestUrl())) info.block(true);
}

}  // namespace qinghe

#pragma once

#include <QWebEngineUrlRequestInterceptor>

namespace qinghe {

class PageOwner;

/// Lets through only what the owner of a page lets it fetch, redirects included.
class RequestGuard : public QWebEngineUrlRequestInterceptor {
  Q_OBJECT

 public:
  RequestGuard(PageOwner& owner, QObject* parent);
  void interceptRequest(QWebEngineUrlRequestInfo& info) override;

 private:
  PageOwner& owner_;
};

}  // namespace qinghe

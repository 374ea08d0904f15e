#pragma once

#include <QObject>

#include "browser/BrowserEngine.h"

class QWebEngineProfile;

namespace qinghe {

/// Qt's own browser engine behind the plugin's door.
class QtBrowserEngine : public QObject, public BrowserEngine {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID "cn.qinghe.BrowserEngine/1")
  Q_INTERFACES(qinghe::BrowserEngine)

 public:
  QtBrowserEngine();
  std::unique_ptr<PageView> makePage(PageOwner& owner, QWidget* parent) override;

 private:
  std::shared_ptr<QWebEngineProfile> profile();

  std::weak_ptr<QWebEngineProfile> shared_;
};

}  // namespace qinghe

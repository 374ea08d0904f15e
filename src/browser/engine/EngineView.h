#pragma once

#include <QPointer>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <memory>

#include "browser/BrowserEngine.h"

namespace qinghe {

class EnginePage;

/// One page and the widget that shows it. The profile is shared by the pages that are open at one
/// time and goes with the last of them.
class EngineView : public PageView {
 public:
  EngineView(PageOwner& owner, std::shared_ptr<QWebEngineProfile> profile, QWidget* parent);
  ~EngineView() override;

  QWidget* widget() override { return view_; }
  void go(const QUrl& address) override;
  void stop() override;

 private:
  std::shared_ptr<QWebEngineProfile> profile_;
  QPointer<QWebEngineView> view_;
  std::unique_ptr<EnginePage> page_;
};

}  // namespace qinghe

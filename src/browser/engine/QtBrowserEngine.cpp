#include "browser/engine/QtBrowserEngine.h"

#include <QLoggingCategory>
#include <QQuickWindow>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>

#include "browser/engine/EnginePage.h"
#include "browser/engine/EngineView.h"

namespace qinghe {

using namespace Qt::StringLiterals;

QtBrowserEngine::QtBrowserEngine() {
  // Painted by the processor, a page needs no graphics driver, and the window that it appears in
  // need not be made anew.
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  // Its own words, such as those of the box for a file, are Chinese whatever the desktop speaks.
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS", qgetenv("QTWEBENGINE_CHROMIUM_FLAGS") + " --lang=zh-CN");
  // Which graphics it finds is of no use to anybody here.
  QLoggingCategory::setFilterRules(u"qt.webenginecontext*=false"_s);
}

std::unique_ptr<PageView> QtBrowserEngine::makePage(PageOwner& owner, QWidget* parent) {
  return std::make_unique<EngineView>(owner, profile(), parent);
}

std::shared_ptr<QWebEngineProfile> QtBrowserEngine::profile() {
  if (auto kept = shared_.lock()) return kept;
  // A profile without a name is off the record: no cookie, cache or visited page goes to the disk.
  auto fresh = std::make_shared<QWebEngineProfile>();
  Q_ASSERT(fresh->isOffTheRecord());
  fresh->setHttpAcceptLanguage(u"zh-CN,zh;q=0.9"_s);
  fresh->setSpellCheckEnabled(false);
  connect(fresh.get(), &QWebEngineProfile::downloadRequested, this,
          [](QWebEngineDownloadRequest* download) {
            if (auto* page = qobject_cast<EnginePage*>(download->page()))
              page->takeDownload(download);
            else
              download->cancel();
          });
  shared_ = fresh;
  return fresh;
}

}  // namespace qinghe

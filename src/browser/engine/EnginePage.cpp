#include "browser/engine/EnginePage.h"

#include <QAuthenticator>
#include <QFileInfo>
#include <QNetworkProxy>
#include <QWebEngineDownloadRequest>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineSettings>

#include "browser/BrowserEngine.h"
#include "browser/engine/RequestGuard.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int aborted = -3;  // what was given up for something else, a download for example

}  // namespace

EnginePage::EnginePage(PageOwner& owner, QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent), owner_(owner) {
  setUrlRequestInterceptor(new RequestGuard(owner, this));
  restrict();
  connect(this, &QWebEnginePage::loadingChanged, this, &EnginePage::noteLoading);
  connect(this, &QWebEnginePage::titleChanged, this,
          [this](const QString& title) { owner_.pageTitled(title); });
  connect(this, &QWebEnginePage::newWindowRequested, this, &EnginePage::askForWindow);
  connect(this, &QWebEnginePage::renderProcessTerminated, this,
          [this](RenderProcessTerminationStatus status, int) {
            if (status != NormalTerminationStatus) owner_.pageFailed(url());
          });
  connect(this, &QWebEnginePage::featurePermissionRequested, this,
          [this](const QUrl& origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
          });
  connect(this, &QWebEnginePage::proxyAuthenticationRequired, this,
          [](const QUrl&, QAuthenticator* answer, const QString&) {
            const auto proxy = QNetworkProxy::applicationProxy();
            answer->setUser(proxy.user());
            answer->setPassword(proxy.password());
          });
}

void EnginePage::restrict() {
  using Settings = QWebEngineSettings;
  Settings* mine = settings();
  for (const auto off :
       {Settings::LocalContentCanAccessRemoteUrls, Settings::LocalContentCanAccessFileUrls,
        Settings::AllowRunningInsecureContent, Settings::AllowGeolocationOnInsecureOrigins,
        Settings::JavascriptCanAccessClipboard, Settings::JavascriptCanPaste,
        Settings::PluginsEnabled, Settings::PdfViewerEnabled, Settings::FullScreenSupportEnabled,
        Settings::ScreenCaptureEnabled, Settings::NavigateOnDropEnabled,
        Settings::HyperlinkAuditingEnabled, Settings::DnsPrefetchEnabled,
        Settings::ErrorPageEnabled}) {
    mine->setAttribute(off, false);
  }
  mine->setAttribute(Settings::WebRTCPublicInterfacesOnly, true);
  mine->setUnknownUrlSchemePolicy(Settings::DisallowUnknownUrlSchemes);
  mine->setDefaultTextEncoding(u"GBK"_s);
}

bool EnginePage::acceptNavigationRequest(const QUrl& address, NavigationType type,
                                         bool isMainFrame) {
  if (owner_.mayFetch(address)) return true;
  // Of a redirect that is not followed the engine tells nothing, and the page would stay empty.
  if (type == NavigationTypeRedirect && isMainFrame) {
    QMetaObject::invokeMethod(
        this, [this, address] { owner_.pageFailed(address); }, Qt::QueuedConnection);
  }
  return false;
}

void EnginePage::noteLoading(const QWebEngineLoadingInfo& info) {
  if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) {
    owner_.pageReached(info.url());
    return;
  }
  if (info.status() != QWebEngineLoadingInfo::LoadFailedStatus) return;
  // A server's own words about an error are a page like any other.
  if (info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain)
    owner_.pageReached(info.url());
  else if (info.errorCode() != aborted)
    owner_.pageFailed(info.url());
}

// The question waits until the engine is through with this call: while it is open, the engine has
// to go on working.
void EnginePage::askForWindow(QWebEngineNewWindowRequest& request) {
  const QUrl address = request.requestedUrl();
  QMetaObject::invokeMethod(
      this,
      [this, address] {
        if (owner_.mayReplacePage(address)) load(address);
      },
      Qt::QueuedConnection);
}

void EnginePage::takeDownload(QWebEngineDownloadRequest* download) {
  const auto path = owner_.downloadTo(download->url(), download->downloadFileName());
  if (!path) {
    download->cancel();
    return;
  }
  const QFileInfo file(*path);
  download->setDownloadDirectory(file.path());
  download->setDownloadFileName(file.fileName());
  connect(download, &QWebEngineDownloadRequest::isFinishedChanged, this, [this, download, file] {
    owner_.downloaded(file.filePath(),
                      download->state() == QWebEngineDownloadRequest::DownloadCompleted);
  });
  download->accept();
}

QStringList EnginePage::chooseFiles(FileSelectionMode mode, const QStringList&,
                                    const QStringList& accepted) {
  if (mode == FileSelectUploadFolder) return {};
  const auto path = owner_.fileToUpload(accepted);
  return path ? QStringList{*path} : QStringList();
}

void EnginePage::javaScriptAlert(const QUrl& origin, const QString& text) {
  owner_.tell(origin, text);
}

bool EnginePage::javaScriptConfirm(const QUrl& origin, const QString& text) {
  return owner_.confirm(origin, text);
}

bool EnginePage::javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) {
  return false;
}

void EnginePage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                          const QString&) {}

}  // namespace qinghe

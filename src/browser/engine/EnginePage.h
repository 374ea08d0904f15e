#pragma once

#include <QWebEngineLoadingInfo>
#include <QWebEnginePage>

class QAuthenticator;
class QWebEngineDownloadRequest;
class QWebEngineNewWindowRequest;

namespace qinghe {

class PageOwner;

/// A page that asks its owner before it does anything beyond showing itself.
class EnginePage : public QWebEnginePage {
  Q_OBJECT

 public:
  EnginePage(PageOwner& owner, QWebEngineProfile* profile, QObject* parent);

  /// Takes a download that this page has begun, or leaves it alone when its owner refuses.
  void takeDownload(QWebEngineDownloadRequest* download);

 protected:
  bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;
  QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                          const QStringList& accepted) override;
  void javaScriptAlert(const QUrl& origin, const QString& text) override;
  bool javaScriptConfirm(const QUrl& origin, const QString& text) override;
  bool javaScriptPrompt(const QUrl& origin, const QString& text, const QString& preset,
                        QString* answer) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& text, int line,
                                const QString& source) override;

 private:
  void restrict();
  void noteLoading(const QWebEngineLoadingInfo& info);
  void askForWindow(QWebEngineNewWindowRequest& request);

  PageOwner& owner_;
};

}  // namespace qinghe

#pragma once

#include <QString>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>

#include "browser/BrowserEngine.h"

class QStackedLayout;

namespace qinghe {

class PageMessage;

/// A page view on a screen. The browser engine is loaded by the first page that is really shown:
/// a view that stays hidden or blank costs nothing and asks the network for nothing. Without an
/// engine the same view offers the system's browser.
///
/// Pages are strangers: none can call into the program or read local files; downloads and pop-ups
/// are asked for through `prompts()`. Nothing is kept on disk. Pages take the road that the
/// program's own connection settings name.
class WebBrowser : public QWidget, private PageOwner {
  Q_OBJECT

 public:
  explicit WebBrowser(const QString& name, QWidget* parent = nullptr);
  ~WebBrowser() override;

  /// Goes to an address over http, https or ftp, with "http://" put before one without a scheme;
  /// "about:blank" and an empty one show a blank page, anything else is refused in words. A view
  /// that is not visible goes there when it is shown; of several addresses the last one counts.
  void Navigate(const QString& url);

  /// Whether pages stay on the host (with its port) of the last `Navigate`: what leads away from
  /// it is not followed. Off at first.
  void setStaysOnHost(bool stays) { staysOnHost_ = stays; }
  bool staysOnHost() const { return staysOnHost_; }

  /// What `Navigate` was last told, as it was told; "about:blank" before the first.
  QString asked() const { return asked_; }
  /// The title of the page shown; empty for a blank one.
  QString title() const { return title_; }

  /// A page that has not come after this time is given up.
  std::chrono::milliseconds timeLimit{60'000};
  /// Where the engine comes from.
  std::function<BrowserEngine*()> engine = loadBrowserEngine;

  QSize sizeHint() const override { return {480, 360}; }

 signals:
  /// A page has been reached, by `Navigate` or by the user's steps in the page; its address. A
  /// blank page is not reported.
  void reached(const QString& address);
  void titleChanged(const QString& title);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void open();
  void openPage(const QUrl& address);
  void showBlank();
  void showFailure(const QUrl& address);
  void setTitle(const QString& title);
  void whenFree(std::function<void()> step);
  bool maySpeak();

  bool mayFetch(const QUrl& address) override;
  void pageReached(const QUrl& address) override;
  void pageFailed(const QUrl& address) override;
  void pageTitled(const QString& title) override;
  bool mayReplacePage(const QUrl& address) override;
  std::optional<QString> downloadTo(const QUrl& address, const QString& name) override;
  void downloaded(const QString& path, bool whole) override;
  std::optional<QString> fileToUpload(const QStringList& accepted) override;
  void tell(const QUrl& origin, const QString& text) override;
  bool confirm(const QUrl& origin, const QString& text) override;

  QString asked_ = QStringLiteral("about:blank");
  QString title_;
  QUrl home_;   ///< where the last `Navigate` led; empty while the page is blank
  QUrl again_;  ///< where a second try goes once a page has failed
  bool staysOnHost_ = false;
  bool pending_ = false;
  int spoken_ = 0;
  QTimer patience_;
  QStackedLayout* stack_;
  QWidget* blank_;
  PageMessage* message_;
  std::unique_ptr<PageView> page_;
};

}  // namespace qinghe

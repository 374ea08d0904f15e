#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <QtPlugin>
#include <memory>
#include <optional>

class QWidget;

namespace qinghe {

/// What a page asks of the control that shows it. The engine decides nothing by itself, and a page
/// reaches nothing else of the program.
///
/// Addresses are absolute. The questions are answered before they return.
class PageOwner {
 public:
  virtual ~PageOwner() = default;

  /// Whether a page, a frame or anything that a page wants may be fetched from there.
  virtual bool mayFetch(const QUrl& address) = 0;
  virtual void pageReached(const QUrl& address) = 0;
  virtual void pageFailed(const QUrl& address) = 0;
  virtual void pageTitled(const QString& title) = 0;

  /// A page wants a window of its own; true shows that address in its place.
  virtual bool mayReplacePage(const QUrl& address) = 0;
  /// Where a download goes; nothing refuses it. `name` is the server's wish.
  virtual std::optional<QString> downloadTo(const QUrl& address, const QString& name) = 0;
  virtual void downloaded(const QString& path, bool whole) = 0;
  /// A file that the user gives to a page which accepts those kinds (".png", "image/png").
  virtual std::optional<QString> fileToUpload(const QStringList& accepted) = 0;
  /// A page's own words, and whose page it is; empty for one without a home of its own.
  virtual void tell(const QUrl& origin, const QString& text) = 0;
  virtual bool confirm(const QUrl& origin, const QString& text) = 0;
};

/// One page, in a widget that belongs to the parent it was made with.
class PageView {
 public:
  virtual ~PageView() = default;
  virtual QWidget* widget() = 0;
  virtual void go(const QUrl& address) = 0;
  virtual void stop() = 0;
};

/// A browser engine in a plugin of its own, so that a program which shows no page loads none of it.
class BrowserEngine {
 public:
  virtual ~BrowserEngine() = default;
  /// A page for an owner that outlives it.
  virtual std::unique_ptr<PageView> makePage(PageOwner& owner, QWidget* parent) = 0;
};

/// The engine that lies beside the program, loaded by the first call; null when there is none or
/// when it cannot run here.
BrowserEngine* loadBrowserEngine();

}  // namespace qinghe

Q_DECLARE_INTERFACE(qinghe::BrowserEngine, "cn.qinghe.BrowserEngine/1")

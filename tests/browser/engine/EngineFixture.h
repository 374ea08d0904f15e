#pragma once

#include <QJsonValue>
#include <QVBoxLayout>
#include <QVariant>
#include <QWidget>

#include "browser/WebBrowser.h"
#include "support/ClientFixture.h"

class QWebEngineView;

namespace qinghe {

/// A page view with the real engine in a window of its own, and a server for its pages.
class EngineFixture : public ClientFixture {
 protected:
  /// A whole answer: `head` lines end with CR LF.
  static ScriptedServer::Reply reply(const QByteArray& body,
                                     const QByteArray& type = "text/html; charset=utf-8",
                                     const QByteArray& head = {},
                                     const QByteArray& status = "200 OK");
  /// Serves pages by their paths, and 404 for others.
  static void serve(ScriptedServer& server, QMap<QByteArray, ScriptedServer::Reply> pages);
  static QString at(const ScriptedServer& server, const QString& path) {
    return QStringLiteral("http://") + server.host() + path;
  }

  EngineFixture();
  ~EngineFixture() override;

  /// Shows the window, goes there, and waits until the page is reached.
  void open(const QString& address);
  bool waitFor(const std::function<bool()>& condition);
  QWebEngineView* view();
  /// What a script in the page gives; null when it gives nothing in time.
  QVariant js(const QString& script);
  /// Presses and releases the mouse in the middle of the first element of that selector, once the
  /// page is drawn: the engine drops what is pressed before.
  void click(const QString& selector);
  /// The words that stand in place of a page; empty when there is a page.
  QString words();

  ScriptedServer pages;
  QStringList reached;
  QWidget window;
  WebBrowser* browser = nullptr;
};

}  // namespace qinghe

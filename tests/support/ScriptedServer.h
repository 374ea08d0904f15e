#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <memory>

/// A server on a free port of 127.0.0.1, in a thread of its own, that records every request as raw
/// bytes and answers as it is told. It serves any number of connections at once.
///
/// All members may be called from any thread. Destroying it closes every connection at once,
/// whatever was still delayed or hanging.
class ScriptedServer {
 public:
  /// What is done with one request.
  struct Reply {
    QByteArray bytes{};                  ///< written as they are
    std::chrono::milliseconds delay{0};  ///< before the first byte
    bool reset = false;                  ///< reset the connection instead of closing it
    bool keepAlive = true;               ///< go on reading requests on this connection
    bool hang = false;                   ///< answer nothing and keep the connection open
    qint64 endlessChunk = 0;  ///< >0: repeat `bytes` until the client leaves, at most so often
    QByteArray head{};        ///< written once, before `bytes`
    std::chrono::milliseconds pause{0};  ///< between two repetitions of `bytes`
  };

  ScriptedServer();
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  quint16 port() const;
  QString host() const;  ///< "127.0.0.1:port"

  /// Called in the server's thread with the raw request (line, headers, body).
  void setHandler(std::function<Reply(const QByteArray& request)> handler);
  /// Answers in turn; the last one again and again. Without a page it answers an empty one.
  void answerWith(const QList<QByteArray>& pagesInCodePage);

  QList<QByteArray> requests() const;        ///< raw, in order of arrival
  QList<QByteArray> requestTargets() const;  ///< the middle word of each request line
  QByteArray body(int index) const;          ///< of one request; empty when there is none
  /// Whether so many requests have arrived, waiting for them no longer than `limit`.
  bool waitForRequests(int count, std::chrono::milliseconds limit = std::chrono::seconds(60)) const;
  int connectionCount() const;  ///< taken in since the start or the last `clear`
  /// Whether no connection is open, waiting for that no longer than `limit`.
  bool waitForNoConnection(std::chrono::milliseconds limit = std::chrono::seconds(60)) const;
  /// Forgets the requests and the count of connections; the answers stay.
  void clear();

  /// A 200 answer with length and page, the page given in the code page.
  static QByteArray ok(const QByteArray& page);
  /// A page with the marker and one table of rows of cells, in the code page; cells as they stand.
  static QByteArray table(const QList<QStringList>& rows);

 private:
  struct Private;
  std::unique_ptr<Private> d;
};

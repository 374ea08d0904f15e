#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>

/// A server on a free port of 127.0.0.1, in a thread of its own, that records every request as raw
/// bytes and answers as it is told.
class ScriptedServer {
 public:
  /// What is done with one request.
  struct Reply {
    QByteArray bytes;                        ///< written as they are
    std::chrono::milliseconds delay{0};      ///< before the first byte
    bool reset = false;                      ///< reset the connection instead of closing it
    bool keepAlive = true;                   ///< go on reading requests on this connection
    bool hang = false;                       ///< answer nothing and keep the connection open
    qint64 endlessChunk = 0;                 ///< >0: repeat `bytes` until the client leaves, at most so often
  };

  ScriptedServer();
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  quint16 port() const;
  QString host() const;  ///< "127.0.0.1:port"

  /// Called in the server's thread with the raw request (line, headers, body).
  void setHandler(std::function<Reply(const QByteArray& request)> handler);
  /// Answers in turn; the last one again and again.
  void answerWith(const QList<QByteArray>& pagesInCodePage);

  QList<QByteArray> requests() const;       ///< raw, in order of arrival
  QList<QByteArray> requestTargets() const; ///< the middle word of each request line
  QByteArray body(int index) const;
  bool waitForRequests(int count, std::chrono::milliseconds limit = std::chrono::seconds(10)) const;
  int connectionCount() const;
  void clear();

  /// A 200 answer with length and page, the page given in the code page.
  static QByteArray ok(const QByteArray& page);
  /// A page with the marker and one table of rows of cells, in the code page.
  static QByteArray table(const QList<QStringList>& rows);

 private:
  struct Private;
  std::unique_ptr<Private> d;
};

#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>

#include "portal/TransferError.h"

namespace qinghe {

/// How the bytes of a page become text.
enum class PageText {
  CodePage,  ///< the portal's own pages, whatever their headers say
  Declared,  ///< foreign pages: by the charset that they declare, the code page where they do not
};

/// The one transfer control of the program: blocking GET, POST in the background, one kept
/// connection.
///
/// A URL goes over the wire byte for byte as it was built, in the code page; only bytes below 0x20
/// and 0x7F are escaped, and "#" cuts. The status code of an answer is ignored, redirects are
/// followed on http and https only, bodies are bounded by `bodyLimit`.
///
/// A read runs on the caller's own thread and lets the windows paint only once the answer keeps it
/// waiting, so that a quick answer costs neither a change of threads nor an event loop. A POST has
/// a thread of its own. Both use the same curl handles, never at once.
///
/// All members belong to one thread, that of the windows; only `StillExecuting` may be asked from
/// any.
class Inet : public QObject {
  Q_OBJECT

 public:
  explicit Inet(QObject* parent = nullptr);
  ~Inet() override;

  /// Fetches a page and returns its text. Blocks the caller, while the windows go on
  /// painting and nothing else runs. Throws `TransferError`; throws too when one is running.
  QString OpenURL(const QString& url, PageText text = PageText::CodePage);

  /// Starts a POST and returns; `body` goes out in the code page. Its end frees the busy flag
  /// without any event loop. Throws `TransferError` when the URL is unusable or a transfer runs,
  /// and for any other method.
  void Execute(const QString& url, const QString& method, const QString& body,
               const QString& headers);

  bool StillExecuting() const;
  /// Ends whatever runs, soon; returns when the control is free again.
  void Cancel();

  /// Waits for the control to be free, no longer than `limit`, and returns whether it is. Within a
  /// read's own painting it takes that read further, as nobody else could.
  bool waitUntilFree(std::chrono::milliseconds limit);

  /// 0: the system's own proxy settings; 1: direct; 2: the proxies of `Proxy` in turn (direct if
  /// none is named), for loopback hosts too; anything else: direct.
  qint16 AccessType = 0;
  /// "HTTP=host:port" entries with a blank between them.
  QString Proxy;

  /// A whole transfer may take this long.
  std::chrono::milliseconds timeLimit{60'000};
  /// Longer bodies are an error.
  qsizetype bodyLimit = qsizetype{64} * 1024 * 1024;

  /// Called with true when a blocking read begins and false when it is over, so that timers and
  /// sockets can hold back their events meanwhile.
  std::function<void(bool)> onBlocking;

 private:
  struct Private;
  std::shared_ptr<Private> d;  // shared with a read under way, which may outlive the control
};

}  // namespace qinghe

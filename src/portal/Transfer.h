#pragma once

#include <curl/curl.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>

#include "portal/KeptConnection.h"
#include "portal/WireUrl.h"

namespace qinghe {

/// What is asked for, and how far it may go.
struct TransferRequest {
  WireUrl url;
  bool post = false;
  QByteArray body;            ///< of a POST
  QList<QByteArray> headers;  ///< lines without their ends
  QByteArray agent;
  /// The proxies to try in turn for a URL, an empty one for none.
  std::function<QList<QByteArray>(const WireUrl&)> proxies;
  std::chrono::milliseconds timeLimit{
      60'000};  ///< of the whole, redirects and all proxies included
  qsizetype bodyLimit = qsizetype{64} * 1024 * 1024;
};

/// One request on the kept connection, driven step by step by whoever waits for it.
///
/// Curl gets the host alone as its URL and the request line's target as it was built, because its
/// own URL parser refuses blanks. Redirects are followed here, as curl would ask the new place for
/// the same target again.
class Transfer {
 public:
  /// Begins; nothing is sent before the first step.
  Transfer(KeptConnection& connection, TransferRequest request);
  ~Transfer();
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  /// Does what can be done, then waits for more to do, no longer than `wait`. Returns whether the
  /// transfer is over.
  bool step(std::chrono::milliseconds wait);
  /// Ends it at once, as a failure.
  void abort();

  /// The whole answer; throws `TransferError` when there is none.
  QByteArray takeBody();
  /// What the answer says that it is; empty when it does not.
  const QByteArray& contentType() const { return contentType_; }

 private:
  using Clock = std::chrono::steady_clock;

  void follow(const WireUrl& url);
  void start();
  void hopEnded(CURLcode result);
  bool mayTryNextProxy(CURLcode result) const;
  void redirect(long status, const QByteArray& location);
  void fail(const QString& reason);
  void leave();

  static int onSending(void* self, char*, char*, int, int);
  static size_t onBody(char* data, size_t size, size_t count, void* self);
  static size_t onHeader(char* data, size_t size, size_t count, void* self);

  struct ListDeleter {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  KeptConnection& connection_;
  TransferRequest request_;
  std::unique_ptr<curl_slist, ListDeleter> headerList_;
  Clock::time_point deadline_;
  WireUrl url_;                // of the hop under way
  QList<QByteArray> proxies_;  // still to try for it, the one in use first
  QByteArray body_;
  QByteArray contentType_;
  size_t headerBytes_ = 0;
  bool headWhole_ = false;  // the empty line behind the headers has come
  bool sent_ = false;       // the request of the hop under way
  int redirects_ = 0;
  bool running_ = false;  // stands in the multi handle
  bool over_ = false;
  QString failure_;
};

}  // namespace qinghe

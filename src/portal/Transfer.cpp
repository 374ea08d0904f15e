#include "portal/Transfer.h"

#include <algorithm>
#include <utility>

#include "portal/TransferError.h"
#include "portal/proxies.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr int redirectLimit = 10;
constexpr size_t headerLimit = 256 * 1024;

bool isRedirect(long status) {
  return (status >= 301 && status <= 303) || status == 307 || status == 308;
}

}  // namespace

Transfer::Transfer(KeptConnection& connection, TransferRequest request)
    : connection_(connection),
      request_(std::move(request)),
      deadline_(Clock::now() + request_.timeLimit) {
  // A server that knows nothing of "100 Continue" would keep a long body waiting.
  headerList_.reset(curl_slist_append(nullptr, "Expect:"));
  for (const auto& header : request_.headers)
    curl_slist_append(headerList_.get(), header.constData());

  auto* const easy = connection_.easy();
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Transfer::onBody);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
  curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
  curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headerList_.get());
  curl_easy_setopt(easy, CURLOPT_USERAGENT, request_.agent.constData());
  curl_easy_setopt(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(request_.bodyLimit));
  curl_easy_setopt(easy, CURLOPT_PREREQFUNCTION, &Transfer::onSending);
  curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
  follow(request_.url);
}

Transfer::~Transfer() {
  leave();
}

bool Transfer::step(std::chrono::milliseconds wait) {
  if (over_) return true;
  int running = 0;
  if (curl_multi_perform(connection_.multi(), &running) != CURLM_OK) {
    fail(u"the transfer could not go on"_s);
    return true;
  }
  int left = 0;
  while (const auto* message = curl_multi_info_read(connection_.multi(), &left)) {
    if (message->msg == CURLMSG_DONE) {
      hopEnded(message->data.result);
      break;  // taking the handle out has made the message's memory void
    }
  }
  if (!over_ && running > 0)
    curl_multi_poll(connection_.multi(), nullptr, 0, static_cast<int>(wait.count()), nullptr);
  return over_;
}

void Transfer::abort() {
  if (!over_) fail(u"cancelled"_s);
}

QByteArray Transfer::takeBody() {
  if (!over_ || !failure_.isEmpty()) throw TransferError(failure_);
  return std::move(body_);
}

void Transfer::follow(const WireUrl& url) {
  url_ = url;
  proxies_ = request_.proxies(url_);
  start();
}

void Transfer::start() {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
  if (left.count() <= 0) return fail(u"the time is up"_s);
  // A proxy that swallows all packets leaves the others their share of the time.
  const auto connectTime = std::max<qint64>(1, left.count() / proxies_.size());
  const auto& proxy = proxies_.constFirst();
  const auto& target = takesAbsoluteTarget(proxy, url_) ? url_.absolute : url_.target;
  body_.clear();
  headerBytes_ = 0;
  headWhole_ = false;
  sent_ = false;

  auto* const easy = connection_.easy();
  const auto set = [easy](auto option, auto value) {
    return curl_easy_setopt(easy, option, value) == CURLE_OK;
  };
  bool fit = set(CURLOPT_URL, url_.origin.constData()) &&
             set(CURLOPT_REQUEST_TARGET, target.constData()) &&
             set(CURLOPT_PROXY, proxy.constData()) &&
             set(CURLOPT_TIMEOUT_MS, static_cast<long>(left.count())) &&
             set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(connectTime));
  if (request_.post) {
    fit = fit && set(CURLOPT_POST, 1L) && set(CURLOPT_POSTFIELDS, request_.body.constData()) &&
          set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body.size()));
  } else {
    fit = fit && set(CURLOPT_POSTFIELDS, static_cast<char*>(nullptr)) && set(CURLOPT_HTTPGET, 1L);
  }
  if (!fit || curl_multi_add_handle(connection_.multi(), easy) != CURLM_OK)
    return fail(u"the request cannot be sent"_s);
  running_ = true;
}

void Transfer::hopEnded(CURLcode result) {
  long status = 0;
  curl_header* location = nullptr;
  QByteArray place;
  const char* type = nullptr;
  curl_easy_getinfo(connection_.easy(), CURLINFO_RESPONSE_CODE, &status);
  curl_easy_getinfo(connection_.easy(), CURLINFO_CONTENT_TYPE, &type);
  contentType_ = type;
  if (isRedirect(status) &&
      curl_easy_header(connection_.easy(), "Location", 0, CURLH_HEADER, -1, &location) == CURLHE_OK)
    place = location->value;
  const bool next = result != CURLE_OK && mayTryNextProxy(result);
  leave();
  if (next) {
    proxies_.removeFirst();
    start();
  } else if (result != CURLE_OK) {
    fail(QString::fromLatin1(curl_easy_strerror(result)));
  } else if (!headWhole_) {
    fail(u"the answer ends within its head"_s);  // which curl takes for an empty one
  } else if (!place.isEmpty()) {
    redirect(status, place);
  } else {
    over_ = true;
  }
}

/// Only while nothing can have been sent yet, so that no request is made twice.
bool Transfer::mayTryNextProxy(CURLcode result) const {
  if (proxies_.size() < 2) return false;
  switch (result) {
    case CURLE_URL_MALFORMAT:
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_CONNECT:
      return true;
    case CURLE_OPERATION_TIMEDOUT: {
      curl_off_t connected = 0;
      curl_easy_getinfo(connection_.easy(), CURLINFO_CONNECT_TIME_T, &connected);
      return connected == 0;
    }
    default:
      return false;
  }
}

void Transfer::redirect(long status, const QByteArray& location) {
  if (++redirects_ > redirectLimit) return fail(u"too many redirects"_s);
  const auto next = url_.resolved(location);
  if (!next) return fail(u"redirected to no page"_s);
  if (status <= 303) request_.post = false;  // 307 and 308 ask for the same request again
  follow(*next);
}

void Transfer::fail(const QString& reason) {
  leave();
  body_.clear();
  failure_ = reason;
  over_ = true;
}

void Transfer::leave() {
  if (!running_) return;
  curl_multi_remove_handle(connection_.multi(), connection_.easy());
  running_ = false;
}

/// A kept connection may break between a request and its answer, and curl would then make the same
/// request again; what it asks for may have been done, so it is sent once and no more.
int Transfer::onSending(void* self, char*, char*, int, int) {
  return std::exchange(static_cast<Transfer*>(self)->sent_, true) ? CURL_PREREQFUNC_ABORT
                                                                  : CURL_PREREQFUNC_OK;
}

size_t Transfer::onBody(char* data, size_t size, size_t count, void* self) {
  auto& transfer = *static_cast<Transfer*>(self);
  const auto length = static_cast<qsizetype>(size * count);
  if (length > transfer.request_.bodyLimit - transfer.body_.size()) return 0;
  transfer.body_.append(data, length);
  return size * count;
}

size_t Transfer::onHeader(char* data, size_t size, size_t count, void* self) {
  auto& transfer = *static_cast<Transfer*>(self);
  const QByteArrayView line(data, static_cast<qsizetype>(size * count));
  if (line.startsWith("HTTP/")) transfer.headWhole_ = false;
  if (line.trimmed().isEmpty()) transfer.headWhole_ = true;
  transfer.headerBytes_ += size * count;
  return transfer.headerBytes_ > headerLimit ? 0 : size * count;
}

}  // namespace qinghe

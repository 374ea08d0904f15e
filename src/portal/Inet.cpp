#include "portal/Inet.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QPointer>
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

#include "portal/Transfer.h"
#include "portal/page_charset.h"
#include "portal/proxies.h"
#include "values/code_page.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

constexpr auto paintInterval = std::chrono::milliseconds(10);
constexpr auto postInterval = std::chrono::seconds(1);  // a cancel wakes it before

TransferRequest requestFor(const Inet& inet, const QString& url) {
  const auto wire = WireUrl::parse(toCodePage(url));
  if (!wire) throw TransferError(u"the address cannot be used: %1"_s.arg(url.left(200)));
  TransferRequest request;
  request.url = *wire;
  request.agent = "qinghe";
  request.proxies = [type = inet.AccessType, list = inet.Proxy](const WireUrl& to) {
    return proxiesFor(type, list, to);
  };
  request.timeLimit = inet.timeLimit;
  request.bodyLimit = inet.bodyLimit;
  return request;
}

/// The lines of a header text. One that holds a control byte is left out whole.
QList<QByteArray> headerLines(const QString& headers) {
  QList<QByteArray> lines;
  for (const auto& part : toCodePage(headers).split('\n')) {
    const auto line = part.trimmed();
    const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < 0x20; };
    if (!line.isEmpty() && std::none_of(line.begin(), line.end(), isControl)) lines.append(line);
  }
  return lines;
}

/// Tells that a read blocks, for as long as it stands and the control lives.
class Blocking {
 public:
  explicit Blocking(Inet* inet) : inet_(inet) { tell(true); }
  ~Blocking() { tell(false); }
  Blocking(const Blocking&) = delete;
  Blocking& operator=(const Blocking&) = delete;

 private:
  void tell(bool blocks) const {
    if (inet_ && inet_->onBlocking) inet_->onBlocking(blocks);
  }
  QPointer<Inet> inet_;
};

}  // namespace

struct Inet::Private {
  KeptConnection connection;
  std::atomic<bool> busy = false;
  std::atomic<bool> cancelled = false;
  Transfer* read = nullptr;  // that a caller further up the stack waits for
  std::thread poster;
  std::mutex mutex;
  std::condition_variable freed;

  void claim();
  void release();
  bool stepRead(std::chrono::milliseconds wait);
  void post(TransferRequest request);
};

void Inet::Private::claim() {
  if (busy.exchange(true)) throw TransferError(u"a transfer is still running"_s);
  if (poster.joinable()) poster.join();  // has ended but for its last steps
  cancelled = false;
}

void Inet::Private::release() {
  {
    const std::lock_guard lock(mutex);
    busy = false;
  }
  freed.notify_all();
}

/// Takes the read further. Once it is over the control is free, even if its caller has not come
/// back to it yet.
bool Inet::Private::stepRead(std::chrono::milliseconds wait) {
  if (!read->step(wait)) return false;
  read = nullptr;
  release();
  return true;
}

void Inet::Private::post(TransferRequest request) {
  try {
    Transfer transfer(connection, std::move(request));
    while (!cancelled && !transfer.step(postInterval)) {
    }
  } catch (const std::exception&) {
    // Nobody hears of a POST's end, good or bad.
  }
  release();
}

Inet::Inet(QObject* parent) : QObject(parent), d(std::make_shared<Private>()) {}

Inet::~Inet() {
  const bool reading = d->read != nullptr;
  Cancel();
  if (reading && onBlocking) onBlocking(false);
}

QString Inet::OpenURL(const QString& url, PageText text) {
  const auto self = d;  // what is painted meanwhile may end in the control's destruction
  auto request = requestFor(*this, url);
  self->claim();
  Transfer transfer(self->connection, std::move(request));
  self->read = &transfer;
  bool inputHeldBack = false;
  {
    const Blocking blocking(this);
    auto painted = std::chrono::steady_clock::now();
    while (self->read == &transfer && !self->stepRead(paintInterval)) {
      if (std::chrono::steady_clock::now() - painted < paintInterval) continue;
      QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                      QEventLoop::ExcludeSocketNotifiers);
      painted = std::chrono::steady_clock::now();
      inputHeldBack = true;
    }
  }
  // Leaving input out has used up the window system's call for it, and nobody would call again.
  if (auto* const dispatcher = QAbstractEventDispatcher::instance(); inputHeldBack && dispatcher)
    dispatcher->wakeUp();
  const auto page = transfer.takeBody();
  return text == PageText::Declared ? declaredText(page, transfer.contentType())
                                    : fromCodePage(page);
}

void Inet::Execute(const QString& url, const QString& method, const QString& body,
                   const QString& headers) {
  if (method != "POST"_L1) throw TransferError(u"unknown method %1"_s.arg(method));
  auto request = requestFor(*this, url);
  request.post = true;
  request.body = toCodePage(body);
  request.headers = headerLines(headers);
  d->claim();
  try {
    d->poster = std::thread(&Private::post, d.get(), std::move(request));
  } catch (const std::system_error&) {
    d->release();
    throw TransferError(u"the transfer could not be started"_s);
  }
}

bool Inet::StillExecuting() const {
  return d->busy;
}

void Inet::Cancel() {
  if (d->read) {
    d->read->abort();
    d->stepRead({});
    return;
  }
  if (!d->poster.joinable()) return;
  d->cancelled = true;
  curl_multi_wakeup(d->connection.multi());
  d->poster.join();
}

bool Inet::waitUntilFree(std::chrono::milliseconds limit) {
  if (d->read) return d->stepRead(limit);
  std::unique_lock lock(d->mutex);
  return d->freed.wait_for(lock, limit, [this] { return !d->busy; });
}

}  // namespace qinghe

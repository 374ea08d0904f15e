#include "ScriptedServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <list>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "values/code_page.h"

namespace {

using Clock = std::chrono::steady_clock;

/// A descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor() { close(); }
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    close();
    fd_ = std::exchange(other.fd_, -1);
    return *this;
  }
  int get() const { return fd_; }
  void close() {
    if (fd_ >= 0) ::close(std::exchange(fd_, -1));
  }

 private:
  int fd_;
};

void require(bool done, const char* what) {
  if (!done) throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

qsizetype contentLength(const QByteArray& head) {
  const auto lines = head.split('\n');
  for (const auto& line : lines) {
    const auto colon = line.indexOf(':');
    if (colon > 0 && line.left(colon).trimmed().toLower() == "content-length")
      return std::max<qsizetype>(0, line.mid(colon + 1).trimmed().toLongLong());
  }
  return 0;
}

/// The length of the first whole request in `input`, 0 while it is not whole.
qsizetype wholeRequest(const QByteArray& input) {
  const auto end = input.indexOf("\r\n\r\n");
  if (end < 0) return 0;
  const auto length = end + 4 + contentLength(input.left(end));
  return input.size() >= length ? length : 0;
}

struct Connection {
  Descriptor socket;
  QByteArray input;
  std::optional<ScriptedServer::Reply> reply;  ///< being given now
  QByteArray output;
  qsizetype written = 0;
  qint64 repetitionsLeft = 0;
  Clock::time_point notBefore;
  bool over = false;

  bool mayWrite(Clock::time_point now) const {
    return reply && !reply->hang && !over && now >= notBefore;
  }
};

}  // namespace

struct ScriptedServer::Private {
  using Handler = std::function<Reply(const QByteArray&)>;
  Descriptor listener;
  Descriptor wake{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
  quint16 port = 0;
  std::atomic<bool> stop = false;
  std::list<Connection> connections;  // of the thread alone
  mutable std::mutex mutex;           // of all below
  mutable std::condition_variable changed;
  std::shared_ptr<Handler> handler;  // shared, so that one with a state of its own keeps it
  QList<QByteArray> requests;
  int connectionCount = 0;
  qsizetype open = 0;
  std::thread thread;

  void listen();
  void run();
  int waitTime() const;
  void accept();
  void read(Connection& connection);
  void takeRequest(Connection& connection);
  void write(Connection& connection);
  bool refill(Connection& connection);
  void finish(Connection& connection);
};

void ScriptedServer::Private::listen() {
  listener = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  require(listener.get() >= 0, "socket");
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* raw = reinterpret_cast<sockaddr*>(&address);
  require(::bind(listener.get(), raw, size) == 0, "bind");
  require(::listen(listener.get(), 128) == 0, "listen");
  require(::getsockname(listener.get(), raw, &size) == 0, "getsockname");
  port = ntohs(address.sin_port);
}

/// Milliseconds until the next delayed reply is due; -1 when nothing is delayed.
int ScriptedServer::Private::waitTime() const {
  const auto now = Clock::now();
  int wait = -1;
  for (const auto& connection : connections) {
    if (!connection.reply || connection.reply->hang || now >= connection.notBefore) continue;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(connection.notBefore - now);
    const auto limited = static_cast<int>(std::min<qint64>(left.count(), 60'000));
    wait = wait < 0 ? limited : std::min(wait, limited);
  }
  return wait;
}

void ScriptedServer::Private::run() {
  std::vector<pollfd> polled;
  while (!stop) {
    const auto now = Clock::now();
    polled.assign({{wake.get(), POLLIN, 0}, {listener.get(), POLLIN, 0}});
    for (const auto& connection : connections) {
      const short events = connection.mayWrite(now) ? POLLIN | POLLOUT : POLLIN;
      polled.push_back({connection.socket.get(), events, 0});
    }
    if (::poll(polled.data(), polled.size(), waitTime()) < 0 && errno != EINTR) return;
    auto entry = polled.begin() + 2;
    for (auto& connection : connections) {
      const auto got = (entry++)->revents;
      if (got & (POLLIN | POLLHUP | POLLERR)) read(connection);
      if (connection.mayWrite(Clock::now())) write(connection);
    }
    const auto gone = std::erase_if(connections, [](const Connection& c) { return c.over; });
    if (polled[1].revents & POLLIN) accept();
    if (gone == 0) continue;
    const std::lock_guard lock(mutex);
    open = static_cast<qsizetype>(connections.size());
    changed.notify_all();
  }
}

void ScriptedServer::Private::accept() {
  const int fd = ::accept4(listener.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (fd < 0) return;
  const int on = 1;
  ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  connections.emplace_back().socket = Descriptor(fd);
  const std::lock_guard lock(mutex);
  ++connectionCount;
  open = static_cast<qsizetype>(connections.size());
  changed.notify_all();
}

void ScriptedServer::Private::read(Connection& connection) {
  char block[65536];
  for (;;) {
    const auto got = ::recv(connection.socket.get(), block, sizeof block, 0);
    if (got > 0) {
      connection.input.append(block, got);
      continue;
    }
    if (got == 0 || (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR))
      connection.over = true;
    break;
  }
  takeRequest(connection);
}

void ScriptedServer::Private::takeRequest(Connection& connection) {
  if (connection.reply) return;
  const auto length = wholeRequest(connection.input);
  if (length == 0) return;
  const auto request = connection.input.left(length);
  connection.input.remove(0, length);
  std::shared_ptr<Handler> answer;
  {
    const std::lock_guard lock(mutex);
    answer = handler;
    requests.append(request);
    changed.notify_all();
  }
  connection.reply = answer && *answer ? (*answer)(request) : Reply{.bytes = ok({})};
  connection.output = connection.reply->head + connection.reply->bytes;
  connection.written = 0;
  connection.repetitionsLeft = connection.reply->endlessChunk - 1;
  connection.notBefore = Clock::now() + connection.reply->delay;
}

void ScriptedServer::Private::write(Connection& connection) {
  while (connection.mayWrite(Clock::now())) {
    const auto left = connection.output.size() - connection.written;
    if (left > 0) {
      const auto sent =
          ::send(connection.socket.get(), connection.output.constData() + connection.written,
                 static_cast<size_t>(left), MSG_NOSIGNAL);
      if (sent < 0) {
        connection.over = errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR;
        return;
      }
      connection.written += sent;
    } else if (!refill(connection)) {
      finish(connection);
    }
  }
}

bool ScriptedServer::Private::refill(Connection& connection) {
  if (connection.repetitionsLeft <= 0) return false;
  --connection.repetitionsLeft;
  connection.output = connection.reply->bytes;
  connection.written = 0;
  connection.notBefore = Clock::now() + connection.reply->pause;
  return true;
}

void ScriptedServer::Private::finish(Connection& connection) {
  const auto reply = *std::exchange(connection.reply, std::nullopt);
  if (reply.reset) {
    const linger hard{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(connection.socket.get(), SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
  }
  connection.over = reply.reset || !reply.keepAlive;
  if (!connection.over) takeRequest(connection);
}

ScriptedServer::ScriptedServer() : d(std::make_unique<Private>()) {
  d->listen();
  d->thread = std::thread([this] { d->run(); });
}

ScriptedServer::~ScriptedServer() {
  d->stop = true;
  const quint64 one = 1;
  [[maybe_unused]] const auto woken = ::write(d->wake.get(), &one, sizeof one);
  d->thread.join();
}

quint16 ScriptedServer::port() const {
  return d->port;
}

QString ScriptedServer::host() const {
  return QStringLiteral("127.0.0.1:%1").arg(d->port);
}

void ScriptedServer::setHandler(std::function<Reply(const QByteArray&)> handler) {
  const std::lock_guard lock(d->mutex);
  d->handler = std::make_shared<Private::Handler>(std::move(handler));
}

void ScriptedServer::answerWith(const QList<QByteArray>& pagesInCodePage) {
  setHandler([pages = pagesInCodePage, next = qsizetype{0}](const QByteArray&) mutable {
    if (pages.isEmpty()) return Reply{.bytes = ok({})};
    const auto index = std::min(next++, pages.size() - 1);
    return Reply{.bytes = ok(pages.at(index))};
  });
}

QList<QByteArray> ScriptedServer::requests() const {
  const std::lock_guard lock(d->mutex);
  return d->requests;
}

QList<QByteArray> ScriptedServer::requestTargets() const {
  QList<QByteArray> targets;
  for (const auto& request : requests()) {
    // A target may hold bare blanks, so the line is cut at its first and its last one.
    const auto line = request.left(request.indexOf("\r\n"));
    const auto first = line.indexOf(' ');
    targets.append(line.mid(first + 1, line.lastIndexOf(' ') - first - 1));
  }
  return targets;
}

QByteArray ScriptedServer::body(int index) const {
  const auto all = requests();
  if (index < 0 || index >= all.size()) return {};
  const auto& request = all.at(index);
  return request.mid(request.indexOf("\r\n\r\n") + 4);
}

bool ScriptedServer::waitForRequests(int count, std::chrono::milliseconds limit) const {
  std::unique_lock lock(d->mutex);
  return d->changed.wait_for(lock, limit, [&] { return d->requests.size() >= count; });
}

int ScriptedServer::connectionCount() const {
  const std::lock_guard lock(d->mutex);
  return d->connectionCount;
}

bool ScriptedServer::waitForNoConnection(std::chrono::milliseconds limit) const {
  std::unique_lock lock(d->mutex);
  return d->changed.wait_for(lock, limit, [&] { return d->open == 0; });
}

void ScriptedServer::clear() {
  const std::lock_guard lock(d->mutex);
  d->requests.clear();
  d->connectionCount = 0;
}

QByteArray ScriptedServer::ok(const QByteArray& page) {
  return "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=gb2312\r\nContent-Length: " +
         QByteArray::number(page.size()) + "\r\n\r\n" + page;
}

QByteArray ScriptedServer::table(const QList<QStringList>& rows) {
  QString text = QStringLiteral("<html><body><table border=1 start_pos>");
  for (const auto& row : rows) {
    text += QStringLiteral("<tr>");
    for (const auto& cell : row) text += QStringLiteral("<td>") + cell + QStringLiteral("</td>");
    text += QStringLiteral("</tr>");
  }
  return qinghe::toCodePage(text + QStringLiteral("</table></body></html>"));
}

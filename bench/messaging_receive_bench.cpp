// Messages received, from the socket to the stored row: the messenger's window against a bare loop
// of the same reads and inserts into the same file. The sender waits for each row before it sends
// the next message, on both sides alike, so that no two messages merge.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sqlite3.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTcpServer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <semaphore>
#include <stdexcept>
#include <thread>

#include "messaging/frmPeer.h"
#include "resources/resources.h"
#include "shell/AppState.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr int messages = 1'000;
constexpr int rounds = 5;
constexpr double bar = 1.5;
const QByteArray frame("77@Li,a message of a usual length, as people type them between orders");

/// A line from a thread that sends a frame each time it is told that the last one is stored.
class Sender {
 public:
  explicit Sender(int port) : descriptor_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int quick = 1;
    setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &quick, sizeof quick);
    if (connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
      throw std::runtime_error("cannot connect");
    }
  }
  ~Sender() { close(descriptor_); }
  Sender(const Sender&) = delete;
  Sender& operator=(const Sender&) = delete;

  void noteStored() { stored_.release(); }
  std::jthread start() {
    return std::jthread([this] {
      for (int i = 0; i < messages; ++i) {
        if (write(descriptor_, frame.constData(), static_cast<size_t>(frame.size())) < 0) return;
        stored_.acquire();
      }
    });
  }

 private:
  int descriptor_;
  std::counting_semaphore<> stored_{0};
};

class Bare {
 public:
  explicit Bare(const QString& path) {
    if (sqlite3_open_v2(path.toUtf8().constData(), &handle_,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
      throw std::runtime_error("cannot open");
    }
  }
  ~Bare() { sqlite3_close(handle_); }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  void exec(const QByteArray& sql) {
    if (sqlite3_exec(handle_, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(handle_));
    }
  }
  sqlite3* handle() { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

void makeStore(const QString& path) {
  QFile schema(QStringLiteral(QINGHE_SCHEMA));
  if (!schema.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the schema");
  Bare file(path);
  file.exec(schema.readAll());
}

double secondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// What any program would write: a read, the parts of the frame, an insert.
double bareRound(const QString& path) {
  Bare file(path);
  file.exec("PRAGMA synchronous = EXTRA; PRAGMA journal_mode = DELETE");
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(file.handle(),
                     "INSERT INTO XIXI (qyxx_id,user_id,qyxx,UserName,content) VALUES (?,?,?,?,?)",
                     -1, &insert, nullptr);
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
  listen(listener, 1);
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length);
  Sender sender(ntohs(address.sin_port));
  const int line = accept(listener, nullptr, nullptr);
  const double seconds = secondsOf([&] {
    const std::jthread thread = sender.start();
    char buffer[65536];
    for (int i = 0; i < messages; ++i) {
      const auto size = recv(line, buffer, sizeof buffer, 0);
      if (size <= 0) throw std::runtime_error("nothing came");
      const char* at = std::find(buffer, buffer + size, '@');
      const char* comma = std::find(at, static_cast<const char*>(buffer + size), ',');
      sqlite3_bind_int(insert, 1, 25);
      sqlite3_bind_int(insert, 2, std::atoi(buffer));
      sqlite3_bind_text(insert, 3, "own", -1, SQLITE_STATIC);
      sqlite3_bind_text(insert, 4, at + 1, static_cast<int>(comma - at - 1), SQLITE_TRANSIENT);
      sqlite3_bind_text(insert, 5, comma + 1, static_cast<int>(buffer + size - comma - 1),
                        SQLITE_TRANSIENT);
      if (sqlite3_step(insert) != SQLITE_DONE) throw std::runtime_error("not stored");
      sqlite3_reset(insert);
      sender.noteStored();
    }
  });
  sqlite3_finalize(insert);
  close(line);
  close(listener);
  return seconds;
}

double ourRound() {
  auto& form = defaultInstance<frmPeer>();
  form.Timer3->setEnabled(false);
  Sender sender(form.TcpPeer(1)->LocalPort);
  int stored = 0;
  QEventLoop loop;
  QObject::connect(form.TcpPeer(1), &PeerSocket::DataArrival, &loop, [&] {
    ++stored;
    sender.noteStored();
    if (stored == messages) loop.quit();
  });
  form.showForm();
  while (form.mPeerCount < 2) QCoreApplication::processEvents();
  const double seconds = secondsOf([&] {
    const std::jthread thread = sender.start();
    loop.exec();
  });
  form.unload();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return seconds;
}

int countOf(const QString& path) {
  Bare file(path);
  sqlite3_stmt* count = nullptr;
  sqlite3_prepare_v2(file.handle(), "SELECT count(*) FROM XIXI", -1, &count, nullptr);
  sqlite3_step(count);
  const int rows = sqlite3_column_int(count, 0);
  sqlite3_finalize(count);
  return rows;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The platform says with each row that it cannot raise a window.
  qputenv("QT_LOGGING_RULES", "default.warning=false");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  initResources();
  try {
    const QTemporaryDir folder(QStringLiteral("messaging_bench_XXXXXX"));
    AppState state;
    state.programDirectory = folder.path();
    state.peerAddress = u"127.0.0.1"_s;
    state.peerPort = 0;  // a free one
    state.gQiyeId = 25;
    state.gUserName = u"own"_s;
    const QString ours = folder.filePath(u"DATA.MDB"_s);
    const QString bare = folder.filePath(u"bare.MDB"_s);
    makeStore(ours);
    makeStore(bare);
    double least = std::numeric_limits<double>::max();
    double leastBare = least;
    for (int round = 0; round < rounds; ++round) {
      leastBare = std::min(leastBare, bareRound(bare));
      least = std::min(least, ourRound());
    }
    if (countOf(ours) != rounds * messages || countOf(bare) != rounds * messages) {
      throw std::runtime_error("rows are missing");
    }
    const double ratio = least / leastBare;
    std::printf("messages received and stored %9.0f/s, bare %9.0f/s, ratio %.2f (bar %.2f)%s\n",
                messages / least, messages / leastBare, ratio, bar, ratio <= bar ? "" : "  MISSED");
    return ratio <= bar ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}

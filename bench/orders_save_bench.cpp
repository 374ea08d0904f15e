// Saving an order of 200 lines: the purchase screen's Save against bare libcurl that sends the same
// 201 requests on one kept connection, and 201 bare SQLite commits of the same rows into a file of
// the same kind. Both talk to one server, turn by turn.

#include <curl/curl.h>
#include <sqlite3.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "orders/documents/FrmGOHU_JH.h"
#include "resources/resources.h"
#include "support/ScriptedServer.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

constexpr int lines = 200;
constexpr int rounds = 25;
constexpr double bar = 1.3;

class Bare {
 public:
  explicit Bare(const QString& path) : curl_(curl_easy_init()) {
    if (sqlite3_open_v2(path.toUtf8().constData(), &file_,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
      throw std::runtime_error("cannot open");
    }
    exec("PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA");
    curl_easy_setopt(curl_, CURLOPT_PROXY, "");
    curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, &Bare::take);
    curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &answer_);
  }
  ~Bare() {
    for (auto* statement : {header_, line_}) sqlite3_finalize(statement);
    sqlite3_close(file_);
    curl_easy_cleanup(curl_);
  }
  Bare(const Bare&) = delete;
  Bare& operator=(const Bare&) = delete;

  void exec(const QByteArray& sql) {
    if (sqlite3_exec(file_, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file_));
    }
  }
  void prepare() {
    header_ = statement(
        "UPDATE GOHU SET gosh_id=7,gosh='seller',kehu_id=25,kehu='buyer',gohu_no='G2003115-7',"
        "ghrq='2003-01-15 00:00:00',fhrq='2003-01-20 00:00:00',jhhs=0,xshs=0,sh=0,fh=0,"
        "fhfs='express',SHLI=35,JINE=612.5,ZHKO=62.5,YNSH=550,feyo='5.5',HEJI=555.5,SHER=72.2+?2 "
        "WHERE R_ID=88 AND ?1=?1");
    line_ = statement(
        "UPDATE GOKU SET R_ID=88,GOHU_ID=1,XIMU='a book of a usual length',XIMU_BH='B1',SHLI=25,"
        "JIGE=12.5,JINE=312.5,ZHKO=0.8,YNSH=250,BAXI=2,LING=1+?2,GESH='12',XIMU_NO='7-01',"
        "LEBI='books' WHERE R_ID=88 AND XIMU_ID=?1");
  }
  void get(const QByteArray& url) {
    answer_.clear();
    curl_easy_setopt(curl_, CURLOPT_URL, url.constData());
    if (curl_easy_perform(curl_) != CURLE_OK || answer_.isEmpty()) {
      throw std::runtime_error("a request failed");
    }
  }
  void keep(int line, int round) {
    sqlite3_stmt* update = line == 0 ? header_ : line_;
    sqlite3_bind_int(update, 1, 1000 + line);
    sqlite3_bind_int(update, 2, round);
    if (sqlite3_step(update) != SQLITE_DONE || sqlite3_changes(file_) != 1) {
      throw std::runtime_error("a row was not kept");
    }
    sqlite3_reset(update);
  }

 private:
  static size_t take(char* data, size_t size, size_t count, void* answer) {
    static_cast<QByteArray*>(answer)->append(data, static_cast<qsizetype>(size * count));
    return size * count;
  }
  sqlite3_stmt* statement(const char* sql) {
    sqlite3_stmt* made = nullptr;
    if (sqlite3_prepare_v2(file_, sql, -1, &made, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(file_));
    }
    return made;
  }

  CURL* curl_;
  sqlite3* file_ = nullptr;
  sqlite3_stmt* header_ = nullptr;
  sqlite3_stmt* line_ = nullptr;
  QByteArray answer_;
};

void makeStore(const QString& path) {
  QFile schema(QStringLiteral(QINGHE_SCHEMA));
  if (!schema.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the schema");
  Bare(path).exec(schema.readAll());
}

QList<QStringList> orderLines() {
  QList<QStringList> rows;
  for (int line = 1; line <= lines; ++line) {
    rows.append({QString::number(400 + line), QString::number(1000 + line),
                 u"一本普通长度的书名 %1"_s.arg(line), u"B1"_s, u"25"_s, u"12.5"_s, u"312.5"_s,
                 u"0.8"_s, u"250"_s, u"2"_s, u"1"_s, u"八折"_s, u"12"_s, u"7-01"_s, u"教材"_s});
  }
  return rows;
}

/// The portal: order 88 with its lines; a save is answered with an id.
ScriptedServer::Reply answer(const QByteArray& request) {
  static const QByteArray header = ScriptedServer::ok(ScriptedServer::table(
      {{u"88"_s, u"G2003115-7"_s, u"2003-1-15"_s, u"7"_s, u"学苑书店"_s, u"25"_s, u"青禾书店"_s,
        u"5.5"_s, u"2003-1-20"_s, u"False"_s, u"False"_s, u"False"_s, u"False"_s, u"快件"_s}}));
  static const QByteArray rows = ScriptedServer::ok(ScriptedServer::table(orderLines()));
  static const QByteArray saved = ScriptedServer::ok(ScriptedServer::table({{u"88"_s}}));
  if (request.contains("STABLE=%47%4F%48%55&")) return {.bytes = header};
  if (request.contains("STABLE=%47%4F%4B%55&")) return {.bytes = rows};
  return {.bytes = saved};
}

template <class Work>
double secondsOf(const Work& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

void setUp(AppState& state, const QString& directory, const ScriptedServer& server) {
  state.programDirectory = directory;
  state.gWebServer = u"HTTP://"_s + server.host() + u'/';
  state.gUnicode = 2;
  state.inetQuotes.AccessType = 1;
  state.gAccessType = 2;  // no look at the machine's links
  state.gQiyeId = 25;
  state.gUserName = u"青禾书店"_s;
  state.gCurrentOrderId = 88;
}

int compare() {
  const QTemporaryDir folder(QStringLiteral("orders_bench_XXXXXX"));
  makeStore(folder.filePath(u"DATA.MDB"_s));
  const QString bareFile = folder.filePath(u"bare.MDB"_s);
  makeStore(bareFile);
  ScriptedServer server;
  server.setHandler(answer);
  AppState state;
  setUp(state, folder.path(), server);
  auto& screen = defaultInstance<FrmGOHU_JH>();
  QAction* save = screen.Toolbar1->button(u"Save"_s);
  server.clear();
  save->trigger();  // now the local rows are there

  QList<QByteArray> urls;
  for (const QByteArray& target : server.requestTargets()) {
    urls.append("http://" + server.host().toLatin1() + target);
  }
  if (urls.size() != lines + 1) throw std::runtime_error("not the requests of a save");
  Bare bare(bareFile);
  bare.exec("INSERT INTO GOHU (id,R_ID) VALUES (1,88)");
  for (int line = 1; line <= lines; ++line) {
    bare.exec("INSERT INTO GOKU (R_ID,XIMU_ID) VALUES (88," + QByteArray::number(1000 + line) +
              ")");
  }
  bare.prepare();

  std::vector<double> ours;
  std::vector<double> bareTimes;
  for (int round = 0; round < rounds; ++round) {
    bareTimes.push_back(secondsOf([&] {
      for (const QByteArray& url : urls) bare.get(url);
      for (int line = 0; line <= lines; ++line) bare.keep(line, round);
    }));
    // A changed quantity a round, so that each row is another one than before.
    for (int row = 0; row < screen.ListView1->itemCount(); ++row) {
      screen.ListView1->itemAt(row)->setSubItem(LineLoose, QString::number(round));
    }
    screen.StatusBar1->setText({});
    ours.push_back(secondsOf([&] { save->trigger(); }));
    if (screen.StatusBar1->text().isEmpty()) throw std::runtime_error("not saved");
    server.clear();
  }
  // The quickest round of each: what else runs on the machine only ever adds.
  const double own = std::ranges::min(ours);
  const double other = std::ranges::min(bareTimes);
  std::printf("an order of %d lines saved in %.1f ms, bare in %.1f ms: ratio %.2f (bar %.2f)%s\n",
              lines, own * 1e3, other * 1e3, own / other, bar,
              own / other <= bar ? "" : "  MISSED");
  return own / other <= bar ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_LOGGING_RULES", "default.warning=false");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  initResources();
  try {
    return compare();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}

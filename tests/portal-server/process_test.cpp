#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <deque>
#include <thread>
#include <vector>

#include "SqliteStore.h"
#include "WireClient.h"
#include "column_value.h"
#include "support/PortalProcess.h"

using namespace Qt::StringLiterals;
using namespace qinghe::portal_server;

namespace {

unsigned short portOf(const PortalProcess& portal) {
  return portal.host().section(u':', 1).toUShort();
}

AnswerText login(const PortalProcess& portal) {
  return WireClient(portOf(portal))
      .get("/_vti_login/_vti_login2.asp?" + field("USER_NO", "1001") + "&" +
           field("USER_PASS", "123456"))
      .text();
}

std::string addTarget(const std::string& name) {
  return "/_vti_product/_vti_add.asp?stable=ximu&" + field("stother", "id=0 and qiye_id=1") +
         "&QIYE_ID=1&" + field("XIMU", name);
}

// Adds rows one after the other until the server is gone; the ids that were confirmed.
std::vector<std::string> addUntilGone(WireClient& client, std::atomic<int>& confirmed) {
  std::vector<std::string> ids;
  for (;;) {
    const AnswerText answer =
        client.get(addTarget("第" + std::to_string(ids.size()) + "种")).text();
    if (answer.rows.empty()) return ids;
    ids.push_back(answer.firstCell());
    ++confirmed;
  }
}

// Starts clients that save without a pause, ends the server in the middle of it, and tells which
// rows they believe to be saved.
template <typename End>
std::vector<std::string> savedAround(const PortalProcess& portal, End end) {
  std::atomic<int> confirmed = 0;
  std::vector<std::vector<std::string>> saved(4);
  std::deque<WireClient> lines;
  std::vector<std::thread> clients;
  for (auto& ids : saved) {
    // Here, as a thread that is late may find nobody to connect to any more.
    WireClient& line = lines.emplace_back(portOf(portal));
    clients.emplace_back([&] { ids = addUntilGone(line, confirmed); });
  }
  const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(5);
  while (confirmed < 100 && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  end();
  for (std::thread& client : clients) client.join();
  std::vector<std::string> all;
  for (const auto& ids : saved) all.insert(all.end(), ids.begin(), ids.end());
  return all;
}

void expectAllStored(const PortalProcess& portal, const std::vector<std::string>& ids) {
  SqliteStore store(portal.databasePath().toStdString());
  EXPECT_GE(ids.size(), 100U);
  for (const std::string& id : ids) {
    const auto row = store.reader().byId(storedTable("ximu"), std::stoll(id));
    ASSERT_TRUE(row) << id;
    EXPECT_EQ(row->integer("qiye_id"), 1);
    EXPECT_NE(row->text("ximu"), "");
  }
}

int runProgram(const QStringList& arguments, QByteArray& output) {
  QProcess program;
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.start(QStringLiteral(QINGHE_PORTAL_PROGRAM), arguments);
  EXPECT_TRUE(program.waitForFinished(120'000));
  output = program.readAll();
  return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
}

}  // namespace

TEST(PortalProgram, TellsWhereItListensAndServesTheDemo) {
  PortalProcess portal;
  ASSERT_TRUE(portal.isRunning());
  EXPECT_NE(portOf(portal), 0);
  EXPECT_EQ(login(portal).rows.at(0),
            (std::vector<std::string>{"1", "1001", "青禾书店", "1", "3", "图书", "2"}));
}

TEST(PortalProgram, StopsCleanlyOnItsSignalAndComesBackOnTheSamePlace) {
  PortalProcess portal;
  const QString host = portal.host();
  login(portal);
  WireClient open(portOf(portal));
  open.get("/");
  portal.stop();
  EXPECT_TRUE(portal.stoppedCleanly());
  EXPECT_NE(portal.log().indexOf(u"stopped"_s), -1);
  portal.start();
  EXPECT_EQ(portal.host(), host);
  // Who was logged in still is: the client does not log in again by itself.
  EXPECT_EQ(WireClient(portOf(portal)).get(addTarget("后来")).text().rows.size(), 1U);
}

TEST(PortalProgram, ASecondStartDoesNotFillTheDemoAgain) {
  PortalProcess portal;
  portal.stop();
  portal.start();
  portal.stop();
  SqliteStore store(portal.databasePath().toStdString());
  EXPECT_EQ(store.reader().count(storedTable("ximu"), {}), 419);
}

TEST(PortalProgram, NothingConfirmedIsLostWhenItStops) {
  PortalProcess portal;
  login(portal);
  const auto ids = savedAround(portal, [&] { portal.stop(); });
  EXPECT_TRUE(portal.stoppedCleanly());
  expectAllStored(portal, ids);
}

TEST(PortalProgram, NothingConfirmedIsLostWhenItIsKilled) {
  PortalProcess portal;
  login(portal);
  const auto ids = savedAround(portal, [&] { portal.kill(); });
  expectAllStored(portal, ids);
  portal.start();
  EXPECT_EQ(login(portal).firstCell(), "1");
}

TEST(PortalProgram, KeepsMessagesAsLongAsItsOperatorSays) {
  PortalProcess portal({u"--keep-messages"_s, u"20"_s});
  login(portal);
  portal.stop();
  {
    SqliteStore store(portal.databasePath().toStdString());
    const Table& messages = storedTable("xixi");
    store.transact([&](StoreWriter& writer) {
      for (const int days : {19, 21}) {
        const auto sent = std::chrono::system_clock::now() - std::chrono::days(days);
        writer.insert(messages, {assign(messages, "qyxx_id", std::int64_t{1}),
                                 assign(messages, "username", std::to_string(days)),
                                 assign(messages, "dtime", storedLocal(sent))});
      }
    });
  }
  portal.start();
  WireClient client(portOf(portal));
  const auto senders = [&] {
    return client.get("/_vti_product/_vti_detail_field_s.asp?STABLE=xixi&STRDATA=username,")
        .text()
        .column(0);
  };
  const auto contains = [](const std::vector<std::string>& all, const char* name) {
    return std::find(all.begin(), all.end(), name) != all.end();
  };
  // What is old leaves right after the start.
  const auto limit = std::chrono::steady_clock::now() + std::chrono::minutes(5);
  while (contains(senders(), "21") && std::chrono::steady_clock::now() < limit) {
    std::this_thread::yield();
  }
  EXPECT_FALSE(contains(senders(), "21"));
  EXPECT_TRUE(contains(senders(), "19"));
}

TEST(PortalProgram, ExplainsItsOptions) {
  QByteArray output;
  EXPECT_EQ(runProgram({u"--help"_s}, output), 0);
  for (const char* option : {"--listen", "--db", "--log", "--demo", "--keep-messages",
                             "--keep-logins", "--offline-after", "--relay-own-network"}) {
    EXPECT_TRUE(output.contains(option)) << option;
  }
}

TEST(PortalProgram, RefusesOptionsThatItDoesNotKnowOrCannotFollow) {
  const QStringList table[] = {
      {u"--nosuch"_s},
      {u"--listen"_s},
      {u"--keep-messages"_s, u"0"_s},
      {u"--keep-logins"_s, u"0"_s},
      {u"--keep-logins"_s, u"3651"_s},
      {u"--keep-messages"_s, u"never"_s},
      {u"--offline-after"_s, u"1441"_s},
      {u"--listen"_s, u"nowhere"_s},
      {u"--listen"_s, u"127.0.0.1:70000"_s},
      {u"--listen"_s, u"127.0.0.1:0"_s, u"--db"_s, u"/nonexistent/x/p.db"_s},
      {u"--listen"_s, u"127.0.0.1:0"_s, u"--db"_s, u":memory:"_s, u"--log"_s, u"/nonexistent/l"_s},
  };
  for (const QStringList& arguments : table) {
    QByteArray output;
    EXPECT_GT(runProgram(arguments, output), 0) << output.constData();
    EXPECT_TRUE(output.contains("qinghe-portal:")) << output.constData();
  }
}

TEST(PortalProgram, ATakenPortAndABrokenDatabaseAreToldInWords) {
  PortalProcess portal;
  QTemporaryDir folder;
  const QString broken = folder.filePath(u"broken.db"_s);
  QFile file(broken);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("this is a letter and no database, however long one looks at it\n");
  file.close();
  const struct {
    QStringList arguments;
    QByteArray words;
  } table[] = {
      {{u"--listen"_s, portal.host(), u"--db"_s, folder.filePath(u"x.db"_s)},
       "qinghe-portal: cannot listen on " + portal.host().toLatin1() +
           ": Address already in use\n"},
      {{u"--listen"_s, u"127.0.0.1:0"_s, u"--db"_s, broken}, "not a database"},
      {{u"--listen"_s, u"127.0.0.1:0"_s, u"--db"_s, folder.path()}, "cannot open"},
  };
  for (const auto& row : table) {
    QByteArray output;
    EXPECT_EQ(runProgram(row.arguments, output), 1);
    EXPECT_TRUE(output.contains(row.words)) << output.constData();
  }
  EXPECT_EQ(login(portal).firstCell(), "1");
}

TEST(PortalProgram, ServesWithoutALogWhenTheDiskIsFull) {
  PortalProcess portal({u"--log"_s, u"/dev/full"_s});
  ASSERT_TRUE(portal.isRunning());
  for (int i = 0; i < 50; ++i) EXPECT_EQ(login(portal).firstCell(), "1");
  portal.stop();
  EXPECT_TRUE(portal.stoppedCleanly());
}

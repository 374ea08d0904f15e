#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "support/ScriptedServer.h"
#include "support/TempStore.h"

using namespace Qt::StringLiterals;

namespace {

/// The real program, started through a link in a program folder of its own.
class Client {
 public:
  explicit Client(const QString& host) {
    QFile::link(QStringLiteral(QINGHE_CLIENT_PROGRAM), link());
    QFile::setPermissions(runtime.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QDir().mkpath(config.filePath(u"qinghe"_s));
    QFile settings(config.filePath(u"qinghe/qinghe.ini"_s));
    if (!settings.open(QIODevice::WriteOnly)) throw std::runtime_error("no settings");
    settings.write("[config]\nWebServer=" + host.toUtf8() + "\nAccessType=2\nUnicode=2\n");
  }

  QString link() const { return store.directory() + u"/qinghe"_s; }

  void start(QProcess& process) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CONFIG_HOME"_s, config.path());
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(link(), QStringList());
    ASSERT_TRUE(process.waitForStarted());
  }

  /// Whether the program comes to hold the place that only one can have.
  bool comesIn(const QProcess& process) const {
    return QTest::qWaitFor([&] { return owner() == process.processId(); }, 60'000);
  }

  TempStore store;
  QTemporaryDir config;
  QTemporaryDir runtime;

 private:
  qint64 owner() const {
    qint64 id = 0;
    QString host;
    QString program;
    for (const QString& name : QDir(runtime.path()).entryList({u"*.lock"_s}, QDir::Files)) {
      QLockFile(runtime.filePath(name)).getLockInfo(&id, &host, &program);
    }
    return id;
  }
};

TEST(ClientProcess, ASecondStartEndsSilentlyAndDoesNotDisturbTheFirst) {
  ScriptedServer portal;
  const Client client(portal.host());
  QProcess first;
  client.start(first);
  ASSERT_TRUE(client.comesIn(first));
  QProcess second;
  client.start(second);
  ASSERT_TRUE(second.waitForFinished(60'000));
  EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(second.exitCode(), 0);
  EXPECT_FALSE(first.waitForFinished(500)) << "the first goes on";
  first.kill();
  first.waitForFinished();
}

TEST(ClientProcess, AfterACrashTheNextStartRuns) {
  ScriptedServer portal;
  const Client client(portal.host());
  QProcess first;
  client.start(first);
  ASSERT_TRUE(client.comesIn(first));
  first.kill();
  ASSERT_TRUE(first.waitForFinished());
  QProcess second;
  client.start(second);
  EXPECT_TRUE(client.comesIn(second)) << "the place of a dead program is free";
  EXPECT_FALSE(second.waitForFinished(500));
  second.kill();
  second.waitForFinished();
}

TEST(ClientProcess, TheWebEnginesLibraryIsNotLoaded) {
  ScriptedServer portal;
  const Client client(portal.host());
  QProcess process;
  client.start(process);
  ASSERT_FALSE(process.waitForFinished(1500));
  QFile maps(u"/proc/%1/maps"_s.arg(process.processId()));
  ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
  EXPECT_FALSE(maps.readAll().contains("WebEngine"));
  process.kill();
  process.waitForFinished();
}

}  // namespace

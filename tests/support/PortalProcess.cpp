#include "PortalProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr int startLimit = 60'000;
constexpr int portLimit = 120'000;
constexpr int stopLimit = 60'000;
constexpr int busyLimit = 30'000;

// The line that the program prints once it takes requests, without its line end.
QString firstLine(QProcess& process) {
  QElapsedTimer clock;
  clock.start();
  while (!process.canReadLine() && clock.elapsed() < startLimit) {
    if (process.state() == QProcess::NotRunning) break;
    process.waitForReadyRead(1000);
  }
  return QString::fromUtf8(process.readLine()).trimmed();
}

}  // namespace

PortalProcess::PortalProcess(const QStringList& extraArguments)
    : arguments_(extraArguments), host_(u"127.0.0.1:0"_s) {
  start();
}

PortalProcess::~PortalProcess() {
  stop();
}

bool PortalProcess::isRunning() const {
  return process_.state() == QProcess::Running;
}

QString PortalProcess::databasePath() const {
  return folder_.filePath(u"portal.db"_s);
}

SQLite::Database PortalProcess::database(int flags) const {
  return {databasePath().toStdString(), flags, busyLimit};
}

QString PortalProcess::logPath() const {
  return folder_.filePath(u"portal.log"_s);
}

QString PortalProcess::log() const {
  QFile file(logPath());
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void PortalProcess::stop() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  if (!process_.waitForFinished(stopLimit)) kill();
}

void PortalProcess::kill() {
  process_.kill();
  process_.waitForFinished(stopLimit);
}

void PortalProcess::start() {
  if (isRunning()) return;
  QElapsedTimer clock;
  clock.start();
  QString line = startOnce();
  // Its port of before may be some other program's for a moment.
  while (!isRunning() && !host_.endsWith(u":0"_s) && clock.elapsed() < portLimit) {
    line = startOnce();
  }
  const QString words = u"listening on "_s;
  if (line.startsWith(words)) {
    host_ = line.mid(words.size());
  } else {
    qCritical("the portal server did not start: %s", qPrintable(line));
    kill();
  }
}

QString PortalProcess::startOnce() {
  // Its messages are not read again, so they must not fill a pipe.
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QStringLiteral(QINGHE_PORTAL_PROGRAM),
                 QStringList{u"--listen"_s, host_, u"--db"_s, databasePath(), u"--log"_s, logPath(),
                             u"--demo"_s} +
                     arguments_);
  return firstLine(process_);
}

bool PortalProcess::stoppedCleanly() const {
  return process_.state() == QProcess::NotRunning &&
         process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

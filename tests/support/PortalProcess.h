#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A real `qinghe-portal` with demo data on a free port of 127.0.0.1, ended with the object.
class PortalProcess {
 public:
  /// Starts it and waits until it takes requests. With extra arguments these come behind ours.
  explicit PortalProcess(const QStringList& extraArguments = {});
  ~PortalProcess();
  PortalProcess(const PortalProcess&) = delete;
  PortalProcess& operator=(const PortalProcess&) = delete;

  bool isRunning() const;
  QString host() const { return host_; }  ///< "127.0.0.1:port"
  QString databasePath() const;
  /// Its file as somebody else opens it; a change waits until the server has written its own.
  SQLite::Database database(int flags = SQLite::OPEN_READONLY) const;
  QString log() const;  ///< what it has logged so far; lines come within a moment
  void stop();          ///< ends it with the signal an operator uses and waits
  void kill();          ///< ends it without giving it a chance to finish anything
  void start();         ///< again, on the same database and port
  /// Whether the last stop was its own, with exit code 0.
  bool stoppedCleanly() const;

 private:
  QString logPath() const;
  QString startOnce();  ///< the line that it prints once it takes requests

  QTemporaryDir folder_;
  QProcess process_;
  QStringList arguments_;
  QString host_;
};

#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A real `qinghe-portal` with demo data on a free port of 127.0.0.1, ended with the object.
class PortalProcess {
 public:
  explicit PortalProcess(const QStringList& extraArguments = {});
  ~PortalProcess();

  bool isRunning() const;
  QString host() const { return host_; }  ///< "127.0.0.1:port"
  QString databasePath() const;
  void stop();   ///< ends it with the signal an operator uses and waits
  void start();  ///< again, on the same database and port

 private:
  QTemporaryDir folder_;
  QProcess process_;
  QStringList arguments_;
  QString host_;
};

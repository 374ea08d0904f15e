#include "shell/SingleInstance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QStandardPaths>
#include <QTextStream>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

QString lockPath(const QString& programDirectory) {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (folder.isEmpty()) folder = QDir::tempPath();
  const QByteArray hash = QCryptographicHash::hash(QDir::cleanPath(programDirectory).toUtf8(),
                                                   QCryptographicHash::Sha256);
  return folder + u"/qinghe-"_s + QString::fromLatin1(hash.toHex().left(32)) + u".lock"_s;
}

// A lock that names no owner was left behind half written.
bool namesAnOwner(const QLockFile& lock) {
  qint64 process = 0;
  QString host;
  QString program;
  return lock.getLockInfo(&process, &host, &program) && process > 0;
}

}  // namespace

SingleInstance::SingleInstance(const QString& programDirectory)
    : lock_(std::make_unique<QLockFile>(lockPath(programDirectory))) {
  // Age says nothing: a program runs for days. A dead owner is found out by its process.
  lock_->setStaleLockTime(0);
  first_ = lock_->tryLock(0);
  if (!first_ && lock_->error() == QLockFile::LockFailedError && !namesAnOwner(*lock_) &&
      lock_->removeStaleLockFile())
    first_ = lock_->tryLock(0);
  // Where no lock can be made, starting twice is the lesser evil than not starting at all.
  if (lock_->error() == QLockFile::PermissionError || lock_->error() == QLockFile::UnknownError)
    first_ = true;
}

}  // namespace qinghe

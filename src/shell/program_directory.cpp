#include "shell/program_directory.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace qinghe {

using namespace Qt::StringLiterals;

QString programDirectoryOf(const QString& argv0) {
  QString path = argv0;
  if (!path.contains(u'/')) path = QStandardPaths::findExecutable(path);
  if (path.isEmpty())
    return QCoreApplication::instance() != nullptr ? QCoreApplication::applicationDirPath()
                                                   : QDir::currentPath();
  if (!path.startsWith(u'/')) path.prepend(QDir::currentPath() + u'/');
  const QString directory = path.left(std::max<qsizetype>(path.lastIndexOf(u'/'), 1));
  // Behind a link, ".." leads elsewhere than the text says; only the system may resolve it.
  return directory.contains(u"/.."_s) ? directory : QDir::cleanPath(directory);
}

}  // namespace qinghe

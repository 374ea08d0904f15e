#include "browser/BrowserEngine.h"

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QPluginLoader>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// Whether this user may make a namespace of users, which is what the engine's sandbox stands on.
bool canBeSandboxed() {
  if (::geteuid() == 0) return false;
  const pid_t child = ::fork();
  if (child == 0) ::_exit(::unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
  int status = 0;
  return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
         WEXITSTATUS(status) == 0;
}

// Where its sandbox cannot be had, the engine ends the whole program.
bool mayRunHere() {
  return qEnvironmentVariableIntValue("QTWEBENGINE_DISABLE_SANDBOX") == 1 || canBeSandboxed();
}

}  // namespace

BrowserEngine* loadBrowserEngine() {
  if (!mayRunHere()) return nullptr;
  const QDir folder(QCoreApplication::applicationDirPath());
  // Qt keeps a loaded plugin and its one object, so asking again costs nothing.
  QPluginLoader loader(folder.filePath(u"qinghe-browser-engine.so"_s));
  return qobject_cast<BrowserEngine*>(loader.instance());
}

}  // namespace qinghe

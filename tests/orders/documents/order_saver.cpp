// Opens purchase order 88 of company 25 in a process of its own and saves it once. With a number
// above 0 the process kills itself at that write, sync or removal of a file of its database, the
// way a power cut would. Arguments: program directory, portal, that number.

#include <sqlite3.h>

#include <QApplication>
#include <csignal>

#include "orders/documents/FrmGOHU_JH.h"
#include "resources/resources.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

int stepsLeft = 0;  // 0: for ever

void step() {
  if (stepsLeft > 0 && --stepsLeft == 0) std::raise(SIGKILL);
}

sqlite3_vfs* disk = nullptr;
sqlite3_io_methods files;
sqlite3_io_methods stoppingFiles;

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  const int result = disk->xOpen(disk, name, file, flags, outFlags);
  if (file->pMethods == nullptr) return result;
  files = *file->pMethods;  // all files of this disk have the same
  stoppingFiles = files;
  stoppingFiles.xWrite = [](sqlite3_file* at, const void* bytes, int size, sqlite3_int64 offset) {
    step();
    return files.xWrite(at, bytes, size, offset);
  };
  stoppingFiles.xSync = [](sqlite3_file* at, int how) {
    step();
    return files.xSync(at, how);
  };
  stoppingFiles.xTruncate = [](sqlite3_file* at, sqlite3_int64 size) {
    step();
    return files.xTruncate(at, size);
  };
  file->pMethods = &stoppingFiles;
  return result;
}

int removeFile(sqlite3_vfs*, const char* name, int sync) {
  step();
  return disk->xDelete(disk, name, sync);
}

void stopAt(int count) {
  stepsLeft = count;
  disk = sqlite3_vfs_find(nullptr);
  static sqlite3_vfs stopping = *disk;
  stopping.zName = "stopping";
  stopping.xOpen = openFile;
  stopping.xDelete = removeFile;
  sqlite3_vfs_register(&stopping, 1);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  initResources();
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 4) return 2;
  stopAt(arguments[3].toInt());
  AppState state;
  state.programDirectory = arguments[1];
  state.gWebServer = u"HTTP://"_s + arguments[2] + u'/';
  state.gUnicode = 2;
  state.inetQuotes.AccessType = 1;
  state.gAccessType = 2;  // always online
  state.gQiyeId = 25;
  state.gUserName = u"青禾书店"_s;
  state.gCurrentOrderId = 88;
  auto& screen = defaultInstance<FrmGOHU_JH>();
  screen.Toolbar1->button(u"Save"_s)->trigger();
  return screen.StatusBar1->text() == u"订单保存成功！！！"_s ? 0 : 1;
}

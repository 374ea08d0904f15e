#include "shell/main/client.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include "forms/Icons.h"
#include "resources/resources.h"
#include "shell/AppState.h"
#include "shell/SingleInstance.h"
#include "shell/frmSplash.h"
#include "shell/main/MDIFrmMAIN.h"
#include "shell/program_directory.h"

namespace qinghe {

using namespace Qt::StringLiterals;

void prepareApplication() {
  // Web pages are shown by a plugin that is loaded late; it needs this from the first moment.
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  QCoreApplication::setApplicationName(u"qinghe"_s);
  QGuiApplication::setDesktopFileName(u"qinghe"_s);
}

int runClient(QApplication& /*application*/, const char* startedBy,
              const std::function<void(MDIFrmMAIN&)>& onStarted) {
  initResources();
  QApplication::setQuitOnLastWindowClosed(false);
  QTranslator words;
  if (words.load(u"qtbase_zh_CN"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&words);
  }
  AppState state;
  state.programDirectory = programDirectoryOf(QString::fromLocal8Bit(startedBy));
  const SingleInstance instance(state.programDirectory);
  if (!instance.isFirst()) return 0;

  QApplication::setWindowIcon(iconFor(u"qinghe"_s));
  defaultInstance<frmSplash>().showForm();
  MDIFrmMAIN frame;
  frame.load();
  if (onStarted) onStarted(frame);
  return QApplication::exec();
}

}  // namespace qinghe

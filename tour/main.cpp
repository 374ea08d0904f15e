#include <QApplication>
#include <QDir>
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "acts.h"
#include "hands.h"
#include "shell/main/client.h"

namespace {

void listActs() {
  for (const qinghe::Act& act : qinghe::acts()) {
    std::printf("%s %s\n", qPrintable(act.name), qPrintable(act.desk));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--acts") == 0) {
    listActs();
    return 0;
  }
  const auto& acts = qinghe::acts();
  const auto act = std::find_if(acts.begin(), acts.end(), [&](const qinghe::Act& one) {
    return argc >= 3 && one.name == QString::fromLocal8Bit(argv[2]);
  });
  if (act == acts.end()) {
    std::fputs("usage: qinghe-tour FOLDER ACT [--no-pictures]\n       qinghe-tour --acts\n",
               stderr);
    return 2;
  }

  qinghe::prepareApplication();
  QApplication application(argc, argv);
  const QString number = QString::number(act - acts.begin() + 1).rightJustified(2, u'0');
  const QString name = number + u'-' + act->name + u'-';
  const QString files = QDir(QString::fromLocal8Bit(argv[1])).filePath(name);
  QList<qinghe::TourStep> steps = qinghe::startSteps(files);
  if (!act->password.isEmpty()) steps += qinghe::logInSteps(act->desk, act->password);
  qinghe::Tour tour(steps + act->steps(), files);
  tour.setTakesPictures(argc < 4 || std::strcmp(argv[3], "--no-pictures") != 0);
  const int code = qinghe::runClient(application, argv[0], [&tour](qinghe::MDIFrmMAIN& frame) {
    qinghe::keepPassingWindows(frame);
    tour.start();
  });
  return tour.isFailed() ? 1 : code;
}

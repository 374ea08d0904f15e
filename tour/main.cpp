#include <QApplication>
#include <cstdio>

#include "Tour.h"
#include "shell/main/client.h"

int main(int argc, char** argv) {
  qinghe::prepareApplication();
  QApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("usage: qinghe-tour FOLDER\n", stderr);
    return 2;
  }
  const QString folder = QString::fromLocal8Bit(argv[1]);
  qinghe::Tour tour(qinghe::tourSteps(folder), folder);
  const int code =
      qinghe::runClient(application, argv[0], [&tour](qinghe::MDIFrmMAIN&) { tour.start(); });
  return tour.isFailed() ? 1 : code;
}

#include <QApplication>

#include "FirstPaint.h"
#include "shell/main/client.h"

int main(int argc, char** argv) {
  qinghe::prepareApplication();
  QApplication application(argc, argv);
  FirstPaint watch;
  application.installEventFilter(&watch);
  return qinghe::runClient(application, argv[0]);
}

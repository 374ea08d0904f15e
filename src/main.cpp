#include <QApplication>

#include "shell/main/client.h"

int main(int argc, char** argv) {
  qinghe::prepareApplication();
  QApplication application(argc, argv);
  return qinghe::runClient(application, argv[0]);
}

#include <gtest/gtest.h>

#include <QApplication>

#include "resources/resources.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication::setAttribute(Qt::AA_ShareOpenGLContexts);  // as the program does
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  qinghe::initResources();
  return RUN_ALL_TESTS();
}

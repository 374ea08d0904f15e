#include <gtest/gtest.h>

#include <QApplication>

#include "resources/resources.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  qinghe::initResources();
  return RUN_ALL_TESTS();
}

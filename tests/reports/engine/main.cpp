#include <gtest/gtest.h>

#include <QGuiApplication>

// Fonts need a windowing system, if only the offscreen one; widgets are not needed here.
int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}

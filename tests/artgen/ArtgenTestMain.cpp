#include <QGuiApplication>

#include <gtest/gtest.h>

// Reading GIF pictures goes through Qt's image plugins; an offscreen GUI
// application makes them available without a display.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

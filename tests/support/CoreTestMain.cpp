// The main program of tests that need an event loop and Qt's plugins, but no windows.
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char* argv[]) {
  const QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

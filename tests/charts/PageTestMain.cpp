// Runs the tests of the page; fonts need an application behind them.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}

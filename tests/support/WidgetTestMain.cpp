// The main program of tests that drive windows or need fonts.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char* argv[]) {
  const QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

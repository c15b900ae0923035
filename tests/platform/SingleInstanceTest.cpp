#include "platform/system/SingleInstance.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <memory>

using namespace Qt::StringLiterals;

TEST(SingleInstance, TheSecondCopyKnowsOfTheFirstUntilThatEnds) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"kestrel.lock"_s);
  auto first = std::make_unique<SingleInstance>(file);
  EXPECT_FALSE(first->PrevInstance());
  EXPECT_TRUE(SingleInstance(file).PrevInstance());
  EXPECT_TRUE(SingleInstance(file).PrevInstance()) << "a refused copy takes nothing away";
  first.reset();
  EXPECT_FALSE(SingleInstance(file).PrevInstance());
}

TEST(SingleInstance, WhatACrashedCopyLeftDoesNotCount) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"kestrel.lock"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("999999999\nkestrel\n\n");
  file.close();
  EXPECT_FALSE(SingleInstance(file.fileName()).PrevInstance());
  EXPECT_FALSE(SingleInstance(folder.filePath(u"no/such/folder.lock"_s)).PrevInstance());
}

#include "platform/system/SingleInstance.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <memory>
#include <thread>

#include "tests/support/Files.h"

using namespace Qt::StringLiterals;

namespace {

class SingleInstanceTest : public testing::Test {
 protected:
  SingleInstanceTest() {
    for (const QString& name : {u"one"_s, u"two"_s, u"common"_s}) EXPECT_TRUE(QDir().mkpath(Path(name)));
  }
  QString Path(const QString& name) const { return folder.filePath(name); }
  SingleInstance::Folders In(const QString& session) const {
    return {session.isEmpty() ? session : Path(session), Path(u"common"_s)};
  }
  bool IsSecond(const QString& session) const { return SingleInstance(In(session)).PrevInstance(); }

  const QTemporaryDir folder;
};

// A copy without a session's folder once had a lock of its own, and so both started.
TEST_F(SingleInstanceTest, TheSecondCopyKnowsOfTheFirstUntilThatEnds) {
  for (const QString& session : {u"one"_s, QString()}) {
    auto first = std::make_unique<SingleInstance>(In(session));
    EXPECT_FALSE(first->PrevInstance());
    EXPECT_TRUE(IsSecond(u"one"_s));
    EXPECT_TRUE(IsSecond({})) << "a refused copy takes nothing away";
    first.reset();
    EXPECT_FALSE(IsSecond(u"one"_s));
    EXPECT_FALSE(IsSecond({}));
  }
  const SingleInstance one(In(u"one"_s));
  EXPECT_FALSE(IsSecond(u"two"_s)) << "sessions keep out of each other's way";
}

TEST_F(SingleInstanceTest, WhatACrashedCopyLeftDoesNotCount) {
  const uint user = QFileInfo(QDir::homePath()).ownerId();
  for (const QString& kind : {u"lock"_s, u"socket"_s})
    WriteFile(Path(u"common/kestrel-%1.%2"_s.arg(user).arg(kind)), "/nowhere");
  SingleInstance next(In({}));
  EXPECT_FALSE(next.PrevInstance());
  bool taken = false;
  next.Listen([&](const QByteArray&) { taken = true; });
  std::thread second([&] { EXPECT_TRUE(SingleInstance(In({})).HandOver("x")); });
  while (!taken) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  second.join();
  EXPECT_FALSE(SingleInstance({{}, Path(u"no such folder"_s)}).PrevInstance());
}

TEST_F(SingleInstanceTest, WhatTheSecondCopyHandsOverArrivesWhole) {
  SingleInstance first(In(u"one"_s));
  QByteArray taken;
  first.Listen([&](const QByteArray& message) { taken = message; });
  for (const QString& session : {u"one"_s, QString()}) {
    const QByteArray message = u"/plant/größe\0token"_s.toUtf8().repeated(300);
    bool answered = false;
    std::thread second([&] { answered = SingleInstance(In(session)).HandOver(message); });
    taken.clear();
    while (taken.isEmpty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    second.join();
    EXPECT_TRUE(answered);
    EXPECT_EQ(taken, message);
  }
}

TEST_F(SingleInstanceTest, ACopyThatDoesNotAnswerIsNotTakenForOneThatDid) {
  const SingleInstance hanging(In(u"one"_s));
  EXPECT_FALSE(SingleInstance(In(u"one"_s)).HandOver("x", 60));
}

}  // namespace

// Every database operation of a command fails once.
#include "tests/faults/Command.h"
#include "tests/support/FailEach.h"

namespace {

class FailingCallsTest : public CommandTest {
 protected:
  // The commands fail with one line and leave the rows. A backup that fails is a warning; the look-up of the
  // ID of a row that is written already has no say.
  void FailEachOf(const std::function<ProgramRun()>& command, const QString& values) {
    const auto before = DataRows(library);
    const QByteArray bytes = Read(library);
    QStringList operations;
    FailEach(command, [&](const ProgramRun& result, const QString& failed) {
      operations << failed;
      if (result.status == 0) {
        EXPECT_EQ(result.error.startsWith(u"kestrel: warning: No backup "_s),
                  failed == u"backup"_s || failed == u"open"_s);
        EXPECT_NE(failed, u"begin"_s);
        EXPECT_NE(failed, u"commit"_s);
        EXPECT_EQ(Values(library), values);
        Write(u"plant.kestrel"_s, bytes);
      } else {
        ExpectFailure(result, 3, {u"planned"_s});
        EXPECT_EQ(DataRows(library), before);
      }
    });
    for (const QString& operation : {u"open"_s, u"check"_s, u"backup"_s, u"begin"_s, u"commit"_s})
      EXPECT_TRUE(operations.contains(operation)) << operation.toStdString();
  }
};

TEST_F(FailingCallsTest, ImportAppendAndStatus) {
  const auto importTwo = [&] { return Import({}, "1\n2\n"); };
  FailEachOf(importTwo, u"1,2,"_s);
  ASSERT_EQ(importTwo().status, 0);
  FailEachOf([&] { return RunIn(u"append LIB --description Shaft 3"); }, u"1,2,3,"_s);
  FailEach([&] { return RunIn(u"status LIB"); },
           [&](const ProgramRun& result, const QString& failed) {
             if (failed.isEmpty())
               EXPECT_EQ(result.status, 0);
             else
               ExpectFailure(result, 3, {u"planned"_s});
           });
}

}  // namespace

// Every database operation of a command fails once.
#include "tests/faults/Command.h"
#include "tests/support/FailEach.h"

using namespace Qt::StringLiterals;

namespace {

class FailingCallsTest : public LibraryTest {
 protected:
  // The commands fail with one line and leave the rows. A backup that fails is a warning; the look-up of the
  // ID of a row that is written already has no say.
  void FailEachOf(const QStringList& words, const QString& values) {
    const auto before = DataRows(library);
    const QByteArray bytes = Read(library);
    QStringList operations;
    FailEach([&] { return RunCommand(words); },
             [&](const CommandResult& result, const QString& failed) {
               operations << failed;
               if (result.status == 0) {
                 EXPECT_EQ(result.error.startsWith(u"kestrel: warning: No backup "_s),
                           failed == u"backup"_s || failed == u"open"_s);
                 EXPECT_NE(failed, u"begin"_s);
                 EXPECT_NE(failed, u"commit"_s);
                 EXPECT_EQ(Values(library), values);
                 Write(library, bytes);
               } else {
                 result.ExpectRefusal({u"planned"_s});
                 EXPECT_EQ(DataRows(library), before);
               }
             });
    for (const QString& operation : {u"open"_s, u"check"_s, u"backup"_s, u"begin"_s, u"commit"_s})
      EXPECT_TRUE(operations.contains(operation)) << operation.toStdString();
  }
};

TEST_F(FailingCallsTest, ImportAppendAndStatus) {
  FailEachOf(ImportWords(u"A"_s, "1\n2\n"), u"1,2,"_s);
  ASSERT_EQ(RunCommand(ImportWords(u"A"_s, "1\n2\n")).status, 0);
  FailEachOf(AppendWords(u"A"_s, u"3"_s), u"1,2,3,"_s);
  const QStringList status{u"status"_s, library};
  FailEach([&] { return RunCommand(status); },
           [&](const CommandResult& result, const QString& failed) {
             if (failed.isEmpty())
               EXPECT_EQ(result.status, 0);
             else
               result.ExpectRefusal({u"planned"_s});
           });
}

}  // namespace

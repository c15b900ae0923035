// Watching a library, in a file and on a server.
#include "library/Library.h"
#include "tests/support/Program.h"
#include "tests/support/TestServer.h"

namespace {

// Whether the library is on a server.
class WatchTest : public ProgramTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    if (GetParam()) library = TestServer::NewDatabase();
    if (library.isEmpty()) GTEST_SKIP() << TestServer::missing;
    EXPECT_EQ(RunIn(u"new LIB").status, 0);
    for (const auto& name : {u"Shaft"_s, u"Bore"_s}) Add(name);
  }
  void Add(const QString& name) const {
    const ProgramRun run =
        Import(u"--usl 20 --lsl 0 --description \"%1\""_s.arg(name), "9\n10\n11\n10\n9\n10\n11\n10\n");
    ASSERT_EQ(run.status, 0) << run.error.toStdString();
  }
};

INSTANTIATE_TEST_SUITE_P(File, WatchTest, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Server, WatchTest, testing::Values(true));

TEST_P(WatchTest, TellsEachChangeOfState) {
  QProcess watch;
  watch.start(
      QStringLiteral(KESTREL_PROGRAM),
      {u"watch"_s, library, u"--exec"_s,
       u"yes | head -n 1 >/dev/null; echo \"$KESTREL_ID $KESTREL_DESCRIPTION, was $KESTREL_STATE_BEFORE\""_s});
  ASSERT_TRUE(watch.waitForStarted());
  QByteArray seen;  // since what was awaited last
  const auto await = [&](const QByteArray& text) {
    seen += watch.readAllStandardOutput();
    while (!seen.contains(text) && watch.waitForReadyRead(10'000)) seen += watch.readAllStandardOutput();
    EXPECT_TRUE(seen.contains(text)) << seen.constData();
    seen.remove(0, seen.indexOf(text) + text.size());
  };
  // A new data set is told as well: from then on the watch is at work.
  for (int i = 0; i < 50 && watch.bytesAvailable() == 0; ++i) {
    Add(u"New %1"_s.arg(i));
    watch.waitForReadyRead(200);
  }
  await("New");
  RunIn(u"append LIB --description Shaft 10");
  RunIn(u"append LIB --description Bore "_s + u"10.5 "_s.repeated(8));
  await("rule 4");
  await("2 Bore, was Ideal\n");
  RunIn(u"append LIB --description Bore 14");  // out of control as before, for another reason
  await("rule 1");
  await("2 Bore, was ");
  Library(library).Delete(2, QDateTime::currentDateTime());
  await("Bore\tdeleted");
  if (GetParam()) {
    TestServer::Restart();
    RunIn(u"append LIB --description Shaft 14");
    await("Shaft");
    watch.kill();
    return static_cast<void>(watch.waitForFinished());
  }
  // Another library in its place that cannot be opened at once; its name breaks no line.
  const QString other = Path(u"other"_s);
  ASSERT_EQ(RunIn(u"copy LIB @other").status, 0);
  RunSql(other, u"UPDATE DBRevision SET Revision = '1.0'"_s);
  ASSERT_TRUE(QFile::rename(library, library + u".old"_s) && QFile::rename(other, library));
  watch.setReadChannel(QProcess::StandardError);
  QByteArray complaint;
  while (!complaint.contains("1.0") && watch.waitForReadyRead(10'000))
    complaint += watch.readAllStandardError();
  EXPECT_TRUE(complaint.contains("1.0")) << complaint.constData();
  watch.setReadChannel(QProcess::StandardOutput);
  RunSql(library,
         u"UPDATE StatData SET Description = 'Bolt' || char(10) || 'x', \"Values\" = '10,' WHERE ID = 1"_s);
  RunSql(library, u"UPDATE DBRevision SET Revision = '2.0'"_s);
  await("\tBolt x\t");
  watch.kill();
  watch.waitForFinished();
  EXPECT_FALSE(watch.readAllStandardError().contains("pipe"))
      << "a closed one ends the commands that it runs";
}

}  // namespace

// Copying, restoring and watching a library; and what a command that has written must not call
// a failure.
#include "library/Library.h"
#include "tests/support/Program.h"
#include "tests/support/TestServer.h"

namespace {

class KeepingTest : public ProgramTest {
 protected:
  void SetUp() override {
    EXPECT_EQ(RunIn(u"new LIB").status, 0);
    Add(u"Shaft"_s);
    Add(u"Bore"_s);
  }
  void TearDown() override { ExpectTranscript(); }

  void Add(const QString& name) const {
    const ProgramRun run =
        Import(u"--usl 20 --lsl 0 --description \"%1\""_s.arg(name), "9\n10\n11\n10\n9\n10\n11\n10\n");
    ASSERT_EQ(run.status, 0) << run.error.toStdString();
  }
  void Delete(int id) const { Library(library).Delete(id, QDateTime::currentDateTime()); }
  // Runs a command line of the shell, in which KESTREL stands for the program.
  int Shell(QString line) const {
    QProcess process;
    process.start(u"/bin/sh"_s, {u"-c"_s, line.replace(u"KESTREL"_s, QStringLiteral(KESTREL_PROGRAM))});
    EXPECT_TRUE(process.waitForFinished(20'000));
    error = QString::fromUtf8(process.readAllStandardError());
    return process.exitCode();
  }

  mutable QString error;
};

// Whether the library is on a server.
class AnyKeepingTest : public KeepingTest, public testing::WithParamInterface<bool> {
  void SetUp() override {
    if (GetParam()) library = TestServer::NewDatabase();
    if (library.isEmpty()) GTEST_SKIP() << TestServer::missing;
    KeepingTest::SetUp();
  }
};

INSTANTIATE_TEST_SUITE_P(File, AnyKeepingTest, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(Server, AnyKeepingTest, testing::Values(true));

TEST_P(AnyKeepingTest, WhatIsDeletedIsListedRestoredAndPurged) {
  Delete(1);
  for (const char16_t* words : {u"restore LIB", u"copy LIB @copy", u"restore @copy", u"copy LIB @copy"})
    Tell(words);
  Add(u"SHAFT"_s);
  for (const char16_t* words :
       {u"restore LIB shaft", u"restore LIB shaft \"--as= \"", u"restore LIB shaft --as \"Old shaft\""})
    Tell(words);
  for (const int id : {2, 3}) Delete(id);
  for (const char16_t* words : {u"restore LIB bore shaft --as Both", u"restore LIB shaft",
                                u"restore LIB --id=2 bore --purge", u"restore LIB"})
    Tell(words);
  TellFigures({u"Description"_s});
}

TEST_P(AnyKeepingTest, ADataSetIsRenamed) {
  for (const char16_t* words :
       {u"rename LIB shaft \" Axle \"", u"rename LIB Axle BORE", u"rename LIB Axle \" \"",
        u"append LIB --description=Shaft 10", u"report LIB --out @out --format=svg"})
    Tell(words);
}

TEST_P(AnyKeepingTest, WatchTellsEachChangeOfState) {
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
  Delete(2);
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

// A pipe whose reader has gone. A script that took it for a failure appended once more.
TEST_F(KeepingTest, WhatIsWrittenButCannotBeToldIsNoFailure) {
  const QString closed =
      u"mkfifo '%1/p' && { : <'%1/p' & exec 3>'%1/p'; wait; rm '%1/p'; KESTREL %2 >&3; }"_s;
  EXPECT_EQ(Shell(closed.arg(folder_.path(), u"append '%1' --description Shaft 10.5"_s.arg(library))), 0);
  EXPECT_TRUE(error.contains(u"it was written"_s)) << error.toStdString();
  EXPECT_EQ(Shell(closed.arg(folder_.path(), u"status '%1'"_s.arg(library))), 3);
  EXPECT_EQ(Shell(u"KESTREL new \"$(printf '%1/a\\377')\""_s.arg(folder_.path())), 2) << "no name of a file";
}

TEST_F(KeepingTest, OneBadRowIsNamedAndTheOthersAreTold) {
  RunSql(library, u"UPDATE StatData SET XBarUCL = NULL WHERE ID = 1"_s);
  ASSERT_TRUE(QFile::rename(library, Path(u"plant  two"_s)));
  Tell(u"status \"@plant  two\"");  // named with both blanks
  Tell(u"report \"@plant  two\" --out @out --format=svg");
}

}  // namespace

// Copying, restoring and watching a library; what a command that has written must not call a failure; and
// words that no command should take up.
#include <sys/stat.h>

#include "library/Library.h"
#include "tests/cli/Program.h"

using namespace Qt::StringLiterals;

namespace {

class KeepingTest : public ProgramTest {
 protected:
  void SetUp() override {
    ASSERT_EQ(Run({u"new"_s, library}).status, 0);
    Import(u"Shaft"_s);
    Import(u"Bore"_s);
  }

  void Import(const QString& name) const {
    Write(u"v.csv"_s, "9\n10\n11\n10\n9\n10\n11\n10\n");
    const ProgramRun run = Run({u"import"_s, library, Path(u"v.csv"_s), u"--description"_s, name,
                                u"--usl=20"_s, u"--lsl=0"_s, u"--nominal=10"_s});
    ASSERT_EQ(run.status, 0) << run.error.toStdString();
  }
  void Delete(int id) const { Library(library).Delete(id, QDateTime::currentDateTime()); }
  void Execute(const QString& sql) const { Library(library).Database().Execute(sql); }
  QStringList Descriptions() const {
    QStringList names;
    for (const auto& data : Run({u"status"_s, library, u"--json"_s}).Json().array())
      names << data[u"Description"_s].toString();
    return names;
  }
  // Runs a command line of the shell, in which KESTREL stands for the program.
  int Shell(QString line) const {
    QProcess process;
    process.start(u"/bin/sh"_s, {u"-c"_s, line.replace(u"KESTREL"_s, QStringLiteral(KESTREL_PROGRAM))});
    EXPECT_TRUE(process.waitForFinished(20'000));
    error = QString::fromUtf8(process.readAllStandardError());
    return process.exitCode();
  }

  const QString library = Path(u"plant  two.kestrel"_s);
  mutable QString error;
};

TEST_F(KeepingTest, WhatIsDeletedIsListedRestoredAndPurged) {
  Delete(1);
  const ProgramRun list = Run({u"restore"_s, library});
  EXPECT_EQ(list.status, 0);
  EXPECT_TRUE(list.output.endsWith(u"  1  8  Shaft\n")) << list.output.toStdString();
  ExpectFailure(Run({u"restore"_s, library, u"Pin"_s}), 2, {library, u"\"Pin\""_s});
  ExpectFailure(Run({u"restore"_s, library, u"--purge"_s}), 2, {u"--id"_s});
  Import(u"SHAFT"_s);
  ExpectFailure(Run({u"restore"_s, library, u"shaft"_s}), 2, {u"already"_s});
  ExpectFailure(Run({u"restore"_s, library, u"shaft"_s, u"--as= "_s}), 2, {u"--as"_s});
  EXPECT_EQ(Run({u"restore"_s, library, u"shaft"_s, u"--as"_s, u"Old shaft"_s}).output,
            u"Shaft: restored as Old shaft\n"_s);
  EXPECT_EQ(Descriptions(), QStringList({u"Old shaft"_s, u"Bore"_s, u"SHAFT"_s}));
  Delete(2);
  EXPECT_EQ(Run({u"restore"_s, library, u"--id=2"_s, u"bore"_s, u"--purge"_s}).output,
            u"Bore: removed for good\n"_s);
  EXPECT_EQ(Run({u"restore"_s, library}).output, u"The library holds no deleted data sets.\n");
}

TEST_F(KeepingTest, ACopyIsWholeAndReplacesNothing) {
  Delete(2);
  const QString copy = Path(u"copy"_s);
  EXPECT_EQ(Run({u"copy"_s, library, copy}).status, 0);
  EXPECT_EQ(Run({u"status"_s, copy}).output, Run({u"status"_s, library}).output);
  EXPECT_EQ(Run({u"restore"_s, copy}).output, Run({u"restore"_s, library}).output);
  ExpectFailure(Run({u"copy"_s, library, copy}), 3, {copy + u": the file exists already"_s});
}

TEST_F(KeepingTest, WatchTellsEachChangeOfState) {
  QProcess watch;
  watch.start(QStringLiteral(KESTREL_PROGRAM),
              {u"watch"_s, library, u"--exec"_s,
               u"yes | head -n 1 >/dev/null; echo \"$KESTREL_ID $KESTREL_DESCRIPTION\""_s});
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
    Import(u"New %1"_s.arg(i));
    watch.waitForReadyRead(200);
  }
  await("New");
  Run({u"append"_s, library, u"--description"_s, u"Shaft"_s, u"10"_s});
  const QStringList append{u"append"_s, library, u"--description"_s, u"Bore"_s};
  Run(append + QStringList(8, u"10.5"_s));
  await("rule 4");
  Run(append + QStringList{u"14"_s});  // out of control as before, for another reason
  await("rule 1");
  await("2 Bore\n");
  Delete(2);
  await("Bore\tdeleted");
  // Another library in its place that cannot be opened at once; its name breaks no line.
  const QString other = Path(u"other"_s);
  ASSERT_EQ(Run({u"copy"_s, library, other}).status, 0);
  Library(other).Database().Execute(u"UPDATE DBRevision SET Revision = '1.0'"_s);
  ASSERT_TRUE(QFile::rename(library, library + u".old"_s) && QFile::rename(other, library));
  watch.setReadChannel(QProcess::StandardError);
  QByteArray complaint;
  while (!complaint.contains("1.0") && watch.waitForReadyRead(10'000))
    complaint += watch.readAllStandardError();
  EXPECT_TRUE(complaint.contains("1.0")) << complaint.constData();
  watch.setReadChannel(QProcess::StandardOutput);
  Execute(u"UPDATE StatData SET Description = 'Bolt' || char(10) || 'x', \"Values\" = '10,' WHERE ID = 1"_s);
  Execute(u"UPDATE DBRevision SET Revision = '2.0'"_s);
  await("\tBolt x\t");
  watch.kill();
  watch.waitForFinished();
  EXPECT_FALSE(watch.readAllStandardError().contains("pipe"))
      << "a closed one ends the commands that it runs";
}

// A script that took it for a failure appended once more.
TEST_F(KeepingTest, WhatIsWrittenButCannotBeToldIsNoFailure) {
  EXPECT_EQ(Shell(u"KESTREL append '%1' --description Shaft 10.5 >/dev/full"_s.arg(library)), 0);
  EXPECT_TRUE(error.contains(u"it was written"_s)) << error.toStdString();
  EXPECT_EQ(Shell(u"KESTREL status '%1' >/dev/full"_s.arg(library)), 3);
  // A pipe whose reader has gone.
  const QString closed =
      u"mkfifo '%1/p' && { : <'%1/p' & exec 3>'%1/p'; wait; rm '%1/p'; KESTREL %2 >&3; }"_s;
  EXPECT_EQ(Shell(closed.arg(folder_.path(), u"append '%1' --description Shaft 10.5"_s.arg(library))), 0);
  EXPECT_TRUE(error.contains(u"it was written"_s)) << error.toStdString();
  EXPECT_EQ(Shell(closed.arg(folder_.path(), u"status '%1'"_s.arg(library))), 3);
}

TEST_F(KeepingTest, OneBadRowIsNamedAndTheOthersAreTold) {
  Execute(u"UPDATE StatData SET XBarUCL = NULL WHERE ID = 1"_s);
  const ProgramRun status = Run({u"status"_s, library});
  EXPECT_EQ(status.status, 3);
  EXPECT_TRUE(status.output.contains(u"Bore"_s)) << status.output.toStdString();
  EXPECT_EQ(status.error, u"kestrel: %1: Data set \"Shaft\" (ID 1): XBarUCL is Null.\n"_s.arg(library))
      << "with both blanks of its name";
  const ProgramRun report = Run({u"report"_s, library, u"--out"_s, Path(u"out"_s), u"--format=svg"_s});
  EXPECT_EQ(report.status, 3);
  EXPECT_EQ(report.output, Path(u"out/Bore.svg\n"_s));
}

TEST_F(KeepingTest, WordsThatAreNeitherCommandNorFile) {
  ExpectFailure(Run({u"frobnicate"_s}), 2, {u"frobnicate"_s});
  ExpectFailure(Run({Path(u"missing.kestrel"_s)}), 2, {u"missing.kestrel"_s});
  ExpectFailure(Run({folder_.path()}), 2, {folder_.path()});
  ExpectFailure(Run({u"import"_s, library, u"v.csv"_s, u"--usl=2"_s, u"--lsl=0"_s, u"--nominal=1"_s,
                     u"--description=a\tb"_s}),
                2, {u"--description: the description holds a tab"_s});
  ExpectFailure(Run({u"postgresql://host/plant"_s}), 2, {u"host/plant: a library on a server"_s});
  EXPECT_EQ(Shell(u"KESTREL new \"$(printf '%1/a\\377')\""_s.arg(folder_.path())), 2);
  EXPECT_EQ(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
  ExpectFailure(Run({u"status"_s, Path(u"pipe"_s)}), 3, {u"not an ordinary file"_s});
  ExpectFailure(Run({u"convert"_s, Path(u"pipe"_s), Path(u"new"_s)}), 3, {u"not an ordinary file"_s});
}

}  // namespace

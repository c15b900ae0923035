// Commands among others, on a terminal, and every kind of bad input with the line that it gets.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/Cases.h"
#include "tests/support/Program.h"

namespace {

constexpr auto shaft =
    "diameter;operator\n10,1;Ann\n10,2;Ann\n9,9;Bo\n10,0;Bo\n10,1;Bo\n9,8;Bo\n10,0;Bo\n10,3;Bo\n";

class CommandLineTest : public ProgramTest {
 protected:
  CommandLineTest() {
    EXPECT_EQ(RunIn(u"new LIB").status, 0);
    Import(u"--column 1"_s, shaft);
  }
};

// Read before the lock is held, the values of all but one were lost.
TEST_F(CommandLineTest, OfProgramsThatAppendAtOnceNoneLosesAValue) {
  std::deque<QProcess> programs(6);
  for (QProcess& program : programs)
    program.start(QStringLiteral(KESTREL_PROGRAM), {u"append"_s, library, u"--description=Shaft"_s, u"77"_s});
  qsizetype appended = 0;
  for (QProcess& program : programs) {
    EXPECT_TRUE(program.waitForFinished());
    appended += program.exitCode() == 0;
  }
  EXPECT_GT(appended, 0);
  EXPECT_EQ(Values(library).count(u"77,"_s), appended);
}

TEST_F(CommandLineTest, ATerminalSeesProgressAndAPipeDoesNot) {
  const QString access = QStringLiteral(KESTREL_TEST_DATA "/access/plant.mdb");
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
  const QString name = QString::fromLocal8Bit(ptsname(terminal));
  for (const auto& [words, end] : {std::pair(u"export LIB --out @out"_s, "writing 100 %"),
                                   {u"convert %1 @a"_s.arg(access), "converting 100 %"}}) {
    prepare_ = [&](QProcess& process) { process.setStandardErrorFile(name); };
    EXPECT_EQ(RunIn(words).status, 0);
    // What was written comes in one piece or in several.
    const QByteArray cleared = end + ('\r' + QByteArray(qstrlen(end), ' ') + '\r');
    QByteArray seen;
    for (pollfd arrives{terminal, POLLIN, 0}; !seen.endsWith(cleared) && poll(&arrives, 1, 10000) == 1;) {
      char piece[4096];
      seen.append(piece, std::max<qsizetype>(read(terminal, piece, sizeof piece), 0));
    }
    EXPECT_TRUE(seen.endsWith(cleared)) << seen.toStdString();
    prepare_ = {};
    EXPECT_EQ(RunIn(QString(words).replace(u"@a"_s, u"@b"_s)).error, QString());
  }
  close(terminal);
}

TEST_F(CommandLineTest, WhatIsWrongIsNamedAndChangesNothing) {
  Write(u"text"_s, "no database at all, only text");
  Write(u"void"_s, "");
  EXPECT_TRUE(QFile::copy(QStringLiteral(KESTREL_TEST_DATA "/access/plant.mdb"), Path(u"old.mdb"_s)));
  EXPECT_EQ(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
  const QStringList files = Files();
  const QByteArray before = Read(library), many = QByteArray("1\n").repeated(32768);
  const auto named = [this](const QJsonValue& words) { return Placed(words.toVariant().toStringList()); };
  // The status, the command line, what the message names, the standard input.
  for (const auto& one : Cases(u"refusals.json"_s, u"commands"_s))
    Fails(one[0].toInt(), one[1].toString(), named(one[2]), one[3].toString().toUtf8());
  Fails(2, u"stats", {u"32767"_s}, many);
  Fails(2, u"append LIB --description Shaft", {u"32768"_s}, many.left(2 * 32760));
  EXPECT_EQ(Files(), files);
  // Several of these files once became other numbers, or fewer, without a word.
  for (const auto& one : Cases(u"refusals.json"_s, u"imports"_s)) {
    SCOPED_TRACE(one[0].toString().toStdString());
    ExpectFailure(Import(one[1].toString(), one[0].toString().toUtf8()), 2, named(one[2]));
  }
  ExpectFailure(Import({}, many), 2, {u"32768"_s, u"32767"_s});
  EXPECT_EQ(Read(library), before);
}

}  // namespace

// Every command once as it should be used, and every kind of bad input with the line it gets.
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
  CommandLineTest() { EXPECT_EQ(RunIn(u"new LIB").status, 0); }
  void TearDown() override { ExpectTranscript(); }

  ProgramRun ImportShaft(const QString& words = {}) const { return Import(u"--column 1 "_s + words, shaft); }
  // Which of a page's texts stand how often in a file of the folder.
  void TellPage(const QString& path, const QByteArrayList& texts) {
    for (const QByteArray& text : texts)
      transcript_ << u"    %1: \"%2\" %3 times"_s.arg(path, QString::fromUtf8(text))
                         .arg(Read(Path(path)).count(text));
  }
  // With this variable of the environment from now on.
  void SetForRuns(const QString& name, const QString& value) {
    prepare_ = [=](QProcess& process) {
      QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
      environment.insert(name, value);
      process.setProcessEnvironment(environment);
    };
  }
};

TEST_F(CommandLineTest, FromCsvToStatusReportAndExport) {
  Tell(
      Importing(u"--column diameter --separator semicolon --unit mm --subgroup 2 --sensitivity high "
                "--period short"_s,
                shaft));
  TellFigures({u"DelimitedInputString"_s, u"NumberOfPlotPoints"_s, u"SensitivityValue"_s,
               u"DetectionPeriod"_s, u"XBarMean"_s, u"HiFlier"_s});
  Tell(u"status LIB");
  for (const QString& format : {u"pdf"_s, u"png"_s, u"svg"_s}) {
    Tell(u"report LIB --out @out/deep --fit --format "_s + format);
    EXPECT_GT(Read(Path(u"out/deep/Shaft."_s + format)).size(), 3000);
  }
  Tell(u"report LIB --out @plain --format svg");
  EXPECT_NE(Read(Path(u"plain/Shaft.svg"_s)), Read(Path(u"out/deep/Shaft.svg"_s))) << "fitted";
  Tell(u"export LIB --out @out/deep shaft");
  TellPage(u"out/deep/Shaft.csf"_s, {"\r"});
}

TEST_F(CommandLineTest, AFileKeepsItsDataSetWhicheverOthersAreWritten) {
  const QStringList descriptions{u"X/1"_s, u"X:1"_s, u"X 1"_s};
  for (const QString& description : descriptions) ImportShaft(u"--description \""_s + description + u'"');
  QStringList files;
  for (const QString& description : descriptions)
    files << Tell(u"export LIB --out @out \""_s + description + u'"').output.trimmed();
  Tell(u"export LIB --out @out");
  for (qsizetype i = 0; i < files.size(); ++i)
    EXPECT_EQ(QString::fromUtf8(Read(files[i])).section(u"\r\n"_s, 0, 0), descriptions[i]);
}

TEST_F(CommandLineTest, ReportShowsAStretchAndDatesItsFiles) {
  ImportShaft(u"--subgroup 1"_s);
  Tell(u"report LIB --out @out --format svg --date");
  for (const QString& words : {u"--points 2-5"_s, u"--last 3"_s})
    Tell(u"report LIB --out @out --format svg "_s + words);
  TellPage(u"out/Shaft.2-5.svg"_s, {"points 2 to 5 of 8"});
  TellPage(u"out/Shaft.last-3.svg"_s, {"points 6 to 8 of 8"});
  EXPECT_FALSE(QFile::exists(Path(u"out/Shaft.svg"_s))) << "a part is not written over the whole";
  ImportShaft(u"--subgroup 2 --description Bore"_s);
  Tell(u"report LIB --out @out --format svg --points 6-8 Bore Shaft");  // Bore has no page
  TellPage(u"out/Shaft.6-8.svg"_s, {">Page 1 of 1<"});
}

TEST_F(CommandLineTest, ReportShowsThePointsOfSomeDays) {
  ImportShaft(u"--subgroup 1"_s);
  ImportShaft(u"--subgroup 1 --description Bore"_s);
  Tell(u"append LIB --description Shaft 10.1 10.2");
  const QString today = QDate::currentDate().toString(Qt::ISODate);
  Tell(u"report LIB --out @out --format svg --until "_s + today);
  TellPage(u"out/Shaft.until-%1.svg"_s.arg(today),
           {">Page 1 of 1<", "Period: until " + today.toUtf8(), "points 9 to 10"});
  Tell(u"report LIB Bore --out @out --until "_s + today);  // one that is named is refused
  Tell(u"report LIB --out @out --since 2199-01-01");       // none has any
  Tell(u"report LIB Shaft --out @out --until 31.10.2020");
  for (const QString& words : {u"--since 2026-10-31T12:00"_s, u"--until 03/04/2026"_s,
                               u"--since 2.10.2026 --until 2026-10-01"_s, u"--since 2026-10-02 --last 3"_s})
    Tell(u"report LIB --out @out "_s + words);
}

TEST_F(CommandLineTest, StatsTakesAndGivesEveryFigureUnderItsName) {
  Tell(
      u"stats --limits 12,9,10.5,1.625,0.5,1.5 --usl 14.5 --lsl 7.5 --subgroup 2 --start 4 --stop 5 "
      "--precision 6 --sensitivity low --period short --reverse",
      "10 11.5 8.25 10 9.5 11 13.5 12");
}

// With four decimals all of it would be 0.0001 or 0.0002, and out of control.
TEST_F(CommandLineTest, SmallValuesAndLimitsKeepTheirDecimals) {
  const QByteArray values = "0.000148\n0.000152\n0.00015\n0.000149\n0.000151\n0.00015\n0.000148\n0.000152";
  const QStringList figures{u"PrecisionValue"_s,   u"UpperSpecLimit"_s, u"LowerSpecLimit"_s,
                            u"NominalSpecLimit"_s, u"IsInControl"_s,    u"XBarUCL"_s};
  Tell(Importing(u"--usl .00016 --lsl 1.4e-4 --nominal .00015"_s, values));
  TellFigures(figures);
  Tell(u"append LIB --description Shaft 0.00015");
  TellFigures(figures);
  EXPECT_EQ(RunIn(u"stats", values).Json()[u"PrecisionValue"_s], 8);
  EXPECT_EQ(RunIn(u"stats --precision 4", values).Json()[u"PrecisionValue"_s], 4);
  Tell(u"append LIB --description Shaft 0.0001500001");
  EXPECT_TRUE(RunIn(u"stats", "0.0001500001 1 2").error.contains(u"10 decimals"));
}

TEST_F(CommandLineTest, AppendKeepsTheLimitsAndTheValues) {
  const QStringList figures{u"DelimitedInputString"_s, u"XBarUCL"_s, u"RuleViolation"_s};
  ImportShaft(u"--description \"O'Neill; shaft\""_s);
  TellFigures(figures);
  Tell(u"append LIB --description \"o'neill; SHAFT\" -3.5 12");
  Tell(u"append LIB --description \"O'Neill; shaft\"", "1.50\n2.0,3.0\r\n");
  TellFigures(figures);
  Tell(u"status LIB --check");
}

TEST_F(CommandLineTest, TimesAndLotsComeInAndGoOutBesideTheSamples) {
  SetForRuns(u"TZ"_s, u"Europe/Berlin"_s);
  Tell(Importing(
      u"--column w --time-column taken --lot-column LOT --subgroup 2"_s,
      "w;taken;lot\n10,1;23/04/2026 10:15;A\n10,2;2026-04-23T08:15Z;A\n9,9;;A\n10,0;;\n9,8;23.4.2026 "
      "11:00;\"B, 2\"\n"));
  for (const QString& lot : {QString(101, u'L'), u"\"C\nD\""_s})
    Tell(u"append LIB --description Shaft 1 --lot "_s + lot);
  Tell(u"append LIB --description Shaft --time 2026-01-23T12:00 --lot C 10.3 10.4");
  Library(library).SetNote(*Library(library).Read(1)->data, 1, {}, u"new \"tool\""_s, u"ann"_s,
                           QDateTime(QDate(2026, 1, 23), QTime(12, 0), Qt::UTC));
  Tell(u"export LIB --csv --out @out");
  const QByteArray all = Read(Path(u"out/Shaft.csv"_s));
  transcript_ << QString::fromUtf8(all).split(u'\n');
  TellFigures({u"Runs"_s});  // one moment, written in two ways, is one run
  // What comes back is what went out; and what has lost its samples is told.
  Tell(
      u"import LIB @out/Shaft.csv --description Again --column Value --time-column Time --lot-column Lot "
      "--subgroup 2 --usl 11 --lsl 9 --nominal 10");
  RunIn(u"export LIB Again --csv --out @out");
  EXPECT_EQ(Read(Path(u"out/Again.csv"_s)), QByteArray(all).replace("\"new \"\"tool\"\"\"", ""));
  Library(library).Database().Execute(u"UPDATE StatData SET \"Values\" = '9,8,9,8,' WHERE ID = 1"_s);
  Tell(u"export LIB --csv --out @out Shaft");
  TellFigures({u"UnplacedRuns"_s, u"UnplacedNotes"_s, u"Notes"_s});
}

// Read before the lock is held, the values of all but one were lost.
TEST_F(CommandLineTest, OfProgramsThatAppendAtOnceNoneLosesAValue) {
  ImportShaft();
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

TEST_F(CommandLineTest, OutputThatCannotBeWrittenIsAFailure) {
  ImportShaft();
  prepare_ = [](QProcess& process) { process.setStandardOutputFile(u"/dev/full"_s); };
  for (const QString& words : {u"--version"_s, u"help"_s, u"help stats"_s, u"status LIB"_s,
                               u"status LIB --json"_s, u"export LIB --out @out"_s, u"stats"_s})
    Fails(3, words, {u"standard output cannot be written"_s}, "1 2 3");
  // What is written is no failure: a script that tries again would append twice.
  const auto appended = RunIn(u"append LIB --description Shaft 1"_s);
  EXPECT_EQ(appended.status, 0);
  EXPECT_TRUE(appended.error.contains(u"standard output"_s) && appended.error.contains(u"it was written"_s))
      << appended.error.toStdString();
}

TEST_F(CommandLineTest, OnlyTheDesktopNeedsADisplay) {
  ImportShaft();
  prepare_ = [](QProcess& process) {
    QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
    for (const QString& name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s}) bare.remove(name);
    process.setProcessEnvironment(bare);
  };
  for (const QString& words : {u"report LIB --out @out"_s, u""_s, u"LIB"_s}) Tell(words);
}

TEST_F(CommandLineTest, ATerminalSeesProgressAndAPipeDoesNot) {
  ImportShaft();
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

TEST_F(CommandLineTest, ADataSetWithoutPointsIsNoError) {
  Tell(Importing(u"--subgroup 3"_s, "diameter\n10\n"));
  for (const QString& words : {u"status LIB"_s, u"status LIB --check"_s, u"report LIB --out @out"_s})
    Tell(words);
  // Its limits are calculated as soon as there is data, and not frozen by the first point.
  for (const QString& value : {u"11"_s, u"12"_s}) Tell(u"append LIB --description Shaft "_s + value);
  TellFigures({u"XBarMean"_s, u"NumberOfPlotPoints"_s});
}

TEST_F(CommandLineTest, AWordMayBeginWithADash) {
  Import({}, "10\n");
  Tell(u"append LIB --description Shaft -.5 -10"_s);
  Tell(u"rename LIB -- Shaft -Shaft"_s);
  TellFigures({u"Description"_s, u"SampleQty"_s});
}

// Limits of no width would call every later value out of control.
TEST_F(CommandLineTest, LimitsAreKeptOnceTheyHaveAWidthAndRenewedOnRequest) {
  Tell(Importing({}, "10\n"));
  for (const QString& words :
       {u"10 10"_s, u"10.5 9.5 10"_s, u"10.5"_s, u"30"_s + u" 30"_s.repeated(14), u"--recalculate"_s}) {
    Tell(u"append LIB --description Shaft "_s + words);
    TellFigures({u"XBarUCL"_s, u"XBarMean"_s, u"RBarMean"_s, u"RuleViolation"_s});
  }
  Import(u"--description Bore"_s, "10\n");
  Tell(u"append LIB --description Bore"_s + u" 10 11"_s.repeated(20));  // kept, and from all points
  Tell(u"append LIB --description Bore 20"_s);
}

TEST_F(CommandLineTest, HelpAndVersion) {
  EXPECT_TRUE(RunIn(u"--version").output.startsWith(u"kestrel "));
  EXPECT_TRUE(RunIn(u"--help").output.contains(u"kestrel stats"));
  EXPECT_TRUE(RunIn(u"help append").output.startsWith(u"kestrel append "));
}

TEST_F(CommandLineTest, WhatIsWrongIsNamedAndChangesNothing) {
  ImportShaft();
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

TEST_F(CommandLineTest, AnOldRevisionAndABrokenRowAreNamed) {
  ImportShaft();
  for (const char16_t* sql :
       {u"UPDATE StatData SET XBarUCL = NULL", u"UPDATE StatData SET XBarUCL = 0, \"Values\" = '1,2,x,4,'",
        u"UPDATE DBRevision SET Revision = '1.9'", u"DELETE FROM DBRevision"}) {
    RunSql(library, QString::fromUtf16(sql));
    Tell(u"status LIB");
  }
}

}  // namespace

// Every command once as it should be used, and every kind of bad input with the line it gets.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/Approved.h"
#include "tests/support/Cases.h"
#include "tests/support/Program.h"

namespace {

constexpr auto shaft =
    "diameter;operator\n10,1;Ann\n10,2;Ann\n9,9;Bo\n10,0;Bo\n10,1;Bo\n9,8;Bo\n10,0;Bo\n10,3;Bo\n";

class CommandLineTest : public ProgramTest {
 protected:
  CommandLineTest() { EXPECT_EQ(RunIn(u"new LIB").status, 0); }

  ProgramRun ImportShaft(const QString& words = {}) const { return Import(u"--column 1 "_s + words, shaft); }

  QJsonObject OnlyDataSet() const {
    const QJsonArray array = RunIn(u"status LIB --json").Json().array();
    EXPECT_EQ(array.size(), 1);
    return array[0].toObject();
  }
};

TEST_F(CommandLineTest, FromCsvToStatusReportAndExport) {
  EXPECT_EQ(Import(u"--column diameter --separator semicolon --unit mm --subgroup 2 --sensitivity high "
                   "--period short"_s,
                   shaft)
                .error,
            QString());
  const QJsonObject data = OnlyDataSet();
  EXPECT_EQ(data[u"Description"_s], u"Shaft"_s);
  EXPECT_EQ(data[u"DelimitedInputString"_s], u"10.1,10.2,9.9,10.0,10.1,9.8,10.0,10.3,"_s);
  EXPECT_EQ(data[u"NumberOfPlotPoints"_s], 4);
  EXPECT_EQ(data[u"SensitivityValue"_s], 2);
  EXPECT_EQ(data[u"DetectionPeriod"_s], 0);
  EXPECT_EQ(data[u"XBarMean"_s], 10.05);
  EXPECT_EQ(data[u"HiFlier"_s], 13);
  EXPECT_EQ(RunIn(u"status LIB").output.toStdString(),
            "Data description  State  In control   Cpk  Samples  n   Mean    LCL     UCL  Unit\n"
            "Shaft             Ideal  yes         1.79        8  2  10.05  9.674  10.426  mm\n");

  for (const QString& format : {u"pdf"_s, u"png"_s, u"svg"_s}) {
    EXPECT_EQ(RunIn(u"report LIB --out @out/deep --fit --format "_s + format).status, 0);
    EXPECT_GT(Read(Path(u"out/deep/Shaft."_s + format)).size(), 3000);
  }
  EXPECT_EQ(RunIn(u"report LIB --out @plain --format svg").status, 0);
  EXPECT_NE(Read(Path(u"plain/Shaft.svg"_s)), Read(Path(u"out/deep/Shaft.svg"_s))) << "fitted";
  EXPECT_EQ(RunIn(u"export LIB --out @out/deep shaft").output, Path(u"out/deep/Shaft.csf\n"_s));
  EXPECT_EQ(Read(Path(u"out/deep/Shaft.csf"_s)).count("\r\n"), 28);
}

TEST_F(CommandLineTest, AFileKeepsItsDataSetWhicheverOthersAreWritten) {
  const QStringList descriptions{u"X/1"_s, u"X:1"_s, u"X 1"_s};
  QString each;
  for (const QString& description : descriptions) ImportShaft(u"--description \""_s + description + u'"');
  for (const QString& description : descriptions)
    each += RunIn(u"export LIB --out @out \""_s + description + u'"').output;
  EXPECT_EQ(RunIn(u"export LIB --out @out").output, each);
  const QStringList files = each.trimmed().split(u'\n');
  ASSERT_EQ(files.size(), 3);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(QString::fromUtf8(Read(files[i])).section(u"\r\n"_s, 0, 0), descriptions[i]);
}

TEST_F(CommandLineTest, ReportShowsAStretchAndDatesItsFiles) {
  ImportShaft(u"--subgroup 1"_s);
  const QString day = QDate::currentDate().toString(u".yyyy-MM-dd"_s);
  EXPECT_EQ(RunIn(u"report LIB --out @out --format svg --date").output,
            Path(u"out/Shaft%1.svg\n"_s.arg(day)));
  for (const auto& [words, name, said] : {std::tuple{u"--points 2-5"_s, u".2-5"_s, "points 2 to 5 of 8"},
                                          {u"--last 3"_s, u".last-3"_s, "points 6 to 8 of 8"}}) {
    EXPECT_EQ(RunIn(u"report LIB --out @out --format svg "_s + words).status, 0);
    EXPECT_EQ(Read(Path(u"out/Shaft%1.svg"_s.arg(name))).count(said), 2) << said;
  }
  EXPECT_FALSE(QFile::exists(Path(u"out/Shaft.svg"_s))) << "a part is not written over the whole";
  ImportShaft(u"--subgroup 2 --description Bore"_s);
  const ProgramRun both = RunIn(u"report LIB --out @out --format svg --points 6-8 Bore Shaft");
  EXPECT_EQ(both.output, Path(u"out/Shaft.6-8.svg\n"_s));
  EXPECT_TRUE(both.error.contains(u"\"Bore\""_s));
  EXPECT_TRUE(Read(Path(u"out/Shaft.6-8.svg"_s)).contains(">Page 1 of 1<")) << "Bore has no page";
}

TEST_F(CommandLineTest, ReportShowsThePointsOfSomeDays) {
  ImportShaft(u"--subgroup 1"_s);
  ImportShaft(u"--subgroup 1 --description Bore"_s);
  EXPECT_EQ(RunIn(u"append LIB --description Shaft 10.1 10.2").status, 0);  // today
  const QString today = QDate::currentDate().toString(Qt::ISODate);
  const ProgramRun run = RunIn(u"report LIB --out @out --format svg --until "_s + today);
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output, Path(u"out/Shaft.until-%1.svg\n"_s.arg(today)));
  EXPECT_TRUE(run.error.contains(u"\"Bore\""_s) && run.error.contains(u"--time-column"_s)) << "what to do";
  const QByteArray page = Read(Path(u"out/Shaft.until-%1.svg"_s.arg(today)));
  EXPECT_TRUE(page.contains(">Page 1 of 1<") && page.contains("Period: until " + today.toUtf8()));
  EXPECT_EQ(page.count("points 9 to 10"), 2);
  const QString tomorrow = QDate::currentDate().addDays(1).toString(Qt::ISODate);
  EXPECT_EQ(RunIn(u"report LIB --out @out --since "_s + tomorrow).status, 2);
  for (const auto& [words, said] :
       {std::pair{u"--since 31.10.2026"_s, u"--since: \"31.10.2026\" is not a day such as 2026-10-31"_s},
        {u"--since 2026-10-02 --until 2026-10-01"_s, u"--since 2026-10-02 is after --until 2026-10-01"_s},
        {u"--since 2026-10-02 --last 3"_s,
         u"--since and --until cannot be given with --points or --last"_s}}) {
    const ProgramRun refused = RunIn(u"report LIB --out @out "_s + words);
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(refused.error.contains(said)) << refused.error.toStdString();
  }
}

TEST_F(CommandLineTest, StatsTakesAndGivesEveryFigureUnderItsName) {
  const ProgramRun run = RunIn(
      u"stats --limits 12,9,10.5,1.625,0.5,1.5 --usl 14.5 --lsl 7.5 --subgroup 2 --start 4 --stop 5 "
      "--precision 6 --sensitivity low --period short --reverse",
      "10 11.5 8.25 10 9.5 11 13.5 12");
  Approved::Expect(u"stats"_s, run.output.split(u'\n'));
}

// With four decimals all of it would be 0.0001 or 0.0002, and out of control.
TEST_F(CommandLineTest, SmallValuesAndLimitsKeepTheirDecimals) {
  const QString values = u"0.000148 0.000152 0.00015 0.000149 0.000151 0.00015 0.000148 0.000152"_s;
  EXPECT_EQ(
      Import(u"--usl .00016 --lsl 1.4e-4 --nominal .00015"_s, QString(values).replace(u' ', u'\n').toUtf8())
          .error,
      QString());
  const QJsonObject before = OnlyDataSet();
  EXPECT_EQ(RunIn(u"append LIB --description Shaft 0.00015").status, 0);
  const QJsonObject after = OnlyDataSet();
  for (const QJsonObject& data : {before, after}) {
    EXPECT_EQ(data[u"PrecisionValue"_s], 8);
    EXPECT_EQ(data[u"UpperSpecLimit"_s], 0.00016);
    EXPECT_EQ(data[u"LowerSpecLimit"_s], 0.00014);
    EXPECT_EQ(data[u"NominalSpecLimit"_s], 0.00015);
    EXPECT_EQ(data[u"IsInControl"_s], true);
    EXPECT_EQ(data[u"XBarUCL"_s], before[u"XBarUCL"_s]);
  }
  EXPECT_EQ(RunIn(u"stats", values.toUtf8()).Json()[u"PrecisionValue"_s], 8);
  EXPECT_EQ(RunIn(u"stats --precision 4", values.toUtf8()).Json()[u"PrecisionValue"_s], 4);
  for (const ProgramRun& unseen :
       {RunIn(u"append LIB --description Shaft 0.0001500001"), RunIn(u"stats", "0.0001500001 1 2")})
    EXPECT_TRUE(unseen.status == 0 && unseen.error.contains(u"10 decimals")) << unseen.error.toStdString();
}

TEST_F(CommandLineTest, AppendKeepsTheLimitsAndTheValues) {
  ImportShaft(u"--description \"O'Neill; shaft\""_s);
  const QJsonObject before = OnlyDataSet();
  EXPECT_EQ(RunIn(u"append LIB --description \"o'neill; SHAFT\" -3.5 12").status, 0);
  EXPECT_EQ(RunIn(u"append LIB --description \"O'Neill; shaft\"", "1.50\n2.0,3.0\r\n").status, 0);
  const QJsonObject after = OnlyDataSet();
  EXPECT_EQ(after[u"DelimitedInputString"_s].toString(),
            before[u"DelimitedInputString"_s].toString() + u"-3.5,12,1.50,2.0,3.0,"_s);
  EXPECT_EQ(after[u"XBarUCL"_s], before[u"XBarUCL"_s]);
  EXPECT_EQ(after[u"RuleViolation"_s], 1);
  EXPECT_EQ(RunIn(u"status LIB --check").status, 1);
}

TEST_F(CommandLineTest, TimesAndLotsComeInAndGoOutBesideTheSamples) {
  prepare_ = [](QProcess& process) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TZ"_s, u"Europe/Berlin"_s);
    process.setProcessEnvironment(environment);
  };
  const QByteArray csv =
      "w;taken;lot\n10,1;23/04/2026 10:15;A\n10,2;2026-04-23T08:15Z;A\n9,9;;A\n10,0;;\n9,8;23.4.2026 "
      "11:00;\"B, 2\"\n";
  EXPECT_EQ(Import(u"--column w --time-column taken --lot-column LOT --subgroup 2"_s, csv).error, QString());
  EXPECT_EQ(RunIn(u"append LIB --description Shaft --time 2026-01-23T12:00 --lot C 10.3 10.4").status, 0);
  Library(library).SetNote(*Library(library).Read(1)->data, 1, {}, u"new \"tool\""_s, u"ann"_s,
                           QDateTime(QDate(2026, 1, 23), QTime(12, 0), Qt::UTC));
  EXPECT_EQ(RunIn(u"export LIB --csv --out @out").output, Path(u"out/Shaft.csv\n"_s));
  const QByteArray all = Read(Path(u"out/Shaft.csv"_s));
  EXPECT_EQ(all.toStdString(),
            "Sample,Value,Time,Lot,Point,Note\r\n"
            "1,10.1,2026-04-23T10:15:00+02:00,A,1,\r\n"
            "2,10.2,2026-04-23T10:15:00+02:00,A,1,\"new \"\"tool\"\"\"\r\n"
            "3,9.9,,A,2,\r\n"
            "4,10.0,,,2,\r\n"
            "5,9.8,2026-04-23T11:00:00+02:00,\"B, 2\",3,\r\n"
            "6,10.3,2026-01-23T12:00:00+01:00,C,3,\r\n"
            "7,10.4,2026-01-23T12:00:00+01:00,C,,\r\n");
  const QJsonArray runs = OnlyDataSet()[u"Runs"_s].toArray();
  ASSERT_EQ(runs.size(), 4);
  EXPECT_EQ(runs[0].toObject()[u"Samples"_s], 2) << "one moment, written in two ways";

  // What comes back is what went out; and what has lost its samples is told.
  EXPECT_EQ(
      RunIn(
          u"import LIB @out/Shaft.csv --description Again --column Value --time-column Time --lot-column Lot "
          "--subgroup 2 --usl 11 --lsl 9 --nominal 10")
          .error,
      QString());
  RunIn(u"export LIB Again --csv --out @out");
  EXPECT_EQ(Read(Path(u"out/Again.csv"_s)), QByteArray(all).replace("\"new \"\"tool\"\"\"", ""));
  Library(library).Database().Execute(u"UPDATE StatData SET \"Values\" = '9,8,9,8,' WHERE ID = 1"_s);
  const ProgramRun run = RunIn(u"export LIB --csv --out @out Shaft");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(
      run.error,
      u"kestrel: warning: Shaft: of runs 4 and of notes 1 have lost their samples; status --json lists them\n"_s);
  const QJsonObject first = RunIn(u"status LIB --json").Json()[0].toObject();
  EXPECT_EQ(first[u"UnplacedRuns"_s].toArray()[2], (QJsonObject{{u"FirstSample"_s, QJsonValue()},
                                                                {u"Samples"_s, 1},
                                                                {u"Time"_s, u"2026-04-23T11:00:00+02:00"_s},
                                                                {u"Lot"_s, u"B, 2"_s}}));
  EXPECT_EQ(first[u"UnplacedNotes"_s][0].toObject()[u"Author"_s], u"ann"_s);
  EXPECT_TRUE(first[u"Notes"_s].toArray().isEmpty());
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
  EXPECT_EQ(OnlyDataSet()[u"DelimitedInputString"_s].toString().count(u"77,"_s), appended);
}

TEST_F(CommandLineTest, OutputThatCannotBeWrittenIsAFailure) {
  ImportShaft();
  prepare_ = [](QProcess& process) { process.setStandardOutputFile(u"/dev/full"_s); };
  for (const char16_t* words : {u"--version", u"help", u"help stats", u"status LIB", u"status LIB --json",
                                u"export LIB --out @out", u"stats"})
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
  EXPECT_EQ(RunIn(u"report LIB --out @out").output, Path(u"out/Shaft.pdf\n"_s));
  Fails(3, u"", {u"no display"_s});
  Fails(3, u"LIB", {u"no display"_s});
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
  EXPECT_EQ(Import(u"--subgroup 3"_s, "diameter\n10\n").status, 0);
  EXPECT_EQ(OnlyDataSet()[u"NumberOfPlotPoints"_s], 0);
  EXPECT_TRUE(RunIn(u"status LIB").output.contains(u"Not evaluated  -  "));
  EXPECT_EQ(RunIn(u"status LIB --check").status, 0);
  EXPECT_EQ(RunIn(u"report LIB --out @out").status, 0);
  // Its limits are calculated as soon as there is data, and not frozen by the first point.
  for (const char16_t* values : {u"11", u"12"})
    RunIn(u"append LIB --description Shaft "_s + QStringView(values).toString());
  EXPECT_EQ(OnlyDataSet()[u"XBarMean"_s], 11);
}

TEST_F(CommandLineTest, AWordMayBeginWithADash) {
  Import({}, "10\n");
  EXPECT_EQ(RunIn(u"append LIB --description Shaft -.5 -10"_s).status, 0);
  EXPECT_EQ(OnlyDataSet()[u"SampleQty"_s], 3);
  EXPECT_EQ(RunIn(u"rename LIB -- Shaft -Shaft"_s).status, 0);
  EXPECT_EQ(OnlyDataSet()[u"Description"_s], u"-Shaft"_s);
}

// Limits of no width would call every later value out of control.
TEST_F(CommandLineTest, LimitsAreKeptOnceTheyHaveAWidthAndRenewedOnRequest) {
  const auto append = [&](const QString& words) {
    const ProgramRun run = RunIn(u"append LIB --description Shaft "_s + words);
    EXPECT_EQ(run.status, 0) << run.error.toStdString();
    return run.output;
  };
  EXPECT_TRUE(Import({}, "10\n").output.contains(u"need two points"));
  EXPECT_TRUE(append(u"10 10"_s).contains(u"in control; no limits are kept yet, for with 4 decimals"));
  EXPECT_TRUE(
      append(u"10.5 9.5 10"_s)
          .contains(u"; the limits, 8.9365 to 11.0635, are kept from now on; the limits are preliminary"));
  const QJsonObject kept = OnlyDataSet();
  EXPECT_TRUE(append(u"10.5"_s).contains(u"in control; the limits are preliminary"));
  EXPECT_TRUE(
      append(u"30 30 30 30 30 30 30 30 30 30 30 30 30 30 30"_s).contains(u"rest on the first 6 points"));
  EXPECT_TRUE(RunIn(u"status LIB"_s).output.contains(u"NO, rule 1"));
  EXPECT_EQ(OnlyDataSet()[u"XBarUCL"_s], kept[u"XBarUCL"_s]);
  EXPECT_FALSE(append(u"--recalculate"_s).contains(u"limits"));
  EXPECT_NE(OnlyDataSet()[u"RBarMean"_s], kept[u"RBarMean"_s]);
  EXPECT_GT(OnlyDataSet()[u"XBarMean"_s].toDouble(), 20);
  Import(u"--description Bore"_s, "10\n");
  const QString many = u" 10 11"_s.repeated(20);
  EXPECT_TRUE(RunIn(u"append LIB --description Bore"_s + many).output.contains(u"in control; the limits, "))
      << "kept from now on, and from all points";
  EXPECT_TRUE(RunIn(u"append LIB --description Bore 20"_s).output.endsWith(u", rule 1\n"_s));
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
  for (const auto& [sql, status, named] :
       {std::tuple(u"UPDATE StatData SET XBarUCL = NULL"_s, 3, QStringList{u"Shaft"_s, u"XBarUCL"_s}),
        {u"UPDATE StatData SET XBarUCL = 0, \"Values\" = '1,2,x,4,'"_s, 2, {u"Shaft"_s, u"value 3"_s}},
        {u"UPDATE DBRevision SET Revision = '1.9'"_s, 3, {u"1.9"_s, u"2.0"_s}},
        {u"DELETE FROM DBRevision"_s, 3, {u"2.0"_s}}}) {
    RunSql(library, sql);
    Fails(status, u"status LIB", QStringList{library} + named);
  }
}

}  // namespace

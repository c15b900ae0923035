// Every command once as it should be used, and every kind of bad input with the line it gets.
#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>

#include "tests/app/Program.h"

using namespace Qt::StringLiterals;

namespace {

class CommandLineTest : public ProgramTest {
 protected:
  CommandLineTest() : library_(Path(u"plant.kestrel"_s)) {
    EXPECT_EQ(Run({u"new"_s, library_}).status, 0);
    csv_ =
        Write(u"shaft.csv"_s,
              "diameter;operator\n10,1;Ann\n10,2;Ann\n9,9;Bo\n10,0;Bo\n10,1;Bo\n9,8;Bo\n10,0;Bo\n10,3;Bo\n");
  }

  QStringList ImportWords(const QString& description = u"Shaft"_s, const QStringList& more = {}) const {
    return QStringList{u"import"_s, library_,   csv_,   u"--description"_s, description, u"--usl"_s,
                       u"11"_s,     u"--lsl"_s, u"9"_s, u"--nominal"_s,     u"10"_s} +
           more;
  }

  QJsonObject OnlyDataSet() const {
    const QJsonArray array = Run({u"status"_s, library_, u"--json"_s}).Json().array();
    EXPECT_EQ(array.size(), 1);
    return array[0].toObject();
  }

  QString library_;
  QString csv_;
};

TEST_F(CommandLineTest, FromCsvToStatusReportAndExport) {
  const ProgramRun imported =
      Run(ImportWords(u"Shaft"_s, {u"--column"_s, u"diameter"_s, u"--unit"_s, u"mm"_s, u"--subgroup"_s,
                                   u"2"_s, u"--sensitivity"_s, u"high"_s, u"--period"_s, u"short"_s}));
  EXPECT_EQ(imported.status, 0) << imported.error.toStdString();
  const QJsonObject data = OnlyDataSet();
  EXPECT_EQ(data[u"Description"_s], u"Shaft"_s);
  EXPECT_EQ(data[u"DelimitedInputString"_s], u"10.1,10.2,9.9,10.0,10.1,9.8,10.0,10.3,"_s);
  EXPECT_EQ(data[u"NumberOfPlotPoints"_s], 4);
  EXPECT_EQ(data[u"SensitivityValue"_s], 2);
  EXPECT_EQ(data[u"DetectionPeriod"_s], 0);
  EXPECT_EQ(data[u"XBarMean"_s], 10.05);
  EXPECT_EQ(data[u"HiFlier"_s], 13);

  const QString out = Path(u"out/deep"_s);
  for (const QString& format : {u"pdf"_s, u"png"_s, u"svg"_s}) {
    EXPECT_EQ(Run({u"report"_s, library_, u"--out"_s, out, u"--format"_s, format, u"--fit"_s}).status, 0);
    EXPECT_GT(Read(out + u"/Shaft."_s + format).size(), 3000);
  }
  EXPECT_EQ(Run({u"export"_s, library_, u"--out"_s, out, u"shaft"_s}).output, out + u"/Shaft.csf\n"_s);
  EXPECT_EQ(Read(out + u"/Shaft.csf"_s).count("\r\n"), 28);
}

TEST_F(CommandLineTest, AppendKeepsTheLimitsAndTheValues) {
  Run(ImportWords(u"O'Neill; shaft"_s, {u"--column=1"_s}));
  const QJsonObject before = OnlyDataSet();
  EXPECT_EQ(Run({u"append"_s, library_, u"--description"_s, u"o'neill; SHAFT"_s, u"-3.5"_s, u"12"_s}).status,
            0);
  EXPECT_EQ(Run({u"append"_s, library_, u"--description"_s, u"O'Neill; shaft"_s}, "1.50\n2.0,3\r\n").status,
            0);
  const QJsonObject after = OnlyDataSet();
  EXPECT_EQ(after[u"DelimitedInputString"_s].toString(),
            before[u"DelimitedInputString"_s].toString() + u"-3.5,12,1.50,2.0,3,"_s);
  EXPECT_EQ(after[u"XBarUCL"_s], before[u"XBarUCL"_s]);
  EXPECT_EQ(after[u"RuleViolation"_s], 1);
  EXPECT_EQ(Run({u"status"_s, library_, u"--check"_s}).status, 1);
}

TEST_F(CommandLineTest, CsvFilesOfEveryKindGiveTheSameNumbers) {
  int count = 0;
  for (const QByteArray& text :
       {QByteArray("1.5\n2.5\n"), QByteArray("1.5\r2.5\r"), QByteArray("\xEF\xBB\xBFw\r\n1.5\r\n2.5"),
        QByteArray("w;v\n1,5;9\n2,5;9\n;\n"), QByteArray("w\tv\n\"1.5\"\t\n\"2.5\"\t\n\n")}) {
    csv_ = Write(u"w.csv"_s, text);
    const QString name = u"Set %1"_s.arg(++count);
    EXPECT_EQ(Run(ImportWords(name, {u"--column"_s, u"1"_s})).status, 0) << text.toStdString();
  }
  for (const auto& data : Run({u"status"_s, library_, u"--json"_s}).Json().array()) {
    EXPECT_EQ(data[u"DelimitedInputString"_s], u"1.5,2.5,"_s);
  }
}

// A page that cannot be scaled keeps none of the others from being written.
TEST_F(CommandLineTest, OneFailingPageIsNamedAndTheOthersWritten) {
  csv_ = Write(u"big.csv"_s, QByteArray("20000000\n20000001\n").repeated(5));
  Run(ImportWords(u"Big"_s));
  csv_ = Write(u"small.csv"_s, QByteArray("10\n10.5\n").repeated(5));
  Run(ImportWords(u"Small"_s));
  const ProgramRun run = Run({u"report"_s, library_, u"--out"_s, Path(u"out"_s)});
  EXPECT_EQ(run.status, 3);
  EXPECT_TRUE(run.error.contains(library_) && run.error.contains(u"\"Big\""_s)) << run.error.toStdString();
  EXPECT_EQ(run.output, Path(u"out/Small.pdf"_s) + u'\n');
}

TEST_F(CommandLineTest, AnEmptyDataSetHasNoPointsAndNoError) {
  csv_ = Write(u"empty.csv"_s, "diameter\n");
  EXPECT_EQ(Run(ImportWords()).status, 0);
  EXPECT_EQ(OnlyDataSet()[u"NumberOfPlotPoints"_s], 0);
  EXPECT_EQ(Run({u"status"_s, library_, u"--check"_s}).status, 0);
  EXPECT_EQ(Run({u"report"_s, library_, u"--out"_s, Path(u"out"_s)}).status, 0);
  // Its limits are calculated as soon as there is data, and not frozen by the first value.
  Run({u"append"_s, library_, u"--description"_s, u"Shaft"_s, u"10"_s});
  Run({u"append"_s, library_, u"--description"_s, u"Shaft"_s, u"11"_s, u"12"_s});
  EXPECT_EQ(OnlyDataSet()[u"XBarMean"_s], 11);
}

TEST_F(CommandLineTest, HelpAndVersion) {
  EXPECT_TRUE(Run({u"--version"_s}).output.startsWith(u"kestrel "_s));
  EXPECT_TRUE(Run({u"--help"_s}).output.contains(u"kestrel stats"_s));
  for (const char* command : {"new", "import", "append", "status", "report", "export", "convert", "stats"}) {
    const ProgramRun run = Run({u"help"_s, QString::fromLatin1(command)});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.output.startsWith(u"kestrel %1 "_s.arg(QString::fromLatin1(command))));
  }
  ExpectFailure(Run({u"help"_s, u"fly"_s}), 2, {u"fly"_s});
}

TEST_F(CommandLineTest, WrongUsageNamesTheWord) {
  ExpectFailure(Run({u"--fly"_s}), 2, {u"--fly"_s});
  ExpectFailure(Run({u"statsu"_s, library_}), 2, {u"statsu"_s});
  ExpectFailure(Run({u"status"_s, library_, u"--jsn"_s}), 2, {u"--jsn"_s});
  ExpectFailure(Run({u"status"_s}), 2, {u"missing"_s});
  ExpectFailure(Run({u"status"_s, library_, u"more"_s}), 2, {u"more"_s});
  ExpectFailure(Run({u"stats"_s, u"--subgroup"_s, u"21"_s}), 2, {u"--subgroup"_s, u"21"_s});
  ExpectFailure(Run({u"stats"_s, u"--subgroup"_s}), 2, {u"--subgroup"_s});
  ExpectFailure(Run({u"stats"_s, u"--usl"_s, u"x"_s}), 2, {u"--usl"_s, u"\"x\""_s});
  ExpectFailure(Run({u"stats"_s, u"--usl"_s, u"1"_s}), 2, {u"--lsl"_s});
  ExpectFailure(Run({u"stats"_s, u"--limits"_s, u"1,2"_s}), 2, {u"--limits"_s});
  ExpectFailure(Run({u"report"_s, library_, u"--out"_s, Path(u"o"_s), u"--format"_s, u"gif"_s}), 2,
                {u"gif"_s});
  ExpectFailure(Run({u"append"_s, library_, u"--description"_s, u"None"_s, u"1"_s}), 2, {u"None"_s});
  ExpectFailure(Run({u"report"_s, library_, u"--out"_s, Path(u"o"_s), u"Nothing"_s}), 2, {u"Nothing"_s});
}

TEST_F(CommandLineTest, BadNumbersNameThePlaceAndChangeNothing) {
  Run(ImportWords(u"Shaft"_s, {u"--column"_s, u"1"_s}));
  const QByteArray before = Read(library_);
  ExpectFailure(Run({u"stats"_s}, "1 2 12x 4"), 2, {u"value 3"_s, u"12x"_s});
  ExpectFailure(Run({u"append"_s, library_, u"--description"_s, u"Shaft"_s, u"1"_s, u"1e999"_s}), 2,
                {u"value 2"_s, u"1e999"_s});
  ExpectFailure(Run({u"append"_s, library_, u"--description"_s, u"Shaft"_s, u"7,5"_s}), 2, {u"7,5"_s});
  ExpectFailure(Run({u"append"_s, library_, u"--description"_s, u"Shaft"_s}, " \n"), 2, {u"no values"_s});
  csv_ = Write(u"bad.csv"_s, "a,b\n1,2\n3,oops\n5,6\n");
  ExpectFailure(Run(ImportWords(u"New"_s, {u"--column"_s, u"b"_s})), 2,
                {u"bad.csv line 3"_s, u"column 2 (b)"_s, u"oops"_s});
  ExpectFailure(Run(ImportWords(u"New"_s)), 2, {u"--column"_s, u"a, b"_s});
  ExpectFailure(Run(ImportWords(u"New"_s, {u"--column"_s, u"c"_s})), 2, {u"\"c\""_s});
  csv_ = Write(u"gap.csv"_s, "a,b\n1,2\n3,\n5,6\n7,\n");
  ExpectFailure(Run(ImportWords(u"New"_s, {u"--column"_s, u"b"_s})), 2, {u"gap.csv line 3"_s});
  // Each of these once became other numbers, or fewer, without a word.
  csv_ = Write(u"comma.csv"_s, "Weight\n12,3\n12,4\n");
  ExpectFailure(Run(ImportWords(u"New"_s)), 2, {u"comma.csv line 2"_s});
  csv_ = Write(u"quote.csv"_s, "Weight\n\"12\"34\n");
  ExpectFailure(Run(ImportWords(u"New"_s)), 2, {u"quote.csv line 2"_s, u"\"12\"34"_s});
  csv_ = Write(u"first.csv"_s, "12.3x\n5\n6\n");
  ExpectFailure(Run(ImportWords(u"New"_s)), 2, {u"first.csv line 1"_s, u"12.3x"_s});
  csv_ = Write(u"many.csv"_s, QByteArray("1\n").repeated(32768));
  ExpectFailure(Run(ImportWords(u"New"_s)), 2, {u"32768"_s, u"32767"_s});
  ExpectFailure(Run({u"stats"_s}, QByteArray("1\n").repeated(32768)), 2, {u"32767"_s});
  ExpectFailure(
      Run({u"append"_s, library_, u"--description"_s, u"Shaft"_s}, QByteArray("1\n").repeated(32760)), 2,
      {u"32768"_s});
  csv_ = Write(u"good.csv"_s, "1\n2\n");
  ExpectFailure(Run(ImportWords(u"SHAFT"_s)), 2, {u"SHAFT"_s, u"already"_s});
  QStringList words = ImportWords(u"New"_s);
  words[words.indexOf(u"11"_s)] = u"8"_s;
  ExpectFailure(Run(words), 2, {u"lower specification limit 9"_s, u"8"_s});
  words = ImportWords(u"New"_s);
  words[words.indexOf(u"10"_s)] = u"12"_s;
  ExpectFailure(Run(words), 2, {u"nominal value 12"_s});
  EXPECT_EQ(Read(library_), before);
}

TEST_F(CommandLineTest, FilesThatCannotBeReadOrWritten) {
  ExpectFailure(Run({u"new"_s, library_}), 3, {library_});
  ExpectFailure(Run({u"new"_s, Path(u"no/such/folder.kestrel"_s)}), 3, {u"no/such"_s});
  ExpectFailure(Run({u"status"_s, Path(u"missing.kestrel"_s)}), 3, {u"missing.kestrel"_s});
  EXPECT_FALSE(QFile::exists(Path(u"missing.kestrel"_s)));
  ExpectFailure(Run({u"status"_s, Write(u"text.kestrel"_s, "no database at all, only text")}), 3,
                {u"text.kestrel"_s});
  ExpectFailure(Run({u"status"_s, Write(u"void.kestrel"_s, "")}), 3, {u"void.kestrel"_s});
  ExpectFailure(Run({u"status"_s, folder_.path()}), 3, {folder_.path()});
  csv_ = Path(u"missing.csv"_s);
  ExpectFailure(Run(ImportWords()), 3, {u"missing.csv"_s});

  // A folder in which nobody can write, the superuser included.
  ExpectFailure(Run({u"new"_s, u"/proc/a.kestrel"_s}), 3, {u"/proc/a.kestrel"_s});
  ExpectFailure(Run({u"export"_s, library_, u"--out"_s, u"/proc/out"_s}), 3, {u"/proc/out"_s});
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(),
            4);  // the library, a CSV file and two made here
}

TEST_F(CommandLineTest, AnOldRevisionAndABrokenRowAreNamed) {
  Run(ImportWords(u"Shaft"_s, {u"--column"_s, u"1"_s}));
  {
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"edit"_s);
    database.setDatabaseName(library_);
    ASSERT_TRUE(database.open());
    QSqlQuery query(database);
    ASSERT_TRUE(query.exec(u"UPDATE StatData SET XBarUCL = NULL"_s));
    ExpectFailure(Run({u"status"_s, library_}), 3, {u"Shaft"_s, u"XBarUCL"_s});
    ASSERT_TRUE(query.exec(u"UPDATE StatData SET XBarUCL = 0, \"Values\" = '1,2,x,4,'"_s));
    ExpectFailure(Run({u"status"_s, library_}), 3, {u"Shaft"_s, u"value 3"_s});
    ASSERT_TRUE(query.exec(u"UPDATE DBRevision SET Revision = '1.9'"_s));
    ExpectFailure(Run({u"status"_s, library_}), 3, {library_, u"1.9"_s, u"2.0"_s});
    ASSERT_TRUE(query.exec(u"DELETE FROM DBRevision"_s));
    ExpectFailure(Run({u"status"_s, library_}), 3, {library_, u"2.0"_s});
  }
  QSqlDatabase::removeDatabase(u"edit"_s);
}

}  // namespace

// What the cores of the machine do side by side is told in the order of the library.
#include <QDir>

#include "platform/ado/Connection.h"
#include "tests/cli/Program.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int count = 30;

class ManyDataSetsTest : public ProgramTest {
 protected:
  // The first data sets are the longest, so that later ones are done before them.
  ManyDataSetsTest() {
    EXPECT_EQ(Run({u"new"_s, library_}).status, 0);
    Connection connection;
    connection.OpenWith(library_);
    Transaction transaction(connection);
    for (int i = 1; i <= count; ++i) {
      const QString values = u"9.9,10.1,10,10.2,"_s.repeated(i <= 3 ? 8000 : 100 - i);
      connection.Execute(
          u"INSERT INTO StatData (Description, \"Values\", SubGroupSize, SensitivityValue, DetectionPeriod, "
          "UpperSpecLimit, LowerSpecLimit, NominalSpecLimit, HiFlier, LoFlier, XBarUCL, XBarLCL, XBarMean, "
          "RBarUCL, RBarLCL, RBarMean) VALUES (?, ?, 1, 2, 1, 11, 9, 10, 13, 7, 0, 0, 0, 0, 0, 0)"_s,
          {Name(i), values});
    }
    transaction.Commit();
  }

  static QString Name(int i) { return u"Set-%1"_s.arg(i); }

  const QString library_ = Path(u"plant.kestrel"_s);
  const QString out_ = Path(u"out"_s);
};

TEST_F(ManyDataSetsTest, PagesAreNumberedAndNamedInOrderAndOneFailureStopsNoOther) {
  constexpr int blocked = 17;
  const auto path = [&](int i) { return out_ + u'/' + Name(i) + u".svg"_s; };
  ASSERT_TRUE(QDir().mkpath(path(blocked)));
  const ProgramRun run = Run({u"report"_s, library_, u"--out"_s, out_, u"--format"_s, u"svg"_s});
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(run.error.count(u'\n'), 1) << run.error.toStdString();
  EXPECT_TRUE(run.error.startsWith(u"kestrel: %1: data set \"%2\": "_s.arg(library_, Name(blocked))));
  QString expected;
  for (int i = 1; i <= count; ++i) {
    if (i == blocked) continue;
    expected += path(i) + u'\n';
    const QByteArray page = Read(path(i));
    EXPECT_TRUE(page.contains(u">Page %1 of %2<"_s.arg(i).arg(count).toUtf8())) << i;
    EXPECT_TRUE(page.contains(u">%1<"_s.arg(Name(i)).toUtf8())) << i;
  }
  EXPECT_EQ(run.output, expected);
}

TEST_F(ManyDataSetsTest, ChosenOnesAreWrittenInTheOrderInWhichTheyAreNamed) {
  const ProgramRun run = Run({u"export"_s, library_, u"--out"_s, out_, Name(9), Name(1), Name(9)});
  EXPECT_EQ(run.output, u"%1/Set-9.csf\n%1/Set-1.csf\n"_s.arg(out_)) << "each once";
  EXPECT_EQ(run.status, 0);
}

}  // namespace

// What the cores of the machine do side by side is told in the order of the library.
#include "library/Library.h"
#include "tests/support/Program.h"

namespace {

using ManyDataSetsTest = ProgramTest;

TEST_F(ManyDataSetsTest, PagesAreNumberedAndNamedInOrderAndOneFailureStopsNoOther) {
  constexpr int count = 30, blocked = 17;
  const auto name = [](int i) { return u"Set-%1"_s.arg(i); };
  const auto path = [&](int i) { return Path(u"out/%1.svg"_s.arg(name(i))); };
  EXPECT_EQ(RunIn(u"new LIB").status, 0);
  {
    // The first data sets are the longest, so that later ones are done before them.
    Library opened(library);
    Transaction transaction(opened.Database());
    for (int i = 1; i <= count; ++i) {
      const CDataPtr data = TestProgram::NewDataSet(name(i));
      data->SetDelimitedInputString(u"9.9,10.1,10,10.2,"_s.repeated(i <= 3 ? 8000 : 100 - i));
      opened.Save(*data, QDateTime::currentDateTime());
    }
    transaction.Commit();
  }
  ASSERT_TRUE(QDir().mkpath(path(blocked)));
  const ProgramRun run = RunIn(u"report LIB --out @out --format svg");
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(run.error.count(u'\n'), 1) << run.error.toStdString();
  EXPECT_TRUE(run.error.startsWith(u"kestrel: %1: data set \"%2\": "_s.arg(library, name(blocked))));
  QString expected;
  for (int i = 1; i <= count; ++i) {
    if (i == blocked) continue;
    expected += path(i) + u'\n';
    const QByteArray page = Read(path(i));
    EXPECT_TRUE(page.contains(u">Page %1 of %2<"_s.arg(i).arg(count).toUtf8())) << i;
    EXPECT_TRUE(page.contains(u">%1<"_s.arg(name(i)).toUtf8())) << i;
  }
  EXPECT_EQ(run.output, expected);
  EXPECT_EQ(RunIn(u"export LIB --out @out Set-9 Set-1 Set-9").output,
            u"%1/Set-9.csf\n%1/Set-1.csf\n"_s.arg(Path(u"out"_s)))
      << "as they are named, each once";
}

}  // namespace

// The command verify as its users run it.
#include "tests/support/Program.h"
#include "texts/Version.h"

namespace {

class VerifyTest : public ProgramTest {};

TEST_F(VerifyTest, EverythingAgreesAndNistsNineSetsInFifteenDigits) {
  const ProgramRun run = RunIn(u"verify --json");
  ASSERT_EQ(run.status, 0) << run.output.toStdString() << run.error.toStdString();
  const QJsonObject report = run.Json().object();
  EXPECT_TRUE(report[u"passed"_s].toBool());
  EXPECT_EQ(report[u"version"_s].toString(), Version::text);
  int certified = 0;
  for (const auto& check : report[u"checks"_s].toArray()) {
    const bool isCertified = check[u"group"_s].toString().startsWith(u"NIST");
    certified += isCertified;
    EXPECT_GE(check[u"requiredDigits"_s].toInt(), isCertified ? 15 : 12);
    EXPECT_GE(check[u"digits"_s].toDouble(), check[u"requiredDigits"_s].toInt());
    EXPECT_GE(check[u"quantities"_s].toArray().size(), 2);
  }
  EXPECT_EQ(certified, 9);
}

TEST_F(VerifyTest, PrintsATableAndWritesAPdf) {
  const ProgramRun run = RunIn(u"verify --pdf @report.pdf");
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.output.contains(u"15 of 15  agrees   NumAcc4\n")) << run.output.toStdString();
  EXPECT_TRUE(Read(Path(u"report.pdf"_s)).startsWith("%PDF-"));
}

}  // namespace

// The command verify as its users run it.
#include "tests/cli/Program.h"
#include "texts/Version.h"

using namespace Qt::StringLiterals;

namespace {

class VerifyTest : public ProgramTest {};

TEST_F(VerifyTest, EverythingAgreesAndNistsNineSetsInFifteenDigits) {
  const ProgramRun run = Run({u"verify"_s, u"--json"_s});
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
  const QString pdf = Path(u"report.pdf"_s);
  const ProgramRun run = Run({u"verify"_s, u"--pdf"_s, pdf});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.output.contains(u"15 of 15  agrees   NumAcc4\n")) << run.output.toStdString();
  EXPECT_TRUE(Read(pdf).startsWith("%PDF-"));
  ExpectFailure(Run({u"verify"_s, u"--pdf"_s, Path(u"none/report.pdf"_s)}), 3, {u"none/report.pdf"_s});
}

}  // namespace

// The command verify as its users run it.
#include <QDateTime>

#include "app/Version.h"
#include "tests/app/Program.h"

using namespace Qt::StringLiterals;

namespace {

class VerifyTest : public ProgramTest {};

TEST_F(VerifyTest, EverythingAgreesAndNistsNineSetsInFifteenDigits) {
  const ProgramRun run = Run({u"verify"_s, u"--json"_s});
  ASSERT_EQ(run.status, 0) << run.output.toStdString() << run.error.toStdString();
  const QJsonObject report = run.Json().object();
  EXPECT_TRUE(report[u"passed"_s].toBool());
  EXPECT_EQ(report[u"version"_s].toString(), Version::text);
  EXPECT_TRUE(QDateTime::fromString(report[u"date"_s].toString(), Qt::ISODate).isValid());
  QStringList certified;
  for (const auto& check : report[u"checks"_s].toArray()) {
    const bool isCertified = check[u"group"_s].toString().startsWith(u"NIST"_s);
    if (isCertified) certified << check[u"name"_s].toString();
    EXPECT_GE(check[u"requiredDigits"_s].toInt(), isCertified ? 15 : 12);
    EXPECT_GE(check[u"digits"_s].toDouble(), check[u"requiredDigits"_s].toInt());
    EXPECT_GE(check[u"quantities"_s].toArray().size(), 2);
  }
  certified.sort();
  EXPECT_EQ(certified.join(u','),
            u"Lew (beam deflection),Lottery,Mavro,Michelso,NumAcc1,NumAcc2,NumAcc3,NumAcc4,PiDigits"_s);
}

TEST_F(VerifyTest, PrintsATableAndWritesAPdf) {
  const QString pdf = Path(u"report.pdf"_s);
  const ProgramRun run = Run({u"verify"_s, u"--pdf"_s, pdf});
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(run.output.contains(u"15 of 15  agrees   NumAcc4\n"_s)) << run.output.toStdString();
  EXPECT_TRUE(run.output.endsWith(u"checks agree.\n"_s));
  EXPECT_TRUE(Read(pdf).startsWith("%PDF-"));
  ExpectFailure(Run({u"verify"_s, u"--pdf"_s, Path(u"none/report.pdf"_s)}), 3, {u"none/report.pdf"_s});
  ExpectFailure(Run({u"verify"_s, u"more"_s}), 2, {u"more"_s});
}

}  // namespace

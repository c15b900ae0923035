// The command verify as its users run it.
#include "platform/ado/Connection.h"
#include "tests/support/Program.h"
#include "tests/support/TestServer.h"
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

TEST_F(VerifyTest, SavesAndLoadsOnAServerAndLeavesNothingThere) {
  const QString address = TestServer::NewDatabase();
  if (address.isEmpty()) GTEST_SKIP() << TestServer::missing;
  Connection connection;
  connection.OpenWith(address);
  const auto count = [&](const QString& what) {
    const Query query = connection.Run(u"select"_s, u"SELECT count(*) FROM "_s + what);
    return connection.NextRow(query) ? query->value(0).toInt() : -1;
  };
  const auto verify = [&](const QString& place) { return Run({u"verify"_s, u"--server"_s, place}); };
  EXPECT_EQ(Run({u"new"_s, address}).error, QString());
  const int schemas = count(u"pg_namespace"_s);
  const ProgramRun run = verify(address);
  EXPECT_EQ(run.status, 0) << run.error.toStdString();
  EXPECT_TRUE(run.output.contains(u"Data sets saved on the server"_s));
  EXPECT_EQ(count(u"pg_namespace"_s), schemas);
  EXPECT_EQ(count(u"StatData"_s), 0);
  const ProgramRun reader = verify(TestServer::As(u"reader"_s, address));
  EXPECT_EQ(reader.status, 3);
  EXPECT_TRUE(reader.error.contains(u"no right"_s)) << reader.error.toStdString();
}

}  // namespace

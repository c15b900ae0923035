// The program killed at any moment of an append leaves the old data or the new, never anything else.
#include <QElapsedTimer>
#include <QRandomGenerator>

#include "tests/app/Program.h"

using namespace Qt::StringLiterals;

namespace {

class KillTest : public ProgramTest {};

// KESTREL_KILLS: how many times; the long run uses more.
TEST_F(KillTest, AppendIsWholeOrNotAtAll) {
  const int kills =
      qEnvironmentVariableIsSet("KESTREL_KILLS") ? qEnvironmentVariableIntValue("KESTREL_KILLS") : 200;
  const QString library = Path(u"plant.kestrel"_s);
  ASSERT_EQ(Run({u"new"_s, library}).status, 0);
  ASSERT_EQ(
      Run({u"import"_s, library, Write(u"v.csv"_s, QByteArray("10.5\n").repeated(2000)), u"--description"_s,
           u"Shaft"_s, u"--usl"_s, u"12"_s, u"--lsl"_s, u"9"_s, u"--nominal"_s, u"10"_s})
          .status,
      0);
  const QStringList append{u"append"_s, library, u"--description"_s, u"Shaft"_s, u"10.25"_s, u"10.75"_s};
  auto values = [&] {
    return Run({u"status"_s, library, u"--json"_s}).Json().array()[0][u"DelimitedInputString"_s].toString();
  };
  QElapsedTimer timer;
  timer.start();
  ASSERT_EQ(Run(append).status, 0);
  const qint64 wholeRun = timer.nsecsElapsed();

  QRandomGenerator random(9);
  QString before = values();
  int written = 0;
  for (int i = 0; i < kills; ++i) {
    const qint64 moment = random.bounded(wholeRun * 5 / 4);
    QProcess process;
    process.start(QStringLiteral(KESTREL_PROGRAM), append);
    ASSERT_TRUE(process.waitForStarted());
    timer.restart();
    while (timer.nsecsElapsed() < moment) {
    }
    process.kill();
    process.waitForFinished();
    const QString after = values();
    const bool isNew = after == before + u"10.25,10.75,"_s;
    ASSERT_TRUE(isNew || after == before) << "kill " << i << " after " << moment << " ns";
    written += isNew;
    before = after;
  }
  RecordProperty("written", written);
  EXPECT_GT(written, 0);
  EXPECT_LT(written, kills);
}

}  // namespace

// The program killed at any moment of a change leaves the old data or the new, never anything else.
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <chrono>
#include <thread>

#include "tests/support/Program.h"

namespace {

class KillTest : public ProgramTest {
 protected:
  // Each backup is whole, and what killed programs were working on does not pile up: the input, the library,
  // three backups and a new one, each of the two being written with its journal.
  void CheckBackups() const {
    EXPECT_LE(Files().size(), 8) << Files().join(u' ').toStdString();
    for (const char* end : {"", ".2", ".3"}) {
      const QString backup = library + u".backup"_s + QString::fromLatin1(end);
      if (QFile::exists(backup)) Values(backup);
    }
  }
};

// At random moments, KESTREL_KILLS (200) times. The stretch of time that they come from follows the machine:
// it grows while the kills come too early and shrinks while they come too late.
TEST_F(KillTest, AppendIsWholeOrNotAtAll) {
  const int kills =
      qEnvironmentVariableIsSet("KESTREL_KILLS") ? qEnvironmentVariableIntValue("KESTREL_KILLS") : 200;
  ASSERT_EQ(RunIn(u"new LIB").status, 0);
  ASSERT_EQ(Import({}, QByteArray("10.5\n").repeated(2000)).status, 0);
  const QStringList append = Placed(u"append LIB --description=Shaft 10.25 10.75");
  QElapsedTimer timer;
  timer.start();
  ASSERT_EQ(Run(append).status, 0);
  double stretch = static_cast<double>(timer.nsecsElapsed());
  QRandomGenerator random(9);
  int written = 0;
  for (int i = 0; i < kills; ++i) {
    const std::chrono::nanoseconds moment(static_cast<qint64>(random.bounded(stretch)));
    const QString before = Values(library);
    QProcess process;
    process.start(QStringLiteral(KESTREL_PROGRAM), append);
    ASSERT_TRUE(process.waitForStarted());
    std::this_thread::sleep_for(moment);
    process.kill();
    process.waitForFinished();
    const QString after = Values(library);
    const bool isNew = after == before + u"10.25,10.75,"_s;
    ASSERT_TRUE(isNew || after == before) << "kill " << i << " after " << moment.count() << " ns";
    written += isNew;
    stretch *= isNew ? 0.96 : 1.04;
    CheckBackups();
  }
  std::printf("%d kills, %d changes written\n", kills, written);
  EXPECT_GT(written, 0);
  EXPECT_LT(written, kills);
}

}  // namespace

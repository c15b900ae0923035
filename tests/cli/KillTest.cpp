// The program killed at any moment of a change leaves the old data or the new, never anything else.
#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <chrono>
#include <thread>

#include "tests/cli/Program.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;

namespace {

class KillTest : public ProgramTest {
 protected:
  // The values; whether the file is whole is checked on the way.
  static QString ValuesIn(const QString& path) {
    EXPECT_EQ(RowsOf(path, u"PRAGMA integrity_check"_s), std::vector<QVariantList>{{u"ok"_s}});
    const auto rows = RowsOf(path, u"SELECT \"Values\" FROM StatData"_s);
    return rows.empty() ? QString() : rows[0][0].toString();
  }

  // Each backup is whole, and what a killed program was working on does not pile up.
  void CheckBackups() const {
    const QStringList files = QDir(folder_.path()).entryList({u"plant.kestrel.*"_s}, QDir::Files);
    EXPECT_LE(files.size(), 5) << files.join(u' ').toStdString();
    for (const char* end : {"", ".2", ".3"}) {
      const QString backup = library + u".backup"_s + QString::fromLatin1(end);
      if (QFile::exists(backup)) ValuesIn(backup);
    }
  }

  QString library = Path(u"plant.kestrel"_s);
};

// At random moments, KESTREL_KILLS (200) times. The stretch of time that they come from follows the machine:
// it grows while the kills come too early and shrinks while they come too late.
TEST_F(KillTest, AppendIsWholeOrNotAtAll) {
  const int kills =
      qEnvironmentVariableIsSet("KESTREL_KILLS") ? qEnvironmentVariableIntValue("KESTREL_KILLS") : 200;
  const QString csv = Write(u"v.csv"_s, QByteArray("10.5\n").repeated(2000));
  ASSERT_EQ(Run({u"new"_s, library}).status, 0);
  ASSERT_EQ(Run({u"import"_s, library, csv, u"--description=Shaft"_s, u"--usl=12"_s, u"--lsl=9"_s,
                 u"--nominal=10"_s})
                .status,
            0);
  const QStringList append{u"append"_s, library, u"--description=Shaft"_s, u"10.25"_s, u"10.75"_s};
  QElapsedTimer timer;
  timer.start();
  ASSERT_EQ(Run(append).status, 0);
  double stretch = static_cast<double>(timer.nsecsElapsed());
  QRandomGenerator random(9);
  int written = 0;
  for (int i = 0; i < kills; ++i) {
    const std::chrono::nanoseconds moment(static_cast<qint64>(random.bounded(stretch)));
    const QString before = ValuesIn(library);
    QProcess process;
    process.start(QStringLiteral(KESTREL_PROGRAM), append);
    ASSERT_TRUE(process.waitForStarted());
    std::this_thread::sleep_for(moment);
    process.kill();
    process.waitForFinished();
    const QString after = ValuesIn(library);
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

// The program killed at any moment of a change leaves the old data or the new, never anything else.
#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <chrono>
#include <thread>

#include "tests/app/Program.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;

namespace {

using Content = QMap<QString, QString>;

class KillTest : public ProgramTest {
 protected:
  void SetUp() override { ASSERT_EQ(Run({u"new"_s, library}).status, 0); }

  QStringList ImportWords(const QString& description) const {
    return {u"import"_s, library,    csv,    u"--description"_s, description, u"--usl"_s,
            u"12"_s,     u"--lsl"_s, u"9"_s, u"--nominal"_s,     u"10"_s};
  }

  // The values by description; whether the file is whole is checked on the way.
  static Content ContentOf(const QString& path) {
    EXPECT_EQ(RowsOf(path, u"PRAGMA integrity_check"_s), std::vector<QVariantList>{{u"ok"_s}});
    Content content;
    for (const auto& row : RowsOf(path, u"SELECT Description, \"Values\" FROM StatData"_s))
      content[row[0].toString()] = row[1].toString();
    return content;
  }

  // Runs the program and kills it at random moments, KESTREL_KILLS (200) times. The stretch of time that they
  // come from follows the machine: it grows while the kills come too early and shrinks while they come too
  // late.
  void KillAtRandom(const std::function<QStringList(int)>& words,
                    const std::function<Content(const Content&, int)>& changed) {
    const int kills =
        qEnvironmentVariableIsSet("KESTREL_KILLS") ? qEnvironmentVariableIntValue("KESTREL_KILLS") : 200;
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(Run(words(-1)).status, 0);
    double stretch = static_cast<double>(timer.nsecsElapsed());
    QRandomGenerator random(9);
    int written = 0;
    for (int i = 0; i < kills; ++i) {
      const std::chrono::nanoseconds moment(static_cast<qint64>(random.bounded(stretch)));
      const QStringList command = words(i);
      const Content before = ContentOf(library);
      QProcess process;
      process.start(QStringLiteral(KESTREL_PROGRAM), command);
      ASSERT_TRUE(process.waitForStarted());
      std::this_thread::sleep_for(moment);
      process.kill();
      process.waitForFinished();
      const Content after = ContentOf(library);
      const bool isNew = after == changed(before, i);
      ASSERT_TRUE(isNew || after == before) << "kill " << i << " after " << moment.count() << " ns";
      written += isNew;
      stretch *= isNew ? 0.96 : 1.04;
      CheckBackups();
    }
    std::printf("%d kills, %d changes written\n", kills, written);
    EXPECT_GT(written, 0);
    EXPECT_LT(written, kills);
  }

  // Each backup is whole, and what a killed program was working on does not pile up.
  void CheckBackups() const {
    const QStringList files = QDir(folder_.path()).entryList({u"plant.kestrel.*"_s}, QDir::Files);
    EXPECT_LE(files.size(), 5) << files.join(u' ').toStdString();
    for (const char* end : {"", ".2", ".3"}) {
      const QString backup = library + u".backup"_s + QString::fromLatin1(end);
      if (QFile::exists(backup)) ContentOf(backup);
    }
  }

  QString library = Path(u"plant.kestrel"_s);
  QString csv = Write(u"v.csv"_s, QByteArray("10.5\n").repeated(2000));
};

TEST_F(KillTest, AppendIsWholeOrNotAtAll) {
  ASSERT_EQ(Run(ImportWords(u"Shaft"_s)).status, 0);
  KillAtRandom(
      [&](int) {
        return QStringList{u"append"_s, library, u"--description"_s, u"Shaft"_s, u"10.25"_s, u"10.75"_s};
      },
      [](Content content, int) {
        content[u"Shaft"_s] += u"10.25,10.75,"_s;
        return content;
      });
}

TEST_F(KillTest, ImportIsWholeOrNotAtAll) {
  KillAtRandom(
      [&](int i) {
        if (i % 20 == 0)
          RowsOf(library, u"DELETE FROM StatData"_s);  // no more than it takes to fill some pages
        return ImportWords(u"Data set %1"_s.arg(i));
      },
      [](Content content, int i) {
        content[u"Data set %1"_s.arg(i)] = u"10.5,"_s.repeated(2000);
        return content;
      });
}

}  // namespace

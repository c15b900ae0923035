// Many hands on one library for a while: scripts that append and import, desktops, an editor of units; each
// is killed now and then. Whatever one of them was told is saved must be there, once and in order.
#include <QRandomGenerator>
#include <QThread>
#include <atomic>
#include <thread>

#include "data/Names.h"
#include "tests/support/Program.h"

namespace {

using Words = QStringList;

int Setting(const char* name, int otherwise) {
  return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

// What the hands have tried and were told (see Hand.cpp).
class Story {
 public:
  std::multiset<QString> tried, made;  // samples and units; names of data sets
  std::set<QString> saved, removed;
  int conflicts = 0;

  void Read(const std::vector<Words>& log) {
    for (const Words& words : log) {
      const QString& kind = words[0];
      const Words rest = words.mid(1);
      if (kind == u"try") tried.insert(rest.begin(), rest.end());
      if (kind == u"saved") saved.insert(rest.begin(), rest.end());
      if (kind == u"remove") removed.insert(rest.begin(), rest.end());
      if (kind == u"new") made.insert(Names::Key(rest[0]));
      conflicts += kind == u"conflict";
    }
  }
};

class HandsTest : public ProgramTest {
 protected:
  static constexpr const char* names[] = {"ONE", "TWO", "THREE", "FOUR"};

  HandsTest() {
    RunUntil({u"new"_s, library});
    RunSql(library, u"CREATE TABLE Made (Name)"_s);
    RunSql(
        library,
        u"CREATE TRIGGER Makes AFTER INSERT ON StatData BEGIN INSERT INTO Made VALUES (NEW.Description); END"_s);
  }

  int RunUntil(const Words& words, int killAfter = -1) const {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral(KESTREL_PROGRAM), words);
    if (killAfter >= 0 && !process.waitForFinished(killAfter)) process.kill();
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  }

  // Runs a script's step again and again; it gets the numbers of its hand and the samples for this time.
  class Loop {
   public:
    Loop(int hand, std::function<void(Loop&)> step, const std::atomic<bool>& stop)
        : dice(seed + static_cast<quint32>(hand)), hand_(hand), thread_([this, step, &stop] {
            while (!stop) step(*this);
          }) {}
    void Join() { thread_.join(); }

    Words Samples(int count) {
      Words samples;
      for (int i = 0; i < count; ++i)
        samples << u"9.%1%2%3"_s.arg(hand_, 2, 10, QChar(u'0')).arg(++count_, 5, 10, QChar(u'0')).arg(1);
      log.push_back(Words{u"try"_s} + samples);
      return samples;
    }
    int KillAfter() { return dice.bounded(100) < 15 ? int(dice.bounded(60)) : -1; }

    std::vector<Words> log;
    QRandomGenerator dice;
    int runs = 0;
    int done = 0;

   private:
    const int hand_;
    int count_ = 0;
    std::thread thread_;
  };

  void RunScript(Loop& loop, const Words& command, const Words& samples, int killAfter) const {
    ++loop.runs;
    if (RunUntil(command, killAfter) != 0) return;
    ++loop.done;
    loop.log.push_back(Words{u"saved"_s} + samples);
  }
  void Append(Loop& loop) const {
    const Words samples = loop.Samples(1 + int(loop.dice.bounded(3)));
    const QString name = QString::fromLatin1(names[loop.dice.bounded(4)]);
    RunScript(loop, Words{u"append"_s, library, u"--description"_s, name} + samples, samples,
              loop.KillAfter());
  }
  // The first ones are there before anybody else is.
  void ImportNext(Loop& loop) const {
    const bool isFirst = loop.done < 4;
    const QString name = isFirst ? QString::fromLatin1(names[loop.done]) : u"IMPORT %1"_s.arg(loop.runs);
    const Words samples = loop.Samples(isFirst ? 40 : 16);
    Write(u"values.csv"_s, samples.join(u'\n').toUtf8() + '\n');
    loop.log.push_back({u"new"_s, name});
    RunScript(loop,
              Placed(u"import LIB @values.csv --usl=12 --lsl=8 --nominal=10 --unit=MM --subgroup=2") +
                  Words{u"--description"_s, name},
              samples, isFirst ? -1 : loop.KillAfter());
    if (!isFirst) QThread::msleep(200);
  }

  // A desktop: killed and started again every few seconds, each time as another hand.
  struct Desk {
    QString role;
    int number = 0;
    std::unique_ptr<QProcess> process = {};
    QElapsedTimer since = {};
    int lives = 0;
  };
  void Start(Desk& desk) {
    desk.number = nextHand_++;
    const QString session = Path(u"session"_s + desk.role);
    QDir().mkpath(session);
    QFile::setPermissions(session, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, session);
    environment.insert(u"KESTREL_SETTINGS"_s, session + u"/settings.json"_s);
    environment.insert(u"TMPDIR"_s, folder_.path());
    desk.process = std::make_unique<QProcess>();
    desk.process->setProcessEnvironment(environment);
    desk.process->setStandardErrorFile(QProcess::nullDevice());
    const QString role = desk.role == u"units" ? u"units"_s : u"desk"_s;
    desk.process->start(
        QStringLiteral(HAND_PROGRAM),
        {library, LogOf(desk.number), QString::number(desk.number), role, QString::number(seed)});
    desk.since.start();
    desk.lives = 5000 + int(dice_.bounded(10000));
  }
  QString LogOf(int number) const { return Path(u"%1.log"_s.arg(number)); }

  std::vector<Words> ReadLog(int number) const {
    std::vector<Words> log;
    QFile file(LogOf(number));
    if (file.open(QIODevice::ReadOnly))
      while (!file.atEnd()) log.push_back(QString::fromUtf8(file.readLine()).chopped(1).split(u'\t'));
    return log;
  }

  void Round(int milliseconds) {
    std::atomic<bool> stop = false;
    const auto append = [this](Loop& loop) { Append(loop); };
    std::vector<std::unique_ptr<Loop>> loops;
    loops.push_back(std::make_unique<Loop>(
        1, [this](Loop& loop) { ImportNext(loop); }, stop));
    while (RowsOf(library, u"SELECT ID FROM StatData"_s).size() < 4) QThread::msleep(20);
    for (const int hand : {2, 3}) loops.push_back(std::make_unique<Loop>(hand, append, stop));
    Desk desks[] = {{u"first"_s}, {u"second"_s}, {u"units"_s}};
    for (Desk& desk : desks) Start(desk);
    QElapsedTimer time;
    for (time.start(); time.elapsed() < milliseconds;) {
      QThread::msleep(50);
      for (Desk& desk : desks) {
        if (desk.process->state() != QProcess::NotRunning) desk.process->waitForFinished(1);
        const bool ended = desk.process->state() == QProcess::NotRunning;
        EXPECT_FALSE(ended) << "the desktop has ended by itself: " << desk.process->exitCode();
        if (ended || desk.since.elapsed() < desk.lives) continue;
        Kill(desk);
        Start(desk);
      }
    }
    stop = true;
    for (Desk& desk : desks) Kill(desk);
    for (const auto& loop : loops) {
      loop->Join();
      story.Read(loop->log);
      runs += loop->runs;
      runsDone += loop->done;
    }
    for (int hand = firstDesk; hand < nextHand_; ++hand) story.Read(ReadLog(hand));
  }
  void Kill(Desk& desk) {
    desk.process->kill();
    desk.process->waitForFinished(-1);
    ++kills;
  }

  void Fault(const QString& what) {
    ADD_FAILURE() << what.toStdString() << " in " << folder_.path().toStdString();
  }

  void CheckSamples() {
    std::set<QString> present;
    Library opened(library);
    std::vector<Library::Row> rows = opened.ReadAll();
    for (const Library::Deleted& deleted : opened.DeletedDataSets()) rows.push_back(deleted.row);
    for (const Library::Row& row : rows) {
      ASSERT_TRUE(row.data) << row.failure->what();
      std::map<QString, QString> last;  // of each hand
      std::set<QString> seen;
      for (const QString& sample : Trace::SamplesIn(row.data->DelimitedInputString())) {
        const QString which = u"%1 of row %2 (%3)"_s.arg(sample).arg(row.id).arg(row.description);
        if (!seen.insert(sample).second) Fault(u"twice: "_s + which);
        if (!story.tried.contains(sample)) Fault(u"nobody's: "_s + which);
        if (sample.endsWith(u'1') && std::exchange(last[sample.mid(2, 2)], sample) > sample)
          Fault(u"out of order: "_s + which);
      }
      present.merge(seen);
    }
    for (const QVariantList& unit : RowsOf(library, u"SELECT Name FROM Units"_s))
      present.insert(unit[0].toString());
    for (const QString& sample : story.saved)
      if (!present.contains(sample) && !story.removed.contains(sample)) Fault(u"lost: "_s + sample);
  }

  void CheckDataSets() {
    for (const QVariantList& row : RowsOf(library, u"SELECT Name FROM Made"_s)) {
      const auto made = story.made.find(Names::Key(row[0].toString()));
      if (made == story.made.end())
        Fault(u"made again: "_s + row[0].toString());
      else
        story.made.erase(made);
    }
    std::set<QString> known;
    for (const QVariantList& row : RowsOf(library, u"SELECT Description FROM StatData"_s))
      if (!known.insert(Names::Key(row[0].toString())).second)
        Fault(u"two of the name "_s + row[0].toString());
    EXPECT_EQ(RowsOf(library, u"PRAGMA integrity_check"_s), std::vector<QVariantList>{{u"ok"_s}});
  }

  static constexpr int firstDesk = 10;
  static inline const quint32 seed = 100 * static_cast<quint32>(Setting("KESTREL_HANDS_SEED", 1));
  Story story;
  int runs = 0;
  int runsDone = 0;
  int kills = 0;

 private:
  int nextHand_ = firstDesk;
  QRandomGenerator dice_{seed};
};

// KESTREL_HANDS: how many seconds. The long run has many such rounds, each with another KESTREL_HANDS_SEED.
TEST_F(HandsTest, NobodysWorkIsLost) {
  Round(Setting("KESTREL_HANDS", 8) * 1000);
  CheckSamples();
  CheckDataSets();
  if (HasFailure()) folder_.setAutoRemove(false);
  std::printf(
      "%d of %d script runs reported saved, %zu samples and units, %d conflicts, "
      "%d desktops killed\n",
      runsDone, runs, story.saved.size(), story.conflicts, kills);
}

}  // namespace

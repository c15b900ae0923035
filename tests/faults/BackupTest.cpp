// When a backup is made, which ones are kept, and what may go wrong with it without stopping the work.
#include "library/Backup.h"

#include <QDateTime>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "tests/faults/Command.h"
#include "tests/support/RecordedMessageBoxes.h"

using namespace Qt::StringLiterals;

namespace {

class BackupTest : public LibraryTest {
 protected:
  void SetUp() override { EXPECT_EQ(RunCommand(ImportWords(u"A"_s, "1\n2\n3\n")).status, 0); }

  void Append(const QString& value) const {
    const CommandResult result = RunCommand(AppendWords(u"A"_s, value));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, QString());
  }

  // Opens the library as the program does, for as long as the test runs.
  Connection& OpenInProgram() {
    EXPECT_TRUE(GlobalFunctions::OpenDatabaseConnection(false, library));
    return state_.gLibrary->Database();
  }

  ~BackupTest() override { InstallGlobals(previous_); }

  static void SetAge(const QString& path, int hours) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-3600 * hours),
                                 QFileDevice::FileModificationTime));
  }

 private:
  ProgramState state_;
  ProgramState* const previous_ = InstallGlobals(&state_);
};

TEST_F(BackupTest, HoldsTheLibraryAsItWasBeforeTheSession) {
  EXPECT_TRUE(DataRows(BackupPath()).empty());
  const QByteArray before = Read(library);
  EXPECT_EQ(RunCommand({u"status"_s, library}).status, 0);
  EXPECT_FALSE(QFile::exists(BackupPath(u".2"_s)));
  QFile::setPermissions(library, QFile::ReadOwner | QFile::WriteOwner);
  Append(u"4"_s);
  EXPECT_EQ(Values(BackupPath()), u"1,2,3,"_s);
  EXPECT_TRUE(IsWhole(BackupPath()));
  EXPECT_EQ(QFile::permissions(BackupPath()) & QFile::ReadOther, 0);
  EXPECT_EQ(Read(BackupPath()).mid(68, 4), before.mid(68, 4));  // the application's mark
}

TEST_F(BackupTest, IsMadeOnceInASession) {
  QFile::remove(BackupPath());
  Connection& connection = OpenInProgram();
  EXPECT_FALSE(QFile::exists(BackupPath()));
  connection.Execute(u"UPDATE StatData SET \"Values\" = 'first'"_s);
  connection.Execute(u"UPDATE StatData SET \"Values\" = 'second'"_s);
  EXPECT_EQ(Values(BackupPath()), u"1,2,3,"_s);
  EXPECT_FALSE(QFile::exists(BackupPath(u".2"_s)));
}

// A number of free pages that is wrong: making a backup does not come across it.
TEST_F(BackupTest, DamageSinceTheLastCheckRefusesTheFirstChange) {
  QFile::remove(BackupPath());
  Connection connection;
  connection.OpenWith(library);
  const Backup guard(connection, library, {}, std::chrono::milliseconds(0));
  QByteArray damaged = Read(library);
  damaged[39] = 7;
  Write(library, damaged);
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THROW(connection.Execute(u"DELETE FROM StatData"_s), DatabaseError);
    EXPECT_FALSE(connection.InTransaction()) << "others would wait for its lock";
  }
  EXPECT_EQ(Read(library), damaged);
  EXPECT_FALSE(QFile::exists(BackupPath()));
}

TEST_F(BackupTest, KeepsThreeOfWhichTheOlderOnesLieApart) {
  Append(u"4"_s);
  Append(u"5"_s);
  const auto kept = [&] {
    return QStringList{Values(BackupPath()), Values(BackupPath(u".2"_s)), Values(BackupPath(u".3"_s))};
  };
  EXPECT_EQ(kept(), QStringList({u"1,2,3,4,"_s, u"1,2,3,"_s, QString()}));
  // Made within the same day as the second: the newest gives way.
  Append(u"6"_s);
  EXPECT_EQ(kept(), QStringList({u"1,2,3,4,5,"_s, u"1,2,3,"_s, QString()}));
  SetAge(BackupPath(u".2"_s), 25);
  Append(u"7"_s);
  EXPECT_EQ(kept(), QStringList({u"1,2,3,4,5,6,"_s, u"1,2,3,4,5,"_s, u"1,2,3,"_s}));
  EXPECT_EQ(Files().size(), 5);  // with the library and the values
}

TEST_F(BackupTest, ALargeLibraryIsCopiedOnceAnHour) {
  {
    Connection connection;
    connection.OpenWith(library);
    connection.Execute(u"INSERT INTO Units (Name) VALUES (?)"_s, {QString(Backup::largeLibrary, u'x')});
  }
  Append(u"4"_s);
  EXPECT_TRUE(DataRows(BackupPath()).empty());
  SetAge(BackupPath(), 2);
  Append(u"5"_s);
  EXPECT_EQ(Values(BackupPath()), u"1,2,3,4,"_s);
}

TEST_F(BackupTest, LeftoversOfAKilledProgramGoWithTheNext) {
  Write(BackupPath(u".new"_s), "half");
  Write(BackupPath(u".new-journal"_s), "half");
  Append(u"4"_s);
  EXPECT_EQ(Values(BackupPath()), u"1,2,3,"_s);
  EXPECT_EQ(Files().filter(u".new"_s), QStringList());
}

TEST_F(BackupTest, OneThatCannotBeMadeIsToldOnceAndStopsNothing) {
  ASSERT_TRUE(QDir().mkpath(BackupPath(u".new/full"_s)));
  const CommandResult result = RunCommand(AppendWords(u"A"_s, u"4"_s));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error.count(u'\n'), 1);
  EXPECT_TRUE(result.error.startsWith(u"kestrel: warning: No backup of "_s + library));
  EXPECT_EQ(Values(library), u"1,2,3,4,"_s);

  RecordedMessageBoxes boxes;
  boxes.Expect();
  Connection& connection = OpenInProgram();
  EXPECT_EQ(connection.Execute(u"DELETE * FROM StatData"_s), 1);
  EXPECT_TRUE(boxes.Take().text.contains(u"The change goes on without one."_s));
  connection.Execute(u"DELETE * FROM Units"_s);
}

}  // namespace

// When a backup is made, which ones are kept, whose they are, and what may go wrong with one.
#include "library/Backup.h"

#include "tests/library/LibraryFixture.h"
#include "tests/support/WithoutPrivileges.h"

namespace {

class BackupsTest : public LibraryFixture {
 protected:
  void SetUp() override {
    LibraryFixture::SetUp();
    Added(u"Shaft"_s);
    Session();
  }
  // As if the program had been started anew.
  void Session() {
    library = Library::Open(path, [this](const QString& news) { Tell(news.simplified()); });
  }
  void Append(const QString& value) {
    library->Append(u"Shaft"_s, {value}, now);
    Tell(u"append "_s + value);
  }
  // In a session for each value.
  void AppendEach(const QStringList& values) {
    for (const QString& value : values) {
      Session();
      Append(value);
    }
  }
  void Replace(const QString& values) {
    const CDataPtr data = library->Read(1)->data;
    data->SetDelimitedInputString(values);
    library->Save(*data, now);
    Tell(u"replace by "_s + values);
  }
  QString BackupPath(const QString& end = {}) const { return path + u".backup"_s + end; }
  void SetAge(const QString& end, int seconds) {
    QFile file(BackupPath(end));
    ASSERT_TRUE(
        file.open(QIODevice::ReadWrite) &&
        file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds), QFile::FileModificationTime));
    Tell(u"the backup%1 is %2 s old"_s.arg(end).arg(seconds));
  }
  // The library and all that stands beside it, with the data sets in it.
  Approved::Diary::States Standing() override {
    Approved::Diary::States states;
    for (const QString& name : Files()) {
      const QString file = folder.filePath(name);
      if (QFileInfo(file).isDir()) continue;
      states[name] = u"holds"_s;
      for (const auto& row : RowsOf(file, u"SELECT Description, \"Values\" FROM StatData"_s))
        states[name] += u' ' + QVariant(row).toStringList().join(u' ');
    }
    return states;
  }
};

TEST_F(BackupsTest, OneOfASessionAndThreeInAllOfWhichTheOlderOnesLieApart) {
  Append(u"4"_s);
  Append(u"5"_s);
  AppendEach({u"6"_s, u"7"_s});
  SetAge(u".2"_s, 23 * 3600);
  AppendEach({u"8"_s});  // within the same day as the second: the newest gives way
  SetAge(u".2"_s, 25 * 3600);
  AppendEach({u"9"_s});
}

TEST_F(BackupsTest, ALargeLibraryIsCopiedOnceAnHour) {
  library->AddUnit(QString(Backup::largeLibrary, u'x'));
  AppendEach({u"4"_s});
  SetAge({}, 3500);
  AppendEach({u"5"_s});
  SetAge({}, 3700);
  AppendEach({u"6"_s});
}

// A number of free pages that is wrong: making a backup does not come across it.
TEST_F(BackupsTest, DamageSinceTheLastCheckRefusesTheFirstChange) {
  Connection connection;
  connection.OpenWith(path);
  const Backup guard(connection, path, {}, std::chrono::milliseconds(0));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(39) && file.putChar(7) && file.flush());
  const QByteArray damaged = ReadFile(path);
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THROW(connection.Execute(u"DELETE FROM StatData"_s), DatabaseError);
    EXPECT_FALSE(connection.InTransaction()) << "others would wait for its lock";
  }
  EXPECT_EQ(ReadFile(path), damaged);
  EXPECT_EQ(Files(), QStringList{u"plant.kestrel"_s});
}

TEST_F(BackupsTest, ADamagedLibraryNamesTheNewestAndTheWayBack) {
  library->AddUnit(u"mm"_s);
  library->Delete(1, now);  // whose backup is the newer one
  library.reset();
  const QByteArray whole = ReadFile(path);
  for (const int place : {0, 4096 + 3}) {  // the head; a page of the tables
    WriteFile(path, QByteArray(whole).replace(place, 60, QByteArray(60, 'x')));
    const QString refusal = Refusal([this] { Session(); });
    EXPECT_TRUE(refusal.contains(u"newest backup is plant.kestrel.backup.deletion (20"))
        << refusal.toStdString();
  }
}

TEST_F(BackupsTest, LeftoversOfAKilledProgramGoWithTheNext) {
  for (const QString& end : {u".new"_s, u".new-journal"_s}) WriteFile(BackupPath(end));
  Append(u"4"_s);
}

TEST_F(BackupsTest, OneThatCannotBeMadeIsToldOnceAndStopsNothing) {
  ASSERT_TRUE(QDir().mkpath(BackupPath(u".new/full"_s)));
  Append(u"4"_s);
  Append(u"5"_s);
}

TEST_F(BackupsTest, AppendsPushOutNeitherWhatAChangeReplacedNorADeletion) {
  Replace(u"1,2,3,4,5,6,7,8,"_s);
  AppendEach({u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s});
  Session();
  Replace(u"4,3,2,1,"_s);
  library->Delete(1, now);  // not the session's first change
  Tell(u"delete"_s);
  Session();
  library->Add(*NewDataSet(u"Next"_s), now);
  library->Append(u"Next"_s, {u"1"_s}, now);
  Tell(u"add and append"_s);
}

// Once the copy was the one of the session's first change, whatever that was.
TEST_F(BackupsTest, AChangeThatReplacesIsPrecededByOneInALongSessionToo) {
  library->Add(*NewDataSet(u"Next"_s), now);
  Tell(u"add"_s);
  Replace(u"1,2,3,4,5,6,7,8,"_s);
  others->Append(u"Shaft"_s, {u"9"_s}, now);
  Replace(u"1,2,"_s);  // others have written
  Replace(u"3,4,"_s);  // only this session has
  SetAge(u".change"_s, 3601);
  Replace(u"5,6,"_s);
  Session();
  library->Append(u"Shaft"_s, {u"7"_s}, now, Library::Limits::AreRenewed);
  Tell(u"append, with the limits replaced"_s);
}

TEST_F(BackupsTest, ASecondDeletionOfOneRowIsRefusedAndKeepsTheBackup) {
  Library::Open(path, {})->Delete(1, now);
  Tell(u"delete"_s);
  TellRefusal(u"delete again"_s, [&] { library->Delete(1, now); });
}

TEST_F(BackupsTest, WhatIsRefusedMakesNone) {
  TellRefusal(u"a name that is taken"_s, [&] { library->Add(*NewDataSet(u"SHAFT"_s), now); });
  TellRefusal(u"an unknown name"_s, [&] { library->Append(u"Nobody"_s, {u"1"_s}, now); });
  TellRefusal(u"no number"_s, [&] { library->Append(u"Shaft"_s, {u"x"_s}, now); });
}

TEST_F(BackupsTest, StandBesideTheFileItselfAndAreNobodyElses) {
  const QString link = folder.filePath(u"link"_s);
  ASSERT_TRUE(QFile::link(path, link));
  const mode_t before = umask(0);
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
  library = Library::Open(link, {});
  Append(u"1"_s);
  const QString copy = folder.filePath(u"copy"_s);
  library->CopyTo(copy);
  umask(before);
  for (const QString& file : {BackupPath(), copy})
    EXPECT_EQ(QFile::permissions(file) & (QFile::ReadOther | QFile::ReadGroup), 0) << file.toStdString();
}

// The library's group is one that its writer is no member of.
TEST_F(BackupsTest, AreForNoOtherGroup) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give a file to any group";
  constexpr gid_t foreign = 4;
  ASSERT_EQ(chown(path.toUtf8().constData(), 65534, foreign), 0);
  ASSERT_EQ(chmod(path.toUtf8().constData(), 0640), 0);
  library->CopyTo(folder.filePath(u"ours"_s));
  EXPECT_EQ(QFileInfo(folder.filePath(u"ours"_s)).groupId(), foreign) << "where it can have the group";
  ASSERT_EQ(chown(folder.path().toUtf8().constData(), 65534, 65534), 0);
  const WithoutPrivileges ordinaryUser(folder.path());
  library = Library::Open(path, {});
  library->Append(u"Shaft"_s, {u"1"_s}, now);
  EXPECT_EQ(QFile::permissions(BackupPath()) & (QFile::ReadGroup | QFile::ReadOther), 0);
  EXPECT_TRUE(QFile::permissions(BackupPath()) & QFile::ReadOwner);
}

}  // namespace

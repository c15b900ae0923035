// When a backup is made, which ones are kept, whose they are, and what may go wrong with one.
#include "library/Backup.h"

#include "tests/library/LibraryFixture.h"
#include "tests/support/WithoutPrivileges.h"

namespace {

class BackupsTest : public LibraryFixture {
 protected:
  void SetUp() override {
    LibraryFixture::SetUp();
    data = Added(u"Shaft"_s);
    Session();
  }
  // As if the program had been started anew.
  void Session() {
    library = Library::Open(path, {});
    data = library->Read(1) ? library->Read(1)->data : nullptr;
  }
  void Append(const QString& value) { library->Append(u"Shaft"_s, {value}, now); }
  // In a session for each value.
  void AppendEach(const QStringList& values) {
    for (const QString& value : values) {
      Session();
      Append(value);
    }
  }
  QString BackupPath(const QString& end = {}) const { return path + u".backup"_s + end; }
  QString ValuesIn(const QString& end = {}) const {
    return Library::Open(BackupPath(end), {})->Read(1)->data->DelimitedInputString();
  }
  void SetAge(const QString& end, int seconds) const {
    QFile file(BackupPath(end));
    ASSERT_TRUE(
        file.open(QIODevice::ReadWrite) &&
        file.setFileTime(QDateTime::currentDateTime().addSecs(-seconds), QFile::FileModificationTime));
  }
  CDataPtr data;
};

TEST_F(BackupsTest, OneOfASessionAndThreeInAllOfWhichTheOlderOnesLieApart) {
  const QString before = Values();
  Append(u"4"_s);
  Append(u"5"_s);
  EXPECT_EQ(ValuesIn(), before);
  EXPECT_EQ(Files().size(), 2);
  const auto kept = [&] {
    QStringList values;
    for (const QString& end : {QString(), u".2"_s, u".3"_s}) values << ValuesIn(end).mid(before.size());
    return values.join(u' ');
  };
  AppendEach({u"6"_s, u"7"_s});
  EXPECT_EQ(kept(), u"4,5,6, 4,5, ");
  SetAge(u".2"_s, 23 * 3600);
  AppendEach({u"8"_s});
  EXPECT_EQ(kept(), u"4,5,6,7, 4,5, ") << "made within the same day as the second: the newest gives way";
  SetAge(u".2"_s, 25 * 3600);
  AppendEach({u"9"_s});
  EXPECT_EQ(kept(), u"4,5,6,7,8, 4,5,6,7, 4,5,");
  EXPECT_EQ(Files().size(), 4);
}

TEST_F(BackupsTest, ALargeLibraryIsCopiedOnceAnHour) {
  const QString before = Values();
  library->AddUnit(QString(Backup::largeLibrary, u'x'));
  AppendEach({u"4"_s});
  SetAge({}, 3500);
  AppendEach({u"5"_s});
  EXPECT_EQ(ValuesIn(), before);
  SetAge({}, 3700);
  AppendEach({u"6"_s});
  EXPECT_EQ(ValuesIn(), before + u"4,5,"_s);
}

// A number of free pages that is wrong: making a backup does not come across it.
TEST_F(BackupsTest, DamageSinceTheLastCheckRefusesTheFirstChange) {
  Connection connection;
  connection.OpenWith(path);
  const Backup guard(connection, path, {}, std::chrono::milliseconds(0));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(39) && file.putChar(7) && file.flush() &&
              file.seek(0));
  const QByteArray damaged = file.readAll();
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THROW(connection.Execute(u"DELETE FROM StatData"_s), DatabaseError);
    EXPECT_FALSE(connection.InTransaction()) << "others would wait for its lock";
  }
  EXPECT_TRUE(file.seek(0) && file.readAll() == damaged);
  EXPECT_EQ(Files(), QStringList{u"plant.kestrel"_s});
}

TEST_F(BackupsTest, LeftoversOfAKilledProgramGoWithTheNext) {
  for (const QString& end : {u".new"_s, u".new-journal"_s}) QFile(BackupPath(end)).open(QIODevice::WriteOnly);
  Append(u"4"_s);
  EXPECT_EQ(Files(), QStringList({u"plant.kestrel"_s, u"plant.kestrel.backup"_s}));
}

TEST_F(BackupsTest, OneThatCannotBeMadeIsToldOnceAndStopsNothing) {
  ASSERT_TRUE(QDir().mkpath(BackupPath(u".new/full"_s)));
  QStringList told;
  library = Library::Open(path, [&](const QString& text) { told << text; });
  Append(u"4"_s);
  Append(u"5"_s);
  EXPECT_TRUE(Values().endsWith(u",4,5,"_s));
  ASSERT_EQ(told.size(), 1);
  EXPECT_TRUE(told[0].startsWith(u"No backup of "_s + path));
}

TEST_F(BackupsTest, AppendsPushOutNeitherWhatAChangeReplacedNorADeletion) {
  const QString before = Values();
  data->SetDelimitedInputString(u"1,2,3,4,5,6,7,8,"_s);
  library->Save(*data, now);
  AppendEach({u"4"_s, u"5"_s, u"6"_s, u"7"_s, u"8"_s});
  EXPECT_EQ(ValuesIn(u".change"_s), before);
  Session();
  data->SetUpperSpecLimit(13);
  library->Save(*data, now);
  const QString last = Values();
  library->Delete(1, now);  // not the session's first change
  Session();
  library->Add(*NewDataSet(u"Next"_s), now);
  library->Append(u"Next"_s, {u"1"_s}, now);
  EXPECT_EQ(ValuesIn(u".deletion"_s), last);
}

// Once the copy was the one of the session's first change, whatever that was.
TEST_F(BackupsTest, AChangeThatReplacesIsPrecededByOneInALongSessionToo) {
  const auto replace = [&](const QString& values) {
    data = library->Read(1)->data;
    data->SetDelimitedInputString(values);
    library->Save(*data, now);
  };
  library->Add(*NewDataSet(u"Next"_s), now);
  EXPECT_FALSE(QFile::exists(BackupPath(u".change"_s)));
  const QString first = Values();
  replace(u"1,2,3,4,5,6,7,8,"_s);
  EXPECT_EQ(ValuesIn(u".change"_s), first);
  others->Append(u"Shaft"_s, {u"9"_s}, now);
  replace(u"1,2,"_s);
  EXPECT_EQ(ValuesIn(u".change"_s), u"1,2,3,4,5,6,7,8,9,"_s) << "others have written";
  replace(u"3,4,"_s);
  EXPECT_EQ(ValuesIn(u".change"_s), u"1,2,3,4,5,6,7,8,9,"_s) << "only this session has";
  SetAge(u".change"_s, 3601);
  replace(u"5,6,"_s);
  EXPECT_EQ(ValuesIn(u".change"_s), u"3,4,"_s) << "an hour later";
  Session();
  library->Append(u"Shaft"_s, {u"7"_s}, now, Library::Limits::AreRenewed);
  EXPECT_EQ(ValuesIn(u".change"_s), u"5,6,"_s) << "the limits are replaced";
}

TEST_F(BackupsTest, ASecondDeletionOfOneRowIsRefusedAndKeepsTheBackup) {
  const QString last = Values();
  Library::Open(path, {})->Delete(1, now);
  EXPECT_THROW(library->Delete(1, now), Error);
  EXPECT_EQ(ValuesIn(u".deletion"_s), last);
  EXPECT_EQ(ValuesIn(u".change"_s), last);
}

TEST_F(BackupsTest, WhatIsRefusedMakesNone) {
  EXPECT_THROW(library->Add(*NewDataSet(u"SHAFT"_s), now), InputError);
  EXPECT_THROW(library->Append(u"Nobody"_s, {u"1"_s}, now), InputError);
  EXPECT_THROW(library->Append(u"Shaft"_s, {u"x"_s}, now), InputError);
  EXPECT_EQ(Files(), QStringList{u"plant.kestrel"_s});
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
  EXPECT_EQ(Files(), QStringList({u"copy"_s, u"link"_s, u"plant.kestrel"_s, u"plant.kestrel.backup"_s}));
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
  Append(u"1"_s);
  EXPECT_EQ(QFile::permissions(BackupPath()) & (QFile::ReadGroup | QFile::ReadOther), 0);
  EXPECT_TRUE(QFile::permissions(BackupPath()) & QFile::ReadOwner);
}

}  // namespace

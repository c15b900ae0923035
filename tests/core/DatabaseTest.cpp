// Making, opening and attaching libraries, and the record helpers, each with what the user sees of a failure.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "core/GlobalFunctions.h"
#include "core/Library.h"
#include "core/Trap.h"
#include "tests/support/TestProgram.h"
#include "tests/support/WithoutPrivileges.h"

using namespace Qt::StringLiterals;
using namespace GlobalFunctions;
using namespace QCGlobalFunctions;

namespace {

class DatabaseTest : public testing::Test {
 protected:
  QString MakeLibrary(const QString& name, const QVariant& revision) {
    const QString path = program.Path(name);
    Library::Create(path, [&](Connection& connection) {
      connection.Execute(u"INSERT INTO DBRevision VALUES ('1.0')"_s);
      connection.Execute(u"INSERT INTO DBRevision VALUES (?)"_s, {revision});
    });
    return path;
  }

  QString StoredPath() {
    Registry::Key key = 0;
    Registry::Type type{};
    QByteArray data;
    program.registry.RegOpenKeyEx(program.state.gSetup.RegistryKeyPath, Registry::KeyRead, key);
    program.registry.RegQueryValueEx(key, u"DatabaseName"_s, type, data);
    return QString::fromUtf8(data);
  }

  void ExpectAttachRefusal(const QString& path) {
    const MessageBox::Request box = program.boxes.Take();
    EXPECT_EQ(box.title, u"Critical Error Message"_s);
    EXPECT_EQ(box.text, u"Error opening database:\r\n"_s + path);
  }

  TestProgram program;
};

TEST_F(DatabaseTest, ANewLibraryIsCompleteAndNeverOverwritesOrLeavesRemains) {
  EXPECT_EQ(program.Rows(u"SELECT * FROM DBRevision"_s), std::vector<QVariantList>{{u"2.0"_s}});
  EXPECT_EQ(program.Rows(u"PRAGMA application_id"_s)[0][0].toInt(), Library::applicationId);
  program.Insert(u"Kept"_s);
  EXPECT_THROW(Library::Create(program.LibraryPath()), Error);
  EXPECT_EQ(program.Rows(u"SELECT ID FROM StatData WHERE Description = 'KEPT'"_s).size(), 1U);
  EXPECT_THROW(Library::Create(program.Path(u"no/folder/a.mdb"_s)), Error);
  EXPECT_THROW(Library::Create(program.folder.path()), Error);
  EXPECT_THROW(Library::Create(program.Path(u"half.mdb"_s), [](Connection&) { throw Error(u"stop"_s); }),
               Error);
  EXPECT_EQ(QDir(program.folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList{u"StatData.mdb"_s});
}

TEST_F(DatabaseTest, AnAttachedLibraryIsShownStoredAndLoaded) {
  const QString path = MakeLibrary(u"Hall 3 100%1.mdb"_s, u"3.1"_s);
  AttachDatabase(path);
  EXPECT_TRUE(program.state.gDatabaseOpen);
  EXPECT_FALSE(program.state.gUsingODBC);
  EXPECT_EQ(program.screen.panel, u"Current Database: Hall 3 100%1.mdb (DB Rev. 3.1)"_s);
  EXPECT_EQ(program.state.gSetup.DatabaseName, path);
  EXPECT_EQ(StoredPath(), path);
  EXPECT_EQ(program.screen.calls, QStringList({u"EnableLoadTimer"_s, u"SetupMainFormDisplay"_s}));
  AttachDatabase({});  // the one of the settings
  EXPECT_EQ(program.screen.calls.size(), 4);
}

TEST_F(DatabaseTest, AnOldRevisionIsRefusedAndChangesNothing) {
  program.state.gSetup.DatabaseName = program.LibraryPath();
  const QString path = MakeLibrary(u"old.mdb"_s, u"1.9"_s);
  program.boxes.Expect();
  program.boxes.Expect();
  AttachDatabase(path);
  const MessageBox::Request box = program.boxes.Take();
  EXPECT_EQ(box.title, u"Error Message"_s);
  EXPECT_EQ(
      box.text,
      u"Invalid Database Version\r\nCurrent Database Version:\t1.9\r\nRequired Database Version:\t2.0\r\n"_s);
  ExpectAttachRefusal(path);
  EXPECT_EQ(program.state.gSetup.DatabaseName, program.LibraryPath());
  EXPECT_EQ(StoredPath(), QString());
  EXPECT_TRUE(program.state.gDatabaseOpen);
  EXPECT_EQ(program.Rows(u"SELECT * FROM StatData"_s).size(), 0U);
  EXPECT_EQ(program.screen.calls, QStringList{u"SetupMainFormDisplay"_s});
}

TEST_F(DatabaseTest, WithoutAUsableRevisionOnlyTheAttachingIsReported) {
  int number = 0;
  for (const QVariant& revision : {QVariant(u"2"_s), QVariant()}) {
    program.boxes.Expect();
    const QString path = MakeLibrary(u"%1.mdb"_s.arg(++number), revision);
    AttachDatabase(path);
    ExpectAttachRefusal(path);
  }
  const QString missing = program.Path(u"missing.mdb"_s);
  program.boxes.Expect();
  AttachDatabase(missing);
  ExpectAttachRefusal(missing);
  EXPECT_FALSE(QFile::exists(missing));
}

TEST_F(DatabaseTest, ARevisionThatCannotBeReadIsReportedToo) {
  int number = 0;
  for (const QString& revision : {u"two"_s, u"2.x"_s, u"2  "_s}) {
    program.boxes.Expect();
    bool valid = true;
    QString found;
    IsDBRevisionValid(MakeLibrary(u"%1.mdb"_s.arg(++number), revision), found, valid);
    EXPECT_FALSE(valid);
    EXPECT_TRUE(program.boxes.Take().text.startsWith(u"fmMain::IsDBRevisionValid failed with error: \r\n"_s));
  }
  program.Execute(u"DROP TABLE DBRevision"_s);
  program.boxes.Expect();
  program.boxes.Expect();
  AttachDatabase(program.LibraryPath());
  EXPECT_EQ(program.boxes.Take().text,
            u"fmMain::IsDBRevisionValid failed with error: \r\n%1: no such table: DBRevision"_s.arg(
                program.LibraryPath()));
  ExpectAttachRefusal(program.LibraryPath());
}

TEST_F(DatabaseTest, AFilteredRecordsetJoinsItsConditions) {
  for (const QString& name : {u"MM"_s, u"INCH"_s, u"GRAM"_s})
    program.Execute(u"INSERT INTO Units (Name) VALUES (?)"_s, {name});
  ASSERT_TRUE(MarkRecordAsDeletedByID(u"Units"_s, 2));
  const auto count = [&](const QString& where, bool excludeDeleted) {
    Recordset recordset;
    recordset.Open(u"SELECT * FROM StatData"_s, *program.state.gConnection);  // an open one is closed first
    EXPECT_TRUE(OpenFilteredRecordset(recordset, u"SELECT * FROM Units"_s, where, excludeDeleted));
    return recordset.RecordCount();
  };
  EXPECT_EQ(count({}, false), 3);
  EXPECT_EQ(count({}, true), 2);
  EXPECT_EQ(count(u"Name = 'inch'"_s, false), 1);
  EXPECT_EQ(count(u"Name = 'inch'"_s, true), 0);
  EXPECT_EQ(count(u"ID=-1"_s, true), 0);
  Recordset recordset;
  program.boxes.Expect();
  EXPECT_FALSE(OpenFilteredRecordset(recordset, u"SELECT * FROM Units"_s, u"garbage ("_s, true));
  program.boxes.Take();
}

TEST_F(DatabaseTest, DeletingMarksUnitsAndRemovesDataSets) {
  EXPECT_FALSE(MarkRecordAsDeletedByID(u"Units"_s, 1));
  const qint32 id = program.Insert(u"First"_s);
  program.Insert(u"Second"_s);
  EXPECT_TRUE(DeleteRecordByID(u"StatData"_s, id));
  EXPECT_TRUE(DeleteRecordByID(u"StatData"_s, id));
  EXPECT_EQ(program.Rows(u"SELECT Description FROM StatData"_s), std::vector<QVariantList>{{u"Second"_s}});
}

TEST_F(DatabaseTest, ADuplicateIsFoundWithoutRegardToCaseAndAnApostropheIsAFailure) {
  program.Insert(u"BORE"_s);
  bool failed = true;
  EXPECT_TRUE(IsDuplicateName(u"StatData"_s, u"Description"_s, u"bore"_s, &failed));
  EXPECT_FALSE(IsDuplicateName(u"StatData"_s, u"Description"_s, u"BORE 2"_s, &failed));
  EXPECT_FALSE(failed);
  for (const QString& value : {u"O'BRIEN"_s, u"x'; DROP TABLE StatData; --"_s}) {
    program.boxes.Expect();
    EXPECT_FALSE(IsDuplicateName(u"StatData"_s, u"Description"_s, value, &failed));
    EXPECT_TRUE(failed);
    EXPECT_TRUE(
        program.boxes.Take().text.startsWith(u"QCGlobalFunctions::IsDuplicateName failed with error: "_s));
  }
  EXPECT_EQ(program.Rows(u"SELECT ID FROM StatData"_s).size(), 1U);
}

TEST_F(DatabaseTest, AnIdIsLookedUpByTheColumnName) {
  program.Execute(u"INSERT INTO Units (Name, Description) VALUES ('MM', '7'), ('INCH', 'no number')"_s);
  EXPECT_EQ(GetIDByName(u"Units"_s, u"Description"_s, u"mm"_s), 7);
  EXPECT_EQ(GetIDByName(u"Units"_s, u"ID"_s, u"INCH"_s), 2);
  EXPECT_EQ(GetIDByName(u"Units"_s, u"ID"_s, u"KG"_s), 0);
  program.boxes.Expect();
  EXPECT_EQ(GetIDByName(u"Units"_s, u"Description"_s, u"INCH"_s), 0);
  program.boxes.Take();
}

TEST_F(DatabaseTest, MovingOffADeletedRecordLandsOnANeighbour) {
  struct Case {
    qint64 rows, position;  // when deleting
    qint64 expected;        // afterwards
  };
  // A position behind the end is brought back to the last row before the move is chosen.
  for (const Case& one :
       {Case{1, 1, -1}, Case{2, 1, 1}, Case{3, 1, 2}, Case{3, 2, 1}, Case{5, 3, 2}, Case{5, 5, 3}}) {
    program.Execute(u"DELETE FROM Units"_s);
    for (qint64 i = 0; i < one.rows; ++i) program.Execute(u"INSERT INTO Units (Name) VALUES ('U')"_s);
    Recordset units;
    ASSERT_TRUE(OpenFilteredRecordset(units, u"SELECT * FROM Units"_s, {}, true));
    while (units.AbsolutePosition() < one.position) units.MoveNext();
    ASSERT_TRUE(MarkRecordAsDeletedByID(u"Units"_s, units.Field(u"ID"_s).toInt()));
    bool isNew = true;
    EXPECT_TRUE(MoveOffOldRecord(units, isNew));
    EXPECT_EQ(units.AbsolutePosition(), one.expected) << one.rows << " rows, " << one.position << " deleted";
    EXPECT_EQ(isNew, one.rows == 2) << "kept where a single row is left";
  }
}

TEST_F(DatabaseTest, MovesClearTheFlagAndReportWhereThereIsNoRecord) {
  Recordset units;
  ASSERT_TRUE(OpenFilteredRecordset(units, u"SELECT * FROM Units"_s, {}, true));
  bool isNew = true;
  program.boxes.Expect();
  EXPECT_FALSE(MoveToFirstRecord(units, isNew));
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"QCGlobalFunctions::MoveToFirstRecord failed"_s));
  EXPECT_TRUE(isNew);
  program.Execute(u"INSERT INTO Units (Name) VALUES ('A'), ('B')"_s);
  units.Requery();
  EXPECT_TRUE(MoveToLastRecord(units, isNew));
  EXPECT_EQ(units.AbsolutePosition(), 2);
  EXPECT_TRUE(MoveToPreviousRecord(units, isNew) && MoveToNextRecord(units, isNew));
  EXPECT_EQ(units.AbsolutePosition(), 2);
  EXPECT_FALSE(isNew);
}

TEST_F(DatabaseTest, OpeningReportsAndTestingIsSilent) {
  const QString path = program.Path(u"none.mdb"_s);
  EXPECT_FALSE(TestDatabaseConnection(false, path));
  EXPECT_TRUE(TestDatabaseConnection(false, program.LibraryPath()));
  program.boxes.Expect();
  EXPECT_FALSE(OpenDatabaseConnection(false, path));
  EXPECT_EQ(program.boxes.Take().text,
            u"GlobalFunctions::OpenDatabaseConnection failed with error: \r\n%1: there is no such file"_s.arg(
                path));
}

}  // namespace

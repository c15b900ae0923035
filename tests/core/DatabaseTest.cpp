// Making, opening and attaching libraries, and the record helpers, each with what the user sees of a failure.
#include "core/GlobalFunctions.h"
#include "core/RegistryFunctions.h"
#include "core/StartUp.h"
#include "library/LibraryFile.h"
#include "tests/support/Approved.h"
#include "tests/support/FailEach.h"
#include "tests/support/TestProgram.h"

using namespace GlobalFunctions;
using namespace QCGlobalFunctions;

namespace {

class DatabaseTest : public testing::Test {
 protected:
  QString MakeLibrary(const QString& name, const QVariant& revision) {
    const QString path = program.Path(name);
    LibraryFile::Create(path, [&](Connection& connection) {
      connection.Execute(u"INSERT INTO DBRevision VALUES ('1.0')"_s);
      connection.Execute(u"INSERT INTO DBRevision VALUES (?)"_s, {revision});
    });
    return path;
  }

  TestProgram program;
};

TEST_F(DatabaseTest, ANewLibraryIsCompleteAndNeverOverwritesOrLeavesRemains) {
  EXPECT_EQ(program.Rows(u"SELECT * FROM DBRevision"_s), std::vector<QVariantList>{{u"2.0"_s}});
  EXPECT_EQ(program.Rows(u"PRAGMA application_id"_s)[0][0].toInt(), LibraryFile::applicationId);
  program.Insert(u"Kept"_s);
  EXPECT_THROW(Library::Create(program.LibraryPath()), Error);
  EXPECT_EQ(program.Rows(u"SELECT ID FROM StatData WHERE Description = 'KEPT'"_s).size(), 1U);
  EXPECT_THROW(Library::Create(program.Path(u"no/folder/a.mdb"_s)), Error);
  EXPECT_THROW(Library::Create(program.folder.path()), Error);
  EXPECT_THROW(LibraryFile::Create(program.Path(u"half.mdb"_s), [](Connection&) { throw Error(u"stop"_s); }),
               Error);
  EXPECT_EQ(EntriesOf(program.folder.path()), QStringList{u"StatData.mdb"_s});
}

TEST_F(DatabaseTest, AnAttachedLibraryIsShownStoredAndLoaded) {
  const QString path = MakeLibrary(u"Hall 3 100%1.mdb"_s, u"3.1"_s);
  AttachDatabase(path);
  EXPECT_TRUE(program.state.gDatabaseOpen);
  EXPECT_EQ(program.screen.panel, u"Current Database: Hall 3 100%1.mdb (DB Rev. 3.1)"_s);
  EXPECT_EQ(program.state.gSetup.DatabaseName, path);
  EXPECT_EQ(RegistryFunctions::GetKeyValue({}, u"DatabaseName"_s, 1), path);
  EXPECT_EQ(program.screen.calls, QStringList({u"EnableLoadTimer"_s, u"SetupMainFormDisplay"_s}));
  AttachDatabase({});  // the one of the settings
  EXPECT_EQ(program.screen.calls.size(), 4);
  ASSERT_TRUE(QDir().mkpath(path + u".backup.new/full"_s));
  program.boxes.Expect(u"The change goes on without one.");
  program.state.gLibrary->AddUnit(u"MM"_s);
}

TEST_F(DatabaseTest, AnUnusableRevisionIsRefusedAndChangesNothing) {
  NotedBoxes boxes;
  QStringList told;
  program.state.gSetup.DatabaseName = program.LibraryPath();
  for (const QVariant& revision :
       std::initializer_list<QVariant>{u"1.9"_s, u"2"_s, {}, u"two"_s, u"2.x"_s, u"2  "_s}) {
    boxes.texts.clear();
    const QString path = MakeLibrary(u"%1.mdb"_s.arg(told.size()), revision);
    AttachDatabase(path);
    told << u"\"%1\": "_s.arg(revision.toString()) +
                boxes.texts.join(u" | "_s).simplified().replace(path, u"FILE"_s);
    EXPECT_EQ(program.state.gSetup.DatabaseName, program.LibraryPath());
    EXPECT_EQ(RegistryFunctions::GetKeyValue({}, u"DatabaseName"_s, 1), QString());
    EXPECT_TRUE(program.state.gDatabaseOpen);
    EXPECT_EQ(program.screen.calls.size(), told.size()) << "the display is set up anew, nothing is loaded";
  }
  Approved::Expect(told);
}

// Refused before anything was closed, and the user is told, not over and over.
TEST_F(DatabaseTest, AnOperationThatFailsLeavesOpenWhatWasOpen) {
  NotedBoxes boxes;
  const auto attach = [&] {
    boxes.texts.clear();
    program.state.gSetup.DatabaseName = u"before"_s;
    program.state.gDatabaseOpen = true;
    AttachDatabase(program.LibraryPath());
    return program.state.gSetup.DatabaseName != u"before"_s;
  };
  FailEach(attach, [&](bool attached, const QString& failed) {
    EXPECT_EQ(boxes.texts.isEmpty(), attached) << boxes.texts.join(u'|').toStdString();
    EXPECT_LE(boxes.texts.size(), 2) << boxes.texts.join(u'|').toStdString();
    EXPECT_TRUE(attached || !failed.isEmpty());
    EXPECT_TRUE(program.state.gDatabaseOpen && program.state.gLibrary);
  });
}

TEST_F(DatabaseTest, AFilteredRecordsetJoinsItsConditions) {
  program.Execute(u"INSERT INTO Units (Name) VALUES ('MM'), ('INCH'), ('GRAM')"_s);
  ASSERT_TRUE(MarkRecordAsDeletedByID(u"Units"_s, 2));
  EXPECT_FALSE(MarkRecordAsDeletedByID(u"Units"_s, 4));
  Recordset recordset;  // one that is open is closed first
  const auto count = [&](const QString& where, bool excludeDeleted) {
    EXPECT_TRUE(OpenFilteredRecordset(recordset, u"SELECT * FROM Units"_s, where, excludeDeleted));
    return recordset.RecordCount();
  };
  EXPECT_EQ(count({}, false), 3);
  EXPECT_EQ(count({}, true), 2);
  EXPECT_EQ(count(u"Name = 'inch'"_s, false), 1);
  EXPECT_FALSE(UpdateMenuButtonStates(recordset).firstAndPrevious);
  EXPECT_EQ(count(u"Name = 'inch'"_s, true), 0);
  program.boxes.Expect();
  EXPECT_FALSE(OpenFilteredRecordset(recordset, u"SELECT * FROM Units"_s, u"garbage ("_s, true));
}

TEST_F(DatabaseTest, AnIdIsLookedUpByTheColumnName) {
  program.Execute(u"INSERT INTO Units (Name, Description) VALUES ('MM', '7'), ('INCH', 'no number')"_s);
  EXPECT_EQ(GetIDByName(u"Units"_s, u"Description"_s, u"mm"_s), 7);
  EXPECT_EQ(GetIDByName(u"Units"_s, u"ID"_s, u"INCH"_s), 2);
  EXPECT_EQ(GetIDByName(u"Units"_s, u"ID"_s, u"KG"_s), 0);
  program.boxes.Expect();
  EXPECT_EQ(GetIDByName(u"Units"_s, u"Description"_s, u"INCH"_s), 0);
}

TEST_F(DatabaseTest, MovingOffADeletedRecordLandsOnANeighbour) {
  // How many rows, the position of the deleted one, and the position afterwards. One behind the end is
  // brought back to the last row before the move is chosen.
  for (const auto& [rows, position, expected] :
       {std::tuple(1, 1, -1), {2, 1, 1}, {3, 1, 2}, {3, 2, 1}, {5, 3, 2}, {5, 5, 3}}) {
    program.Execute(u"DELETE FROM Units"_s);
    for (int i = 0; i < rows; ++i) program.Execute(u"INSERT INTO Units (Name) VALUES ('U')"_s);
    Recordset units;
    ASSERT_TRUE(OpenFilteredRecordset(units, u"SELECT * FROM Units"_s, {}, true));
    while (units.AbsolutePosition() < position) units.MoveNext();
    ASSERT_TRUE(MarkRecordAsDeletedByID(u"Units"_s, units.Field(u"ID"_s).toInt()));
    bool isNew = true;
    EXPECT_TRUE(MoveOffOldRecord(units, isNew));
    EXPECT_EQ(units.AbsolutePosition(), expected) << rows << " rows, " << position << " deleted";
    EXPECT_EQ(isNew, rows == 2) << "kept where a single row is left";
  }
}

}  // namespace

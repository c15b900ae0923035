// The main window's commands: the other screens, adding, editing, deleting, and the ways to a database.
#include <QDir>
#include <QProgressDialog>

#include "core/DataObjectFunctions.h"
#include "screens/Indicators.h"
#include "tests/screens/MainScreenFixture.h"
#include "texts/DetectionRules.h"

namespace {

const auto otherAttached = u"Current Database: other.kestrel (DB Rev. 2.1)"_s;

class MainCommandsTest : public MainScreenFixture {};

TEST_F(MainCommandsTest, OpensTheOtherScreens) {
  StartLoaded({u"Bore"_s});
  for (const char* command :
       {"Toolbar1_1", "Toolbar1_2_2", "Toolbar1_3_1", "Toolbar1_4_2", "menuView", "mnuEdit"})
    Action(command).trigger();
  for (const bool viewsChart : {true, false}) {
    program.state.gSetup.ListviewDoubleClickViewsChart = viewsChart;
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(0));
    QTest::keyClick(&List(), Qt::Key_Return);
  }
  EXPECT_EQ(opened.join(u' '), u"chart editor settings about chart editor chart chart editor editor");
}

TEST_F(MainCommandsTest, FollowsAFormToAnotherDataSet) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  main->SelectListRow(program.state.gDataCollection[1]->ID());
  EXPECT_EQ(Current(), u"Shaft");
  EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection[1]->ID());
  main->SelectListRow(99);
  EXPECT_EQ(Current(), u"Shaft");
}

TEST_F(MainCommandsTest, ThePopUpMenuOpensByMouseAndKey) {
  StartLoaded({u"Bore"_s});
  auto& menu = Get<QMenu>(*main, "MyMenu");
  QTest::mousePress(List().viewport(), Qt::RightButton, {}, PlaceOf(0));
  EXPECT_FALSE(menu.isVisible());
  QTest::mouseRelease(List().viewport(), Qt::RightButton, {}, PlaceOf(0));
  EXPECT_TRUE(menu.isVisible());
  menu.close();
  QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
  QCoreApplication::sendEvent(List().viewport(), &key);
  EXPECT_TRUE(menu.isVisible());
  menu.close();
}

TEST_F(MainCommandsTest, AddingReadsTheLibraryAgainAndSelectsTheNewDataSet) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  ClickRow(1);
  QTest::keyClick(main.get(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(opened, QStringList{u"editor to add"_s});
  EXPECT_EQ(Current(), u"Shaft") << "nothing was added";

  inEditor = [this] {
    const CDataPtr added = TestProgram::NewDataSet(u"PIN"_s);
    DataObjectFunctions::SaveDataObjectToDatabase(added);
    DataObjectFunctions::AddDataObjectToSystem(added);
    EXPECT_EQ(added->ID(), 0);
    EXPECT_EQ(Rows().last(), u"PIN");
  };
  const qint32 before = clock.ticks;
  Action("Toolbar1_2_1").trigger();
  EXPECT_EQ(clock.ticks, before) << "the user need not wait";
  EXPECT_EQ(Rows(), (QStringList{u"Bore"_s, u"Shaft"_s, u"PIN"_s}));
  EXPECT_EQ(Current(), u"PIN");
  EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection.at(2)->ID());
  EXPECT_NE(program.state.gCurrentDataID, 0);
  EXPECT_EQ(Enabled(), u"xxxxxxxx");
}

TEST_F(MainCommandsTest, AnEditedDataSetIsShownAnew) {
  StartLoaded({u"Bore"_s});
  inEditor = [this] {
    const CDataPtr edited = program.state.gDataCollection[0];
    edited->SetProcessState(1);
    edited->SetSubGroupSize(7);
    DataObjectFunctions::ModifyDataObjectInSystem(edited);
  };
  Action("mnuEdit").trigger();
  EXPECT_EQ(StateOf(0), ProcessState::Name(1));
  EXPECT_EQ(Get<ProcessStateIndicator>(*main, "ProcessStateIndicator1").Value(), 1);
  EXPECT_EQ(Summary("SubGroupSize"), u"7");
}

TEST_F(MainCommandsTest, DeletesAfterAQuestion) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  program.boxes.Expect(Answer::No, u"delete the selected item: Bore ?\r\rThis operation cannot be undone");
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(program.Rows(u"SELECT * FROM StatData"_s).size(), 2U);

  for (const QStringList& left : {QStringList{u"Shaft"_s}, QStringList{}}) {
    program.boxes.Expect(Answer::Yes);
    program.boxes.Expect(Answer::No, u"Selected data successfully deleted.");
    Action("Toolbar1_2_3").trigger();
    EXPECT_EQ(Rows(), left);
    EXPECT_EQ(program.Rows(u"SELECT * FROM StatData"_s).size(), size_t(left.size()));
    if (!left.isEmpty()) {
      EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection.at(0)->ID());
    }
  }
  EXPECT_TRUE(program.state.gDataCollection.empty());
  EXPECT_EQ(Summary("SampleQty"), QString());
  EXPECT_EQ(Enabled(), u"-x--x---");
}

TEST_F(MainCommandsTest, AFailedDeleteLeavesTheRow) {
  StartLoaded({u"Bore"_s});
  QFile::remove(program.LibraryPath());
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"failed with error: \r\n"_s + program.LibraryPath() +
                       u": the file has been moved or deleted"_s);
  Action("mnuDelete").trigger();
  EXPECT_EQ(Rows(), QStringList{u"Bore"_s});
  EXPECT_EQ(Enabled(), u"xxxxxxxx");
}

TEST_F(MainCommandsTest, ConnectsToAnotherDatabase) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  Choose(other);
  EXPECT_EQ(files.last.folder, program.folder.path());
  EXPECT_EQ(Panel(), otherAttached);
  EXPECT_EQ(StoredDatabase(), other);
  EXPECT_EQ(Enabled(), u"----x---") << "the rows shown are still those of the other database";
  const qint32 before = clock.ticks;
  Tick("InitTimer");
  EXPECT_EQ(clock.ticks, before) << "an empty library is not announced as loaded";
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_TRUE(List().accessibleDescription().contains(u"Stat Data, Add"));

  files.Expect({});  // cancelled
  QTest::keyClick(main.get(), Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(Panel(), otherAttached);
}

TEST_F(MainCommandsTest, ARefusedDatabaseChangesNothing) {
  StartLoaded({u"Bore"_s});
  const QString notes = program.Path(u"notes.mdb"_s), damaged = CopyOfData(u"null_limit.mdb"_s),
                old = CopyOfData(u"old_revision.mdb"_s);
  QFile file(notes);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("a shopping list"));
  file.close();
  ASSERT_TRUE(QFile::resize(damaged, QFileInfo(damaged).size() / 2));
  for (const QString& path : {notes, damaged, old}) {
    if (path == old) program.boxes.Expect(u"Invalid Database Version\r\nCurrent Database Version:\t1.9");
    program.boxes.Expect(u"Error opening database:\r\n"_s + path);
    Choose(path);
    EXPECT_EQ(Panel(), libraryAttached);
    EXPECT_EQ(StoredDatabase(), program.LibraryPath());
    EXPECT_EQ(Rows(), QStringList{u"Bore"_s});
    EXPECT_EQ(Enabled(), u"xxxxxxxx");
    EXPECT_FALSE(Get<QTimer>(*main, "InitTimer").isActive());
  }
  EXPECT_TRUE(QDir(program.folder.path()).entryList({u"*.kestrel"_s}).isEmpty());
}

TEST_F(MainCommandsTest, MakesANewDatabase) {
  StartLoaded();
  for (const QString& path : {program.Path(u"new.kestrel"_s), program.LibraryPath()}) {
    files.Expect(path);
    if (QFile::exists(path)) program.boxes.Expect(path + u": the file exists already"_s);
    Action("Toolbar1_3_3").trigger();
    EXPECT_EQ(files.last.kind, FileDialog::Kind::Save);
    EXPECT_EQ(Panel(), u"Current Database: new.kestrel (DB Rev. 2.0)");
  }
}

TEST_F(MainCommandsTest, TakesOverAnAccessFile) {
  StartLoaded();
  const QString access = CopyOfData(u"plant.mdb"_s);
  const QString copy = program.Path(u"plant.kestrel"_s);
  program.boxes.Expect(Answer::No, copy);
  Choose(access);
  program.boxes.Expect(Answer::Yes);
  QTimer::singleShot(0, [] {
    auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(progress);
    progress->cancel();
  });
  Choose(access);
  EXPECT_EQ(QDir(program.folder.path()).entryList({u"plant*"_s}), QStringList{u"plant.mdb"_s});
  EXPECT_EQ(Panel(), libraryAttached);

  for (const QStringView question : {u"make the copy", u"exists already"}) {  // and is opened
    program.boxes.Expect(Answer::Yes, question);
    if (question == u"make the copy")
      program.boxes.Expect(
          u"plant.kestrel has all of plant.mdb:\r\n\r\n12 data sets with 11803 samples, and 6 units");
    Choose(access);
    EXPECT_EQ(Panel(), u"Current Database: plant.kestrel (DB Rev. 2.0)");
    EXPECT_EQ(StoredDatabase(), copy);
    Tick("InitTimer");
    EXPECT_GT(Rows().size(), 0);
  }
}

}  // namespace

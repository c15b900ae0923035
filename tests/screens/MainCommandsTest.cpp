// The main window's commands: the other screens, adding, editing, deleting, and the ways to a database.
#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QProgressDialog>

#include "core/DataObjectFunctions.h"
#include "platform/ui/Indicators.h"
#include "tests/screens/MainScreenFixture.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

class MainCommandsTest : public MainScreenFixture {};

TEST_F(MainCommandsTest, OpensTheOtherScreens) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  Action("Toolbar1_1").trigger();
  Action("Toolbar1_2_2").trigger();
  Action("Toolbar1_3_1").trigger();
  Action("Toolbar1_4_2").trigger();
  Action("menuView").trigger();
  Action("mnuEdit").trigger();
  EXPECT_EQ(opened,
            (QStringList{u"chart"_s, u"editor"_s, u"settings"_s, u"about"_s, u"chart"_s, u"editor"_s}));

  opened.clear();
  for (const bool viewsChart : {true, false}) {
    program.state.gSetup.ListviewDoubleClickViewsChart = viewsChart;
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(0));
    QTest::keyClick(&List(), Qt::Key_Return);
  }
  EXPECT_EQ(opened, (QStringList{u"chart"_s, u"chart"_s, u"editor"_s, u"editor"_s}));
}

TEST_F(MainCommandsTest, ThePopUpMenuOpensByMouseAndKey) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  auto& menu = Find<QMenu>("MyMenu");
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
  program.Insert(u"Bore"_s);
  program.Insert(u"Shaft"_s);
  StartLoaded();
  ClickRow(1);
  QTest::keyClick(main.get(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(opened, QStringList{u"editor to add"_s});
  EXPECT_EQ(List().currentItem()->text(1), u"Shaft"_s) << "nothing was added";

  inEditor = [this] {
    const CDataPtr added = TestProgram::NewDataSet(u"PIN"_s);
    DataObjectFunctions::SaveDataObjectToDatabase(added);
    DataObjectFunctions::AddDataObjectToSystem(added);
    EXPECT_EQ(added->ID(), 0);
    EXPECT_EQ(Rows().last(), u"PIN"_s);
  };
  const qint32 before = clock.ticks;
  Action("Toolbar1_2_1").trigger();
  EXPECT_EQ(clock.ticks, before) << "the user need not wait";
  EXPECT_EQ(Rows(), (QStringList{u"Bore"_s, u"Shaft"_s, u"PIN"_s}));
  EXPECT_EQ(program.state.gDataCollection.size(), 3U);
  EXPECT_EQ(List().currentItem()->text(1), u"PIN"_s);
  EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection[2]->ID());
  EXPECT_NE(program.state.gCurrentDataID, 0);
  EXPECT_EQ(Enabled(), u"xxxxxxxx"_s);
}

TEST_F(MainCommandsTest, AnEditedDataSetIsShownAnew) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  inEditor = [this] {
    const CDataPtr edited = program.state.gDataCollection[0];
    edited->SetProcessState(1);
    edited->SetSubGroupSize(7);
    DataObjectFunctions::ModifyDataObjectInSystem(edited);
  };
  QTest::keyClick(&List(), Qt::Key_Enter);  // the chart, as set
  Action("mnuEdit").trigger();
  EXPECT_EQ(List().topLevelItem(0)->toolTip(0), ProcessStateName(1));
  EXPECT_EQ(Find<ProcessStateIndicator>("ProcessStateIndicator1").Value(), 1);
  EXPECT_EQ(Summary("SubGroupSize"), u"7"_s);
}

TEST_F(MainCommandsTest, DeletesAfterAQuestion) {
  program.Insert(u"Bore"_s);
  program.Insert(u"Shaft"_s);
  StartLoaded();
  program.boxes.Expect(Answer::No);
  QTest::keyClick(&List(), Qt::Key_Delete);
  ExpectBox(program.boxes.Take(),
            u"Are you sure you want to delete the selected item: Bore ?\r\rThis operation cannot be undone"_s,
            u"System Message"_s, Icon::Question, Buttons::YesNo);
  EXPECT_EQ(program.Rows(u"SELECT * FROM StatData"_s).size(), 2U);

  for (const Answer ignored : {Answer::No, Answer::Yes}) {
    program.boxes.Expect(Answer::Yes);
    program.boxes.Expect(ignored);
    Action("Toolbar1_2_3").trigger();
    program.boxes.Take();
    ExpectBox(program.boxes.Take(), u"Selected data successfully deleted."_s, u"System Message"_s,
              Icon::Information, Buttons::YesNo);
    if (ignored == Answer::No) {
      EXPECT_EQ(Rows(), QStringList{u"Shaft"_s});
      EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection[0]->ID());
    }
  }
  EXPECT_TRUE(program.Rows(u"SELECT * FROM StatData"_s).empty());
  EXPECT_TRUE(program.state.gDataCollection.empty());
  EXPECT_EQ(Summary("SampleQty"), QString());
  EXPECT_EQ(Enabled(), u"-x--x---"_s);
}

TEST_F(MainCommandsTest, AFailedDeleteLeavesTheRow) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  const auto failure = [this] {
    program.boxes.Expect(Answer::Yes);
    program.boxes.Expect();
    Action("mnuDelete").trigger();
    program.boxes.Take();
    return program.boxes.Take().text;
  };
  const QString failed = u"QCGlobalFunctions::DeleteRecordByID failed with error: \r\n"_s;
  Connection::FaultHook = [](const QString& operation) {
    if (operation == u"execute"_s) throw DatabaseError(u"the file is read-only"_s);
  };
  EXPECT_EQ(failure(), failed + u"the file is read-only"_s);
  Connection::FaultHook = nullptr;
  QFile::remove(program.LibraryPath());
  EXPECT_EQ(failure(), failed + program.LibraryPath() + u": the file has been moved or deleted"_s);
  EXPECT_EQ(Rows(), QStringList{u"Bore"_s});
  EXPECT_EQ(Enabled(), u"xxxxxxxx"_s);
}

TEST_F(MainCommandsTest, ConnectsToAnotherDatabase) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  const QString other = OtherLibrary();
  Choose(other);
  EXPECT_TRUE(files.last.filter.startsWith(u"Access Database Files(*.mdb)"_s));
  EXPECT_EQ(files.last.folder, program.folder.path());
  EXPECT_EQ(Panel(), u"Current Database: other.kestrel (DB Rev. 2.1)"_s);
  EXPECT_EQ(StoredDatabase(), other);
  EXPECT_EQ(Enabled(), u"----x---"_s) << "the rows shown are still those of the other database";
  const qint32 before = clock.ticks;
  Tick("InitTimer");
  EXPECT_EQ(clock.ticks, before) << "an empty library is not announced as loaded";
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_EQ(Enabled(), u"-x--x---"_s);
  EXPECT_TRUE(List().accessibleDescription().contains(u"Stat Data, Add"_s));

  files.Expect({});  // cancelled
  QTest::keyClick(main.get(), Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(Panel(), u"Current Database: other.kestrel (DB Rev. 2.1)"_s);
}

TEST_F(MainCommandsTest, ARefusedDatabaseChangesNothing) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  const QString path = program.Path(u"notes.mdb"_s);
  QFile notes(path);
  ASSERT_TRUE(notes.open(QIODevice::WriteOnly) && notes.write("a shopping list"));
  notes.close();
  program.boxes.Expect();
  Choose(path);
  ExpectBox(program.boxes.Take(), u"Error opening database:\r\n"_s + path, u"Critical Error Message"_s,
            Icon::Critical, Buttons::Ok);
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_EQ(StoredDatabase(), program.LibraryPath());
  EXPECT_EQ(Rows(), QStringList{u"Bore"_s});
  EXPECT_EQ(Enabled(), u"xxxxxxxx"_s);
  EXPECT_FALSE(Find<QTimer>("InitTimer").isActive());
}

TEST_F(MainCommandsTest, ADatabaseForThisRunLeavesTheSettingAlone) {
  program.state.gDatabaseForThisRun = OtherLibrary();
  Start();
  EXPECT_EQ(Panel(), u"Current Database: other.kestrel (DB Rev. 2.1)"_s);
  EXPECT_EQ(StoredDatabase(), program.LibraryPath());
}

TEST_F(MainCommandsTest, MakesANewDatabase) {
  StartLoaded();
  files.Expect(program.Path(u"new.kestrel"_s));
  Action("Toolbar1_3_3").trigger();
  EXPECT_EQ(files.last.kind, FileDialog::Kind::Save);
  EXPECT_EQ(Panel(), u"Current Database: new.kestrel (DB Rev. 2.0)"_s);
  Tick("InitTimer");
  EXPECT_EQ(Enabled(), u"-x--x---"_s);

  files.Expect(program.LibraryPath());
  program.boxes.Expect();
  Action("Toolbar1_3_3").trigger();
  EXPECT_TRUE(program.boxes.Take().text.contains(program.LibraryPath() + u": the file exists already"_s));
  EXPECT_EQ(Panel(), u"Current Database: new.kestrel (DB Rev. 2.0)"_s);
}

TEST_F(MainCommandsTest, TakesOverAnAccessFile) {
  StartLoaded();
  const QString access = CopyOfData("plant.mdb");
  const QString copy = program.Path(u"plant.kestrel"_s);
  program.boxes.Expect(Answer::No);
  Choose(access);
  const MessageBox::Request question = program.boxes.Take();
  EXPECT_EQ(question.title, u"System Message"_s);
  EXPECT_EQ(question.buttons, Buttons::YesNo);
  EXPECT_TRUE(question.text.contains(access) && question.text.contains(copy)) << qPrintable(question.text);
  EXPECT_FALSE(QFile::exists(copy));
  EXPECT_EQ(Panel(), libraryAttached);

  program.boxes.Expect(Answer::Yes);
  QTimer::singleShot(0, [] {
    auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(progress);
    progress->cancel();
  });
  Choose(access);
  program.boxes.Take();
  EXPECT_EQ(QDir(program.folder.path()).entryList({u"plant*"_s}), QStringList{u"plant.mdb"_s});
  EXPECT_EQ(Panel(), libraryAttached);

  for (int time = 0; time < 2; ++time) {  // makes the copy, then opens the one that is there
    program.boxes.Expect(Answer::Yes);
    Choose(access);
    EXPECT_TRUE(program.boxes.Take().text.contains(time == 0 ? u"make the copy"_s : u"exists already"_s));
    EXPECT_EQ(Panel(), u"Current Database: plant.kestrel (DB Rev. 2.0)"_s);
    EXPECT_EQ(StoredDatabase(), copy);
    Tick("InitTimer");
    EXPECT_GT(Rows().size(), 0);
  }
}

TEST_F(MainCommandsTest, AnAccessFileThatCannotBeTakenOverIsRefusedWithTheReason) {
  StartLoaded();
  const QString damaged = CopyOfData("null_limit.mdb");
  ASSERT_TRUE(QFile::resize(damaged, QFileInfo(damaged).size() / 2));
  program.boxes.Expect();
  Choose(damaged);
  const QString refusal = program.boxes.Take().text;
  EXPECT_TRUE(refusal.startsWith(u"Error opening database:\r\n"_s + damaged)) << qPrintable(refusal);

  const QString old = CopyOfData("old_revision.mdb");
  program.boxes.Expect();
  program.boxes.Expect();
  Choose(old);
  EXPECT_TRUE(
      program.boxes.Take().text.startsWith(u"Invalid Database Version\r\nCurrent Database Version:\t1.9"_s));
  EXPECT_EQ(program.boxes.Take().text, u"Error opening database:\r\n"_s + old);
  EXPECT_TRUE(QDir(program.folder.path()).entryList({u"*.kestrel"_s}).isEmpty());
  EXPECT_EQ(Panel(), libraryAttached);
}

}  // namespace

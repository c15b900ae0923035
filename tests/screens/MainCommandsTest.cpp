// The main window's commands: the other screens, adding, editing, deleting, and the ways to a database. The
// protocol of each walk is approved.
#include <QProgressDialog>

#include "core/DataObjectFunctions.h"
#include "tests/screens/MainScreenFixture.h"

namespace {

class MainCommandsTest : public MainScreenFixture {};

TEST_F(MainCommandsTest, OpensTheOtherScreens) {
  StartLoaded({u"Bore"_s});
  for (const char* command : {"Toolbar1_1", "Toolbar1_2_1", "Toolbar1_2_2", "Toolbar1_3_1", "Toolbar1_3_6",
                              "Toolbar1_4_2", "menuView", "mnuEdit"})
    Trigger(command);
  for (const bool viewsChart : {true, false}) {
    program.state.gSetup.ListviewDoubleClickViewsChart = viewsChart;
    Step(u"double click"_s, [&] { QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(0)); });
    Step(u"Return"_s, [&] { QTest::keyClick(&List(), Qt::Key_Return); });
  }
  const QPoint beside = List().viewport()->rect().bottomLeft() - QPoint(0, 2);
  Step(u"double click beside"_s, [&] { QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, beside); });
  QDialog form(main.get());
  form.open();
  Tick("ExitTimer");  // waits for the form
}

TEST_F(MainCommandsTest, FollowsAFormToAnotherDataSet) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  for (const qint32 id : {2, 99}) Step(u"to %1"_s.arg(id), [&] { main->SelectListRow(id); });
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
  Press(Qt::CTRL | Qt::Key_N);  // and nothing is added
  inEditor = [this] { Add(u"PIN"_s); };
  const qint32 before = clock.ticks;
  Trigger("Toolbar1_2_1");
  EXPECT_EQ(clock.ticks, before) << "the user need not wait";
}

TEST_F(MainCommandsTest, AnEditedDataSetIsShownAnew) {
  StartLoaded({u"Bore"_s});
  inEditor = [this] {
    const CDataPtr edited = program.state.gDataCollection[0];
    edited->SetProcessState(1);
    edited->SetSubGroupSize(7);
    DataObjectFunctions::ModifyDataObjectInSystem(edited);
  };
  Trigger("mnuEdit");
}

TEST_F(MainCommandsTest, DeletesAfterAQuestion) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  Step(u"Del"_s, [&] { QTest::keyClick(&List(), Qt::Key_Delete); }, {Answer::No});
  for (int time = 0; time < 2; ++time) Trigger("Toolbar1_2_3", {Answer::Yes, Answer::No});
}

TEST_F(MainCommandsTest, AFailedDeleteLeavesTheRow) {
  StartLoaded({u"Bore"_s});
  QFile::remove(program.LibraryPath());
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"failed with error: \r\n"_s + program.LibraryPath() +
                       u": the file has been moved or deleted"_s);
  Action("mnuDelete").trigger();
  EXPECT_EQ(Rows().join(u' ') + Enabled(), u"Borexxxxxxxx");
}

TEST_F(MainCommandsTest, ConnectsToAnotherDatabase) {
  StartLoaded({u"Bore"_s});
  ChooseFile(OtherLibrary());  // the rows shown are still those of the other database
  EXPECT_EQ(files.last.folder, program.folder.path());
  const qint32 before = clock.ticks;
  Tick("InitTimer");
  EXPECT_EQ(clock.ticks, before) << "an empty library is not announced as loaded";
  protocol.Step(List().accessibleDescription());
  files.Expect({});  // cancelled
  Press(Qt::CTRL | Qt::Key_O);
}

TEST_F(MainCommandsTest, ARefusedDatabaseChangesNothing) {
  StartLoaded({u"Bore"_s});
  const QString notes = WriteFile(program.Path(u"notes.mdb"_s), "a shopping list"),
                damaged = CopyOfData(u"null_limit.mdb"_s), old = CopyOfData(u"old_revision.mdb"_s);
  ASSERT_TRUE(QFile::resize(damaged, QFileInfo(damaged).size() / 2));
  for (const QString& path : {notes, damaged}) ChooseFile(path, {Answer::Ok});
  ChooseFile(old, {Answer::Ok, Answer::Ok});
  EXPECT_FALSE(Get<QTimer>(*main, "InitTimer").isActive());
  EXPECT_TRUE(QDir(program.folder.path()).entryList({u"*.kestrel"_s}).isEmpty());
}

TEST_F(MainCommandsTest, MakesANewDatabase) {
  StartLoaded();
  for (const QString& path : {program.Path(u"new.kestrel"_s), program.LibraryPath()}) {
    files.Expect(path);
    if (QFile::exists(path)) program.boxes.Expect();
    Trigger("Toolbar1_3_3");
    EXPECT_EQ(files.last.kind, FileDialog::Kind::Save);
  }
}

TEST_F(MainCommandsTest, TakesOverAnAccessFile) {
  StartLoaded();
  const QString access = CopyOfData(u"plant.mdb"_s);
  ChooseFile(access, {Answer::No});
  QTimer::singleShot(0, [] {
    auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(progress);
    progress->cancel();
  });
  ChooseFile(access, {Answer::Yes});
  EXPECT_EQ(QDir(program.folder.path()).entryList({u"plant*"_s}), QStringList{u"plant.mdb"_s});
  ChooseFile(access, {Answer::Yes, Answer::Ok});
  Tick("InitTimer");
  ChooseFile(access, {Answer::Yes});  // it is there already, and is opened
}

}  // namespace

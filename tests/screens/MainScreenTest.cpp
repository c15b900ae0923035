// The main window as a user meets it: start, load, selection, each command, closing, and what goes wrong.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <deque>

#include "core/DataObjectFunctions.h"
#include "core/Library.h"
#include "core/RegistryFunctions.h"
#include "platform/ui/Indicators.h"
#include "screens/frmMain.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

const auto keyPath = u"Software\\Orvane Labs\\Kestrel"_s;
const auto noDatabase = u"Current Database: <none>"_s;
const auto libraryAttached = u"Current Database: StatData.mdb (DB Rev. 2.0)"_s;

// Lets a test look on, or do what a user does, while the program waits.
class WatchedClock : public TurnedClock {
 public:
  std::function<void()> whenSleeping;
  void Sleep(int milliseconds) override {
    TurnedClock::Sleep(milliseconds);
    if (whenSleeping) whenSleeping();
  }
};

class MainScreenTest : public testing::Test {
 protected:
  MainScreenTest() {
    program.state.gConnection.reset();
    program.state.gDatabaseOpen = false;
    program.state.clock = &clock;
  }

  // As on a machine whose settings name the library.
  void Start() {
    RegistryFunctions::SetKeyValue(keyPath, u"DatabaseName"_s, Registry::String, program.LibraryPath());
    Open();
  }

  void Open() {
    main = std::make_unique<frmMain>(frmMain::Screens{.chart = [this] { opened << u"chart"_s; },
                                                      .editor = [this] { Edited(); },
                                                      .configuration = [this] { opened << u"settings"_s; },
                                                      .about = [this] { opened << u"about"_s; }});
    ASSERT_TRUE(main->Form_Load());
    main->show();
    QCoreApplication::processEvents();
  }

  void StartLoaded() {
    Start();
    Tick("InitTimer");
  }

  void Edited() {
    opened << (program.state.gAddMode ? u"editor to add"_s : u"editor"_s);
    if (inEditor) inEditor();
  }

  template <class T>
  T& Find(const char* name) const {
    T* found = main->findChild<T*>(QString::fromLatin1(name));
    if (!found) throw std::runtime_error(name);
    return *found;
  }
  void Tick(const char* timer) const { QMetaObject::invokeMethod(&Find<QTimer>(timer), "timeout"); }
  QAction& Action(const char* name) const { return Find<QAction>(name); }
  QTreeWidget& List() const { return Find<QTreeWidget>("ListView1"); }
  QString Panel() const { return Find<QLabel>("StatusBar1_1").text(); }
  QString Summary(const char* name) const { return Find<QLabel>(name).text(); }

  QStringList Rows() const {
    QStringList rows;
    for (int i = 0; i < List().topLevelItemCount(); ++i) rows << List().topLevelItem(i)->text(1);
    return rows;
  }

  void ClickRow(int row, Qt::MouseButton button = Qt::LeftButton) const {
    QTest::mouseClick(List().viewport(), button, {}, PlaceOf(row));
  }
  QPoint PlaceOf(int row) const {
    const QTreeWidgetItem* item = List().topLevelItem(row);
    return List().visualItemRect(item).center();
  }

  // The documented commands in one word: View, Add, Edit, Delete, Exit, the three of the pop-up menu.
  QString Enabled() const {
    QString letters;
    for (const char* name : {"Toolbar1_1", "Toolbar1_2_1", "Toolbar1_2_2", "Toolbar1_2_3", "Toolbar1_5",
                             "menuView", "mnuEdit", "mnuDelete"})
      letters += Action(name).isEnabled() ? u'x' : u'-';
    return letters;
  }

  static void ExpectBox(const MessageBox::Request& box, const QString& text, const QString& title, Icon icon,
                        Buttons buttons) {
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.title, title);
    EXPECT_EQ(box.icon, icon);
    EXPECT_EQ(box.buttons, buttons);
  }

  // A second library in the test's folder, with one data set.
  QString OtherLibrary() {
    const QString path = program.Path(u"other.kestrel"_s);
    Library::Create(path,
                    [](Connection& other) { other.Execute(u"INSERT INTO DBRevision VALUES ('2.1')"_s); });
    return path;
  }

  QString CopyOfData(const char* name) const {
    const QString path = program.Path(QString::fromLatin1(name));
    EXPECT_TRUE(QFile::copy(QStringLiteral(KESTREL_TEST_DATA "/access/") + QString::fromLatin1(name), path));
    return path;
  }

  // The Database Connection command, with that file chosen.
  void Choose(const QString& path) {
    files.Expect(path);
    Action("Toolbar1_3_2").trigger();
  }

  QString StoredDatabase() const {
    return RegistryFunctions::GetKeyValue(keyPath, u"DatabaseName"_s, Registry::String);
  }

  TestProgram program;
  WatchedClock clock;
  RecordedFileDialogs files;
  QStringList opened;
  std::function<void()> inEditor;
  std::unique_ptr<frmMain> main;
};

TEST_F(MainScreenTest, LoadsTheLibraryOneSecondAfterTheStart) {
  program.Insert(u"Bore"_s);
  const qint32 shaft = program.Insert(u"Shaft"_s);
  Start();
  EXPECT_EQ(main->windowTitle(), u"Kestrel"_s);
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_EQ(Enabled(), u"--------"_s);
  EXPECT_TRUE(Find<QTimer>("InitTimer").isActive());
  EXPECT_FALSE(Find<QTimer>("ClockTimer").isActive());

  QStringList panels;
  std::vector<int> progress;
  clock.whenSleeping = [&] {
    if (panels.isEmpty() || panels.last() != Panel()) panels << Panel();
    const auto& bar = Find<QProgressBar>("ccrpProgressBar1");
    if (bar.isVisible() && (progress.empty() || progress.back() != bar.value()))
      progress.push_back(bar.value());
  };
  const qint32 start = clock.ticks;
  Tick("InitTimer");
  EXPECT_EQ(panels, (QStringList{u"Reading Database:"_s, u"Database Loaded"_s}));
  EXPECT_EQ(progress, (std::vector<int>{50, 100}));
  EXPECT_NEAR(clock.ticks - start, 3000, 60);  // the rows, the full bar, the news: a second each
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_FALSE(Find<QProgressBar>("ccrpProgressBar1").isVisible());
  EXPECT_FALSE(Find<QTimer>("InitTimer").isActive());
  EXPECT_TRUE(Find<QTimer>("ClockTimer").isActive());

  EXPECT_EQ(Rows(), (QStringList{u"Bore"_s, u"Shaft"_s}));
  EXPECT_EQ(List().topLevelItem(1)->text(2), QString::number(shaft));
  EXPECT_TRUE(List().isColumnHidden(2));
  EXPECT_EQ(List().headerItem()->text(1), u"Data Description"_s);
  const CData& bore = *program.state.gDataCollection[0];
  EXPECT_EQ(List().topLevelItem(0)->toolTip(0), ProcessStateName(bore.ProcessState()));
  EXPECT_EQ(program.state.gCurrentDataID, bore.ID());
  EXPECT_EQ(Summary("SampleQty"), u"40"_s);
  EXPECT_EQ(Summary("CPKValue"), QString::number(bore.CPKValue()));
  EXPECT_EQ(Find<ProcessStateIndicator>("ProcessStateIndicator1").Value(), bore.ProcessState());
  EXPECT_EQ(Enabled(), u"xxxxxxxx"_s);
}

TEST_F(MainScreenTest, SelectingARowShowsItsSummary) {
  program.Insert(u"Bore"_s);
  const qint32 shaft = program.Insert(u"Shaft"_s);
  program.Execute(u"UPDATE StatData SET SubGroupSize = 5 WHERE ID = ?"_s, {shaft});
  StartLoaded();
  EXPECT_EQ(Summary("SubGroupSize"), u"4"_s);
  ClickRow(1);
  EXPECT_EQ(program.state.gCurrentDataID, shaft);
  EXPECT_EQ(Summary("SubGroupSize"), u"5"_s);
  QTest::keyClick(&List(), Qt::Key_Up);
  EXPECT_EQ(Summary("SubGroupSize"), u"4"_s);

  program.state.gDataCollection.clear();
  program.boxes.Expect();
  ClickRow(1);
  ExpectBox(program.boxes.Take(), u"error attempting to get the current data for the item selected: \r\n"_s,
            u"System Message"_s, Icon::Critical, Buttons::Ok);
}

TEST_F(MainScreenTest, TheRowsAppearWithinASecondHoweverManyThereAre) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  const CDataPtr one = program.state.gDataCollection[0];
  for (const int count : {400, 1000, 3000}) {
    program.Execute(u"DELETE FROM StatData WHERE ID > 1"_s);
    program.Execute(
        u"WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT INTO StatData "
        u"SELECT i, 'No ' || i, s.\"Values\", LastModified, NominalSpecLimit, UpperSpecLimit, "
        u"LowerSpecLimit, "
        u"HiFlier, LoFlier, XBarUCL, XBarLCL, XBarMean, RBarUCL, RBarLCL, RBarMean, SubGroupSize, "
        u"SensitivityValue, DetectionPeriod, UnitOfMeasurement FROM n, StatData s WHERE s.ID = 1"_s.arg(
            count));
    main->EnableLoadTimer();
    const qint32 start = clock.ticks;
    Tick("InitTimer");
    EXPECT_EQ(Rows().size(), count);
    const int rowsTook = clock.ticks - start - 2000;  // without the two pauses at the end
    EXPECT_NEAR(rowsTook, count == 3000 ? 0 : count == 400 ? 800 : 1000, 50) << count;
  }
}

TEST_F(MainScreenTest, WithoutADatabaseItSaysHowToGetOne) {
  program.boxes.Expect();
  Open();
  ExpectBox(
      program.boxes.Take(),
      u"A valid database connection could not be established. From the tool bar, select "
      u"Tools->Connection (click on the down arrow for a drop-down list). A dialog will be displayed so "
      u"you can open a valid database file."_s,
      u"System Message"_s, Icon::Information, Buttons::Ok);
  EXPECT_EQ(Panel(), noDatabase);
  Tick("InitTimer");
  EXPECT_EQ(Panel(), noDatabase);
  EXPECT_EQ(Enabled(), u"----x---"_s);
  EXPECT_TRUE(List().accessibleDescription().contains(u"New Database"_s));
}

TEST_F(MainScreenTest, AnEmptyLibraryOffersOnlyToAdd) {
  StartLoaded();
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_EQ(clock.ticks, 1000) << "an empty library is not announced as loaded";
  EXPECT_EQ(Enabled(), u"-x--x---"_s);
  EXPECT_TRUE(List().accessibleDescription().contains(u"Stat Data, Add"_s));
}

TEST_F(MainScreenTest, OpensTheOtherScreens) {
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

TEST_F(MainScreenTest, ThePopUpMenuOpensByMouseAndKey) {
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

TEST_F(MainScreenTest, AddingReadsTheLibraryAgainAndSelectsTheNewDataSet) {
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

TEST_F(MainScreenTest, AnEditedDataSetIsShownAnew) {
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

TEST_F(MainScreenTest, DeletesAfterAQuestion) {
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

TEST_F(MainScreenTest, AFailedDeleteLeavesTheRow) {
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
  Connection::FaultHook = [](const QString&) { throw DatabaseError(u"the file is read-only"_s); };
  EXPECT_EQ(failure(), failed + u"the file is read-only"_s);
  Connection::FaultHook = nullptr;
  QFile::remove(program.LibraryPath());
  EXPECT_EQ(failure(), failed + program.LibraryPath() + u": the file has been moved or deleted"_s);
  EXPECT_EQ(Rows(), QStringList{u"Bore"_s});
  EXPECT_EQ(Enabled(), u"xxxxxxxx"_s);
}

TEST_F(MainScreenTest, ConnectsToAnotherDatabase) {
  program.Insert(u"Bore"_s);
  StartLoaded();
  const QString other = OtherLibrary();
  Choose(other);
  EXPECT_TRUE(files.last.filter.startsWith(u"Access Database Files(*.mdb)"_s));
  EXPECT_EQ(files.last.folder, program.folder.path());
  EXPECT_EQ(Panel(), u"Current Database: other.kestrel (DB Rev. 2.1)"_s);
  EXPECT_EQ(StoredDatabase(), other);
  EXPECT_EQ(Enabled(), u"----x---"_s) << "the rows shown are still those of the other database";
  Tick("InitTimer");
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_EQ(Enabled(), u"-x--x---"_s);

  files.Expect({});  // cancelled
  QTest::keyClick(main.get(), Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(Panel(), u"Current Database: other.kestrel (DB Rev. 2.1)"_s);
}

TEST_F(MainScreenTest, ARefusedDatabaseChangesNothing) {
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

TEST_F(MainScreenTest, ADatabaseForThisRunLeavesTheSettingAlone) {
  program.state.gDatabaseForThisRun = OtherLibrary();
  Start();
  EXPECT_EQ(Panel(), u"Current Database: other.kestrel (DB Rev. 2.1)"_s);
  EXPECT_EQ(StoredDatabase(), program.LibraryPath());
}

TEST_F(MainScreenTest, MakesANewDatabase) {
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

TEST_F(MainScreenTest, TakesOverAnAccessFile) {
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

TEST_F(MainScreenTest, AnAccessFileThatCannotBeTakenOverIsRefusedWithTheReason) {
  StartLoaded();
  const QString access = CopyOfData("null_limit.mdb");
  QFile damaged(access);
  ASSERT_TRUE(damaged.open(QIODevice::ReadWrite) && damaged.resize(damaged.size() / 2));
  damaged.close();
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  Choose(access);
  program.boxes.Take();
  const QString refusal = program.boxes.Take().text;
  EXPECT_TRUE(refusal.startsWith(u"Error opening database:\r\n"_s + access)) << qPrintable(refusal);
  EXPECT_FALSE(QFile::exists(program.Path(u"null_limit.kestrel"_s)));
  EXPECT_EQ(Panel(), libraryAttached);
}

TEST_F(MainScreenTest, ClosesOnlyAfterTheFirstLoadAndAQuestion) {
  program.Insert(u"Bore"_s);
  Start();
  EXPECT_FALSE(main->close()) << "refused without a question";
  Tick("InitTimer");

  bool unloaded = false;
  QObject::connect(main.get(), &frmMain::Unloaded, [&] { unloaded = true; });
  program.boxes.Expect(Answer::No);
  EXPECT_FALSE(main->close());
  ExpectBox(program.boxes.Take(), u"Are you sure you wish to quit using Kestrel?"_s, u"System Message"_s,
            Icon::Question, Buttons::YesNo);
  EXPECT_TRUE(main->isVisible());

  Action("Toolbar1_5").trigger();
  EXPECT_TRUE(Find<QTimer>("ExitTimer").isActive());
  program.boxes.Expect(Answer::Yes);
  const qint32 before = clock.ticks;
  bool triedAgain = false;
  clock.whenSleeping = [&] {
    if (std::exchange(triedAgain, true)) return;
    main->close();  // asks no second question
    Tick("ClockTimer");
    Tick("InitTimer");
  };
  Tick("ExitTimer");
  EXPECT_TRUE(triedAgain);
  EXPECT_NEAR(clock.ticks - before, 1000, 20);
  EXPECT_TRUE(unloaded);
  EXPECT_FALSE(main->isVisible());
  EXPECT_TRUE(program.state.gDataCollection.empty());
  EXPECT_EQ(program.state.gConnection->GetState(), Connection::Closed);
  for (const char* timer : {"InitTimer", "ClockTimer", "ExitTimer"})
    EXPECT_FALSE(Find<QTimer>(timer).isActive()) << timer;
}

TEST_F(MainScreenTest, ClosesSafelyInTheMiddleOfALaterLoad) {
  for (int i = 0; i < 5; ++i) program.Insert(u"Bore %1"_s.arg(i));
  StartLoaded();
  program.state.gRunningInDevelopment = true;  // no question
  bool closed = false;
  clock.whenSleeping = [&] {
    if (!closed && Rows().size() == 3) closed = main->close();
  };
  main->EnableLoadTimer();
  Tick("InitTimer");
  EXPECT_TRUE(closed);
  EXPECT_EQ(Rows().size(), 3);
  EXPECT_FALSE(Find<QTimer>("ClockTimer").isActive());
}

TEST_F(MainScreenTest, NothingDisturbsALoad) {
  for (int i = 0; i < 5; ++i) program.Insert(u"Bore %1"_s.arg(i));
  StartLoaded();
  int looks = 0;
  clock.whenSleeping = [&] {
    if (Rows().size() == 5 || Rows().isEmpty()) return;
    ++looks;
    for (const char* name : {"Toolbar1_1", "Toolbar1_2_1", "Toolbar1_2_2", "Toolbar1_2_3", "Toolbar1_3_2",
                             "Toolbar1_3_3", "menuView", "mnuEdit", "mnuDelete"})
      Action(name).trigger();
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(0));
    QTest::keyClick(&List(), Qt::Key_Delete);
    Tick("InitTimer");
    Tick("ClockTimer");
    ClickRow(int(Rows().size()) - 1);
  };
  main->EnableLoadTimer();
  Tick("InitTimer");
  EXPECT_GT(looks, 0);
  EXPECT_TRUE(opened.isEmpty());
  EXPECT_EQ(Rows().size(), 5);
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection[3]->ID())
      << "the user's choice stays";
}

TEST_F(MainScreenTest, AFailedLoadLeavesTheListEmpty) {
  program.Insert(u"Bore"_s);
  const qint32 broken = program.Insert(u"Shaft"_s);
  StartLoaded();
  program.Execute(u"UPDATE StatData SET XBarUCL = NULL WHERE ID = ?"_s, {broken});
  main->EnableLoadTimer();
  program.boxes.Expect();
  Tick("InitTimer");
  EXPECT_TRUE(program.boxes.Take().text.contains(u"\"Shaft\""_s));
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_EQ(Summary("SampleQty"), QString());
}

TEST_F(MainScreenTest, TheClockSpeaksEnglishEverywhere) {
  StartLoaded();
  QLocale::setDefault(QLocale(QLocale::German));
  Tick("ClockTimer");
  QLocale::setDefault(QLocale::C);
  EXPECT_EQ(Find<QLabel>("StatusBar1_2").text(), u"Feb 29, 2024     01:45:59 PM     "_s);
}

}  // namespace

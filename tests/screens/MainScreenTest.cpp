// The main window from its start to its end: loading, selecting, what is enabled, closing, and what goes
// wrong.
#include <QFileInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QProgressBar>
#include <QScreen>

#include "screens/Indicators.h"
#include "tests/screens/MainScreenFixture.h"
#include "tests/support/Figures.h"
#include "tests/support/RecordingDevice.h"
#include "texts/DetectionRules.h"

namespace {

const QStringList five{u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s};

class MainScreenTest : public MainScreenFixture {};

TEST_F(MainScreenTest, LoadsTheLibraryOneSecondAfterTheStart) {
  Start({u"Bore"_s, u"Shaft"_s});
  protocol.Begin(u"Start"_s, main.get());
  const auto& bar = Get<QProgressBar>(*main, "ccrpProgressBar1");
  QStringList seen;
  clock.whenSleeping = [&] {
    const QString now = Panel() + (bar.isVisible() ? QString::number(bar.value()) : QString());
    if (!seen.contains(now)) seen << now;
  };
  const qint32 start = clock.ticks;
  Tick("InitTimer");
  EXPECT_EQ(seen.join(u' '), u"Reading Database:50 Reading Database:100 Database Loaded");
  EXPECT_NEAR(clock.ticks - start, 3000, 60);  // the rows, the full bar, the news: a second each
  EXPECT_TRUE(Get<QTimer>(*main, "ClockTimer").isActive());
  EXPECT_EQ(StateOf(0), ProcessState::Name(program.state.gDataCollection[0]->ProcessState()));
  CData& shaft = *program.state.gDataCollection[1];
  const qint32 id = std::exchange(shaft, DistinctData()).ID();
  shaft.SetID(id);
  shaft.SetDescription(u"Shaft"_s);
  shaft.SetProcessState(2);
  Step(u"Shaft, of figures that are none alike"_s, [this] { ClickRow(1); });
  EXPECT_EQ(Get<ProcessStateIndicator>(*main, "ProcessStateIndicator1").Value(), 2);
  PressOn(List(), Qt::Key_Up);
  program.state.gDataCollection.clear();
  Step(u"a row of nothing"_s, [this] { ClickRow(1); }, {Answer::Ok});
}

TEST_F(MainScreenTest, TheRowsAppearWithinASecondHoweverManyThereAre) {
  StartLoaded({u"Bore"_s});
  program.Execute(u"CREATE TABLE Bore AS SELECT * FROM StatData"_s);
  program.Execute(u"UPDATE Bore SET ID = NULL"_s);
  for (const auto& [count, milliseconds] : {std::pair{400, 800}, {1000, 1000}, {3000, 0}}) {
    program.Execute(u"DELETE FROM StatData"_s);
    program.Execute(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) INSERT INTO StatData "
        u"SELECT Bore.* FROM n, Bore"_s,
        {count});
    main->EnableLoadTimer();
    const qint32 start = clock.ticks;
    Fire(*main, "InitTimer");
    EXPECT_EQ(Rows().size(), count);
    EXPECT_NEAR(clock.ticks - start, milliseconds + 2000, 50) << count << " rows and two pauses at the end";
  }
}

TEST_F(MainScreenTest, WithoutADatabaseItOffersTheWaysToOne) {
  program.boxes.Expect(u"A valid database connection could not be established. From the tool bar, select ");
  program.boxes.whileShown = [this] {
    EXPECT_TRUE(program.state.gDatabaseOpen || main->findChild<QWidget*>(u"StartPage"_s)) << "behind it";
  };
  Open();
  protocol.Begin(u"Start"_s, main.get());
  Tick("InitTimer");
  for (const char* button : {"cmdNew", "cmdOpen"}) {
    files.Expect({});  // cancelled
    Choose(button);
  }
  const QString mine = program.Path(u"mine.kestrel"_s);
  files.Expect(mine);
  Choose("cmdSamples");
  EXPECT_EQ(QFileInfo(files.last.folder).fileName(), u"Kestrel Samples.kestrel");
  Tick("InitTimer");
  EXPECT_EQ(program.Rows(u"SELECT Name FROM Units"_s, mine).size(), 9U);

  const QString other = OtherLibrary();
  ChooseFile(other);
  main.reset();
  program.state.gLibrary.reset();
  program.state.gDatabaseOpen = false;
  ASSERT_TRUE(QFile::remove(mine) && QFile::remove(other));
  program.boxes.Expect(other + u" with error: \r\nthere is no such file"_s);
  Open();
  EXPECT_EQ(TextOf(*main, "cmdRecent_1"), u"other.kestrel");
  program.boxes.Expect(mine + u" with error: \r\nthere is no such file"_s);
  Click(*main, "cmdRecent_2");
  EXPECT_FALSE(List().isVisible());
}

TEST_F(MainScreenTest, KeepsItsPlaceAndItsColumns) {
  const auto columns = [this] {
    return std::array{List().columnWidth(MainListModel::Description), List().columnWidth(MainListModel::Cpk)};
  };
  StartLoaded({u"Bore"_s});
  const QSize first = main->size();
  const auto automatic = columns();
  for (const QRect& place : {QRect(90, 200, 700, 520), QRect(5000, 4000, 700, 520)}) {
    main->setGeometry(place);
    List().header()->resizeSection(MainListModel::Cpk, 123);
    List().header()->resizeSection(MainListModel::Description, 177);
    program.state.gRunningInDevelopment = true;  // no question
    main->close();
    Open();
    EXPECT_EQ(main->size(), place.size());
    EXPECT_NE(main->size(), first);
    EXPECT_TRUE(main->screen()->geometry().contains(main->geometry())) << "another screen is gone";
    const bool isNear = (main->pos() - place.topLeft()).manhattanLength() < 20;  // but for the frame
    EXPECT_EQ(isNear, place.x() < 800);
    EXPECT_EQ(columns(), (std::array{177, 123}));
    EXPECT_NE(columns(), automatic);
    Fire(*main, "InitTimer");
  }
}

TEST_F(MainScreenTest, ClosesOnlyAfterTheFirstLoadAndAQuestion) {
  Start({u"Bore"_s});
  EXPECT_FALSE(main->close()) << "refused without a question";
  Fire(*main, "InitTimer");
  protocol.Begin(u"Start"_s, main.get());
  bool unloaded = false;
  QObject::connect(main.get(), &frmMain::Unloaded, [&] { unloaded = true; });
  Step(u"close"_s, [this] { main->close(); }, {Answer::No});
  Trigger("Toolbar1_5");
  const qint32 before = clock.ticks;
  bool triedAgain = false;
  clock.whenSleeping = [&] {
    if (std::exchange(triedAgain, true)) return;
    main->close();  // asks no second question
    for (const char* timer : {"ClockTimer", "InitTimer"}) Fire(*main, timer);
  };
  Tick("ExitTimer", {Answer::Yes});
  EXPECT_TRUE(triedAgain && unloaded && !program.state.gLibrary);
  EXPECT_NEAR(clock.ticks - before, 1000, 20);
}

TEST_F(MainScreenTest, ClosesSafelyInTheMiddleOfALaterLoad) {
  StartLoaded(five);
  program.state.gRunningInDevelopment = true;  // no question
  bool closed = false;
  clock.whenSleeping = [&] {
    if (!closed && Rows().size() == 3) closed = main->close();
  };
  main->EnableLoadTimer();
  Fire(*main, "InitTimer");
  EXPECT_TRUE(closed);
  EXPECT_EQ(Rows().size(), 3);
  EXPECT_FALSE(Get<QTimer>(*main, "ClockTimer").isActive());
}

TEST_F(MainScreenTest, NothingDisturbsALoad) {
  StartLoaded(five);
  int looks = 0;
  clock.whenSleeping = [&] {
    if (Rows().size() == 5 || Rows().isEmpty()) return;
    ++looks;
    for (const char* name : {"Toolbar1_1", "Toolbar1_2_1", "Toolbar1_2_2", "Toolbar1_2_3", "Toolbar1_3_2",
                             "Toolbar1_3_3", "menuView", "mnuEdit", "mnuDelete"})
      Action(name).trigger();
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(0));
    QTest::keyClick(&List(), Qt::Key_Delete);
    Fire(*main, "InitTimer");
    Fire(*main, "ClockTimer");
    ClickRow(int(Rows().size()) - 1);
  };
  main->EnableLoadTimer();
  Fire(*main, "InitTimer");
  EXPECT_GT(looks, 0);
  EXPECT_TRUE(opened.isEmpty());
  EXPECT_EQ(Rows(), five);
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_EQ(program.state.gCurrentDataID, program.state.gDataCollection[3]->ID())
      << "the user's choice stays";
}

TEST_F(MainScreenTest, ANarrowStatusBarKeepsTheLibrarysName) {
  StartLoaded();
  auto& panel = Get<QLabel>(*main, "StatusBar1_1");
  panel.resize(panel.fontMetrics().horizontalAdvance(u"StatData.mdb (DB, and margins"_s), panel.height());
  RecordingDevice device(panel.size());
  panel.render(&device, {}, {}, QWidget::DrawChildren);
  ASSERT_FALSE(device.Shapes().empty());
  EXPECT_TRUE(device.Shapes()[0].text.startsWith(u"StatData.mdb (D"_s))
      << device.Shapes()[0].text.toStdString();
  QHelpEvent event(QEvent::ToolTip, {}, {});
  QCoreApplication::sendEvent(&panel, &event);
  EXPECT_EQ(panel.toolTip(), libraryAttached);
}

TEST_F(MainScreenTest, TheClockSpeaksEnglishEverywhere) {
  StartLoaded();
  QLocale::setDefault(QLocale(QLocale::German));
  Fire(*main, "ClockTimer");
  QLocale::setDefault(QLocale::C);
  EXPECT_EQ(TextOf(*main, "StatusBar1_2"), u"Feb 29, 2024     01:45:59 PM     ");
}

}  // namespace

// The main window from its start to its end: loading, selecting, what is enabled, closing, and what goes
// wrong.
#include <QProgressBar>

#include "platform/ui/Indicators.h"
#include "tests/screens/MainScreenFixture.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

class MainScreenTest : public MainScreenFixture {};

TEST_F(MainScreenTest, LoadsTheLibraryOneSecondAfterTheStart) {
  program.Insert(u"Bore"_s);
  const qint32 shaft = program.Insert(u"Shaft"_s);
  Start();
  EXPECT_EQ(Panel(), libraryAttached);
  EXPECT_TRUE(Rows().isEmpty());
  EXPECT_EQ(Enabled(), u"--------"_s);
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
  EXPECT_TRUE(Find<QTimer>("ClockTimer").isActive());

  EXPECT_EQ(Rows(), (QStringList{u"Bore"_s, u"Shaft"_s}));
  EXPECT_EQ(List().topLevelItem(1)->text(2), QString::number(shaft));
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
  EXPECT_EQ(program.boxes.Take().text,
            u"error attempting to get the current data for the item selected: \r\n"_s);
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

// The chart screen and its data set: what it shows, saves and asks.
#include "tests/screens/ChartScreenFixture.h"

#include "screens/Indicators.h"

namespace {

class ChartScreenTest : public ChartScreenFixture {};

TEST_F(ChartScreenTest, RefusesWhatItCannotShow) {
  const auto refuse = [this](QStringView reason) {
    program.boxes.Expect(reason);
    EXPECT_EQ(StatGraphics({}, printing).exec(), QDialog::Rejected);
  };
  data->SetNumberOfPlotPoints(7);
  refuse(u"A minimum of 8 data points are required");
  const CData whole = *data;
  data->SetSubGroupSize(5);
  data->SetDelimitedInputString(u"1,"_s.repeated(30));
  refuse(u"\r\n\r\n30 samples make 6 points; 8 are needed for a chart: 10 more samples.");
  *data = whole;
  data->SetNumberOfPlotPoints(8);
  Open();
  EXPECT_TRUE(screen->isVisible());
  data->SetRBarUCL(1.7e308);
  refuse(u"Could not generate scaling data");
  program.state.gCurrentDataID = 99;
  refuse(u"error attempting to get the current data for the item selected: \r\n");
}

TEST_F(ChartScreenTest, ShowsTheVerdict) {
  data->SetRuleViolation(3);  // left over from an older verdict
  data->SetProcessState(4);
  for (const bool inControl : {true, false}) {
    data->SetIsInControl(inControl);
    Open();
    EXPECT_EQ(TextOf(*screen, "panelRuleViolationValue"), inControl ? u"<none>" : u"3");
    EXPECT_TRUE(TextOf(*screen, "panelMessage")
                    .startsWith(inControl ? u"No rule violations." : u"DETECTION RULE THREE: "));
    EXPECT_EQ(Get<Led>(*screen, "orvLEDControl1").ColorValue(), inControl ? Led::Go : Led::Stop);
    EXPECT_EQ(Get<ProcessStateIndicator>(*screen, "ProcessStateIndicator1").Value(), 4);
  }
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  Click(*screen, "Toolbar1_6");
  QTest::keyClick(screen.get(), Qt::Key_F1);
  EXPECT_EQ(helpTopics, QList<qint32>({0, 23}));
}

TEST_F(ChartScreenTest, ThePanelMakesWayForTheChartsInASmallWindow) {
  Open();
  const QWidget& panel = Get<QWidget>(*screen, "VerdictPanel");
  for (const int width : {1200, 420, 900}) {
    screen->resize(width, 400);
    EXPECT_EQ(panel.isVisible(), width > 420);
    EXPECT_TRUE(screen->rect().contains(QRect(view->mapTo(screen.get(), QPoint()), view->size()))) << width;
    EXPECT_GE(view->width(), 320);
  }
}

TEST_F(ChartScreenTest, DrawsWhatItCanOfABrokenDataSet) {
  data->SetDelimitedInputString(u"1,2,x,"_s);
  program.boxes.Expect(u"StatGraphics::SetupControlCharts failed");
  program.boxes.Expect(u"StatGraphics::DrawHistogramGraph failed");
  Open();
  EXPECT_TRUE(screen->isVisible());
  const auto& summary = Page().Graph(int(GraphId::Text)).Operations();
  EXPECT_GT(std::get<ChartGraph::Table>(summary.at(0)).lines.size(), 9u);
}

TEST_F(ChartScreenTest, RecalculatesFromFivePointsOnAndSavesSilently) {
  Open();
  EXPECT_TRUE(TextOf(*screen, "lblLimits").contains(u"preliminary: they rest on 10 points"));
  Click(*screen, "Toolbar1_4");
  EXPECT_TRUE(TextOf(*screen, "lblLimits").contains(u"preliminary: they rest on 6 points"));
  const double limit = DrawnLimit();
  EXPECT_NE(Held().XBarUCL(), limit) << "not before it is saved";
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(StoredLimit(), limit);
  EXPECT_EQ(Held().XBarUCL(), limit);
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"saved 13:45:59");
  EXPECT_EQ(program.screen.calls, QStringList(u"UpdateListRow Shaft"_s));

  EXPECT_EQ(recalculations, 1);
  Close();  // nothing to ask any more
  EXPECT_FALSE(screen->isVisible());
}

TEST_F(ChartScreenTest, AsksBeforeNewLimitsAreLost) {
  const double before = data->XBarUCL();
  const double stored = StoredLimit();
  Open();
  Click(*screen, "Toolbar1_4");
  const double after = DrawnLimit();
  ASSERT_NE(after, before);
  program.boxes.Expect(Answer::Cancel, u"Data has changed");
  Close();
  EXPECT_TRUE(screen->isVisible());
  EXPECT_EQ(DrawnLimit(), after);

  const auto texts = [this] {
    QStringList all;
    const auto& summary = Page().Graph(int(GraphId::Text)).Operations().at(0);
    for (const ChartGraph::Line& line : std::get<ChartGraph::Table>(summary).lines)
      for (const ChartGraph::Cell& cell : line.cells) all << cell.text;
    return all;
  };
  const QStringList written = texts();
  TestProgram::FailAt(u"commit"_s);
  program.boxes.Expect(u"the disk is full");
  Click(*screen, "Toolbar1_2");
  for (int time = 0; time < 2; ++time) Click(*screen, "checkFitScale");
  EXPECT_EQ(texts(), written) << "modified as long ago as before";
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"the disk is full");
  Close();
  TestProgram::FailAt({});
  EXPECT_TRUE(screen->isVisible()) << "what could not be saved is not thrown away";

  program.boxes.Expect(Answer::No);
  Close();
  EXPECT_FALSE(screen->isVisible());
  EXPECT_EQ(StoredLimit(), stored);
  EXPECT_EQ(Held().XBarUCL(), before);

  Open();
  Click(*screen, "Toolbar1_4");
  program.boxes.Expect(Answer::Yes);
  Click(*screen, "Toolbar1_7");
  EXPECT_FALSE(screen->isVisible());
  EXPECT_EQ(StoredLimit(), after);
}

// What was known of the row before the last save would make the next one a conflict, or bring old limits
// back.
TEST_F(ChartScreenTest, NoAfterASaveGoesBackToWhatWasSaved) {
  Open();
  Click(*screen, "Toolbar1_4");
  Click(*screen, "Toolbar1_2");
  const double saved = StoredLimit();
  lastPoint = 8;
  Click(*screen, "Toolbar1_4");
  ASSERT_NE(DrawnLimit(), saved);
  program.boxes.Expect(Answer::No);
  Close();
  EXPECT_EQ(Held().XBarUCL(), saved);
  Open();
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(StoredLimit(), saved);
}

TEST_F(ChartScreenTest, NewLimitsNeverReplaceWhatAnotherProgramWrote) {
  Open();
  Click(*screen, "Toolbar1_4");
  const double mine = DrawnLimit();
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '10,10,10,10,'"_s);
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"saved 13:45:59. 4 values were added meanwhile.");
  EXPECT_EQ(TextOf(*screen, "SampleQty"), u"44");
  EXPECT_EQ(StoredLimit(), mine);

  lastPoint = 8;
  Click(*screen, "Toolbar1_4");
  program.Execute(u"UPDATE StatData SET XBarUCL = 99"_s);
  ClickInNextWindow("cmdCancel");
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(StoredLimit(), 99);
  program.boxes.Expect(Answer::Yes, u"Data has changed");
  ClickInNextWindow("cmdCancel");
  Close();
  EXPECT_TRUE(screen->isVisible());
  ClickInNextWindow("cmdTheirs");
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(DrawnLimit(), 99);

  Click(*screen, "Toolbar1_4");
  program.Execute(u"DELETE FROM StatData"_s);
  program.boxes.Expect(Answer::No, u"as a new data set?");
  Click(*screen, "Toolbar1_2");
  EXPECT_TRUE(program.Rows(u"SELECT * FROM StatData"_s).empty());
  EXPECT_TRUE(screen->isVisible());
}

TEST_F(ChartScreenTest, FollowsTheLibraryInItsPlace) {
  Open();
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Click(*screen, "Toolbar1_3");
  Press(Qt::Key_End);
  const QWidget* focus = screen->focusWidget();
  screen->LibraryChanged();
  EXPECT_EQ(TextOf(*screen, "lblNews"), QString()) << "nothing has changed";
  ChangeElsewhere(u"\"Values\" = \"Values\" || '10,11,12,13,'"_s);
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"updated 13:45:59");
  EXPECT_EQ(TextOf(*screen, "SampleQty"), u"44");
  EXPECT_EQ(view->Page()->PointCount(GraphId::R), 11);
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::R));
  EXPECT_TRUE(TextOf(*view, "lblPointInfo").startsWith(u"Range 10: "));
  EXPECT_EQ(screen->focusWidget(), focus);
  ChangeElsewhere(u"\"Values\" = '1,2,3,4,5,6,7,8,'"_s);
  EXPECT_EQ(view->Page()->PointCount(GraphId::R), 11) << "too few to be drawn";
}

TEST_F(ChartScreenTest, NewLimitsAreNotRefreshedAway) {
  Open();
  whileRecalculating = [this] { ChangeElsewhere(u"XBarUCL = 99"_s); };
  Click(*screen, "Toolbar1_4");
  EXPECT_NE(DrawnLimit(), 99);
  EXPECT_TRUE(TextOf(*screen, "lblNews").contains(u"somebody else changed"_s));
  program.boxes.Expect(Answer::No);
  Close();
  EXPECT_EQ(Held().XBarUCL(), 99);
}

TEST_F(ChartScreenTest, AddedMeasurementsAreJudgedByTheLimitsInTheLibrary) {
  Open();
  Trigger("Toolbar1_4");
  program.boxes.Expect(Answer::Cancel, u"Data");
  Trigger("Toolbar1_5_3");
  EXPECT_EQ(additions, 0) << "new limits would have been lost";
  program.boxes.Expect(Answer::No);
  Trigger("Toolbar1_5_3");
  EXPECT_EQ(Held().NumberOfPlotPoints(), 11);
  EXPECT_TRUE(Get<QWidget>(*screen, "StatSummary1").isVisible());
  Close();  // and nothing is asked
  EXPECT_FALSE(screen->isVisible());
}

}  // namespace

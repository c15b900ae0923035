// The chart screen and its data set: what it shows, saves and asks. The protocol of each walk is approved.
#include "tests/screens/ChartScreenFixture.h"

namespace {

class ChartScreenTest : public ChartScreenFixture {};

TEST_F(ChartScreenTest, RefusesWhatItCannotShow) {
  const auto refuse = [this](const QString& what) {
    program.boxes.Expect();
    EXPECT_EQ(StatGraphics({}, printing).exec(), QDialog::Rejected);
    protocol.Step(what);
  };
  data->SetNumberOfPlotPoints(7);
  refuse(u"seven points"_s);
  const CData whole = *data;
  data->SetSubGroupSize(5);
  data->SetDelimitedInputString(u"1,"_s.repeated(30));
  refuse(u"six points"_s);
  *data = whole;
  data->SetNumberOfPlotPoints(8);
  Open();
  EXPECT_TRUE(screen->isVisible());
  data->SetRBarUCL(1.7e308);
  refuse(u"no scale"_s);
  program.state.gCurrentDataID = 99;
  refuse(u"no data set"_s);
}

TEST_F(ChartScreenTest, ShowsTheVerdict) {
  data->SetRuleViolation(3);  // left over from an older verdict
  data->SetProcessState(4);
  for (const bool inControl : {true, false}) {
    data->SetIsInControl(inControl);
    Open();
    protocol.Tell(u"in control %1"_s.arg(inControl));
  }
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  Choose("Toolbar1_6");
  PressOn(*screen, Qt::Key_F1);
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
  Choose("Toolbar1_4");
  Choose("Toolbar1_2");
  Close();  // nothing to ask any more
}

TEST_F(ChartScreenTest, AsksBeforeNewLimitsAreLost) {
  Open();
  Choose("Toolbar1_4");
  Close({Answer::Cancel});
  const auto texts = [this] {
    QStringList all;
    const auto& summary = Page().Graph(int(GraphId::Text)).Operations().at(0);
    for (const ChartGraph::Line& line : std::get<ChartGraph::Table>(summary).lines)
      for (const ChartGraph::Cell& cell : line.cells) all << cell.text;
    return all;
  };
  const QStringList written = texts();
  TestProgram::FailAt(u"commit"_s);
  Choose("Toolbar1_2", {Answer::Ok});
  for (int time = 0; time < 2; ++time) Choose("checkFitScale");
  EXPECT_EQ(texts(), written) << "modified as long ago as before";
  Close({Answer::Yes, Answer::Ok});  // what could not be saved is not thrown away
  TestProgram::FailAt({});
  Close({Answer::No});
  Open();
  Choose("Toolbar1_4");
  Choose("Toolbar1_7", {Answer::Yes});
}

// What was known of the row before the last save would make the next one a conflict, or bring old limits
// back.
TEST_F(ChartScreenTest, NoAfterASaveGoesBackToWhatWasSaved) {
  Open();
  Choose("Toolbar1_4");
  Choose("Toolbar1_2");
  lastPoint = 8;
  Choose("Toolbar1_4");
  Close({Answer::No});
  Open();
  Choose("Toolbar1_2");
}

TEST_F(ChartScreenTest, NewLimitsNeverReplaceWhatAnotherProgramWrote) {
  Open();
  Choose("Toolbar1_4");
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '10,10,10,10,'"_s);
  Choose("Toolbar1_2");
  lastPoint = 8;
  Choose("Toolbar1_4");
  program.Execute(u"UPDATE StatData SET XBarUCL = 99"_s);
  ClickInNextWindow("cmdCancel");
  Choose("Toolbar1_2");
  ClickInNextWindow("cmdCancel");
  Close({Answer::Yes});
  ClickInNextWindow("cmdTheirs");
  Choose("Toolbar1_2");
  Choose("Toolbar1_4");
  program.Execute(u"DELETE FROM StatData"_s);
  Choose("Toolbar1_2", {Answer::No});
}

TEST_F(ChartScreenTest, FollowsTheLibraryInItsPlace) {
  Open();
  ClickAt(u"the ranges"_s, CentreOf(GraphId::R));
  Choose("Toolbar1_3");
  Press(Qt::Key_End);
  screen->LibraryChanged();
  protocol.Step(u"nothing has changed"_s);
  ChangeElsewhere(u"\"Values\" = \"Values\" || '10,11,12,13,'"_s);
  protocol.Step(u"one point more"_s);
  ChangeElsewhere(u"\"Values\" = '1,2,3,4,5,6,7,8,'"_s);
  protocol.Step(u"too few to be drawn"_s);
}

TEST_F(ChartScreenTest, NewLimitsAreNotRefreshedAway) {
  Open();
  whileRecalculating = [this] { ChangeElsewhere(u"XBarUCL = 99"_s); };
  Choose("Toolbar1_4");
  Close({Answer::No});
}

TEST_F(ChartScreenTest, AddedMeasurementsAreJudgedByTheLimitsInTheLibrary) {
  Open();
  Trigger("Toolbar1_4");
  Trigger("Toolbar1_5_3", {Answer::Cancel});
  Trigger("Toolbar1_5_3", {Answer::No});
  Close();  // and nothing is asked
}

}  // namespace

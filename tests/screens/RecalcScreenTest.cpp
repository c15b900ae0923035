// The recalculate dialog, driven as a person drives it.
#include "screens/RecalcScreen.h"

#include "core/CreateStatistics.h"
#include "screens/PageView.h"
#include "tests/support/Walk.h"

namespace {

class RecalcScreenTest : public Walk {
 protected:
  RecalcScreenTest() : Walk(u"StatData"_s, [this](Protocol::States& states) { TellLimits(states); }) {
    data->SetID(7);
    QCGlobalFunctions::CreateStatistics(*data);  // ten points
    program.state.gDataCollection = {data};
    program.state.gCurrentDataID = 7;
    program.state.gLimitsRecalculated = true;
  }
  QWidget& Form() const override { return *screen; }
  void TellLimits(Protocol::States& states) const {
    states[u"limits"_s] = u"of %1 to %2, UCL %3, recalculated %4"_s.arg(data->DataStartPoint())
                              .arg(data->DataStopPoint())
                              .arg(data->XBarUCL())
                              .arg(program.state.gLimitsRecalculated);
    for (const char* box : {"txtStartPoint", "txtStopPoint"})
      if (screen && screen->isVisible())
        states[QLatin1StringView(box) + u" ink"_s] = Get(*screen, box).palette().color(QPalette::Text).name();
  }

  void Open() {
    screen = std::make_unique<RecalcScreen>();
    screen->show();
    protocol.Begin(u"Open"_s, screen.get());
  }
  void Run(const QString& start, const QString& stop, const char* button, Answers answers = {}) {
    Type(*screen, "txtStartPoint", start);
    Type(*screen, "txtStopPoint", stop);
    Choose(button, answers);
  }

  CDataPtr data = TestProgram::NewDataSet(u"Shaft"_s);
  std::unique_ptr<RecalcScreen> screen;
};

TEST_F(RecalcScreenTest, ClosesWithoutItsDataSet) {
  program.state.gCurrentDataID = 8;
  program.boxes.Expect(u"error attempting to get the current data for the item selected: \r\n");
  EXPECT_EQ(RecalcScreen().exec(), QDialog::Rejected);
}

TEST_F(RecalcScreenTest, NamesTheFirstFaultOfARangeForTwoSeconds) {
  Open();
  protocol.Tell(u"as it stands"_s);
  Type(*screen, "txtStartPoint", u"x"_s);
  Click(*screen, "cmdRange");
  EXPECT_EQ(Get<QTimer>(*screen, "TextReset").interval(), 2000);
  for (const QString& range : {u"abc xyz"_s, u"1 xyz"_s, u" 10"_s, u"12 12"_s, u"-1 11"_s, u"9 11"_s,
                               u"1 5"_s, u"5.5 10"_s, u"1 99999"_s, u"1E+300 1E+301"_s}) {
    Run(range.section(u' ', 0, 0), range.section(u' ', 1), "cmdRange");
    Tick("TextReset");  // the colour stays
    EXPECT_FALSE(Get<QTimer>(*screen, "TextReset").isActive());
    for (const char* box : {"txtStartPoint", "txtStopPoint"})
      Step(u"a click"_s, [&] { QTest::mouseClick(&Get(*screen, box), Qt::LeftButton); });
  }
  Choose("cmdCancel");
}

TEST_F(RecalcScreenTest, ARangeGivesTheLimitsOfItsPointsAlone) {
  struct {
    QString start;  // 0 is the first point, too
    qint16 first, stop;
  } const ranges[] = {{u" 3 "_s, 3, 9}, {u"1"_s, 1, 6}, {u"0"_s, 1, 6}};
  for (const auto& [start, first, stop] : ranges) {
    const CDataPtr part = TestProgram::NewDataSet(u"Part"_s);
    const QString samples = part->DelimitedInputString();
    part->SetDelimitedInputString(samples.section(u',', 4 * first - 4, 4 * stop - 1) + u',');
    ASSERT_TRUE(QCGlobalFunctions::CreateStatistics(*part));
    Open();
    Run(start, QString::number(stop), "cmdRange");
    EXPECT_EQ(screen->result(), QDialog::Accepted);
    EXPECT_EQ(data->NumberOfPlotPoints(), 10);
    for (const auto read : {&CData::XBarUCL, &CData::XBarLCL, &CData::XBarMean, &CData::RBarUCL,
                            &CData::RBarLCL, &CData::RBarMean})
      EXPECT_EQ((*data.*read)(), (*part.*read)());
  }
}

TEST_F(RecalcScreenTest, SaysThatLimitsWithoutWidthAreNotKept) {
  data->SetDelimitedInputString(u"10,"_s.repeated(32) + data->DelimitedInputString());
  ASSERT_TRUE(QCGlobalFunctions::CreateStatistics(*data));
  Open();
  Run(u"1"_s, u"8"_s, "cmdRange", {Answer::Ok});
}

TEST_F(RecalcScreenTest, AllTakesTheWholeSeriesWhateverTheBoxesHold) {
  for (const auto& stop : {u"2"_s, u"0"_s, u"99999999999"_s, u"xyz"_s, QString()}) {
    data->SetXBarUCL(99);
    data->SetDataStopPoint(6);
    Open();
    Run(u"abc"_s, stop, "cmdAll");
  }
  data->SetNumberOfPlotPoints(0);
  Open();
  Run(u"1"_s, u"10"_s, "cmdAll");  // there is nothing to calculate from
}

TEST_F(RecalcScreenTest, TakesTheRangeFromTheChart) {
  screen = std::make_unique<RecalcScreen>(nullptr, data, PointRange{2, 9});
  screen->show();
  protocol.Begin(u"Open"_s, screen.get());
  protocol.Tell(u"as it stands"_s);
  auto& view = Get<PageView>(*screen, "PageView");
  const auto at = [&](int number) {
    return view.Page()->Point(GraphId::XBar, number, view.rect())->position.toPoint();
  };
  Drag(view, at(3), at(8));
  QTest::mouseClick(&view, Qt::LeftButton, {}, at(5));
  EXPECT_EQ(view.Stretch()->last, 8) << "as in the boxes";
  Enter("txtStopPoint", u"10"_s);
  EXPECT_EQ(view.Stretch()->first, 3);
  EXPECT_EQ(view.Stretch()->last, 10) << "what is typed shows on the chart";
  Choose("cmdRange");

  data->SetDelimitedInputString(u"1,2,x,"_s);
  RecalcScreen blind(nullptr, data);
  blind.show();
  EXPECT_FALSE(Get<PageView>(blind, "PageView").isVisible());
}

TEST_F(RecalcScreenTest, AFailureLeavesTheDataSetAsItWas) {
  Open();
  data->SetSubGroupSize(21);
  Run(u"1"_s, u"10"_s, "cmdAll", {Answer::Ok});
}

}  // namespace

// The recalculate dialog, driven as a person drives it.
#include "screens/RecalcScreen.h"

#include "core/CreateStatistics.h"
#include "screens/PageView.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

namespace {

class RecalcScreenTest : public testing::Test {
 protected:
  RecalcScreenTest() {
    data->SetID(7);
    QCGlobalFunctions::CreateStatistics(*data);  // ten points
    program.state.gDataCollection = {data};
    program.state.gCurrentDataID = 7;
    program.state.gLimitsRecalculated = true;
  }

  static QColor Ink(const RecalcScreen& screen, const char* box) {
    return Get(screen, box).palette().color(QPalette::Text);
  }
  static void Run(RecalcScreen& screen, const QString& start, const QString& stop, const char* button) {
    screen.show();
    Type(screen, "txtStartPoint", start);
    Type(screen, "txtStopPoint", stop);
    Click(screen, button);
  }

  TestProgram program;
  CDataPtr data = TestProgram::NewDataSet(u"Shaft"_s);
};

TEST_F(RecalcScreenTest, ClosesWithoutItsDataSet) {
  program.state.gCurrentDataID = 8;
  program.boxes.Expect(u"error attempting to get the current data for the item selected: \r\n");
  EXPECT_EQ(RecalcScreen().exec(), QDialog::Rejected);
}

TEST_F(RecalcScreenTest, NamesTheFirstFaultOfARangeForTwoSeconds) {
  constexpr auto notNumeric = u"Not a valid numerical value", invalid = u"Invalid range";
  constexpr auto start = "txtStartPoint", stop = "txtStopPoint";
  struct {
    QString from, to;
    const char16_t* message;
    const char* faulty;
  } const cases[] = {{u"abc"_s, u"xyz"_s, notNumeric, start}, {u"1"_s, u"xyz"_s, notNumeric, stop},
                     {u""_s, u"10"_s, notNumeric, start},     {u"12"_s, u"12"_s, invalid, start},
                     {u"-1"_s, u"11"_s, invalid, start},      {u"9"_s, u"11"_s, invalid, stop},
                     {u"1"_s, u"5"_s, invalid, start},        {u"5.5"_s, u"10"_s, invalid, start},
                     {u"1"_s, u"99999"_s, invalid, stop},     {u"1E+300"_s, u"1E+301"_s, invalid, start}};
  RecalcScreen screen;
  EXPECT_EQ(TextOf(screen, start) + u' ' + TextOf(screen, stop), u"1 10");
  const double limit = data->XBarUCL();
  for (const auto& [from, to, message, faulty] : cases) {
    SCOPED_TRACE((from + u".."_s + to).toStdString());
    Run(screen, from, to, "cmdRange");
    EXPECT_EQ(TextOf(screen, "lblDescription"), message);
    EXPECT_EQ(Ink(screen, faulty), QColor(Qt::red));
    EXPECT_EQ(Ink(screen, faulty == start ? stop : start), QColor(Qt::blue));
    EXPECT_EQ(Get<QTimer>(screen, "TextReset").interval(), 2000);
    Fire(screen, "TextReset");
    EXPECT_EQ(TextOf(screen, "lblDescription"), u"Shaft");
    EXPECT_FALSE(Get<QTimer>(screen, "TextReset").isActive());
    EXPECT_EQ(Ink(screen, faulty), QColor(Qt::red)) << "the colour stays";
    QTest::mouseClick(&Get(screen, faulty), Qt::LeftButton);
    EXPECT_EQ(Ink(screen, faulty), QColor(Qt::blue));
  }
  Click(screen, "cmdCancel");
  EXPECT_FALSE(screen.isVisible());
  EXPECT_FALSE(program.state.gLimitsRecalculated);
  EXPECT_EQ(data->XBarUCL(), limit);
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
    RecalcScreen screen;
    Run(screen, start, QString::number(stop), "cmdRange");
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_TRUE(program.state.gLimitsRecalculated);
    EXPECT_EQ(data->DataStartPoint(), start.toInt());
    EXPECT_EQ(data->DataStopPoint(), stop);
    EXPECT_EQ(data->NumberOfPlotPoints(), 10);
    for (const auto read : {&CData::XBarUCL, &CData::XBarLCL, &CData::XBarMean, &CData::RBarUCL,
                            &CData::RBarLCL, &CData::RBarMean})
      EXPECT_EQ((*data.*read)(), (*part.*read)());
  }
}

TEST_F(RecalcScreenTest, SaysThatLimitsWithoutWidthAreNotKept) {
  data->SetDelimitedInputString(u"10,"_s.repeated(32) + data->DelimitedInputString());
  ASSERT_TRUE(QCGlobalFunctions::CreateStatistics(*data));
  program.boxes.Expect(u"Limits from these points have no width with 4 decimals.");
  RecalcScreen screen;
  Run(screen, u"1"_s, u"8"_s, "cmdRange");
  EXPECT_TRUE(program.state.gLimitsRecalculated);
}

TEST_F(RecalcScreenTest, AllTakesTheWholeSeriesWhateverTheBoxesHold) {
  for (const auto& stop : {u"2"_s, u"0"_s, u"99999999999"_s, u"xyz"_s, QString()}) {
    data->SetXBarUCL(99);
    data->SetDataStopPoint(6);
    RecalcScreen screen;
    Run(screen, u"abc"_s, stop, "cmdAll");
    EXPECT_FALSE(screen.isVisible());
    EXPECT_TRUE(program.state.gLimitsRecalculated);
    EXPECT_EQ(data->DataStartPoint(), 0);
    EXPECT_EQ(data->DataStopPoint(), 10);
    EXPECT_LT(data->XBarUCL(), 12);
  }
  data->SetNumberOfPlotPoints(0);
  RecalcScreen screen;
  Run(screen, u"1"_s, u"10"_s, "cmdAll");
  EXPECT_TRUE(screen.isVisible()) << "there is nothing to calculate from";
}

TEST_F(RecalcScreenTest, TakesTheRangeFromTheChart) {
  RecalcScreen screen(nullptr, data, PointRange{2, 9});
  EXPECT_EQ(TextOf(screen, "txtStartPoint") + u' ' + TextOf(screen, "txtStopPoint"), u"2 9");
  screen.show();
  auto& view = Get<PageView>(screen, "PageView");
  const auto at = [&](int number) {
    return view.Page()->Point(GraphId::XBar, number, view.rect())->position.toPoint();
  };
  Drag(view, at(3), at(8));
  QTest::mouseClick(&view, Qt::LeftButton, {}, at(5));
  EXPECT_EQ(view.Stretch()->last, 8) << "as in the boxes";
  Type(screen, "txtStopPoint", u"10"_s);
  EXPECT_EQ(view.Stretch()->first, 3);
  EXPECT_EQ(view.Stretch()->last, 10) << "what is typed shows on the chart";
  Click(screen, "cmdRange");
  EXPECT_EQ(data->DataStartPoint(), 3);
  EXPECT_EQ(data->DataStopPoint(), 10);

  data->SetDelimitedInputString(u"1,2,x,"_s);
  RecalcScreen blind(nullptr, data);
  blind.show();
  EXPECT_FALSE(Get<PageView>(blind, "PageView").isVisible());
}

TEST_F(RecalcScreenTest, AFailureLeavesTheDataSetAsItWas) {
  const double limit = data->XBarUCL();
  RecalcScreen screen;
  data->SetSubGroupSize(21);
  program.boxes.Expect(u"Failed to generate statistical data");
  Run(screen, u"1"_s, u"10"_s, "cmdAll");
  EXPECT_EQ(data->XBarUCL(), limit);
  EXPECT_EQ(data->DataStopPoint(), 0);
  EXPECT_TRUE(screen.isVisible());
  EXPECT_FALSE(program.state.gLimitsRecalculated);
}

}  // namespace

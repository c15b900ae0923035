// The recalculate dialog, driven as a person drives it.
#include "screens/RecalcScreen.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "stats/CreateStatistics.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;

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

  static QLineEdit* Box(const RecalcScreen& screen, bool start) {
    return screen.findChild<QLineEdit*>(start ? u"txtStartPoint"_s : u"txtStopPoint"_s);
  }
  static QString Description(const RecalcScreen& screen) {
    return screen.findChild<QLabel*>(u"lblDescription"_s)->text();
  }
  static QColor Ink(const QLineEdit* box) { return box->palette().color(QPalette::Text); }
  static void Type(const RecalcScreen& screen, const QString& start, const QString& stop) {
    for (const bool first : {true, false}) {
      Box(screen, first)->selectAll();
      QTest::keyClicks(Box(screen, first), first ? start : stop);
    }
  }
  static void Click(const RecalcScreen& screen, const QString& button) {
    QTest::mouseClick(screen.findChild<QPushButton*>(button), Qt::LeftButton);
  }

  TestProgram program;
  CDataPtr data = TestProgram::NewDataSet(u"Shaft"_s);
};

TEST_F(RecalcScreenTest, ClosesWithoutItsDataSet) {
  program.state.gCurrentDataID = 8;
  program.boxes.Expect();
  EXPECT_EQ(RecalcScreen().exec(), QDialog::Rejected);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(
      u"error attempting to get the current data for the item selected: \r\n"_s));
}

TEST_F(RecalcScreenTest, NamesTheFirstFaultOfARangeForTwoSeconds) {
  struct Case {
    QString start, stop, message;
    bool startIsRed;
  };
  const QString notNumeric = u"Not a valid numerical value"_s, invalid = u"Invalid range"_s;
  const Case cases[] = {{u"abc"_s, u"xyz"_s, notNumeric, true}, {u"1"_s, u"xyz"_s, notNumeric, false},
                        {u""_s, u"10"_s, notNumeric, true},     {u"12"_s, u"12"_s, invalid, true},
                        {u"-1"_s, u"11"_s, invalid, true},      {u"9"_s, u"11"_s, invalid, false},
                        {u"1"_s, u"5"_s, invalid, true},        {u"5.5"_s, u"10"_s, invalid, true}};
  RecalcScreen screen;
  screen.show();
  EXPECT_FALSE(program.state.gLimitsRecalculated);
  EXPECT_EQ(Box(screen, true)->text(), u"1"_s);
  EXPECT_EQ(Box(screen, false)->text(), u"10"_s);
  auto* timer = screen.findChild<QTimer*>(u"TextReset"_s);
  EXPECT_EQ(timer->interval(), 2000);
  const double limit = data->XBarUCL();
  for (const Case& one : cases) {
    SCOPED_TRACE((one.start + u".."_s + one.stop).toStdString());
    Type(screen, one.start, one.stop);
    if (one.start.isEmpty()) Box(screen, true)->clear();
    EXPECT_EQ(Ink(Box(screen, one.startIsRed)), QColor(Qt::blue));
    Click(screen, u"cmdRange"_s);
    EXPECT_EQ(Description(screen), one.message);
    EXPECT_EQ(Ink(Box(screen, one.startIsRed)), QColor(Qt::red));
    EXPECT_EQ(Ink(Box(screen, !one.startIsRed)), QColor(Qt::blue));
    QMetaObject::invokeMethod(timer, "timeout");
    EXPECT_EQ(Description(screen), u"Shaft"_s);
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(Ink(Box(screen, one.startIsRed)), QColor(Qt::red)) << "the colour stays";
    QTest::mouseClick(Box(screen, one.startIsRed), Qt::LeftButton);
    EXPECT_EQ(Ink(Box(screen, one.startIsRed)), QColor(Qt::blue));
  }
  QTest::keyClick(&screen, Qt::Key_Escape);
  EXPECT_FALSE(screen.isVisible());
  EXPECT_FALSE(program.state.gLimitsRecalculated);
  EXPECT_EQ(data->XBarUCL(), limit);
}

TEST_F(RecalcScreenTest, ARangeGivesTheLimitsOfItsPointsAlone) {
  const CDataPtr part = TestProgram::NewDataSet(u"Part"_s);
  part->SetDelimitedInputString(part->DelimitedInputString().section(u',', 0, 23) + u',');
  part->SetSampleQty(24);
  ASSERT_TRUE(QCGlobalFunctions::CreateStatistics(*part));

  for (const QString& start : {u" 1 "_s, u"0"_s}) {  // 0 is the first point, too
    RecalcScreen screen;
    screen.show();
    Type(screen, start, u"6"_s);
    Click(screen, u"cmdRange"_s);
    EXPECT_EQ(screen.result(), QDialog::Accepted);
    EXPECT_TRUE(program.state.gLimitsRecalculated);
    EXPECT_EQ(data->DataStopPoint(), 6);
    EXPECT_EQ(data->NumberOfPlotPoints(), 10);
    EXPECT_EQ(data->XBarUCL(), part->XBarUCL());
    EXPECT_EQ(data->RBarUCL(), part->RBarUCL());
  }
}

TEST_F(RecalcScreenTest, AllTakesTheWholeSeriesUnchecked) {
  data->SetXBarUCL(99);
  data->SetNumberOfPlotPoints(0);
  RecalcScreen screen;
  screen.show();
  Click(screen, u"cmdAll"_s);
  EXPECT_TRUE(screen.isVisible()) << "there is nothing to calculate from";
  data->SetNumberOfPlotPoints(10);
  Type(screen, u"abc"_s, u"2"_s);
  Click(screen, u"cmdAll"_s);
  EXPECT_FALSE(screen.isVisible());
  EXPECT_TRUE(program.state.gLimitsRecalculated);
  EXPECT_EQ(data->DataStartPoint(), 0);
  EXPECT_EQ(data->DataStopPoint(), 10);
  EXPECT_LT(data->XBarUCL(), 12);
}

TEST_F(RecalcScreenTest, AFailureLeavesTheDataSetAsItWas) {
  RecalcScreen screen;
  screen.show();
  Type(screen, u"1"_s, u"99999"_s);
  program.boxes.Expect();
  Click(screen, u"cmdRange"_s);
  EXPECT_EQ(program.boxes.Take().text, u"RecalcScreen::ValidateRange failed with error: \r\nOverflow"_s);

  const double limit = data->XBarUCL();
  data->SetSubGroupSize(21);
  program.boxes.Expect();
  Click(screen, u"cmdAll"_s);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"Failed to generate statistical data"_s));
  EXPECT_EQ(data->XBarUCL(), limit);
  EXPECT_EQ(data->DataStopPoint(), 0);
  EXPECT_TRUE(screen.isVisible());
  EXPECT_FALSE(program.state.gLimitsRecalculated);
}

}  // namespace

// What the page records for a data set, as numbers and texts, and what lies under the mouse.
#include "charts/StatPage.h"

#include <gtest/gtest.h>

#include <cmath>

#include "charts/Histogram.h"
#include "charts/LimitsOrigin.h"
#include "charts/PointList.h"
#include "tests/charts/PageData.h"

using namespace Qt::StringLiterals;

namespace {

const QRectF target(0, 0, 1280, 800);

template <class Operation>
std::vector<Operation> OperationsOf(const StatPage& page, GraphId graph) {
  std::vector<Operation> found;
  for (const auto& operation : page.Page().Graph(static_cast<int>(graph)).Operations()) {
    if (const auto* one = std::get_if<Operation>(&operation)) found.push_back(*one);
  }
  return found;
}

QStringList TextsOf(const StatPage& page, GraphId graph) {
  QStringList texts;
  for (const auto& text : OperationsOf<ChartGraph::Text>(page, graph)) texts.append(text.text);
  return texts;
}

TEST(StatPage, MarksOnlyRulesOfTheSensitivityInUse) {
  CData data = PageData::Simple();
  CData::ViolatingPointLists points;
  points[1] = {3};
  points[2] = {5};
  points[3] = {6};
  const auto marks = [&] {
    return OperationsOf<ChartGraph::Curve>(PageData::Page(data), GraphId::XBar)[0].marks;
  };
  EXPECT_EQ(marks(), (std::vector<std::uint8_t>{0, 0, 0, 1, 0, 0, 0, 1})) << "the lowest rule at a point";
  data.SetViolatingPoints(points);
  data.SetSensitivityValue(0);
  EXPECT_EQ(marks(), (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 4, 0, 0}));
}

TEST(StatPage, ListsPointsInRunsAndCountsTheRest) {
  EXPECT_EQ(PointList({}), QString());
  EXPECT_EQ(PointList({3, 4}), u"3, 4");
  EXPECT_EQ(PointList({3, 5, 6, 7, 9}), u"3, 5\u20137, 9");
  EXPECT_EQ(PointList({1, 3, 5, 7, 9, 11, 13, 14, 15}), u"1, 3, 5, 7, 9, 11 and 3 more");
}

TEST(StatPage, KnowsWhatItsLimitsAreCalculatedFrom) {
  for (const int size : {1, 5}) {
    CData data = PageData::Random({.subgroups = 30, .subgroupSize = size});
    EXPECT_EQ(OriginOfLimits(data).kind, LimitsOrigin::AllPoints);
    data.SetXBarUCL(data.XBarUCL() + 0.01);
    EXPECT_EQ(OriginOfLimits(data).kind, LimitsOrigin::Kept);
    QCGlobalFunctions::ClearControlLimits(data);
    data.SetDataStartPoint(4);
    data.SetDataStopPoint(20);
    ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
    const LimitsOrigin origin = OriginOfLimits(data);
    EXPECT_EQ(origin.kind, LimitsOrigin::Points);
    EXPECT_EQ(std::pair(origin.first, origin.last), std::pair(4, 20));
    data.SetDataStopPoint(0);
    EXPECT_EQ(OriginOfLimits(data).kind, LimitsOrigin::Kept) << "the range is not stored";
  }
}

TEST(StatPage, LeavesOutTheMovingRangeThatDoesNotExist) {
  CData data = PageData::Simple();
  data.SetSubGroupSize(1);
  const StatPage page = PageData::Page(data);
  const auto& ranges = page.Page().Graph(1).DataSet(u"RBar Data Set"_s);
  EXPECT_TRUE(std::isnan(ranges[0]));
  EXPECT_EQ(ranges[1], 0.2);
}

TEST(StatPage, SaysWhenDataAreTooFew) {
  const StatPage few(PageData::Random({.subgroups = 4}), {});
  EXPECT_EQ(TextsOf(few, GraphId::XBar), QStringList(u"NOT ENOUGH  DATA"_s));
  EXPECT_FALSE(few.PointAt({300, 200}, target));
  EXPECT_EQ(TextsOf(few, GraphId::Text), QStringList(u"NOT ENOUGH DATA"_s));
  EXPECT_TRUE(TextsOf(StatPage(PageData::Random({.subgroups = 5}), {}), GraphId::XBar).contains(u" AVERAGE"));
}

TEST(StatPage, CountsHaveTicksByTheirLargest) {
  for (const auto& [largest, spacing] :
       {std::pair{0, 10}, {100, 10}, {101, 20}, {200, 20}, {201, 40}, {300, 40}, {301, 50}})
    EXPECT_EQ(CountTickSpacing(largest), spacing) << largest;
}

TEST(StatPage, RefusesWhatItCannotDraw) {
  CData unreadable = PageData::Simple();
  unreadable.SetDelimitedInputString(u"1,2,x,"_s);
  EXPECT_THROW(StatPage(unreadable, {}), Error);

  for (const auto& [set, reference] : {std::pair{&CData::SetXBarUCL, u"Could not generate scaling data;227"},
                                       {&CData::SetRBarUCL, u"Could not generate scaling data;228"}}) {
    CData huge = PageData::Simple();
    (huge.*set)(2e7);
    EXPECT_NO_THROW(PageData::Page(huge, {.fittedScale = true})) << "only the coarse grid ends there";
    try {
      PageData::Page(huge);
      ADD_FAILURE() << "drawn";
    } catch (const ScaleError& error) {
      EXPECT_EQ(error.Reference(), reference);
    }
  }
}

TEST(StatPage, FindsGraphsAndPointsUnderTheMouse) {
  for (const bool head : {false, true}) {
    StatPage page = PageData::Page(PageData::Simple(), {.printedHead = head});
    EXPECT_EQ(page.GraphAt({300, 200}, target), GraphId::XBar);
    EXPECT_EQ(page.GraphAt({300, 600}, target), GraphId::R);
    EXPECT_EQ(page.GraphAt({1000, 200}, target), GraphId::Histogram);
    EXPECT_EQ(page.GraphAt({1000, 600}, target), GraphId::Text);
    EXPECT_EQ(page.GraphAt({1279, 799}, target), GraphId::None);

    // The eighth point lies outside the scale and is found at its arrow.
    std::vector<StatPage::PointInfo> found;
    for (double y = 0; y < 400; ++y) {
      if (const auto info = page.PointAt({0.0888 * 1280 + 8.0 / 9 * 0.44625 * 1280, y}, target))
        found.push_back(*info);
    }
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.front().number, 8);
    EXPECT_EQ(found.front().value, 50);
    EXPECT_EQ(found.front().rules, (std::vector<int>{1, 2}));
    EXPECT_TRUE(page.PointAt(found.front().position, target));
    EXPECT_FALSE(page.PointAt({1000, 200}, target));

    page.Select(GraphId::R);
    page.Blowup(GraphId::R);
    EXPECT_EQ(page.GraphAt({300, 200}, target), GraphId::R) << "it covers the page";
    page.Restore();
    EXPECT_EQ(page.GraphAt({300, 200}, target), GraphId::XBar);
    EXPECT_EQ(page.Selected(), GraphId::R);
  }
}

}  // namespace

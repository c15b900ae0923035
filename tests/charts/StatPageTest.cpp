// What the page records for a data set, as numbers and texts, and what lies under the mouse.
#include "charts/StatPage.h"

#include <gtest/gtest.h>

#include <cmath>

#include "charts/Histogram.h"
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

TEST(StatPage, RecordsAControlChart) {
  const StatPage page(PageData::Simple(), {});
  const ChartGraph& graph = page.Page().Graph(0);
  EXPECT_EQ(graph.Scale().top(), -20);
  EXPECT_EQ(graph.Scale().bottom(), 40);
  EXPECT_EQ(graph.DataSet(u"XBar Data Set"_s),
            (std::vector<double>{10.0, 10.1, 9.9, 10.4, 10.0, 9.8, 10.2, 50.0}));
  EXPECT_EQ(graph.DataSet(u"UCL Data Set"_s), std::vector<double>(8, 10.3));
  EXPECT_EQ(graph.DataSet(u"LCL Data Set"_s), std::vector<double>(8, 9.7));
  EXPECT_EQ(graph.DataSet(u"Zero Data Set"_s), std::vector<double>(8, 10));
  EXPECT_EQ(OperationsOf<ChartGraph::Axis>(page, GraphId::XBar).at(1).spacing, 15);
  EXPECT_EQ(OperationsOf<ChartGraph::Curve>(page, GraphId::XBar).at(0).marks,
            (std::vector<std::uint8_t>{0, 0, 0, 1, 0, 0, 0, 1}))
      << "the lowest rule at a point";
  EXPECT_EQ(TextsOf(page, GraphId::XBar),
            (QStringList{u" AVERAGE"_s, u"LCL=9.7, Mean=10, UCL=10.3"_s, u"Rules:  1 beyond a limit"_s}));
  EXPECT_EQ(TextsOf(page, GraphId::R), (QStringList{u" RANGE"_s, u"LCL=0, Mean=0.2, UCL=0.5"_s}));
}

TEST(StatPage, LabelsLimitsWithOneDecimalMoreThanTheData) {
  CData data = PageData::Random({.decimals = 2, .precision = 6});
  data.SetPrecisionValue(6);
  const auto labels = OperationsOf<ChartGraph::LineLabels>(StatPage(data, {}), GraphId::XBar);
  EXPECT_EQ(labels.at(0).labels[0].number, QString::number(data.XBarUCL(), 'f', 3));
}

TEST(StatPage, MarksOnlyRulesOfTheSensitivityInUse) {
  CData data = PageData::Simple();
  CData::ViolatingPointLists points;
  points[1] = {3};
  points[2] = {5};
  points[3] = {6};
  data.SetViolatingPoints(points);
  data.SetSensitivityValue(0);
  const auto curves = OperationsOf<ChartGraph::Curve>(StatPage(data, {}), GraphId::XBar);
  EXPECT_EQ(curves[0].marks, (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 4, 0, 0}));
}

TEST(StatPage, LeavesOutTheMovingRangeThatDoesNotExist) {
  CData data = PageData::Simple();
  data.SetSubGroupSize(1);
  const StatPage page(data, {});
  const auto& ranges = page.Page().Graph(1).DataSet(u"RBar Data Set"_s);
  EXPECT_TRUE(std::isnan(ranges[0]));
  EXPECT_EQ(ranges[1], 0.2);
}

TEST(StatPage, SaysWhenDataAreTooFew) {
  CData data = PageData::Simple();
  data.SetNumberOfPlotPoints(4);
  const StatPage few(data, {});
  EXPECT_EQ(TextsOf(few, GraphId::XBar), QStringList(u"NOT ENOUGH  DATA"_s));
  EXPECT_FALSE(few.PointAt({300, 200}, target));
  data.SetNumberOfPlotPoints(5);
  EXPECT_TRUE(TextsOf(StatPage(data, {}), GraphId::XBar).contains(u" AVERAGE"));
}

TEST(StatPage, RecordsTheHistogram) {
  CData data = PageData::Simple();
  const ChartGraph graph = StatPage(data, {}).Page().Graph(2);
  EXPECT_EQ(graph.DataSet(u" Histogram"_s).size(), 12u);
  EXPECT_EQ(graph.DataSet(u" LL Data Set"_s).front(), 0);
  EXPECT_EQ(graph.DataSet(u" Nominal Data Set"_s).front(), 6);
  EXPECT_EQ(graph.DataSet(u" UL Data Set"_s).front(), 12);
  EXPECT_EQ(graph.Scale().bottom(), 10);
  for (const auto& [largest, spacing] :
       {std::pair{0, 10}, {100, 10}, {101, 20}, {200, 20}, {201, 40}, {300, 40}, {301, 50}}) {
    EXPECT_EQ(CountTickSpacing(largest), spacing) << largest;
  }
  for (const auto set : {&CData::SetLowerSpecLimit, &CData::SetNominalSpecLimit, &CData::SetUpperSpecLimit})
    (data.*set)(0);
  EXPECT_TRUE(OperationsOf<ChartGraph::Level>(StatPage(data, {}), GraphId::Histogram).empty())
      << "no lines at 0 for want of limits";
}

TEST(StatPage, RecordsTheTextWindow) {
  CData data = PageData::Simple();
  EXPECT_EQ(TextsOf(StatPage(data, {}), GraphId::Text).join(u'|'),
            u"Sample Qty|16|Sub Group Size|2|Min|9.1|Max|10.9|Std. Dev|0.25|Upper Spec Limit|11|"
            u"Lower Spec Limit|9|Cpk|1.00|Last Modified|2024-05-17|Cpk from R-bar / d2"_s);
  for (const auto& [cpk, colour] : {std::pair{1.0, 2}, {0.99, 12}}) {
    data.SetCPKValue(cpk);
    const auto texts = OperationsOf<ChartGraph::Text>(StatPage(data, {}), GraphId::Text);
    EXPECT_EQ(texts.at(15).parameters.colour, colour) << cpk;
  }
}

TEST(StatPage, RefusesWhatItCannotDraw) {
  CData ranges = PageData::Simple(), averages = ranges, labels = ranges;
  ranges.SetRBarOutputString(u"0.1,0.2"_s);
  averages.SetXBarOutputString(u"1,2,3,4,x,6,7,8"_s);
  labels.SetHistogramLabelsOutputString(u"1,2,3,4,5,6,7,8,9,10,11"_s);
  for (const CData& broken : {ranges, averages, labels}) EXPECT_ANY_THROW(StatPage(broken, {}));

  for (const auto& [set, reference] : {std::pair{&CData::SetXBarUCL, u"Could not generate scaling data;227"},
                                       {&CData::SetRBarUCL, u"Could not generate scaling data;228"}}) {
    CData huge = PageData::Simple();
    (huge.*set)(2e7);
    EXPECT_NO_THROW(StatPage(huge, {.fittedScale = true})) << "only the coarse grid ends there";
    try {
      StatPage(huge, {});
      ADD_FAILURE() << "drawn";
    } catch (const ScaleError& error) {
      EXPECT_EQ(error.Reference(), reference);
    }
  }
}

TEST(StatPage, FindsGraphsAndPointsUnderTheMouse) {
  for (const bool head : {false, true}) {
    StatPage page(PageData::Simple(), {.printedHead = head});
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

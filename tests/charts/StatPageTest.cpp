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

TEST(StatPage, LaysOutFourGraphs) {
  const StatPage page(PageData::Simple(), {});
  ASSERT_EQ(page.Page().GraphCount(), 4);
  const auto expect = [&](GraphId graph, double left, double top, double right, double bottom) {
    const QRectF frame = page.Page().Graph(static_cast<int>(graph)).Frame();
    EXPECT_EQ(frame, QRectF(QPointF(left, top), QPointF(right, bottom)));
  };
  expect(GraphId::XBar, 0.005, 0.005, 0.6, 0.49);
  expect(GraphId::R, 0.005, 0.5, 0.6, 0.99);
  expect(GraphId::Histogram, 0.61, 0.005, 0.995, 0.49);
  expect(GraphId::Text, 0.61, 0.5, 0.995, 0.99);
}

TEST(StatPage, RecordsAControlChart) {
  const StatPage page(PageData::Simple(), {});
  const ChartGraph& graph = page.Page().Graph(0);
  EXPECT_EQ(graph.PlotArea(), QRectF(QPointF(0.15, 0.1), QPointF(0.9, 0.8)));
  EXPECT_EQ(graph.Scale().top(), -20);
  EXPECT_EQ(graph.Scale().bottom(), 40);
  EXPECT_EQ(graph.DataSet(u"XBar Data Set"_s),
            (std::vector<double>{10.0, 10.1, 9.9, 10.4, 10.0, 9.8, 10.2, 50.0}));
  EXPECT_EQ(graph.DataSet(u"UCL Data Set"_s), std::vector<double>(8, 10.3));
  EXPECT_EQ(graph.DataSet(u"LCL Data Set"_s), std::vector<double>(8, 9.7));
  EXPECT_EQ(graph.DataSet(u"Zero Data Set"_s), std::vector<double>(8, 10));

  const auto axes = OperationsOf<ChartGraph::Axis>(page, GraphId::XBar);
  ASSERT_EQ(axes.size(), 2u);
  EXPECT_EQ(axes[0].spacing, 5);
  EXPECT_EQ(axes[0].title, u"Sample");
  EXPECT_EQ(axes[1].spacing, 15);

  const auto curves = OperationsOf<ChartGraph::Curve>(page, GraphId::XBar);
  ASSERT_EQ(curves.size(), 1u);
  EXPECT_EQ(curves[0].line.colour, 9);
  EXPECT_EQ(curves[0].marks, (std::vector<std::uint8_t>{0, 0, 0, 1, 0, 0, 0, 1}))
      << "the lowest rule at a point";
  const auto levels = OperationsOf<ChartGraph::Level>(page, GraphId::XBar);
  ASSERT_EQ(levels.size(), 3u);
  EXPECT_EQ(levels[0].line.colour, 0);
  for (const size_t limit : {1u, 2u}) {
    EXPECT_EQ(levels[limit].line.style, 2);
    EXPECT_EQ(levels[limit].line.colour, 12);
  }

  const auto texts = OperationsOf<ChartGraph::Text>(page, GraphId::XBar);
  ASSERT_EQ(texts.size(), 3u);
  EXPECT_EQ(texts[0].text, u" AVERAGE");
  EXPECT_EQ(texts[1].text, u"LCL=9.7, Mean=10, UCL=10.3");
  EXPECT_EQ(texts[1].position, QPointF(0.5, 0.1));
  EXPECT_EQ(texts[2].text, u"Rules:  1 beyond a limit") << "numbers come with their words";
  EXPECT_EQ(TextsOf(page, GraphId::R), (QStringList{u" RANGE"_s, u"LCL=0, Mean=0.2, UCL=0.5"_s}));
}

TEST(StatPage, LabelsLimitsWithOneDecimalMoreThanTheData) {
  CData data = PageData::Random({.decimals = 2, .precision = 6});
  data.SetPrecisionValue(6);
  const auto labels = OperationsOf<ChartGraph::LineLabels>(StatPage(data, {}), GraphId::XBar);
  ASSERT_EQ(labels.size(), 1u);
  EXPECT_EQ(labels[0].labels[0].name, u"UCL");
  EXPECT_EQ(labels[0].labels[0].number, QString::number(data.XBarUCL(), 'f', 3));
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
  EXPECT_EQ(TextsOf(few, GraphId::R), QStringList(u"NOT ENOUGH  DATA"_s));
  EXPECT_EQ(TextsOf(few, GraphId::Text), QStringList(u"NOT ENOUGH DATA"_s));
  EXPECT_FALSE(few.PointAt({300, 200}, target));
  data.SetNumberOfPlotPoints(5);
  EXPECT_TRUE(TextsOf(StatPage(data, {}), GraphId::XBar).contains(u" AVERAGE"));
}

TEST(StatPage, RecordsTheHistogram) {
  const StatPage page(PageData::Simple(), {});
  const ChartGraph& graph = page.Page().Graph(2);
  EXPECT_EQ(graph.DataSet(u" Histogram"_s).size(), 12u);
  EXPECT_EQ(graph.DataSet(u" LL Data Set"_s).front(), 0);
  EXPECT_EQ(graph.DataSet(u" Nominal Data Set"_s).front(), 6);
  EXPECT_EQ(graph.DataSet(u" UL Data Set"_s).front(), 12);
  EXPECT_EQ(graph.Scale().bottom(), 10);
  EXPECT_EQ(OperationsOf<ChartGraph::Bars>(page, GraphId::Histogram).at(0).width, 0.9);
  for (const auto& [largest, spacing] :
       {std::pair{0, 10}, {100, 10}, {101, 20}, {200, 20}, {201, 40}, {300, 40}, {301, 50}}) {
    EXPECT_EQ(CountTickSpacing(largest), spacing) << largest;
  }
  CData data = PageData::Simple();
  data.SetLowerSpecLimit(0);
  data.SetNominalSpecLimit(0);
  data.SetUpperSpecLimit(0);
  EXPECT_TRUE(OperationsOf<ChartGraph::Level>(StatPage(data, {}), GraphId::Histogram).empty())
      << "no lines at 0 for want of limits";
}

TEST(StatPage, RecordsTheTextWindow) {
  CData data = PageData::Simple();
  const QStringList rows = {u"Sample Qty"_s,
                            u"16"_s,
                            u"Sub Group Size"_s,
                            u"2"_s,
                            u"Min"_s,
                            u"9.1"_s,
                            u"Max"_s,
                            u"10.9"_s,
                            u"Std. Dev"_s,
                            u"0.25"_s,
                            u"Upper Spec Limit"_s,
                            u"11"_s,
                            u"Lower Spec Limit"_s,
                            u"9"_s,
                            u"Cpk"_s,
                            u"1.00"_s,
                            u"Last Modified"_s,
                            u"2024-05-17"_s,
                            u"Cpk from R-bar / d2"_s};
  EXPECT_EQ(TextsOf(StatPage(data, {}), GraphId::Text), rows);
  const auto cpkColour = [&] {
    return OperationsOf<ChartGraph::Text>(StatPage(data, {}), GraphId::Text).at(15).parameters.colour;
  };
  EXPECT_EQ(cpkColour(), 2);
  data.SetCPKValue(0.99);
  EXPECT_EQ(cpkColour(), 12);
}

TEST(StatPage, RefusesWhatItCannotDraw) {
  const auto broken = [](auto change) {
    CData data = PageData::Simple();
    change(data);
    return data;
  };
  const auto tooShort = broken([](CData& d) { d.SetRBarOutputString(u"0.1,0.2"_s); });
  const auto noNumber = broken([](CData& d) { d.SetXBarOutputString(u"1,2,3,4,x,6,7,8"_s); });
  const auto elevenBins =
      broken([](CData& d) { d.SetHistogramLabelsOutputString(u"1,2,3,4,5,6,7,8,9,10,11"_s); });
  EXPECT_THROW(StatPage(tooShort, {}), Error);
  EXPECT_THROW(StatPage(noNumber, {}), std::runtime_error);
  EXPECT_THROW(StatPage(elevenBins, {}), Error);

  const auto reference = [](const CData& data) {
    try {
      StatPage(data, {});
    } catch (const ScaleError& error) {
      EXPECT_EQ(ErrorText(error), u"Could not generate scaling data");
      return error.Reference();
    }
    return QString();
  };
  const auto huge = broken([](CData& d) { d.SetXBarUCL(2e7); });
  EXPECT_EQ(reference(huge), u"Could not generate scaling data;227");
  EXPECT_EQ(reference(broken([](CData& d) { d.SetRBarUCL(2e7); })), u"Could not generate scaling data;228");
  EXPECT_NO_THROW(StatPage(huge, {.fittedScale = true})) << "only the coarse grid ends there";
}

TEST(StatPage, FittedScaleHoldsEveryPoint) {
  const StatPage page(PageData::Simple(), {.fittedScale = true});
  const QRectF scale = page.Page().Graph(0).Scale();
  EXPECT_LT(scale.top(), 9.7);
  EXPECT_GT(scale.bottom(), 50);
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
    const auto exact = page.PointAt(found.front().position, target);
    ASSERT_TRUE(exact);
    EXPECT_EQ(exact->number, 8);
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

// What the page records for a data set, as numbers and texts, and what lies under the mouse.
#include <cmath>

#include "charts/Histogram.h"
#include "charts/LimitsOrigin.h"
#include "charts/PointList.h"
#include "tests/charts/PageData.h"

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
    EXPECT_EQ(OriginOfLimits(data).kind, LimitsOrigin::Kept) << "as after loading";
    data.SetLimitsBase({4, 20});
    EXPECT_EQ(OriginOfLimits(data).first, 4) << "the library has noted them";
    EXPECT_EQ(StatPage(data, {}).BasePoints()->last, 20);
    data.SetLimitsBase({5, 21});
    EXPECT_EQ(OriginOfLimits(data).kind, LimitsOrigin::Kept) << "a note that holds no longer";
  }
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
    const StatPage fitted = PageData::Page(huge);
    const GraphId graph = set == &CData::SetXBarUCL ? GraphId::XBar : GraphId::R;
    EXPECT_TRUE(fitted.IsBeyondStandardScale());
    EXPECT_TRUE(TextsOf(fitted, graph).contains(u"fitted scale"));
    EXPECT_GT(fitted.Page().Graph(int(graph)).Scale().bottom(), 2e7);
    (huge.*set)(std::numeric_limits<double>::max());
    try {
      PageData::Page(huge);
      ADD_FAILURE() << "drawn";
    } catch (const ScaleError& error) {
      EXPECT_EQ(error.Reference(), reference);
    }
  }
}

TEST(StatPage, ListsItsMarksAndPrefersThemUnderTheMouse) {
  const CData data = PageData::Random({.subgroups = 1000});
  const StatPage page(data, {.fittedScale = true});
  std::map<int, std::vector<qint16>> listed;  // by rule; 0 for the ranges
  for (const StatPage::Mark& mark : page.Marks()) {
    listed[mark.rule].push_back(qint16(mark.number));
    const auto point = page.Point(mark.graph, mark.number, target);
    // What lies between two marks has none, and is as near.
    const auto meant = page.PointAt(point->position + QPointF(2, 2), target);
    EXPECT_TRUE(mark.rule == 0 ? meant->isRangeOutside : !meant->rules.empty()) << mark.number;
  }
  EXPECT_EQ(listed[0], data.RangesOutside());
  for (int rule = 1; rule <= 4; ++rule) EXPECT_EQ(listed[rule], data.ViolatingPoints()[size_t(rule - 1)]);
  EXPECT_GT(listed[1].size() + listed[2].size() + listed[3].size(), 10u);
}

TEST(StatPage, ShowsAStretchOfThePointsAndSaysSo) {
  const CData data = PageData::Random({.subgroups = 200});
  StatPage page(data, {.fittedScale = true, .points = PointRange{40, 80}});
  const auto hasPart = [&](GraphId graph) {
    return TextsOf(page, graph).contains(u"points 40 to 80 of 200"_s);
  };
  const QStringList figures = TextsOf(page, GraphId::Text);
  for (const GraphId graph : {GraphId::XBar, GraphId::R}) {
    EXPECT_TRUE(hasPart(graph));
    const ChartGraph& chart = page.Page().Graph(int(graph));
    EXPECT_EQ(std::pair(chart.Scale().left(), chart.Scale().right()), std::pair(39.0, 81.0));
    const auto curve = OperationsOf<ChartGraph::Curve>(page, graph)[0];
    EXPECT_EQ(chart.DataSet(curve.positions).front(), 40);
    EXPECT_EQ(chart.DataSet(curve.values).size(), 41u);
    EXPECT_EQ(curve.marks.size(), 41u);
    EXPECT_FALSE(page.Point(graph, 39, target) || page.Point(graph, 81, target));
    const auto last = page.Point(graph, 80, target);
    ASSERT_TRUE(last);
    EXPECT_EQ(page.PointAt(last->position, target)->number, 80);
  }
  page.ShowPoints({-5, 1000});
  EXPECT_EQ(std::pair(page.ShownPoints().first, page.ShownPoints().last), std::pair(1, 200));
  EXPECT_FALSE(hasPart(GraphId::XBar) || hasPart(GraphId::R));
  page.ShowPoints({300, 2});
  EXPECT_EQ(page.ShownPoints().first, 200);
  EXPECT_EQ(TextsOf(page, GraphId::Text), figures) << "the summary stays that of all points";
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

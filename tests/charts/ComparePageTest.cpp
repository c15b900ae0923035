// The page of two data sets: what they have in common, and what each keeps for itself.
#include "charts/ComparePage.h"

#include <gtest/gtest.h>

#include "tests/charts/PageData.h"
#include "tests/charts/Painting.h"
#include "tests/support/Approved.h"

namespace {

enum Graph { XBarA, RangeA, XBarB, RangeB, Bars, Summary };

CData Named(const QString& name, CData data, const QString& unit = u"mm"_s) {
  data.SetDescription(name);
  data.SetUnitOfMeasurement(unit);
  return data;
}

std::pair<double, double> ValueAxis(const ComparePage& page, Graph graph) {
  const QRectF scale = page.Page().Graph(graph).Scale();
  return {scale.top(), scale.bottom()};
}

const CData before = Named(u"Before"_s, PageData::Random({.mean = 74, .deviation = 0.01}));
const CData after =
    Named(u"After"_s, PageData::Random({.mean = 74.2, .deviation = 0.03, .seed = 2}), u" MM"_s);

}  // namespace

TEST(ComparePage, DrawsBothOnOneScaleWhereTheUnitsAgree) {
  const ComparePage page(before, after, {.libraryName = u"plant.kestrel"_s});
  EXPECT_EQ(ValueAxis(page, XBarA), ValueAxis(page, XBarB));
  EXPECT_EQ(ValueAxis(page, RangeA), ValueAxis(page, RangeB));
  EXPECT_LT(ValueAxis(page, XBarA).first, before.XBarLCL());
  EXPECT_GT(ValueAxis(page, XBarA).second, after.XBarUCL());
  EXPECT_LT(ValueAxis(page, XBarA).second - ValueAxis(page, XBarA).first, 1) << "and on no wider one";
  const ComparePage own(before, after, {.sameScale = false});
  EXPECT_NE(ValueAxis(own, XBarA), ValueAxis(own, XBarB));
  EXPECT_TRUE(Painting(own).Words().contains(u"A and B each on a scale of its own"_s));
  const ComparePage inches(before, Named(u"After"_s, after, u"in"_s), {});
  EXPECT_EQ(ValueAxis(inches, XBarA), ValueAxis(own, XBarA)) << "whatever is asked for";
  EXPECT_TRUE(Painting(inches).Words().contains(u"Units differ (mm, in): a scale each"_s));
  EXPECT_EQ(inches.Page().GraphCount(), 7) << "a histogram for each";
  EXPECT_FALSE(ComparePage::UnitsAgree(before, Named({}, after, {})));
}

// Twelve bins from 0, the lower limit of one, to 12, the largest value of the other.
TEST(ComparePage, CountsBothInTheSameBins) {
  const auto made = [](const QString& values, double lower, double upper) {
    CData data;
    data.SetDelimitedInputString(values);
    data.SetSubGroupSize(1);
    data.SetLowerSpecLimit(lower);
    data.SetUpperSpecLimit(upper);
    EXPECT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
    return data;
  };
  const CData one = made(u"1,1,1,2,5,5,5,5,5,5,"_s, 0, 10), other = made(u"2,12,3,3,12,"_s, 2, 10);
  const ComparePage page(one, other, {});
  const ChartGraph& graph = page.Page().Graph(Bars);
  EXPECT_EQ(graph.DataSet(u" Histogram"_s), (std::vector<double>{0, 30, 10, 0, 0, 60, 0, 0, 0, 0, 0, 0}));
  const std::vector<double> stairs = graph.DataSet(u" Stairs Data Set"_s);
  const std::vector<double> positions = graph.DataSet(u" StairsX Data Set"_s);
  ASSERT_EQ(stairs.size(), positions.size());
  for (const auto& [bin, percent] : {std::pair{1, 0}, {2, 20}, {3, 40}, {11, 40}}) {
    EXPECT_EQ(stairs[size_t(2 * bin + 1)], percent) << bin;
    EXPECT_EQ(positions[size_t(2 * bin + 1)], bin);
  }
  EXPECT_EQ(graph.DataSet(u"USL Data Set"_s), std::vector<double>{10}) << "both have it";
  EXPECT_EQ(graph.DataSet(u"LSL A Data Set"_s), std::vector<double>{0});
  EXPECT_EQ(graph.DataSet(u"LSL B Data Set"_s), std::vector<double>{2});
  const CData even = made(u"0,1,2,3,4,5,6,7,8,9,10,11,"_s, 0, 12);
  const ComparePage low(even, even, {});
  for (const auto& [of, spacing] : {std::pair{&page, 20}, {&low, 5}})
    EXPECT_EQ(std::get<ChartGraph::Axis>(of->Page().Graph(Bars).Operations().front()).spacing, spacing);
}

TEST(ComparePage, TellsOfEachUnderItsLetter) {
  CData one = Named(u"One"_s, PageData::Random({.subgroups = 20}));
  engine::Capability capability = one.Capability();
  capability.cpk = 1;
  capability.samplesOutside = 7;
  one.SetCPKValue(1);
  one.SetCapability(capability);
  Approved::Expect(Painting(ComparePage(one, after, {.libraryName = u"plant.kestrel"_s})).Words());
}

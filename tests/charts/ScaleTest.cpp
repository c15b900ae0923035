// The ends of the value axes: the standard scale's exact numbers, the fitted scale's promises.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "charts/FittedScale.h"
#include "charts/TScale.h"
#include "tests/support/Cases.h"

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double biggest = std::numeric_limits<double>::max();
constexpr double none = std::numeric_limits<double>::quiet_NaN();

TEST(TScale, GivesTheExactEndsOfItsGrid) {
  for (const auto& one : Cases(u"page.json"_s, u"standard scale: least and largest value, ends"_s)) {
    const double minimum = one[0].toDouble(), maximum = one[1].toDouble();
    TScale scale;
    scale.SetMaxValue(maximum);
    scale.SetMinValue(minimum);
    double high = -1, low = -1;
    ASSERT_TRUE(scale.GetScaleValues(high, low));
    EXPECT_EQ(high, one[3].toDouble()) << minimum << " to " << maximum;
    EXPECT_EQ(low, one[2].toDouble()) << minimum << " to " << maximum;
  }
}

TEST(TScale, FailsWhereThereIsNoStepAndLeavesItsOutputs) {
  using Two = std::pair<double, double>;
  for (const auto& [minimum, maximum] : {Two{0, 1.0000001e7}, Two{-2e7, 0}, Two{-biggest, biggest},
                                         Two{-infinite, 0}, Two{0, none}, Two{none, 0}}) {
    TScale scale;
    scale.SetMaxValue(maximum);
    scale.SetMinValue(minimum);
    double high = 3, low = 4;
    EXPECT_FALSE(scale.GetScaleValues(high, low));
    EXPECT_EQ(std::pair(high, low), Two(3, 4));
  }
}

TEST(FittedScale, HoldsTheValuesCloselyOnRoundTicks) {
  std::mt19937 generator(7);
  std::uniform_real_distribution<double> exponent(-8, 12), share(-1, 1);
  for (int run = 0; run < 5000; ++run) {
    const double centre = share(generator) * std::pow(10, exponent(generator));
    const double half = std::abs(centre) * std::pow(10, -exponent(generator) / 2 - 1) + 1e-9;
    const double low = centre - half, high = centre + half;
    const auto ends = FittedScale::Fit(low, high, 0.0001);
    const double step = (ends.maximum - ends.minimum) / FittedScale::Intervals;
    ASSERT_LE(ends.minimum, low) << low << " to " << high;
    ASSERT_GE(ends.maximum, high);
    ASSERT_LT(ends.maximum - ends.minimum, std::max(4 * (high - low), std::abs(centre) * 1e-8))
        << low << ' ' << high;
    const double digits = step / std::pow(10, std::floor(std::log10(step) + 1e-9)) * 2;
    ASSERT_NEAR(digits, std::round(digits), 1e-4) << step;
    if (low >= 0) {
      ASSERT_GE(ends.minimum, 0);
    }
  }
}

TEST(FittedScale, GivesAConstantSomeRoomAndRefusesWhatHasNone) {
  const auto ends = FittedScale::Fit(5, 5, 0.01);
  EXPECT_LT(ends.minimum, 5);
  EXPECT_GT(ends.maximum, 5);
  EXPECT_LT(ends.maximum - ends.minimum, 0.1);
  for (const double end : {infinite, none, biggest})
    EXPECT_THROW(FittedScale::Fit(-end, end, 1), std::range_error) << end;
}

}  // namespace

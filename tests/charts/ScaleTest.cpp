// The ends of the value axes: the standard scale's exact numbers, the fitted scale's promises.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "charts/FittedScale.h"
#include "charts/TScale.h"

namespace {

struct ScaleCase {
  double minimum, maximum, scaleMin, scaleMax;
};

TEST(TScale, GivesTheExactEndsOfItsGrid) {
  for (const ScaleCase& c : {ScaleCase{9.7, 10.3, -20, 40},
                             {0.31, 0.52, 0.10000000000000003, 0.8},
                             {0, 0, -0.00005 - 0.0001, 0.0001},
                             {-3, 5, -6, 7},
                             {-7, -2, -10, 1},
                             {-7, -2.5, -10, 0},
                             {100, 100, 70, 120},
                             {5, -3, 2, 0},
                             {0, 1e7, -3e6, 1.2e7}}) {
    TScale scale;
    scale.SetMaxValue(c.maximum);
    scale.SetMinValue(c.minimum);
    double high = -1, low = -1;
    ASSERT_TRUE(scale.GetScaleValues(high, low));
    EXPECT_EQ(high, c.scaleMax) << c.minimum << " to " << c.maximum;
    EXPECT_EQ(low, c.scaleMin) << c.minimum << " to " << c.maximum;
  }
}

TEST(TScale, FailsWhereThereIsNoStepAndLeavesItsOutputs) {
  const double infinite = std::numeric_limits<double>::infinity();
  const double biggest = std::numeric_limits<double>::max();
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const auto& [minimum, maximum] : {std::pair{0.0, 1.0000001e7},
                                         {-2e7, 0.0},
                                         {-biggest, biggest},
                                         {-infinite, 0.0},
                                         {0.0, none},
                                         {none, 0.0}}) {
    TScale scale;
    scale.SetMaxValue(maximum);
    scale.SetMinValue(minimum);
    double high = 3, low = 4;
    EXPECT_FALSE(scale.GetScaleValues(high, low));
    EXPECT_EQ(high, 3);
    EXPECT_EQ(low, 4);
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
  EXPECT_THROW(FittedScale::Fit(0, std::numeric_limits<double>::infinity(), 1), std::range_error);
  EXPECT_THROW(FittedScale::Fit(0, std::numeric_limits<double>::quiet_NaN(), 1), std::range_error);
  EXPECT_THROW(FittedScale::Fit(-1e308, 1e308, 1), std::range_error);
}

}  // namespace

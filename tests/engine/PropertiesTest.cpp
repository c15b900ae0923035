// Properties that hold for any data: shifting, scaling, kept limits, average run lengths.
#include <random>

#include "engine/Decimal.h"
#include "tests/engine/EngineRun.h"

namespace {

using engine::Inputs;
using engine::Results;

std::vector<int> RandomTenths(std::mt19937& random, int count) {
  std::normal_distribution<double> normal(500, 20);
  std::vector<int> values;
  for (int i = 0; i < count; ++i) values.push_back(static_cast<int>(normal(random)));
  return values;
}

// The values as texts of tenths, so that a shift or a factor is one of the decimal texts too.
std::string Tenths(const std::vector<int>& values, int shift = 0, int factor = 1) {
  std::string text;
  for (const int value : values) {
    const int tenths = value * factor + shift;
    text += std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + ",";
  }
  return text;
}

TEST(Properties, ShiftingAndScalingTheDataShiftsAndScalesTheLimits) {
  std::mt19937 random(20);
  for (int n = 1; n <= 20; ++n) {
    const std::vector<int> values = RandomTenths(random, 200);
    const Inputs inputs{.subGroupSize = n, .sensitivity = engine::Sensitivity::High};
    const Results plain = RunEngine(Tenths(values), inputs);
    const Results moved = RunEngine(Tenths(values, 1230, 3), inputs);
    EXPECT_NEAR(moved.limits.xBarCentre, plain.limits.xBarCentre * 3 + 123, 1e-10);
    EXPECT_NEAR(moved.limits.xBarUpper, plain.limits.xBarUpper * 3 + 123, 1e-10);
    EXPECT_NEAR(moved.limits.xBarLower, plain.limits.xBarLower * 3 + 123, 1e-10);
    EXPECT_NEAR(moved.limits.rangeUpper, plain.limits.rangeUpper * 3, 1e-10);
    EXPECT_NEAR(moved.stdDevValue, plain.stdDevValue * 3, 1e-10);
    EXPECT_EQ(RunEngine(Tenths(values, 1230), inputs).violatingPoints, plain.violatingPoints);
  }
}

Inputs WithLimits(Inputs inputs, const Results& from) {
  for (const auto& [limit, name] : engine::controlLimitFields)
    inputs.limits.*limit = engine::RoundToPlaces(from.limits.*limit, inputs.precisionValue);
  return inputs;
}

// Saving stores the limits rounded; loading them must not turn a verdict, and points that come later must not
// move them.
TEST(Properties, KeptLimitsKeepTheVerdict) {
  std::mt19937 random(24);
  for (int i = 0; i < 300; ++i) {
    const std::vector<int> values = RandomTenths(random, 200);
    const Inputs inputs{
        .subGroupSize = 1 + i % 6, .precisionValue = i % 9, .sensitivity = engine::Sensitivity::High};
    const Results fresh = RunEngine(Tenths(values), inputs);
    const Inputs kept = WithLimits(inputs, fresh);
    const Results loaded = RunEngine(Tenths(values), kept);
    EXPECT_EQ(loaded.violatingPoints, fresh.violatingPoints);
    EXPECT_EQ(loaded.cpkValue, fresh.cpkValue);
    EXPECT_EQ(loaded.processState, fresh.processState);
    const Results later = RunEngine(Tenths(values) + Tenths(values, 300), kept);
    EXPECT_EQ(later.limits.xBarUpper, kept.limits.xBarUpper);
    EXPECT_EQ(later.limits.rangeCentre, kept.limits.rangeCentre);
  }
}

// The mean number of points to the first mark on a process in control, with known parameters.
double AverageRunLength(bool onlyRuleOne) {
  std::mt19937 random(1987);
  std::normal_distribution<double> normal(0, 1e6);
  const engine::ChartLines<std::int64_t> lines{3'000'000, 0, -3'000'000};
  constexpr int runs = 20'000;
  std::vector<std::int64_t> points;
  engine::ViolatingPoints violating;
  std::int64_t total = 0;
  for (int run = 0; run < runs; ++run) {
    points.clear();
    for (int mark = 0; mark == 0;) {
      for (int i = 0; i < 100; ++i) points.push_back(static_cast<std::int64_t>(normal(random)));
      engine::FindViolations<std::int64_t>(points, lines, 0, violating);
      for (const auto& list : violating) {
        if (!list.empty() && (mark == 0 || list.front() < mark)) mark = list.front();
        if (onlyRuleOne) break;
      }
      total += mark;
    }
  }
  return static_cast<double>(total) / runs;
}

// C. W. Champ and W. H. Woodall, Exact results for Shewhart control charts with supplementary runs rules,
// Technometrics 29, 1987.
TEST(Properties, AverageRunLengthOfRuleOneIsTheExactOne) {
  EXPECT_NEAR(AverageRunLength(true), 370.4, 0.02 * 370.4);
}

TEST(Properties, AverageRunLengthOfAllRulesIsTheExactOne) {
  EXPECT_NEAR(AverageRunLength(false), 91.75, 0.02 * 91.75);
}

}  // namespace

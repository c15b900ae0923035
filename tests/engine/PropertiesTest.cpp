// Properties that hold for any data: shifting, scaling, kept limits, average run lengths.
#include <numeric>
#include <random>
#include <regex>
#include <sstream>

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

// A number of up to 18 digits with an exponent, as people and machines write it.
std::string RandomNumber(std::mt19937& random) {
  const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
  std::string number(1, static_cast<char>('1' + upTo(8)));
  for (int digits = upTo(17); digits > 0; --digits) number += static_cast<char>('0' + upTo(9));
  if (upTo(1)) number.insert(static_cast<std::size_t>(upTo(static_cast<int>(number.size()))), ".");
  if (upTo(1)) number += "e" + std::to_string(upTo(40) - 20);
  return upTo(1) ? "-" + number : number;
}

TEST(Properties, AConstantProcessIsInControlAtEveryMagnitudeAndPrecision) {
  std::mt19937 random(25);
  for (int i = 0; i < 1500; ++i) {
    const std::string number = RandomNumber(random);
    const int n = 1 + i % 20;
    std::string text;
    for (int sample = 0; sample < 10 * n; ++sample) text += number + ",";
    Inputs inputs{.subGroupSize = n, .precisionValue = i % 16, .sensitivity = engine::Sensitivity::High};
    for (const bool kept : {false, true}) {
      SCOPED_TRACE(number + (kept ? " kept" : "") + " precision " + std::to_string(i % 16));
      const Results results = RunEngine(text, inputs);
      EXPECT_EQ(results.violatingPoints, engine::ViolatingPoints{});
      EXPECT_TRUE(results.rangesOutside.empty());
      if (!kept) {
        EXPECT_EQ(results.limits.xBarCentre, std::stod(number));
      }
      inputs = WithLimits(inputs, results);
    }
  }
}

// The numbers say what the texts say.
TEST(Properties, SeriesAndBinsAsNumbersAreTheirTexts) {
  std::mt19937 random(26);
  const auto elements = [](const std::string& joined) {
    std::vector<double> values;
    std::istringstream text(joined);
    for (std::string element; std::getline(text, element, ',');) values.push_back(std::stod(element));
    return values;
  };
  for (int i = 0; i < 300; ++i) {
    std::string text;
    for (int sample = 0; sample < 12; ++sample)
      text += (i % 3 ? std::to_string(random()) + ".5" : RandomNumber(random)) + ",";
    const Results results = RunEngine(text, {.subGroupSize = 1 + i % 4, .precisionValue = i % 16});
    for (const auto& [joined, series] : {std::pair{&results.xBarOutputString, &results.xBarSeries},
                                         {&results.rBarOutputString, &results.rangeSeries}}) {
      const std::vector<double> values = elements(*joined);
      ASSERT_EQ(series->Count(), values.size());
      for (std::size_t point = 0; point < values.size(); ++point)
        EXPECT_EQ((*series)[point], values[point]) << text;
      EXPECT_EQ(series->decimals, i % 16);
    }
    EXPECT_EQ(std::accumulate(results.histogramCounts.begin(), results.histogramCounts.end(), 0),
              results.sampleQty);
  }
}

// Saving stores the limits rounded; loading them must not turn a verdict, and points that come later must not
// move them.
TEST(Properties, KeptLimitsKeepTheVerdict) {
  std::mt19937 random(24);
  for (int i = 0; i < 300; ++i) {
    const std::vector<int> values = RandomTenths(random, 200);
    const Inputs inputs{
        .subGroupSize = 1 + i % 6, .precisionValue = i % 9, .sensitivity = engine::Sensitivity::High};
    // Every second time with more digits than a double holds.
    const std::string text =
        std::regex_replace(Tenths(values), std::regex("[0-9]+[.]"), i % 2 ? "98765432$&012345" : "$&");
    const Results fresh = RunEngine(text, inputs);
    const Inputs kept = WithLimits(inputs, fresh);
    const Results loaded = RunEngine(text, kept);
    EXPECT_EQ(loaded.violatingPoints, fresh.violatingPoints);
    EXPECT_EQ(loaded.cpkValue, fresh.cpkValue);
    EXPECT_EQ(loaded.processState, fresh.processState);
    const Results later = RunEngine(text + Tenths(values, 300), kept);
    EXPECT_EQ(later.limits.xBarUpper, kept.limits.xBarUpper);
    EXPECT_EQ(later.limits.rangeCentre, kept.limits.rangeCentre);
  }
}

// Bin ends that samples lie on, moved far away or made very large or small.
TEST(Properties, HistogramCountsAreTheSameAtEveryMagnitude) {
  const std::array<int, engine::histogramBins> counts{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 2};
  for (int power = -12; power <= 5; ++power) {  // up to 18 digits
    for (const std::int64_t offset : {0L, 7'000'000'000'000L, -7'000'000'000'000L}) {
      std::string text;
      std::string ends[2];
      for (int i = 0; i <= 12; ++i) {
        ends[i > 0] = std::to_string(offset + 3 * i) + "e" + std::to_string(power);
        text += ends[i > 0] + ",";
      }
      for (const int precision : {0, 8, 15}) {
        const Results results = RunEngine(text, {.upperSpecLimit = std::stod(ends[1]),
                                                 .lowerSpecLimit = std::stod(ends[0]),
                                                 .precisionValue = precision});
        EXPECT_EQ(results.histogramCounts, counts) << text << precision;
        EXPECT_EQ(results.histoHiScaleValue, std::stod(ends[1]));
      }
    }
  }
}

// The mean number of points to the first mark on a process in control, with known parameters.
double AverageRunLength(bool onlyRuleOne) {
  std::mt19937 random(1987);
  std::normal_distribution<double> normal(0, 1e6);
  const engine::ChartLines<std::int64_t> lines{3'000'000, 0, -3'000'000};
  constexpr int runs = 40'000;
  std::vector<std::int64_t> points;
  engine::ViolatingPoints violating;
  std::int64_t total = 0;
  for (int run = 0; run < runs; ++run) {
    points.clear();
    for (int mark = 0; mark == 0;) {
      for (int i = 0; i < 200; ++i) points.push_back(static_cast<std::int64_t>(normal(random)));
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
TEST(Properties, AverageRunLengthsAgreeWithTheExactOnes) {
  EXPECT_NEAR(AverageRunLength(true), 370.4, 0.02 * 370.4);
  EXPECT_NEAR(AverageRunLength(false), 91.75, 0.02 * 91.75);
}

}  // namespace

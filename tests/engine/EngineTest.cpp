// The engine where no reference case leads: spellings of numbers, the ends of what types hold, and refusals.
#include <cmath>

#include "engine/Parse.h"
#include "tests/engine/EngineRun.h"
#include "tests/support/Cases.h"

namespace {

using engine::Inputs;
using engine::Results;

QJsonArray EngineCases(const char* part) {
  return Cases(QStringLiteral("engine.json"), QString::fromLatin1(part));
}
std::string Text(const QJsonValue& text) { return text.toString().toStdString(); }

// The delimiter comes before the number that might hold it; what is too small for a double is 0.
TEST(Engine, ReadsEveryWayToWriteANumber) {
  for (const auto& one : EngineCases("samples")) {
    const std::string delimiter = Text(one[1]);
    EXPECT_EQ(RunEngine(Text(one[0]), {.stringDelimiter = delimiter, .precisionValue = one[2].toInt()})
                  .xBarOutputString,
              Text(one[3]));
  }
}

// A single value and one among samples are read by two ways.
TEST(Engine, ReadsAsSamplesExactlyWhatIsANumber) {
  engine::Engine engine;
  Results results;
  // Every text of up to five of these characters.
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::string text = texts[i];
    if (text.size() < 5) {
      for (const char character : {'0', '.', '-', '+', 'e', ' ', '\t'}) texts.push_back(text + character);
    }
    if (text.find_first_not_of(" \t") == std::string::npos) continue;
    double value = 0;
    EXPECT_EQ(engine::ReadDecimal(text, value) == engine::Reading::Number,
              engine.Run({.delimitedInputString = text}, results))
        << text;
  }
}

TEST(Engine, CalculatesWhatNoScaledIntegerHolds) {
  const Results large = RunEngine("1e300,3e300");
  EXPECT_EQ(large.limits.xBarCentre, 2e300);
  EXPECT_NEAR(large.stdDevValue / std::sqrt(2.0), 1e300, 1e285);
  EXPECT_EQ(RunEngine("1e15,1e-15,-1e15,3e-15", {.subGroupSize = 2}).limits.xBarCentre, 1e-15);
  EXPECT_NEAR(RunEngine("0.000000001,1000000000,2000000000").stdDevValue, 1e9, 1e-6);
  for (const double far : {1e25, 1e40}) {  // within and beyond 128 bits
    EXPECT_EQ(
        RunEngine("5,6", {.upperSpecLimit = far, .lowerSpecLimit = -far}).histogramBinValuesOutputString,
        "0,0,0,0,0,0,2,0,0,0,0,0");
  }
}

// The limits of capability are decimals too: an offset changes no digit of Cpk.
TEST(Engine, CpkIsExactFarFromZero) {
  const Results near = RunEngine("0.2,0.1,0.3", {.upperSpecLimit = 0.5, .lowerSpecLimit = -0.1});
  const Results far = RunEngine("10000000.2,10000000.1,10000000.3",
                                {.upperSpecLimit = 10000000.5, .lowerSpecLimit = 9999999.9});
  EXPECT_EQ(far.cpkValue, near.cpkValue);
  EXPECT_EQ(RunEngine("0.2,0.1,0.3", {.upperSpecLimit = 0.5, .lowerSpecLimit = 0.2}).cpkValue, 0);
}

// What cannot be said is absent, not 0.
TEST(Engine, CapabilityNeedsASpecificationAndASpread) {
  const engine::Capability without = RunEngine("1,2,4").capability;
  EXPECT_GT(without.sigmaWithin, 0);
  EXPECT_FALSE(without.cp || without.cpk || without.pp || without.ppk || without.samplesOutside ||
               without.ExpectedOutside());
  const engine::Capability equal = RunEngine("5,5", {.upperSpecLimit = 4, .lowerSpecLimit = 1}).capability;
  EXPECT_FALSE(equal.cp || equal.cpk || equal.pp || equal.ppk || equal.ExpectedOutside());
  EXPECT_EQ(equal.samplesOutside, 2);
  // Limits are decimals, finer than the samples or beyond all whole numbers.
  for (const auto& one : EngineCases("samples outside: the samples, lower, upper, how many")) {
    const Inputs inputs{.upperSpecLimit = one[2].toDouble(), .lowerSpecLimit = one[1].toDouble()};
    EXPECT_EQ(RunEngine(Text(one[0]), inputs).capability.samplesOutside, one[3].toInt()) << Text(one[0]);
  }
}

// On the page it is 1.00.
TEST(Engine, CpkCountsAsItIsShown) {
  for (const auto& [cpk, state] : {std::pair{0.9951, 4}, {0.9949, 3}}) {
    const double upper = 0.5 + 3 * cpk / 1.1283791670955126;
    EXPECT_EQ(RunEngine("0,1,0,1", {.upperSpecLimit = upper, .lowerSpecLimit = -9}).processState, state)
        << cpk;
  }
}

// Points on a line are not beyond it and points a digit further are, whether the lines are whole numbers of
// 64 bits, of 128 or longer.
TEST(Engine, ComparesTheDecimalsThatAreShownWhateverTheirSize) {
  using Points = std::vector<std::int16_t>;
  const auto judge = [](const std::string& sign, int power, int precision, std::vector<const char*> numbers) {
    const std::string e = "e" + std::to_string(power);
    const auto times = [&](const char* number) { return std::stod(sign + number + e); };
    Inputs inputs{.precisionValue = precision, .sensitivity = engine::Sensitivity::High};
    inputs.limits = {.xBarUpper = std::max(times("13"), times("7")),
                     .xBarLower = std::min(times("13"), times("7")),
                     .xBarCentre = times("10"),
                     .rangeUpper = std::fabs(times("3"))};
    std::string text;
    for (const char* number : numbers) text += sign + number + e + ",";
    return RunEngine(text, inputs);
  };
  for (int power = -8; power <= 300; power += power < 40 ? 1 : 20) {
    const bool rangesAreExact = power < 17;
    for (const auto& [sign, precision] : {std::pair{"", 8}, {"-", 8}, {"", 15}, {"-", 15}}) {
      SCOPED_TRACE(testing::Message() << sign << "10e" << power << " with " << precision << " decimals");
      const auto run = [&](std::vector<const char*> numbers) {
        return judge(sign, power, precision, std::move(numbers));
      };
      const Results on = run({"10", "12", "12", "13", "10", "9", "9", "9", "9", "8", "8", "7"});
      EXPECT_EQ(on.violatingPoints, engine::ViolatingPoints{});
      EXPECT_EQ(run({"10", "13", "14", "8", "5"}).violatingPoints[0], (Points{3, 5}));
      const Results beyond = run({"10", "13", "13", "9", "10", "8", "8", "8", "8", "13"});
      EXPECT_EQ(beyond.violatingPoints, (engine::ViolatingPoints{Points{}, {3}, {9}, {}}));
      if (rangesAreExact) {
        EXPECT_EQ(on.rangesOutside, Points{});
        EXPECT_EQ(beyond.rangesOutside, (Points{4, 10}));
      }
    }
  }
  // Lines far out for short numbers.
  const Results between = RunEngine("1,2,3", {.limits = {.xBarUpper = 1e30, .xBarLower = -1e30}});
  EXPECT_EQ(between.violatingPoints, engine::ViolatingPoints{});
}

// The first moving range does not exist: it is not below a limit.
TEST(Engine, FindsRangesBeyondTheirLimitsWithoutAVerdict) {
  const Inputs inputs{.subGroupSize = 2, .limits = {.rangeUpper = 4, .rangeLower = 1}};
  const std::string text = "0,4,0,4.00001,0,4.0001,0,1,0.0001,1,0,3,0,3,0,3,0,3,0,3";
  const Results results = RunEngine(text, inputs);
  EXPECT_EQ(results.rangesOutside, (std::vector<std::int16_t>{3, 5}));
  EXPECT_EQ(results.ruleViolation, 0);
  EXPECT_TRUE(results.isInControl);
  Inputs lastEight = inputs;
  lastEight.detectionPeriod = engine::DetectionPeriod::Short;
  EXPECT_EQ(RunEngine(text, lastEight).rangesOutside, (std::vector<std::int16_t>{3, 5}));
  EXPECT_EQ(RunEngine(text + ",0,3", lastEight).rangesOutside, (std::vector<std::int16_t>{5}));
  EXPECT_EQ(RunEngine("1,3,5,5", {.limits = {.rangeLower = 1}}).rangesOutside,
            (std::vector<std::int16_t>{4}));
}

TEST(Engine, KnowsTheDecimalsThatSamplesAndLimitsNeed) {
  engine::Engine engine;
  for (const auto& one : EngineCases("decimals")) {
    ASSERT_TRUE(engine.Read(Text(one[0]), ",", false)) << Text(one[0]);
    EXPECT_EQ(engine.SampleDecimals(), one[1].toInt()) << Text(one[0]);
  }
  for (const auto& one : EngineCases("decimals of a limit"))
    EXPECT_EQ(engine::DecimalsRead(one[0].toDouble()), one[1].toInt()) << one[0].toDouble();
  int decimals = 0;
  for (const auto& shown : EngineCases("decimals shown"))
    EXPECT_EQ(engine::DecimalsToShow(decimals++), shown.toInt()) << decimals;
}

// One empty data set must not keep a library from loading.
TEST(Engine, EmptyDataIsASuccessWithoutPoints) {
  const Inputs inputs{.upperSpecLimit = 10,
                      .lowerSpecLimit = 4,
                      .subGroupSize = 4,
                      .dataStartPoint = 3,
                      .limits = {.xBarUpper = 9}};
  for (const char* text : {"", ",,", " ", "1,2,3"}) {
    const Results results = RunEngine(text, inputs);
    EXPECT_EQ(results.numberOfPlotPoints, 0);
    EXPECT_EQ(results.sampleQty, 0);
    EXPECT_EQ(results.xBarOutputString, "");
    EXPECT_EQ(results.limits.xBarUpper, 9);
    EXPECT_EQ(results.limits.xBarLower, 0);
    EXPECT_TRUE(results.isInControl);
    EXPECT_EQ(results.processState, 0);
    EXPECT_EQ(results.histogramBinQty, 12);
    EXPECT_EQ(results.histogramBinValuesOutputString, "0,0,0,0,0,0,0,0,0,0,0,0");
    EXPECT_EQ(results.histoHiScaleValue, 10);
  }
}

TEST(Engine, RefusalsNameTheThingAndLeaveTheResults) {
  std::string most;
  for (int i = 0; i < engine::maximumSamples; ++i) most += std::to_string(i % 10) + ",";
  EXPECT_EQ(RunEngine(most).numberOfPlotPoints, 32767);
  most += "1";
  const std::pair<Inputs, std::string> cases[] = {
      {{.delimitedInputString = "1,2,12,3x,4"}, "value 4 (\"3x\") is not a number"},
      {{.delimitedInputString = "1,,abc"}, "value 2 (\"abc\") is not a number"},
      {{.delimitedInputString = most}, "there are more than 32767 samples"},
      {{.subGroupSize = 21}, "the subgroup size 21 is not from 0 to 20"},
      {{.subGroupSize = -1}, "the subgroup size -1 is not from 0 to 20"},
      {{.precisionValue = 16}, "the precision 16 is not from 0 to 15"},
      {{.upperSpecLimit = NAN}, "the upper specification limit is not a finite number"},
      {{.subGroupSize = 2, .delimitedInputString = "1.7e308,-1.7e308"},
       "the values are too large to be calculated with"},
      {{.dataStartPoint = 6, .delimitedInputString = "1,2,3,4,5"},
       "the start point 6 lies beyond the last of 5 points"},
      {{.dataStartPoint = 4, .dataStopPoint = 2, .delimitedInputString = "1,2,3,4,5"},
       "the start point 4 lies beyond the stop point 2"},
  };
  engine::Engine engine;
  Results results;
  results.numberOfPlotPoints = 3;
  for (const auto& [inputs, error] : cases) {
    EXPECT_FALSE(engine.Run(inputs, results)) << error;
    EXPECT_EQ(engine.LastError(), error);
  }
  for (const auto& bad : EngineCases("no number")) {
    EXPECT_FALSE(engine.Run({.delimitedInputString = "7," + Text(bad)}, results)) << Text(bad);
    EXPECT_EQ(engine.LastError(), "value 2 (\"" + Text(bad) + "\") is not a number");
  }
  EXPECT_EQ(results.numberOfPlotPoints, 3);
  ASSERT_TRUE(engine.Run({.delimitedInputString = "4"}, results));
  EXPECT_EQ(results.xBarOutputString, "4.0000");
}

TEST(Decimal, RoundsHalvesAwayFromZeroAsAPersonReadsThem) {
  for (const auto& one : EngineCases("rounded"))
    EXPECT_EQ(engine::RoundToPlaces(one[0].toDouble(), one[1].toInt()), one[2].toDouble())
        << one[0].toDouble();
  for (int i = -2000; i < 2000; ++i) {
    const double once = engine::RoundToPlaces(i * 0.000737 + 1e6, 4);
    EXPECT_EQ(engine::RoundToPlaces(once, 4), once);
  }
}

}  // namespace

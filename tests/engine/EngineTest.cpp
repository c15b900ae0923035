// The engine on hand-made data: decimals, subgroups, limits, histogram, texts and refusals.
#include <cmath>

#include "engine/Decimal.h"
#include "tests/engine/EngineRun.h"

namespace {

using engine::Inputs;
using engine::Results;

TEST(Engine, CalculatesWithDecimalsNotBinaryFractions) {
  const Results range = RunEngine("12.40,12.30", {.subGroupSize = 2, .precisionValue = 8});
  EXPECT_EQ(range.rBarOutputString, "0.10000000");
  EXPECT_EQ(range.rBarMean, 0.1);
  // 0.125 and 2.675 are halves to a person; so is the mean of 0.10 and 0.15.
  EXPECT_EQ(RunEngine("0.125,-0.125,2.675", {.precisionValue = 2}).xBarOutputString, "0.13,-0.13,2.68");
  EXPECT_EQ(RunEngine("0.10,0.15,-0.10,-0.15", {.subGroupSize = 2, .precisionValue = 2}).xBarOutputString,
            "0.13,-0.13");
}

TEST(Engine, EqualValuesAreInControlWithoutSpread) {
  const std::string third = "0.1,0.1,0.1";
  std::string text = third;
  for (int i = 0; i < 20; ++i) text += "," + third;
  const Results results = RunEngine(text, {.upperSpecLimit = 1, .subGroupSize = 3, .sensitivityValue = 2});
  EXPECT_EQ(results.xBarMean, 0.1);
  EXPECT_EQ(results.xBarUCL, 0.1);
  EXPECT_EQ(results.stdDevValue, 0);
  EXPECT_EQ(results.cpkValue, 0);
  EXPECT_TRUE(results.isInControl);
  EXPECT_EQ(results.processState, 3);
}

TEST(Engine, ReadsEveryWayToWriteANumber) {
  const Results results = RunEngine(" 1 ,+2,-3.50,.5,7.,1e2,1.5E-1,,\t4\r\n,", {.precisionValue = 3});
  EXPECT_EQ(results.xBarOutputString, "1.000,2.000,-3.500,0.500,7.000,100.000,0.150,4.000");
  EXPECT_EQ(results.sampleQty, 8);
  // One and nine decimals together, and texts with more digits than the plain reader takes.
  EXPECT_EQ(RunEngine("1.5,2.123456789", {.precisionValue = 9}).xBarOutputString, "1.500000000,2.123456789");
  EXPECT_EQ(
      RunEngine("1.50000000000000000000000,000000000000000000000002", {.precisionValue = 1}).xBarOutputString,
      "1.5,2.0");
  // Another delimiter, also one of several characters and one that is a blank.
  EXPECT_EQ(RunEngine("1;2;3", {.stringDelimiter = ";", .precisionValue = 0}).xBarOutputString, "1;2;3");
  EXPECT_EQ(RunEngine("1\r\n2\r\n", {.stringDelimiter = "\r\n", .precisionValue = 0}).xBarOutputString,
            "1\r\n2");
  EXPECT_EQ(RunEngine("1 2  3", {.stringDelimiter = " ", .precisionValue = 0}).xBarOutputString, "1 2 3");
  // One that a number may hold comes before the number.
  EXPECT_EQ(RunEngine("1.2.3", {.stringDelimiter = ".", .precisionValue = 0}).xBarOutputString, "1.2.3");
}

TEST(Engine, TakesTheCompensatedPathWhereExponentsLieFarApart) {
  const Results results = RunEngine("1e15,1e-15,-1e15,3e-15", {.subGroupSize = 2, .precisionValue = 2});
  EXPECT_EQ(results.xBarMean, 1e-15);
  EXPECT_EQ(results.xBarOutputString, "500000000000000.00,-500000000000000.00");
  const Results large = RunEngine("1e300,3e300", {.precisionValue = 4});
  EXPECT_EQ(large.xBarMean, 2e300);
  EXPECT_NEAR(large.stdDevValue / std::sqrt(2.0), 1e300, 1e285);
  // A spread too wide for exact squares.
  const Results wide = RunEngine("0.000000001,1000000000,2000000000", {.precisionValue = 4});
  EXPECT_NEAR(wide.stdDevValue, 1e9, 1e-6);
}

TEST(Engine, LeavesAnIncompleteSubgroupOutOfEverything) {
  const Results results = RunEngine("1,3,2,4,100", {.subGroupSize = 2, .precisionValue = 0});
  EXPECT_EQ(results.xBarOutputString, "2,3");
  EXPECT_EQ(results.numberOfPlotPoints, 2);
  EXPECT_EQ(results.sampleQty, 4);
  EXPECT_EQ(results.maxValue, 4);
  EXPECT_EQ(RunEngine("1,3,2,4,100", {.subGroupSize = 2, .precisionValue = 0, .reverseDataString = true})
                .xBarOutputString,
            "52,3");
}

TEST(Engine, IndividualsUseMovingRanges) {
  const Results results = RunEngine("10,12,11,15", {.subGroupSize = 0, .precisionValue = 1});
  EXPECT_EQ(results.xBarOutputString, "10.0,12.0,11.0,15.0");
  EXPECT_EQ(results.rBarOutputString, "0.0,2.0,1.0,4.0");
  EXPECT_DOUBLE_EQ(results.rBarMean, 7.0 / 3);
  EXPECT_NEAR(results.xBarUCL, 12 + 3 * (7.0 / 3) / 1.128379167095513, 1e-12);
  const Results one = RunEngine("5", {.precisionValue = 1});
  EXPECT_EQ(one.rBarMean, 0);
  EXPECT_EQ(one.stdDevValue, 0);
  EXPECT_EQ(one.xBarUCL, 5);
}

TEST(Engine, EmptyDataIsASuccessWithoutPoints) {
  for (const char* text : {"", ",,", " ", "1,2,3"}) {
    Results results = RunEngine(
        text,
        {.upperSpecLimit = 10, .lowerSpecLimit = 4, .subGroupSize = 4, .dataStartPoint = 3, .xBarUCL = 9});
    EXPECT_EQ(results.numberOfPlotPoints, 0);
    EXPECT_EQ(results.sampleQty, 0);
    EXPECT_EQ(results.xBarOutputString, "");
    EXPECT_EQ(results.xBarUCL, 9);
    EXPECT_EQ(results.xBarLCL, 0);
    EXPECT_TRUE(results.isInControl);
    EXPECT_EQ(results.processState, 0);
    EXPECT_EQ(results.histogramBinQty, 12);
    EXPECT_EQ(results.histogramBinValuesOutputString, "0,0,0,0,0,0,0,0,0,0,0,0");
    EXPECT_EQ(results.histoHiScaleValue, 10);
  }
}

TEST(Engine, GivenLimitsStayAndTheOthersRestOnTheData) {
  const std::string text = "1,2,3,4,5,6,7,8";
  const Results free = RunEngine(text, {.subGroupSize = 2});
  const Results given = RunEngine(text, {.subGroupSize = 2, .xBarUCL = 99, .rBarMean = 0.5});
  EXPECT_EQ(given.xBarUCL, 99);
  EXPECT_EQ(given.rBarMean, 0.5);
  EXPECT_EQ(given.xBarLCL, free.xBarLCL);
  EXPECT_EQ(given.rBarUCL, free.rBarUCL);
}

TEST(Engine, StartAndStopChooseTheBasePeriodOfTheLimitsOnly) {
  const std::string text = "10,11,10,12,11,10,50,52,49,51";
  const Results base =
      RunEngine(text, {.upperSpecLimit = 60, .subGroupSize = 2, .dataStartPoint = 1, .dataStopPoint = 3});
  EXPECT_NEAR(base.xBarMean, 64.0 / 6, 1e-12);
  EXPECT_EQ(base.numberOfPlotPoints, 5);
  EXPECT_EQ(base.maxValue, 52);
  EXPECT_EQ(base.cpkValue, RunEngine(text, {.upperSpecLimit = 60, .subGroupSize = 2}).cpkValue);
  EXPECT_EQ(base.violatingPoints[0], (std::vector<std::int16_t>{4, 5}));
  // A stop point beyond the end is the last point: what the editor gives for "all".
  EXPECT_EQ(RunEngine(text, {.subGroupSize = 2, .dataStopPoint = 10}).xBarMean,
            RunEngine(text, {.subGroupSize = 2}).xBarMean);
  EXPECT_EQ(EngineError(text, {.subGroupSize = 2, .dataStartPoint = 6}),
            "the start point 6 lies beyond the last of 5 points");
  EXPECT_EQ(EngineError(text, {.subGroupSize = 2, .dataStartPoint = 4, .dataStopPoint = 2}),
            "the start point 4 lies beyond the stop point 2");
}

TEST(Engine, CpkRestsOnVariationWithinTheSubgroups) {
  const std::string text = "9,11,9,11,9,11,9,11";
  const double sigma = 2 / 1.128379167095513;
  const Results results = RunEngine(text, {.upperSpecLimit = 16, .lowerSpecLimit = 7, .subGroupSize = 2});
  EXPECT_NEAR(results.cpkValue, 3 / (3 * sigma), 1e-12);
  EXPECT_EQ(RunEngine(text, {.upperSpecLimit = 7, .lowerSpecLimit = 7, .subGroupSize = 2}).cpkValue, 0);
  EXPECT_LT(RunEngine(text, {.upperSpecLimit = 9, .lowerSpecLimit = 7, .subGroupSize = 2}).cpkValue, 0);
}

// The limits of capability are decimals too: an offset changes no digit of Cpk.
TEST(Engine, CpkIsExactFarFromZero) {
  const double near = RunEngine("0.2,0.1,0.3", {.upperSpecLimit = 0.5, .lowerSpecLimit = -0.1}).cpkValue;
  const double far = RunEngine("10000000.2,10000000.1,10000000.3",
                               {.upperSpecLimit = 10000000.5, .lowerSpecLimit = 9999999.9})
                         .cpkValue;
  EXPECT_EQ(far, near);
  EXPECT_EQ(RunEngine("0.2,0.1,0.3", {.upperSpecLimit = 0.5, .lowerSpecLimit = 0.2}).cpkValue, 0);
}

// More decimals than 64 bits take change the texts' length and nothing else.
TEST(Engine, PrecisionChangesNoFigure) {
  const std::string text = "10000000.1,10000000.2,10000000.3,-10000000.1";
  const Results coarse = RunEngine(text, {.subGroupSize = 2, .precisionValue = 4});
  const Results fine = RunEngine(text, {.subGroupSize = 2, .precisionValue = 15});
  EXPECT_EQ(fine.xBarOutputString, "10000000.150000000000000,0.100000000000000");
  EXPECT_EQ(fine.rBarOutputString, "0.100000000000000,20000000.400000000000000");
  EXPECT_EQ(fine.stdDevValue, coarse.stdDevValue);
  EXPECT_EQ(fine.xBarUCL, coarse.xBarUCL);
}

TEST(Engine, HistogramBinsHoldTheirLowerEnd) {
  // Bins of width 0.1 from 0 to 1.2: every sample but the last sits exactly on a bin's lower end.
  const Results results = RunEngine("0,0.1,0.2,0.3,0.4,0.5,0.6,0.7,0.8,0.9,1.0,1.1,1.2",
                                    {.upperSpecLimit = 1.2, .lowerSpecLimit = 0, .precisionValue = 1});
  EXPECT_EQ(results.histogramBinValuesOutputString, "1,1,1,1,1,1,1,1,1,1,1,2");
  EXPECT_EQ(results.histogramLabelsOutputString, "0.0,0.1,0.2,0.3,0.4,0.5,0.6,0.7,0.8,0.9,1.0,1.1");
  // Limits with more decimals than the samples, and a sample outside them.
  const Results finer =
      RunEngine("5,6,7", {.upperSpecLimit = 6.25, .lowerSpecLimit = 4.75, .precisionValue = 4});
  EXPECT_EQ(finer.histoLoScaleValue, 4.75);
  EXPECT_EQ(finer.histoHiScaleValue, 7);
  EXPECT_EQ(finer.histogramBinValuesOutputString, "0,1,0,0,0,0,1,0,0,0,0,1");
  // No width at all: one unit of the last shown decimal to each side.
  const Results point = RunEngine("5,5,5", {.precisionValue = 2});
  EXPECT_EQ(point.histoLoScaleValue, 4.99);
  EXPECT_EQ(point.histoHiScaleValue, 5.01);
  EXPECT_EQ(point.histogramBinValuesOutputString, "0,0,0,0,0,0,3,0,0,0,0,0");
  // Limits beyond any scaled integer.
  const Results huge =
      RunEngine("5,6", {.upperSpecLimit = 1e40, .lowerSpecLimit = -1e40, .precisionValue = 2});
  EXPECT_EQ(huge.histogramBinValuesOutputString, "0,0,0,0,0,0,2,0,0,0,0,0");
}

TEST(Engine, AsManySamplesAsADataSetHoldsAndNoMore) {
  std::string text;
  for (int i = 0; i < engine::maximumSamples; ++i) text += std::to_string(i % 10) + ",";
  EXPECT_EQ(RunEngine(text).numberOfPlotPoints, 32767);
  EXPECT_EQ(EngineError(text + "1"), "there are more than 32767 samples");
}

TEST(Engine, RefusalsNameTheThing) {
  EXPECT_EQ(EngineError("1,2,12,3x,4"), "value 4 (\"3x\") is not a number");
  EXPECT_EQ(EngineError("1,,abc"), "value 2 (\"abc\") is not a number");
  for (const char* bad :
       {"1e999", "NaN", "inf", "1 2", "--1", "1e", ".", "-", "+", "1.2.3", "0x10", "1e5.5", "\xC2\xB5"}) {
    EXPECT_EQ(EngineError(std::string("7,") + bad), std::string("value 2 (\"") + bad + "\") is not a number");
  }
  EXPECT_EQ(EngineError(std::string(400, '9')).substr(0, 20), "value 1 (\"9999999999");
  EXPECT_EQ(EngineError("1", {.subGroupSize = 21}), "the subgroup size 21 is not from 0 to 20");
  EXPECT_EQ(EngineError("1", {.subGroupSize = -1}), "the subgroup size -1 is not from 0 to 20");
  EXPECT_EQ(EngineError("1", {.precisionValue = 16}), "the precision 16 is not from 0 to 15");
  EXPECT_EQ(EngineError("1", {.upperSpecLimit = NAN}),
            "the upper specification limit is not a finite number");
  EXPECT_EQ(EngineError("1.7e308,-1.7e308", {.subGroupSize = 2}),
            "the values are too large to be calculated with");
  // Too small for a double is 0, not an error.
  EXPECT_EQ(RunEngine("1e-999,0.0000", {.precisionValue = 1}).xBarOutputString, "0.0,0.0");
}

TEST(Engine, AFailedRunLeavesTheResultsAndTheEngineUsable) {
  engine::Engine engine;
  Results results;
  ASSERT_TRUE(engine.Run({.delimitedInputString = "1,2,3"}, results));
  ASSERT_FALSE(engine.Run({.delimitedInputString = "1,x"}, results));
  EXPECT_EQ(results.numberOfPlotPoints, 3);
  ASSERT_TRUE(engine.Run({.delimitedInputString = "4"}, results));
  EXPECT_EQ(results.xBarOutputString, "4.0000");
}

TEST(Decimal, RoundsHalvesAwayFromZeroAsAPersonReadsThem) {
  EXPECT_EQ(engine::RoundToPlaces(12.345, 2), 12.35);
  EXPECT_EQ(engine::RoundToPlaces(-0.125, 2), -0.13);
  EXPECT_EQ(engine::RoundToPlaces(1.005, 2), 1.01);
  EXPECT_EQ(engine::RoundToPlaces(2.6749999999999994, 2), 2.68);  // a half in 15 digits
  EXPECT_EQ(engine::RoundToPlaces(2.6749999999, 2), 2.67);
  EXPECT_EQ(engine::RoundToPlaces(999999.99995, 4), 1000000.0);
  EXPECT_EQ(engine::RoundToPlaces(0.04, 1), 0.0);
  EXPECT_EQ(engine::RoundToPlaces(0.05, 1), 0.1);
  EXPECT_EQ(engine::RoundToPlaces(1e300, 8), 1e300);
  EXPECT_EQ(engine::RoundToPlaces(1000000000.12345678, 7), 1000000000.1234568);
  for (int i = -2000; i < 2000; ++i) {
    const double once = engine::RoundToPlaces(i * 0.000737 + 1e6, 4);
    EXPECT_EQ(engine::RoundToPlaces(once, 4), once);
  }
}

}  // namespace

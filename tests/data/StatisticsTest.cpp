// Every figure keeps its name on its way to the engine and back.
#include "data/Statistics.h"

#include "tests/support/Figures.h"

namespace {

// Rule 3 is broken early, and by no sensitivity but the highest.
constexpr auto samples =
    "11.7,11.8,11.6,11.7,11.6,10,11,10,11,9.9,11.1,10,11,10,11,10,11,10.1,11,10,11,10,11,10,11,10,11,10,11,"
    "10.2,"
    "11";

TEST(CreateStatistics, HandsEveryInputToTheEngineUnderItsName) {
  struct Change {
    const char* name;
    void (*make)(CData&, engine::Inputs&);
  };
#define CHANGE(Name, input, value)                                                                           \
  {                                                                                                          \
#Name,                                                                                                   \
        [](CData & data,                                                                                     \
           engine::Inputs &                                                                                  \
               inputs) { data.Set##Name(value), inputs.input = static_cast<decltype(inputs.input)>(value); } \
  }
  const Change changes[] = {
      CHANGE(UpperSpecLimit, upperSpecLimit, 12.5),
      CHANGE(LowerSpecLimit, lowerSpecLimit, 6.5),
      CHANGE(SubGroupSize, subGroupSize, 2),
      CHANGE(DataStartPoint, dataStartPoint, 7),
      CHANGE(DataStopPoint, dataStopPoint, 9),
      CHANGE(XBarUCL, limits.xBarUpper, 14.5),
      CHANGE(XBarLCL, limits.xBarLower, 5.5),
      CHANGE(XBarMean, limits.xBarCentre, 10.25),
      CHANGE(RBarUCL, limits.rangeUpper, 4.5),
      CHANGE(RBarLCL, limits.rangeLower, 0.125),
      CHANGE(RBarMean, limits.rangeCentre, 1.75),
      CHANGE(PrecisionValue, precisionValue, 2),
      CHANGE(ReverseDataString, reverseDataString, true),
      CHANGE(SensitivityValue, sensitivity, 0),
      CHANGE(DetectionPeriod, detectionPeriod, 0),
      {"StringDelimiter and DelimitedInputString", [](CData& data, engine::Inputs& inputs) {
         data.SetStringDelimiter(u";"_s), inputs.stringDelimiter = ";";
         data.SetDelimitedInputString(u"1;2;4"_s), inputs.delimitedInputString = "1;2;4";
       }}};
#undef CHANGE
  CData unchanged;
  engine::Inputs unchangedInputs;
  unchanged.SetDelimitedInputString(QString::fromLatin1(samples));
  unchangedInputs.delimitedInputString = samples;
  unchanged.SetSensitivityValue(2);
  unchangedInputs.sensitivity = engine::Sensitivity::High;
  unchanged.SetUpperSpecLimit(13);
  unchangedInputs.upperSpecLimit = 13;
  unchanged.SetLowerSpecLimit(8);
  unchangedInputs.lowerSpecLimit = 8;
  for (const Change& change : changes) {
    SCOPED_TRACE(change.name);
    CData data = unchanged;
    engine::Inputs inputs = unchangedInputs;
    change.make(data, inputs);
    CData expected = data, withoutIt = data;
    engine::Results results;
    engine::Engine engine;
    ASSERT_TRUE(engine.Run(inputs, results));
    QCGlobalFunctions::StoreResults(results, expected);
    ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
    ExpectFigures(data, FiguresOf(expected));
    ASSERT_TRUE(engine.Run(unchangedInputs, results));
    QCGlobalFunctions::StoreResults(results, withoutIt);
    EXPECT_FALSE(FiguresOf(expected) == FiguresOf(withoutIt)) << "shows nothing";
  }
}

TEST(CreateStatistics, StoresEveryResultUnderItsName) {
  engine::Results results;
  CData data;
  Figures expected = FiguresOf(data);
  int number = 0;
#define NUMBER(Name, result) \
  expected[u## #Name##_s] = results.result = static_cast<decltype(results.result)>(++number + 0.25)
#define TEXT(Name, result) results.result = #Name, expected[u## #Name##_s] = u## #Name##_s
  NUMBER(XBarUCL, limits.xBarUpper);
  NUMBER(XBarLCL, limits.xBarLower);
  NUMBER(XBarMean, limits.xBarCentre);
  NUMBER(RBarUCL, limits.rangeUpper);
  NUMBER(RBarLCL, limits.rangeLower);
  NUMBER(RBarMean, limits.rangeCentre);
  NUMBER(CPKValue, cpkValue);
  NUMBER(HistogramBinQty, histogramBinQty);
  NUMBER(HistoHiScaleValue, histoHiScaleValue);
  NUMBER(HistoLoScaleValue, histoLoScaleValue);
  NUMBER(IsInControl, isInControl);
  NUMBER(MaxValue, maxValue);
  NUMBER(MinValue, minValue);
  NUMBER(NumberOfPlotPoints, numberOfPlotPoints);
  NUMBER(ProcessState, processState);
  NUMBER(RuleViolation, ruleViolation);
  NUMBER(StdDevValue, stdDevValue);
  NUMBER(SampleQty, sampleQty);
  TEXT(HistogramBinValuesOutputString, histogramBinValuesOutputString);
  TEXT(HistogramLabelsOutputString, histogramLabelsOutputString);
  TEXT(XBarOutputString, xBarOutputString);
  TEXT(RBarOutputString, rBarOutputString);
#undef NUMBER
#undef TEXT
  results.violatingPoints = {{{1}, {2, 3}, {4}, {5}}};
  QCGlobalFunctions::StoreResults(results, data);
  ExpectFigures(data, expected);
  EXPECT_EQ(data.ViolatingPoints(), results.violatingPoints);
}

TEST(CreateStatistics, FollowsTheDecimalsOfSamplesAndLimitsWhereItMay) {
  const auto shown = [](bool follows, const char* values, double upper, double nominal) {
    CData data;
    data.SetFollowsItsDecimals(follows);
    data.SetDelimitedInputString(QString::fromLatin1(values));
    data.SetUpperSpecLimit(upper);
    data.SetNominalSpecLimit(nominal);
    EXPECT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
    EXPECT_EQ(data.UpperSpecLimit(), follows ? upper : 5);
    return std::pair(int{data.PrecisionValue()}, data.OwnDecimals());
  };
  EXPECT_EQ(shown(true, "1,2.1234,3.50000,", 5, 4), std::pair(4, 4));
  EXPECT_EQ(shown(true, "1,2.12345,3", 5, 4), std::pair(7, 5));
  EXPECT_EQ(shown(true, "1,2,3", 5.00001, 4), std::pair(7, 5));
  EXPECT_EQ(shown(true, "1,2,3", 5, 4.000001), std::pair(8, 6));
  EXPECT_EQ(shown(true, "1e-10,2,3", 5, 4), std::pair(8, 10));
  EXPECT_EQ(shown(false, "1,2.12345,3", 5.00001, 4), std::pair(4, 5));
}

TEST(CreateStatistics, ARefusalLeavesAllFiguresAsTheyWere) {
  CData data = DistinctData();
  data.SetFollowsItsDecimals(true);
  data.SetPrecisionValue(3);
  data.SetOwnDecimals(2);
  data.SetSubGroupSize(21);
  Figures expected = FiguresOf(data);
  EXPECT_FALSE(QCGlobalFunctions::CalculateStatistics(data));
  expected[u"ErrorType"_s] = 1;
  expected[u"ErrorMessage"_s] = data.ErrorMessage();
  ExpectFigures(data, expected);
  EXPECT_EQ(data.OwnDecimals(), 2);
}

// Recalculating would change nothing where all points give the same limits.
TEST(FewPointsOfLimits, TellsOnlyOfLimitsThatMorePointsWouldChange) {
  CData data;
  data.SetDelimitedInputString(u"9,11,10,12,"_s.repeated(6));
  data.SetSubGroupSize(2);
  data.SetLimitsBase({1, 4});
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
  EXPECT_EQ(QCGlobalFunctions::FewPointsOfLimits(data), std::nullopt);
  data.SetDelimitedInputString(data.DelimitedInputString() + u"20,24,"_s);
  ASSERT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
  EXPECT_EQ(QCGlobalFunctions::FewPointsOfLimits(data), 4);
}

TEST(CreateStatistics, ClearsTheSixControlLimitsAndNothingElse) {
  CData data = DistinctData();
  Figures expected = FiguresOf(data);
  for (const QString& name :
       {u"XBarUCL"_s, u"XBarLCL"_s, u"XBarMean"_s, u"RBarUCL"_s, u"RBarLCL"_s, u"RBarMean"_s})
    expected[name] = 0.0;
  QCGlobalFunctions::ClearControlLimits(data);
  ExpectFigures(data, expected);
}

}  // namespace

// Every figure keeps its name on its way to the engine and back.
#include "data/Statistics.h"

#include "tests/support/Figures.h"

namespace {

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

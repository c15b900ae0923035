// Every figure keeps its name on its way to the engine and back.
#include "data/Statistics.h"

#include "tests/support/Cases.h"
#include "tests/support/Figures.h"

namespace {

TEST(CreateStatistics, FollowsTheDecimalsOfSamplesAndLimitsWhereItMay) {
  for (const auto& one : Cases(u"decimals.json"_s, u"follows, samples, upper, nominal, shown, its own"_s)) {
    CData data;
    data.SetFollowsItsDecimals(one[0].toBool());
    data.SetDelimitedInputString(one[1].toString());
    data.SetUpperSpecLimit(one[2].toDouble());
    data.SetNominalSpecLimit(one[3].toDouble());
    EXPECT_TRUE(QCGlobalFunctions::CalculateStatistics(data));
    EXPECT_EQ(data.UpperSpecLimit(), one[0].toBool() ? one[2].toDouble() : 5);
    EXPECT_EQ(data.PrecisionValue(), one[4].toInt()) << one[1].toString().toStdString();
    EXPECT_EQ(data.OwnDecimals(), one[5].toInt()) << one[1].toString().toStdString();
  }
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

// The rounding rule of the whole system, and the smallest and largest of a plot's values.
#include "data/MathFunctions.h"

#include <limits>
#include <stdexcept>
#include <vector>

#include "tests/support/BothLocales.h"

using namespace MathFunctions;

namespace {

using MathFunctionsTest = BothLocales;
INSTANTIATE_FOR_BOTH_LOCALES(MathFunctionsTest);

TEST_P(MathFunctionsTest, RoundsHalvesAwayFromZeroToOneToEightPlaces) {
  EXPECT_EQ(FormatDouble(1.005, 2), 1.01);
  EXPECT_EQ(FormatDouble(9.99999, 4), 10);
  EXPECT_EQ(FormatDouble(0.000000005, 8), 0.00000001);
  for (const qint16 places : std::initializer_list<qint16>{-1, 0, 9, 32767})
    EXPECT_EQ(FormatDouble(7.1, places), 0) << places;
  EXPECT_EQ(FormatDouble(std::numeric_limits<double>::infinity(), 2), 0);
  EXPECT_EQ(FormatDouble(std::numeric_limits<double>::quiet_NaN(), 2), 0);
}

TEST(MathFunctions, FindsAmongTheFirstValuesAndReadsNoFurther) {
  std::vector<double> values = {3, 9, 9, 1};
  EXPECT_EQ(FindDoubleMax(values, 4), 9);
  EXPECT_EQ(FindDoubleMax(values, 1), 3);
  EXPECT_EQ(FindDoubleMin(values, 3), 3);
  EXPECT_EQ(FindDoubleMin(values, 0), 3);
  EXPECT_THROW(FindDoubleMin({}, 0), std::out_of_range);
  EXPECT_THROW(FindDoubleMin(values, 5), std::out_of_range);
  EXPECT_THROW(FindDoubleMax(values, 5), std::out_of_range);
  values.resize(40000);
  values[32767] = -1;
  EXPECT_EQ(FindDoubleMin(values, 32768), -1);
  EXPECT_ANY_THROW(FindDoubleMin(values, 32769)) << "the counter is a 16-bit one";
}

}  // namespace

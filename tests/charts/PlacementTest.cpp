// Labels that move apart, and curves that lose no extreme.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "platform/chart/Placement.h"

namespace {

TEST(Spread, NeverOverlapsAndStaysInside) {
  std::mt19937 generator(3);
  std::uniform_real_distribution<double> place(-20, 120), size(1, 12);
  for (int run = 0; run < 2000; ++run) {
    std::vector<double> wanted, sizes;
    for (int i = 0; i < run % 8; ++i) {
      wanted.push_back(run % 3 == 0 ? 50 : place(generator));
      sizes.push_back(size(generator));
    }
    const std::vector<double> centres = Placement::Spread(wanted, sizes, 0, 100);
    for (size_t i = 0; i < wanted.size(); ++i) {
      ASSERT_GE(centres[i] - sizes[i] / 2, -1e-9);
      ASSERT_LE(centres[i] + sizes[i] / 2, 100 + 1e-9);
      for (size_t j = 0; j < i; ++j) {
        ASSERT_GE(std::abs(centres[i] - centres[j]), (sizes[i] + sizes[j]) / 2 - 1e-9);
        ASSERT_TRUE(wanted[i] >= wanted[j] || centres[i] < centres[j]);
      }
    }
  }
}

TEST(Spread, MovesOnlyWhatMustMoveAndBothWays) {
  const std::vector<double> wanted = {20, 50, 51, 80}, sizes(4, 10);
  EXPECT_EQ(Placement::Spread(wanted, sizes, 0, 100), (std::vector<double>{20, 45.5, 55.5, 80}));
}

TEST(KeepExtremes, KeepsEndsAndTheExtremesOfEveryColumn) {
  std::mt19937 generator(5);
  std::normal_distribution<double> noise;
  std::vector<double> values(32767);
  for (double& value : values) value = noise(generator);
  const double none = std::numeric_limits<double>::quiet_NaN();
  values[0] = none;
  values[1234] = 99;
  values[1235] = -99;
  const int columns = 500;
  const std::vector<int> kept = Placement::KeepExtremes(values, columns);
  EXPECT_LE(kept.size(), 4u * columns);
  EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end(), std::less_equal<>())) << "ascending, none twice";
  EXPECT_EQ(kept.front(), 1) << "a gap is not kept";
  EXPECT_EQ(kept.back(), 32766);
  EXPECT_TRUE(std::binary_search(kept.begin(), kept.end(), 1234));
  EXPECT_TRUE(std::binary_search(kept.begin(), kept.end(), 1235));

  const std::vector<double> few = {1, 2, none, 4};
  EXPECT_EQ(Placement::KeepExtremes(few, 200), (std::vector<int>{0, 1, 3}))
      << "with room every value is kept";
}

}  // namespace

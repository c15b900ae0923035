// The detection rules on short series with the exact points that violate them. Centre 0, one sigma is 1.
#include "engine/Rules.h"

#include <gtest/gtest.h>

TEST(Rules, MarkExactlyThePointsThatCompleteAPattern) {
  struct Case {
    const char* what;
    int rule;
    std::vector<std::int64_t> tenths;
    std::vector<std::int16_t> points;
  };
  const Case cases[] = {
      {"strictly beyond a limit", 1, {30, -30, 31, -31, 0}, {3, 4}},
      {"the last two of three", 2, {0, 21, 21}, {3}},
      {"first and third of three", 2, {0, 21, 0, 21}, {4}},
      {"too far apart", 2, {0, 21, 0, 0, 21}, {}},
      {"opposite sides", 2, {0, 21, -21, 0}, {}},
      {"two high, one low: the low one completes nothing", 2, {21, 21, -21}, {2}},
      {"the first three points, those in the zone first", 2, {21, 21, 0}, {2}},
      {"the same below", 2, {-21, -21, -21}, {2, 3}},
      {"one point too few for two of three", 2, {21, 21}, {}},
      {"on the two-sigma line", 2, {0, 20, 20, 20}, {}},
      {"the inner point is not marked", 2, {0, 21, 0, 21, 0}, {4}},
      {"the first five points, those in the zone first", 3, {11, 11, 11, 11, 0}, {4}},
      {"one point too few for four of five", 3, {11, 11, 11, 11}, {}},
      {"the last four of five", 3, {0, 11, 11, 11, 11}, {5}},
      {"four of five with a gap", 3, {11, 11, -11, 11, 11}, {5}},
      {"three of five on each side", 3, {-11, 11, -11, 11, 11, -11}, {}},
      {"below", 3, {-11, -11, -11, -11, -11, -11}, {4, 5, 6}},
      {"on the one-sigma line", 3, {10, 10, 10, 10, 10}, {}},
      {"a run of seven", 4, {1, 1, 1, 1, 1, 1, 1}, {}},
      {"a run of nine", 4, {1, 1, 1, 1, 1, 1, 1, 1, 1, -1}, {8, 9}},
      {"a tie ends a run", 4, {1, 1, 1, 1, 0, 1, 1, 1, 1, 1}, {}},
      {"a run below", 4, {5, -1, -1, -1, -1, -1, -1, -1, -1}, {9}},
  };
  for (const Case& one : cases) {
    engine::ViolatingPoints violating;
    engine::FindViolations<std::int64_t>(one.tenths, {30, 0, -30}, 0, violating);
    EXPECT_EQ(violating[static_cast<std::size_t>(one.rule - 1)], one.points) << one.what;
  }
}

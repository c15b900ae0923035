// The detection rules on short series with the exact points that violate them. Centre 0, one sigma is 1.
#include "engine/Rules.h"

#include <gtest/gtest.h>

#include "tests/engine/EngineRun.h"

namespace {

using Points = std::vector<std::int16_t>;

Points Violating(int rule, const std::vector<std::int64_t>& tenths, std::size_t first = 0) {
  engine::ViolatingPoints violating;
  engine::FindViolations<std::int64_t>(tenths, {30, 0, -30}, first, violating);
  return violating[static_cast<std::size_t>(rule - 1)];
}

TEST(Rules, OneIsStrictlyBeyondALimit) { EXPECT_EQ(Violating(1, {30, -30, 31, -31, 0}), (Points{3, 4})); }

TEST(Rules, TwoNeedsTwoOfThreeOnTheSameSide) {
  EXPECT_EQ(Violating(2, {0, 21, 21}), (Points{3}));
  EXPECT_EQ(Violating(2, {0, 21, 0, 21}), (Points{4}));   // first and third of a window
  EXPECT_EQ(Violating(2, {0, 21, 0, 0, 21}), Points{});   // too far apart
  EXPECT_EQ(Violating(2, {0, 21, -21, 0}), Points{});     // opposite sides
  EXPECT_EQ(Violating(2, {21, 21, -21}), Points{});       // two high, one low: the low one completes nothing
  EXPECT_EQ(Violating(2, {21, 21}), Points{});            // one point too few
  EXPECT_EQ(Violating(2, {0, 20, 20, 20}), Points{});     // on the line is not beyond it
  EXPECT_EQ(Violating(2, {21, 21, 0, 21}), (Points{4}));  // the inner point is not marked
}

TEST(Rules, ThreeNeedsFourOfFiveOnTheSameSide) {
  EXPECT_EQ(Violating(3, {11, 11, 11, 11, 0}),
            Points{});  // complete only with a fifth point, which lies inside
  EXPECT_EQ(Violating(3, {0, 11, 11, 11, 11}), (Points{5}));
  EXPECT_EQ(Violating(3, {11, 11, -11, 11, 11}), (Points{5}));
  EXPECT_EQ(Violating(3, {-11, 11, -11, 11, 11, -11}), Points{});
  EXPECT_EQ(Violating(3, {-11, -11, -11, -11, -11, -11}), (Points{5, 6}));
  EXPECT_EQ(Violating(3, {10, 10, 10, 10, 10}), Points{});
}

TEST(Rules, FourCountsARunThatATieEnds) {
  EXPECT_EQ(Violating(4, {1, 1, 1, 1, 1, 1, 1}), Points{});
  EXPECT_EQ(Violating(4, {1, 1, 1, 1, 1, 1, 1, 1, 1, -1}), (Points{8, 9}));
  EXPECT_EQ(Violating(4, {1, 1, 1, 1, 0, 1, 1, 1, 1, 1}), Points{});
  EXPECT_EQ(Violating(4, {5, -1, -1, -1, -1, -1, -1, -1, -1}), (Points{9}));
}

TEST(Rules, ShortTermSeesTheLastEightPointsOnly) {
  const std::string text = "9,0,1,-1,1,-1,1,-1,1,-1";
  engine::Inputs inputs{.xBarUCL = 3, .xBarLCL = -3, .xBarMean = 1e-9, .precisionValue = 2};
  EXPECT_EQ(RunEngine(text, inputs).ruleViolation, 1);
  inputs.detectionPeriod = 0;
  EXPECT_EQ(RunEngine(text, inputs).ruleViolation, 0);
  // A pattern that needs a point before the last eight is not one.
  EXPECT_EQ(Violating(2, {21, 0, 21, 0, 0}, 1), Points{});
}

TEST(Rules, ZonesFollowUnsymmetricLimits) {
  engine::ViolatingPoints violating;
  const std::vector<std::int64_t> points{0, 21, 21, -21, -21, -21};
  engine::FindViolations<std::int64_t>(points, {30, 0, -90}, 0, violating);
  EXPECT_EQ(violating[1], (Points{3}));
}

TEST(Rules, TheLowestActiveRuleIsReported) {
  // Two of three beyond two sigma (rule 2), then a run (rule 4); no single point outside.
  const std::string text = "0,-0.1,2.1,2.5,0.5,0.5,0.5,0.5,0.5,0.5";
  engine::Inputs inputs{.xBarUCL = 3, .xBarLCL = -3, .xBarMean = 1e-9, .precisionValue = 2};
  inputs.sensitivityValue = 0;
  EXPECT_EQ(RunEngine(text, inputs).ruleViolation, 4);
  inputs.sensitivityValue = 1;
  EXPECT_EQ(RunEngine(text, inputs).ruleViolation, 2);
  const std::string rule3 = "1.1,-0.1,1.1,1.1,1.1";
  inputs.sensitivityValue = 1;
  EXPECT_EQ(RunEngine(rule3, inputs).ruleViolation, 0);
  EXPECT_EQ(RunEngine(rule3, inputs).violatingPoints[2], (Points{5}));
  inputs.sensitivityValue = 2;
  EXPECT_EQ(RunEngine(rule3, inputs).ruleViolation, 3);
}

}  // namespace

// The detection rules on short series with the exact points that violate them. Centre 0, one sigma is 1.
#include "engine/Rules.h"

#include <gtest/gtest.h>

#include "tests/support/Cases.h"

TEST(Rules, MarkExactlyThePointsThatCompleteAPattern) {
  // What it is, the rule, the points in tenths, the points that violate it.
  for (const auto& one : Cases(QStringLiteral("rules.json"), QStringLiteral("patterns"))) {
    engine::ViolatingPoints violating;
    engine::FindViolations<std::int64_t>(Numbers<std::int64_t>(one[2]), {30, 0, -30}, 0, violating);
    EXPECT_EQ(violating[static_cast<std::size_t>(one[1].toInt() - 1)], Numbers<std::int16_t>(one[3]))
        << one[0].toString().toStdString();
  }
}

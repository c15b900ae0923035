// The checks behind the command verify: the engine passes them, and a difference is seen.
#include "verify/VerificationReport.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;
using Verification::Check;
using Verification::Quantity;

namespace {

// The script that plants faults in the engine asks this first.
TEST(Verification, TheEnginePasses) {
  for (const auto& checks :
       {Verification::CertifiedSets(), Verification::Constants(), Verification::ReferenceCases()})
    EXPECT_TRUE(Verification::AllPassed(checks));
  for (const Check& check : Verification::ReferenceCases()) EXPECT_EQ(check.quantities.size(), 28U);
}

TEST(Verification, ADifferenceIsSeen) {
  using Verification::AgreedDigits;
  EXPECT_EQ(AgreedDigits(277.332168044316, 277.33216804431615), 15);  // the same in fifteen digits
  EXPECT_LT(AgreedDigits(0.1, 0.100000000000001), 14.5);
  EXPECT_NEAR(AgreedDigits(2, 2.0002), 4, 1e-9);
  EXPECT_NEAR(AgreedDigits(0, 1e-6), 6, 1e-9);
  EXPECT_EQ(AgreedDigits(0, 0), 15);
  EXPECT_EQ(AgreedDigits(1, 100), 0);
  EXPECT_EQ(AgreedDigits(1, std::nan("")), 0);
  // One bad figure spoils its check, and a check without figures is none that passed.
  const Quantity good = Quantity::OfNumbers(u"mean"_s, u"4.5"_s, 4.5);
  const Quantity bad = Quantity::OfTexts(u"rules"_s, u"1: 3"_s, u"1: 4"_s);
  EXPECT_TRUE((Check{{}, {}, {}, 15, {good}}.Passed()));
  EXPECT_FALSE((Check{{}, {}, {}, 15, {good, bad}}.Passed()));
  EXPECT_FALSE((Check{{}, {}, {}, 15, {}}.Passed()));
  EXPECT_FALSE(Verification::AllPassed({}));
  const VerificationReport report{{{{}, {}, {}, 15, {good, bad}}}, {}, {}};
  EXPECT_TRUE(report.Text().contains(u"rules") && !report.Text().contains(u"mean"));
}

}  // namespace

// The words for rules and sensitivities, and that each sensitivity's words name the rules it applies.
#include "stats/DetectionRules.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using GlobalFunctions::RuleViolationText;

namespace {

TEST(DetectionRules, EveryViolationHasItsWords) {
  EXPECT_EQ(RuleViolationText(0), u"No rule violations. The process is in control."_s);
  EXPECT_TRUE(RuleViolationText(1).startsWith(u"DETECTION RULE ONE: A lack of control"_s));
  EXPECT_TRUE(RuleViolationText(2).startsWith(u"DETECTION RULE TWO: A lack of control"_s));
  EXPECT_TRUE(RuleViolationText(3).startsWith(u"DETECTION RULE THREE: A lack of control"_s));
  EXPECT_TRUE(RuleViolationText(4).startsWith(u"DETECTION RULE FOUR: A lack of control"_s));
  for (const qint16 other : std::initializer_list<qint16>{5, -1, 32767}) {
    EXPECT_EQ(RuleViolationText(other), u"DETECTION RULE UNKNOWN. Invalid rule violation."_s);
  }
}

TEST(DetectionRules, ASensitivityAppliesTheRulesItNames) {
  for (qint32 sensitivity = 0; sensitivity <= 2; ++sensitivity) {
    std::vector<int> named;
    auto digits = QRegularExpression(u"[1-4]"_s).globalMatch(DetectionRules::SensitivityText(sensitivity));
    while (digits.hasNext()) named.push_back(digits.next().captured().toInt());
    EXPECT_FALSE(named.empty());
    EXPECT_EQ(DetectionRules::ActiveRules(sensitivity), named) << sensitivity;
  }
  EXPECT_EQ(DetectionRules::SensitivityText(3), QString());
  EXPECT_EQ(DetectionRules::SensitivityText(-1), QString());
}

}  // namespace

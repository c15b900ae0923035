// The words for violations and sensitivities, and the rules that a sensitivity names.
#include "texts/DetectionRules.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

TEST(DetectionRules, EachHasItsWordsAndAppliesTheRulesItNames) {
  for (qint32 sensitivity = 0; sensitivity <= 2; ++sensitivity) {
    std::vector<int> named;
    auto digits = QRegularExpression(u"[1-4]"_s).globalMatch(DetectionRules::SensitivityText(sensitivity));
    while (digits.hasNext()) named.push_back(digits.next().captured().toInt());
    EXPECT_EQ(DetectionRules::ActiveRules(sensitivity), named) << sensitivity;
  }
  EXPECT_EQ(DetectionRules::SensitivityText(3), QString());
  EXPECT_TRUE(GlobalFunctions::RuleViolationText(2).startsWith(u"DETECTION RULE TWO: "_s));
  EXPECT_TRUE(GlobalFunctions::RuleViolationText(-1).startsWith(u"DETECTION RULE UNKNOWN. "_s));
}

}  // namespace

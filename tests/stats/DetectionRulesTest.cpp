// The words for rules and sensitivities, and that each sensitivity's words name the rules it applies.
#include "stats/DetectionRules.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <map>

using namespace Qt::StringLiterals;
using GlobalFunctions::RuleViolationText;

namespace {

TEST(DetectionRules, EveryViolationHasItsWords) {
  const QString unknown = u"DETECTION RULE UNKNOWN. Invalid rule violation."_s;
  for (const auto& [rule, start] : std::map<qint16, QString>{{-1, unknown},
                                                             {0, u"No rule violations. "_s},
                                                             {1, u"DETECTION RULE ONE: "_s},
                                                             {2, u"DETECTION RULE TWO: "_s},
                                                             {3, u"DETECTION RULE THREE: "_s},
                                                             {4, u"DETECTION RULE FOUR: "_s},
                                                             {5, unknown}})
    EXPECT_TRUE(RuleViolationText(rule).startsWith(start)) << rule;
}

TEST(DetectionRules, ASensitivityAppliesTheRulesItNames) {
  for (qint32 sensitivity = 0; sensitivity <= 2; ++sensitivity) {
    std::vector<int> named;
    auto digits = QRegularExpression(u"[1-4]"_s).globalMatch(DetectionRules::SensitivityText(sensitivity));
    while (digits.hasNext()) named.push_back(digits.next().captured().toInt());
    EXPECT_EQ(DetectionRules::ActiveRules(sensitivity), named) << sensitivity;
  }
  EXPECT_EQ(DetectionRules::SensitivityText(3), QString());
}

}  // namespace

#include "texts/DetectionRules.h"

#include "engine/Rules.h"
#include "texts/Texts.h"

QString GlobalFunctions::RuleViolationText(qint16 ruleViolation) {
  switch (ruleViolation) {
    case 0:
      return LoadResText(u"No violations;262");
    case 1:
      return LoadResText(u"DETECTION RULE ONE;263");
    case 2:
      return LoadResText(u"DETECTION RULE TWO;264");
    case 3:
      return LoadResText(u"DETECTION RULE THREE;265");
    case 4:
      return LoadResText(u"DETECTION RULE FOUR;266");
    default:
      return LoadResText(u"DETECTION RULE UNKNOWN;267");
  }
}

QString DetectionRules::SensitivityText(qint32 sensitivity) {
  switch (sensitivity) {
    case 0:
      return LoadResText(u"Low (Detection Rules 1 and 4);157");
    case 1:
      return LoadResText(u"Medium (Detection Rules 1,2, and 4);158");
    case 2:
      return LoadResText(u"High (Detection Rules 1,2,3, and 4);159");
    default:
      return {};
  }
}

std::vector<int> DetectionRules::ActiveRules(qint32 sensitivity) {
  std::vector<int> rules;
  for (int rule = 1; rule <= 4; ++rule) {
    if (engine::IsRuleActive(rule, static_cast<engine::Sensitivity>(sensitivity))) rules.push_back(rule);
  }
  return rules;
}

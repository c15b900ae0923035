#include "texts/DetectionRules.h"

#include "engine/Rules.h"
#include "texts/Texts.h"
#include "texts/Words.h"

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

QString DetectionRules::ShortText(int rule) {
  switch (rule) {
    case 1:
      return Words::Rule::one();
    case 2:
      return Words::Rule::two();
    case 3:
      return Words::Rule::three();
    case 4:
      return Words::Rule::four();
    default:
      return {};
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

QString ProcessState::Name(int state) {
  switch (state) {
    case 1:
      return Words::State::chaos();
    case 2:
      return Words::State::brinkOfChaos();
    case 3:
      return Words::State::threshold();
    case 4:
      return Words::State::ideal();
    default:
      return Words::State::notEvaluated();
  }
}

QString ProcessState::Meaning(int state) {
  switch (state) {
    case 1:
      return Words::State::chaosMeans();
    case 2:
      return Words::State::brinkOfChaosMeans();
    case 3:
      return Words::State::thresholdMeans();
    case 4:
      return Words::State::idealMeans();
    default:
      return Words::State::notEvaluatedMeans();
  }
}

std::vector<int> DetectionRules::ActiveRules(qint32 sensitivity) {
  std::vector<int> rules;
  for (int rule = 1; rule <= 4; ++rule) {
    if (engine::IsRuleActive(rule, static_cast<engine::Sensitivity>(sensitivity))) rules.push_back(rule);
  }
  return rules;
}

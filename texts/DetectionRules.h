// The words for a detection rule, its sensitivity and its verdict, and for the state of a process.
#pragma once

#include <QString>
#include <vector>

namespace GlobalFunctions {

// The text for a RuleViolation: 0 no violations, 1 to 4 the rule's own words, anything else "unknown".
QString RuleViolationText(qint16 ruleViolation);

}  // namespace GlobalFunctions

namespace DetectionRules {

// A rule's number and its few words, as they stand below a chart; empty for any but 1 to 4.
QString ShortText(int rule);

// The texts of the sensitivities 0 low, 1 medium, 2 high; empty for any other.
QString SensitivityText(qint32 sensitivity);

// The rules applied at a sensitivity, ascending: low 1 and 4, medium 1, 2 and 4, high all four.
std::vector<int> ActiveRules(qint32 sensitivity);

}  // namespace DetectionRules

// The states are 0 "not evaluated", 1 "chaos", 2 "brink of chaos", 3 "threshold" and 4 "ideal"; any other
// counts as 0.
namespace ProcessState {

QString Name(int state);
QString Meaning(int state);

}  // namespace ProcessState

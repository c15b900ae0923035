// The four detection rules on an X-bar chart (Western Electric, Statistical Quality Control Handbook, 1956).
//
// Sigma unit above the centre line: (UCL - mean) / 3, below it: (mean - LCL) / 3; stored limits need not be
// symmetric. "Beyond" is strict: a point on a line is not beyond it, and a point on the centre line ends a
// run.
//   1  a point beyond a limit
//   2  two of three successive points beyond 2 sigma on one side
//   3  four of five successive points beyond 1 sigma on one side
//   4  eight successive points on one side of the centre line
// The violating points of a rule lie in its zone themselves and complete the pattern; a pattern of rules 2, 3
// and 4 needs three, five and eight points to exist.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace engine {

// Which rules make a verdict: low 1 and 4, medium 1, 2 and 4, high all.
enum class Sensitivity { Low = 0, Medium = 1, High = 2 };

// Which points the rules look at: short-term the last eight (the longest rule's span), long-term all.
enum class DetectionPeriod { Short = 0, Long = 1 };

// For rule r, the 1-based plot points that violate it, ascending, at index r - 1.
using ViolatingPoints = std::array<std::vector<std::int16_t>, 4>;

// Points, limits and centre line in one unit: whole numbers of the last shown decimal (std::int64_t), or
// plain doubles where those do not fit.
template <class Number>
struct ChartLines {
  Number upper;
  Number centre;
  Number lower;
};

// Fills `violating` from the points at positions firstPoint (0-based) on; earlier points are not looked at.
template <class Number>
void FindViolations(std::span<const Number> points, const ChartLines<Number>& lines, std::size_t firstPoint,
                    ViolatingPoints& violating);

// Whether a rule (1 to 4) makes a verdict.
bool IsRuleActive(int rule, Sensitivity sensitivity);

// The lowest active rule with violating points, or 0.
int LowestViolatedRule(const ViolatingPoints& violating, Sensitivity sensitivity);

}  // namespace engine

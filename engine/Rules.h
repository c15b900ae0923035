// The four detection rules on an X-bar chart (Western Electric, Statistical Quality Control Handbook, 1956).
//
// Sigma unit above the centre line: (UCL - mean) / 3, below it: (mean - LCL) / 3; stored limits need not be
// symmetric. "Beyond" is strict: a point on a line is not beyond it, and a point on the centre line ends a
// run.
//   1  a point beyond a limit
//   2  two of three successive points beyond 2 sigma on one side
//   3  four of five successive points beyond 1 sigma on one side
//   4  eight successive points on one side of the centre line
// The violating points of a rule lie in its zone themselves and complete the pattern: for rule 2 with another
// point in the zone among the two before, for rule 3 with three more among the four before, for rule 4 as the
// eighth or a later point of a run. The first three and five points are patterns too, where their points in
// the zone come first; with fewer points there is none.
//
// Of the range chart, points beyond a limit are found. They make no verdict.
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

// Points, limits and centre line in one unit: whole numbers of the last shown decimal, in as many bits as
// they need.
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

// Fills `outside` with the 1-based points beyond a limit, from the one at position firstPoint (0-based) on.
template <class Number>
void FindOutside(std::span<const Number> points, const ChartLines<Number>& lines, std::size_t firstPoint,
                 std::vector<std::int16_t>& outside);

// Whether a rule (1 to 4) makes a verdict.
bool IsRuleActive(int rule, Sensitivity sensitivity);

// The lowest active rule with violating points, or 0.
int LowestViolatedRule(const ViolatingPoints& violating, Sensitivity sensitivity);

}  // namespace engine

#include "engine/Rules.h"

#include <cstdlib>
#include <initializer_list>

namespace engine {

namespace {

// How far beyond the centre line a point lies, in whole sigma units: -2, -1 (below), 0, 1, 2 (above).
template <class Number>
int Zone(Number point, const ChartLines<Number>& lines) {
  const bool above = point > lines.centre;
  const Number distance = above ? point - lines.centre : lines.centre - point;
  const Number threeSigma = above ? lines.upper - lines.centre : lines.centre - lines.lower;
  if (distance == 0) return 0;
  if (3 * distance > 2 * threeSigma) return above ? 2 : -2;
  if (3 * distance > threeSigma) return above ? 1 : -1;
  return 0;
}

// The zones of the last five points, the newest first.
class RecentZones {
 public:
  void Add(int zone) {
    for (int i = 4; i > 0; --i) zones_[i] = zones_[i - 1];
    zones_[0] = zone;
  }
  // Whether the newest point lies in `zone` or beyond it, as do at least `needed` of the newest `span` points
  // on its side.
  bool Complete(int zone, int needed, int span) const {
    const int newest = zones_[0];
    if (std::abs(newest) < zone) return false;
    int count = 0;
    for (int i = 0; i < span; ++i) count += newest > 0 ? zones_[i] >= zone : zones_[i] <= -zone;
    return count >= needed;
  }

 private:
  int zones_[5] = {};
};

}  // namespace

template <class Number>
void FindViolations(std::span<const Number> points, const ChartLines<Number>& lines, std::size_t firstPoint,
                    ViolatingPoints& violating) {
  for (auto& list : violating) list.clear();
  RecentZones recent;
  int run = 0;  // successive points on one side; negative below the centre line
  for (std::size_t i = firstPoint; i < points.size(); ++i) {
    const Number point = points[i];
    const std::size_t seen = i - firstPoint + 1;
    recent.Add(Zone(point, lines));
    if (point > lines.centre) {
      run = run > 0 ? run + 1 : 1;
    } else if (point < lines.centre) {
      run = run < 0 ? run - 1 : -1;
    } else {
      run = 0;
    }
    const auto position = static_cast<std::int16_t>(i + 1);
    if (point > lines.upper || point < lines.lower) violating[0].push_back(position);
    if (seen >= 3 && recent.Complete(2, 2, 3)) violating[1].push_back(position);
    if (seen >= 5 && recent.Complete(1, 4, 5)) violating[2].push_back(position);
    if (std::abs(run) >= 8) violating[3].push_back(position);
  }
}

template void FindViolations(std::span<const std::int64_t>, const ChartLines<std::int64_t>&, std::size_t,
                             ViolatingPoints&);
template void FindViolations(std::span<const double>, const ChartLines<double>&, std::size_t,
                             ViolatingPoints&);

bool IsRuleActive(int rule, int sensitivity) {
  switch (rule) {
    case 2:
      return sensitivity >= 1;
    case 3:
      return sensitivity >= 2;
    default:
      return true;
  }
}

int LowestViolatedRule(const ViolatingPoints& violating, int sensitivity) {
  for (const int rule : {1, 2, 3, 4}) {
    if (IsRuleActive(rule, sensitivity) && !violating[static_cast<std::size_t>(rule - 1)].empty())
      return rule;
  }
  return 0;
}

}  // namespace engine

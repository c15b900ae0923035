#include "engine/Rules.h"

#include <bit>
#include <initializer_list>

#include "engine/Decimal.h"
#include "engine/LongTicks.h"

namespace engine {

namespace {

constexpr std::array<int, 32> CountOnes() {
  std::array<int, 32> ones{};
  for (unsigned i = 0; i < ones.size(); ++i) ones[i] = std::popcount(i);
  return ones;
}

// How many bits of a number of up to five bits are set.
constexpr auto onesOf = CountOnes();

// Which of the last points lie beyond a line, a bit for each, the newest lowest.
class History {
 public:
  void Add(bool beyond) { bits_ = bits_ << 1 | (beyond ? 1U : 0U); }
  // Whether the newest point does, with at least `needed` of the newest `span` points.
  bool Completes(int needed, int span) const {
    const bool enough = onesOf[bits_ & ((1U << span) - 1)] >= needed;
    return (bits_ & (enough ? 1U : 0U)) != 0;
  }

 private:
  unsigned bits_ = 0;
};

// The zones of the last points on one side of the centre line.
template <class Number>
class Side {
 public:
  explicit Side(const Number& threeSigma) : threeSigma_(threeSigma) {}
  // distance: beyond the centre line on this side; 0 or less for a point that lies elsewhere.
  void Add(const Number& distance) {
    const bool here = distance > 0;
    beyondOne_.Add(here & (3 * distance > threeSigma_));
    beyondTwo_.Add(here & (3 * distance > 2 * threeSigma_));
    run_ = here ? run_ + 1 : 0;
  }
  bool BreaksRuleTwo() const { return beyondTwo_.Completes(2, 3); }
  bool BreaksRuleThree() const { return beyondOne_.Completes(4, 5); }
  bool BreaksRuleFour() const { return run_ >= 8; }

 private:
  Number threeSigma_;
  History beyondOne_;
  History beyondTwo_;
  int run_ = 0;
};

template <class Number>
bool IsOutside(const Number& point, const ChartLines<Number>& lines) {
  return point > lines.upper || point < lines.lower;
}

}  // namespace

template <class Number>
void FindViolations(std::span<const Number> points, const ChartLines<Number>& lines, std::size_t firstPoint,
                    ViolatingPoints& violating) {
  for (auto& list : violating) list.clear();
  const std::size_t count = points.size() - firstPoint;
  const bool canBreakRuleTwo = count >= 3;
  const bool canBreakRuleThree = count >= 5;
  Side<Number> above(lines.upper - lines.centre);
  Side<Number> below(lines.centre - lines.lower);
  for (std::size_t i = firstPoint; i < points.size(); ++i) {
    const Number& point = points[i];
    above.Add(point - lines.centre);
    below.Add(lines.centre - point);
    const auto position = static_cast<std::int16_t>(i + 1);
    if (IsOutside(point, lines)) violating[0].push_back(position);
    if (canBreakRuleTwo && (above.BreaksRuleTwo() || below.BreaksRuleTwo())) violating[1].push_back(position);
    if (canBreakRuleThree && (above.BreaksRuleThree() || below.BreaksRuleThree()))
      violating[2].push_back(position);
    if (above.BreaksRuleFour() || below.BreaksRuleFour()) violating[3].push_back(position);
  }
}

template <class Number>
void FindOutside(std::span<const Number> points, const ChartLines<Number>& lines, std::size_t firstPoint,
                 std::vector<std::int16_t>& outside) {
  outside.clear();
  for (std::size_t i = firstPoint; i < points.size(); ++i) {
    if (IsOutside(points[i], lines)) outside.push_back(static_cast<std::int16_t>(i + 1));
  }
}

#define INSTANTIATE(Number)                                                                     \
  template void FindViolations(std::span<const Number>, const ChartLines<Number>&, std::size_t, \
                               ViolatingPoints&);                                               \
  template void FindOutside(std::span<const Number>, const ChartLines<Number>&, std::size_t,    \
                            std::vector<std::int16_t>&)
INSTANTIATE(std::int64_t);
INSTANTIATE(Int128);
INSTANTIATE(LongTicks);
#undef INSTANTIATE

bool IsRuleActive(int rule, Sensitivity sensitivity) {
  switch (rule) {
    case 2:
      return sensitivity >= Sensitivity::Medium;
    case 3:
      return sensitivity >= Sensitivity::High;
    default:
      return true;
  }
}

int LowestViolatedRule(const ViolatingPoints& violating, Sensitivity sensitivity) {
  for (const int rule : {1, 2, 3, 4}) {
    if (IsRuleActive(rule, sensitivity) && !violating[static_cast<std::size_t>(rule - 1)].empty())
      return rule;
  }
  return 0;
}

}  // namespace engine

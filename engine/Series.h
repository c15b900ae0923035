// The one pass over the subgroups: the points of both charts, and what the limits and the summary rest on.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <vector>

#include "engine/Decimal.h"

namespace engine {

// What one pass over the subgroups gathers. Base: the points that the limits are calculated from.
template <class Arithmetic>
struct Totals {
  typename Arithmetic::Value minimum, maximum;
  typename Arithmetic::Sum sum{}, ranges{}, baseSum{}, baseRanges{};
  int rangeCount = 0, baseCount = 0, baseRangeCount = 0;
};

struct BasePeriod {
  int first = 0;  // 0-based
  int last = 0;
};

// The points of both charts, in whole numbers of the last shown decimal or as rounded doubles.
template <class Point>
struct Series {
  std::vector<Point>& means;
  std::vector<Point>& ranges;
};

struct NotNeeded {};

// Fills the two series and gives the totals. Fills `shown`, a Series<double> if it is needed, with the
// nearest doubles of means and ranges, rounded to the last shown decimal.
template <class Arithmetic, class Shown>
Totals<Arithmetic> MakeSeries(const Arithmetic& arithmetic, int subGroupSize, const BasePeriod& base,
                              const Series<typename Arithmetic::Point>& series, const Shown& shown) {
  using Value = typename Arithmetic::Value;
  const std::span<const Value> samples = arithmetic.samples;
  const auto roundMean = arithmetic.MakeRounder(subGroupSize, arithmetic.largest);
  const auto roundRange = arithmetic.MakeRounder(1, 2 * arithmetic.largest);
  Totals<Arithmetic> totals{samples.front(), samples.front()};
  const int count = static_cast<int>(samples.size()) / subGroupSize;
  series.means.resize(static_cast<std::size_t>(count));
  series.ranges.resize(series.means.size());
  auto mean = series.means.begin();
  auto meanRange = series.ranges.begin();
  const Value* sample = samples.data();
  for (int i = 0; i < count; ++i, sample += subGroupSize) {
    typename Arithmetic::SubGroupSum sum = *sample;
    Value low = *sample;
    Value high = *sample;
    for (int j = 1; j < subGroupSize; ++j) {
      sum += sample[j];
      low = std::min(low, sample[j]);
      high = std::max(high, sample[j]);
    }
    if (subGroupSize == 1 && i > 0) {
      low = std::min(sample[0], sample[-1]);
      high = std::max(sample[0], sample[-1]);
    }
    totals.minimum = std::min(totals.minimum, low);
    totals.maximum = std::max(totals.maximum, high);
    const Value range = high - low;
    const bool hasRange = subGroupSize > 1 || i > 0;
    totals.sum += sum;
    totals.ranges += range;
    totals.rangeCount += hasRange;
    if (i >= base.first && i <= base.last) {
      totals.baseSum += sum;
      ++totals.baseCount;
      if (subGroupSize > 1 || i > base.first) {
        totals.baseRanges += range;
        ++totals.baseRangeCount;
      }
    }
    if constexpr (!std::is_same_v<Shown, NotNeeded>) {
      shown.means.push_back(RoundToPlaces(arithmetic.Nearest(sum, subGroupSize), arithmetic.places));
      shown.ranges.push_back(RoundToPlaces(arithmetic.Nearest(range, 1), arithmetic.places));
    }
    *mean++ = roundMean(sum);
    *meanRange++ = roundRange(range);
  }
  return totals;
}

}  // namespace engine

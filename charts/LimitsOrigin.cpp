#include "charts/LimitsOrigin.h"

#include <algorithm>

#include "data/Statistics.h"

namespace {

// Whether the data set has the limits that it would get from these of its points.
bool AreLimitsFrom(const CData& data, int first, int last) {
  CData calculated = data;
  QCGlobalFunctions::ClearControlLimits(calculated);
  calculated.SetDataStartPoint(static_cast<qint16>(first));
  calculated.SetDataStopPoint(static_cast<qint16>(last));
  calculated.SetControlLimits(QCGlobalFunctions::ResultsOf(calculated).limits);
  return std::ranges::all_of(std::array{&CData::XBarUCL, &CData::XBarMean, &CData::XBarLCL, &CData::RBarUCL,
                                        &CData::RBarMean, &CData::RBarLCL},
                             [&](auto limit) { return (data.*limit)() == (calculated.*limit)(); });
}

}  // namespace

LimitsOrigin OriginOfLimits(const CData& data) {
  const int count = data.NumberOfPlotPoints();
  const int first = std::max<int>(1, data.DataStartPoint());
  const int stop = data.DataStopPoint();
  const int last = stop == 0 ? count : std::min(stop, count);
  const auto areFromPart = [&](int from, int to) {
    return from >= 1 && from <= to && to <= count && to - from + 1 < count && AreLimitsFrom(data, from, to);
  };
  if (areFromPart(first, last)) return {LimitsOrigin::Points, first, last};
  if (AreLimitsFrom(data, 0, 0)) return {LimitsOrigin::AllPoints};
  const auto [from, to] = data.LimitsBase();
  if (areFromPart(from, to)) return {LimitsOrigin::Points, from, to};
  return {LimitsOrigin::Kept};
}

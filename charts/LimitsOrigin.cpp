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
  const bool isPart = first > 1 || last < count;
  if (isPart && first <= last && AreLimitsFrom(data, first, last)) return {LimitsOrigin::Points, first, last};
  return {AreLimitsFrom(data, 0, 0) ? LimitsOrigin::AllPoints : LimitsOrigin::Kept, 0, 0};
}

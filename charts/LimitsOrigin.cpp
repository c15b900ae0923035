#include "charts/LimitsOrigin.h"

#include <algorithm>

#include "data/Statistics.h"
#include "platform/error/Error.h"

using QCGlobalFunctions::LimitsAreFrom;

LimitsOrigin OriginOfLimits(const CData& data) {
  const int count = data.NumberOfPlotPoints();
  const int first = std::max<int>(1, data.DataStartPoint());
  const int stop = data.DataStopPoint();
  const int last = stop == 0 ? count : std::min(stop, count);
  const auto areFromPart = [&](int from, int to) {
    return from >= 1 && from <= to && to <= count && to - from + 1 < count && LimitsAreFrom(data, from, to);
  };
  if (areFromPart(first, last)) return {LimitsOrigin::Points, first, last};
  if (LimitsAreFrom(data, 0, 0)) return {LimitsOrigin::AllPoints};
  const auto [from, to] = data.LimitsBase();
  if (areFromPart(from, to)) return {LimitsOrigin::Points, from, to};
  return {LimitsOrigin::Kept};
}

std::optional<LimitsOrigin> KnownOrigin(const CData& data) {
  try {
    return OriginOfLimits(data);
  } catch (const Error&) {
    return std::nullopt;
  }
}

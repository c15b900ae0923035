// Brings the points and lines of a chart to one unit, so that they are compared as the decimals that are
// shown, whatever their size.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engine/Arithmetic.h"
#include "engine/Decimal.h"
#include "engine/LongTicks.h"
#include "engine/Rules.h"

namespace engine {

// Calls find(points, lines) with both in whole numbers of the last of `places` decimals. points: the means or
// ranges rounded to `places`; so are the lines.
template <class Find>
void InTicks(std::span<const double> points, const ChartLines<double>& lines, int places, Find&& find) {
  const long double largest =
      std::max({std::fabs(lines.upper), std::fabs(lines.centre), std::fabs(lines.lower), Largest(points)});
  auto inUnit = [&]<class Number>(auto convert, std::vector<Number> ticks) {
    ticks.reserve(points.size());
    for (const double point : points) ticks.push_back(convert(point));
    find(std::span<const Number>(ticks),
         ChartLines<Number>{convert(lines.upper), convert(lines.centre), convert(lines.lower)});
  };
  if (largest * PowerOfTen(places) < 1e35L) {
    inUnit([&](double value) { return *TicksOfRounded(value, places); }, std::vector<Int128>());
  } else {
    inUnit([&](double value) { return LongTicks::OfRounded(value, places); }, std::vector<LongTicks>());
  }
}

// The same for points that are such whole numbers already, below 10^15.
template <class Find>
void InTicks(std::span<const std::int64_t> points, const ChartLines<double>& lines, int places, Find&& find) {
  const double power = static_cast<double>(IntegerPowerOfTen(places));
  auto fits = [&](double line) { return std::fabs(line * power) < 1e15; };
  if (fits(lines.upper) && fits(lines.centre) && fits(lines.lower)) {
    auto tick = [&](double line) { return static_cast<std::int64_t>(std::round(line * power)); };
    find(points, ChartLines<std::int64_t>{tick(lines.upper), tick(lines.centre), tick(lines.lower)});
    return;
  }
  std::vector<double> values;
  values.reserve(points.size());
  for (const std::int64_t point : points) values.push_back(QuotientAsDouble(point, 1, places));
  InTicks(std::span<const double>(values), lines, places, find);
}

}  // namespace engine

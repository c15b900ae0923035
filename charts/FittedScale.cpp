#include "charts/FittedScale.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace FittedScale {

namespace {

constexpr double margin = 0.04;
// The last ones are there for a lower end that a round step moves far down.
constexpr double roundSteps[] = {1, 1.5, 2, 2.5, 3, 4, 5, 6, 8, 10, 15, 20};

}  // namespace

Ends Fit(double low, double high, double unit) {
  const double magnitude = std::max(std::abs(low), std::abs(high));
  if (!(magnitude < std::numeric_limits<double>::max() / 100)) {
    throw std::range_error("the values are too large for an axis");
  }
  // Closer ticks than this would not differ in the digits that they are labelled with.
  const double smallest = std::max(unit, magnitude * 1e-10);
  const double room = high > low ? std::max((high - low) * margin, magnitude * 1e-10) : smallest;
  const double bottom = low >= 0 ? std::max(0.0, low - room) : low - room;
  const double top = high + room;

  const double decade = std::pow(10, std::floor(std::log10((top - bottom) / Intervals)));
  for (const double round : roundSteps) {
    const double step = round * decade;
    const double minimum = std::floor(bottom / step) * step;
    const double maximum = minimum + Intervals * step;
    if (maximum >= top) return {minimum, maximum};
  }
  throw std::range_error("the values leave no room for an axis");
}

}  // namespace FittedScale

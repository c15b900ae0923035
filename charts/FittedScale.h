// The ends of a value axis that shows the variation: just outside what is drawn, on round ticks.
#pragma once

namespace FittedScale {

constexpr int Intervals = 4;

struct Ends {
  double minimum;
  double maximum;
};

// Ends at least a small margin outside low to high, Intervals round steps apart. Where low and high are one,
// they stand at least `unit` to each side. A low of 0 or more keeps the lower end from falling below 0.
// std::range_error when low or high is not finite or too large to have room around it.
Ends Fit(double low, double high, double unit);

}  // namespace FittedScale

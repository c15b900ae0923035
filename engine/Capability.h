// How a process stands to its specification (D. C. Montgomery, Introduction to Statistical Quality Control,
// 6th ed., 8.3).
#pragma once

#include <limits>
#include <optional>

namespace engine {

// Over all samples used. What needs a specification is absent where USL <= LSL, and what needs a spread where
// that is 0.
struct Capability {
  double mean = 0;
  double sigmaWithin = 0;       // R-bar / d2: the spread within the subgroups
  double sigmaOverall = 0;      // the sample standard deviation (n - 1) of all samples
  std::optional<double> cp{};   // (USL - LSL) / (6 sigma within)
  std::optional<double> cpk{};  // the lesser distance from the mean to USL and LSL / (3 sigma within)
  std::optional<double> pp{};   // the same two with sigma overall
  std::optional<double> ppk{};
  std::optional<int> samplesOutside{};  // below LSL or above USL
  // Distances from the mean to USL and LSL in sigma within; not a number where absent.
  long double sigmasToUpper = std::numeric_limits<long double>::quiet_NaN();
  long double sigmasToLower = std::numeric_limits<long double>::quiet_NaN();

  // The part of a normal process with this mean and sigma within that lies outside, from 0 to 1.
  std::optional<double> ExpectedOutside() const;
};

// What is to be known of the samples: distances as exact as the samples are.
struct Spread {
  long double sigmaWithin = 0;
  long double sigmaOverall = 0;
  long double toUpper = 0;  // USL - mean
  long double toLower = 0;  // mean - LSL
  long double width = 0;    // USL - LSL; 0 where there is no specification
};

// All but samplesOutside.
Capability MakeCapability(const Spread& spread);

}  // namespace engine

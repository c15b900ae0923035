#include "engine/Capability.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine {

namespace {

// The part of a normal distribution that lies more than z standard deviations above its mean.
long double UpperTail(long double z) { return std::erfc(z / std::numbers::sqrt2_v<long double>) / 2; }

}  // namespace

std::optional<double> Capability::ExpectedOutside() const {
  if (std::isnan(sigmasToUpper)) return std::nullopt;
  return static_cast<double>(UpperTail(sigmasToUpper) + UpperTail(sigmasToLower));
}

Capability MakeCapability(const Spread& spread) {
  Capability result;
  result.sigmaWithin = static_cast<double>(spread.sigmaWithin);
  result.sigmaOverall = static_cast<double>(spread.sigmaOverall);
  if (!(spread.width > 0)) return result;
  const long double nearer = std::min(spread.toUpper, spread.toLower);
  if (const long double sigma = spread.sigmaWithin; sigma > 0) {
    result.cp = static_cast<double>(spread.width / (6 * sigma));
    result.cpk = static_cast<double>(nearer / (3 * sigma));
    result.sigmasToUpper = spread.toUpper / sigma;
    result.sigmasToLower = spread.toLower / sigma;
  }
  if (const long double sigma = spread.sigmaOverall; sigma > 0) {
    result.pp = static_cast<double>(spread.width / (6 * sigma));
    result.ppk = static_cast<double>(nearer / (3 * sigma));
  }
  return result;
}

}  // namespace engine

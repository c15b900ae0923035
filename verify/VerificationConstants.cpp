// The chart constants against a numerical integration of the distribution they come from.
#include <array>
#include <cmath>
#include <numbers>

#include "engine/Constants.h"
#include "texts/VerifyWords.h"
#include "verify/Verification.h"

using namespace Qt::StringLiterals;

namespace Verification {

namespace {

constexpr int largest = 20;
constexpr std::size_t sizes = largest + 1;
// Moments of the range for n = 0 to 20.
struct RangeMoments {
  std::array<long double, sizes> mean{};
  std::array<long double, sizes> square{};
};

long double NormalCdf(long double x) { return std::erfc(-x / std::numbers::sqrt2_v<long double>) / 2; }

// P(W > w) = 1 - n * integral of pdf(x) (cdf(x + w) - cdf(x))^(n - 1) dx for every n at once, by the
// trapezoid rule, whose error for such integrands lies below double precision at this step.
std::array<long double, sizes> RangeTails(long double w) {
  constexpr long double step = 1.0L / 16;
  std::array<long double, sizes> inside{};
  for (long double x = -9 - w; x <= 9; x += step) {
    const long double between = NormalCdf(x + w) - NormalCdf(x);
    long double term = std::exp(-x * x / 2) / std::sqrt(2 * std::numbers::pi_v<long double>);
    for (std::size_t n = 2; n <= largest; ++n) {
      term *= between;
      inside[n] += term * step;
    }
  }
  for (std::size_t n = 2; n <= largest; ++n) inside[n] = 1 - static_cast<long double>(n) * inside[n];
  return inside;
}

// E(W) = integral of P(W > w), E(W^2) = integral of 2 w P(W > w), over w from 0 up. With w = exp(t - exp(-t))
// both ends fall off so fast that the trapezoid rule is as good here (H. Takahasi, M. Mori, Publ. RIMS 9,
// 1974).
RangeMoments IntegrateRange() {
  constexpr long double step = 1.0L / 64;
  RangeMoments moments;
  for (long double t = -4; t <= 3; t += step) {
    const long double w = std::exp(t - std::exp(-t));
    const long double weight = step * w * (1 + std::exp(-t));
    const auto tails = RangeTails(w);
    for (std::size_t n = 2; n <= largest; ++n) {
      moments.mean[n] += weight * tails[n];
      moments.square[n] += weight * 2 * w * tails[n];
    }
  }
  return moments;
}

}  // namespace

std::vector<Check> Constants() {
  // What the integration can tell where a long double has no more digits than a double.
  constexpr int required = 12;
  Check means{Words::Verify::constants(), Words::Verify::d2(largest), Words::Verify::constantsSource(),
              required};
  Check deviations{Words::Verify::constants(), Words::Verify::d3(largest), Words::Verify::constantsSource(),
                   required};
  const RangeMoments moments = IntegrateRange();
  for (int n = 2; n <= largest; ++n) {
    const auto i = static_cast<std::size_t>(n);
    const long double variance = moments.square[i] - moments.mean[i] * moments.mean[i];
    means.quantities.push_back(Quantity::OfNumbers(u"d2(%1)"_s.arg(n), static_cast<double>(moments.mean[i]),
                                                   static_cast<double>(engine::D2(n))));
    deviations.quantities.push_back(Quantity::OfNumbers(
        u"d3(%1)"_s.arg(n), static_cast<double>(std::sqrt(variance)), static_cast<double>(engine::D3(n))));
  }
  return {means, deviations};
}

}  // namespace Verification

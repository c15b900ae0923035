#include "engine/Histogram.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "engine/SeriesText.h"

namespace engine {

namespace {

// Counts each sample in the last bin that starts at or below it. starts ascend; starts[0] is at or below
// every sample. The guess is mostly right, seldom one off.
template <class Number, class Guess>
void Count(std::span<const Number> samples, const std::array<Number, histogramBins>& starts, Guess guess,
           std::array<int, histogramBins>& counts) {
  std::array<Number, histogramBins + 1> bounds;
  std::copy(starts.begin(), starts.end(), bounds.begin());
  // Beyond every sample.
  using Limits = std::numeric_limits<Number>;
  bounds.back() = Limits::has_infinity ? Limits::infinity() : Limits::max();
  counts.fill(0);
  for (const Number sample : samples) {
    std::size_t bin = guess(sample);
    while (sample < bounds[bin]) --bin;
    while (sample >= bounds[bin + 1]) ++bin;
    ++counts[bin];
  }
}

template <class Number>
void WriteLabels(const std::array<Number, histogramBins>& values, const HistogramInputs& inputs,
                 std::string& text) {
  const Number widest = std::max(values.back(), -values.front());  // the values ascend
  SeriesText labels(text, inputs.delimiter, inputs.places, values.size(), widest);
  for (const Number value : values) labels.Add(value);
  labels.Finish();
}

Int128 CeilingOfQuotient(Int128 dividend, Int128 divisor) {
  const Int128 quotient = dividend / divisor;
  return quotient * divisor < dividend ? quotient + 1 : quotient;
}

Int128 WidePowerOfTen(int exponent) {
  const int low = std::min(exponent, 18);
  return Int128{IntegerPowerOfTen(low)} * IntegerPowerOfTen(exponent - low);
}

// The scale as whole numbers of the last of some decimals.
struct ExactScale {
  Int128 low = 0;
  Int128 high = 0;
  int decimals = 0;
};

// Thirteen times a number of the scale stays in 128 bits.
constexpr long double largestOfScale = 1e36L;

// Nothing where a bound does not fit.
std::optional<ExactScale> MakeExactScale(int decimals, std::int64_t minimum, std::int64_t maximum,
                                         const HistogramInputs& inputs) {
  ExactScale scale;
  scale.decimals = std::max(decimals, inputs.places);
  std::optional<Int128> lower;
  std::optional<Int128> upper;
  const bool hasSpecification = inputs.lowerSpecLimit < inputs.upperSpecLimit;
  if (hasSpecification) {
    const auto read = [&] {
      lower = WideTicks(inputs.lowerSpecLimit, scale.decimals);
      upper = WideTicks(inputs.upperSpecLimit, scale.decimals);
      return lower && upper;
    };
    // Mostly the limits have no more decimals than are shown.
    if (!read()) {
      scale.decimals =
          std::max({scale.decimals, DecimalsOf(inputs.lowerSpecLimit), DecimalsOf(inputs.upperSpecLimit)});
      if (!read()) return std::nullopt;
    }
  }
  if (scale.decimals > maximumDecimals) return std::nullopt;
  const auto largest = static_cast<long double>(std::max(maximum, -minimum));
  if (largest * PowerOfTen(scale.decimals - decimals) > largestOfScale) return std::nullopt;
  scale.low = minimum * WidePowerOfTen(scale.decimals - decimals);
  scale.high = maximum * WidePowerOfTen(scale.decimals - decimals);
  if (hasSpecification) {
    scale.low = std::min(scale.low, *lower);
    scale.high = std::max(scale.high, *upper);
  }
  if (scale.low == scale.high) {
    const Int128 unit = WidePowerOfTen(scale.decimals - inputs.places);
    scale.low -= unit;
    scale.high += unit;
  }
  return scale;
}

// The nearest number of 64 bits.
std::int64_t Clamp(Int128 number) {
  using Limits = std::numeric_limits<std::int64_t>;
  return static_cast<std::int64_t>(std::clamp<Int128>(number, Limits::min(), Limits::max()));
}

}  // namespace

void MakeHistogram(std::span<const double> samples, double minimum, double maximum,
                   const HistogramInputs& inputs, HistogramResults& results) {
  double low = minimum;
  double high = maximum;
  if (inputs.lowerSpecLimit < inputs.upperSpecLimit) {
    low = std::min(low, inputs.lowerSpecLimit);
    high = std::max(high, inputs.upperSpecLimit);
  }
  if (!(low < high)) {
    // A value so large that the unit is lost in it gets the next doubles instead.
    const double unit = 1 / static_cast<double>(IntegerPowerOfTen(inputs.places));
    constexpr double most = std::numeric_limits<double>::max();
    low = std::max(std::min(low - unit, std::nextafter(low, -HUGE_VAL)), -most);
    high = std::min(std::max(high + unit, std::nextafter(high, HUGE_VAL)), most);
  }
  const long double width = static_cast<long double>(high) - static_cast<long double>(low);
  std::array<double, histogramBins> starts;
  std::array<double, histogramBins> labels;
  for (std::size_t bin = 0; bin < histogramBins; ++bin) {
    starts[bin] = static_cast<double>(static_cast<long double>(low) +
                                      width * static_cast<long double>(bin) / histogramBins);
    labels[bin] = RoundToPlaces(starts[bin], inputs.places);
  }
  WriteLabels(labels, inputs, results.labels);
  results.lowScale = low;
  results.highScale = high;
  // Finite, so that it makes nothing but 0 of 0.
  const double binsPerUnit = static_cast<double>(
      std::min(histogramBins / width, static_cast<long double>(std::numeric_limits<double>::max())));
  auto guess = [low, binsPerUnit](double sample) {
    return static_cast<std::size_t>(std::clamp((sample - low) * binsPerUnit, 0.0, double{histogramBins - 1}));
  };
  Count(samples, starts, guess, results.counts);
}

void MakeHistogram(std::span<const std::int64_t> samples, int decimals, std::int64_t minimum,
                   std::int64_t maximum, const HistogramInputs& inputs, HistogramResults& results) {
  const std::optional<ExactScale> exact = MakeExactScale(decimals, minimum, maximum, inputs);
  if (!exact) {
    std::vector<double> values;
    values.reserve(samples.size());
    for (const std::int64_t sample : samples) values.push_back(QuotientAsDouble(sample, 1, decimals));
    MakeHistogram(values, QuotientAsDouble(minimum, 1, decimals), QuotientAsDouble(maximum, 1, decimals),
                  inputs, results);
    return;
  }
  // Bin b starts at (12 low + b (high - low)) / (12 * 10^scale.decimals).
  const ExactScale& scale = *exact;
  const Int128 width = scale.high - scale.low;
  // From samples' units to twelfths of the scale's.
  const Int128 finer = histogramBins * WidePowerOfTen(scale.decimals - decimals);
  const Int128 largest = std::max(scale.high, -scale.low) * histogramBins;
  const TickRounder round(histogramBins, scale.decimals, inputs.places, largest);
  std::array<std::int64_t, histogramBins> starts;
  std::array<Int128, histogramBins> labels;
  for (std::size_t bin = 0; bin < histogramBins; ++bin) {
    const Int128 start = scale.low * histogramBins + width * static_cast<int>(bin);
    starts[bin] = Clamp(CeilingOfQuotient(start, finer));
    labels[bin] = round.Any(start);
  }
  WriteLabels(labels, inputs, results.labels);
  results.lowScale = QuotientAsDouble(scale.low, 1, scale.decimals);
  results.highScale = QuotientAsDouble(scale.high, 1, scale.decimals);
  // Bins per sample's unit, in 2^-64: mostly too small a guess by less than one bin.
  const double binsPerUnit = static_cast<double>(finer) / static_cast<double>(width);
  const auto scaled = static_cast<std::uint64_t>(std::min(binsPerUnit, 1 - 0x1p-53) * 0x1p64);
  auto guess = [low = starts[0], scaled](std::int64_t sample) {
    const auto above = static_cast<std::uint64_t>(sample) - static_cast<std::uint64_t>(low);
    return std::min<std::size_t>(HighProduct(above, scaled), histogramBins - 1);
  };
  Count(samples, starts, guess, results.counts);
}

}  // namespace engine

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

// The scale as scaled integers of one number of decimals.
struct ExactScale {
  std::int64_t low = 0;
  std::int64_t high = 0;
  int decimals = 0;
};

// False where a bound or a label does not fit.
bool MakeExactScale(int decimals, std::int64_t minimum, std::int64_t maximum, const HistogramInputs& inputs,
                    ExactScale& scale) {
  scale = {minimum, maximum, std::max(decimals, inputs.places)};
  std::optional<ScaledInteger> lower;
  std::optional<ScaledInteger> upper;
  if (inputs.lowerSpecLimit < inputs.upperSpecLimit) {
    // In the samples' own decimals where that fits: mostly no digits have to be looked for.
    auto exact = [&](double limit) {
      const auto decimal = ShortestDecimal(limit, scale.decimals);
      return decimal ? decimal : ShortestDecimal(limit, 0);
    };
    lower = exact(inputs.lowerSpecLimit);
    upper = exact(inputs.upperSpecLimit);
    if (!lower || !upper) return false;
    scale.decimals = std::max({scale.decimals, lower->decimals, upper->decimals});
  }
  if (!Rescale(scale.low, scale.decimals - decimals) || !Rescale(scale.high, scale.decimals - decimals))
    return false;
  if (lower) {
    if (!Rescale(lower->mantissa, scale.decimals - lower->decimals) ||
        !Rescale(upper->mantissa, scale.decimals - upper->decimals)) {
      return false;
    }
    scale.low = std::min(scale.low, lower->mantissa);
    scale.high = std::max(scale.high, upper->mantissa);
  }
  if (scale.low == scale.high) {
    const int unit = scale.decimals - inputs.places;
    if (unit > 18) return false;
    scale.low -= IntegerPowerOfTen(unit);
    scale.high += IntegerPowerOfTen(unit);
  }
  return true;
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
  results.starts = labels;
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
  ExactScale scale;
  if (!MakeExactScale(decimals, minimum, maximum, inputs, scale)) {
    std::vector<double> values;
    values.reserve(samples.size());
    for (const std::int64_t sample : samples) values.push_back(QuotientAsDouble(sample, 1, decimals));
    MakeHistogram(values, QuotientAsDouble(minimum, 1, decimals), QuotientAsDouble(maximum, 1, decimals),
                  inputs, results);
    return;
  }
  // Bin b starts at (12 low + b (high - low)) / (12 * 10^scale.decimals).
  const Int128 width = Int128{scale.high} - scale.low;
  Int128 finer = histogramBins;  // from samples' units to twelfths of the scale's
  for (int i = decimals; i < scale.decimals; ++i) finer *= 10;
  const Int128 largest = std::max<Int128>(scale.high, -Int128{scale.low}) * histogramBins;
  const TickRounder round(histogramBins, scale.decimals, inputs.places, largest);
  std::array<std::int64_t, histogramBins> starts;
  std::array<std::int64_t, histogramBins> labels;
  for (std::size_t bin = 0; bin < histogramBins; ++bin) {
    const Int128 start = Int128{scale.low} * histogramBins + width * static_cast<int>(bin);
    starts[bin] = static_cast<std::int64_t>(CeilingOfQuotient(start, finer));
    labels[bin] = round(start);
    results.starts[bin] = QuotientAsDouble(labels[bin], 1, inputs.places);
  }
  WriteLabels(labels, inputs, results.labels);
  results.lowScale = QuotientAsDouble(scale.low, 1, scale.decimals);
  results.highScale = QuotientAsDouble(scale.high, 1, scale.decimals);
  // Bins per sample's unit, in 2^-64. Too small a guess by less than one bin.
  const auto binsPerUnit = static_cast<std::uint64_t>(
      finer < width ? (UInt128{static_cast<std::uint64_t>(finer)} << 64) / static_cast<UInt128>(width)
                    : ~UInt128{0});
  auto guess = [low = starts[0], binsPerUnit](std::int64_t sample) {
    const auto above = static_cast<std::uint64_t>(sample - low);
    return std::min<std::size_t>(HighProduct(above, binsPerUnit), histogramBins - 1);
  };
  Count(samples, starts, guess, results.counts);
}

}  // namespace engine

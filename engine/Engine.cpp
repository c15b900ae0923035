#include "engine/Engine.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "engine/Arithmetic.h"
#include "engine/Constants.h"
#include "engine/Decimal.h"
#include "engine/Parse.h"
#include "engine/SeriesText.h"

namespace engine {

namespace {

// What one pass over the subgroups gathers. Base: the points that the limits are calculated from.
template <class Arithmetic>
struct Totals {
  typename Arithmetic::Value minimum, maximum;
  typename Arithmetic::Sum sum{}, ranges{}, baseSum{}, baseRanges{};
  int rangeCount = 0, baseCount = 0, baseRangeCount = 0;
};

struct BasePeriod {
  int first = 0;  // 0-based
  int last = 0;
};

// The points of both charts, in whole numbers of the last shown decimal or as rounded doubles.
template <class Point>
struct Series {
  std::vector<Point>& means;
  std::vector<Point>& ranges;
};

// Fills the two series and gives the totals.
template <class Arithmetic>
Totals<Arithmetic> MakeSeries(const Arithmetic& arithmetic, int subGroupSize, const BasePeriod& base,
                              const Series<typename Arithmetic::Point>& series) {
  using Value = typename Arithmetic::Value;
  const std::span<const Value> samples = arithmetic.samples;
  const auto roundMean = arithmetic.MakeRounder(subGroupSize, arithmetic.largest);
  const auto roundRange = arithmetic.MakeRounder(1, 2 * arithmetic.largest);
  Totals<Arithmetic> totals{samples.front(), samples.front()};
  const int count = static_cast<int>(samples.size()) / subGroupSize;
  series.means.resize(static_cast<std::size_t>(count));
  series.ranges.resize(series.means.size());
  auto mean = series.means.begin();
  auto meanRange = series.ranges.begin();
  const Value* sample = samples.data();
  for (int i = 0; i < count; ++i, sample += subGroupSize) {
    typename Arithmetic::SubGroupSum sum = *sample;
    Value low = *sample;
    Value high = *sample;
    for (int j = 1; j < subGroupSize; ++j) {
      sum += sample[j];
      low = std::min(low, sample[j]);
      high = std::max(high, sample[j]);
    }
    if (subGroupSize == 1 && i > 0) {
      low = std::min(sample[0], sample[-1]);
      high = std::max(sample[0], sample[-1]);
    }
    totals.minimum = std::min(totals.minimum, low);
    totals.maximum = std::max(totals.maximum, high);
    const Value range = high - low;
    const bool hasRange = subGroupSize > 1 || i > 0;
    totals.sum += sum;
    totals.ranges += range;
    totals.rangeCount += hasRange;
    if (i >= base.first && i <= base.last) {
      totals.baseSum += sum;
      totals.baseRanges += range;
      ++totals.baseCount;
      totals.baseRangeCount += hasRange;
    }
    *mean++ = roundMean(sum);
    *meanRange++ = roundRange(range);
  }
  return totals;
}

template <class Point>
void WriteSeries(const std::vector<Point>& points, const Inputs& inputs, std::string& text) {
  const Point widest = Largest(std::span<const Point>(points));
  SeriesText joined(text, inputs.stringDelimiter, inputs.precisionValue, points.size(), widest);
  for (const Point point : points) joined.Add(point);
  joined.Finish();
}

template <class Arithmetic>
void MakeLimits(const Arithmetic& arithmetic, const Totals<Arithmetic>& totals, const Inputs& inputs,
                int subGroupSize, Results& results) {
  const long double mean = arithmetic.Quotient(totals.baseSum, std::int64_t{totals.baseCount} * subGroupSize);
  const long double range =
      totals.baseRangeCount > 0 ? arithmetic.Quotient(totals.baseRanges, totals.baseRangeCount) : 0.0L;
  const long double d2 = D2(subGroupSize);
  const long double d3 = D3(subGroupSize);
  const long double reach = 3 * (range / d2) / std::sqrt(static_cast<long double>(subGroupSize));
  ControlLimits& limits = results.limits;
  limits.xBarUpper = static_cast<double>(mean + reach);
  limits.xBarLower = static_cast<double>(mean - reach);
  limits.xBarCentre = static_cast<double>(mean);
  limits.rangeUpper = static_cast<double>(range * (1 + 3 * d3 / d2));
  limits.rangeLower = static_cast<double>(range * std::max(0.0L, 1 - 3 * d3 / d2));
  limits.rangeCentre = static_cast<double>(range);
  for (const auto& [limit, name] : controlLimitFields) {
    if (inputs.limits.*limit != 0) limits.*limit = inputs.limits.*limit;
  }
}

template <class Arithmetic>
void MakeSummary(const Arithmetic& arithmetic, const Totals<Arithmetic>& totals, const Inputs& inputs,
                 int subGroupSize, Results& results) {
  const auto count = static_cast<std::int64_t>(arithmetic.samples.size());
  results.minValue = static_cast<double>(arithmetic.Quotient(totals.minimum, 1));
  results.maxValue = static_cast<double>(arithmetic.Quotient(totals.maximum, 1));
  const auto width = totals.maximum - totals.minimum;
  results.stdDevValue =
      count > 1 ? static_cast<double>(arithmetic.StandardDeviation(totals.minimum, width)) : 0;
  const long double range =
      totals.rangeCount > 0 ? arithmetic.Quotient(totals.ranges, totals.rangeCount) : 0.0L;
  const long double sigma = range / D2(subGroupSize);
  results.cpkValue = 0;
  if (sigma > 0 && inputs.upperSpecLimit > inputs.lowerSpecLimit) {
    const long double upper = arithmetic.Distance(inputs.upperSpecLimit, totals.sum, count);
    const long double lower = -arithmetic.Distance(inputs.lowerSpecLimit, totals.sum, count);
    results.cpkValue = static_cast<double>(std::min(upper, lower) / (3 * sigma));
  }
}

ChartLines<double> RoundedLines(const Inputs& inputs, const Results& results) {
  auto line = [&](double value) { return RoundToPlaces(value, inputs.precisionValue); };
  return {line(results.limits.xBarUpper), line(results.limits.xBarCentre), line(results.limits.xBarLower)};
}

void Judge(std::span<const double> points, const Inputs& inputs, std::size_t firstPoint, Results& results) {
  FindViolations<double>(points, RoundedLines(inputs, results), firstPoint, results.violatingPoints);
}

// Points in whole numbers of the last shown decimal, and so the lines; as doubles where given lines do not
// fit.
template <class Point>
void Judge(std::span<const Point> points, const Inputs& inputs, std::size_t firstPoint, Results& results) {
  const ChartLines<double> rounded = RoundedLines(inputs, results);
  const long double ticksPerUnit = PowerOfTen(inputs.precisionValue);
  const long double largest = std::is_same_v<Point, std::int64_t> ? largestNarrow : 1e36L;
  auto fits = [&](double value) { return std::fabs(value * ticksPerUnit) < largest; };
  if (fits(rounded.upper) && fits(rounded.centre) && fits(rounded.lower)) {
    auto tick = [&](double value) { return static_cast<Point>(std::round(value * ticksPerUnit)); };
    FindViolations<Point>(points, {tick(rounded.upper), tick(rounded.centre), tick(rounded.lower)},
                          firstPoint, results.violatingPoints);
    return;
  }
  std::vector<double> values;
  values.reserve(points.size());
  for (const Point point : points) values.push_back(QuotientAsDouble(point, 1, inputs.precisionValue));
  FindViolations<double>(values, rounded, firstPoint, results.violatingPoints);
}

void MakeVerdict(const Inputs& inputs, Results& results) {
  results.ruleViolation = LowestViolatedRule(results.violatingPoints, inputs.sensitivity);
  results.isInControl = results.ruleViolation == 0;
  results.processState = (results.isInControl ? 3 : 1) + (results.cpkValue >= 1 ? 1 : 0);
}

void Store(const HistogramResults& histogram, std::string_view delimiter, Results& results) {
  results.histogramBinQty = histogramBins;
  results.histoLoScaleValue = histogram.lowScale;
  results.histoHiScaleValue = histogram.highScale;
  SeriesText counts(results.histogramBinValuesOutputString, delimiter, 0, histogramBins,
                    std::int64_t{maximumSamples});
  for (const int count : histogram.counts) counts.Add(std::int64_t{count});
  counts.Finish();
  results.histogramLabelsOutputString = histogram.labels;
  results.histogramCounts = histogram.counts;
  results.histogramBinStarts = histogram.starts;
}

bool AllFinite(const Results& r) {
  for (const double value :
       {r.cpkValue, r.maxValue, r.minValue, r.stdDevValue, r.histoHiScaleValue, r.histoLoScaleValue}) {
    if (!std::isfinite(value)) return false;
  }
  return std::all_of(controlLimitFields.begin(), controlLimitFields.end(),
                     [&](const ControlLimitField& field) { return std::isfinite(r.limits.*field.value); });
}

std::string InputError(const Inputs& inputs) {
  auto outside = [](const char* name, int value, int low, int high) {
    return value >= low && value <= high
               ? std::string()
               : std::string("the ") + name + " " + std::to_string(value) + " is not from " +
                     std::to_string(low) + " to " + std::to_string(high);
  };
  auto notFinite = [](const char* name) { return std::string("the ") + name + " is not a finite number"; };
  if (!std::isfinite(inputs.upperSpecLimit)) return notFinite("upper specification limit");
  if (!std::isfinite(inputs.lowerSpecLimit)) return notFinite("lower specification limit");
  for (const auto& [limit, name] : controlLimitFields) {
    if (!std::isfinite(inputs.limits.*limit)) return notFinite(name);
  }
  for (std::string error : {outside("subgroup size", inputs.subGroupSize, 0, maximumSubGroupSize),
                            outside("precision", inputs.precisionValue, 0, maximumPrecision),
                            outside("sensitivity", static_cast<int>(inputs.sensitivity), 0, 2),
                            outside("detection period", static_cast<int>(inputs.detectionPeriod), 0, 1),
                            outside("start point", inputs.dataStartPoint, 0, maximumSamples),
                            outside("stop point", inputs.dataStopPoint, 0, maximumSamples)}) {
    if (!error.empty()) return error;
  }
  return {};
}

// The points that the limits are calculated from, of `count` points; an error text where there are none.
std::string FindBasePeriod(const Inputs& inputs, int count, BasePeriod& base) {
  const int start = std::max(inputs.dataStartPoint, 1);
  const int stop = inputs.dataStopPoint == 0 ? count : std::min(inputs.dataStopPoint, count);
  if (start > count) {
    return "the start point " + std::to_string(start) + " lies beyond the last of " + std::to_string(count) +
           " points";
  }
  if (start > stop) {
    return "the start point " + std::to_string(start) + " lies beyond the stop point " + std::to_string(stop);
  }
  base = {start - 1, stop - 1};
  return {};
}

// What no complete subgroup gives: no points, the limits as given, twelve empty bins, in control.
Results ResultsWithoutPoints(const Inputs& inputs) {
  Results results;
  results.limits = inputs.limits;
  results.xBarSeries.decimals = inputs.precisionValue;
  results.rangeSeries.decimals = inputs.precisionValue;
  HistogramResults histogram;
  const double anywhere = inputs.lowerSpecLimit < inputs.upperSpecLimit ? inputs.lowerSpecLimit : 0;
  MakeHistogram(std::span(&anywhere, 1), anywhere, anywhere,
                {inputs.lowerSpecLimit, inputs.upperSpecLimit, inputs.precisionValue, inputs.stringDelimiter},
                histogram);
  histogram.counts.fill(0);
  Store(histogram, inputs.stringDelimiter, results);
  return results;
}

}  // namespace

struct Engine::WorkSpace {
  Samples samples;
  std::vector<Int128> wideMeans;  // where the series take more than 64 bits
  std::vector<Int128> wideRanges;
  HistogramResults histogram;
  Results results;
  std::string error;

  Series<std::int64_t> SeriesOf(const ExactArithmetic<std::int64_t>&) {
    return {results.xBarSeries.ticks, results.rangeSeries.ticks};
  }
  Series<Int128> SeriesOf(const ExactArithmetic<Int128>&) { return {wideMeans, wideRanges}; }
  Series<double> SeriesOf(const CompensatedArithmetic&) {
    return {results.xBarSeries.values, results.rangeSeries.values};
  }

  void ClearSeries(int places) {
    for (PlottedSeries* series : {&results.xBarSeries, &results.rangeSeries}) {
      series->decimals = places;
      series->ticks.clear();
      series->values.clear();
    }
  }

  // The first `used` samples.
  void Compute(const Inputs& inputs, std::size_t used, int subGroupSize, const BasePeriod& base) {
    const int places = inputs.precisionValue;
    if (!samples.exact) {
      const auto values = std::span<const double>(samples.values).first(used);
      Compute(CompensatedArithmetic{values, places, Largest(values)}, inputs, subGroupSize, base);
      return;
    }
    const auto values = std::span<const std::int64_t>(samples.mantissas).first(used);
    const std::int64_t largest = Largest(values);
    const int more = std::max(places - samples.decimals, 0);
    if (largest < largestNarrow / IntegerPowerOfTen(more)) {
      Compute(ExactArithmetic<std::int64_t>{values, samples.decimals, places, largest}, inputs, subGroupSize,
              base);
    } else {
      Compute(ExactArithmetic<Int128>{values, samples.decimals, places, largest}, inputs, subGroupSize, base);
    }
  }

  template <class Arithmetic>
  void Compute(const Arithmetic& arithmetic, const Inputs& inputs, int subGroupSize, const BasePeriod& base) {
    const auto series = SeriesOf(arithmetic);
    ClearSeries(inputs.precisionValue);
    const auto totals = MakeSeries(arithmetic, subGroupSize, base, series);
    const auto& points = series.means;
    results.numberOfPlotPoints = static_cast<int>(points.size());
    results.sampleQty = static_cast<int>(arithmetic.samples.size());
    WriteSeries(points, inputs, results.xBarOutputString);
    WriteSeries(series.ranges, inputs, results.rBarOutputString);
    if constexpr (std::is_same_v<typename Arithmetic::Point, Int128>) {
      for (const Int128 point : series.means)
        results.xBarSeries.values.push_back(QuotientAsDouble(point, 1, inputs.precisionValue));
      for (const Int128 point : series.ranges)
        results.rangeSeries.values.push_back(QuotientAsDouble(point, 1, inputs.precisionValue));
    }
    MakeLimits(arithmetic, totals, inputs, subGroupSize, results);
    MakeSummary(arithmetic, totals, inputs, subGroupSize, results);
    constexpr std::size_t longestRule = 8;
    const bool wholeChart = inputs.detectionPeriod == DetectionPeriod::Long || points.size() <= longestRule;
    Judge(std::span<const typename Arithmetic::Point>(points), inputs,
          wholeChart ? 0 : points.size() - longestRule, results);
    MakeVerdict(inputs, results);
    const HistogramInputs histogramInputs{inputs.lowerSpecLimit, inputs.upperSpecLimit, inputs.precisionValue,
                                          inputs.stringDelimiter};
    if constexpr (std::is_same_v<Arithmetic, CompensatedArithmetic>) {
      MakeHistogram(arithmetic.samples, totals.minimum, totals.maximum, histogramInputs, histogram);
    } else {
      MakeHistogram(arithmetic.samples, arithmetic.decimals, totals.minimum, totals.maximum, histogramInputs,
                    histogram);
    }
    Store(histogram, inputs.stringDelimiter, results);
  }
};

Engine::Engine() : work_(std::make_unique<WorkSpace>()) {}
Engine::~Engine() = default;
Engine::Engine(Engine&&) noexcept = default;
Engine& Engine::operator=(Engine&&) noexcept = default;

const std::string& Engine::LastError() const { return work_->error; }

bool Engine::Run(const Inputs& inputs, Results& results) {
  WorkSpace& work = *work_;
  work.error = InputError(inputs);
  if (!work.error.empty()) return false;
  if (!ParseSamples(inputs.delimitedInputString, inputs.stringDelimiter, inputs.reverseDataString,
                    work.samples, work.error)) {
    return false;
  }
  const int subGroupSize = std::max(inputs.subGroupSize, 1);
  const int count = static_cast<int>(work.samples.count) / subGroupSize;
  if (count == 0) {
    results = ResultsWithoutPoints(inputs);
    return true;
  }
  BasePeriod base;
  work.error = FindBasePeriod(inputs, count, base);
  if (!work.error.empty()) return false;
  work.Compute(inputs, static_cast<std::size_t>(count) * static_cast<std::size_t>(subGroupSize), subGroupSize,
               base);
  if (!AllFinite(work.results)) {
    work.error = "the values are too large to be calculated with";
    return false;
  }
  // Handed over by swapping, so that both sides keep the space they have grown.
  std::swap(results, work.results);
  return true;
}

}  // namespace engine

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
#include "engine/Series.h"
#include "engine/SeriesText.h"
#include "engine/Verdict.h"

namespace engine {

namespace {

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
  const std::int64_t count = std::int64_t{totals.baseCount} * subGroupSize;
  const long double mean = arithmetic.Quotient(totals.baseSum, count);
  const long double range =
      totals.baseRangeCount > 0 ? arithmetic.Quotient(totals.baseRanges, totals.baseRangeCount) : 0.0L;
  const long double d2 = D2(subGroupSize);
  const long double d3 = D3(subGroupSize);
  const long double reach = 3 * (range / d2) / std::sqrt(static_cast<long double>(subGroupSize));
  ControlLimits& limits = results.limits;
  limits.xBarCentre = arithmetic.Nearest(totals.baseSum, count);
  limits.xBarUpper = reach > 0 ? static_cast<double>(mean + reach) : limits.xBarCentre;
  limits.xBarLower = reach > 0 ? static_cast<double>(mean - reach) : limits.xBarCentre;
  limits.rangeUpper = static_cast<double>(range * (1 + 3 * d3 / d2));
  limits.rangeLower = static_cast<double>(range * std::max(0.0L, 1 - 3 * d3 / d2));
  limits.rangeCentre =
      totals.baseRangeCount > 0 ? arithmetic.Nearest(totals.baseRanges, totals.baseRangeCount) : 0;
  for (const auto& [limit, name] : controlLimitFields) {
    if (inputs.limits.*limit != 0) limits.*limit = inputs.limits.*limit;
  }
}

template <class Arithmetic>
void MakeSummary(const Arithmetic& arithmetic, const Totals<Arithmetic>& totals, const Inputs& inputs,
                 int subGroupSize, Results& results) {
  const auto count = static_cast<std::int64_t>(arithmetic.samples.size());
  results.minValue = arithmetic.Nearest(totals.minimum, 1);
  results.maxValue = arithmetic.Nearest(totals.maximum, 1);
  const long double range =
      totals.rangeCount > 0 ? arithmetic.Quotient(totals.ranges, totals.rangeCount) : 0.0L;
  Spread spread;
  spread.sigmaWithin = range / D2(subGroupSize);
  if (count > 1) {
    spread.sigmaOverall = arithmetic.StandardDeviation(totals.minimum, totals.maximum - totals.minimum);
  }
  const double upper = inputs.upperSpecLimit;
  const double lower = inputs.lowerSpecLimit;
  const bool hasSpecification = upper > lower;
  if (hasSpecification) {
    spread.toUpper = arithmetic.Distance(upper, totals.sum, count);
    spread.toLower = -arithmetic.Distance(lower, totals.sum, count);
    spread.width = DecimalDifference(upper, lower);
  }
  results.capability = MakeCapability(spread);
  results.capability.mean = arithmetic.Nearest(totals.sum, count);
  if (hasSpecification) {
    results.capability.samplesOutside = arithmetic.CountOutside(lower, upper, totals.minimum, totals.maximum);
  }
  results.cpkValue = results.capability.cpk.value_or(0);
  results.stdDevValue = results.capability.sigmaOverall;
}

// Points beyond the lines of both charts, from plot point firstPoint (0-based) on. Points: whole numbers of
// the last shown decimal, or doubles rounded to it.
template <class Point>
void Judge(const Series<Point>& series, const Inputs& inputs, std::size_t firstPoint, Results& results) {
  const int places = inputs.precisionValue;
  const ControlLimits& limits = results.limits;
  auto rounded = [&](double line) { return RoundToPlaces(line, places); };
  InTicks(std::span<const Point>(series.means),
          {rounded(limits.xBarUpper), rounded(limits.xBarCentre), rounded(limits.xBarLower)}, places,
          [&](auto points, const auto& lines) {
            FindViolations(points, lines, firstPoint, results.violatingPoints);
          });
  const std::size_t firstRange = std::max<std::size_t>(firstPoint, inputs.subGroupSize > 1 ? 0 : 1);
  InTicks(
      std::span<const Point>(series.ranges),
      {rounded(limits.rangeUpper), rounded(limits.rangeCentre), rounded(limits.rangeLower)}, places,
      [&](auto points, const auto& lines) { FindOutside(points, lines, firstRange, results.rangesOutside); });
}

// Whether rounding the exact means and ranges surely gives what rounding their nearest doubles does, less
// than 15 digits.
bool AreShort(std::int64_t largest, int subGroupSize, int moreDecimals) {
  const std::int64_t limit = 10'000'000'000'000;
  return largest < limit / subGroupSize / IntegerPowerOfTen(std::min(moreDecimals, 18));
}

void MakeVerdict(const Inputs& inputs, Results& results) {
  results.ruleViolation = LowestViolatedRule(results.violatingPoints, inputs.sensitivity);
  results.isInControl = results.ruleViolation == 0;
  results.processState = (results.isInControl ? 3 : 1) + (RoundToPlaces(results.cpkValue, 2) >= 1 ? 1 : 0);
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
  int sampleDecimals = 0;
  std::vector<Int128> wideMeans;  // where the series take more than 64 bits
  std::vector<Int128> wideRanges;
  std::vector<double> shownMeans;  // where the exact ones have too many digits to be judged by
  std::vector<double> shownRanges;
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
    for (auto* shown : {&shownMeans, &shownRanges}) shown->clear();
  }

  // The first `used` samples.
  void Compute(const Inputs& inputs, std::size_t used, int subGroupSize, const BasePeriod& base) {
    const int places = inputs.precisionValue;
    ClearSeries(places);
    if (!samples.exact) {
      const auto values = std::span<const double>(samples.values).first(used);
      Compute(CompensatedArithmetic{values, places, Largest(values)}, inputs, subGroupSize, base,
              NotNeeded{});
      return;
    }
    const auto values = std::span<const std::int64_t>(samples.mantissas).first(used);
    const std::int64_t largest = Largest(values);
    const int more = std::max(places - samples.decimals, 0);
    const Series<double> shown{shownMeans, shownRanges};
    if (AreShort(largest, subGroupSize, more)) {
      Compute(ExactArithmetic<std::int64_t>{values, samples.decimals, places, largest}, inputs, subGroupSize,
              base, NotNeeded{});
    } else if (largest < largestNarrow / IntegerPowerOfTen(more)) {
      Compute(ExactArithmetic<std::int64_t>{values, samples.decimals, places, largest}, inputs, subGroupSize,
              base, shown);
    } else {
      Compute(ExactArithmetic<Int128>{values, samples.decimals, places, largest}, inputs, subGroupSize, base,
              shown);
    }
  }

  template <class Arithmetic, class Shown>
  void Compute(const Arithmetic& arithmetic, const Inputs& inputs, int subGroupSize, const BasePeriod& base,
               const Shown& shown) {
    const auto series = SeriesOf(arithmetic);
    const auto totals = MakeSeries(arithmetic, subGroupSize, base, series, shown);
    results.numberOfPlotPoints = static_cast<int>(series.means.size());
    results.sampleQty = static_cast<int>(arithmetic.samples.size());
    WriteSeries(series.means, inputs, results.xBarOutputString);
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
    const std::size_t count = series.means.size();
    const bool wholeChart = inputs.detectionPeriod == DetectionPeriod::Long || count <= longestRule;
    const std::size_t firstPoint = wholeChart ? 0 : count - longestRule;
    if constexpr (std::is_same_v<Shown, NotNeeded>) {
      Judge(series, inputs, firstPoint, results);
    } else {
      Judge(shown, inputs, firstPoint, results);
    }
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
  return Read(inputs.delimitedInputString, inputs.stringDelimiter, inputs.reverseDataString) &&
         Calculate(inputs, results);
}

bool Engine::Read(std::string_view delimitedInputString, std::string_view stringDelimiter,
                  bool reverseDataString) {
  const bool isRead =
      ParseSamples(delimitedInputString, stringDelimiter, reverseDataString, work_->samples, work_->error);
  work_->sampleDecimals = isRead ? DecimalsNeeded(work_->samples) : 0;
  return isRead;
}

int Engine::SampleDecimals() const { return work_->sampleDecimals; }

bool Engine::Calculate(const Inputs& inputs, Results& results) {
  WorkSpace& work = *work_;
  work.error = InputError(inputs);
  if (!work.error.empty()) return false;
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
  work.results.sampleDecimals = SampleDecimals();
  if (!AllFinite(work.results)) {
    work.error = "the values are too large to be calculated with";
    return false;
  }
  // Handed over by swapping, so that both sides keep the space they have grown.
  std::swap(results, work.results);
  return true;
}

}  // namespace engine

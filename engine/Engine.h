// The statistics engine: subgrouped measurements in, X-bar and R charts, capability and detection rules out.
//
// Plain C++20: no I/O, no locale, no global state, nothing thrown (except for lack of memory). One Engine per
// thread; its work space is kept between runs, so that a run allocates nothing once the space has grown.
//
// DECIMAL-EXACT. A measurement is a decimal text, not a binary fraction. All sums, means, ranges, squared
// deviations and comparisons are done on integers of one common power of ten with 128-bit sums, and converted
// to double once, at the end. Measurements whose exponents lie too far apart for 63 bits take a compensated
// double path instead.
//
// SAMPLES. The non-empty elements of `delimitedInputString`, split at `stringDelimiter`, blanks around an
// element ignored, oldest first (`reverseDataString`: last to first). An element is a decimal number: sign,
// digits, ".", digits, exponent; it has to be finite as a double. At most 32767.
//
// SUBGROUPS. Consecutive runs of n = subGroupSize samples (0 counts as 1); an incomplete last run takes part
// in nothing. n = 1 is an individuals chart: the point is the value, its range the distance to the value
// before; the first range is written as 0 and takes no part in the mean range. No complete subgroup is a
// success without points.
//
// LIMITS (Montgomery, Introduction to Statistical Quality Control, 6th ed., 6.2 and 6.4), over the points
// dataStartPoint to dataStopPoint; d2, d3 as in Constants.h, for n = 1 those of 2:
//   averages: centre line = mean of the means      limits = centre line +- 3 (R-bar / d2) / sqrt(n)
//   ranges:   centre line R-bar = mean of ranges   limits = R-bar * max(0, 1 +- 3 d3 / d2)
// For n = 1 the range of the first of these points reaches back out of them and does not count. A limit whose
// input is not 0 comes back unchanged; the others are built from the data all the same.
//
// CAPABILITY: see Capability.h.
//
// RULES: see Rules.h. They are judged on points, limits and centre line rounded to precisionValue decimals,
// as decimals. With more than 15 digits these are the ones of the shortest text of a double, so that a limit
// that was stored compares as it did before.
//
// PROCESS STATE: 4 in control and Cpk >= 1; 3 in control, Cpk < 1; 2 out of control, Cpk >= 1; 1 out of
// control, Cpk < 1; 0 no points. Cpk counts with the two decimals that are shown: 1.00 is capable.
//
// DECIMALS: those that the samples need (trailing zeros do not count) are known as soon as they are read,
// before precisionValue has to be chosen; DecimalsToShow is the choice for a data set of its own.
//
// HISTOGRAM: see Histogram.h.
//
// TEXTS: elements joined by `stringDelimiter`, none behind the last, each with exactly precisionValue
// decimals, halves rounded away from zero. The same figures as numbers stand beside them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Capability.h"
#include "engine/ControlLimits.h"
#include "engine/Decimal.h"
#include "engine/Histogram.h"
#include "engine/Rules.h"

namespace engine {

inline constexpr int maximumSamples = 32767;
inline constexpr int maximumSubGroupSize = 20;
inline constexpr int maximumPrecision = 15;

// The decimals to calculate and show a data set with, from those that its samples and specification limits
// have: 4, and two more than its own from 5 on, as far as these go.
inline constexpr int mostDecimalsShown = 8;
constexpr int DecimalsToShow(int decimals) {
  constexpr int usual = 4;
  return decimals <= usual ? usual : std::min(mostDecimalsShown, decimals + 2);
}

struct Inputs {
  std::string_view stringDelimiter = ",";  // empty: the whole text is one element
  double upperSpecLimit = 0;
  double lowerSpecLimit = 0;
  int subGroupSize = 1;       // 0 to 20
  int dataStartPoint = 0;     // 1-based plot point; 0 is the first
  int dataStopPoint = 0;      // 0, or beyond the end, is the last
  ControlLimits limits = {};  // each that is 0 is to be calculated
  int precisionValue = 4;     // decimals of the texts and of the rules' judgement, 0 to 15
  bool reverseDataString = false;
  Sensitivity sensitivity = Sensitivity::Medium;
  DetectionPeriod detectionPeriod = DetectionPeriod::Long;
  std::string_view delimitedInputString = {};  // ASCII or UTF-8
  int sampleQty = 0;                           // a hint, no more
};

// The points of a chart as numbers: each is the decimal that stands in the chart's text.
struct PlottedSeries {
  int decimals = 0;
  std::vector<std::int64_t> ticks;  // whole numbers of the last decimal
  std::vector<double> values;       // the nearest doubles, where 64 bits do not hold the ticks

  std::size_t Count() const { return ticks.empty() ? values.size() : ticks.size(); }
  double operator[](std::size_t point) const {
    return ticks.empty() ? values[point] : QuotientAsDouble(ticks[point], 1, decimals);
  }
};

struct Results {
  ControlLimits limits;
  double cpkValue = 0;  // the Cpk of `capability`, 0 where it is absent
  int histogramBinQty = 0;
  std::string histogramBinValuesOutputString;
  std::string histogramLabelsOutputString;
  std::array<int, histogramBins> histogramCounts{};  // of each bin
  double histoHiScaleValue = 0;
  double histoLoScaleValue = 0;
  bool isInControl = true;
  double maxValue = 0;
  double minValue = 0;
  int numberOfPlotPoints = 0;
  int processState = 0;
  std::string rBarOutputString;
  PlottedSeries rangeSeries;
  int ruleViolation = 0;   // the lowest violated rule of the sensitivity, 0 for none
  double stdDevValue = 0;  // the sigmaOverall of `capability`
  std::string xBarOutputString;
  PlottedSeries xBarSeries;
  int sampleQty = 0;                        // samples in complete subgroups
  int sampleDecimals = 0;                   // that the samples need, zeros at the end not counted
  ViolatingPoints violatingPoints;          // of all four rules, whatever the sensitivity
  std::vector<std::int16_t> rangesOutside;  // 1-based points of the range chart beyond its limits
  Capability capability;
};

class Engine {
 public:
  Engine();
  ~Engine();
  Engine(Engine&&) noexcept;
  Engine& operator=(Engine&&) noexcept;

  // True: `results` is filled as a whole. False: `results` is as it was and LastError says why, naming the
  // value, its 1-based position or the input at fault.
  [[nodiscard]] bool Run(const Inputs& inputs, Results& results);

  // The same in two steps: between them the other inputs can be made to fit the samples' decimals.
  [[nodiscard]] bool Read(std::string_view delimitedInputString, std::string_view stringDelimiter,
                          bool reverseDataString);
  int SampleDecimals() const;  // of the samples read: those they need
  [[nodiscard]] bool Calculate(const Inputs& inputs, Results& results);  // with the samples read
  const std::string& LastError() const;

 private:
  struct WorkSpace;
  std::unique_ptr<WorkSpace> work_;
};

}  // namespace engine

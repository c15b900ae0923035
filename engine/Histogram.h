// The histogram: twelve bins of equal width over the samples and the specification limits.
//
// Scale: from the lower of the smallest sample and LSL to the higher of the largest sample and USL; where LSL
// >= USL the samples alone decide; where that leaves no width, one unit of the last shown decimal to each
// side of the value. A bin holds its lower end, the last bin both ends.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "engine/Decimal.h"

namespace engine {

inline constexpr int histogramBins = 12;

struct HistogramInputs {
  double lowerSpecLimit = 0;
  double upperSpecLimit = 0;
  int places = 4;  // decimals of the labels
  std::string_view delimiter = ",";
};

struct HistogramResults {
  double lowScale = 0;
  double highScale = 0;
  std::array<int, histogramBins> counts{};  // they add up to the number of samples
  std::string labels;                       // each bin's lower end, joined
};

// Of samples mantissa / 10^decimals; there is at least one, and minimum and maximum are theirs. Bin ends are
// exact fractions as long as both specification limits fit into scaled integers.
void MakeHistogram(std::span<const std::int64_t> samples, int decimals, std::int64_t minimum,
                   std::int64_t maximum, const HistogramInputs& inputs, HistogramResults& results);

// Of plain doubles.
void MakeHistogram(std::span<const double> samples, double minimum, double maximum,
                   const HistogramInputs& inputs, HistogramResults& results);

}  // namespace engine

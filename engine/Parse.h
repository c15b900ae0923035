// Turns the delimited text of a data set into samples, in one pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace engine {

// Measurements in time order, in one of two forms.
struct Samples {
  bool exact = true;
  std::size_t count = 0;
  std::vector<std::int64_t> mantissas;  // exact: the first `count`, each mantissa / 10^decimals and none
                                        // beyond largestMantissa; what follows is room for longer texts
  int decimals = 0;
  std::vector<double> values;  // not exact: the nearest doubles
};

// Splits `text` at `delimiter`; empty elements are passed over, blanks (space, tab, CR, LF) around one
// ignored. False with an error text that names the first element that is not a finite decimal number, or a
// number of samples above maximumSamples.
[[nodiscard]] bool ParseSamples(std::string_view text, std::string_view delimiter, bool reverse,
                                Samples& samples, std::string& error);

// Whether a text without blanks around it is a number to the engine.
bool IsFiniteDecimal(std::string_view element);

}  // namespace engine

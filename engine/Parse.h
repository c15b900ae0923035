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
  int decimals = 0;                     // as written: zeros at the end may count
  std::vector<double> values;           // not exact: the nearest doubles
};

// Splits `text` at `delimiter`; empty elements are passed over, blanks (space, tab, CR, LF) around one
// ignored. False with an error text that names the first element that is not a finite decimal number, or a
// number of samples above maximumSamples. ReadDecimal says what a number is.
[[nodiscard]] bool ParseSamples(std::string_view text, std::string_view delimiter, bool reverse,
                                Samples& samples, std::string& error);

// The most decimals that a sample has: exponents resolved, zeros at the end not counted.
int DecimalsNeeded(const Samples& samples);

enum class Reading { Number, NoNumber, TooLarge };

// One element: blanks at either end, a sign, digits, ".", digits, an exponent ("E" or "e", a sign, digits),
// with a digit on at least one side of the ".". Sets `value` to the nearest double where it is a number; one
// below the smallest double is 0, and one beyond the largest is TooLarge.
Reading ReadDecimal(std::string_view element, double& value);

}  // namespace engine

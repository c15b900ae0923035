// Decimal arithmetic of the engine: scaled integers, their conversion to double and to text, and the rounding
// rule.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace engine {

__extension__ using Int128 = __int128;
__extension__ using UInt128 = unsigned __int128;

// 10^27 is the largest power of ten that a long double holds exactly.
inline constexpr int maximumDecimals = 27;

// 10^exponent, exact for 0 to 27 (long double) and 0 to 18 (64 bits).
long double PowerOfTen(int exponent);
std::int64_t IntegerPowerOfTen(int exponent);

// value rounded to `places` decimals (0 to 15), halves away from zero. A half is judged as a person reads it:
// on the value's 15 significant digits (1.005 is a half although its binary fraction is a little less), or,
// where `places` reach beyond those, on the shortest text that reads back the same. Rounding twice changes
// nothing. A value that is not finite comes back as it is.
double RoundToPlaces(double value, int places);

// A rounded value as whole numbers of the last of `places` decimals, as its shortest text says; nothing where
// they have more than 36 digits.
std::optional<Int128> TicksOfRounded(double rounded, int places);

// mantissa / 10^decimals.
struct ScaledInteger {
  std::int64_t mantissa = 0;
  int decimals = 0;
};

// Differences of two mantissas, and twelve times a mantissa in 128 bits, stay in range.
inline constexpr std::int64_t largestMantissa = 4'000'000'000'000'000'000;

// Gives a mantissa `more` further decimals; false, and the mantissa lost, where it gets beyond
// largestMantissa.
inline bool Rescale(std::int64_t& mantissa, int more) {
  if (mantissa == 0) return true;
  return more <= 18 && !__builtin_mul_overflow(mantissa, IntegerPowerOfTen(more), &mantissa) &&
         mantissa <= largestMantissa && mantissa >= -largestMantissa;
}

// The decimal number that the shortest text of `value` says, with at least `leastDecimals` decimals; nothing
// where it needs more than 18 digits or 27 decimals.
std::optional<ScaledInteger> ShortestDecimal(double value, int leastDecimals);

// The decimals of the shortest text of a value, and of its text of 15 digits without zeros at the end: what
// an earlier calculation left in the last digits is nobody's decimals.
int DecimalsOf(double value);
int DecimalsRead(double value);

// What that text says as whole numbers of the last of `decimals` decimals: exactly, or nothing where it needs
// more decimals or more than 36 digits.
std::optional<Int128> WideTicks(double value, int decimals);

// The same, the fraction dropped towards below; where 64 bits do not hold it, the number next to their end.
std::int64_t FloorTicks(double value, int decimals);

// minuend - subtrahend as the shortest texts say, exact where both fit into 128 bits.
long double DecimalDifference(double minuend, double subtrahend);

// The double nearest to sum / (count * 10^decimals).
double QuotientAsDouble(Int128 sum, std::int64_t count, int decimals);

// The higher half of a product.
inline std::uint64_t HighProduct(std::uint64_t a, std::uint64_t b) {
  return static_cast<std::uint64_t>(UInt128{a} * b >> 64);
}

// Numbers sum / (count * 10^decimals) as whole numbers of the last of `places` decimals, halves away from
// zero.
class TickRounder {
 public:
  // maximumSum: no |sum| will be larger.
  TickRounder(std::int64_t count, int decimals, int places, Int128 maximumSum);
  std::int64_t operator()(Int128 sum) const {
    if (!small_) return static_cast<std::int64_t>(Wide(sum));
    const std::int64_t scaled = static_cast<std::int64_t>(sum) * static_cast<std::int64_t>(factor_);
    const auto magnitude = static_cast<std::uint64_t>(scaled < 0 ? -scaled : scaled) + half_;
    const auto ticks = static_cast<std::int64_t>(HighProduct(magnitude << 2, reciprocal_) >> shift_);
    return scaled < 0 ? -ticks : ticks;
  }
  // The same for numbers of any size.
  Int128 Wide(Int128 sum) const;
  Int128 Any(Int128 sum) const { return small_ ? (*this)(sum) : Wide(sum); }

 private:
  Int128 factor_ = 1;
  Int128 divisor_ = 1;
  bool small_ = false;  // all of it fits into 62 bits
  // Then x / divisor_ is x * reciprocal_ / 2^(62 + shift_), exact for every x below 2^62 (T. Granlund, P.
  // Montgomery, Division by Invariant Integers using Multiplication, PLDI 1994, theorem 4.2).
  std::uint64_t half_ = 0;
  std::uint64_t reciprocal_ = 0;
  int shift_ = 0;
};

// The room that WriteFixed may write to, beyond what the number itself takes.
inline constexpr std::size_t fixedRoom = 400;

// Writes ticks / 10^places with exactly `places` decimals (no point for 0) and returns where it ends.
char* WriteFixed(char* out, std::int64_t ticks, int places);
char* WriteFixed(char* out, Int128 ticks, int places);

// Writes a rounded value with exactly `places` decimals; no negative zero.
char* WriteFixed(char* out, double rounded, int places);

}  // namespace engine

#include "engine/Decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "engine/LongTicks.h"

namespace engine {

namespace {

template <class Number, std::size_t count>
constexpr std::array<Number, count> PowersOfTen() {
  std::array<Number, count> powers{};
  powers[0] = 1;
  for (std::size_t i = 1; i < count; ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}

constexpr auto integerPowers = PowersOfTen<std::int64_t, 19>();
constexpr auto longDoublePowers = PowersOfTen<long double, maximumDecimals + 1>();

constexpr std::array<char, 200> DigitPairs() {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}

constexpr auto digitPairs = DigitPairs();

// 1 for 0.
int DigitCount(std::uint64_t number) {
  const auto guess =
      static_cast<int>(std::bit_width(number | 1) * 1233 >> 12);  // log10(2) = 0.30103 = 1233 / 4096
  return guess +
         (guess > 18 || number >= static_cast<std::uint64_t>(integerPowers[static_cast<std::size_t>(guess)]));
}

constexpr double fifteenDigits = 1e15;

// A finite value's digits d1 d2 d3 ... and the power of ten of d1.
struct Digits {
  std::array<char, 20> digit{};
  int count = 0;
  int exponent = 0;
};

Digits DigitsOf(double magnitude, bool shortest) {
  std::array<char, 40> text;
  const auto end = shortest ? std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                            std::chars_format::scientific)
                            : std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                            std::chars_format::scientific, 14);
  Digits result;
  const char* p = text.data();
  for (; p != end.ptr && *p != 'e'; ++p) {
    if (*p != '.') result.digit[static_cast<std::size_t>(result.count++)] = *p;
  }
  ++p;
  if (p < end.ptr && *p == '+') ++p;
  std::from_chars(p, end.ptr, result.exponent);
  return result;
}

// The rounding rule on the digits themselves.
double RoundByDigits(double magnitude, int places) {
  const bool shortest = magnitude * static_cast<double>(IntegerPowerOfTen(places)) >= fifteenDigits;
  Digits digits = DigitsOf(magnitude, shortest);
  const int keep = digits.exponent + 1 + places;
  if (keep < 0) return 0;
  if (keep >= digits.count && shortest) return magnitude;
  const auto kept = static_cast<std::size_t>(std::min(keep, digits.count));
  const bool up = keep < digits.count && digits.digit[kept] >= '5';

  // "0" stands ahead, to take a carry out of the first digit.
  std::string text(1, '0');
  text.append(digits.digit.data(), kept);
  if (up) {
    auto last = text.rbegin();
    while (*last == '9') *last++ = '0';
    ++*last;
  }
  text += 'e';
  text += std::to_string(digits.exponent + 1 - static_cast<int>(kept));
  double result = 0;
  std::from_chars(text.data(), text.data() + text.size(), result);
  return result;
}

}  // namespace

long double PowerOfTen(int exponent) { return longDoublePowers[static_cast<std::size_t>(exponent)]; }

std::int64_t IntegerPowerOfTen(int exponent) { return integerPowers[static_cast<std::size_t>(exponent)]; }

double RoundToPlaces(double value, int places) {
  if (!std::isfinite(value) || value == 0) return value;
  const double magnitude = std::fabs(value);
  const double power = static_cast<double>(IntegerPowerOfTen(places));
  const double scaled = magnitude * power;
  if (scaled < fifteenDigits) {
    // Clear of a half by more than the 15 digits could tell: then the plain way gives the same result.
    const double whole = std::floor(scaled);
    const double fraction = scaled - whole;
    if (std::fabs(fraction - 0.5) > scaled * 1e-14) {
      const double rounded = (fraction > 0.5 ? whole + 1 : whole) / power;
      return std::copysign(rounded, value);
    }
  }
  return std::copysign(RoundByDigits(magnitude, places), value);
}

namespace {

// Whole numbers of less than 15 digits that say the value exactly.
std::optional<std::int64_t> FewTicks(double value, int decimals) {
  if (decimals > 18) return std::nullopt;
  // No two decimals of up to 15 digits have the same nearest double.
  const double power = static_cast<double>(IntegerPowerOfTen(decimals));
  const double ticks = std::nearbyint(value * power);
  if (!(std::fabs(ticks) < fifteenDigits && ticks / power == value)) return std::nullopt;
  return static_cast<std::int64_t>(ticks);
}

}  // namespace

std::optional<ScaledInteger> ShortestDecimal(double value, int leastDecimals) {
  if (!std::isfinite(value)) return std::nullopt;
  if (value == 0) return ScaledInteger{0, leastDecimals};
  if (const auto ticks = FewTicks(value, leastDecimals)) return ScaledInteger{*ticks, leastDecimals};
  const Digits digits = DigitsOf(std::fabs(value), true);
  int decimals = std::max(digits.count - 1 - digits.exponent, leastDecimals);
  if (digits.exponent + 1 + decimals > 18 || decimals > maximumDecimals) return std::nullopt;
  std::int64_t mantissa = 0;
  for (int i = 0; i <= digits.exponent + decimals; ++i) {
    mantissa *= 10;
    if (i < digits.count) mantissa += digits.digit[static_cast<std::size_t>(i)] - '0';
  }
  return ScaledInteger{value < 0 ? -mantissa : mantissa, decimals};
}

std::optional<Int128> TicksOfRounded(double rounded, int places) {
  const double ticks = rounded * static_cast<double>(IntegerPowerOfTen(places));
  if (std::fabs(ticks) < fifteenDigits) return static_cast<std::int64_t>(std::round(ticks));
  return WideTicks(rounded, places);
}

LongTicks LongTicks::OfRounded(double rounded, int places) {
  LongTicks result;
  // Sums of the largest doubles may have no finite mean or limit; they lie beyond every finite number.
  if (rounded == 0 || std::isnan(rounded)) return result;
  const double size = std::min(std::fabs(rounded), std::numeric_limits<double>::max());
  const Digits digits = DigitsOf(size, true);
  for (int i = 0; i < digits.count; ++i) {
    const int power = digits.exponent - i + places;
    if (power < 0) break;
    const std::int64_t digit = digits.digit[static_cast<std::size_t>(i)] - '0';
    result.limbs_[static_cast<std::size_t>(power / digitsOfLimb)] +=
        (rounded < 0 ? -digit : digit) * IntegerPowerOfTen(power % digitsOfLimb);
  }
  return result;
}

namespace {

int DecimalsOfDigits(double value, bool shortest) {
  if (value == 0 || !std::isfinite(value)) return 0;
  // Most numbers that people write have few.
  if (const auto few = ShortestDecimal(value, 4); few && few->decimals == 4) {
    int decimals = 4;
    for (std::int64_t rest = few->mantissa; decimals > 0 && rest % 10 == 0; rest /= 10) --decimals;
    return decimals;
  }
  Digits digits = DigitsOf(std::fabs(value), shortest);
  while (digits.count > 1 && digits.digit[static_cast<std::size_t>(digits.count - 1)] == '0') --digits.count;
  return std::max(digits.count - 1 - digits.exponent, 0);
}

}  // namespace

int DecimalsOf(double value) { return DecimalsOfDigits(value, true); }
int DecimalsRead(double value) { return DecimalsOfDigits(value, false); }

std::int64_t FloorTicks(double value, int decimals) {
  if (const auto ticks = FewTicks(value, decimals)) return *ticks;
  const Digits digits = DigitsOf(std::fabs(value), true);
  const int whole = digits.exponent + 1 + decimals;  // digits before the point, where those are the ticks
  constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max();
  if (whole > 18) return value < 0 ? -last : last;
  std::int64_t ticks = 0;
  for (int i = 0; i < whole; ++i) {
    ticks = ticks * 10 + (i < digits.count ? digits.digit[static_cast<std::size_t>(i)] - '0' : 0);
  }
  if (value > 0) return ticks;
  return digits.count > whole ? -ticks - 1 : -ticks;
}

std::optional<Int128> WideTicks(double value, int decimals) {
  if (const auto ticks = FewTicks(value, decimals)) return *ticks;
  const Digits digits = DigitsOf(std::fabs(value), true);
  const int whole = digits.exponent + 1 + decimals;
  if (whole > 36 || digits.count > whole) return std::nullopt;
  Int128 ticks = 0;
  for (int i = 0; i < whole; ++i) {
    ticks = ticks * 10 + (i < digits.count ? digits.digit[static_cast<std::size_t>(i)] - '0' : 0);
  }
  return value < 0 ? -ticks : ticks;
}

long double DecimalDifference(double minuend, double subtrahend) {
  constexpr int usual = 4;
  const auto few = FewTicks(minuend, usual);
  const auto fewLess = FewTicks(subtrahend, usual);
  if (few && fewLess) return static_cast<long double>(*few - *fewLess) / PowerOfTen(usual);
  const int decimals = std::max(DecimalsOf(minuend), DecimalsOf(subtrahend));
  if (decimals <= maximumDecimals) {
    const auto from = WideTicks(minuend, decimals);
    const auto what = WideTicks(subtrahend, decimals);
    if (from && what) return static_cast<long double>(*from - *what) / PowerOfTen(decimals);
  }
  return static_cast<long double>(minuend) - static_cast<long double>(subtrahend);
}

double QuotientAsDouble(Int128 sum, std::int64_t count, int decimals) {
  constexpr Int128 fewDigits = 1'000'000'000'000'000;
  if (count == 1 && decimals <= 15 && sum < fewDigits && sum > -fewDigits)
    return static_cast<double>(static_cast<std::int64_t>(sum)) /
           static_cast<double>(IntegerPowerOfTen(decimals));
  const auto magnitude = static_cast<UInt128>(sum < 0 ? -sum : sum);
  auto divisor = static_cast<UInt128>(count);
  for (int rest = decimals; rest > 0; rest -= 18)
    divisor *= static_cast<UInt128>(IntegerPowerOfTen(std::min(rest, 18)));
  constexpr UInt128 exactInDouble = UInt128{1} << 53;
  if (magnitude == 0) return 0;
  if (magnitude <= exactInDouble && divisor <= exactInDouble) {
    const double quotient = static_cast<double>(magnitude) / static_cast<double>(divisor);
    return sum < 0 ? -quotient : quotient;
  }
  // Long division to more bits than a double has; what is left over makes the last of them 1.
  UInt128 quotient = magnitude / divisor;
  UInt128 rest = magnitude % divisor;
  int exponent = 0;
  for (; quotient >> 60 == 0; --exponent) {
    rest <<= 1;
    quotient = quotient << 1 | (rest >= divisor ? 1 : 0);
    if (rest >= divisor) rest -= divisor;
  }
  bool isInexact = rest != 0;
  for (; quotient >> 63 != 0; ++exponent) {
    isInexact = isInexact || (quotient & 1) != 0;
    quotient >>= 1;
  }
  const auto bits = static_cast<std::int64_t>(quotient) | (isInexact ? 1 : 0);
  const double result = std::ldexp(static_cast<double>(bits), exponent);
  return sum < 0 ? -result : result;
}

TickRounder::TickRounder(std::int64_t count, int decimals, int places, Int128 maximumSum) : divisor_(count) {
  if (places >= decimals) {
    factor_ = IntegerPowerOfTen(places - decimals);
  } else {
    for (int i = places; i < decimals; ++i) divisor_ *= 10;
  }
  constexpr Int128 room = Int128{1} << 61;
  small_ = maximumSum < room && divisor_ < room && maximumSum * factor_ < room;
  if (!small_) return;
  const auto divisor = static_cast<std::uint64_t>(divisor_);
  half_ = divisor / 2;
  shift_ = static_cast<int>(std::bit_width(divisor - 1));
  reciprocal_ = static_cast<std::uint64_t>(((UInt128{1} << (62 + shift_)) - 1) / divisor + 1);
}

Int128 TickRounder::Wide(Int128 sum) const {
  const Int128 scaled = sum * factor_;
  const Int128 half = divisor_ / 2;
  return (scaled < 0 ? scaled - half : scaled + half) / divisor_;
}

namespace {

// A number below 10^8 as eight characters, the first in the lowest byte. Fours, pairs and digits are split
// together, each the higher part of its half: x becomes x / 100 + (x % 100 << 16), with a multiplication for
// the division.
std::uint64_t EightDigits(std::uint32_t number) {
  const std::uint64_t fours = number / 10'000 + (std::uint64_t{number % 10'000} << 32);
  const std::uint64_t hundreds = (fours * 10'486 >> 20) & 0x0000007F'0000007F;
  const std::uint64_t pairs = (fours << 16) - hundreds * ((100 << 16) - 1);
  const std::uint64_t tens = (pairs * 103 >> 10) & 0x000F000F'000F000F;
  return 0x3030'3030'3030'3030 + (pairs << 8) - tens * ((10 << 8) - 1);
}

void StoreEight(char* out, std::uint64_t text) {
  static_assert(std::endian::native == std::endian::little);
  std::memcpy(out, &text, sizeof text);
}

// The usual number: below 10^8, with at most seven decimals. `count`: its digits.
char* WriteEight(char* out, std::uint32_t number, int count, int places) {
  const std::uint64_t digits = EightDigits(number);
  StoreEight(out, digits >> 8 * (8 - count));
  if (places == 0) return out + count;
  StoreEight(out + count - places, digits >> 8 * (8 - places) << 8 | '.');
  return out + count + 1;
}

}  // namespace

char* WriteFixed(char* out, std::int64_t ticks, int places) {
  auto rest = static_cast<std::uint64_t>(ticks);
  if (ticks < 0) {
    *out++ = '-';
    rest = 0 - rest;
  }
  // At least one digit stands before the point.
  const int count = std::max(DigitCount(rest), places + 1);
  if (count <= 8) return WriteEight(out, static_cast<std::uint32_t>(rest), count, places);
  char* const end = out + count + (places > 0 ? 1 : 0);
  char* p = end;
  auto pair = [&] {
    p -= 2;
    std::memcpy(p, &digitPairs[rest % 100 * 2], 2);
    rest /= 100;
  };
  auto digit = [&] {
    *--p = static_cast<char>('0' + rest % 10);
    rest /= 10;
  };
  for (int i = places; i >= 2; i -= 2) pair();
  if (places % 2 == 1) digit();
  if (places > 0) *--p = '.';
  while (p - out >= 2) pair();
  if (p != out) digit();
  return end;
}

char* WriteFixed(char* out, Int128 ticks, int places) {
  constexpr int lowDigits = 18;
  const Int128 split = IntegerPowerOfTen(lowDigits);
  if (ticks < 0) {
    *out++ = '-';
    ticks = -ticks;
  }
  if (ticks < split) return WriteFixed(out, static_cast<std::int64_t>(ticks), places);
  out = WriteFixed(out, static_cast<std::int64_t>(ticks / split), 0);
  auto low = static_cast<std::int64_t>(ticks % split);
  char* const end = out + lowDigits + (places > 0 ? 1 : 0);
  for (char* p = end; p != out; low /= 10) {
    *--p = static_cast<char>('0' + low % 10);
    if (places > 0 && end - p == places) *--p = '.';
  }
  return end;
}

char* WriteFixed(char* out, double rounded, int places) {
  return std::to_chars(out, out + fixedRoom, rounded == 0 ? 0.0 : rounded, std::chars_format::fixed, places)
      .ptr;
}

}  // namespace engine

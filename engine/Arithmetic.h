// The two ways of calculating with samples: exactly on scaled integers, or on doubles with compensated sums.
// The engine's formulas are written once, for either.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <type_traits>

#include "engine/Decimal.h"

namespace engine {

// Up to here three times the distance of two numbers stays in 64 bits, and so does the sum of a subgroup.
inline constexpr std::int64_t largestNarrow = 400'000'000'000'000'000;

// A number that none of the numbers exceeds, whatever its sign, and itself less than twice the largest.
template <class Integer>
Integer Largest(std::span<const Integer> numbers) {
  Integer bits = 0;
  for (const Integer number : numbers) bits |= number < 0 ? -number : number;
  return bits;
}

inline double Largest(std::span<const double> numbers) {
  double largest = 0;
  for (const double number : numbers) largest = std::max(largest, std::fabs(number));
  return largest;
}

// Samples as scaled integers: every sum is exact. Points are whole numbers of the last shown decimal, in 64
// bits where samples and points stay within largestNarrow, else in 128.
template <class PointType>
struct ExactArithmetic {
  using Value = std::int64_t;
  using Point = PointType;
  using SubGroupSum = PointType;
  using Sum = Int128;

  std::span<const Value> samples;
  int decimals;
  int places;
  Value largest;  // no |sample| is larger

  auto MakeRounder(int count, Value largestValue) const {
    return [round = TickRounder(count, decimals, places, Int128{largestValue} * count)](SubGroupSum sum) {
      if constexpr (std::is_same_v<Point, std::int64_t>) {
        return round(sum);
      } else {
        return round.Wide(sum);
      }
    };
  }
  long double Quotient(Sum sum, std::int64_t count) const {
    return static_cast<long double>(sum) / (static_cast<long double>(count) * PowerOfTen(decimals));
  }

  double Nearest(Sum sum, std::int64_t count) const { return QuotientAsDouble(sum, count, decimals); }

  // How many samples lie outside two limits.
  int CountOutside(double lower, double upper, Value minimum, Value maximum) const {
    const Value last = FloorTicks(upper, decimals);     // of those not above the upper limit
    const Value first = -FloorTicks(-lower, decimals);  // of those not below the lower
    if (minimum >= first && maximum <= last) return 0;
    return static_cast<int>(std::count_if(samples.begin(), samples.end(),
                                          [=](Value sample) { return sample < first || sample > last; }));
  }

  // limit - sum / count, exact as long as the limit is a decimal that fits.
  long double Distance(double limit, Sum sum, std::int64_t count) const {
    constexpr int mostMore = 12;
    const std::optional<ScaledInteger> exact = ShortestDecimal(limit, decimals);
    if (!exact || exact->decimals - decimals > mostMore) return limit - Quotient(sum, count);
    const Int128 scaled = sum * IntegerPowerOfTen(exact->decimals - decimals);
    return static_cast<long double>(Int128{exact->mantissa} * count - scaled) /
           (static_cast<long double>(count) * PowerOfTen(exact->decimals));
  }

  // n * sum of d^2 - (sum of d)^2 with d the distance to the smallest sample, so that it stays in 128 bits.
  long double StandardDeviation(Value smallest, Value width) const {
    const auto count = static_cast<std::int64_t>(samples.size());
    long double scatter = 0;  // count * (squared deviations from the mean)
    if (width < (std::int64_t{1} << 23)) {
      // The compiler makes several of these unsigned products of 32 bits at a time.
      std::uint64_t sum = 0;
      std::uint64_t squares = 0;
      for (const Value sample : samples) {
        const auto d = static_cast<std::uint32_t>(sample - smallest);
        sum += d;
        squares += std::uint64_t{d} * d;
      }
      scatter = static_cast<long double>(Int128{squares} * count - Int128{sum} * sum);
    } else if (width <= std::numeric_limits<std::int64_t>::max() / count) {
      Int128 sum = 0;
      Int128 squares = 0;
      for (const Value sample : samples) {
        const Int128 d = sample - smallest;
        sum += d;
        squares += d * d;
      }
      scatter = static_cast<long double>(squares * count - sum * sum);
    } else {
      // Too wide for exact squares: exact deviations from the mean, squared in extended precision.
      Int128 sum = 0;
      for (const Value sample : samples) sum += sample;
      for (const Value sample : samples) {
        const auto deviation = static_cast<long double>(Int128{sample} * count - sum);
        scatter += deviation * deviation / static_cast<long double>(count);
      }
    }
    return std::sqrt(scatter / (static_cast<long double>(count) * static_cast<long double>(count - 1))) /
           PowerOfTen(decimals);
  }
};

// A sum that carries what each addition loses (A. Neumaier, ZAMM 54, 1974).
struct CompensatedSum {
  long double high = 0;
  long double low = 0;
  CompensatedSum(long double value = 0) : high(value) {}
  CompensatedSum& operator+=(const CompensatedSum& other) {
    const long double sum = high + other.high;
    low += std::fabs(high) >= std::fabs(other.high) ? (high - sum) + other.high : (other.high - sum) + high;
    low += other.low;
    high = sum;
    return *this;
  }
};

// Samples as doubles, for exponents that lie too far apart.
struct CompensatedArithmetic {
  using Value = double;
  using Point = double;
  using SubGroupSum = CompensatedSum;
  using Sum = CompensatedSum;
  struct Rounder {
    int count;
    int places;
    double operator()(const Sum& sum) const {
      return RoundToPlaces(static_cast<double>((sum.high + sum.low) / count), places);
    }
  };

  std::span<const Value> samples;
  int places;
  Value largest;  // no |sample| is larger

  Rounder MakeRounder(int count, Value) const { return {count, places}; }
  long double Quotient(const Sum& sum, std::int64_t count) const {
    return (sum.high + sum.low) / static_cast<long double>(count);
  }

  double Nearest(const Sum& sum, std::int64_t count) const {
    return static_cast<double>(Quotient(sum, count));
  }

  int CountOutside(double lower, double upper, Value, Value) const {
    return static_cast<int>(std::count_if(samples.begin(), samples.end(),
                                          [=](Value sample) { return sample < lower || sample > upper; }));
  }

  long double Distance(double limit, const Sum& sum, std::int64_t count) const {
    return limit - Quotient(sum, count);
  }

  long double StandardDeviation(Value, Value) const {
    Sum sum;
    for (const Value sample : samples) sum += sample;
    const long double mean = Quotient(sum, static_cast<std::int64_t>(samples.size()));
    Sum squares;
    Sum rest;  // of the rounding of the mean
    for (const Value sample : samples) {
      const long double deviation = sample - mean;
      squares += deviation * deviation;
      rest += deviation;
    }
    const auto count = static_cast<long double>(samples.size());
    const long double correction = (rest.high + rest.low) * (rest.high + rest.low) / count;
    return std::sqrt(std::max((squares.high + squares.low - correction) / (count - 1), 0.0L));
  }
};

}  // namespace engine

// The two ways of calculating with samples: exactly on scaled integers, or on doubles with compensated sums.
// The engine's formulas are written once, for either.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

#include "engine/Decimal.h"

namespace engine {

// Samples as scaled integers: every sum is exact.
struct ExactArithmetic {
  using Value = std::int64_t;
  using Sum = Int128;
  using Rounder = TickRounder;

  std::span<const Value> samples;
  int decimals;
  int places;

  Rounder MakeRounder(int count, Value largest) const {
    return Rounder(count, decimals, places, Int128{largest} * count);
  }
  long double Quotient(Sum sum, std::int64_t count) const {
    return static_cast<long double>(sum) / (static_cast<long double>(count) * PowerOfTen(decimals));
  }

  // n * sum of d^2 - (sum of d)^2 with d the distance to the first sample, so that it stays in 128 bits.
  long double StandardDeviation(Value minimum, Value maximum) const {
    const auto count = static_cast<std::int64_t>(samples.size());
    const Value width = maximum - minimum;
    const Value pivot = samples.front();
    long double scatter;  // count * (squared deviations from the mean)
    if (width < (std::int64_t{1} << 23)) {
      std::int64_t sum = 0;
      std::int64_t squares = 0;
      for (const Value sample : samples) {
        const Value d = sample - pivot;
        sum += d;
        squares += d * d;
      }
      scatter = static_cast<long double>(Int128{squares} * count - Int128{sum} * sum);
    } else if (width <= std::numeric_limits<std::int64_t>::max() / count) {
      Int128 sum = 0;
      Int128 squares = 0;
      for (const Value sample : samples) {
        const Int128 d = sample - pivot;
        sum += d;
        squares += d * d;
      }
      scatter = static_cast<long double>(squares * count - sum * sum);
    } else {
      // Too wide for exact squares: exact deviations from the mean, squared in extended precision.
      Int128 sum = 0;
      for (const Value sample : samples) sum += sample;
      scatter = 0;
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

  Rounder MakeRounder(int count, Value) const { return {count, places}; }
  long double Quotient(const Sum& sum, std::int64_t count) const {
    return (sum.high + sum.low) / static_cast<long double>(count);
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

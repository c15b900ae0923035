// Whole numbers of the last shown decimal, whatever their size: up to the largest double with 15 decimals.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "engine/Decimal.h"

namespace engine {

// Only what the detection rules do with a number. Each limb may have either sign, so that nothing is carried
// before a comparison.
class LongTicks {
 public:
  LongTicks() = default;
  LongTicks(int ticks) { limbs_[0] = ticks; }

  // Of a value rounded to `places` decimals, as its shortest text says.
  static LongTicks OfRounded(double rounded, int places);

  LongTicks operator-(const LongTicks& other) const {
    LongTicks result = *this;
    for (std::size_t i = 0; i < limbs_.size(); ++i) result.limbs_[i] -= other.limbs_[i];
    return result;
  }
  friend LongTicks operator*(int factor, LongTicks ticks) {
    for (std::int64_t& limb : ticks.limbs_) limb *= factor;
    return ticks;
  }
  bool operator>(const LongTicks& other) const { return (*this - other).Sign() > 0; }
  bool operator<(const LongTicks& other) const { return other > *this; }

 private:
  static constexpr std::int64_t base = 1'000'000'000;
  static constexpr int digitsOfLimb = 9;

  int Sign() const {
    std::int64_t carry = 0;
    bool isZero = true;
    for (const std::int64_t limb : limbs_) {
      const std::int64_t sum = limb + carry;
      carry = sum / base - (sum % base < 0 ? 1 : 0);  // rounded down: what stays is not negative
      isZero = isZero && sum - carry * base == 0;
    }
    return carry < 0 ? -1 : isZero ? 0 : 1;
  }

  std::array<std::int64_t, 37> limbs_{};  // the lowest first: 309 + 15 digits, and room for a carry
};

}  // namespace engine

// What the benchmarks share: made-up data, and the bare pass that they are measured against.
#pragma once

#include <string>

namespace Bench {

// `count` values around 12.5 with four decimals, each followed by a comma; another seed gives other values.
std::string Values(int count, unsigned seed);

// One std::from_chars over every value of the text; the sum keeps it from being optimised away.
double BarePass(const std::string& text);

// The load's peak of memory over what the process held before, in bytes, and the bytes of the values' text.
struct MemoryUse {
  double peak = 0;
  double text = 0;
};
MemoryUse MeasureLoad();

}  // namespace Bench

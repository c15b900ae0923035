// The made-up data of the benchmarks, and the bare pass over it.
#include <charconv>
#include <random>

#include "bench/Bench.h"

namespace Bench {

std::string Values(int count, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal(12.5, 0.02);
  std::string text;
  char buffer[40];
  for (int i = 0; i < count; ++i) {
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, normal(random), std::chars_format::fixed, 4);
    text.append(buffer, end.ptr);
    text += ',';
  }
  return text;
}

double BarePass(const std::string& text) {
  double sum = 0;
  const char* p = text.data();
  const char* const end = p + text.size();
  while (p < end) {
    double value = 0;
    p = std::from_chars(p, end, value).ptr + 1;
    sum += value;
  }
  return sum;
}

}  // namespace Bench

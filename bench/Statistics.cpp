// CreateStatistics on one data set against the bare pass over its text.
#include <benchmark/benchmark.h>

#include <charconv>
#include <random>

#include "bench/Bench.h"
#include "core/CreateStatistics.h"

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

namespace {

void BarePass(benchmark::State& state) {
  const std::string text = Bench::Values(500, 1);
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(Bench::BarePass(text));
}
BENCHMARK(BarePass)->Repetitions(9);

void CreateStatistics(benchmark::State& state) {
  CData data;
  data.SetDelimitedInputString(QString::fromStdString(Bench::Values(500, 1)));
  data.SetSubGroupSize(5);
  data.SetUpperSpecLimit(12.6);
  data.SetLowerSpecLimit(12.4);
  for ([[maybe_unused]] auto _ : state) {
    QCGlobalFunctions::ClearControlLimits(data);
    if (!QCGlobalFunctions::CreateStatistics(data)) state.SkipWithError("refused");
  }
}
BENCHMARK(CreateStatistics)->Repetitions(9);

}  // namespace

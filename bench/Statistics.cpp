// CreateStatistics on one data set against the bare pass over its text.
#include <benchmark/benchmark.h>

#include "bench/Bench.h"
#include "core/CreateStatistics.h"

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

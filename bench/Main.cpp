// Measures, each against a baseline in the same run:
// - CreateStatistics on 500 values in subgroups of 5, texts in and out, against a bare std::from_chars pass
// - loading a library of 5,000 such data sets against reading its rows and that bare pass
// - taking such a library over from an Access file against copying its rows from one library into another,
// and
//   one of 300,000 data sets of 6 values against the database's own copying
// - painting the page of 32,767 points into an image of 1600 by 1000, in milliseconds
// - with --memory: the peak memory of that load against the bytes of the values' text
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cstdio>
#include <map>
#include <string_view>

#include "bench/Bench.h"
#include "platform/system/Memory.h"

namespace {

// Keeps the fastest of each benchmark's repetitions: what a busy machine adds is never negative. Processor
// time counts, not the clock.
class Reporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const double seconds = run.cpu_accumulated_time / static_cast<double>(run.iterations);
      auto [entry, isNew] = fastest_.try_emplace(run.run_name.function_name, seconds);
      if (!isNew) entry->second = std::min(entry->second, seconds);
    }
  }

  void Ratio(const char* what, const char* measured, const char* baseline) const {
    if (fastest_.contains(measured) && fastest_.contains(baseline)) {
      std::printf("%-42s %6.2f\n", what, fastest_.at(measured) / fastest_.at(baseline));
    }
  }

 private:
  std::map<std::string, double> fastest_;
};

}  // namespace

int main(int argc, char** argv) {
  TakeMemoryInLargeSteps();  // as the program does
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  if (argc > 1 && std::string_view(argv[1]) == "--memory") {
    const Bench::MemoryUse use = Bench::MeasureLoad();
    std::printf("%-42s %6.2f  (%.1f MB for %.1f MB of text)\n", "peak memory of the load / text",
                use.peak / use.text, use.peak / 1e6, use.text / 1e6);
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n");
  reporter.Ratio("CreateStatistics / bare pass", "CreateStatistics", "BarePass");
  reporter.Ratio("library load / rows and bare pass", "LoadLibrary", "ReadRowsAndBarePass");
  reporter.Ratio("convert / copying its rows", "ConvertLibrary", "CopyRows");
  reporter.Ratio("many short rows / the database's copying", "ConvertShortRows", "CopyShortRows");
  return 0;
}

// Painting the page of the largest data set.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include "bench/Bench.h"
#include "charts/StatPage.h"
#include "data/Statistics.h"

namespace {

CData LargestDataSet() {
  CData data;
  data.SetDescription(QStringLiteral("LARGEST"));
  data.SetDelimitedInputString(QString::fromStdString(Bench::Values(32767, 1)));
  data.SetUpperSpecLimit(12.6);
  data.SetLowerSpecLimit(12.4);
  data.SetSensitivityValue(2);
  QCGlobalFunctions::CalculateStatistics(data);
  return data;
}

// With 1 on the fitted scale, with every point marked.
void PaintPage(benchmark::State& state) {
  const bool isMarked = state.range(0) == 1;
  CData data = LargestDataSet();
  if (isMarked) {
    data.SetXBarLCL(12.0);
    data.SetXBarMean(12.05);
    data.SetXBarUCL(12.1);
    data.SetRBarMean(1e-4);
    data.SetRBarUCL(2e-4);
    QCGlobalFunctions::CalculateStatistics(data);
  }
  const StatPage page(data, {.fittedScale = isMarked});
  QImage image(1600, 1000, QImage::Format_ARGB32_Premultiplied);
  for ([[maybe_unused]] auto _ : state) {
    image.fill(Qt::white);
    QPainter painter(&image);
    page.Paint(painter, image.rect());
  }
}
BENCHMARK(PaintPage)->DenseRange(0, 1)->Unit(benchmark::kMillisecond)->Repetitions(7);

void RecordPage(benchmark::State& state) {
  const CData data = LargestDataSet();
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(StatPage(data, {}));
}
BENCHMARK(RecordPage)->Unit(benchmark::kMillisecond)->Repetitions(5);

}  // namespace

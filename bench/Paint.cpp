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

void PaintPage(benchmark::State& state) {
  const StatPage page(LargestDataSet(), {});
  QImage image(1600, 1000, QImage::Format_ARGB32_Premultiplied);
  for ([[maybe_unused]] auto _ : state) {
    image.fill(Qt::white);
    QPainter painter(&image);
    page.Paint(painter, image.rect());
  }
}
BENCHMARK(PaintPage)->Unit(benchmark::kMillisecond)->Repetitions(7);

void RecordPage(benchmark::State& state) {
  const CData data = LargestDataSet();
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(StatPage(data, {}));
}
BENCHMARK(RecordPage)->Unit(benchmark::kMillisecond)->Repetitions(5);

}  // namespace

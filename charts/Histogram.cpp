#include "charts/Histogram.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "charts/ControlChart.h"
#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

using Direction = ChartGraph::Direction;

// Where a measured value lies along the bins.
double BinPosition(const CData& data, double value) {
  const double low = data.HistoLoScaleValue();
  const double width = data.HistoHiScaleValue() - low;
  return width > 0 ? (value - low) / width * HistogramBins : HistogramBins / 2.0;
}

// The counts that a normal distribution with the samples' mean and spread would give: of N samples in bins of
// width w, N w / (s sqrt(2 pi)) exp(-(x - mean)^2 / (2 s^2)).
void DrawNormalCurve(ChartGraph& graph, const CData& data, double samples) {
  constexpr int steps = 120;
  const double low = data.HistoLoScaleValue();
  const double width = data.HistoHiScaleValue() - low;
  const double sigma = data.Capability().sigmaOverall;
  if (!(sigma > 0 && width > 0)) return;
  std::vector<double> positions, values;
  for (int i = 0; i <= steps; ++i) {
    const double away = (low + width * i / steps - data.Capability().mean) / sigma;
    positions.push_back(double(HistogramBins) * i / steps);
    values.push_back(samples * width / HistogramBins / sigma * std::numbers::inv_sqrtpi /
                     std::numbers::sqrt2 * std::exp(-away * away / 2));
  }
  graph.WGDefineDataSetVB(u" NormalX Data Set"_s, std::move(positions));
  graph.WGDefineDataSetVB(u" Normal Data Set"_s, std::move(values));
  graph.Draw(ChartGraph::Outline{u" NormalX Data Set"_s, u" Normal Data Set"_s, Palette::Teal});
}

void DrawSpecification(ChartGraph& graph, const CData& data) {
  const ChartGraph::LineStyle limit{2, 0, Palette::Red};
  graph.Draw(ChartGraph::Level{Direction::Vertical, u" LL Data Set"_s, limit});
  graph.Draw(ChartGraph::Level{Direction::Vertical, u" UL Data Set"_s, limit});
  graph.Draw(ChartGraph::Level{Direction::Vertical, u" Nominal Data Set"_s, {0, 0, Palette::Black}});
  const auto label = [&](const QString& name, double value) {
    return ChartGraph::LineLabel{BinPosition(data, value), name, Conversions::CStr(value)};
  };
  graph.Draw(ChartGraph::LineLabels{Direction::Vertical,
                                    {label(Words::Figure::lsl(), data.LowerSpecLimit()),
                                     label(Words::Figure::nominal(), data.NominalSpecLimit()),
                                     label(Words::Figure::usl(), data.UpperSpecLimit())},
                                    {Palette::Black, 16, 4, 0}});
}

}  // namespace

Specification SpecificationOf(const CData& data) {
  using enum Specification;
  const double lower = data.LowerSpecLimit(), upper = data.UpperSpecLimit();
  if (lower == 0 && upper == 0 && data.NominalSpecLimit() == 0) return None;
  return upper > lower ? Given : Reversed;
}

int CountTickSpacing(double largest) {
  if (largest >= 0 && largest <= 100) return 10;
  if (largest >= 101 && largest <= 200) return 20;
  if (largest >= 201 && largest <= 300) return 40;
  return 50;
}

void DrawHistogramGraph(ChartGraph& graph, const CData& data, const engine::Results& results) {
  const std::vector<double> counts(results.histogramCounts.begin(), results.histogramCounts.end());
  QStringList labels;
  for (const double start : results.histogramBinStarts)
    labels.append(QString::number(start, 'f', results.xBarSeries.decimals));
  const auto atEnds = [&](double value) { return std::vector<double>(2, BinPosition(data, value)); };
  graph.WGDefineDataSetVB(u" Histogram"_s, counts);
  graph.WGDefineDataSetVB(u" LL Data Set"_s, atEnds(data.LowerSpecLimit()));
  graph.WGDefineDataSetVB(u" UL Data Set"_s, atEnds(data.UpperSpecLimit()));
  graph.WGDefineDataSetVB(u" UCL Data Set"_s, atEnds(data.XBarUCL()));
  graph.WGDefineDataSetVB(u" LCL Data Set"_s, atEnds(data.XBarLCL()));
  graph.WGDefineDataSetVB(u" Nominal Data Set"_s, atEnds(data.NominalSpecLimit()));

  const double largest = *std::max_element(counts.begin(), counts.end());
  const int spacing = CountTickSpacing(largest);
  const double top = std::max(1.0, std::ceil(largest / spacing)) * spacing;
  graph.SetPlotArea(0.15, 0.1, 0.9, 0.8);
  graph.ScalePlotArea(0, 0, HistogramBins, top);

  const ChartGraph::TextParameters small{Palette::Black, 16, 4, 0};
  const ChartGraph::TextParameters normal{Palette::Black, 16, 6, 0};
  const QString unit = data.UnitOfMeasurement();
  graph.Draw(
      ChartGraph::Axis{Direction::Vertical, double(spacing), {}, {}, normal, Words::Figure::count(), normal});
  graph.WGLabelAxisStringsVB(labels, 1, small, unit.isEmpty() ? data.Description() : unit, normal);
  graph.WGBargraph(u" Histogram"_s, 0.9, Palette::Teal, Palette::Black);
  DrawNormalCurve(graph, data, std::accumulate(counts.begin(), counts.end(), 0.0));
  if (SpecificationOf(data) != Specification::None) DrawSpecification(graph, data);
  graph.Title(Words::Page::histogram(), {Palette::Black, 16, 8, 0});
}

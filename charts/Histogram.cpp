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

// The counts that a normal distribution with the samples' mean and spread would give, at even steps along the
// bins: of N samples in bins of width w, N w / (s sqrt(2 pi)) exp(-(x - mean)^2 / (2 s^2)). Empty where that
// would be no more than a spike between two bins.
std::vector<double> NormalCounts(const CData& data, double samples) {
  constexpr int steps = 120;
  const double low = data.HistoLoScaleValue();
  const double width = data.HistoHiScaleValue() - low;
  const double sigma = data.Capability().sigmaOverall;
  if (!(width > 0 && sigma >= width / HistogramBins / 2)) return {};
  std::vector<double> counts;
  for (int i = 0; i <= steps; ++i) {
    const double away = (low + width * i / steps - data.Capability().mean) / sigma;
    counts.push_back(samples * width / HistogramBins / sigma * std::numbers::inv_sqrtpi /
                     std::numbers::sqrt2 * std::exp(-away * away / 2));
  }
  return counts;
}

void DrawNormalCurve(ChartGraph& graph, std::vector<double> counts) {
  std::vector<double> positions;
  for (size_t i = 0; i < counts.size(); ++i)
    positions.push_back(double(HistogramBins) * double(i) / double(counts.size() - 1));
  graph.WGDefineDataSetVB(u" NormalX Data Set"_s, std::move(positions));
  graph.WGDefineDataSetVB(u" Normal Data Set"_s, std::move(counts));
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
  const QStringList labels =
      QString::fromStdString(results.histogramLabelsOutputString).split(data.StringDelimiter());
  const auto atEnds = [&](double value) { return std::vector<double>(2, BinPosition(data, value)); };
  graph.WGDefineDataSetVB(u" Histogram"_s, counts);
  graph.WGDefineDataSetVB(u" LL Data Set"_s, atEnds(data.LowerSpecLimit()));
  graph.WGDefineDataSetVB(u" UL Data Set"_s, atEnds(data.UpperSpecLimit()));
  graph.WGDefineDataSetVB(u" UCL Data Set"_s, atEnds(data.XBarUCL()));
  graph.WGDefineDataSetVB(u" LCL Data Set"_s, atEnds(data.XBarLCL()));
  graph.WGDefineDataSetVB(u" Nominal Data Set"_s, atEnds(data.NominalSpecLimit()));

  const double largest = *std::max_element(counts.begin(), counts.end());
  const int spacing = CountTickSpacing(largest);
  const std::vector<double> normal = NormalCounts(data, std::accumulate(counts.begin(), counts.end(), 0.0));
  const double peak = normal.empty() ? 0 : *std::max_element(normal.begin(), normal.end());
  const double top = std::max(1.0, std::ceil(std::max(largest, peak) / spacing)) * spacing;
  graph.SetPlotArea(0.15, 0.1, 0.9, 0.8);
  graph.ScalePlotArea(0, 0, HistogramBins, top);

  const ChartGraph::TextParameters small{Palette::Black, 16, 4, 0};
  const ChartGraph::TextParameters usual{Palette::Black, 16, 6, 0};
  const QString unit = data.UnitOfMeasurement();
  graph.Draw(
      ChartGraph::Axis{Direction::Vertical, double(spacing), {}, {}, usual, Words::Figure::count(), usual});
  graph.WGLabelAxisStringsVB(labels, 1, small, unit.isEmpty() ? data.Description() : unit, usual);
  graph.WGBargraph(u" Histogram"_s, 0.9, Palette::Teal, Palette::Black);
  if (!normal.empty()) DrawNormalCurve(graph, normal);
  if (SpecificationOf(data) != Specification::None) DrawSpecification(graph, data);
  graph.Title(Words::Page::histogram(), {Palette::Black, 16, 8, 0});
}

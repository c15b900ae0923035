#include "charts/Histogram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

#include "charts/ControlChart.h"
#include "data/Statistics.h"
#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

using Direction = ChartGraph::Direction;

// Where a measured value lies along the bins between these ends.
double BinPosition(double low, double high, double value) {
  return high > low ? (value - low) / (high - low) * HistogramBins : HistogramBins / 2.0;
}
double BinPosition(const CData& data, double value) {
  return BinPosition(data.HistoLoScaleValue(), data.HistoHiScaleValue(), value);
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

void DrawSpecification(ChartGraph& graph, const CData& data, bool namesNominal) {
  const ChartGraph::LineStyle limit{2, 0, Palette::Red};
  graph.Draw(ChartGraph::Level{Direction::Vertical, u" LL Data Set"_s, limit});
  graph.Draw(ChartGraph::Level{Direction::Vertical, u" UL Data Set"_s, limit});
  graph.Draw(ChartGraph::Level{Direction::Vertical, u" Nominal Data Set"_s, {0, 0, Palette::Black}});
  const auto label = [&](const QString& name, double value) {
    return ChartGraph::LineLabel{BinPosition(data, value), name, Conversions::CStr(value)};
  };
  std::vector<ChartGraph::LineLabel> labels{label(Words::Figure::lsl(), data.LowerSpecLimit())};
  if (namesNominal) labels.push_back(label(Words::Figure::nominal(), data.NominalSpecLimit()));
  labels.push_back(label(Words::Figure::usl(), data.UpperSpecLimit()));
  graph.Draw(ChartGraph::LineLabels{Direction::Vertical, std::move(labels), {Palette::Black, 16, 4, 0}});
}

// The same specification limits for both give both the same bins: those from the lowest to the highest value
// that one of them has or allows.
std::array<engine::Results, 2> OnOneScale(const CData& one, const CData& other) {
  std::array copies{one, other};
  double low = std::min(one.MinValue(), other.MinValue());
  double high = std::max(one.MaxValue(), other.MaxValue());
  for (CData& data : copies) {
    if (SpecificationOf(data) == Specification::Given) {
      low = std::min(low, data.LowerSpecLimit());
      high = std::max(high, data.UpperSpecLimit());
    }
    data.SetPrecisionValue(std::max(one.PrecisionValue(), other.PrecisionValue()));
  }
  for (CData& data : copies) {
    data.SetLowerSpecLimit(low);
    data.SetUpperSpecLimit(high);
  }
  return {QCGlobalFunctions::ResultsOf(copies[0]), QCGlobalFunctions::ResultsOf(copies[1])};
}

std::vector<double> Percentages(const engine::Results& results) {
  std::vector<double> parts;
  for (const int count : results.histogramCounts)
    parts.push_back(100.0 * count / std::max(1, results.sampleQty));
  return parts;
}

// Up and down at the ends of the bins.
void DrawStairs(ChartGraph& graph, const std::vector<double>& heights) {
  std::vector<double> positions{0}, values{0};
  for (size_t bin = 0; bin < heights.size(); ++bin) {
    positions.insert(positions.end(), {double(bin), double(bin + 1)});
    values.insert(values.end(), {heights[bin], heights[bin]});
  }
  positions.push_back(double(heights.size()));
  values.push_back(0);
  graph.WGDefineDataSetVB(u" StairsX Data Set"_s, std::move(positions));
  graph.WGDefineDataSetVB(u" Stairs Data Set"_s, std::move(values));
  graph.Draw(ChartGraph::Outline{u" StairsX Data Set"_s, u" Stairs Data Set"_s, Palette::Blue});
}

// The limits of each, or once where they are the same.
void DrawSpecifications(ChartGraph& graph, const CData& one, const CData& other,
                        const engine::Results& scale) {
  std::vector<ChartGraph::LineLabel> labels;
  const auto add = [&](const QString& name, double value) {
    const double position = BinPosition(scale.histoLoScaleValue, scale.histoHiScaleValue, value);
    const QString dataSet = name + u" Data Set"_s;
    graph.WGDefineDataSetVB(dataSet, {position});
    graph.Draw(ChartGraph::Level{Direction::Vertical, dataSet, {2, 0, Palette::Red}});
    labels.push_back({position, name, Conversions::CStr(value)});
  };
  const bool areGiven[] = {SpecificationOf(one) == Specification::Given,
                           SpecificationOf(other) == Specification::Given};
  for (const auto& [name, limit] : {std::pair{&Words::Figure::lsl, &CData::LowerSpecLimit},
                                    {&Words::Figure::usl, &CData::UpperSpecLimit}}) {
    if (areGiven[0] && areGiven[1] && (one.*limit)() == (other.*limit)()) {
      add((*name)(), (one.*limit)());
      continue;
    }
    if (areGiven[0]) add(Words::Comparison::limitOf((*name)(), Words::Comparison::one()), (one.*limit)());
    if (areGiven[1]) add(Words::Comparison::limitOf((*name)(), Words::Comparison::other()), (other.*limit)());
  }
  if (!labels.empty())
    graph.Draw(ChartGraph::LineLabels{Direction::Vertical, labels, {Palette::Black, 16, 4, 0}});
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

void DrawHistogramGraph(ChartGraph& graph, const CData& data, const engine::Results& results,
                        const QString& letter) {
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
  if (SpecificationOf(data) != Specification::None) DrawSpecification(graph, data, letter.isEmpty());
  const QString title = Words::Page::histogram();
  graph.Title(letter.isEmpty() ? title : Words::Comparison::graph(letter, title), {Palette::Black, 16, 8, 0});
}

void DrawHistograms(ChartGraph& graph, const CData& one, const CData& other) {
  const auto results = OnOneScale(one, other);
  const std::vector<double> bars = Percentages(results[0]), stairs = Percentages(results[1]);
  const double largest = std::max(std::ranges::max(bars), std::ranges::max(stairs));
  const double spacing = largest > 50 ? 20 : largest > 20 ? 10 : 5;
  graph.SetPlotArea(0.15, 0.1, 0.9, 0.8);
  graph.ScalePlotArea(0, 0, HistogramBins, std::max(1.0, std::ceil(largest / spacing)) * spacing);
  const ChartGraph::TextParameters small{Palette::Black, 16, 4, 0};
  const ChartGraph::TextParameters usual{Palette::Black, 16, 6, 0};
  graph.Draw(
      ChartGraph::Axis{Direction::Vertical, spacing, {}, {}, usual, Words::Comparison::percent(), usual});
  const QStringList labels =
      QString::fromStdString(results[0].histogramLabelsOutputString).split(one.StringDelimiter());
  graph.WGLabelAxisStringsVB(labels, 1, small, one.UnitOfMeasurement(), usual);
  graph.WGDefineDataSetVB(u" Histogram"_s, bars);
  graph.WGBargraph(u" Histogram"_s, 0.9, Palette::Teal, Palette::Black);
  DrawStairs(graph, stairs);
  DrawSpecifications(graph, one, other, results[0]);
  graph.Title(
      Words::Comparison::graph(Words::Comparison::both(Words::Comparison::one(), Words::Comparison::other()),
                               Words::Page::histogram()),
      {Palette::Black, 16, 8, 0});
  graph.Draw(ChartGraph::Text{
      {0.01, 0.965}, ChartGraph::Alignment::LeftMiddle, Words::Comparison::legend(), small, 0.98});
}

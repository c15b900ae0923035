#include "charts/ControlChart.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <span>
#include <stdexcept>

#include "charts/FittedScale.h"
#include "charts/PointList.h"
#include "charts/TScale.h"
#include "engine/Decimal.h"
#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"
#include "texts/DetectionRules.h"
#include "texts/PageWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

using Direction = ChartGraph::Direction;

std::vector<double> PlotValues(const engine::PlottedSeries& series) {
  std::vector<double> values(series.Count());
  for (size_t i = 0; i < values.size(); ++i) values[i] = series[i];
  return values;
}

QString LimitText(double value, int decimals) {
  return QString::number(engine::RoundToPlaces(value, decimals) + 0.0, 'f', decimals);
}

bool ReadAlike(const ControlChart& chart, int decimals) {
  const double lines[] = {chart.lowerLimit, chart.mean, chart.upperLimit};
  for (const auto& [one, other] : {std::pair{0, 1}, {1, 2}, {0, 2}}) {
    if (lines[one] != lines[other] && LimitText(lines[one], decimals) == LimitText(lines[other], decimals))
      return true;
  }
  return false;
}

// The decimals that the samples were written with, also where they are zeros.
int WrittenDecimals(const QString& samples) {
  int most = 0, decimals = -1;  // -1 for none, before the point
  for (const QChar c : samples) {
    if (c == u'.') {
      decimals = 0;
    } else if (decimals >= 0 && c.isDigit()) {
      most = std::max(most, ++decimals);
    } else {
      decimals = -1;
    }
  }
  return most;
}

// One decimal more than the samples, and as many as tell the lines of a chart apart, but no more than the
// limits themselves are given with.
int LimitDecimals(const CData& data, const engine::Results& results, const ControlCharts& charts) {
  const int most = std::max<int>(0, data.PrecisionValue());
  const int written = std::max(results.sampleDecimals, WrittenDecimals(data.DelimitedInputString()));
  int decimals = std::clamp(written + 1, 0, most);
  while (decimals < most && (ReadAlike(charts.xbar, decimals) || ReadAlike(charts.r, decimals))) ++decimals;
  return decimals;
}

// What a chart shows of a list with one element per point.
template <class T>
std::span<const T> ShownOf(const ControlChart& chart, const std::vector<T>& all) {
  const int count = std::max(0, chart.shown.last - chart.shown.first + 1);
  return std::span(all).subspan(size_t(chart.shown.first - 1), size_t(count));
}

// Per point the active rules that it breaks, as bits.
std::vector<std::uint8_t> BrokenRules(const CData& data, size_t count) {
  std::vector<std::uint8_t> rules(count);
  const CData::ViolatingPointLists& lists = data.ViolatingPoints();
  for (const int rule : DetectionRules::ActiveRules(data.SensitivityValue())) {
    for (const qint16 point : lists.at(static_cast<size_t>(rule - 1))) {
      if (point < 1 || static_cast<size_t>(point) > count) continue;
      auto& bits = rules[static_cast<size_t>(point - 1)];
      bits = static_cast<std::uint8_t>(bits | (1u << rule));
    }
  }
  return rules;
}

std::vector<std::uint8_t> RangesOutside(const CData& data, size_t count) {
  std::vector<std::uint8_t> outside(count);
  for (const qint16 point : data.RangesOutside()) {
    if (point >= 1 && static_cast<size_t>(point) <= count) outside[static_cast<size_t>(point - 1)] = 1u << 1;
  }
  return outside;
}

// Limits that stand the wrong way round have no standard scale.
bool IsReversed(const ControlChart& chart) { return chart.lowerLimit > chart.upperLimit; }

// False where the limits are beyond the standard scale.
bool ScaleCoarsely(ControlChart& chart) {
  TScale scale;
  scale.SetMaxValue(chart.upperLimit);
  scale.SetMinValue(chart.lowerLimit);
  return scale.GetScaleValues(chart.axisMaximum, chart.axisMinimum);
}

// The lowest and the highest value that are drawn.
std::pair<double, double> ExtentOf(const ControlChart& chart) {
  double low = std::min({chart.lowerLimit, chart.mean, chart.upperLimit});
  double high = std::max({chart.lowerLimit, chart.mean, chart.upperLimit});
  for (const double value : ShownOf(chart, chart.values)) {
    if (std::isnan(value)) continue;
    low = std::min(low, value);
    high = std::max(high, value);
  }
  return {low, high};
}

void ScaleToFit(ControlChart& chart, std::pair<double, double> extent) {
  try {
    const auto ends = FittedScale::Fit(extent.first, extent.second, std::pow(10, -chart.labelDecimals));
    chart.axisMinimum = ends.minimum;
    chart.axisMaximum = ends.maximum;
  } catch (const std::range_error&) {
    throw ScaleError(chart.scaleFailure);
  }
  chart.tickInterval = (chart.axisMaximum - chart.axisMinimum) / FittedScale::Intervals;
}

void SetScale(ControlChart& chart) {
  chart.isBeyondStandardScale = !ScaleCoarsely(chart);
  chart.tickInterval = (chart.axisMaximum - chart.axisMinimum) / FittedScale::Intervals;
  if (chart.isFitted || chart.isBeyondStandardScale || IsReversed(chart)) ScaleToFit(chart, ExtentOf(chart));
}

// The words for the rules that are broken, or, where none is, for those in force; in fewer and fewer words.
QStringList RuleLegend(const CData& data, const std::vector<std::uint8_t>& rules) {
  const unsigned broken = std::accumulate(rules.begin(), rules.end(), 0u, std::bit_or<>());
  const QString brief[] = {Words::Page::ruleOne(), Words::Page::ruleTwo(), Words::Page::ruleThree(),
                           Words::Page::ruleFour()};
  const QString briefest[] = {Words::Page::ruleOneShort(), Words::Page::ruleTwoShort(),
                              Words::Page::ruleThreeShort(), Words::Page::ruleFourShort()};
  QStringList words, briefWords, briefestWords;
  for (const int rule : DetectionRules::ActiveRules(data.SensitivityValue())) {
    if (broken != 0 && !(broken & (1u << rule))) continue;
    words.append(DetectionRules::ShortText(rule));
    briefWords.append(brief[rule - 1]);
    briefestWords.append(briefest[rule - 1]);
  }
  const QString separator = u"  \u00b7  "_s;
  return {Words::Page::rules(words.join(separator)), briefWords.join(separator),
          briefestWords.join(u" \u00b7 "_s), QString()};
}

// The ranges that are marked, of the points shown.
QStringList RangeLegend(const ControlChart& chart) {
  std::vector<qint16> outside;
  for (int point = chart.shown.first; point <= chart.shown.last; ++point) {
    if (chart.rules[static_cast<size_t>(point - 1)] != 0) outside.push_back(static_cast<qint16>(point));
  }
  if (outside.empty()) return {};
  return {Words::Page::rangesOutside(PointList(outside))};
}

std::vector<ChartGraph::LineLabel> LabelsOf(const ControlChart& chart) {
  const auto label = [&](const QString& name, double value) {
    return ChartGraph::LineLabel{value, name, LimitText(value, chart.labelDecimals)};
  };
  return {label(Words::Figure::ucl(), chart.upperLimit), label(Words::Figure::mean(), chart.mean),
          label(Words::Figure::lcl(), chart.lowerLimit)};
}

void DefineDataSets(ChartGraph& graph, const ControlChart& chart) {
  const std::span<const double> values = ShownOf(chart, chart.values);
  const size_t count = values.size();
  std::vector<double> positions(count);
  std::iota(positions.begin(), positions.end(), double(chart.shown.first));
  graph.WGDefineDataSetVB(chart.prefix + u" Data Set"_s, {values.begin(), values.end()});
  graph.WGDefineDataSetVB(chart.prefix + u"Point Data Set"_s, std::move(positions));
  graph.WGDefineDataSetVB(u"Zero Data Set"_s, std::vector<double>(count, chart.mean));
  graph.WGDefineDataSetVB(u"UCL Data Set"_s, std::vector<double>(count, chart.upperLimit));
  graph.WGDefineDataSetVB(u"LCL Data Set"_s, std::vector<double>(count, chart.lowerLimit));
}

void DrawLines(ChartGraph& graph, const ControlChart& chart) {
  const ChartGraph::LineStyle limit{2, 0, Palette::Red};
  ChartGraph::Curve curve;
  curve.positions = chart.prefix + u"Point Data Set"_s;
  curve.values = chart.prefix + u" Data Set"_s;
  curve.line = {0, 0, Palette::Blue};
  curve.markText = {Palette::Black, 16, 4, 3};
  for (const std::uint8_t bits : ShownOf(chart, chart.rules)) {
    curve.marks.push_back(static_cast<std::uint8_t>(bits == 0 ? 0 : std::countr_zero(bits)));
  }
  for (const double sigmas : chart.sigmaLines) {
    const QString name = u"Sigma %1 Data Set"_s.arg(sigmas);
    const double reach = sigmas > 0 ? chart.upperLimit - chart.mean : chart.mean - chart.lowerLimit;
    graph.WGDefineDataSetVB(name, {chart.mean + sigmas * reach / 3});
    graph.Draw(ChartGraph::Level{Direction::Horizontal, name, {0, 0, Palette::LightGrey}, true});
  }
  curve.marksArePoints = chart.marksArePoints;
  curve.middle = chart.mean;
  for (const PointLetters& letters : chart.letters)
    curve.letters.push_back(
        {static_cast<size_t>(letters.point - chart.shown.first), letters.first, letters.last});
  graph.Draw(std::move(curve));
  graph.Draw(ChartGraph::Level{Direction::Horizontal, u"Zero Data Set"_s, {0, 0, Palette::Black}});
  graph.Draw(ChartGraph::Level{Direction::Horizontal, u"UCL Data Set"_s, limit});
  graph.Draw(ChartGraph::Level{Direction::Horizontal, u"LCL Data Set"_s, limit});
  graph.Draw(ChartGraph::LineLabels{Direction::Horizontal, LabelsOf(chart), {Palette::Black, 16, 4, 0}});
}

const ChartGraph::TextParameters normal{Palette::Black, 16, 6, 0};

bool IsPart(const ControlChart& chart) {
  return chart.shown.first > 1 || chart.shown.last < static_cast<int>(chart.values.size());
}

void DrawAxes(ChartGraph& graph, const ControlChart& chart) {
  const auto& [first, last] = chart.shown;
  graph.ScalePlotArea(first - 1, chart.axisMinimum, last + 1, chart.axisMaximum);
  if (chart.baseFirst > 0)
    graph.Draw(ChartGraph::Shade{chart.baseFirst - 0.5, chart.baseLast + 0.5, Palette::Mist});
  const double spacing = IsPart(chart) && last - first < 10 ? 1 : 5;
  graph.Draw(ChartGraph::Axis{Direction::Horizontal,
                              spacing,
                              {},
                              std::pair<double, double>(first, last),
                              normal,
                              chart.axisStretches.empty() ? Words::Figure::sample() : chart.axisTitle,
                              normal,
                              chart.axisStretches});
  graph.Draw(
      ChartGraph::Axis{Direction::Vertical, chart.tickInterval, {}, {}, normal, chart.valueTitle, normal});
}

// In the corner: which points these are, and that the scale is not the standard one.
void DrawNotes(ChartGraph& graph, const ControlChart& chart) {
  QStringList notes, shortNotes, shorter;
  const auto& [first, last] = chart.shown;
  if (IsPart(chart)) {
    notes.append(Words::Page::part(first, last, chart.values.size()));
    shortNotes.append(Words::Page::partShort(first, last));
  }
  if (!chart.period.isEmpty()) {
    notes.append(chart.period);
    shortNotes.append(chart.period);
    shorter.append(chart.period);
  }
  if (chart.isBeyondStandardScale) {
    notes.append(Words::Page::fitted());
    shortNotes.append(Words::Page::fitted());
  }
  if (!notes.isEmpty()) {
    graph.Draw(ChartGraph::Text{
        {0.01, 0.035},
        ChartGraph::Alignment::LeftMiddle,
        notes.join(u" \u00b7 "_s),
        {Palette::Black, 16, 5, 3},
        0.38,
        {shortNotes.join(u" \u00b7 "_s), (shorter.isEmpty() ? shortNotes : shorter).join(u" \u00b7 "_s)}});
  }
}

// Beneath the title.
void DrawLimits(ChartGraph& graph, const ControlChart& chart) {
  const QString limits =
      Words::Page::limits(Conversions::CStr(chart.lowerLimit), Conversions::CStr(chart.mean),
                          Conversions::CStr(chart.upperLimit));
  const QString rounded = Words::Page::limits(LimitText(chart.lowerLimit, chart.labelDecimals),
                                              LimitText(chart.mean, chart.labelDecimals),
                                              LimitText(chart.upperLimit, chart.labelDecimals));
  const QString outer = Words::Page::limitsShort(LimitText(chart.lowerLimit, chart.labelDecimals),
                                                 LimitText(chart.upperLimit, chart.labelDecimals));
  graph.Draw(ChartGraph::Text{
      {0.5, 0.1}, ChartGraph::Alignment::AboveCentred, limits, normal, 0.98, {rounded, outer, QString()}});
}

void DrawLegend(ChartGraph& graph, const ControlChart& chart) {
  const QStringList legend = IsReversed(chart) ? QStringList{Words::Page::limitsReversed()} : chart.legend;
  if (!legend.isEmpty()) {
    graph.Draw(ChartGraph::Text{{0.01, 0.965},
                                ChartGraph::Alignment::LeftMiddle,
                                legend[0],
                                {IsReversed(chart) ? Palette::WarningText : Palette::Black, 16, 4, 0},
                                0.98,
                                legend.mid(1)});
  }
}

}  // namespace

ScaleError::ScaleError(const QString& reference) : Error(LoadResText(reference)), reference_(reference) {}

ControlCharts SetupControlCharts(const CData& data, const engine::Results& results, bool fittedScale) {
  const QString unit = data.UnitOfMeasurement();
  const QString valueTitle = unit.isEmpty() ? data.Description() : unit;
  ControlCharts charts;
  charts.xbar = {.title = Words::Page::average(),
                 .prefix = u"XBar"_s,
                 .valueTitle = valueTitle,
                 .values = PlotValues(results.xBarSeries),
                 .lowerLimit = data.XBarLCL(),
                 .mean = data.XBarMean(),
                 .upperLimit = data.XBarUCL(),
                 .isFitted = fittedScale,
                 .scaleFailure = u"Could not generate scaling data;227"_s};
  charts.r = {.title = Words::Page::range(),
              .prefix = u"RBar"_s,
              .valueTitle = valueTitle,
              .values = PlotValues(results.rangeSeries),
              .lowerLimit = data.RBarLCL(),
              .mean = data.RBarMean(),
              .upperLimit = data.RBarUCL(),
              .isFitted = fittedScale,
              .scaleFailure = u"Could not generate scaling data;228"_s};
  charts.xbar.labelDecimals = charts.r.labelDecimals = LimitDecimals(data, results, charts);
  if (data.SubGroupSize() <= 1) {
    charts.xbar.subtitle = Words::Page::individuals();
    charts.r.subtitle = Words::Page::movingRange();
  }
  charts.xbar.rules = BrokenRules(data, charts.xbar.values.size());
  charts.xbar.legend = RuleLegend(data, charts.xbar.rules);
  charts.r.rules = RangesOutside(data, charts.r.values.size());
  charts.r.marksArePoints = true;
  // A lower limit of the ranges that is cut off at 0 has no zones.
  if (!IsReversed(charts.xbar) && charts.xbar.upperLimit > charts.xbar.lowerLimit)
    charts.xbar.sigmaLines = {-2, -1, 1, 2};
  // The first single value has no predecessor, so there is no first moving range.
  if (data.SubGroupSize() <= 1 && !charts.r.values.empty()) {
    charts.r.values.front() = std::numeric_limits<double>::quiet_NaN();
  }
  ShowPoints(charts, {1, std::numeric_limits<int>::max()});
  return charts;
}

void ShowPoints(ControlCharts& charts, PointRange points) {
  for (ControlChart* chart : {&charts.xbar, &charts.r}) {
    const int count = static_cast<int>(chart->values.size());
    const int first = std::clamp(points.first, 1, std::max(1, count));
    chart->shown = {first, std::min(count, std::max(points.last, first))};
    SetScale(*chart);
  }
  charts.r.legend = RangeLegend(charts.r);
}

void ShareScale(ControlChart& one, ControlChart& other) {
  const auto [low, high] = ExtentOf(one);
  const auto [otherLow, otherHigh] = ExtentOf(other);
  one.labelDecimals = other.labelDecimals = std::max(one.labelDecimals, other.labelDecimals);
  for (ControlChart* chart : {&one, &other})
    ScaleToFit(*chart, {std::min(low, otherLow), std::max(high, otherHigh)});
}

void ShowBase(ControlCharts& charts, PointRange points) {
  for (ControlChart* chart : {&charts.xbar, &charts.r}) {
    chart->baseFirst = points.first;
    chart->baseLast = points.last;
  }
}

void DrawGraph(ChartGraph& graph, const ControlChart& chart) {
  if (static_cast<int>(chart.values.size()) < FewestPlotPoints) {
    graph.Title(Words::Page::tooFewToPlot(), {Palette::Black, 16, 12, 3});
    return;
  }
  DefineDataSets(graph, chart);
  graph.SetPlotArea(0.15, 0.1, 0.9, 0.8);
  DrawAxes(graph, chart);
  DrawLines(graph, chart);
  graph.Title(chart.title, {Palette::Black, 16, 8, 0});
  DrawNotes(graph, chart);
  DrawLimits(graph, chart);
  if (!chart.subtitle.isEmpty()) {
    graph.Draw(ChartGraph::Text{
        {0.985, 0.035}, ChartGraph::Alignment::RightMiddle, chart.subtitle, {Palette::Black, 16, 4, 0}, 0.3});
  }
  DrawLegend(graph, chart);
}

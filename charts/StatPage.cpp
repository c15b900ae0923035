#include "charts/StatPage.h"

#include <algorithm>
#include <cmath>

#include "charts/Histogram.h"
#include "charts/LimitsOrigin.h"
#include "charts/TextWindow.h"
#include "charts/VerdictStrip.h"
#include "data/Statistics.h"
#include "platform/chart/Palette.h"
#include "texts/NoteWords.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double headHeight = 0.075;
constexpr double verdictHeight = 0.055;
// How far from a point the mouse still means it, in parts of the page's unit.
constexpr double reach = 0.012;

bool HasMark(const ControlChart& chart, int point) {
  return !chart.rules.empty() && chart.rules[static_cast<size_t>(point - 1)] != 0;
}

}  // namespace

StatPage::StatPage(const CData& data, const StatPageOptions& options) : description_(data.Description()) {
  // Each step that needs the results fails where there are none.
  std::optional<engine::Results> calculated;
  Record(data, options, [&]() -> const engine::Results& {
    if (!calculated) calculated = QCGlobalFunctions::ResultsOf(data);
    return *calculated;
  });
}

StatPage::StatPage(const CData& data, const engine::Results& results, const StatPageOptions& options)
    : description_(data.Description()) {
  Record(data, options, [&]() -> const engine::Results& { return results; });
}

void StatPage::Record(const CData& data, const StatPageOptions& options,
                      const std::function<const engine::Results&()>& results) {
  const auto run = [&](const char* procedure, const std::function<void()>& step) {
    options.runStep ? options.runStep(procedure, step) : step();
  };
  samples_ = data.DelimitedInputString();
  subgroupSize_ = std::max<int>(1, data.SubGroupSize());
  trace_ = PointTrace(options.trace, subgroupSize_, data.NumberOfPlotPoints());
  axis_ = options.axis;
  std::optional<PointRange> points = options.points;
  if (options.period) {
    points = trace_.PointsIn(*options.period);
    if (!points) throw NoPointsError(trace_.NoPointsText(*options.period));
  }
  const std::optional<LimitsOrigin> origin = KnownOrigin(data);
  run("SetupControlCharts", [&] {
    charts_ = SetupControlCharts(data, results(), options.fittedScale);
    if (points) ::ShowPoints(charts_, *points);
    NoteShown(options.period);
  });
  if (origin && origin->kind == LimitsOrigin::Points) ShowBase(charts_, {origin->first, origin->last});
  ChartGraph& xbar = page_.WGCreateGraph(0.005, 0.005, 0.6, 0.49);
  run("DrawGraph", [&] { DrawGraph(xbar, charts_.xbar); });
  ChartGraph& r = page_.WGCreateGraph(0.005, 0.5, 0.6, 0.99);
  run("DrawGraph", [&] { DrawGraph(r, charts_.r); });
  ChartGraph& histogram = page_.WGCreateGraph(0.61, 0.005, 0.995, 0.49);
  run("DrawHistogramGraph", [&] { DrawHistogramGraph(histogram, data, results()); });
  ChartGraph& text = page_.WGCreateGraph(0.61, 0.5, 0.995, 0.99);
  run("DrawTavelTextWindow", [&] { DrawTavelTextWindow(text, data); });
  run("DrawVerdict", [&] { DrawVerdict(verdict_, data, origin, ScaleNote(options), options.libraryName); });
  if (options.printedHead) RecordHead(data, options);
}

// On a screen a strip tells of the flat scale, and offers the fitted one.
QString StatPage::ScaleNote(const StatPageOptions& options) const {
  if (IsBeyondStandardScale()) return Words::Page::beyondStandardScale();
  return options.printedHead && !options.fittedScale && IsFlat() ? Words::Page::flat() : QString();
}

void StatPage::ShowPoints(PointRange points) {
  ::ShowPoints(charts_, points);
  NoteShown(std::nullopt);
  for (const auto& [graph, chart] : {std::pair{GraphId::XBar, &charts_.xbar}, {GraphId::R, &charts_.r}}) {
    ChartGraph& drawn = page_.Graph(static_cast<int>(graph));
    drawn = ChartGraph(drawn.Frame());
    DrawGraph(drawn, *chart);
  }
}

void StatPage::RecordHead(const CData& data, const StatPageOptions& options) {
  using Alignment = ChartGraph::Alignment;
  ChartGraph& head = head_.emplace(QRectF(0, 0, 1, 1), false);
  const ChartGraph::TextParameters small{Palette::Black, 16, 6, 0};
  head.Draw(ChartGraph::Text{
      {0.01, 0.36}, Alignment::LeftMiddle, data.Description(), {Palette::Black, 16, 10, 3}, 0.82});
  head.Draw(ChartGraph::Text{{0.99, 0.36},
                             Alignment::RightMiddle,
                             Words::Page::number(options.pageNumber, options.pageCount),
                             small,
                             0.15});
  QStringList facts;
  if (!data.UnitOfMeasurement().isEmpty()) facts.append(Words::Page::unit(data.UnitOfMeasurement()));
  facts.append(Words::Page::samples(data.SampleQty()));
  facts.append(Words::Page::subgroupSize(data.SubGroupSize()));
  if (options.period) facts.append(Words::Period::head(PeriodText(*options.period)));
  head.Draw(ChartGraph::Text{{0.01, 0.79}, Alignment::LeftMiddle, facts.join(u"     "_s), small, 0.7});
  if (options.printedAt.isValid()) {
    const QString printed = Words::Page::printed(options.printedAt.toString(u"yyyy-MM-dd HH:mm"_s));
    head.Draw(ChartGraph::Text{{0.99, 0.79}, Alignment::RightMiddle, printed, small, 0.28});
  }
}

// A strip has a part of the page's height, or what its two lines of letters need.
double StatPage::StripHeight(double part, const QRectF& target, int upper, int lower) const {
  constexpr double lineHeight = 1.3;
  const auto line = [&](int size) {
    return lineHeight * TextPixels(size, PageUnit(target), page_.SmallestText());
  };
  return std::max(part * target.height(), line(upper) + line(lower));
}

QRectF StatPage::HeadArea(const QRectF& target) const {
  return {target.x(), target.y(), target.width(), head_ ? StripHeight(headHeight, target, 10, 6) : 0};
}

QRectF StatPage::VerdictArea(const QRectF& target) const {
  return {target.x(), HeadArea(target).bottom(), target.width(), StripHeight(verdictHeight, target, 7, 4)};
}

QRectF StatPage::PageArea(const QRectF& target) const {
  return {target.left(), VerdictArea(target).bottom(), target.width(),
          PlaceOfNotes(target).area.top() - VerdictArea(target).bottom()};
}

void StatPage::Paint(QPainter& painter, const QRectF& target) const {
  const auto paintStrip = [&](const ChartGraph& strip, const QRectF& area) {
    painter.fillRect(area, Palette::Colour(Palette::White));
    PaintGraph(painter, strip, LayOut(strip, {}, area, PageUnit(target), page_.SmallestText()));
  };
  if (head_) paintStrip(*head_, HeadArea(target));
  paintStrip(verdict_, VerdictArea(target));
  page_.Paint(painter, PageArea(target));
  PaintNotes(painter, target);
}

void StatPage::PaintOut(QPainter& painter, const QRectF& target, double smallestText) const {
  StatPage page = *this;
  page.Select(GraphId::None);
  page.SetSmallestText(smallestText);
  page.Paint(painter, target);
}

GraphId StatPage::GraphAt(QPointF position, const QRectF& target) const {
  return static_cast<GraphId>(page_.GraphAt(position, PageArea(target)));
}

const ControlChart* StatPage::Chart(GraphId graph) const {
  const ControlChart* chart = graph == GraphId::XBar ? &charts_.xbar
                              : graph == GraphId::R  ? &charts_.r
                                                     : nullptr;
  return chart && chart->values.size() >= FewestPlotPoints ? chart : nullptr;
}

std::optional<StatPage::PointInfo> StatPage::Point(GraphId graph, int number, const QRectF& target) const {
  const ControlChart* chart = Chart(graph);
  if (!chart || number < chart->shown.first || number > chart->shown.last) return std::nullopt;
  const auto index = static_cast<size_t>(number - 1);
  const double value = chart->values[index];
  if (std::isnan(value)) return std::nullopt;
  const GraphGeometry geometry = page_.Geometry(static_cast<int>(graph), PageArea(target));
  const QPointF at(geometry.X(number),
                   std::clamp(geometry.Y(value), geometry.plot.top(), geometry.plot.bottom()));
  PointInfo point{graph, number, value, at, {}, false};
  const unsigned bits = chart->rules.empty() ? 0u : chart->rules[index];
  if (graph == GraphId::R) {
    point.isRangeOutside = bits != 0;
    return point;
  }
  for (int rule = 1; rule <= 4; ++rule) {
    if (bits & (1u << rule)) point.rules.push_back(rule);
  }
  return point;
}

std::optional<StatPage::PointInfo> StatPage::PointAt(QPointF position, const QRectF& target) const {
  const GraphId graph = GraphAt(position, target);
  const ControlChart* chart = Chart(graph);
  if (!chart) return std::nullopt;
  const GraphGeometry geometry = page_.Geometry(static_cast<int>(graph), PageArea(target));
  const double within = std::max(4.0, reach * geometry.unit);
  const double perPoint = geometry.plot.width() / geometry.scale.width();
  const double number = geometry.scale.left() + (position.x() - geometry.plot.left()) / perPoint;
  const int first = std::max(chart->shown.first, static_cast<int>(std::ceil(number - within / perPoint)));
  const int last = std::min(chart->shown.last, static_cast<int>(std::floor(number + within / perPoint)));

  int nearest = 0;
  double distance = within;
  bool isMarked = false;
  for (int point = first; point <= last; ++point) {
    if (isMarked && !HasMark(*chart, point)) continue;
    const double y = std::clamp(geometry.Y(chart->values[static_cast<size_t>(point - 1)]),
                                geometry.plot.top(), geometry.plot.bottom());
    const double away = std::hypot(geometry.X(point) - position.x(), y - position.y());
    const bool isFirstMark = HasMark(*chart, point) && !isMarked;
    if (!(away <= (isFirstMark ? within : distance))) continue;
    isMarked = isMarked || isFirstMark;
    distance = away;
    nearest = point;
  }
  return Point(graph, nearest, target);
}

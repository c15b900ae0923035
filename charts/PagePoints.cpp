// What the page knows of its points beside their places: the marks, the samples, stretches of them.
#include <QStringTokenizer>
#include <algorithm>
#include <array>
#include <cmath>

#include "charts/StatPage.h"

int StatPage::NumberAt(GraphId graph, QPointF position, const QRectF& target) const {
  const ControlChart* chart = Chart(graph);
  if (!chart) return 0;
  const GraphGeometry geometry = page_.Geometry(static_cast<int>(graph), PageArea(target));
  const double number = geometry.scale.left() + (position.x() - geometry.plot.left()) /
                                                    geometry.plot.width() * geometry.scale.width();
  return static_cast<int>(std::lround(std::clamp<double>(number, chart->shown.first, chart->shown.last)));
}

QRectF StatPage::GroundOf(GraphId graph, PointRange points, const QRectF& target) const {
  const ControlChart* chart = Chart(graph);
  const bool isHidden =
      page_.BlownUpGraph() != ChartPage::NoGraph && page_.BlownUpGraph() != static_cast<int>(graph);
  if (!chart || isHidden || points.last < chart->shown.first || points.first > chart->shown.last) return {};
  const GraphGeometry geometry = page_.Geometry(static_cast<int>(graph), PageArea(target));
  const double left = std::max(geometry.X(points.first - 0.5), geometry.plot.left());
  const double right = std::min(geometry.X(points.last + 0.5), geometry.plot.right());
  return {QPointF(left, geometry.plot.top()), QPointF(right, geometry.plot.bottom())};
}

int StatPage::FirstSampleOf(int number) const { return (number - 1) * subgroupSize_ + 1; }

QStringList StatPage::SamplesOf(const PointInfo& point) const {
  // A moving range lies between the sample before and its own.
  const bool isMoving = point.graph == GraphId::R && subgroupSize_ == 1;
  const int first = FirstSampleOf(isMoving ? point.number - 1 : point.number);
  const int last = FirstSampleOf(point.number) + subgroupSize_ - 1;
  QStringList samples;
  int number = 0;
  for (const QStringView sample : qTokenize(samples_, u',')) {
    if (++number >= first) samples << sample.trimmed().toString();
    if (number == last) break;
  }
  return samples;
}

std::vector<StatPage::Mark> StatPage::Marks() const {
  std::vector<Mark> marks;
  const auto add = [&](GraphId graph, int bit, int rule) {
    const ControlChart* chart = Chart(graph);
    if (!chart) return;
    for (size_t i = 0; i < chart->rules.size(); ++i) {
      if (chart->rules[i] & (1u << bit)) marks.push_back({graph, static_cast<int>(i) + 1, rule});
    }
  };
  add(GraphId::R, 1, 0);
  for (int rule = 1; rule <= 4; ++rule) add(GraphId::XBar, rule, rule);
  return marks;
}

std::optional<PointRange> StatPage::BasePoints() const {
  if (charts_.xbar.baseFirst == 0) return std::nullopt;
  return PointRange{charts_.xbar.baseFirst, charts_.xbar.baseLast};
}

bool StatPage::IsFlat() const {
  constexpr double leastShare = 0.2;
  return std::ranges::any_of(std::array{&charts_.xbar, &charts_.r}, [](const ControlChart* chart) {
    const double limits = chart->upperLimit - chart->lowerLimit;
    return limits > 0 && limits < (chart->axisMaximum - chart->axisMinimum) * leastShare;
  });
}

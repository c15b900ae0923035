#include "platform/chart/MarkRoom.h"

#include <algorithm>
#include <utility>

namespace {

// Fine enough that two neighbours of 60 points leave room between them.
double CellSize(double unit) { return std::max(1.0, unit / 800); }

// The part of a line that lies in a rectangle, from 0 at its start to 1 at its end; empty where none does.
std::pair<double, double> PartIn(const QLineF& line, const QRectF& rect) {
  double from = 0, to = 1;
  const auto clip = [&](double start, double change, double low, double high) {
    if (change == 0) {
      if (start <= low || start >= high) to = -1;
      return;
    }
    const auto [first, last] = std::minmax({(low - start) / change, (high - start) / change});
    from = std::max(from, first);
    to = std::min(to, last);
  };
  clip(line.x1(), line.dx(), rect.left(), rect.right());
  clip(line.y1(), line.dy(), rect.top(), rect.bottom());
  return {from, to};
}

}  // namespace

bool MarkRoom::Crosses(const QLineF& line, const QRectF& rect) {
  const auto [from, to] = PartIn(line, rect);
  return from <= to;
}

MarkRoom::MarkRoom(const ChartGraph& graph, const GraphGeometry& geometry)
    : gap_(geometry.PlateGap()),
      taken_(geometry.plot, CellSize(geometry.unit)),
      line_(geometry.plot, CellSize(geometry.unit)) {
  for (const ChartGraph::Operation& operation : graph.Operations()) {
    const auto* level = std::get_if<ChartGraph::Level>(&operation);
    if (!level || level->direction != ChartGraph::Direction::Horizontal) continue;
    const std::vector<double>& values = graph.DataSet(level->dataSet);
    if (!values.empty()) levels_.push_back(geometry.Y(values.front()));
  }
}

void MarkRoom::TakeLine(const QPolygonF& line) {
  for (qsizetype i = 1; i < line.size(); ++i) line_.Take(line[i - 1], line[i]);
}

void MarkRoom::TakeText(const QRectF& box) {
  taken_.Take(box);
  boxes_.push_back(box);
}

bool MarkRoom::IsFree(const QRectF& box) const {
  const QRectF room = box.adjusted(-gap_, -gap_, gap_, gap_);
  return taken_.IsFree(room) && line_.IsFree(room) &&
         std::ranges::none_of(levels_, [&](double y) { return y > room.top() && y < room.bottom(); }) &&
         std::ranges::none_of(leaders_, [&](const QLineF& leader) { return Crosses(leader, room); });
}

bool MarkRoom::IsOnText(const QLineF& leader) const {
  return std::ranges::any_of(
      boxes_, [&](const QRectF& box) { return Crosses(leader, box.adjusted(-gap_, -gap_, gap_, gap_)); });
}

bool MarkRoom::CrossesLeader(const QLineF& line) const {
  return std::ranges::any_of(
      leaders_, [&](const QLineF& leader) { return leader.intersects(line) == QLineF::BoundedIntersection; });
}

std::vector<QLineF> MarkRoom::Seen(const QLineF& line) const {
  std::vector<std::pair<double, double>> covered;
  for (const QRectF& box : boxes_) {
    const auto part = PartIn(line, box.adjusted(-gap_, -gap_, gap_, gap_));
    if (part.first < part.second) covered.push_back(part);
  }
  for (const QLineF& leader : leaders_) {
    QPointF at;
    if (leader.intersects(line, &at) != QLineF::BoundedIntersection) continue;
    const auto ends = [&](const QLineF& one) {
      return std::min(QLineF(one.p1(), at).length(), QLineF(one.p2(), at).length()) < gap_ / 4;
    };
    const double way = QLineF(line.p1(), at).length() / line.length(), half = 2 * gap_ / line.length();
    if (!ends(line) && !ends(leader)) covered.emplace_back(way - half, way + half);
  }
  std::ranges::sort(covered);
  std::vector<QLineF> pieces;
  double from = 0;
  covered.emplace_back(1, 1);
  for (const auto& [begin, end] : covered) {
    if (begin > from) pieces.emplace_back(line.pointAt(from), line.pointAt(begin));
    from = std::max(from, end);
  }
  return pieces;
}

std::optional<QRectF> MarkRoom::Near(QPointF mark, double radius, bool above, QSizeF size) const {
  const double up = radius + 2 * gap_ + size.height() / 2;
  const double aside = radius + 2 * gap_ + size.width() / 2;
  const double side = above ? -up : up;
  const double shift = size.width() / 2 + gap_;
  const QPointF offsets[] = {{0, side},         {-shift, side}, {shift, side},       {-aside, side / 2},
                             {aside, side / 2}, {-aside, 0},    {aside, 0},          {0, -side},
                             {-shift, -side},   {shift, -side}, {-aside, -side / 2}, {aside, -side / 2}};
  for (const QPointF offset : offsets) {
    const QRectF box(mark + offset - QPointF(size.width(), size.height()) / 2, size);
    if (IsFree(box)) return box;
  }
  return std::nullopt;
}

#include "platform/chart/ChartPage.h"

#include "platform/chart/Palette.h"

namespace {

constexpr QRectF wholePage(0.005, 0.005, 0.99, 0.985);
// A graph that fills the page has four times the room: its text grows too, but the picture takes most of it.
constexpr double blownUpText = 1.3;

QRectF Within(const QRectF& target, const QRectF& fractions) {
  return {target.x() + fractions.x() * target.width(), target.y() + fractions.y() * target.height(),
          fractions.width() * target.width(), fractions.height() * target.height()};
}

}  // namespace

ChartGraph& ChartPage::WGCreateGraph(double left, double top, double right, double bottom) {
  return graphs_.emplace_back(QRectF(QPointF(left, top), QPointF(right, bottom)));
}

GraphGeometry ChartPage::Geometry(int index, const QRectF& target) const {
  const ChartGraph& graph = Graph(index);
  const bool whole = blownUp_ == index;
  GraphGeometry geometry;
  geometry.frame = Within(target, whole ? wholePage : graph.Frame());
  geometry.plot = Within(geometry.frame, graph.PlotArea());
  geometry.scale = graph.Scale();
  geometry.unit = PageUnit(target) * (whole ? blownUpText : 1.0);
  return geometry;
}

void ChartPage::Paint(QPainter& painter, const QRectF& target) const {
  painter.fillRect(target, Palette::Colour(Palette::White));
  for (int index = 0; index < GraphCount(); ++index) {
    if (!IsShown(index)) continue;
    const GraphGeometry geometry = Geometry(index, target);
    PaintGraph(painter, Graph(index), geometry);
    if (index == selected_) PaintFrame(painter, geometry, Palette::Blue, 2);
  }
}

int ChartPage::GraphAt(QPointF position, const QRectF& target) const {
  for (int index = 0; index < GraphCount(); ++index) {
    if (IsShown(index) && Geometry(index, target).frame.contains(position)) return index;
  }
  return NoGraph;
}

#include "platform/chart/ChartPage.h"

#include <vector>

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

QRectF ChartPage::FrameOf(int index, const QRectF& target) const {
  return Within(target, blownUp_ == index ? wholePage : Graph(index).Frame());
}

GraphGeometry ChartPage::Geometry(int index, const QRectF& target) const {
  const ChartGraph& graph = Graph(index);
  const auto isAbove = [&](const ChartGraph& other) {
    return other.Frame().left() == graph.Frame().left() && other.Frame().right() == graph.Frame().right();
  };
  std::vector<const ChartGraph*> column;
  for (const ChartGraph& other : graphs_) {
    if (isAbove(other)) column.push_back(&other);
  }
  const double unit = PageUnit(target) * (blownUp_ == index ? blownUpText : 1.0);
  return LayOut(graph, column, FrameOf(index, target), unit, smallestText_);
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
    if (IsShown(index) && FrameOf(index, target).contains(position)) return index;
  }
  return NoGraph;
}

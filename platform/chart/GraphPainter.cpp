#include "platform/chart/GraphPainter.h"

#include <algorithm>
#include <cmath>

#include "platform/chart/Palette.h"

namespace {

// Whether a faint level lies too near to another level to be told from it.
bool IsCrowded(const ChartGraph& graph, double value, const GraphGeometry& geometry) {
  return std::ranges::any_of(graph.Operations(), [&](const ChartGraph::Operation& operation) {
    const auto* other = std::get_if<ChartGraph::Level>(&operation);
    if (!other || other->isFaint || other->direction != ChartGraph::Direction::Horizontal) return false;
    const std::vector<double>& values = graph.DataSet(other->dataSet);
    return !values.empty() &&
           std::abs(geometry.Y(values.front()) - geometry.Y(value)) < geometry.unit * 0.008;
  });
}

void PaintLevel(QPainter& painter, const ChartGraph& graph, const ChartGraph::Level& level,
                const GraphGeometry& geometry) {
  const std::vector<double>& values = graph.DataSet(level.dataSet);
  if (values.empty()) return;
  const double value = values.front();
  const QRectF& plot = geometry.plot;
  painter.setPen(LinePen(level.line, geometry.unit));
  if (level.direction == ChartGraph::Direction::Horizontal) {
    if (geometry.IsOutside(value) || (level.isFaint && IsCrowded(graph, value, geometry))) return;
    const double y = geometry.Y(value);
    painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
  } else {
    if (value < geometry.scale.left() || value > geometry.scale.right()) return;
    // On the end of the scale it would lie under the axis, or be taken for it.
    const double beside = 1.5 * painter.pen().widthF();
    const double x = std::clamp(geometry.X(value), plot.left() + beside, plot.right());
    painter.drawLine(QPointF(x, plot.bottom()), QPointF(x, plot.top()));
  }
}

void PaintBars(QPainter& painter, const ChartGraph& graph, const ChartGraph::Bars& bars,
               const GraphGeometry& geometry) {
  painter.setPen(LinePen({0, 0, bars.outline}, geometry.unit));
  painter.setBrush(Palette::Colour(bars.fill));
  double position = 0.5;
  for (const double value : graph.DataSet(bars.dataSet)) {
    const QPointF topLeft(geometry.X(position - bars.width / 2), geometry.Y(value));
    if (value > 0) {
      painter.drawRect(
          QRectF(topLeft, QPointF(geometry.X(position + bars.width / 2), geometry.plot.bottom())));
    }
    position += 1;
  }
  painter.setBrush(Qt::NoBrush);
}

void PaintOutline(QPainter& painter, const ChartGraph& graph, const ChartGraph::Outline& outline,
                  const GraphGeometry& geometry) {
  const std::vector<double>& positions = graph.DataSet(outline.positions);
  const std::vector<double>& values = graph.DataSet(outline.values);
  QPolygonF line;
  for (size_t i = 0; i < values.size(); ++i) line << QPointF(geometry.X(positions[i]), geometry.Y(values[i]));
  const PainterSaver saver(painter);
  painter.setClipRect(geometry.plot, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setBrush(Qt::NoBrush);
  for (const auto& [width, colour] : {std::pair{3, int{Palette::White}}, {1, outline.colour}}) {
    painter.setPen(LinePen({0, width, colour}, geometry.unit));
    painter.drawPolyline(line);
  }
}

void PaintShade(QPainter& painter, const ChartGraph::Shade& shade, const GraphGeometry& geometry) {
  const QRectF& plot = geometry.plot;
  painter.fillRect(
      QRectF(QPointF(geometry.X(shade.from), plot.top()), QPointF(geometry.X(shade.to), plot.bottom())) &
          plot,
      Palette::Colour(shade.colour));
}

struct OperationPainter {
  QPainter& painter;
  const ChartGraph& graph;
  const GraphGeometry& geometry;

  void operator()(const ChartGraph::Axis& axis) const { PaintAxis(painter, axis, geometry); }
  void operator()(const ChartGraph::Level& level) const { PaintLevel(painter, graph, level, geometry); }
  void operator()(const ChartGraph::Bars& bars) const { PaintBars(painter, graph, bars, geometry); }
  void operator()(const ChartGraph::Curve& curve) const { PaintCurve(painter, graph, curve, geometry); }
  void operator()(const ChartGraph::LineLabels& labels) const { PaintLineLabels(painter, labels, geometry); }
  void operator()(const ChartGraph::Outline& outline) const {
    PaintOutline(painter, graph, outline, geometry);
  }
  void operator()(const ChartGraph::Shade& shade) const { PaintShade(painter, shade, geometry); }
  void operator()(const ChartGraph::Table& table) const { PaintTable(painter, table, geometry); }
  void operator()(const ChartGraph::Text& text) const { PaintText(painter, text, geometry); }
};

}  // namespace

QPen LinePen(const ChartGraph::LineStyle& line, double unit) {
  QPen pen(Palette::Colour(line.colour), std::max(1.0, std::round(unit * 0.0014)) * (1 + line.width));
  pen.setCapStyle(Qt::FlatCap);
  if (line.style == 2) pen.setDashPattern({6, 4});
  return pen;
}

void PaintFrame(QPainter& painter, const GraphGeometry& geometry, int colour, int width) {
  painter.setPen(LinePen({0, width, colour}, geometry.unit));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(geometry.frame);
}

void PaintGraph(QPainter& painter, const ChartGraph& graph, const GraphGeometry& geometry) {
  const PainterSaver saver(painter);
  painter.setRenderHint(QPainter::Antialiasing, false);  // straight lines are sharper so
  painter.setRenderHint(QPainter::TextAntialiasing, true);
  if (graph.IsBordered()) PaintFrame(painter, geometry, Palette::LightGrey, 0);
  for (const ChartGraph::Operation& operation : graph.Operations()) {
    std::visit(OperationPainter{painter, graph, geometry}, operation);
  }
}

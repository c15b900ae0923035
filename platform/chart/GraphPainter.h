// Paints one recorded graph into its place on a page: frame, texts, levels and bars here, the other parts
// each in a file of its own.
#pragma once

#include <QPainter>
#include <QRectF>

#include "platform/chart/ChartGraph.h"

// Where a graph lies in the painter's coordinates.
struct GraphGeometry {
  QRectF frame;
  QRectF plot;
  QRectF scale;     // as ChartGraph::Scale
  double unit = 1;  // what texts and lines are sized by: about the height of the page

  double X(double value) const { return plot.left() + (value - scale.left()) / scale.width() * plot.width(); }
  // Far outside the scale it stops at some heights of the plot area, which a painter can still clip.
  double Y(double value) const;
  bool IsOutside(double value) const { return value < scale.top() || value > scale.bottom(); }
};

// The unit of a page that is painted into target; a page too narrow for its height has smaller texts.
double PageUnit(const QRectF& target);

// Restores the painter's state at the end of a scope.
class PainterSaver {
 public:
  explicit PainterSaver(QPainter& painter) : painter_(painter) { painter_.save(); }
  ~PainterSaver() { painter_.restore(); }
  PainterSaver(const PainterSaver&) = delete;
  PainterSaver& operator=(const PainterSaver&) = delete;

 private:
  QPainter& painter_;
};

QFont TextFont(const ChartGraph::TextParameters& parameters, double unit);
QPen LinePen(const ChartGraph::LineStyle& line, double unit);

void PaintGraph(QPainter& painter, const ChartGraph& graph, const GraphGeometry& geometry);
void PaintFrame(QPainter& painter, const GraphGeometry& geometry, int colour, int width);

// Line, ticks, title, and as many labels as have room.
void PaintAxis(QPainter& painter, const ChartGraph::Axis& axis, const GraphGeometry& geometry);

// The points while there is room for them, the line that keeps every extreme, the marks with their numbers,
// and arrows for points outside the scale.
void PaintCurve(QPainter& painter, const ChartGraph& graph, const ChartGraph::Curve& curve,
                const GraphGeometry& geometry);

// The names and values of levels, beside the plot area at the ends of their lines.
void PaintLineLabels(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry);

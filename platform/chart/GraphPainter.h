// Paints one recorded graph into its place on a page: frame, levels and bars here, the other parts each in
// a file of its own.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QStringList>

#include "platform/chart/ChartGraph.h"
#include "platform/chart/GraphLayout.h"

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

QPen LinePen(const ChartGraph::LineStyle& line, double unit);

void PaintGraph(QPainter& painter, const ChartGraph& graph, const GraphGeometry& geometry);
void PaintFrame(QPainter& painter, const GraphGeometry& geometry, int colour, int width);

// Lines of text: each as large as its room lets it be, in its longest form that fits.
void PaintText(QPainter& painter, const ChartGraph::Text& text, const GraphGeometry& geometry);
void PaintTable(QPainter& painter, const ChartGraph::Table& table, const GraphGeometry& geometry);

// Line, ticks, title, and as many labels as have room.
void PaintAxis(QPainter& painter, const ChartGraph::Axis& axis, const GraphGeometry& geometry);

// The points while there is room for them, the line that keeps every extreme, the marks with their numbers,
// and arrows for points outside the scale.
void PaintCurve(QPainter& painter, const ChartGraph& graph, const ChartGraph::Curve& curve,
                const GraphGeometry& geometry);

// The numbers along an axis, without exponents and without what rounding left over.
QStringList AxisNumbers(const ChartGraph::Axis& axis, const QRectF& scale);

// The names and values of levels, beside the plot area at the ends of their lines.
void PaintLineLabels(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry);

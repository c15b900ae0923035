// Paints the values of a chart: the points while there is room for them, the line that keeps every extreme,
// the marks with their numbers, and arrows for points outside the scale.
#pragma once

#include "platform/chart/GraphPainter.h"

void PaintCurve(QPainter& painter, const ChartGraph& graph, const ChartGraph::Curve& curve,
                const GraphGeometry& geometry);

// Paints one axis of a graph: line, ticks, title, and as many labels as have room.
#pragma once

#include "platform/chart/GraphPainter.h"

void PaintAxis(QPainter& painter, const ChartGraph::Axis& axis, const GraphGeometry& geometry);

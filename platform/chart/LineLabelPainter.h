// Paints the names and values of levels beside the plot area, at the ends of their lines.
#pragma once

#include "platform/chart/GraphPainter.h"

void PaintLineLabels(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry);

// The histogram of a data set, recorded on its graph.
#pragma once

#include "core/CData.h"
#include "platform/chart/ChartGraph.h"

constexpr int HistogramBins = 12;

// Error when the data set's bin counts or labels are fewer than the bins, or a count is no number.
void DrawHistogramGraph(ChartGraph& graph, const CData& data);

// The spacing of the count axis for a largest count.
int CountTickSpacing(double largest);

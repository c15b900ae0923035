// The text window of a page: the summary values of a data set, row by row.
#pragma once

#include "data/CData.h"
#include "platform/chart/ChartGraph.h"

void DrawTavelTextWindow(ChartGraph& graph, const CData& data);

// The text window of a page: the summary values of a data set, row by row, or of two data sets beside each
// other.
#pragma once

#include "data/CData.h"
#include "platform/chart/ChartGraph.h"

// What a page says in place of capability where there is none.
QString WhyNoCpk(const CData& data);

void DrawTavelTextWindow(ChartGraph& graph, const CData& data);

void DrawFiguresOfTwo(ChartGraph& graph, const CData& one, const CData& other);

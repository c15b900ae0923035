// The histogram of a data set, recorded on its graph.
#pragma once

#include "data/CData.h"
#include "engine/Engine.h"
#include "platform/chart/ChartGraph.h"

constexpr int HistogramBins = engine::histogramBins;

// Whether a data set has specification limits. One without any has all three at 0: lines there would be made
// up. Reversed: the upper limit is not above the lower one.
enum class Specification { None, Reversed, Given };
Specification SpecificationOf(const CData& data);

// The data set's figures with its bins as numbers. Where there is a letter, it stands before the title, and
// the graph is one of two in the room of one.
void DrawHistogramGraph(ChartGraph& graph, const CData& data, const engine::Results& results,
                        const QString& letter = {});

// Both on one axis, in percent of the samples of each: the bars of one, and the line of the other.
void DrawHistograms(ChartGraph& graph, const CData& one, const CData& other);

// The spacing of the count axis for a largest count.
int CountTickSpacing(double largest);

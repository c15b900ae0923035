// Which labels of the stretches of an axis stand, so that none touches another.
#pragma once

#include <QString>
#include <functional>
#include <span>
#include <vector>

#include "platform/chart/ChartGraph.h"

struct StretchLabel {
  double x = 0;  // its middle
  QString text;
};

// Where headings change they have their room first; of the others every one stands that has room between.
// `xOf` gives the place of a value, `widthOf` what a text needs, the gap to the next one included.
std::vector<StretchLabel> PlaceStretchLabels(std::span<const ChartGraph::Stretch> stretches, double left,
                                             double right, const std::function<double(double)>& xOf,
                                             const std::function<double(const QString&)>& widthOf);

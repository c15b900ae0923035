// Where a recorded graph lies in a painter's coordinates, and how large its letters are: its plot area gives
// way where they need more room than it leaves.
#pragma once

#include <QFont>
#include <QRectF>
#include <algorithm>
#include <span>
#include <utility>

#include "platform/chart/ChartGraph.h"

struct GraphGeometry {
  QRectF frame;
  QRectF plot;
  QRectF scale;             // as ChartGraph::Scale
  double unit = 1;          // what texts and lines are sized by: about the height of the page
  double smallestText = 1;  // no letters are smaller, in the painter's coordinates
  QRectF recordedPlot{0, 0, 1, 1};
  int valueLabelPixels = 0;        // the letters at vertical axes
  int levelLabelPixels = 0;        // and at the ends of horizontal levels
  bool levelLabelsBroken = false;  // into the name and, below it, the number

  double X(double value) const { return plot.left() + (value - scale.left()) / scale.width() * plot.width(); }
  // Far outside the scale it stops at some heights of the plot area, which a painter can still clip.
  double Y(double value) const;
  bool IsOutside(double value) const { return value < scale.top() || value > scale.bottom(); }
  // Where a graph-relative height is: above and below the plot area it moves along with that.
  double HeightAt(double fraction) const;

  double TickLength() const { return std::max(unit * 0.006, smallestText * 0.25); }
  double Rim() const { return unit * 0.004; }
  double LabelGap() const {
    return std::max(unit * 0.009, smallestText * 0.4);
  }  // between the plot area and what stands right of it
  // Letters on plates at points, and the strip above the plot area that is kept for them.
  double PlateGap() const { return std::max(1.0, unit * 0.002); }
  QFont PlateFont() const;
  double PlateStrip() const;
  bool hasPlates = false;
  QFont TextFont(const ChartGraph::TextParameters& parameters) const;
};

// The unit of a page that is painted into target; a page too narrow for its height has smaller texts.
double PageUnit(const QRectF& target);

// The height of letters of a library size.
int TextPixels(int size, double unit, double smallestText);
QFont FontOf(int pixels, bool bold = false);

// The graphs of a column, this one among them, have the sides of their plot areas and the sizes of their
// labels in common.
GraphGeometry LayOut(const ChartGraph& graph, std::span<const ChartGraph* const> column, const QRectF& frame,
                     double unit, double smallestText);

// What stands at the end of a level: its name and its number, with an arrow where it lies outside the scale.
std::pair<QString, QString> LevelLabel(const ChartGraph::LineLabel& label, ChartGraph::Direction direction,
                                       const QRectF& scale);

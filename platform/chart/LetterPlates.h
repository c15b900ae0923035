// Letters on plates at points of a curve, of what is said elsewhere: touching their points where there is
// room, else in rows above or below the curve with leaders to their points, and at last in the strip above
// the plot area. None is left out: points too close to be told apart share a plate over their stretch, and
// where even the strip has no room for all, neighbours share one that says from which letter to which.
#pragma once

#include <QPainter>
#include <vector>

#include "platform/chart/MarkRoom.h"

struct LetteredSpot {
  QPointF at;
  double radius;        // of the sign that is there
  bool above;           // rather than below it
  QString first, last;  // of its letters
};

// The spots in the order of their places.
void PaintLetterPlates(QPainter& painter, MarkRoom& room, const GraphGeometry& geometry,
                       const std::vector<LetteredSpot>& spots);

// The room that a curve, its points, its marks and what is written at them leave in a plot area.
#pragma once

#include <QLineF>
#include <QPolygonF>
#include <QRectF>
#include <optional>
#include <vector>

#include "platform/chart/ChartGraph.h"
#include "platform/chart/GraphLayout.h"
#include "platform/chart/Placement.h"

class MarkRoom {
 public:
  // The graph's horizontal levels are kept free.
  MarkRoom(const ChartGraph& graph, const GraphGeometry& geometry);

  double Gap() const { return gap_; }                   // between two texts
  void Take(const QRectF& rect) { taken_.Take(rect); }  // a point, or a mark
  void TakeLine(const QPolygonF& line);
  void TakeText(const QRectF& box);
  void TakeLeader(const QLineF& leader) { leaders_.push_back(leader); }

  bool IsFree(const QRectF& box) const;
  bool IsOnCurve(const QRectF& rect) const { return !line_.IsFree(rect); }
  static bool Crosses(const QLineF& line, const QRectF& rect);
  bool IsOnText(const QLineF& leader) const;
  bool CrossesLeader(const QLineF& line) const;
  // What of a leader is seen: it goes beneath all texts, and beneath leaders that it crosses.
  std::vector<QLineF> Seen(const QLineF& line) const;
  // Touching a mark: on its own side, then beside it, then on the other side.
  std::optional<QRectF> Near(QPointF mark, double radius, bool above, QSizeF size) const;

 private:
  double gap_;
  std::vector<double> levels_;
  Placement::Occupancy taken_;
  Placement::Band line_;
  std::vector<QRectF> boxes_;    // of the texts that stand
  std::vector<QLineF> leaders_;  // and of what leads to them
};

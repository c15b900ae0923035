// A page of graphs, recorded independent of any resolution, that paints itself through any QPainter into any
// rectangle, sharp at every size.
#pragma once

#include <QPainter>
#include <QRectF>
#include <deque>

#include "platform/chart/ChartGraph.h"
#include "platform/chart/GraphPainter.h"

class ChartPage {
 public:
  static constexpr int NoGraph = -1;

  // A graph in page-relative coordinates (0 to 1 across and down). The reference stays good for the page's
  // life.
  ChartGraph& WGCreateGraph(double left, double top, double right, double bottom);
  ChartGraph& Graph(int index) { return graphs_.at(static_cast<size_t>(index)); }
  const ChartGraph& Graph(int index) const { return graphs_.at(static_cast<size_t>(index)); }
  int GraphCount() const { return static_cast<int>(graphs_.size()); }

  void SelectGraph(int index) { selected_ = index; }  // shown by a frame
  int WGGetSelectedGraph() const { return selected_; }
  void WGBlowupGraph(int index) { blownUp_ = index; }  // one graph fills the page; NoGraph restores it
  int BlownUpGraph() const { return blownUp_; }

  void Paint(QPainter& painter, const QRectF& target) const;
  int GraphAt(QPointF position, const QRectF& target) const;
  // Where a graph and its points lie on the page painted into target.
  GraphGeometry Geometry(int index, const QRectF& target) const;

  // No letters get smaller than so many units of the painter.
  void SetSmallestText(double height) { smallestText_ = height; }
  double SmallestText() const { return smallestText_; }

 private:
  bool IsShown(int index) const { return blownUp_ == NoGraph || blownUp_ == index; }
  QRectF FrameOf(int index, const QRectF& target) const;

  std::deque<ChartGraph> graphs_;
  int selected_ = NoGraph;
  int blownUp_ = NoGraph;
  double smallestText_ = 9;
};

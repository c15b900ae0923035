// Where the numbers at the marks of a curve stand: each beside its own mark, none on a line, a limit, a mark
// or another number.
#pragma once

#include <QFontMetricsF>
#include <QHash>
#include <QPolygonF>
#include <vector>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Placement.h"

class MarkNumbers {
 public:
  // The graph's horizontal levels are kept free.
  MarkNumbers(QPainter& painter, const ChartGraph& graph, const ChartGraph::TextParameters& text,
              const GraphGeometry& geometry);

  void Take(const QRectF& rect) { taken_.Take(rect); }  // a point, or a mark
  void TakeLine(const QPolygonF& line);
  // Numbers away from their marks, with a leader between; on their own side not far, nor across the curve.
  enum class Far { Nowhere, OwnSide, Anywhere };
  void AllowFar(Far far) { far_ = far; }

  struct Number {
    QPointF mark;
    QString text;
    double radius;         // of the mark
    bool above;            // rather than below it
    bool isPlate = false;  // white on a dark ground
  };
  // Leaves the number out where there is no room for it.
  void Paint(const Number& number);

 private:
  bool IsFree(const QRectF& box) const;
  bool PaintNear(const Number& number, QSizeF size);
  void PaintFar(const Number& number, QSizeF size);
  bool IsLeaderFree(const QLineF& leader) const;
  void PaintText(const Number& number, const QRectF& box);
  QSizeF SizeOf(const Number& number);

  QPainter& painter_;
  const GraphGeometry& geometry_;
  QFont font_;
  QColor ink_;
  QFontMetricsF metrics_;
  double gap_;
  QHash<QString, QSizeF> sizes_;  // measuring a text costs more than finding a place for it
  Far far_ = Far::Nowhere;
  std::vector<double> levels_;
  Placement::Occupancy taken_;
  Placement::Band line_;
  std::vector<QRectF> boxes_;    // of the numbers that stand
  std::vector<QLineF> leaders_;  // and of their leaders
};

// Where the numbers at the marks of a curve stand: each beside its own mark, none on a line, a limit, a mark
// or another number.
#pragma once

#include <QFontMetricsF>
#include <QHash>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/MarkRoom.h"

class MarkNumbers {
 public:
  MarkNumbers(QPainter& painter, MarkRoom& room, const ChartGraph::TextParameters& text,
              const GraphGeometry& geometry);

  // Numbers away from their marks, with a leader between; on their own side not far, nor across the curve.
  enum class Far { Nowhere, OwnSide, Anywhere };
  void AllowFar(Far far) { far_ = far; }

  struct Number {
    QPointF mark;
    QString text;
    double radius;  // of the mark
    bool above;     // rather than below it
  };
  // Leaves the number out where there is no room for it.
  void Paint(const Number& number);

 private:
  void PaintFar(const Number& number, QSizeF size);
  bool IsLeaderFree(const QLineF& leader) const;
  void PaintText(const Number& number, const QRectF& box);
  QSizeF SizeOf(const Number& number);

  QPainter& painter_;
  MarkRoom& room_;
  const GraphGeometry& geometry_;
  QFont font_;
  QColor ink_;
  QFontMetricsF metrics_;
  QHash<QString, QSizeF> sizes_;  // measuring a text costs more than finding a place for it
  Far far_ = Far::Nowhere;
};

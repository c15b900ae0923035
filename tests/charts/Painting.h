// A page as it was painted, and what of it lies on what.
#pragma once

#include <gtest/gtest.h>

#include "charts/PageOutput.h"
#include "tests/support/RecordingDevice.h"

using Shapes = std::vector<PaintedShape>;

class Painting {
 public:
  using Kind = PaintedShape::Kind;

  explicit Painting(const OutputPage& page, QSize size = {1280, 800}, double smallestText = 9)
      : device_(size) {
    QPainter painter(&device_);
    page.PaintOut(painter, QRectF(QPointF(), QSizeF(size)), smallestText);
  }
  // Filled with the colour, or drawn in it; within a part of the page.
  Shapes Find(Kind kind, const QColor& colour = {}, const QRectF& within = {-1e6, -1e6, 2e6, 2e6}) const {
    return device_.Where([&](const PaintedShape& shape) {
      return shape.kind == kind && within.contains(shape.Place()) &&
             (!colour.isValid() || (shape.fill.isValid() ? shape.fill : shape.ink) == colour);
    });
  }
  Shapes Texts() const { return Find(Kind::Text); }
  QStringList Words() const {
    QStringList words;
    for (const PaintedShape& text : Texts()) words << text.text;
    return words;
  }

 private:
  RecordingDevice device_;
};

// Whether a line of these corners runs through the box.
inline bool Crosses(const QPolygonF& corners, const QRectF& box) {
  for (qsizetype i = 1; i < corners.size(); ++i) {
    const QLineF line(corners[i - 1], corners[i]);
    if (box.contains(line.p1()) || box.contains(line.p2())) return true;
    for (const QLineF& diagonal :
         {QLineF(box.topLeft(), box.bottomRight()), QLineF(box.topRight(), box.bottomLeft())})
      if (line.intersects(diagonal) == QLineF::BoundedIntersection) return true;
  }
  return false;
}

// None of these lies on one of those, nor one of the same on another.
inline void ExpectApart(const Shapes& these, const Shapes& those) {
  std::vector<QRectF> boxes;
  for (const PaintedShape& shape : those) boxes.push_back(shape.Place());
  for (size_t i = 0; i < these.size(); ++i) {
    const QRectF ink = these[i].Place().adjusted(0.5, 0.5, -0.5, -0.5);
    const size_t count = &these == &those ? i : boxes.size();
    for (size_t j = 0; j < count; ++j)
      if (ink.intersects(boxes[j]))
        ADD_FAILURE() << testing::PrintToString(these[i]) << "\nlies on\n"
                      << testing::PrintToString(those[j]);
  }
}

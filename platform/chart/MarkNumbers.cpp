#include "platform/chart/MarkNumbers.h"

#include <cmath>

#include "platform/chart/Palette.h"

MarkNumbers::MarkNumbers(QPainter& painter, MarkRoom& room, const ChartGraph::TextParameters& text,
                         const GraphGeometry& geometry)
    : painter_(painter),
      room_(room),
      geometry_(geometry),
      font_(geometry.TextFont(text)),
      ink_(Palette::Colour(text.colour)),
      metrics_(font_, painter.device()) {}

// All digits are of one width.
QSizeF MarkNumbers::SizeOf(const Number& number) {
  QString shape = number.text;
  for (QChar& c : shape) {
    if (c.isDigit()) c = u'0';
  }
  QSizeF& size = sizes_[shape];
  if (size.isEmpty()) size = {metrics_.horizontalAdvance(shape), metrics_.capHeight()};
  return size;
}

void MarkNumbers::PaintText(const Number& number, const QRectF& box) {
  painter_.setFont(font_);
  painter_.setPen(ink_);
  painter_.drawText(box.bottomLeft(), number.text);
  room_.TakeText(box);
}

void MarkNumbers::Paint(const Number& number) {
  const QSizeF size = SizeOf(number);
  if (const auto box = room_.Near(number.mark, number.radius, number.above, size))
    PaintText(number, *box);
  else if (far_ != Far::Nowhere)
    PaintFar(number, size);
}

// Farther and farther away, on its own side before the other one.
void MarkNumbers::PaintFar(const Number& number, QSizeF size) {
  const double gap = room_.Gap();
  const double step = size.height() / 2;
  const double reach = far_ == Far::Anywhere ? geometry_.plot.height() : 6 * size.height();
  const int most = static_cast<int>(reach / step);
  const double near = number.radius + 2 * gap + size.height() / 2;
  for (int ring = 0; ring < most; ++ring) {
    const double distance = near + ring * step;
    for (const double side : {number.above ? -1.0 : 1.0, number.above ? 1.0 : -1.0}) {
      if (far_ == Far::OwnSide && (side < 0) != number.above) continue;
      for (const double aside : {0.0, -0.25, 0.25, -0.5, 0.5, -1.0, 1.0, -2.0, 2.0}) {
        const QPointF offset(aside * distance, side * distance);
        const QRectF box(number.mark + offset - QPointF(size.width(), size.height()) / 2, size);
        if (!room_.IsFree(box)) continue;
        const double length = std::hypot(offset.x(), offset.y());
        const QPointF away = offset / length;
        const QPointF end(number.mark.x() + offset.x(),
                          side < 0 ? box.bottom() + gap / 2 : box.top() - gap / 2);
        const QLineF leader(number.mark + away * (number.radius + gap / 2), end);
        if (!IsLeaderFree(leader)) continue;
        painter_.setPen(LinePen({0, 0, Palette::Grey}, geometry_.unit));
        painter_.drawLine(leader);
        room_.TakeLeader(leader);
        PaintText(number, box);
        return;
      }
    }
  }
}

bool MarkNumbers::IsLeaderFree(const QLineF& leader) const {
  if (far_ == Far::OwnSide && room_.IsOnCurve(QRectF(leader.p1(), leader.p2()).normalized())) return false;
  return !room_.IsOnText(leader);
}

#include "platform/chart/MarkNumbers.h"

#include <algorithm>
#include <cmath>

#include "platform/chart/Palette.h"

namespace {

// Fine enough that two neighbours of 60 points leave room between them.
double CellSize(double unit) { return std::max(1.0, unit / 800); }

QRectF Around(QPointF centre, QSizeF size) {
  return {centre - QPointF(size.width(), size.height()) / 2, size};
}

bool Crosses(const QLineF& line, const QRectF& rect) {
  if (rect.contains(line.p1()) || rect.contains(line.p2())) return true;
  for (const QLineF& edge :
       {QLineF(rect.topLeft(), rect.bottomRight()), QLineF(rect.topRight(), rect.bottomLeft())}) {
    if (line.intersects(edge) == QLineF::BoundedIntersection) return true;
  }
  return false;
}

}  // namespace

MarkNumbers::MarkNumbers(QPainter& painter, const ChartGraph& graph, const ChartGraph::TextParameters& text,
                         const GraphGeometry& geometry)
    : painter_(painter),
      geometry_(geometry),
      font_(geometry.TextFont(text)),
      ink_(Palette::Colour(text.colour)),
      metrics_(font_, painter.device()),
      gap_(std::max(1.0, geometry.unit * 0.002)),
      taken_(geometry.plot, CellSize(geometry.unit)),
      line_(geometry.plot, CellSize(geometry.unit)) {
  for (const ChartGraph::Operation& operation : graph.Operations()) {
    const auto* level = std::get_if<ChartGraph::Level>(&operation);
    if (!level || level->direction != ChartGraph::Direction::Horizontal) continue;
    const std::vector<double>& values = graph.DataSet(level->dataSet);
    if (!values.empty()) levels_.push_back(geometry.Y(values.front()));
  }
}

void MarkNumbers::TakeLine(const QPolygonF& line) {
  for (qsizetype i = 1; i < line.size(); ++i) line_.Take(line[i - 1], line[i]);
}

bool MarkNumbers::IsFree(const QRectF& box) const {
  const QRectF room = box.adjusted(-gap_, -gap_, gap_, gap_);
  return taken_.IsFree(room) && line_.IsFree(room) &&
         std::ranges::none_of(levels_, [&](double y) { return y > room.top() && y < room.bottom(); }) &&
         std::ranges::none_of(leaders_, [&](const QLineF& leader) { return Crosses(leader, room); });
}

// All digits are of one width.
QSizeF MarkNumbers::SizeOf(const Number& number) {
  if (number.isPlate)
    return {metrics_.horizontalAdvance(number.text) + 4 * gap_, metrics_.capHeight() + 4 * gap_};
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
  if (number.isPlate) painter_.fillRect(box, Palette::Colour(Palette::Teal));
  painter_.setPen(number.isPlate ? Palette::Colour(Palette::White) : ink_);
  const double rim = number.isPlate ? 2 * gap_ : 0;
  painter_.drawText(box.bottomLeft() + QPointF(rim, -rim), number.text);
  taken_.Take(box);
  boxes_.push_back(box);
}

void MarkNumbers::Paint(const Number& number) {
  const QSizeF size = SizeOf(number);
  if (!PaintNear(number, size) && far_ != Far::Nowhere) PaintFar(number, size);
}

// Touching the mark: on its own side, then beside it, then on the other side.
bool MarkNumbers::PaintNear(const Number& number, QSizeF size) {
  const double up = number.radius + 2 * gap_ + size.height() / 2;
  const double aside = number.radius + 2 * gap_ + size.width() / 2;
  const double side = number.above ? -up : up;
  const double shift = size.width() / 2 + gap_;
  const QPointF offsets[] = {{0, side},         {-shift, side}, {shift, side},       {-aside, side / 2},
                             {aside, side / 2}, {-aside, 0},    {aside, 0},          {0, -side},
                             {-shift, -side},   {shift, -side}, {-aside, -side / 2}, {aside, -side / 2}};
  for (const QPointF offset : offsets) {
    const QRectF box = Around(number.mark + offset, size);
    if (!IsFree(box)) continue;
    PaintText(number, box);
    return true;
  }
  return false;
}

// Farther and farther away, on its own side before the other one.
void MarkNumbers::PaintFar(const Number& number, QSizeF size) {
  const double step = size.height() / 2;
  const double reach = far_ == Far::Anywhere ? geometry_.plot.height() : 6 * size.height();
  const int most = static_cast<int>(reach / step);
  const double near = number.radius + 2 * gap_ + size.height() / 2;
  for (int ring = 0; ring < most; ++ring) {
    const double distance = near + ring * step;
    for (const double side : {number.above ? -1.0 : 1.0, number.above ? 1.0 : -1.0}) {
      if (far_ == Far::OwnSide && (side < 0) != number.above) continue;
      for (const double aside : {0.0, -0.25, 0.25, -0.5, 0.5, -1.0, 1.0, -2.0, 2.0}) {
        const QPointF offset(aside * distance, side * distance);
        const QRectF box = Around(number.mark + offset, size);
        if (!IsFree(box)) continue;
        const double length = std::hypot(offset.x(), offset.y());
        const QPointF away = offset / length;
        const QPointF end(number.mark.x() + offset.x(),
                          side < 0 ? box.bottom() + gap_ / 2 : box.top() - gap_ / 2);
        const QLineF leader(number.mark + away * (number.radius + gap_ / 2), end);
        if (!IsLeaderFree(leader)) continue;
        painter_.setPen(LinePen({0, 0, Palette::Grey}, geometry_.unit));
        painter_.drawLine(leader);
        leaders_.push_back(leader);
        PaintText(number, box);
        return;
      }
    }
  }
}

bool MarkNumbers::IsLeaderFree(const QLineF& leader) const {
  if (far_ == Far::OwnSide && !line_.IsFree(QRectF(leader.p1(), leader.p2()).normalized())) return false;
  return std::ranges::none_of(
      boxes_, [&](const QRectF& box) { return Crosses(leader, box.adjusted(-gap_, -gap_, gap_, gap_)); });
}

// Paints the values of a chart.
#include <QFontMetricsF>
#include <QList>
#include <QPaintEngine>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Palette.h"
#include "platform/chart/Placement.h"

namespace {

// Up to so many values are shown as points; a line alone cannot be read as single values, more points not at
// all.
constexpr size_t mostPoints = 200;
// A line finer than this shows no more, not even on paper, and costs time and room in a file.
constexpr int mostColumns = 2000;

class CurvePicture {
 public:
  CurvePicture(QPainter& painter, const ChartGraph& graph, const ChartGraph::Curve& curve,
               const GraphGeometry& geometry)
      : painter_(painter),
        curve_(curve),
        geometry_(geometry),
        positions_(graph.DataSet(curve.positions)),
        values_(graph.DataSet(curve.values)),
        single_(values_.size() <= mostPoints),
        numberFont_(TextFont(curve.markText, geometry.unit)),
        metrics_(numberFont_, painter.device()),
        markRadius_(MarkRadius()),
        occupied_(geometry.plot, std::max(1.0, markRadius_ / 2)) {}

  void Paint() {
    const PainterSaver saver(painter_);
    painter_.setClipRect(geometry_.plot, Qt::IntersectClip);
    PaintLine();
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setFont(numberFont_);
    if (single_) PaintPoints();
    const std::vector<size_t> shown = PaintMarks();
    PaintMarkNumbers(shown);
    PaintArrows();
  }

 private:
  double Spacing() const { return geometry_.plot.width() / static_cast<double>(values_.size() + 1); }
  double PointRadius() const {
    return std::clamp(Spacing() * 0.4, geometry_.unit * 0.0022, geometry_.unit * 0.0042);
  }
  double MarkRadius() const {
    return std::clamp(Spacing() * 0.7, geometry_.unit * 0.0045, geometry_.unit * 0.0078);
  }
  double OuterRadius() const { return single_ ? markRadius_ : markRadius_ * 1.4; }
  QPointF At(size_t i) const { return {geometry_.X(positions_[i]), geometry_.Y(values_[i])}; }
  int MarkOf(size_t i) const { return i < curve_.marks.size() ? curve_.marks[i] : 0; }
  static QRectF Around(QPointF centre, double radius) {
    return {centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius};
  }

  void PaintLine() {
    const int columns = single_ ? static_cast<int>(mostPoints)
                                : std::clamp(static_cast<int>(geometry_.plot.width()), 1, mostColumns);
    const std::vector<int> kept = Placement::KeepExtremes(values_, columns);
    painter_.setPen(LinePen(curve_.line, geometry_.unit));
    painter_.setRenderHint(QPainter::Antialiasing, kept.size() < mostColumns / 2);
    QPolygonF line;
    line.reserve(static_cast<qsizetype>(kept.size()));
    int before = -1;
    for (const int index : kept) {
      if (HasGap(before, index)) {
        PaintPolyline(line);
        line.clear();
      }
      line.append(At(static_cast<size_t>(index)));
      before = index;
    }
    PaintPolyline(line);
  }

  void PaintPolyline(const QPolygonF& line) {
    if (painter_.paintEngine()->type() != QPaintEngine::Raster) {
      painter_.drawPolyline(line);
      return;
    }
    // Stroking a crowded line as one shape takes a hundred times as long as its pieces one by one.
    QList<QLineF> pieces;
    pieces.reserve(line.size());
    for (qsizetype i = 1; i < line.size(); ++i) pieces.append(QLineF(line[i - 1], line[i]));
    painter_.drawLines(pieces);
  }

  bool HasGap(int before, int index) const {
    return before >= 0 && index > before + 1 &&
           std::any_of(values_.begin() + before + 1, values_.begin() + index,
                       [](double v) { return std::isnan(v); });
  }

  void PaintPoints() {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Palette::Colour(curve_.line.colour));
    const double radius = PointRadius();
    for (size_t i = 0; i < values_.size(); ++i) {
      if (std::isnan(values_[i]) || geometry_.IsOutside(values_[i])) continue;
      if (MarkOf(i) == 0) painter_.drawEllipse(At(i), radius, radius);
      occupied_.Take(Around(At(i), radius));
    }
  }

  // Every mark is painted but those that lie under another; what was painted is the result.
  std::vector<size_t> PaintMarks() {
    std::vector<size_t> shown;
    Placement::Occupancy centres(geometry_.plot, std::max(1.0, markRadius_));
    for (size_t i = 0; i < curve_.marks.size(); ++i) {
      if (MarkOf(i) == 0 || std::isnan(values_[i]) || geometry_.IsOutside(values_[i])) continue;
      if (centres.TakeCell(At(i)) || single_) shown.push_back(i);
    }
    painter_.setPen(Qt::NoPen);
    painter_.setRenderHint(QPainter::Antialiasing, single_);
    for (const size_t i : shown) {
      // On the solid band of a crowded line the shape shows by its rim, in black and white too.
      if (!single_) PaintDiamond(At(i), OuterRadius(), Palette::White);
      PaintDiamond(At(i), markRadius_, Palette::Red);
      occupied_.Take(Around(At(i), OuterRadius()));
    }
    return shown;
  }

  void PaintDiamond(QPointF centre, double radius, int colour) {
    const QPointF corners[] = {centre + QPointF(0, -radius), centre + QPointF(radius, 0),
                               centre + QPointF(0, radius), centre + QPointF(-radius, 0)};
    painter_.setBrush(Palette::Colour(colour));
    painter_.drawConvexPolygon(corners, 4);
  }

  // The number stands beside its mark, on the side away from the middle if it can; where marks are too many,
  // some numbers are left out, never a mark.
  void PaintMarkNumbers(const std::vector<size_t>& shown) {
    painter_.setPen(Palette::Colour(curve_.markText.colour));
    for (const size_t i : shown) {
      const bool upper = At(i).y() < geometry_.plot.center().y();
      PaintBeside(At(i), QString::number(MarkOf(i)), OuterRadius(), upper);
    }
  }

  bool PaintBeside(QPointF point, const QString& text, double distance, bool above) {
    const double width = metrics_.horizontalAdvance(text);
    const double height = metrics_.capHeight();
    const double gap = geometry_.unit * 0.0025;
    const double vertical = distance + gap + height / 2;
    const double sideways = distance + gap + width / 2;
    const QPointF first(0, above ? -vertical : vertical);
    for (const QPointF offset : {first, QPointF(sideways, 0), QPointF(-sideways, 0), -first}) {
      const QPointF centre = point + offset;
      const QRectF box(centre.x() - width / 2, centre.y() - height / 2, width, height);
      if (!occupied_.IsFree(box)) continue;
      // On the solid band of a crowded line a number needs paper under it.
      if (!single_)
        painter_.fillRect(box.adjusted(-gap / 2, -gap / 2, gap / 2, gap / 2), QColor(255, 255, 255, 215));
      painter_.drawText(box.bottomLeft(), text);
      occupied_.Take(box);
      return true;
    }
    return false;
  }

  // A point outside the scale shows as an arrow at the edge with its number, and the number of its mark
  // before it.
  void PaintArrows() {
    const double size = geometry_.unit * 0.0085;
    Placement::Occupancy centres(geometry_.plot, std::max(1.0, size * 0.4));
    std::vector<size_t> arrows;
    for (size_t i = 0; i < values_.size(); ++i) {
      if (std::isnan(values_[i]) || !geometry_.IsOutside(values_[i])) continue;
      if (centres.TakeCell(EdgeOf(i))) arrows.push_back(i);
    }
    for (const size_t i : arrows) {
      const bool above = values_[i] > geometry_.scale.bottom();
      const QPointF tip = EdgeOf(i);
      const double base = above ? 1.3 * size : -1.3 * size;
      const QPointF arrow[] = {tip, tip + QPointF(size * 0.75, base), tip + QPointF(-size * 0.75, base)};
      painter_.setPen(Qt::NoPen);
      painter_.setBrush(Palette::Colour(MarkOf(i) == 0 ? curve_.line.colour : int{Palette::Red}));
      painter_.drawConvexPolygon(arrow, 3);
      occupied_.Take(QRectF(arrow[2], arrow[1]).united(QRectF(tip, tip)));
    }
    painter_.setPen(Palette::Colour(curve_.markText.colour));
    for (const size_t i : arrows) {
      const bool above = values_[i] > geometry_.scale.bottom();
      const QString number = u'#' + QString::number(positions_[i]);
      const QString text = MarkOf(i) == 0 ? number : QString::number(MarkOf(i)) + u' ' + number;
      PaintBeside(EdgeOf(i) + QPointF(0, above ? size : -size), text, size * 0.8, !above);
    }
  }

  QPointF EdgeOf(size_t i) const {
    const QRectF& plot = geometry_.plot;
    return {geometry_.X(positions_[i]), values_[i] > geometry_.scale.bottom() ? plot.top() : plot.bottom()};
  }

  QPainter& painter_;
  const ChartGraph::Curve& curve_;
  const GraphGeometry& geometry_;
  const std::vector<double>& positions_;
  const std::vector<double>& values_;
  bool single_;
  QFont numberFont_;
  QFontMetricsF metrics_;
  double markRadius_;
  Placement::Occupancy occupied_;
};

}  // namespace

void PaintCurve(QPainter& painter, const ChartGraph& graph, const ChartGraph::Curve& curve,
                const GraphGeometry& geometry) {
  CurvePicture(painter, graph, curve, geometry).Paint();
}

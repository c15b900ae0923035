// Paints the values of a chart.
#include <QImage>
#include <QList>
#include <QPaintEngine>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/LetterPlates.h"
#include "platform/chart/MarkNumbers.h"
#include "platform/chart/Palette.h"
#include "platform/chart/Placement.h"

using namespace Qt::StringLiterals;

namespace {

// Up to so many values are shown as points; a line alone cannot be read as single values, more points not at
// all.
constexpr size_t mostPoints = 200;
// A line finer than this shows no more, not even on paper, and costs time and room in a file.
constexpr int mostColumns = 2000;
// Marks that lie nearer to each other, in parts of the page's unit, show as one on paper.
constexpr double finestDots = 2000;
// The radius of marks that can still be seen, in parts of the height of letters that can still be read.
constexpr double smallestMark = 0.37;
// Up to so many marks, a number may stand away from its mark, at the end of a leader.
constexpr size_t mostFarNumbers = 40;

// A sheet that marks are stamped on, to be laid over a picture at once: thousands of polygons, or of pictures
// one by one, would take longer than a picture may that follows the mouse.
class MarkSheet {
 public:
  // For marks with their centres in the area.
  MarkSheet(QPainter& painter, const QRectF& area, const QImage& stamp)
      : painter_(painter), stamp_(stamp), toDevice_(painter.deviceTransform()) {
    const int side = stamp.width();
    const QRect place = toDevice_.mapRect(area).toAlignedRect().adjusted(-side, -side, side, side);
    origin_ = place.topLeft();
    sheet_ = QImage(place.size(), QImage::Format_ARGB32_Premultiplied);
    sheet_.setDevicePixelRatio(stamp.devicePixelRatio());
    sheet_.fill(Qt::transparent);
    for (int y = 0; y < side; ++y) {
      const auto* row = reinterpret_cast<const QRgb*>(stamp_.constScanLine(y));
      const auto isClear = [](QRgb pixel) { return qAlpha(pixel) == 0; };
      const QRgb* first = std::find_if_not(row, row + side, isClear);
      const QRgb* end = row + side;
      while (end > first && isClear(end[-1])) --end;
      rows_.push_back({first, end, y * sheet_.width() + (first - row)});
    }
    pixels_ = reinterpret_cast<QRgb*>(sheet_.bits());
  }

  void Stamp(QPointF centre) {
    const QPointF half(stamp_.width() / 2.0, stamp_.height() / 2.0);
    const QPoint corner = (toDevice_.map(centre) - half).toPoint() - origin_;
    QRgb* const to = pixels_ + std::ptrdiff_t{corner.y()} * sheet_.width() + corner.x();
    for (const auto& [first, end, offset] : rows_) std::copy(first, end, to + offset);
  }

  void Lay() const { painter_.drawImage(toDevice_.inverted().map(QPointF(origin_)), sheet_); }

 private:
  struct Row {
    const QRgb *first, *end;  // the pixels that are not clear
    std::ptrdiff_t offset;    // of the first, on the sheet
  };
  QPainter& painter_;
  QImage stamp_;
  QTransform toDevice_;
  QPoint origin_;
  QImage sheet_;  // of 32-bit pixels, so that its lines lie without a gap
  QRgb* pixels_ = nullptr;
  std::vector<Row> rows_;
};

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
        markRadius_(MarkRadius()),
        room_(graph, geometry),
        numbers_(painter, room_, curve.markText, geometry) {}

  void Paint() {
    {
      const PainterSaver saver(painter_);
      PaintSigns();
    }
    const PainterSaver saver(painter_);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    PaintLetters();
  }

 private:
  void PaintSigns() {
    PaintLine();
    // Marks on the ends of the scale are whole, but for what would lie on the text above.
    const double out = OuterRadius();
    painter_.setClipRect(geometry_.plot.adjusted(-out, -out / 2, out, out), Qt::IntersectClip);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    if (single_) PaintPoints();
    const std::vector<size_t> marks = PaintMarks();
    const std::vector<size_t> arrows = PaintArrows();
    PaintNumbers(marks, arrows);
  }

  double Spacing() const { return geometry_.plot.width() / static_cast<double>(values_.size() + 1); }
  double PointRadius() const {
    return std::clamp(Spacing() * 0.4, geometry_.unit * 0.0022, geometry_.unit * 0.0042);
  }
  double MarkRadius() const {
    const double seen = geometry_.smallestText * smallestMark;
    // Rims of crowded marks keep out of the labels beside the first of them.
    const double least =
        std::max(geometry_.unit * 0.0045, single_ ? seen : std::min(seen, 1.1 * geometry_.TickLength()));
    return std::clamp(Spacing() * 0.7, least, std::max(least, geometry_.unit * 0.0078));
  }
  double OuterRadius() const { return single_ ? markRadius_ : markRadius_ * 1.4; }
  QPointF At(size_t i) const { return {geometry_.X(positions_[i]), geometry_.Y(values_[i])}; }
  int MarkOf(size_t i) const { return i < curve_.marks.size() ? curve_.marks[i] : 0; }
  static QRectF Around(QPointF centre, double radius) {
    return {centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius};
  }

  void PaintLine() {
    const PainterSaver saver(painter_);
    painter_.setClipRect(geometry_.plot, Qt::IntersectClip);
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
    room_.TakeLine(line);
    if (!IsRaster()) {
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
      room_.Take(Around(At(i), radius));
    }
  }

  // Every mark, once for each pixel of the device that marks lie on.
  std::vector<size_t> PaintMarks() {
    std::vector<size_t> marks;
    Placement::Occupancy centres(geometry_.plot, Pixel());
    for (size_t i = 0; i < curve_.marks.size(); ++i) {
      if (MarkOf(i) == 0 || std::isnan(values_[i]) || geometry_.IsOutside(values_[i])) continue;
      if (centres.TakeCell(At(i)) || single_) marks.push_back(i);
    }
    painter_.setPen(Qt::NoPen);
    painter_.setRenderHint(QPainter::Antialiasing, single_);
    std::optional<MarkSheet> sheet;
    if (IsRaster() && !single_ && !marks.empty()) sheet.emplace(painter_, geometry_.plot, MarkStamp());
    for (const size_t i : marks) {
      const QPointF at = At(i);
      sheet ? sheet->Stamp(at) : PaintMark(painter_, at);
      room_.Take(Around(at, OuterRadius()));
    }
    if (sheet) sheet->Lay();
    return marks;
  }

  bool IsRaster() const { return painter_.paintEngine()->type() == QPaintEngine::Raster; }
  double Pixel() const { return IsRaster() ? 1 / DeviceScale() : geometry_.unit / finestDots; }
  double DeviceScale() const { return std::max(1.0, painter_.deviceTransform().m11()); }

  QImage MarkStamp() const {
    const double scale = DeviceScale();
    const int side = 2 * static_cast<int>(std::ceil(OuterRadius() * scale)) + 1;
    QImage stamp(side, side, QImage::Format_ARGB32_Premultiplied);
    stamp.fill(Qt::transparent);
    QPainter painter(&stamp);
    painter.setPen(Qt::NoPen);
    painter.scale(scale, scale);
    PaintMark(painter, QPointF(side, side) / scale / 2);
    painter.end();
    stamp.setDevicePixelRatio(scale);
    return stamp;
  }

  // On the solid band of a crowded line the shape shows by its rim, in black and white too.
  void PaintMark(QPainter& painter, QPointF at) const {
    if (!single_) PaintDiamond(painter, at, OuterRadius(), Palette::White);
    PaintDiamond(painter, at, markRadius_, Palette::Red);
  }

  static void PaintDiamond(QPainter& painter, QPointF centre, double radius, int colour) {
    const QPointF corners[] = {centre + QPointF(0, -radius), centre + QPointF(radius, 0),
                               centre + QPointF(0, radius), centre + QPointF(-radius, 0)};
    painter.setBrush(Palette::Colour(colour));
    painter.drawConvexPolygon(corners, 4);
  }

  // A point outside the scale shows as an arrow at the edge; those of marks lie on the others.
  std::vector<size_t> PaintArrows() {
    const double size = ArrowSize();
    Placement::Occupancy crowded(geometry_.plot, std::max(1.0, size * 0.4)), marked(geometry_.plot, Pixel());
    std::vector<size_t> plain, marks;
    for (size_t i = 0; i < values_.size(); ++i) {
      if (std::isnan(values_[i]) || !geometry_.IsOutside(values_[i])) continue;
      if (MarkOf(i) == 0) {
        if (crowded.TakeCell(EdgeOf(i))) plain.push_back(i);
      } else if (marked.TakeCell(EdgeOf(i)) || single_) {
        marks.push_back(i);
      }
    }
    painter_.setPen(Qt::NoPen);
    for (const auto& [arrows, colour] :
         {std::pair{&plain, curve_.line.colour}, {&marks, int{Palette::Red}}}) {
      painter_.setBrush(Palette::Colour(colour));
      for (const size_t i : *arrows) {
        const QPointF tip = EdgeOf(i);
        const double base = IsAbove(i) ? 1.3 * size : -1.3 * size;
        const QPointF arrow[] = {tip, tip + QPointF(size * 0.75, base), tip + QPointF(-size * 0.75, base)};
        painter_.drawConvexPolygon(arrow, 3);
        room_.Take(QRectF(arrow[2], arrow[1]).united(QRectF(tip, tip)));
      }
    }
    marks.insert(marks.end(), plain.begin(), plain.end());
    return marks;
  }

  // Where its sign is.
  QPointF SignOf(size_t i) const {
    if (!geometry_.IsOutside(values_[i])) return At(i);
    return EdgeOf(i) + QPointF(0, IsAbove(i) ? ArrowSize() : -ArrowSize());
  }

  // A mark has the number of what it tells, an arrow that of its point behind it.
  MarkNumbers::Number NumberOf(size_t i) const {
    const auto point = [&] { return QString::number(std::lround(positions_[i])); };
    const QString mark = curve_.marksArePoints ? point() : QString::number(MarkOf(i));
    if (!geometry_.IsOutside(values_[i]))
      return {SignOf(i), mark, OuterRadius(), values_[i] >= curve_.middle};
    const QString text = MarkOf(i) == 0 || curve_.marksArePoints ? u'#' + point() : mark + u" #"_s + point();
    return {SignOf(i), text, ArrowSize() * 0.8, !IsAbove(i)};
  }

  // Where there is no room for all numbers, the first and the last of each run of marks have theirs first;
  // arrows without a mark come last.
  void PaintNumbers(const std::vector<size_t>& marks, const std::vector<size_t>& arrows) {
    std::vector<size_t> ends, insides, unmarked;
    for (const auto& shown : {marks, arrows}) {
      for (const size_t i : shown) {
        const bool isInside = i > 0 && MarkOf(i - 1) != 0 && MarkOf(i + 1) != 0;
        (MarkOf(i) == 0 ? unmarked : isInside ? insides : ends).push_back(i);
      }
    }
    painter_.setBrush(Qt::NoBrush);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    if (ends.size() + insides.size() <= mostFarNumbers)
      numbers_.AllowFar(single_ ? MarkNumbers::Far::Anywhere : MarkNumbers::Far::OwnSide);
    // Where one mark lies on another, there is no room for a second number.
    Placement::Occupancy tried(geometry_.plot, std::max(1.0, markRadius_));
    for (const auto& some : {ends, insides, unmarked}) {
      for (const size_t i : some) {
        if (tried.TakeCell(SignOf(i)) || single_) numbers_.Paint(NumberOf(i));
      }
    }
  }

  // In a crowded line their points show by dots.
  void PaintLetters() {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Palette::Colour(Palette::Teal));
    const double dot = geometry_.unit * 0.0045;
    std::vector<LetteredSpot> spots;
    for (const auto& [i, first, last] : curve_.letters) {
      if (std::isnan(values_[i])) continue;
      const bool isOutside = geometry_.IsOutside(values_[i]);
      const double radius = isOutside        ? ArrowSize() * 0.8
                            : MarkOf(i) != 0 ? OuterRadius()
                                             : std::max(dot, PointRadius());
      spots.push_back(
          {SignOf(i), radius, isOutside ? !IsAbove(i) : values_[i] >= curve_.middle, first, last});
      if (single_ || MarkOf(i) != 0 || isOutside) continue;
      painter_.drawEllipse(At(i), dot, dot);
      room_.Take(Around(At(i), dot));
    }
    painter_.setBrush(Qt::NoBrush);
    PaintLetterPlates(painter_, room_, geometry_, spots);
  }

  bool IsAbove(size_t i) const { return values_[i] > geometry_.scale.bottom(); }
  double ArrowSize() const { return std::max(geometry_.unit * 0.0085, geometry_.smallestText * 0.3); }
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
  double markRadius_;
  MarkRoom room_;
  MarkNumbers numbers_;
};

}  // namespace

void PaintCurve(QPainter& painter, const ChartGraph& graph, const ChartGraph::Curve& curve,
                const GraphGeometry& geometry) {
  CurvePicture(painter, graph, curve, geometry).Paint();
}

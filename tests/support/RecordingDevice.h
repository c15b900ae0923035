// A paint device that records what was painted instead of painting it: every shape with its pen, its brush
// and its place on the page, and every text with the box of its ink.
#pragma once

#include <QFontMetricsF>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPolygonF>
#include <functional>
#include <ostream>
#include <vector>

struct PaintedShape {
  enum Kind { Line, Polyline, Polygon, Rectangle, Ellipse, Text };

  Kind kind;
  QPolygonF corners;  // of an ellipse its box, of a text its ink: the box of digits and capitals
  QColor ink;         // invalid for no pen
  QList<qreal> dashes;
  double width = 0;
  QColor fill;  // invalid for no brush
  QString text{};
  QFont font{};

  QRectF Place() const { return corners.boundingRect(); }
  bool operator==(const PaintedShape&) const = default;
};

inline void PrintTo(const QColor& colour, std::ostream* out) { *out << colour.name().toStdString(); }

inline void PrintTo(const PaintedShape& shape, std::ostream* out) {
  static const char* const names[] = {"line", "polyline", "polygon", "rectangle", "ellipse", "text"};
  *out << names[shape.kind] << ' ' << shape.text.toStdString() << " ink " << shape.ink.name().toStdString()
       << (shape.dashes.isEmpty() ? "" : " dashed") << " fill " << shape.fill.name().toStdString() << " at";
  for (const QPointF corner : shape.corners) *out << " (" << corner.x() << ", " << corner.y() << ')';
}

class RecordingEngine : public QPaintEngine {
 public:
  std::vector<PaintedShape> shapes;

  RecordingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}
  bool begin(QPaintDevice*) override { return true; }
  bool end() override { return true; }
  Type type() const override { return QPaintEngine::User; }
  void updateState(const QPaintEngineState&) override {}
  void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
  void drawPath(const QPainterPath&) override {}
  void drawLines(const QLineF* lines, int count) override {
    for (const QLineF* line = lines; line != lines + count; ++line)
      Record(PaintedShape::Line, QList{line->p1(), line->p2()});
  }
  void drawRects(const QRectF* rects, int count) override {
    for (const QRectF* rect = rects; rect != rects + count; ++rect) Record(PaintedShape::Rectangle, *rect);
  }
  void drawEllipse(const QRectF& rect) override { Record(PaintedShape::Ellipse, rect); }
  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    Record(mode == PolylineMode ? PaintedShape::Polyline : PaintedShape::Polygon,
           QList<QPointF>(points, points + count));
  }
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    const double height = 0.78 * item.ascent();
    Record(PaintedShape::Text, QRectF(at.x(), at.y() - height, item.width(), height));
    shapes.back().text = item.text();
    shapes.back().font = item.font();
  }

 private:
  void Record(PaintedShape::Kind kind, const QPolygonF& corners) {
    const QPen pen = state->pen();
    const QBrush brush = state->brush();
    shapes.push_back(
        {kind, state->transform().map(corners), pen.style() == Qt::NoPen ? QColor() : pen.color(),
         pen.style() == Qt::SolidLine || pen.style() == Qt::NoPen ? QList<qreal>() : pen.dashPattern(),
         pen.widthF(), brush.style() == Qt::NoBrush ? QColor() : brush.color()});
  }
};

class RecordingDevice : public QImage {
 public:
  explicit RecordingDevice(QSize size) : QImage(size, Format_Mono) {}
  RecordingEngine* paintEngine() const override { return &engine_; }

  const std::vector<PaintedShape>& Shapes() const { return engine_.shapes; }
  std::vector<PaintedShape> Where(const std::function<bool(const PaintedShape&)>& holds) const {
    std::vector<PaintedShape> found;
    std::copy_if(Shapes().begin(), Shapes().end(), std::back_inserter(found), holds);
    return found;
  }
  std::vector<PaintedShape> Of(PaintedShape::Kind kind, const QRectF& within) const {
    return Where([&](const PaintedShape& shape) {
      return shape.kind == kind && within.contains(shape.corners.boundingRect().center());
    });
  }

 private:
  mutable RecordingEngine engine_;
};

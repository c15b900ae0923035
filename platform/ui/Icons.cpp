#include "platform/ui/Icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <charconv>
#include <string_view>
#include <utility>

namespace {

class VectorIconEngine : public QIconEngine {
 public:
  explicit VectorIconEngine(std::function<void(QPainter&)> draw) : draw_(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const double side = std::min(rect.width(), rect.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(QRectF(rect).center() - QPointF(side / 2, side / 2));
    painter->scale(side / 16, side / 16);
    if (mode == QIcon::Disabled) painter->setOpacity(0.35);
    draw_(*painter);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new VectorIconEngine(*this); }

 private:
  std::function<void(QPainter&)> draw_;
};

enum Colour { Ink, Blue, Green, Red };

// One stroke of a drawing in a 16 by 16 square, in the short form of vector graphics: M x y moves, L x y, H x
// and V y draw lines, Z closes, E x y rx ry start sweep draws a part of an ellipse (degrees,
// counter-clockwise from the right).
struct Stroke {
  Colour colour = Ink;
  const char* path = "";
};

struct Drawing {
  Symbol symbol;
  Stroke strokes[2];
};

constexpr Drawing drawings[] = {
    {Symbol::Chart, {{Ink, "M2 2V14H14"}, {Blue, "M4.5 10.5L7 6L10 9L14 3.5"}}},
    {Symbol::Data, {{Ink, "M2 3H14V13H2Z"}, {Blue, "M2 6.3H14M2 9.7H14M6.5 3V13"}}},
    {Symbol::Add, {{Green, "M8 3V13M3 8H13"}}},
    {Symbol::Edit, {{Ink, "M2.8 13.2L3.8 10L11 2.8L13.2 5L6 12.2Z"}, {Blue, "M9.2 4.6L11.4 6.8"}}},
    {Symbol::Delete, {{Red, "M3 4.5H13M6 4.5V2.5H10V4.5M4.4 4.5L5 13.5H11L11.6 4.5M7 7V11M9 7V11"}}},
    {Symbol::Tools, {{Ink, "M3 13L8.7 7.3"}, {Blue, "E10.8 5.2 3 3 80 290"}}},
    {Symbol::Database, {{Ink, "M3 4V12M13 4V12E8 12 5 2 180 180"}, {Blue, "E8 4 5 2 0 360E8 8 5 2 180 180"}}},
    {Symbol::Help, {{Blue, "E8 8 6.2 6.2 0 360"}, {Ink, "E8 6.4 1.9 1.9 170 -260L8 9.4M8 11.6V11.7"}}},
    {Symbol::Exit, {{Ink, "M9.5 2.5H3V13.5H9.5"}, {Red, "M6.5 8H14M11 5L14 8L11 11"}}},
    {Symbol::Print,
     {{Ink, "M4.5 6V2.5H11.5V6M4.5 11.5H2.3V6H13.7V11.5H11.5"}, {Blue, "M4.5 9H11.5V14H4.5Z"}}},
    {Symbol::Printer, {{Ink, "M4.5 6V2.5H11.5V6M2.3 6H13.7V11.5H2.3Z"}, {Blue, "M4.5 14H11.5M11 8.7V8.8"}}},
    {Symbol::Page, {{Ink, "M3.5 2H9.5L12.5 5V14H3.5Z"}, {Blue, "M9.5 2V5H12.5M6 8H10M6 11H10"}}},
    {Symbol::Save, {{Ink, "M2.5 2.5H11L13.5 5V13.5H2.5Z"}, {Blue, "M5 2.5V6H10V2.5M5 13.5V9.5H11V13.5"}}},
    {Symbol::ZoomIn, {{Ink, "E7 7 4.6 4.6 0 360M10.4 10.4L14 14"}, {Blue, "M7 5V9M5 7H9"}}},
    {Symbol::ZoomOut, {{Ink, "E7 7 4.6 4.6 0 360M10.4 10.4L14 14"}, {Blue, "M5 7H9"}}},
    {Symbol::Recalculate,
     {{Ink, "M3.5 2H12.5V14H3.5Z"},
      {Blue,
       "M5.8 4.5H10.2V6.2H5.8ZM5.8 9V9.1M8 9V9.1M10.2 9V9.1M5.8 11.5V11.6M8 11.5V11.6M10.2 11.5V11.6"}}},
    {Symbol::Utilities,
     {{Ink, "M2.3 5.5H13.7V13H2.3ZM5.8 5.5V3H10.2V5.5"}, {Blue, "M2.3 9H6.8M9.2 9H13.7M8 8V10"}}},
    {Symbol::Export, {{Ink, "M3 9V13.5H13V9"}, {Blue, "M8 10.5V2.5M5 5.5L8 2.5L11 5.5"}}},
    {Symbol::Copy, {{Ink, "M10.5 5.5V2.5H2.5V10.5H5.5"}, {Blue, "M5.5 5.5H13.5V13.5H5.5Z"}}},
    {Symbol::Close, {{Red, "M3.8 3.8L12.2 12.2M12.2 3.8L3.8 12.2"}}},
    {Symbol::Paste, {{Ink, "M5.5 3.5H3.5V14H12.5V3.5H10.5"}, {Blue, "M5.5 2H10.5V5H5.5ZM6 8H10M6 11H10"}}},
    {Symbol::Template, {{Ink, "M2.5 2.5H13.5V5.5H2.5Z"}, {Blue, "M2.5 8H6.5V13.5H2.5ZM9 8H13.5V13.5H9Z"}}},
    {Symbol::Expand, {{Ink, "M9.5 2.5H13.5V6.5M6.5 13.5H2.5V9.5"}, {Blue, "M13.5 2.5L9 7M2.5 13.5L7 9"}}},
    {Symbol::Units, {{Ink, "M1.5 5H14.5V11H1.5Z"}, {Blue, "M4 5V8.2M6.7 5V7M9.3 5V8.2M12 5V7"}}},
    {Symbol::First, {{Ink, "M4 3V13"}, {Blue, "M12 3L6.5 8L12 13Z"}}},
    {Symbol::Previous, {{Blue, "M11 3L5.5 8L11 13Z"}}},
    {Symbol::Next, {{Blue, "M5 3L10.5 8L5 13Z"}}},
    {Symbol::Last, {{Ink, "M12 3V13"}, {Blue, "M4 3L9.5 8L4 13Z"}}},
    {Symbol::Refresh, {{Ink, "E8 8 5.2 5.2 40 290"}, {Blue, "M12.4 1.6V4.8H9.2"}}},
    {Symbol::New, {{Ink, "M12.5 7V5L9.5 2H3.5V14H7"}, {Green, "M11 9.5V14.5M8.5 12H13.5"}}},
    {Symbol::Settings,
     {{Ink, "M2.5 4H4M7 4H13.5M2.5 8H9M12 8H13.5M2.5 12H5M8 12H13.5"},
      {Blue, "E5.5 4 1.5 1.5 0 360E10.5 8 1.5 1.5 0 360E6.5 12 1.5 1.5 0 360"}}},
    {Symbol::About, {{Blue, "E8 8 6.2 6.2 0 360"}, {Ink, "M8 7.3V11.5M8 4.6V4.7"}}},
    {Symbol::Contents, {{Ink, "M6 4H13.5M6 8H13.5M6 12H13.5"}, {Blue, "M3 4V4.1M3 8V8.1M3 12V12.1"}}},
    {Symbol::Search, {{Ink, "E7 7 4.6 4.6 0 360M10.4 10.4L14 14"}}},
    {Symbol::Back, {{Blue, "M13 8H3M7 4L3 8L7 12"}}},
    {Symbol::More, {{Ink, "M3 3.5L6.5 8L3 12.5M9 3.5L12.5 8L9 12.5"}}},
};

// Reads the numbers of a stroke one after another.
struct Reader {
  std::string_view text;

  double Number() {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    double number = 0;
    const auto end =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return number;
  }
  QPointF Point() {
    const double x = Number();
    return {x, Number()};
  }
};

QPainterPath ParsePath(std::string_view text) {
  QPainterPath path;
  Reader reader{text};
  while (!reader.text.empty()) {
    const char command = reader.text.front();
    reader.text.remove_prefix(1);
    switch (command) {
      case 'M':
        path.moveTo(reader.Point());
        break;
      case 'L':
        path.lineTo(reader.Point());
        break;
      case 'H':
        path.lineTo(reader.Number(), path.currentPosition().y());
        break;
      case 'V':
        path.lineTo(path.currentPosition().x(), reader.Number());
        break;
      case 'Z':
        path.closeSubpath();
        break;
      case 'E': {
        const QPointF centre = reader.Point(), radius = reader.Point();
        const QRectF box(centre - radius, centre + radius);
        const double start = reader.Number(), sweep = reader.Number();
        path.arcMoveTo(box, start);
        path.arcTo(box, start, sweep);
        break;
      }
      default:
        break;
    }
  }
  return path;
}

// Read at every painting, so that a change between a light and a dark desktop is followed.
QColor ColourOf(Colour colour) {
  const QColor ink = QGuiApplication::palette().color(QPalette::ButtonText);
  const bool dark = ink.lightness() > 128;
  switch (colour) {
    case Blue:
      return dark ? QColor(0x6f, 0xb4, 0xf2) : QColor(0x1f, 0x6f, 0xb5);
    case Green:
      return dark ? QColor(0x6c, 0xd0, 0x94) : QColor(0x1e, 0x84, 0x49);
    case Red:
      return dark ? QColor(0xf0, 0x8a, 0x80) : QColor(0xb8, 0x32, 0x27);
    case Ink:
      break;
  }
  return ink;
}

}  // namespace

QIcon VectorIcon(std::function<void(QPainter&)> draw) { return QIcon(new VectorIconEngine(std::move(draw))); }

QIcon SymbolIcon(Symbol symbol) {
  for (const Drawing& drawing : drawings) {
    if (drawing.symbol != symbol) continue;
    return VectorIcon([&drawing](QPainter& painter) {
      for (const Stroke& stroke : drawing.strokes) {
        painter.strokePath(ParsePath(stroke.path),
                           QPen(ColourOf(stroke.colour), 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
      }
    });
  }
  return {};
}

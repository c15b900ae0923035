#include "screens/Indicators.h"

#include <QPainter>
#include <QPainterPath>

#include "platform/ui/Icons.h"
#include "texts/DetectionRules.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int stateCount = 5;

int Known(int state) { return state > 0 && state < stateCount ? state : 0; }

QPainterPath RegularPolygon(int corners, double radius, double firstAngle) {
  QPainterPath path;
  for (int i = 0; i < corners; ++i) {
    QLineF spoke(8, 8, 8 + radius, 8);
    spoke.setAngle(firstAngle + 360.0 * i / corners);
    i == 0 ? path.moveTo(spoke.p2()) : path.lineTo(spoke.p2());
  }
  path.closeSubpath();
  return path;
}

void StrokeSign(QPainter& painter, const QPainterPath& sign, const QColor& colour) {
  painter.strokePath(sign, QPen(colour, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void FillShape(QPainter& painter, const QPainterPath& shape, const QColor& colour) {
  painter.setPen(QPen(colour.darker(130), 0.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(colour);
  painter.drawPath(shape);
}

// From good to bad: a round tick, a square bar, a warning triangle, a stop sign; nothing judged is an empty
// ring.
void DrawState(QPainter& painter, int state) {
  QPainterPath shape, sign;
  switch (state) {
    case 4:
      shape.addEllipse(QPointF(8, 8), 6.8, 6.8);
      FillShape(painter, shape, QColor(0x1e, 0x8a, 0x4c));
      sign.moveTo(4.8, 8.3);
      sign.lineTo(7.2, 10.7);
      sign.lineTo(11.4, 5.6);
      StrokeSign(painter, sign, Qt::white);
      break;
    case 3:
      shape.addRoundedRect(QRectF(1.9, 1.9, 12.2, 12.2), 1.6, 1.6);
      FillShape(painter, shape, QColor(0xff, 0xd2, 0x3f));
      sign.moveTo(4.8, 8);
      sign.lineTo(11.2, 8);
      StrokeSign(painter, sign, QColor(0x33, 0x2b, 0x00));
      break;
    case 2:
      shape.moveTo(8, 1.4);
      shape.lineTo(15.2, 14.2);
      shape.lineTo(0.8, 14.2);
      shape.closeSubpath();
      FillShape(painter, shape, QColor(0xf0, 0x8a, 0x24));
      sign.moveTo(8, 6.2);
      sign.lineTo(8, 9.6);
      sign.moveTo(8, 12.1);
      sign.lineTo(8, 12.15);
      StrokeSign(painter, sign, QColor(0x2b, 0x16, 0x00));
      break;
    case 1:
      FillShape(painter, RegularPolygon(8, 7.3, 22.5), QColor(0xb7, 0x1f, 0x1f));
      sign.moveTo(5.4, 5.4);
      sign.lineTo(10.6, 10.6);
      sign.moveTo(10.6, 5.4);
      sign.lineTo(5.4, 10.6);
      StrokeSign(painter, sign, Qt::white);
      break;
    default: {
      QPen dashes(QColor(0x80, 0x80, 0x80), 1.4, Qt::CustomDashLine, Qt::FlatCap);
      dashes.setDashPattern({2, 1.7});
      shape.addEllipse(QPointF(8, 8), 6.2, 6.2);
      painter.strokePath(shape, dashes);
    }
  }
}

void DrawLamp(QPainter& painter, bool on, bool stop) {
  QPainterPath lamp, sign;
  lamp.addEllipse(QPointF(8, 8), 6.8, 6.8);
  const QColor colour = !on    ? QColor(0x9a, 0x9a, 0x9a)
                        : stop ? QColor(0xc6, 0x28, 0x28)
                               : QColor(0x24, 0x9a, 0x55);
  FillShape(painter, lamp, colour);
  if (!on) return;
  if (stop) {
    sign.moveTo(4.6, 8);
    sign.lineTo(11.4, 8);
  } else {
    sign.moveTo(4.8, 8.3);
    sign.lineTo(7.2, 10.7);
    sign.lineTo(11.4, 5.6);
  }
  painter.strokePath(sign, QPen(Qt::white, stop ? 2.6 : 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace

QIcon ProcessStateIcon(int state) {
  return VectorIcon([state](QPainter& painter) { DrawState(painter, Known(state)); });
}

ProcessStateIndicator::ProcessStateIndicator(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  Describe();
}

void ProcessStateIndicator::SetValue(int value) {
  value_ = value;
  Describe();
}

void ProcessStateIndicator::SetCaption(const QString& caption) {
  caption_ = caption;
  updateGeometry();
  Describe();
}

void ProcessStateIndicator::Describe() {
  const QString name = ProcessState::Name(value_);
  setToolTip(u"%1: %2"_s.arg(name, ProcessState::Meaning(value_)));
  setAccessibleName(caption_.isEmpty() ? name : u"%1: %2"_s.arg(caption_, name));
  setAccessibleDescription(toolTip());
  update();
}

QSize ProcessStateIndicator::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int em = metrics.height();
  const int nameWidth = metrics.horizontalAdvance(ProcessState::Name(2));
  const int captionHeight = caption_.isEmpty() ? 0 : em * 5 / 4;
  return {std::max(metrics.horizontalAdvance(caption_), nameWidth + em * 5 / 2), captionHeight + em * 2};
}

void ProcessStateIndicator::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int em = fontMetrics().height();
  QRect rest = rect();
  if (!caption_.isEmpty()) {
    painter.drawText(rest, Qt::AlignLeft | Qt::AlignTop, caption_);
    rest.setTop(rest.top() + em * 5 / 4);
  }
  const QRect symbol(rest.left(), rest.top(), em * 2, std::min(rest.height(), em * 2));
  ProcessStateIcon(value_).paint(&painter, symbol);
  rest.setLeft(symbol.right() + em / 2);
  rest.setBottom(symbol.bottom());
  painter.drawText(rest, Qt::AlignLeft | Qt::AlignVCenter, ProcessState::Name(value_));
}

Led::Led(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  Describe();
}

void Led::SetColorValue(int value) {
  colorValue_ = value;
  Describe();
}

void Led::SetOn(bool on) {
  on_ = on;
  Describe();
}

void Led::Describe() {
  const QString text = !on_                  ? Words::State::lampOff()
                       : colorValue_ == Stop ? Words::State::lampStop()
                                             : Words::State::lampGo();
  setToolTip(text);
  setAccessibleName(text);
  update();
}

QSize Led::sizeHint() const {
  const int side = fontMetrics().height() * 2;
  return {side, side};
}

void Led::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  VectorIcon([this](QPainter& lamp) { DrawLamp(lamp, on_, colorValue_ == Stop); }).paint(&painter, rect());
}

#include "screens/Indicators.h"

#include <QPainter>

#include "platform/ui/Icons.h"
#include "texts/DetectionRules.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

QIcon ProcessStateIcon(int state) {
  switch (state) {
    case 1:
      return SymbolIcon(Symbol::StateChaos);
    case 2:
      return SymbolIcon(Symbol::StateBrinkOfChaos);
    case 3:
      return SymbolIcon(Symbol::StateThreshold);
    case 4:
      return SymbolIcon(Symbol::StateIdeal);
    default:
      return SymbolIcon(Symbol::StateNotEvaluated);
  }
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
  const Symbol lamp = !on_ ? Symbol::LampOff : colorValue_ == Stop ? Symbol::LampStop : Symbol::LampGo;
  SymbolIcon(lamp).paint(&painter, rect());
}

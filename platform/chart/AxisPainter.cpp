// Paints one axis of a graph.
#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Palette.h"
#include "platform/chart/StretchLabels.h"

namespace {

using Axis = ChartGraph::Axis;

// The decimals that a tick's number needs without what rounding left over.
int DecimalsOf(double value, double spacing) {
  constexpr int mostDecimals = 15;
  double unit = 1;
  for (int decimals = 0; decimals < mostDecimals; ++decimals, unit /= 10) {
    if (std::abs(std::round(value / unit) * unit - value) < spacing * 1e-6) return decimals;
  }
  return mostDecimals;
}

// Without an exponent.
QString NumberLabel(double value, int decimals) {
  if (std::abs(value) >= 1e15) return QString::number(value, 'g', 12);
  const double unit = std::pow(10, -decimals);
  return QString::number(std::round(value / unit) * unit + 0.0, 'f', decimals);
}

constexpr int mostNumbers = 1000;

// All numbers of an axis have as many decimals as one of them needs.
int AxisDecimals(const Axis& axis, double start, double extent) {
  int decimals = 0;
  for (int tick = 0; tick < mostNumbers && tick * axis.spacing <= extent * (1 + 1e-9); ++tick)
    decimals = std::max(decimals, DecimalsOf(start + tick * axis.spacing, axis.spacing));
  return decimals;
}

// How labels of an axis are shown: every how many ticks, and whether turned to read upwards.
struct Thinning {
  int step;
  bool turned;
};

class AxisLayout {
 public:
  AxisLayout(QPainter& painter, const Axis& axis, const GraphGeometry& geometry)
      : painter_(painter),
        axis_(axis),
        geometry_(geometry),
        horizontal_(axis.direction == ChartGraph::Direction::Horizontal),
        font_(axis.direction == ChartGraph::Direction::Horizontal ? geometry.TextFont(axis.labelText)
                                                                  : FontOf(geometry.valueLabelPixels)),
        tickLength_(geometry.TickLength()) {
    const QRectF& scale = geometry.scale;
    const double start = horizontal_ ? scale.left() : scale.top();
    const double extent = horizontal_ ? scale.width() : scale.height();
    origin_ = axis.numbered ? 0 : start;
    first_ = static_cast<int>(std::ceil((start - origin_) / axis.spacing));
    // The last tick may miss the end of the scale by a rounding error.
    ticks_ = static_cast<int>(std::floor((start - origin_ + extent) / axis.spacing * (1 + 1e-9))) + 1;
    decimals_ = AxisDecimals(axis, start, extent);
    pitch_ = axis.spacing / extent * (horizontal_ ? geometry.plot.width() : geometry.plot.height());
  }

  void Paint() {
    if (!axis_.stretches.empty()) return PaintStretches();
    const Thinning thinning = horizontal_ ? ThinHorizontal() : ThinVertical();
    painter_.setPen(LinePen({0, 0, Palette::Black}, geometry_.unit));
    PaintLine();
    const int tickStep = pitch_ < geometry_.unit * 0.006 ? thinning.step : 1;
    for (int tick = FirstOf(tickStep); tick < ticks_; tick += tickStep) PaintTick(At(tick));
    painter_.setFont(font_);
    PaintLabels(thinning);
    PaintTitle(thinning.turned);
  }

 private:
  double At(int tick) const { return origin_ + tick * axis_.spacing; }
  // The first tick of those that are so many apart.
  int FirstOf(int step) const { return (first_ + step - 1) / step * step; }
  QFontMetricsF Metrics() const { return QFontMetricsF(font_, painter_.device()); }
  double TitleHeight() const {
    return axis_.title.isEmpty()
               ? 0
               : QFontMetricsF(geometry_.TextFont(axis_.titleText), painter_.device()).height();
  }

  bool IsNumbered(double value) const {
    return !axis_.numbered || (value >= axis_.numbered->first && value <= axis_.numbered->second);
  }

  QString Label(int tick) const {
    if (axis_.labels.isEmpty()) return IsNumbered(At(tick)) ? NumberLabel(At(tick), decimals_) : QString();
    return tick < axis_.labels.size() ? axis_.labels[tick] : QString();
  }

  double WidestLabel() const {
    const QFontMetricsF metrics = Metrics();
    // Along a numbered horizontal axis the last number is the longest.
    if (axis_.labels.isEmpty())
      return metrics.horizontalAdvance(
          NumberLabel(axis_.numbered ? axis_.numbered->second : At(ticks_ - 1), decimals_));
    double widest = 0;
    for (const QString& label : axis_.labels) widest = std::max(widest, metrics.horizontalAdvance(label));
    return widest;
  }

  // 1, 2, 4, 10, 20, 40, 100, ...: multiples that are round numbers with a spacing of 5, 10, 20 or 50.
  int RoundStepFor(double needed) const {
    for (int decade = 1;; decade *= 10) {
      for (const int step : {decade, 2 * decade, 4 * decade}) {
        if (step * pitch_ >= needed || step >= ticks_) return step;
      }
    }
  }

  Thinning ThinVertical() const { return {RoundStepFor(Metrics().height()), false}; }

  Thinning ThinHorizontal() const {
    const double widest = WidestLabel();
    if (axis_.labels.isEmpty()) return {RoundStepFor(widest + geometry_.LabelGap()), false};
    const double height = Metrics().height();
    const double below = geometry_.frame.bottom() - geometry_.plot.bottom() - 3 * tickLength_ - TitleHeight();
    // Beyond every second label, turned ones tell more.
    const bool canTurn = height <= pitch_ && widest <= below;
    for (const int step : std::array{1, 2, 3, 4, 6}) {
      if (step > 2 && canTurn) return {1, true};
      if (step * pitch_ >= widest + geometry_.LabelGap()) return {step, false};
    }
    return {ticks_, false};
  }

  void PaintStretches() const {
    painter_.setPen(LinePen({0, 0, Palette::Black}, geometry_.unit));
    PaintLine();
    const QRectF& frame = geometry_.frame;
    const auto labels = PlaceStretchLabels(
        axis_.stretches, frame.left(), frame.right(), [this](double value) { return geometry_.X(value); },
        [this](const QString& text) {
          return Metrics().horizontalAdvance(text) + 1.5 * geometry_.LabelGap();
        });
    const double bottom = geometry_.plot.bottom();
    for (const StretchLabel& label : labels)
      painter_.drawLine(QPointF(label.x, bottom), QPointF(label.x, bottom + tickLength_));
    painter_.setFont(font_);
    painter_.setPen(Palette::Colour(axis_.labelText.colour));
    const QFontMetricsF metrics = Metrics();
    for (const StretchLabel& label : labels)
      painter_.drawText(QPointF(label.x - metrics.horizontalAdvance(label.text) / 2,
                                bottom + 1.4 * tickLength_ + metrics.ascent()),
                        label.text);
    PaintTitle(false);
  }

  void PaintLine() const {
    const QRectF& plot = geometry_.plot;
    painter_.drawLine(plot.bottomLeft(), horizontal_ ? plot.bottomRight() : plot.topLeft());
  }

  void PaintTick(double value) const {
    const QRectF& plot = geometry_.plot;
    if (horizontal_) {
      const double x = geometry_.X(value);
      painter_.drawLine(QPointF(x, plot.bottom()), QPointF(x, plot.bottom() + tickLength_));
    } else {
      const double y = geometry_.Y(value);
      painter_.drawLine(QPointF(plot.left() - tickLength_, y), QPointF(plot.left(), y));
    }
  }

  void PaintLabels(const Thinning& thinning) const {
    painter_.setPen(Palette::Colour(axis_.labelText.colour));
    if (axis_.numbered) PaintFirstNumber(thinning.step);
    for (int tick = FirstOf(thinning.step); tick < ticks_; tick += thinning.step)
      PaintLabel(At(tick), Label(tick), thinning.turned);
  }

  void PaintFirstNumber(int step) const {
    const QFontMetricsF metrics = Metrics();
    const double start = axis_.numbered->first;
    const QString first = NumberLabel(start, decimals_);
    int next = FirstOf(step);
    if (At(next) < start) next += step;
    const double widths = metrics.horizontalAdvance(first) + metrics.horizontalAdvance(Label(next));
    const double distance = geometry_.X(At(next)) - geometry_.X(start);
    if (distance >= widths / 2 + geometry_.LabelGap()) PaintLabel(start, first, false);
  }

  void PaintLabel(double value, const QString& text, bool turned) const {
    if (text.isEmpty()) return;
    const QFontMetricsF metrics = Metrics();
    const double width = metrics.horizontalAdvance(text);
    const double middle = (metrics.ascent() - metrics.descent()) / 2;
    const QRectF& plot = geometry_.plot;
    const double half = (turned ? metrics.height() : width) / 2;
    const double left = geometry_.X(value) - half;
    if (horizontal_ && (left < geometry_.frame.left() || left + 2 * half > geometry_.frame.right())) return;
    if (!horizontal_) {
      painter_.drawText(QPointF(plot.left() - 1.6 * tickLength_ - width, geometry_.Y(value) + middle), text);
    } else if (turned) {
      PaintTurned({geometry_.X(value) + middle, plot.bottom() + 1.6 * tickLength_ + width}, text);
    } else {
      painter_.drawText(
          QPointF(geometry_.X(value) - width / 2, plot.bottom() + 1.4 * tickLength_ + metrics.ascent()),
          text);
    }
  }

  void PaintTurned(QPointF start, const QString& text) const {
    const PainterSaver saver(painter_);
    painter_.translate(start);
    painter_.rotate(-90);
    painter_.drawText(QPointF(0, 0), text);
  }

  void PaintTitle(bool belowTurned) const {
    const QFont font = geometry_.TextFont(axis_.titleText);
    const QFontMetricsF metrics(font, painter_.device());
    const QRectF& plot = geometry_.plot;
    const double room = horizontal_ ? geometry_.frame.width() * 0.9 : geometry_.frame.height() * 0.9;
    const QString title = metrics.elidedText(axis_.title, Qt::ElideRight, room);
    const double width = metrics.horizontalAdvance(title);
    painter_.setFont(font);
    painter_.setPen(Palette::Colour(axis_.titleText.colour));
    if (horizontal_) {
      const double baseline = TitleBaseline(metrics, belowTurned);
      if (baseline + metrics.descent() > geometry_.frame.bottom()) return;  // there is no room for it
      const double rightmost = geometry_.frame.right() - geometry_.Rim() - width;
      painter_.drawText(QPointF(std::min(plot.center().x() - width / 2, rightmost), baseline), title);
    } else {
      const double middle = std::clamp(plot.center().y() + width / 2, geometry_.frame.top() + width,
                                       geometry_.frame.bottom() - tickLength_);
      PaintTurned({geometry_.frame.left() + tickLength_ + metrics.ascent(), middle}, title);
    }
  }

  // Below turned labels the title stands at the very bottom, else so that one more line of text fits beneath.
  double TitleBaseline(const QFontMetricsF& metrics, bool belowTurned) const {
    const double top = geometry_.plot.bottom(), bottom = geometry_.frame.bottom();
    if (belowTurned) return bottom - tickLength_ * 0.7 - metrics.descent();
    return std::max(top + 0.55 * (bottom - top) + metrics.descent(),
                    top + 1.4 * tickLength_ + Metrics().height() + metrics.ascent());
  }

  QPainter& painter_;
  const Axis& axis_;
  const GraphGeometry& geometry_;
  bool horizontal_;
  QFont font_;
  double tickLength_;
  double origin_;  // of tick 0
  int first_;
  int ticks_;
  int decimals_;  // of all numbers
  double pitch_;
};

}  // namespace

QStringList AxisNumbers(const Axis& axis, const QRectF& scale) {
  const bool horizontal = axis.direction == ChartGraph::Direction::Horizontal;
  const double start = horizontal ? scale.left() : scale.top();
  const double extent = horizontal ? scale.width() : scale.height();
  const int decimals = AxisDecimals(axis, start, extent);
  QStringList numbers;
  for (int tick = 0; tick < mostNumbers && tick * axis.spacing <= extent * (1 + 1e-9); ++tick)
    numbers.append(NumberLabel(start + tick * axis.spacing, decimals));
  return numbers;
}

void PaintAxis(QPainter& painter, const ChartGraph::Axis& axis, const GraphGeometry& geometry) {
  AxisLayout(painter, axis, geometry).Paint();
}

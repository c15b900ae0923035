#include "platform/chart/GraphLayout.h"

#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <set>

#include "platform/chart/GraphPainter.h"

using namespace Qt::StringLiterals;

namespace {

using Axis = ChartGraph::Axis;
using Direction = ChartGraph::Direction;

// Labels are made smaller down to this part of their size rather than broken into two lines.
constexpr double smallestInOneLine = 0.9;
// Margins take no more than this of a graph.
constexpr double widestMargins = 0.8;

double Widest(const QStringList& texts, int pixels) {
  const QFontMetricsF metrics(FontOf(pixels));
  double widest = 0;
  for (const QString& text : texts) widest = std::max(widest, metrics.horizontalAdvance(text));
  return widest;
}

// The letters' height at which the texts are no wider than the room, as far as they may get smaller.
int FitPixels(const QStringList& texts, double room, int pixels, int smallest) {
  for (double widest = Widest(texts, pixels); widest > room && pixels > smallest;
       widest = Widest(texts, pixels))
    pixels = std::clamp(static_cast<int>(pixels * room / widest), smallest, pixels - 1);
  return pixels;
}

class Layout {
 public:
  Layout(const ChartGraph& graph, const QRectF& frame, double unit, double smallestText) : graph_(graph) {
    place_.frame = frame;
    place_.scale = graph.Scale();
    place_.unit = unit;
    place_.smallestText = smallestText;
    place_.recordedPlot = graph.PlotArea();
    place_.valueLabelPixels = place_.levelLabelPixels = Pixels(4);
    const QRectF& plot = graph.PlotArea();
    left_ = plot.left() * frame.width();
    right_ = (1 - plot.right()) * frame.width();
    top_ = plot.top() * frame.height();
    bottom_ = (1 - plot.bottom()) * frame.height();
  }

  GraphGeometry Of(std::span<const ChartGraph* const> column) {
    if (HasMargins()) {
      FitValueLabels(column);
      FitLevelLabels(column);
      top_ = std::max(top_, LinesAbove());
      bottom_ = std::max(bottom_, LinesBelow());
      place_.hasPlates = HasLetters();
      if (place_.hasPlates) top_ += place_.PlateStrip();
    }
    const auto fit = [](double& one, double& other, double room) {
      const double part = std::min(1.0, widestMargins * room / std::max(1e-9, one + other));
      one *= part;
      other *= part;
    };
    fit(left_, right_, place_.frame.width());
    fit(top_, bottom_, place_.frame.height());
    place_.plot = place_.frame.adjusted(left_, top_, -right_, -bottom_);
    return place_;
  }

 private:
  bool HasMargins() const { return graph_.PlotArea() != QRectF(0, 0, 1, 1); }
  bool HasLetters() const {
    return std::ranges::any_of(graph_.Operations(), [](const ChartGraph::Operation& operation) {
      const auto* curve = std::get_if<ChartGraph::Curve>(&operation);
      return curve && !curve->letters.empty();
    });
  }
  int Pixels(int size) const { return TextPixels(size, place_.unit, place_.smallestText); }
  int Smallest() const { return static_cast<int>(std::ceil(place_.smallestText)); }
  double LineHeight(int size) const { return QFontMetricsF(FontOf(Pixels(size))).height(); }

  // The labels of vertical axes have the room between the axis and its title.
  void FitValueLabels(std::span<const ChartGraph* const> column) {
    QStringList labels;
    double beside = 0;
    for (const ChartGraph* graph : column) {
      for (const ChartGraph::Operation& operation : graph->Operations()) {
        const auto* axis = std::get_if<Axis>(&operation);
        if (!axis || axis->direction != Direction::Vertical) continue;
        labels += AxisNumbers(*axis, graph->Scale());
        place_.valueLabelPixels = Pixels(axis->labelText.size);
        beside = 3 * place_.TickLength() + (axis->title.isEmpty() ? 0 : LineHeight(axis->titleText.size));
      }
    }
    int& pixels = place_.valueLabelPixels;
    pixels = FitPixels(labels, left_ - beside, pixels, std::min(pixels, Smallest()));
    left_ = std::max(left_, Widest(labels, pixels) + beside);
  }

  void FitLevelLabels(std::span<const ChartGraph* const> column) {
    QStringList lines, parts;
    for (const ChartGraph* graph : column) {
      for (const ChartGraph::Operation& operation : graph->Operations()) {
        const auto* labels = std::get_if<ChartGraph::LineLabels>(&operation);
        if (!labels || labels->direction != Direction::Horizontal) continue;
        place_.levelLabelPixels = Pixels(labels->text.size);
        for (const ChartGraph::LineLabel& label : labels->labels) {
          const auto [name, number] = LevelLabel(label, Direction::Horizontal, graph->Scale());
          lines << name + u' ' + number;
          parts << name << number;
        }
      }
    }
    const double beside = place_.LabelGap() + place_.Rim();
    int& pixels = place_.levelLabelPixels;
    place_.levelLabelsBroken = Widest(lines, pixels) * smallestInOneLine > right_ - beside;
    const QStringList& shown = place_.levelLabelsBroken ? parts : lines;
    pixels = FitPixels(shown, right_ - beside, pixels, std::min(pixels, Smallest()));
    right_ = std::max(right_, Widest(shown, pixels) + beside);
  }

  // Texts of one height stand beside each other.
  double LinesAbove() const {
    constexpr double distance = 1.06;
    double lines = 0;
    std::set<double> heights;
    for (const ChartGraph::Operation& operation : graph_.Operations()) {
      if (const auto* text = std::get_if<ChartGraph::Text>(&operation)) {
        const bool isCentred = text->alignment == ChartGraph::Alignment::BelowCentred ||
                               text->alignment == ChartGraph::Alignment::AboveCentred;
        if (isCentred && text->position.y() <= graph_.PlotArea().top() &&
            heights.insert(text->position.y()).second)
          lines += distance * LineHeight(text->parameters.size);
      } else if (const auto* labels = std::get_if<ChartGraph::LineLabels>(&operation)) {
        if (labels->direction == Direction::Vertical)
          lines += LineHeight(labels->text.size) + place_.LabelGap() / 2;
      }
    }
    return lines;
  }

  double LinesBelow() const {
    double lines = 0;
    for (const ChartGraph::Operation& operation : graph_.Operations()) {
      const auto* text = std::get_if<ChartGraph::Text>(&operation);
      if (text && text->position.y() >= graph_.PlotArea().bottom())
        lines += LineHeight(text->parameters.size);
      const auto* axis = std::get_if<Axis>(&operation);
      if (axis && axis->direction == Direction::Horizontal)
        lines +=
            2 * place_.TickLength() + LineHeight(axis->labelText.size) + LineHeight(axis->titleText.size);
    }
    return lines;
  }

  const ChartGraph& graph_;
  GraphGeometry place_;
  double left_ = 0, right_ = 0, top_ = 0, bottom_ = 0;
};

}  // namespace

double GraphGeometry::Y(double value) const {
  const double heights = (value - scale.top()) / scale.height();
  return plot.bottom() - std::clamp(heights, -20.0, 20.0) * plot.height();
}

double GraphGeometry::HeightAt(double fraction) const {
  const double top = recordedPlot.top(), bottom = recordedPlot.bottom();
  if (fraction <= top && top > 0)
    return frame.top() + fraction / top * (plot.top() - (hasPlates ? PlateStrip() : 0) - frame.top());
  if (fraction >= bottom && bottom < 1)
    return plot.bottom() + (fraction - bottom) / (1 - bottom) * (frame.bottom() - plot.bottom());
  return plot.top() + (fraction - top) / (bottom - top) * plot.height();
}

QFont GraphGeometry::TextFont(const ChartGraph::TextParameters& parameters) const {
  return FontOf(TextPixels(parameters.size, unit, smallestText), parameters.style == 3);
}

QFont GraphGeometry::PlateFont() const {
  constexpr int size = 4;
  return FontOf(TextPixels(size, unit, smallestText), true);
}

double GraphGeometry::PlateStrip() const { return QFontMetricsF(PlateFont()).capHeight() + 7 * PlateGap(); }

double PageUnit(const QRectF& target) { return std::min(target.height(), 0.7 * target.width()); }

// The smallest library size has to stay legible, so sizes grow from a base and not from zero; where letters
// may not get smaller, the larger sizes still are a little larger.
int TextPixels(int size, double unit, double smallestText) {
  constexpr int least = 4;
  const double usual = std::round(unit * (0.0065 + 0.0018 * size));
  return static_cast<int>(std::max({1.0, usual, std::ceil(smallestText * (1 + 0.03 * (size - least)))}));
}

QFont FontOf(int pixels, bool bold) {
  QFont font;
  font.setFamilies({u"DejaVu Sans"_s, u"sans-serif"_s});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

GraphGeometry LayOut(const ChartGraph& graph, std::span<const ChartGraph* const> column, const QRectF& frame,
                     double unit, double smallestText) {
  return Layout(graph, frame, unit, smallestText).Of(column);
}

std::pair<QString, QString> LevelLabel(const ChartGraph::LineLabel& label, ChartGraph::Direction direction,
                                       const QRectF& scale) {
  const bool horizontal = direction == Direction::Horizontal;
  const double low = horizontal ? scale.top() : scale.left();
  const double high = horizontal ? scale.bottom() : scale.right();
  QString number = label.number;
  if (label.value < low) number.append(horizontal ? u" \u2193"_s : u" \u2190"_s);
  if (label.value > high) number.append(horizontal ? u" \u2191"_s : u" \u2192"_s);
  return {label.name, number};
}

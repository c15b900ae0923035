// Paints the names and values of levels.
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Palette.h"
#include "platform/chart/Placement.h"

using namespace Qt::StringLiterals;

namespace {

class LabelRow {
 public:
  LabelRow(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry)
      : painter_(painter),
        labels_(labels),
        geometry_(geometry),
        horizontal_(labels.direction == ChartGraph::Direction::Horizontal),
        font_(horizontal_ ? FontOf(geometry.levelLabelPixels) : geometry.TextFont(labels.text)),
        gap_(horizontal_ ? geometry.LabelGap() : geometry.unit * 0.005),
        rim_(geometry.Rim()) {
    for (const ChartGraph::LineLabel& label : labels.labels) ends_.push_back(EndOf(label));
    horizontal_ ? FitBelowEachOther() : FitBesideEachOther();
  }

  void Paint() {
    const QFontMetricsF metrics(font_, painter_.device());
    std::vector<double> wanted, sizes;
    for (const End& end : ends_) {
      wanted.push_back(end.wanted);
      sizes.push_back(horizontal_ ? HeightOf(end) : metrics.horizontalAdvance(end.lines.first()) + 3 * rim_);
    }
    const QRectF& plot = geometry_.plot;
    const std::vector<double> centres =
        horizontal_ ? Placement::Spread(wanted, sizes, plot.top(), plot.bottom())
                    : Placement::Spread(wanted, sizes, plot.left(), geometry_.frame.right() - rim_);
    painter_.setFont(font_);
    for (size_t i = 0; i < ends_.size(); ++i) PaintLabel(ends_[i], centres[i], sizes[i]);
  }

 private:
  struct End {
    QStringList lines;
    double wanted;  // where along the edge of the plot area the level ends
  };

  // A level outside the scale is named at the edge.
  End EndOf(const ChartGraph::LineLabel& label) const {
    const QRectF& scale = geometry_.scale;
    const auto [name, number] = LevelLabel(label, labels_.direction, scale);
    const double shown = horizontal_ ? std::clamp(label.value, scale.top(), scale.bottom())
                                     : std::clamp(label.value, scale.left(), scale.right());
    QStringList lines{name + u' ' + number};
    if (horizontal_ && geometry_.levelLabelsBroken) lines = {name, number};
    return {lines, horizontal_ ? geometry_.Y(shown) : geometry_.X(shown)};
  }

  double LineHeight() const {
    const QFontMetricsF metrics(font_, painter_.device());
    return metrics.ascent() + metrics.descent();
  }

  double HeightOf(const End& end) const { return LineHeight() * double(end.lines.size()); }

  // Where the plot area is too low for all, the middle ones go first.
  void FitBelowEachOther() {
    const auto height = [&] {
      return std::accumulate(ends_.begin(), ends_.end(), 0.0,
                             [&](double sum, const End& end) { return sum + HeightOf(end); });
    };
    while (ends_.size() > 1 && height() > geometry_.plot.height())
      ends_.erase(ends_.begin() + static_cast<std::ptrdiff_t>(ends_.size() / 2));
  }

  double Widest() const {
    const QFontMetricsF metrics(font_, painter_.device());
    double widest = 0;
    for (const End& end : ends_) {
      for (const QString& line : end.lines) widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    return widest;
  }

  // Where not even the smallest letters have room for all, the names stand without their numbers.
  void FitBesideEachOther() {
    const double room =
        (geometry_.frame.right() - rim_ - geometry_.plot.left()) / double(std::max<size_t>(1, ends_.size())) -
        3 * rim_;
    const int smallest = static_cast<int>(std::ceil(geometry_.smallestText));
    while (Widest() > room && font_.pixelSize() > smallest)
      font_.setPixelSize(
          std::clamp(static_cast<int>(font_.pixelSize() * room / Widest()), smallest, font_.pixelSize() - 1));
    if (Widest() <= room) return;
    for (size_t i = 0; i < ends_.size(); ++i) ends_[i].lines = {labels_.labels[i].name};
  }

  void PaintLabel(const End& end, double centre, double size) {
    const QRectF& plot = geometry_.plot;
    const QFontMetricsF metrics(font_, painter_.device());
    painter_.setPen(LinePen({0, 0, Palette::Grey}, geometry_.unit));
    QPointF start;
    if (horizontal_) {
      painter_.drawLine(QPointF(plot.right(), end.wanted), QPointF(plot.right() + gap_ * 0.8, centre));
      start = QPointF(plot.right() + gap_, centre - size / 2 + metrics.ascent());
    } else {
      const double half = (size - 3 * rim_) / 2;
      const double nearest = std::clamp(end.wanted, centre - half, centre + half);
      painter_.drawLine(QPointF(end.wanted, plot.top()), QPointF(nearest, plot.top() - gap_ * 0.8));
      start = QPointF(centre - half, plot.top() - gap_ - metrics.descent());
    }
    painter_.setPen(Palette::Colour(labels_.text.colour));
    for (const QString& line : end.lines) {
      painter_.drawText(start, line);
      start.ry() += LineHeight();
    }
  }

  QPainter& painter_;
  const ChartGraph::LineLabels& labels_;
  const GraphGeometry& geometry_;
  bool horizontal_;
  QFont font_;
  double gap_;
  double rim_;
  std::vector<End> ends_;
};

}  // namespace

void PaintLineLabels(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry) {
  LabelRow(painter, labels, geometry).Paint();
}

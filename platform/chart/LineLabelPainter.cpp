// Paints the names and values of levels.
#include <QFontMetricsF>
#include <algorithm>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Palette.h"
#include "platform/chart/Placement.h"

using namespace Qt::StringLiterals;

namespace {

// Labels are made smaller down to this part of their size rather than broken into two lines.
constexpr double smallestInOneLine = 0.9;

class LabelRow {
 public:
  LabelRow(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry)
      : painter_(painter),
        labels_(labels),
        geometry_(geometry),
        horizontal_(labels.direction == ChartGraph::Direction::Horizontal),
        font_(TextFont(labels.text, geometry.unit)),
        gap_(geometry.unit * (horizontal_ ? 0.009 : 0.005)),
        rim_(geometry.unit * 0.004) {
    for (const ChartGraph::LineLabel& label : labels.labels) ends_.push_back(EndOf(label));
    for (const ChartGraph::LineLabel& label : labels.alike) alike_.append(label.name + u' ' + label.number);
  }

  void Paint() {
    FitRoom();
    const QFontMetricsF metrics(font_, painter_.device());
    std::vector<double> wanted, sizes;
    for (const End& end : ends_) {
      wanted.push_back(end.wanted);
      sizes.push_back(horizontal_ ? LineHeight() * double(end.lines.size())
                                  : metrics.horizontalAdvance(end.lines.first()) + 3 * rim_);
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

  // A level outside the scale is named at the edge, with an arrow towards it.
  End EndOf(const ChartGraph::LineLabel& label) const {
    const QRectF& scale = geometry_.scale;
    const double low = horizontal_ ? scale.top() : scale.left();
    const double high = horizontal_ ? scale.bottom() : scale.right();
    QString number = label.number;
    if (label.value < low) number.append(horizontal_ ? u" \u2193"_s : u" \u2190"_s);
    if (label.value > high) number.append(horizontal_ ? u" \u2191"_s : u" \u2192"_s);
    const double shown = std::clamp(label.value, low, high);
    return {{label.name + u' ' + number}, horizontal_ ? geometry_.Y(shown) : geometry_.X(shown)};
  }

  double LineHeight() const {
    const QFontMetricsF metrics(font_, painter_.device());
    return metrics.ascent() + metrics.descent();
  }

  double Widest() const {
    const QFontMetricsF metrics(font_, painter_.device());
    double widest = 0;
    for (const End& end : ends_) {
      for (const QString& line : end.lines) widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    for (const QString& text : alike_) widest = std::max(widest, metrics.horizontalAdvance(text));
    return widest;
  }

  // All labels of a chart are of one size.
  void FitRoom() {
    const QRectF& plot = geometry_.plot;
    const double edge = geometry_.frame.right() - rim_;
    const double room = horizontal_
                            ? edge - plot.right() - gap_
                            : (edge - plot.left()) / double(std::max<size_t>(1, ends_.size())) - 3 * rim_;
    if (horizontal_ && Widest() * smallestInOneLine > room) {
      for (End& end : ends_) {
        const qsizetype space = end.lines.first().indexOf(u' ');
        end.lines = {end.lines.first().first(space), end.lines.first().sliced(space + 1)};
      }
      for (QString& text : alike_) text = text.sliced(text.indexOf(u' ') + 1);
    }
    while (Widest() > room && font_.pixelSize() > 1) {
      font_.setPixelSize(
          std::min(font_.pixelSize() - 1, static_cast<int>(font_.pixelSize() * room / Widest()) + 1));
    }
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
  QStringList alike_;
};

}  // namespace

void PaintLineLabels(QPainter& painter, const ChartGraph::LineLabels& labels, const GraphGeometry& geometry) {
  LabelRow(painter, labels, geometry).Paint();
}

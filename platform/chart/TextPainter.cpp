// Paints lines of text: single ones, and those of a table.
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Palette.h"

namespace {

// A text is made smaller down to this part of its size before it is cut short, one that has a shorter form
// down to the other part before that takes its place.
constexpr double smallestText = 0.65;
constexpr double smallestLongText = 0.85;
// Lines whose middles are so many letter heights apart do not touch.
constexpr double tightLines = 1.06;

struct FittedText {
  QFont font;
  QString text;
  QRectF bounds;  // ascent, descent and advance around the start of the base line
  bool isCut = false;
};

class TextFitter {
 public:
  TextFitter(QPainter& painter, const GraphGeometry& geometry) : painter_(painter), geometry_(geometry) {}

  FittedText Fit(const QString& text, const QStringList& shorter, const QFont& font, double maxWidth) const {
    const double least = shorter.isEmpty() ? smallestText : smallestLongText;
    for (const QString& form : QStringList{text} + shorter) {
      const QFont fitted = Shrink(form, font, maxWidth, least);
      const QFontMetricsF metrics(fitted, painter_.device());
      if (metrics.horizontalAdvance(form) <= maxWidth) return Fitted(form, fitted, metrics);
    }
    const QString last = shorter.isEmpty() ? text : shorter.last();
    const QFont fitted = Shrink(last, font, maxWidth, smallestText);
    const QFontMetricsF metrics(fitted, painter_.device());
    FittedText cut = Fitted(metrics.elidedText(last, Qt::ElideRight, maxWidth), fitted, metrics);
    cut.isCut = cut.text != last;
    return cut;
  }

 private:
  QFont Shrink(const QString& text, QFont font, double maxWidth, double least) const {
    const auto advance = [&] { return QFontMetricsF(font, painter_.device()).horizontalAdvance(text); };
    const int smallest =
        std::min(font.pixelSize(),
                 static_cast<int>(std::ceil(std::max(font.pixelSize() * least, geometry_.smallestText))));
    for (double width = advance(); width > maxWidth && font.pixelSize() > smallest; width = advance()) {
      const int wanted = static_cast<int>(font.pixelSize() * maxWidth / width);
      font.setPixelSize(std::clamp(wanted, smallest, font.pixelSize() - 1));
    }
    return font;
  }

  static FittedText Fitted(const QString& text, const QFont& font, const QFontMetricsF& metrics) {
    return {
        font, text,
        QRectF(0, -metrics.ascent(), metrics.horizontalAdvance(text), metrics.ascent() + metrics.descent())};
  }

  QPainter& painter_;
  const GraphGeometry& geometry_;
};

// Bright inks cannot be read on white paper; they get a dark plate.
void PaintPlate(QPainter& painter, const QRectF& bounds, const QColor& ink) {
  if (qGray(ink.rgb()) < 200) return;
  const double rim = bounds.height() * 0.4;
  painter.fillRect(bounds.adjusted(-rim, 0, rim, 0), QColor(64, 64, 64));
}

void PaintFitted(QPainter& painter, const FittedText& fitted, QPointF start, const QColor& ink) {
  PaintPlate(painter, fitted.bounds.translated(start), ink);
  painter.setFont(fitted.font);
  painter.setPen(ink);
  painter.drawText(start, fitted.text);
}

// Which lines of a table are shown, where, and how large.
class TableLayout {
 public:
  TableLayout(QPainter& painter, const ChartGraph::Table& table, const GraphGeometry& geometry)
      : fitter_(painter, geometry), geometry_(geometry) {
    double middle = geometry.HeightAt(table.top);
    for (const ChartGraph::Line& line : table.lines) {
      lines_.push_back({&line, middle});
      middle += line.pitch * geometry.frame.height();
    }
    if (!FitsAsRecorded()) MoveTogether();
  }

  struct Placed {
    const ChartGraph::Line* line;
    double middle;
  };
  const std::vector<Placed>& Lines() const { return lines_; }

  // The texts of a line with where they start.
  std::vector<std::pair<FittedText, double>> TextsOf(const ChartGraph::Line& line) const {
    const QRectF& frame = geometry_.frame;
    std::vector<std::pair<FittedText, double>> texts;
    double end = frame.x();  // of the text before, which the next one keeps out of
    for (const ChartGraph::Cell& cell : line.cells) {
      const QFont font = FontOf(Pixels(cell.parameters), cell.parameters.style == 3);
      const double start = std::max(frame.x() + cell.from * frame.width(), end);
      const double room = frame.x() + (cell.to - 0.01) * frame.width() - geometry_.Rim() - start;
      texts.emplace_back(fitter_.Fit(cell.text, cell.shorter, font, room), start);
      end = start + texts.back().first.bounds.width() + geometry_.LabelGap();
    }
    return texts;
  }

 private:
  int Pixels(const ChartGraph::TextParameters& text) const {
    const int usual = TextPixels(text.size, geometry_.unit, geometry_.smallestText);
    const int least = static_cast<int>(std::ceil(geometry_.smallestText));
    return std::max(std::min(usual, least), static_cast<int>(usual * part_));
  }

  double HeightOf(const Placed& placed) const {
    int pixels = 0;
    for (const ChartGraph::Cell& cell : placed.line->cells)
      pixels = std::max(pixels, Pixels(cell.parameters));
    return tightLines * pixels;
  }

  double Needed() const {
    double needed = 0;
    for (const Placed& placed : lines_) needed += HeightOf(placed);
    return needed;
  }

  bool FitsAsRecorded() const {
    double bottom = geometry_.frame.top();
    for (const Placed& placed : lines_) {
      const double half = HeightOf(placed) / 2;
      if (placed.middle - half < bottom) return false;
      bottom = placed.middle + half;
    }
    return bottom <= geometry_.frame.bottom() &&
           std::ranges::none_of(lines_, [this](const Placed& placed) { return IsCut(placed); });
  }

  bool IsCut(const Placed& placed) const {
    return std::ranges::any_of(TextsOf(*placed.line), [](const auto& text) { return text.first.isCut; });
  }

  void MoveTogether() {
    constexpr double step = 0.05, smallest = 0.3;
    const double room = geometry_.frame.height() - 2 * geometry_.Rim();
    const auto importance = [](const Placed& placed) { return placed.line->importance; };
    const int most = std::ranges::max(lines_, {}, importance).line->importance;
    while (Needed() > room && part_ > smallest) part_ -= step;
    std::erase_if(lines_, [&](const Placed& placed) { return importance(placed) < most && IsCut(placed); });
    while (Needed() > room && lines_.size() > 1)
      lines_.erase(std::ranges::min_element(lines_, std::ranges::less_equal{}, importance));
    const double between = std::max(0.0, room - Needed()) / static_cast<double>(lines_.size());
    double top = geometry_.frame.top() + geometry_.Rim();
    for (Placed& placed : lines_) {
      const double height = HeightOf(placed) + between;
      placed.middle = top + height / 2;
      top += height;
    }
  }

  TextFitter fitter_;
  const GraphGeometry& geometry_;
  double part_ = 1;  // of their size that letters have, as far as they may get smaller
  std::vector<Placed> lines_;
};

}  // namespace

void PaintText(QPainter& painter, const ChartGraph::Text& text, const GraphGeometry& geometry) {
  using enum ChartGraph::Alignment;
  const QRectF& frame = geometry.frame;
  const QPointF anchor(frame.x() + text.position.x() * frame.width(), geometry.HeightAt(text.position.y()));
  double maxWidth = text.maxWidth * frame.width();
  // What stands on the plot area keeps out of the labels left of it; those right of it stand lower.
  const double left = geometry.plot.left(), right = frame.right() - geometry.Rim();
  if (text.alignment == AboveCentred) maxWidth = std::min(maxWidth, right - left);
  const FittedText fitted = TextFitter(painter, geometry)
                                .Fit(text.text, text.shorter, geometry.TextFont(text.parameters), maxWidth);
  const QRectF& bounds = fitted.bounds;
  QPointF start = anchor - bounds.center();
  if (text.alignment == LeftMiddle) start.setX(anchor.x());
  if (text.alignment == RightMiddle) start.setX(anchor.x() - bounds.width());
  if (text.alignment == BelowCentred) start.setY(anchor.y() - bounds.top());
  if (text.alignment == AboveCentred)
    start = {std::max(left, std::min(start.x(), right - bounds.width())), anchor.y() - bounds.bottom()};
  PaintFitted(painter, fitted, start, Palette::Colour(text.parameters.colour));
}

void PaintTable(QPainter& painter, const ChartGraph::Table& table, const GraphGeometry& geometry) {
  const TableLayout layout(painter, table, geometry);
  for (const auto& [line, middle] : layout.Lines()) {
    auto cell = line->cells.begin();
    for (const auto& [text, start] : layout.TextsOf(*line))
      PaintFitted(painter, text, {start, middle - text.bounds.center().y()},
                  Palette::Colour((cell++)->parameters.colour));
  }
}

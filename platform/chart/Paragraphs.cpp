#include "platform/chart/Paragraphs.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "platform/chart/GraphLayout.h"
#include "platform/chart/Palette.h"

namespace {

using Item = Paragraphs::Item;

constexpr double columnLetters = 60;  // at least, in a column
constexpr int mostColumns = 3;

// The lines of a text that is as wide as that at most; of more than so many the last one is cut short.
QStringList Wrap(const QString& text, const QFont& font, double width, int mostLines) {
  QTextLayout layout(text, font);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    if (lines.size() == mostLines - 1) {
      lines << QFontMetricsF(font).elidedText(text.mid(line.textStart()), Qt::ElideRight, width);
      break;
    }
    lines << text.mid(line.textStart(), line.textLength()).trimmed();
  }
  layout.endLayout();
  return lines;
}

// Wrapped paragraphs in the columns of a room.
class Columns {
 public:
  Columns(QSizeF room, int pixels, int most)
      : font_(FontOf(pixels)), bold_(FontOf(pixels, true)), metrics_(font_), gap_(1.5 * pixels) {
    lineHeight_ = std::ceil(1.25 * pixels);
    const double narrowest = columnLetters * metrics_.averageCharWidth();
    count_ = std::clamp(static_cast<int>(room.width() / narrowest), 1, most);
    width_ = (room.width() - (count_ - 1) * gap_) / count_;
    rows_ = static_cast<int>(room.height() / lineHeight_);
  }

  int Room() const { return count_ * rows_; }  // lines

  void SetMarks(const std::vector<Item>& items) {
    for (const Item& item : items)
      indent_ = std::max(indent_, QFontMetricsF(bold_).horizontalAdvance(item.mark));
    if (indent_ > 0) indent_ += 0.6 * font_.pixelSize();
  }

  // False where there is no room for all with so many lines for each.
  bool Take(const std::vector<Item>& items, int mostLines) {
    paragraphs_.clear();
    int lines = 0;
    for (const Item& item : items) {
      paragraphs_.push_back(Wrap(item.text, font_, width_ - indent_, mostLines));
      lines += static_cast<int>(paragraphs_.back().size());
      if (lines > Room()) return false;
    }
    for (used_ = (lines + count_ - 1) / count_; used_ <= rows_; ++used_) {
      if (Fits()) return true;
    }
    return false;
  }

  template <class Put>
  void Place(const std::vector<Item>& items, const Put& put) const {
    int column = 0, row = 0;
    for (size_t i = 0; i < items.size(); ++i) {
      const int size = static_cast<int>(paragraphs_[i].size());
      if (row + size > used_) {
        ++column;
        row = 0;
      }
      const double x = column * (width_ + gap_);
      const auto line = [&](double at, const QString& text, bool isMark) {
        put(QPointF(at, row * lineHeight_ + metrics_.ascent()), text, isMark);
      };
      if (!items[i].mark.isEmpty()) line(x, items[i].mark, true);
      for (const QString& text : paragraphs_[i]) {
        line(x + indent_, text, false);
        ++row;
      }
    }
  }

  double Height() const { return used_ * lineHeight_; }

 private:
  // In the rows in use, no paragraph in two columns.
  bool Fits() const {
    int column = 0, row = 0;
    for (const QStringList& paragraph : paragraphs_) {
      const int size = static_cast<int>(paragraph.size());
      if (size > used_) return false;
      if (row + size > used_) {
        ++column;
        row = 0;
      }
      row += size;
    }
    return column < count_;
  }

  QFont font_, bold_;
  QFontMetricsF metrics_;
  double gap_;
  double lineHeight_;
  int count_;
  double width_;
  int rows_;
  double indent_ = 0;
  std::vector<QStringList> paragraphs_;
  int used_ = 0;
};

}  // namespace

const Paragraphs::Layout& Paragraphs::LaidOut(QSizeF room, int pixels) const {
  if (layout_.room == room && layout_.pixels == pixels) return layout_;
  layout_ = {room, pixels};
  Columns columns(room, pixels, mostColumns);
  const int most = columns.Room();
  if (IsEmpty() || most <= 0) return layout_;
  const int ends = end_.isEmpty() ? 0 : 1;
  std::vector<Item> shown(items_.begin(),
                          items_.begin() + std::min<std::ptrdiff_t>(most, std::ssize(items_)));
  columns.SetMarks(shown);
  bool fits = false;
  if (shown.size() == items_.size()) {
    if (ends > 0) shown.push_back({{}, end_});
    for (int lines = most; lines > 0 && !fits; lines = std::min(lines - 1, 6))
      fits = columns.Take(shown, lines);
  }
  // Few stand in fewer columns, where these are no higher.
  for (int count = 1; fits && count < mostColumns; ++count) {
    Columns fewer(room, pixels, count);
    fewer.SetMarks(shown);
    if (!fewer.Take(shown, most) || fewer.Height() > columns.Height()) continue;
    columns = fewer;
    break;
  }
  if (!fits) {
    const int kept = std::max(0, most - 1 - ends);
    shown.assign(items_.begin(), items_.begin() + std::min<std::ptrdiff_t>(kept, std::ssize(items_)));
    if (const auto left = std::ssize(items_) - std::ssize(shown); left > 0 && most > ends)
      shown.push_back({{}, more_(static_cast<int>(left))});
    if (ends > 0) shown.push_back({{}, end_});
    columns.Take(shown, 1);
  }
  layout_.height = columns.Height();
  columns.Place(shown, [&](QPointF start, const QString& text, bool isMark) {
    layout_.lines.push_back({start, text, isMark});
  });
  return layout_;
}

void Paragraphs::Paint(QPainter& painter, QPointF corner, QSizeF room, int pixels) const {
  painter.setPen(Palette::Colour(Palette::Black));
  for (const Line& line : LaidOut(room, pixels).lines) {
    painter.setFont(FontOf(pixels, line.isMark));
    painter.drawText(corner + line.start, line.text);
  }
}

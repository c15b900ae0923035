// Paragraphs below each other in columns, each with a mark before it: wrapped, and where there is no room for
// all of them cut short, then left out and counted. One at the end is never left out.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

class Paragraphs {
 public:
  struct Item {
    QString mark;
    QString text;
  };

  Paragraphs() = default;
  // `more` words how many of them were left out; `end` is the one at the end, or empty.
  Paragraphs(std::vector<Item> items, std::function<QString(int count)> more, QString end = {})
      : items_(std::move(items)), more_(std::move(more)), end_(std::move(end)) {}

  bool IsEmpty() const { return items_.empty() && end_.isEmpty(); }
  // What they take of a room with letters of that height; 0 where not even one line fits.
  double Height(QSizeF room, int pixels) const { return LaidOut(room, pixels).height; }
  // From the top left corner of a room as large as that.
  void Paint(QPainter& painter, QPointF corner, QSizeF room, int pixels) const;

 private:
  struct Line {
    QPointF start;  // of the base line, from the corner
    QString text;
    bool isMark;
  };
  struct Layout {
    QSizeF room;
    int pixels = 0;
    double height = 0;
    std::vector<Line> lines{};
  };
  const Layout& LaidOut(QSizeF room, int pixels) const;

  std::vector<Item> items_;
  std::function<QString(int)> more_;
  QString end_;
  mutable Layout layout_;  // the last one: the mouse asks for it at every step
};

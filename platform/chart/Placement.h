// Where things go so that they do not lie on each other: the arithmetic of labels and of crowded curves.
#pragma once

#include <QRectF>
#include <limits>
#include <span>
#include <vector>

namespace Placement {

// Centres for labels of the given sizes along a line, each as near as may be to the centre it wants, in the
// order of the wishes, without overlap and within low to high (where the sizes together fit in there).
std::vector<double> Spread(std::span<const double> wanted, std::span<const double> sizes, double low,
                           double high);

// The indexes that a curve needs at a resolution of so many columns, ascending: of each column the first and
// the last value, the smallest and the largest. Values that are not numbers are left out.
std::vector<int> KeepExtremes(std::span<const double> values, int columns);

// What is taken of an area, on a grid of square cells.
class Occupancy {
 public:
  Occupancy(const QRectF& area, double cell);
  void Take(const QRectF& rect);
  bool IsFree(const QRectF& rect) const;  // inside the area, and nothing taken
  bool TakeCell(QPointF point);           // false when it was taken

 private:
  struct Cells {
    int left, top, right, bottom;
  };
  int ColumnAt(double x) const;
  int RowAt(double y) const;
  Cells CellsOf(const QRectF& rect) const;

  QRectF area_;
  double perUnit_;  // cells
  int columns_;
  int rows_;
  std::vector<char> taken_;
};

// The band that a line covers, column by column: what lies above or below it is free.
class Band {
 public:
  Band(const QRectF& area, double column);
  void Take(QPointF from, QPointF to);
  bool IsFree(const QRectF& rect) const;

 private:
  int ColumnAt(double x) const;

  QRectF area_;
  double column_;
  double perUnit_;  // columns
  struct Reach {
    double top = std::numeric_limits<double>::infinity();
    double bottom = -std::numeric_limits<double>::infinity();
  };
  std::vector<Reach> reaches_;
};

}  // namespace Placement

#include "platform/chart/Placement.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace Placement {

namespace {

// Neighbours that would overlap and so stand side by side, as near as may be to what they want on average.
struct Cluster {
  double start;   // of the first label
  double wishes;  // sum of the starts the members want
  double size;
  int count;

  void Settle(double low, double high) { start = std::max(low, std::min(wishes / count, high - size)); }
};

}  // namespace

std::vector<double> Spread(std::span<const double> wanted, std::span<const double> sizes, double low,
                           double high) {
  std::vector<size_t> order(wanted.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return wanted[a] < wanted[b]; });

  std::vector<Cluster> clusters;
  for (const size_t index : order) {
    Cluster next{0, wanted[index] - sizes[index] / 2, sizes[index], 1};
    next.Settle(low, high);
    while (!clusters.empty() && clusters.back().start + clusters.back().size > next.start) {
      const Cluster before = clusters.back();
      clusters.pop_back();
      next = {0, before.wishes + next.wishes - next.count * before.size, before.size + next.size,
              before.count + next.count};
      next.Settle(low, high);
    }
    clusters.push_back(next);
  }

  std::vector<double> centres(wanted.size());
  size_t member = 0;
  for (const Cluster& cluster : clusters) {
    double start = cluster.start;
    for (int i = 0; i < cluster.count; ++i, ++member) {
      const size_t index = order[member];
      centres[index] = start + sizes[index] / 2;
      start += sizes[index];
    }
  }
  return centres;
}

std::vector<int> KeepExtremes(std::span<const double> values, int columns) {
  const auto count = static_cast<std::int64_t>(values.size());
  std::vector<int> kept;
  kept.reserve(static_cast<size_t>(std::min<std::int64_t>(count, 4 * std::int64_t{columns})));
  for (std::int64_t column = 0; column < columns; ++column) {
    const auto end = static_cast<int>((column + 1) * count / columns);
    int first = -1, last = -1, low = -1, high = -1;
    for (auto i = static_cast<int>(column * count / columns); i < end; ++i) {
      const double value = values[static_cast<size_t>(i)];
      if (std::isnan(value)) continue;
      if (first < 0) first = low = high = i;
      if (value < values[static_cast<size_t>(low)]) low = i;
      if (value > values[static_cast<size_t>(high)]) high = i;
      last = i;
    }
    if (first < 0) continue;
    for (const int index : {first, std::min(low, high), std::max(low, high), last}) {
      if (kept.empty() || kept.back() < index) kept.push_back(index);
    }
  }
  return kept;
}

Occupancy::Occupancy(const QRectF& area, double cell)
    : area_(area),
      perUnit_(1 / cell),
      columns_(static_cast<int>(area.width() / cell) + 1),
      rows_(static_cast<int>(area.height() / cell) + 1),
      taken_(static_cast<size_t>(columns_) * static_cast<size_t>(rows_)) {}

int Occupancy::ColumnAt(double x) const {
  return static_cast<int>(std::clamp((x - area_.left()) * perUnit_, 0.0, columns_ - 1.0));
}

int Occupancy::RowAt(double y) const {
  return static_cast<int>(std::clamp((y - area_.top()) * perUnit_, 0.0, rows_ - 1.0));
}

Occupancy::Cells Occupancy::CellsOf(const QRectF& rect) const {
  return {ColumnAt(rect.left()), RowAt(rect.top()), ColumnAt(rect.right()), RowAt(rect.bottom())};
}

void Occupancy::Take(const QRectF& rect) {
  const Cells cells = CellsOf(rect);
  for (int row = cells.top; row <= cells.bottom; ++row) {
    const auto start = taken_.begin() + std::ptrdiff_t{row} * columns_;
    std::fill(start + cells.left, start + cells.right + 1, 1);
  }
}

bool Occupancy::TakeCell(QPointF point) {
  char& taken = taken_.begin()[std::ptrdiff_t{RowAt(point.y())} * columns_ + ColumnAt(point.x())];
  return std::exchange(taken, 1) == 0;
}

bool Occupancy::IsFree(const QRectF& rect) const {
  if (!area_.contains(rect)) return false;
  const Cells cells = CellsOf(rect);
  for (int row = cells.top; row <= cells.bottom; ++row) {
    const auto start = taken_.begin() + std::ptrdiff_t{row} * columns_;
    if (std::find(start + cells.left, start + cells.right + 1, 1) != start + cells.right + 1) return false;
  }
  return true;
}

Band::Band(const QRectF& area, double column)
    : area_(area),
      column_(column),
      perUnit_(1 / column),
      reaches_(static_cast<size_t>(area.width() / column) + 1) {}

int Band::ColumnAt(double x) const {
  return static_cast<int>(
      std::clamp((x - area_.left()) * perUnit_, 0.0, static_cast<double>(reaches_.size() - 1)));
}

void Band::Take(QPointF from, QPointF to) {
  if (from.x() > to.x()) std::swap(from, to);
  const double slope = to.x() > from.x() ? (to.y() - from.y()) / (to.x() - from.x()) : 0;
  const int last = ColumnAt(to.x());
  for (int column = ColumnAt(from.x()); column <= last; ++column) {
    const double left = area_.left() + column * column_;
    const double enters = left <= from.x() ? from.y() : from.y() + slope * (left - from.x());
    const double leaves = left + column_ >= to.x() ? to.y() : from.y() + slope * (left + column_ - from.x());
    Reach& reach = reaches_[static_cast<size_t>(column)];
    reach.top = std::min({reach.top, enters, leaves});
    reach.bottom = std::max({reach.bottom, enters, leaves});
  }
}

bool Band::IsFree(const QRectF& rect) const {
  const int last = ColumnAt(rect.right());
  for (int column = ColumnAt(rect.left()); column <= last; ++column) {
    const Reach& reach = reaches_[static_cast<size_t>(column)];
    if (reach.top < rect.bottom() && reach.bottom > rect.top()) return false;
  }
  return true;
}

}  // namespace Placement

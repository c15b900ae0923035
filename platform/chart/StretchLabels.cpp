#include "platform/chart/StretchLabels.h"

#include <algorithm>

namespace {

// Labels from left to right, each with its middle at its place.
struct Row {
  double left;  // behind the last one
  std::vector<StretchLabel> labels{};

  bool Place(double x, const QString& text, double end,
             const std::function<double(const QString&)>& widthOf) {
    if (text.isEmpty() || x <= left) return false;
    const double half = widthOf(text) / 2;
    if (x - half < left || x + half > end) return false;
    left = x + half;
    labels.push_back({x, text});
    return true;
  }
};

}  // namespace

std::vector<StretchLabel> PlaceStretchLabels(std::span<const ChartGraph::Stretch> stretches, double left,
                                             double right, const std::function<double(double)>& xOf,
                                             const std::function<double(const QString&)>& widthOf) {
  Row changes{left};
  std::vector<size_t> first;  // the stretches whose headings stand there
  for (size_t i = 0; i < stretches.size(); ++i) {
    const bool isChange = i == 0 || stretches[i].heading != stretches[i - 1].heading;
    if (isChange && changes.Place(xOf(stretches[i].from), stretches[i].heading, right, widthOf))
      first.push_back(i);
  }
  Row all{left};
  QString heading;  // the last one that stands
  auto next = first.begin();
  for (size_t i = 0; i < stretches.size(); ++i) {
    const ChartGraph::Stretch& stretch = stretches[i];
    const bool isFirst = next != first.end() && *next == i;
    if (isFirst) ++next;
    const StretchLabel* const ahead =
        next == first.end() ? nullptr : &changes.labels[size_t(next - first.begin())];
    const double end = ahead ? ahead->x - widthOf(ahead->text) / 2 : right;
    const bool isNew = !stretch.heading.isEmpty() && stretch.heading != heading;
    if (all.Place(xOf(stretch.from), isFirst || isNew ? stretch.heading : stretch.text, end, widthOf))
      heading = stretch.heading;
  }
  return all.labels;
}

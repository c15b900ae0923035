// The X-bar and the R chart: what a data set gives to plot, the axis ends, and the recording of one chart.
#pragma once

#include <QString>
#include <vector>

#include "data/CData.h"
#include "engine/Engine.h"
#include "platform/chart/ChartGraph.h"
#include "platform/error/Error.h"

// A stretch of the points, from 1, both ends included.
struct PointRange {
  int first = 1;
  int last = 0;
};

// With fewer points neither a control chart nor the text window shows more than that.
constexpr int FewestPlotPoints = 5;

// The value axis of a chart cannot be made.
class ScaleError : public Error {
 public:
  explicit ScaleError(const QString& reference);
  QString Reference() const { return reference_; }  // the text reference of the message for the user

 private:
  QString reference_;
};

struct PointLetters {
  int point;
  QString first, last;

  bool operator==(const PointLetters&) const = default;
};

struct ControlChart {
  QString title;
  QString prefix;  // of its data sets' names
  QString valueTitle;
  std::vector<double> values;  // of the plot points; not a number where there is no value
  double lowerLimit = 0;
  double mean = 0;
  double upperLimit = 0;
  PointRange shown{};  // limits, marks and texts stay those of all points
  bool isFitted = false;
  bool isBeyondStandardScale = false;  // and so fitted, whatever was asked for
  double axisMaximum = 0;
  double axisMinimum = 0;
  double tickInterval = 0;
  int labelDecimals = 0;  // of the limits' labels: one more than the data
  // Per point, bit n set: it breaks active rule n. Of the chart of ranges, bit 1: it is beyond a limit.
  std::vector<std::uint8_t> rules{};
  bool marksArePoints = false;  // a mark shows its point's number instead of the rule's
  QStringList legend{};         // of the marks, in fewer and fewer words; empty for none
  QString scaleFailure{};       // the text reference of what is said when the scale cannot be made
  QString subtitle{};
  int baseFirst = 0;  // the points that the limits are calculated from, where that is a part; 0 for none
  int baseLast = 0;
  std::vector<double> sigmaLines{};  // sigmas from the centre line
  // What is known of the points besides their values.
  std::vector<PointLetters> letters{};  // of their notes
  QString axisTitle{};
  std::vector<ChartGraph::Stretch> axisStretches{};  // empty: the points' numbers
  QString period{};                                  // that the points shown were taken in
};

struct ControlCharts {
  ControlChart xbar;
  ControlChart r;
};

// The data set's figures with their results as numbers, all points shown. ScaleError when an axis cannot be
// made.
ControlCharts SetupControlCharts(const CData& data, const engine::Results& results, bool fittedScale);

// The charts show these points, or the nearest that there are, on an axis for them. ScaleError when an axis
// cannot be made.
void ShowPoints(ControlCharts& charts, PointRange points);

// Both charts get one value axis that shows all of both. ScaleError when it cannot be made.
void ShareScale(ControlChart& one, ControlChart& other);

// The points that the limits are calculated from are shown, where that is a part.
void ShowBase(ControlCharts& charts, PointRange points);

void DrawGraph(ChartGraph& graph, const ControlChart& chart);

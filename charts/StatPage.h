// The page of a data set: the verdict, and below it X-bar chart, R chart, histogram and text window together,
// recorded once and painted through any painter, and what lies under the mouse on it.
#pragma once

#include <QDateTime>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <functional>
#include <optional>
#include <vector>

#include "charts/ControlChart.h"
#include "charts/PageNotes.h"
#include "charts/PageOutput.h"
#include "charts/PointTrace.h"
#include "data/CData.h"
#include "engine/Engine.h"
#include "platform/chart/ChartPage.h"

enum class GraphId { None = -1, XBar, R, Histogram, Text };

struct StatPageOptions {
  bool fittedScale = false;  // value axes from the points and the limits, in place of the standard scale
  std::optional<PointRange> points{};  // that the control charts show; all where it is not set
  // When, in which lot and with which notes the samples were taken; nothing is known where it is null.
  std::shared_ptr<const Trace::Record> trace{};
  AxisLabels axis = AxisLabels::Numbers;
  std::optional<Period> period{};  // in place of points: those that were taken in it
  bool printedHead = false;        // a strip above the page that says what it shows
  QString libraryName{};           // that the data set stands in; left out where it is empty
  int pageNumber = 1;
  int pageCount = 1;
  QDateTime printedAt{};  // for the head; left out where it is null
  // Runs one step of the recording, named as its procedure. Where set, it may keep the step's error to
  // itself: the page then shows what could be drawn.
  std::function<void(const char* procedure, const std::function<void()>& step)> runStep{};
};

class StatPage : public OutputPage {
 public:
  // Records the page; the data set is not needed afterwards. ScaleError when a scale cannot be made, Error
  // when the engine refuses the data set, NoPointsError when no point was taken in the period.
  StatPage(const CData& data, const StatPageOptions& options);
  // The same with these numbers for the series and the bins.
  StatPage(const CData& data, const engine::Results& results, const StatPageOptions& options);

  void Paint(QPainter& painter, const QRectF& target) const;
  void PaintOut(QPainter& painter, const QRectF& target, double smallestText) const override;

  // All positions are in the coordinates of the target that was painted into.
  GraphId GraphAt(QPointF position, const QRectF& target) const;
  struct PointInfo {
    GraphId graph = GraphId::None;
    int number = 0;  // of the subgroup, from 1
    double value = 0;
    QPointF position;             // on the edge of the plot area for a point outside the scale
    std::vector<int> rules;       // the active rules that it breaks, ascending
    bool isRangeOutside = false;  // it is a range beyond a limit
  };
  // The plotted point that is meant: the nearest one with a mark, else the nearest one, if near enough.
  std::optional<PointInfo> PointAt(QPointF position, const QRectF& target) const;
  // The plotted point with that number; none where it has no value, or the graph does not show it.
  std::optional<PointInfo> Point(GraphId graph, int number, const QRectF& target) const;
  // The number of the point that stands nearest above or below the position; 0 for a graph without points.
  int NumberAt(GraphId graph, QPointF position, const QRectF& target) const;
  // The ground that the points stand on, cut off at the ends of the plot area; empty where none is shown.
  QRectF GroundOf(GraphId graph, PointRange points, const QRectF& target) const;

  QStringList SamplesOf(const PointInfo& point) const;
  int FirstSampleOf(int number) const;  // of that subgroup, counted from 1
  const PointTrace& Trace() const { return trace_; }
  std::vector<LetteredNote> NotesOn(int number) const;  // of a point that is shown

  // A point and why it is marked: by a rule, or, with rule 0, as a range beyond a limit.
  struct Mark {
    GraphId graph = GraphId::None;
    int number = 0;
    int rule = 0;
    bool operator==(const Mark&) const = default;
  };
  std::vector<Mark> Marks() const;  // also those of points not shown: the ranges, then rule by rule

  // The points that the limits are calculated from, where that is a part.
  std::optional<PointRange> BasePoints() const;
  // The scale of a chart leaves its limits less than a fifth of the height.
  bool IsFlat() const;

  void Select(GraphId graph) { page_.SelectGraph(static_cast<int>(graph)); }  // shown by a frame
  GraphId Selected() const { return static_cast<GraphId>(page_.WGGetSelectedGraph()); }
  void Blowup(GraphId graph) { page_.WGBlowupGraph(static_cast<int>(graph)); }  // it fills the page
  void Restore() { page_.WGBlowupGraph(ChartPage::NoGraph); }
  // No letters are painted smaller than so many units of the painter: 9, the pixels of a screen.
  void SetSmallestText(double height) { page_.SetSmallestText(height); }
  bool IsBlownUp() const { return page_.BlownUpGraph() != ChartPage::NoGraph; }

  // The control charts show only these points, or the nearest that there are, and say so; limits, verdict and
  // summary stay those of all.
  void ShowPoints(PointRange points);
  PointRange ShownPoints() const { return charts_.xbar.shown; }
  // Whether the standard scale cannot show the limits, so that the charts are fitted whatever was asked for.
  bool IsBeyondStandardScale() const {
    return charts_.xbar.isBeyondStandardScale || charts_.r.isBeyondStandardScale;
  }

  QString Description() const override { return description_; }
  const ChartPage& Page() const { return page_; }

 private:
  void Record(const CData& data, const StatPageOptions& options,
              const std::function<const engine::Results&()>& results);
  void NoteShown(const std::optional<Period>& period);
  QString PeriodText(const Period& period) const;
  void RecordHead(const CData& data, const StatPageOptions& options);
  QString ScaleNote(const StatPageOptions& options) const;
  double StripHeight(double part, const QRectF& target, int upper, int lower) const;
  QRectF HeadArea(const QRectF& target) const;
  QRectF VerdictArea(const QRectF& target) const;
  QRectF PageArea(const QRectF& target) const;
  void PaintNotes(QPainter& painter, const QRectF& target) const;
  struct NotesPlace {
    QRectF area;  // beneath the charts
    QSizeF room;  // that the texts had
    int pixels = 0;
  };
  NotesPlace PlaceOfNotes(const QRectF& target) const;
  const ControlChart* Chart(GraphId graph) const;  // null for a graph without points

  QString description_;
  QString samples_;
  int subgroupSize_ = 1;
  PointTrace trace_;
  AxisLabels axis_ = AxisLabels::Numbers;
  std::vector<LetteredNote> notes_;  // of the points shown
  Paragraphs noteTexts_;
  ControlCharts charts_;
  ChartPage page_;
  std::optional<ChartGraph> head_;
  ChartGraph verdict_{QRectF(0, 0, 1, 1), false};
};

// What is known of the points of a page besides their values: when and in which lot they were taken, what was
// noted about them, and which of them were taken in a stretch of days.
#pragma once

#include <QDate>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "charts/ControlChart.h"
#include "data/Trace.h"
#include "platform/error/Error.h"

// Days of this place, both included. A day that is not valid leaves its end open.
struct Period {
  QDate since;
  QDate until;

  bool Has(const QDateTime& time) const;
  QString Text() const;
  static Period Month(QDate of, int months);  // so many months later
};

// What was to be shown of a period has no points.
class NoPointsError : public InputError {
 public:
  using InputError::InputError;
};

enum class AxisLabels { Numbers, Times, Lots };

class PointTrace {
 public:
  PointTrace() = default;
  PointTrace(std::shared_ptr<const Trace::Record> record, int subgroupSize, int points);

  // A point has the time and the lot of its last sample.
  QDateTime TimeOf(int point) const;  // not valid where it is not known
  QString LotOf(int point) const;
  std::span<const Trace::Note> NotesOn(int point) const { return NotesOn(PointRange{point, point}); }
  std::span<const Trace::Note> NotesOn(PointRange points) const;
  // On samples that do not make a point yet.
  std::span<const Trace::Note> NotesBehindPoints() const;
  int PointOf(const Trace::Note& note) const { return static_cast<int>(note.sample / subgroupSize_) + 1; }
  const Trace::Record& Record() const { return *record_; }

  bool Has(AxisLabels labels) const;  // for one of the points
  // What stands at the axis of the points shown; nothing where no point has such labels.
  std::vector<ChartGraph::Stretch> Stretches(AxisLabels labels, PointRange shown) const;

  // From the first point that was taken then to the last; none where there is none.
  std::optional<PointRange> PointsIn(const Period& period) const;
  QString NoPointsText(const Period& period) const;  // why there is none

 private:
  const Trace::Run* RunOf(int point) const;
  std::optional<PointRange> PointsOf(const Trace::Run& run) const;  // with their last samples in it

  std::shared_ptr<const Trace::Record> record_ = std::make_shared<Trace::Record>();
  int subgroupSize_ = 1;
  int points_ = 0;
};

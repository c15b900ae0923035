#include "charts/PointTrace.h"

#include <algorithm>
#include <utility>

#include "platform/language/LocalTimes.h"
#include "texts/NoteWords.h"

bool Period::Has(const QDateTime& time) const {
  if (!time.isValid()) return false;
  const QDate day = time.toLocalTime().date();
  return (!since.isValid() || day >= since) && (!until.isValid() || day <= until);
}

QString Period::Text() const {
  if (!until.isValid()) return Words::Period::since(LocalTimes::Day(since));
  if (!since.isValid()) return Words::Period::until(LocalTimes::Day(until));
  return Words::Period::between(LocalTimes::Day(since), LocalTimes::Day(until));
}

Period Period::Month(QDate of, int months) {
  const QDate first = QDate(of.year(), of.month(), 1).addMonths(months);
  return {first, first.addMonths(1).addDays(-1)};
}

PointTrace::PointTrace(std::shared_ptr<const Trace::Record> record, int subgroupSize, int points)
    : subgroupSize_(subgroupSize), points_(points) {
  if (record) record_ = std::move(record);
}

const Trace::Run* PointTrace::RunOf(int point) const {
  return record_->RunAt(qsizetype{point} * subgroupSize_ - 1);
}

std::optional<PointRange> PointTrace::PointsOf(const Trace::Run& run) const {
  const int first = static_cast<int>(run.first / subgroupSize_) + 1;
  const int last = std::min(points_, static_cast<int>(run.End() / subgroupSize_));
  return first <= last ? std::optional(PointRange{first, last}) : std::nullopt;
}

QDateTime PointTrace::TimeOf(int point) const {
  const Trace::Run* run = RunOf(point);
  return run ? run->time : QDateTime();
}

QString PointTrace::LotOf(int point) const {
  const Trace::Run* run = RunOf(point);
  return run ? run->lot : QString();
}

std::span<const Trace::Note> PointTrace::NotesOn(PointRange points) const {
  const auto [first, end] = record_->NotesOn(qsizetype{points.first - 1} * subgroupSize_,
                                             qsizetype{points.last - points.first + 1} * subgroupSize_);
  return {first, end};
}

std::span<const Trace::Note> PointTrace::NotesBehindPoints() const {
  return std::span(record_->notes).subspan(NotesOn(PointRange{1, points_}).size());
}

bool PointTrace::Has(AxisLabels labels) const {
  return std::ranges::any_of(record_->runs, [&](const Trace::Run& run) {
    if (!PointsOf(run)) return false;
    return labels == AxisLabels::Times ? run.time.isValid()
                                       : labels == AxisLabels::Lots && !run.lot.isEmpty();
  });
}

std::vector<ChartGraph::Stretch> PointTrace::Stretches(AxisLabels labels, PointRange shown) const {
  constexpr int numberedPoints = 5;   // so many apart
  constexpr int mostStretches = 400;  // finer ones have no room anywhere
  std::vector<ChartGraph::Stretch> stretches;
  if (!Has(labels)) return stretches;
  const int apart = (shown.last - shown.first) / mostStretches;
  const Trace::Run* before = nullptr;
  for (int point = shown.first; point <= shown.last; ++point) {
    const Trace::Run* run = RunOf(point);
    if (run && !(labels == AxisLabels::Times ? run->time.isValid() : !run->lot.isEmpty())) run = nullptr;
    const bool isFirst = point == shown.first || run != before;
    if (!isFirst && (run || point % numberedPoints != 0)) continue;
    if (!stretches.empty() && point - stretches.back().from < apart) continue;
    before = run;
    ChartGraph::Stretch stretch{double(point), {}, {}};
    if (!run) {
      stretch.text = u'#' + QString::number(point);
    } else if (labels == AxisLabels::Lots) {
      stretch.heading = run->lot;
    } else {
      stretch.heading = LocalTimes::Day(run->time.toLocalTime().date());
      stretch.text = LocalTimes::Clock(run->time);
    }
    if (!stretches.empty() && stretches.back().heading == stretch.heading &&
        stretches.back().text == stretch.text)
      continue;
    stretches.push_back(std::move(stretch));
  }
  return stretches;
}

std::optional<PointRange> PointTrace::PointsIn(const Period& period) const {
  std::optional<PointRange> found;
  for (const Trace::Run& run : record_->runs) {
    const auto points = period.Has(run.time) ? PointsOf(run) : std::nullopt;
    if (points) found = found ? PointRange{found->first, points->last} : *points;
  }
  return found;
}

QString PointTrace::NoPointsText(const Period& period) const {
  QDateTime first, last;
  for (const Trace::Run& run : record_->runs) {
    if (!run.time.isValid() || !PointsOf(run)) continue;
    if (!first.isValid() || run.time < first) first = run.time;
    if (!last.isValid() || run.time > last) last = run.time;
  }
  const auto day = [](const QDateTime& time) { return LocalTimes::Day(time.toLocalTime().date()); };
  return first.isValid() ? Words::Period::noPoints(period.Text(), day(first), day(last))
                         : Words::Period::noTimes(period.Text());
}

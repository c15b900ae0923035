// What the chart screen does with points: stretches of them, marks, notes, and what their axis shows.
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <algorithm>

#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Settings.h"
#include "core/Trap.h"
#include "platform/ui/ButtonBar.h"
#include "screens/MarkList.h"
#include "screens/NoteForm.h"
#include "screens/PageView.h"
#include "screens/PointsBar.h"
#include "screens/StatGraphics.h"
#include "screens/UnplacedForm.h"
#include "screens/VerdictPanel.h"
#include "texts/ChartWords.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;

// The bar offers the stretch that is selected, or the points that are shown.
void StatGraphics::OfferStretch() {
  if (!view_->Page()) return;
  const auto& stretch = view_->Stretch();
  const bool isPart = points_ || period_;
  pointsBar_->Offer(stretch.value_or(view_->Page()->ShownPoints()), data_->NumberOfPlotPoints());
  pointsBar_->OfferMonths(Traced().Has(AxisLabels::Times));
  pointsBar_->ShowAs(isPart);
  pointsBar_->setVisible(stretch || isPart);
}

void StatGraphics::ShowPoints(std::optional<PointRange> points) {
  Trap(u"StatGraphics::ShowPoints"_s, [&] {
    points_ = points;
    period_.reset();
    view_->SetStretch(std::nullopt);
    StartStatGraphics();
    OfferStretch();
  });
}

void StatGraphics::ShowMonth(int months) {
  Trap(u"StatGraphics::ShowMonth"_s, [&] {
    const Period month = Period::Month(Globals().clock->Now().date(), months);
    if (!Traced().PointsIn(month)) return ShowNews(Words::Period::noneInMonth(month.Text()));
    ShowNews({});
    points_.reset();
    period_ = month;
    view_->SetStretch(std::nullopt);
    StartStatGraphics();
    OfferStretch();
  });
}

// Where the part in view does not have it, another part of the same length does.
void StatGraphics::ShowMark(GraphId graph, int number) {
  if (view_->ShowPoint(graph, number) || !(points_ || period_)) return;
  const auto [from, to] = view_->Page()->ShownPoints();
  const int first = std::clamp(number - (to - from) / 2, 1, data_->NumberOfPlotPoints() - (to - from));
  ShowPoints(PointRange{first, first + to - from});
  view_->ShowPoint(graph, number);
}

void StatGraphics::StepMark(int step) {
  const auto& point = view_->ShownPoint();
  verdict_->Marks().Step(point ? point->graph : GraphId::None, point ? point->number : 0, step);
}

PointTrace StatGraphics::Traced() const {
  return PointTrace(trace_, data_->SubGroupSize(), data_->NumberOfPlotPoints());
}

// False where it is known already.
bool StatGraphics::TakeTrace() {
  auto trace = std::make_shared<const Trace::Record>(DataObjectFunctions::TraceOf(*data_));
  const auto same = [&](auto part) { return trace_ && (*trace_).*part == (*trace).*part; };
  using Trace::Record;
  if (same(&Record::runs) && same(&Record::notes) && same(&Record::unplacedRuns) &&
      same(&Record::unplacedNotes))
    return false;
  trace_ = std::move(trace);
  Toolbar1->Entry(Utilities, 8)->setEnabled(!trace_->unplacedRuns.empty() || !trace_->unplacedNotes.empty());
  cboAxis->setVisible(Traced().Has(AxisLabels::Times) || Traced().Has(AxisLabels::Lots));
  return true;
}

void StatGraphics::LabelAxis(int labels) {
  Settings::Write(Settings::chartAxis, QString::number(labels));
  StartStatGraphics();
}

void StatGraphics::NotePoint() {
  Trap(u"StatGraphics::NotePoint"_s, [&] {
    const auto point = view_->ShownPoint();
    if (!point) return ShowInformationMessage(Words::Note::choosePoint());
    if (NoteForm(*data_, *view_->Page(), point->number, this).exec() != QDialog::Accepted) return;
    ShowTraceAnew(point);
    ShowNews(Words::Note::saved(Globals().clock->Now().toString(u"HH:mm:ss"_s)));
  });
}

void StatGraphics::ListUnplaced() {
  Trap(u"StatGraphics::ListUnplaced"_s, [&] {
    const auto point = view_->ShownPoint();
    UnplacedForm form(*data_, *view_->Page(), point ? std::optional(point->number) : std::nullopt, this);
    form.exec();
    if (form.HasChanged()) ShowTraceAnew(point);
  });
}

// A window above takes the mouse off its point.
void StatGraphics::ShowTraceAnew(const std::optional<StatPage::PointInfo>& point) {
  TakeTrace();
  StartStatGraphics();
  if (point) view_->ShowPoint(point->graph, point->number);
}

#include "screens/VerdictPanel.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "screens/Controls.h"
#include "screens/Indicators.h"
#include "screens/MarkList.h"
#include "screens/SaveQuestions.h"
#include "screens/StatSummary.h"
#include "texts/ChartWords.h"
#include "texts/DetectionRules.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

VerdictPanel::VerdictPanel(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  auto* panel = new QWidget(this);
  ProcessStateIndicator1 = Named(new ProcessStateIndicator(panel), u"ProcessStateIndicator1"_s);
  ProcessStateIndicator1->SetCaption(LoadResText(u"ProcessControlIndicator;268"));
  lblLimits = TextLabel(u"lblLimits"_s, panel);
  StatSummary1 = Named(new StatSummary(panel), u"StatSummary1"_s);
  StatSummary1->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(ProcessStateIndicator1);
  column->addWidget(BuildRuleViolation());
  column->addWidget(BuildMarks(), 1);
  column->addWidget(lblLimits);
  column->addWidget(StatSummary1);
  column->addStretch();
  setWidget(panel);
}

void VerdictPanel::SetColumn(int width) {
  setFixedWidth(std::max(width, widget()->minimumSizeHint().width()) +
                verticalScrollBar()->sizeHint().width());
}

QWidget* VerdictPanel::BuildRuleViolation() {
  auto* panelRuleViolation =
      Named(new QGroupBox(LoadResText(u"Rule Violation;269"), this), u"panelRuleViolation"_s);
  orvLEDControl1 = Named(new Led(panelRuleViolation), u"orvLEDControl1"_s);
  panelRuleViolationValue = Named(new QLabel(panelRuleViolation), u"panelRuleViolationValue"_s);
  panelRuleViolationValue->setTextFormat(Qt::PlainText);
  panelRuleViolationValue->setFont(HeadingFont(*this));
  panelMessage = TextLabel(u"panelMessage"_s, panelRuleViolation);
  auto* value = new QHBoxLayout;
  value->addWidget(orvLEDControl1);
  value->addWidget(panelRuleViolationValue, 1);
  auto* panel = new QVBoxLayout(panelRuleViolation);
  panel->addLayout(value);
  panel->addWidget(panelMessage);
  return panelRuleViolation;
}

QWidget* VerdictPanel::BuildMarks() {
  marksBox_ = Named(new QWidget(this), u"panelMarks"_s);
  marks_ = Named(new MarkList(marksBox_), u"MarkList"_s);
  auto* steps = new QHBoxLayout;
  const auto button = [&](const QString& name, const QString& caption, const QString& toolTip, int step) {
    auto* made = Named(new QPushButton(caption, marksBox_), name);
    made->setToolTip(toolTip);
    made->setAutoDefault(false);
    made->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // the column is wide enough for both
    connect(made, &QPushButton::clicked, this, [this, step] { Q_EMIT StepRequested(step); });
    steps->addWidget(made);
  };
  button(u"cmdPreviousMark"_s, Words::Marks::previous(), Words::Marks::previousTip(), -1);
  button(u"cmdNextMark"_s, Words::Marks::next(), Words::Marks::nextTip(), 1);
  auto* column = new QVBoxLayout(marksBox_);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(new QLabel(Words::Marks::title(), marksBox_));
  column->addLayout(steps);
  column->addWidget(marks_, 1);
  return marksBox_;
}

void VerdictPanel::Show(const CData& dataSet, const StatPage& page) {
  // A data set in control may still carry the number of an older verdict.
  const bool inControl = dataSet.IsInControl();
  const qint16 violation = inControl ? qint16(0) : dataSet.RuleViolation();
  orvLEDControl1->SetColorValue(inControl ? Led::Go : Led::Stop);
  orvLEDControl1->SetOn(true);
  panelRuleViolationValue->setText(inControl ? LoadResText(u"<none>;295") : QString::number(violation));
  panelMessage->setText(GlobalFunctions::RuleViolationText(violation));
  ProcessStateIndicator1->SetValue(dataSet.ProcessState());

  marks_->Show(page);
  marksBox_->setVisible(!marks_->IsEmpty());
  const auto base = page.BasePoints();
  const QString hint =
      SaveQuestions::LimitsHint(dataSet, base ? std::optional(base->last - base->first + 1) : std::nullopt);
  lblLimits->setText(Words::Chart::withRecalculate(hint));
  lblLimits->setVisible(!hint.isEmpty());
  StatSummary1->Show(dataSet);
}

// The summary repeats what the page shows: where there is little room it makes way for the marks.
void VerdictPanel::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  StatSummary1->setVisible(height() >= fontMetrics().height() * 34);
}

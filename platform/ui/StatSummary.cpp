#include "platform/ui/StatSummary.h"

#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

struct Row {
  const char16_t* label;
  const char16_t* name;  // of the value
};
constexpr Row rows[] = {
    {u"Cpk", u"CPKValue"},       {u"Samples", u"SampleQty"},  {u"Subgroup Size", u"SubGroupSize"},
    {u"Min", u"MinValue"},       {u"Max", u"MaxValue"},       {u"Std. Dev", u"StdDevValue"},
    {u"USL", u"UpperSpecLimit"}, {u"LSL", u"LowerSpecLimit"},
};

// The general number form: as many digits as the value needs, 15 at most.
QString General(double value) { return QString::number(value, 'g', 15); }

}  // namespace

StatSummary::StatSummary(QWidget* parent) : QFrame(parent) {
  setFrameShape(QFrame::StyledPanel);
  auto* grid = new QGridLayout(this);
  const int em = fontMetrics().height();
  grid->setHorizontalSpacing(em);
  grid->setVerticalSpacing(em / 4);
  grid->setColumnStretch(1, 1);
  for (size_t i = 0; i < values_.size(); ++i) {
    auto* label = new QLabel(QString::fromUtf16(rows[i].label), this);
    auto* value = values_[i] = new QLabel(this);
    value->setObjectName(QString::fromUtf16(rows[i].name));
    value->setAccessibleName(label->text());
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setMinimumWidth(fontMetrics().horizontalAdvance(u"-00000.0000"_s));
    grid->addWidget(label, int(i), 0);
    grid->addWidget(value, int(i), 1);
  }
  QFont bold = font();
  bold.setBold(true);
  values_[0]->setFont(bold);
  grid->setRowStretch(int(values_.size()), 1);
}

void StatSummary::SetCPKValue(double value) { values_[0]->setText(General(value)); }
void StatSummary::SetSampleQty(int value) { values_[1]->setText(QString::number(value)); }
void StatSummary::SetSubGroupSize(int value) { values_[2]->setText(QString::number(value)); }
void StatSummary::SetMinValue(double value) { values_[3]->setText(General(value)); }
void StatSummary::SetMaxValue(double value) { values_[4]->setText(General(value)); }
void StatSummary::SetStdDevValue(double value) { values_[5]->setText(General(value)); }
void StatSummary::SetUpperSpecLimit(double value) { values_[6]->setText(General(value)); }
void StatSummary::SetLowerSpecLimit(double value) { values_[7]->setText(General(value)); }

void StatSummary::Clear() {
  for (QLabel* value : values_) value->clear();
}

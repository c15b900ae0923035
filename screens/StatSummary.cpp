#include "screens/StatSummary.h"

#include <QGridLayout>
#include <QLabel>

#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

// The general number form: as many digits as the value needs, 15 at most.
QString General(double value) { return QString::number(value, 'g', 15); }

struct Row {
  Text<> label;
  const char16_t* name;  // of the value
  QString (*value)(const CData& dataSet);
};

constexpr Row rows[] = {
    {Words::Figure::cpk, u"CPKValue", [](const CData& data) { return General(data.CPKValue()); }},
    {Words::Figure::samples, u"SampleQty", [](const CData& data) { return General(data.SampleQty()); }},
    {Words::Figure::subgroupSize, u"SubGroupSize",
     [](const CData& data) { return General(data.SubGroupSize()); }},
    {Words::Figure::min, u"MinValue", [](const CData& data) { return General(data.MinValue()); }},
    {Words::Figure::max, u"MaxValue", [](const CData& data) { return General(data.MaxValue()); }},
    {Words::Figure::stdDev, u"StdDevValue", [](const CData& data) { return General(data.StdDevValue()); }},
    {Words::Figure::usl, u"UpperSpecLimit", [](const CData& data) { return General(data.UpperSpecLimit()); }},
    {Words::Figure::lsl, u"LowerSpecLimit", [](const CData& data) { return General(data.LowerSpecLimit()); }},
};

}  // namespace

StatSummary::StatSummary(QWidget* parent) : QFrame(parent) {
  setFrameShape(QFrame::StyledPanel);
  auto* grid = new QGridLayout(this);
  const int em = fontMetrics().height();
  grid->setHorizontalSpacing(em / 2);
  grid->setVerticalSpacing(em / 4);
  grid->setColumnStretch(1, 1);
  for (const Row& row : rows) {
    auto* label = new QLabel(row.label(), this);
    auto* value = new QLabel(this);
    value->setObjectName(QString::fromUtf16(row.name));
    value->setAccessibleName(label->text());
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setMinimumWidth(fontMetrics().horizontalAdvance(u"-0000.0000"_s));
    const int line = int(values_.size());
    grid->addWidget(label, line, 0);
    grid->addWidget(value, line, 1);
    values_ << value;
  }
  QFont bold = font();
  bold.setBold(true);
  values_.first()->setFont(bold);
  grid->setRowStretch(int(values_.size()), 1);
}

void StatSummary::Show(const CData& dataSet) {
  for (qsizetype i = 0; i < values_.size(); ++i) values_[i]->setText(rows[i].value(dataSet));
}

void StatSummary::Clear() {
  for (QLabel* value : values_) value->clear();
}

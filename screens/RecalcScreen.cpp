#include "screens/RecalcScreen.h"

#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "data/Statistics.h"
#include "platform/language/Conversions.h"
#include "platform/ui/Mnemonics.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/PageView.h"
#include "screens/ScrollingPage.h"
#include "texts/ChartWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int fewestBetween = 5;  // from the first to the last point of a range

// What stands in a point box; a number of any size is one, since the end of a 16-bit number is no point's.
std::optional<int> PointIn(const QLineEdit* box) {
  const QString text = box->text().trimmed();
  if (!Conversions::IsNumeric(text)) return std::nullopt;
  constexpr double beyondAll = 99999;
  return Conversions::CLng(Conversions::CStr(std::clamp(Conversions::CDbl(text), -beyondAll, beyondAll)));
}

// The two inks need a light ground, whatever the desktop's colours are.
void SetInk(QLineEdit* box, const QColor& ink) {
  QPalette palette = box->palette();
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, ink);
  box->setPalette(palette);
}

}  // namespace

RecalcScreen::RecalcScreen(QWidget* parent, CDataPtr dataSet, const std::optional<PointRange>& stretch)
    : QDialog(parent), data_(std::move(dataSet)) {
  Trap(u"RecalcScreen::Form_Load"_s, [&] {
    Globals().gLimitsRecalculated = false;
    BuildControls();
    LoadDataSet(stretch);
    InstallHelpKey(this, HelpTopics::Recalculate);
  });
}

int RecalcScreen::exec() { return data_ ? QDialog::exec() : int(Rejected); }

QLineEdit* RecalcScreen::MakePointBox(const QString& name) {
  auto* box = Named(new QLineEdit(this), name);
  box->setAlignment(Qt::AlignRight);
  box->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
  box->installEventFilter(this);
  connect(box, &QLineEdit::textChanged, this, [this, box] {
    SetInk(box, Qt::blue);
    ShowRange();
  });
  return box;
}

void RecalcScreen::BuildControls() {
  setObjectName(u"RecalcScreen"_s);
  setWindowTitle(LoadResText(u"Recalculate control limits;215"));
  setModal(true);
  TextReset.setObjectName(u"TextReset"_s);
  TextReset.setInterval(2000);

  Mnemonics mnemonics;
  auto* body = new QWidget;
  auto* page = new QVBoxLayout(body);
  page->setContentsMargins({});
  page->addWidget(BuildDescription());
  page->addWidget(BuildDataRange(mnemonics));
  page->addWidget(BuildChart(), 1);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ScrollingPage(body, this), 1);
  layout->addLayout(BuildButtons(mnemonics));
  const int em = fontMetrics().height();
  resize(QSize(em * 44, em * 36).boundedTo(RoomFor(*this)));
  connect(&TextReset, &QTimer::timeout, this, [this] {
    TextReset.stop();
    lblDescription->setText(data_->Description());
  });
}

QWidget* RecalcScreen::BuildDescription() {
  auto* frameDescription = Named(new QGroupBox(LoadResText(u"Description;121"), this), u"frameDescription"_s);
  lblDescription = Named(new QLabel(frameDescription), u"lblDescription"_s);
  lblDescription->setTextFormat(Qt::PlainText);
  lblDescription->setWordWrap(true);
  lblDescription->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  (new QVBoxLayout(frameDescription))->addWidget(lblDescription);
  return frameDescription;
}

QLayout* RecalcScreen::BuildButtons(Mnemonics& mnemonics) {
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  const auto button = [&](const QString& name, const QString& caption, const QString& toolTip) {
    auto* made = Named(new QPushButton(mnemonics.Mark(caption), this), name);
    made->setToolTip(toolTip);
    buttons->addWidget(made);
    return made;
  };
  auto* cmdAll = button(u"cmdAll"_s, Words::Recalculate::all(), Words::Recalculate::allTip());
  auto* cmdRange = button(u"cmdRange"_s, Words::Recalculate::range(), Words::Recalculate::rangeTip());
  auto* cmdCancel = button(u"cmdCancel"_s, Words::Recalculate::cancel(), Words::Recalculate::cancelTip());
  cmdRange->setDefault(true);
  setTabOrder(txtStopPoint, cmdAll);
  setTabOrder(cmdAll, cmdRange);
  setTabOrder(cmdRange, cmdCancel);
  connect(cmdAll, &QPushButton::clicked, this, &RecalcScreen::RecalculateAll);
  connect(cmdRange, &QPushButton::clicked, this, &RecalcScreen::RecalculateRange);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  return buttons;
}

QWidget* RecalcScreen::BuildDataRange(Mnemonics& mnemonics) {
  auto* frameDataRange = Named(new QGroupBox(Words::Recalculate::dataRange(), this), u"frameDataRange"_s);
  auto* points = new QHBoxLayout(frameDataRange);
  const auto pointBox = [&](const QString& labelName, const QString& caption, const QString& name) {
    auto* label = Named(new QLabel(mnemonics.Mark(caption), frameDataRange), labelName);
    QLineEdit* box = MakePointBox(name);
    label->setBuddy(box);
    points->addWidget(label);
    points->addWidget(box);
    return box;
  };
  txtStartPoint = pointBox(u"lblStartPoint"_s, Words::Recalculate::startPoint(), u"txtStartPoint"_s);
  points->addSpacing(fontMetrics().height());
  txtStopPoint = pointBox(u"lblEndPoint"_s, Words::Recalculate::endPoint(), u"txtStopPoint"_s);
  points->addStretch();
  setTabOrder(txtStartPoint, txtStopPoint);
  return frameDataRange;
}

QWidget* RecalcScreen::BuildChart() {
  chartBox_ = Named(new QWidget(this), u"chartBox"_s);
  auto* lblDrag =
      TextLabel(u"lblDrag"_s, chartBox_, Words::Recalculate::drag() + u' ' + Words::Recalculate::leaveOut());
  view_ = Named(new PageView(chartBox_), u"PageView"_s);
  view_->setMinimumHeight(fontMetrics().height() * 9);
  view_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);  // scrolls only for less than that
  auto* column = new QVBoxLayout(chartBox_);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(lblDrag);
  column->addWidget(view_, 1);
  connect(view_, &PageView::StretchSelected, this, &RecalcScreen::TakeStretch);
  return chartBox_;
}

// The averages as they are. A data set that cannot be drawn is recalculated without being seen.
void RecalcScreen::ShowChart() {
  try {
    auto page = std::make_unique<StatPage>(*data_, StatPageOptions{.fittedScale = true});
    page->Select(GraphId::XBar);
    page->Blowup(GraphId::XBar);
    view_->SetPage(std::move(page));
  } catch (const std::exception&) {
    chartBox_->hide();
  }
}

void RecalcScreen::TakeStretch() {
  const auto stretch = view_->Stretch();
  if (!stretch) return ShowRange();
  txtStartPoint->setText(QString::number(stretch->first));
  txtStopPoint->setText(QString::number(stretch->last));
}

void RecalcScreen::ShowRange() {
  const auto start = PointIn(txtStartPoint), stop = PointIn(txtStopPoint);
  const bool isRange = start && stop && *start <= *stop;
  view_->SetStretch(isRange ? std::optional(PointRange{*start, *stop}) : std::nullopt);
}

void RecalcScreen::LoadDataSet(const std::optional<PointRange>& stretch) {
  if (!data_) DataObjectFunctions::GetDataObjectByID(Globals().gCurrentDataID, data_);
  if (!data_) {
    ShowSystemMessage(LoadResText(u"error attempting to get the current data for the item selected: ;203") +
                          u"\r\n"_s + Words::noSuchDataSet(Globals().gCurrentDataID),
                      MessageBox::Icon::Critical);
    return;
  }
  ShowChart();
  txtStartPoint->setText(QString::number(stretch ? stretch->first : 1));
  txtStopPoint->setText(QString::number(stretch ? stretch->last : data_->NumberOfPlotPoints()));
  lblDescription->setText(data_->Description());
  txtStartPoint->setFocus();
  txtStartPoint->selectAll();
}

bool RecalcScreen::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) {
    if (auto* box = qobject_cast<QLineEdit*>(watched)) SetInk(box, Qt::blue);
  }
  return QDialog::eventFilter(watched, event);
}

bool RecalcScreen::Reject(QLineEdit* box, const QString& message) {
  lblDescription->setText(message);
  TextReset.start();
  SetInk(box, Qt::red);
  return false;
}

bool RecalcScreen::ValidateRange() {
  return Trap(u"RecalcScreen::ValidateRange"_s, false, [this] {
    const QString notNumeric = Words::Recalculate::notNumeric();
    const QString invalid = Words::Recalculate::invalidRange();
    const std::optional<int> start = PointIn(txtStartPoint), stop = PointIn(txtStopPoint);
    if (!start) return Reject(txtStartPoint, notNumeric);
    if (!stop) return Reject(txtStopPoint, notNumeric);
    if (*start >= *stop || *start < 0) return Reject(txtStartPoint, invalid);
    if (*stop > data_->NumberOfPlotPoints()) return Reject(txtStopPoint, invalid);
    if (*stop - *start < fewestBetween) return Reject(txtStartPoint, invalid);
    return true;
  });
}

void RecalcScreen::RecalculateRange() {
  Trap(u"RecalcScreen::RecalculateRange"_s, [this] {
    if (ValidateRange())
      Recalculate(static_cast<qint16>(*PointIn(txtStartPoint)), static_cast<qint16>(*PointIn(txtStopPoint)));
  });
}

void RecalcScreen::RecalculateAll() {
  Trap(u"RecalcScreen::cmdAll_Click"_s, [this] {
    // 0 stands for the whole series, which the first point, 1, does not.
    if (data_->NumberOfPlotPoints() > 0) Recalculate(0, data_->NumberOfPlotPoints());
  });
}

void RecalcScreen::Recalculate(qint16 start, qint16 stop) {
  const CData before = *data_;
  data_->SetDataStartPoint(start);
  data_->SetDataStopPoint(stop);
  QCGlobalFunctions::ClearControlLimits(*data_);
  if (QCGlobalFunctions::CreateStatistics(*data_)) {
    if (!QCGlobalFunctions::LimitsCanBeKept(*data_))
      ShowInformationMessage(Words::Recalculate::withoutWidth(data_->PrecisionValue()));
    Globals().gLimitsRecalculated = true;
    accept();
  } else {
    *data_ = before;  // a refusal must not leave the data set without limits
  }
}

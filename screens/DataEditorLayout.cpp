// What the data editor's page looks like: its controls, their captions and their places.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "platform/ui/ButtonBar.h"
#include "screens/Controls.h"
#include "screens/DataEditor.h"
#include "screens/RawDataBox.h"
#include "screens/RawDataNotes.h"
#include "screens/ScrollingPage.h"
#include "texts/DetectionRules.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

const QString requiredMark = u" *"_s;
constexpr int gap = 8;

QLabel* LabelFor(QWidget* buddy, const QString& markedCaption, bool isRequired = false) {
  auto* label = new QLabel(markedCaption + (isRequired ? requiredMark : QString()));
  label->setBuddy(buddy);
  return label;
}

// The letters of the page are handed out by hand: there are hardly enough of them. Every label has its own;
// S, P and C are the toolbar's.
QString Marked(QString caption, QChar letter) {
  const qsizetype at = caption.indexOf(letter, 0, Qt::CaseInsensitive);
  return at < 0 ? caption : caption.insert(at, u'&');  // a translation may not have it
}

// Where the screen is narrow for the size of its letters, what stands side by side elsewhere stands in one
// column.
bool IsNarrow(const QWidget& editor) { return RoomFor(editor).width() < editor.fontMetrics().height() * 42; }

}  // namespace

void DataEditor::BuildControls() {
  setObjectName(u"DataEditor"_s);
  setWindowTitle(Globals().gAddMode ? Words::Editor::addData() : Words::Editor::editData());
  setModal(true);
  ChangeMonitorTimer.setObjectName(u"ChangeMonitorTimer"_s);
  NotesTimer.setObjectName(u"NotesTimer"_s);

  BuildToolbar();
  auto* body = new QWidget;
  auto* page = new QGridLayout(body);
  page->setContentsMargins(gap, gap, gap, gap);
  page->setSpacing(gap);
  page->addLayout(BuildHead(), 0, 0, 1, 2);
  const int columns = IsNarrow(*this) ? 2 : 1;
  page->addWidget(BuildSpecLimits(), 1, 0, 1, columns);
  page->addWidget(BuildControlLimits(), 2, 0, 1, columns);
  page->addWidget(BuildChartSetup(), 3, 0, 1, columns);
  if (IsNarrow(*this)) {
    page->addWidget(BuildRawData(), 4, 0, 1, columns);
    txtRawData->setMinimumHeight(fontMetrics().height() * 5);
  } else {
    page->addWidget(BuildRawData(), 1, 1, 3, 1);
  }
  page->setColumnStretch(1, 1);
  page->setRowStretch(3, 1);

  lblHint = Named(new QLabel(this), u"lblHint"_s);
  lblHint->setTextFormat(Qt::PlainText);
  lblHint->setWordWrap(true);
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(gap, 0, gap, gap);
  foot->addWidget(lblHint, 1);
  foot->addWidget(new QLabel(Words::Editor::mustBeEntered(), this), 0, Qt::AlignRight | Qt::AlignTop);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(Toolbar1);
  layout->addWidget(new ScrollingPage(body, this), 1);
  layout->addLayout(foot);
  for (QComboBox* list : {comboUnits, comboSubGroup}) {
    list->setFocusPolicy(Qt::StrongFocus);
    list->installEventFilter(this);
  }
  SetTabOrder();
  // With room for what is offered below the values.
  const QSize more(fontMetrics().averageCharWidth() * 20, fontMetrics().height() * 5);
  resize((sizeHint() + more).boundedTo(RoomFor(*this)));
  txtDescription->setFocus();
}

void DataEditor::BuildToolbar() {
  Toolbar1 = new ButtonBar(u"Toolbar1"_s, this);
  if (IsNarrow(*this)) Toolbar1->PlaceCaptions(Qt::ToolButtonTextBesideIcon);
  Toolbar1->AddButton(LoadResText(u"Save;210"), LoadResText(u"Save Changes;211"), Symbol::Save);
  Toolbar1->AddButton(LoadResText(u"Template;229"), LoadResText(u"Copy limits from another item;230"),
                      Symbol::Template);
  Toolbar1->AddButton(LoadResText(u"Paste;231"), LoadResText(u"Paste data to the raw data box;232"),
                      Symbol::Paste);
  Toolbar1->AddButton(LoadResText(u"Close;221"), LoadResText(u"Close the current screen;222"), Symbol::Close);
}

QLayout* DataEditor::BuildHead() {
  txtDescription = Named(new QLineEdit(this), u"txtDescription"_s);
  comboUnits = Named(new QComboBox(this), u"comboUnits"_s);
  comboUnits->setMinimumContentsLength(8);
  comboUnits->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  auto* descriptionLabel = LabelFor(txtDescription, Words::Editor::description(), true);
  auto* unitsLabel = LabelFor(comboUnits, Marked(LoadResText(u"Unit of measurement:;156"), u'U'), true);
  cmdUnits = Named(new QPushButton(Words::Editor::editUnits(), this), u"cmdUnits"_s);
  cmdUnits->setToolTip(LoadResText(u"Unit Of Measurement Configuration;119"));
  cmdUnits->setAutoDefault(false);

  auto* head = new QGridLayout;
  const int row = IsNarrow(*this) ? 1 : 0, column = IsNarrow(*this) ? 0 : 2;
  head->addWidget(descriptionLabel, 0, 0);
  head->addWidget(txtDescription, 0, 1, 1, row == 0 ? 1 : 3);
  head->addWidget(unitsLabel, row, column);
  head->addWidget(comboUnits, row, column + 1, Qt::AlignLeft);
  head->addWidget(cmdUnits, row, column + 2, Qt::AlignLeft);
  head->setColumnStretch(row == 0 ? 1 : 2, 1);
  return head;
}

// The group's boxes below each other, beside those of the groups before where there is room: caption, box,
// unit.
void DataEditor::AddNumberBoxes(QGridLayout* grid, int group) {
  const bool isBeside = !IsNarrow(*this) && grid->count() > 0;
  const int column = isBeside ? 3 : 0;
  int row = isBeside || grid->count() == 0 ? 0 : grid->rowCount();
  // The same in both groups, so that their columns stand below each other.
  grid->setColumnMinimumWidth(
      column, fontMetrics().horizontalAdvance(Words::Editor::rangeMean().remove(u'&') + u':' + requiredMark));
  grid->setColumnStretch(column + 1, 1);
  for (const NumberBox& entry : NumberBoxes()) {
    if (entry.group != group) continue;
    auto* box = Named(new QLineEdit(this), entry.ControlName());
    box->setAlignment(Qt::AlignRight);
    box->setMinimumWidth(fontMetrics().averageCharWidth() * 15);
    box->installEventFilter(this);
    numberBoxes_ << box;
    auto* unit = new QLabel(this);
    unit->setTextFormat(Qt::PlainText);
    unit->setFixedWidth(fontMetrics().averageCharWidth() * 5);
    unitLabels_ << unit;
    grid->addWidget(LabelFor(box, entry.MarkedCaption() + u':', entry.isRequired), row, column);
    grid->addWidget(box, row, column + 1);
    grid->addWidget(unit, row++, column + 2);
  }
}

QGroupBox* DataEditor::BuildSpecLimits() {
  auto* group = new QGroupBox(Words::Editor::specLimits(), this);
  auto* grid = new QGridLayout(group);
  AddNumberBoxes(grid, NumberBox::SpecLimits);
  AddNumberBoxes(grid, NumberBox::Fliers);
  checkDiscardFliers = Named(new QCheckBox(Words::Editor::discardFliers(), group), u"checkDiscardFliers"_s);
  checkDiscardFliers->setToolTip(Words::Editor::discardFliersTip());
  if (IsNarrow(*this))
    grid->addWidget(checkDiscardFliers, grid->rowCount(), 0, 1, 3);
  else
    grid->addWidget(checkDiscardFliers, 2, 3, 1, 3);
  return group;
}

QGroupBox* DataEditor::BuildControlLimits() {
  auto* group = new QGroupBox(Words::Editor::controlLimits(), this);
  auto* grid = new QGridLayout(group);
  AddNumberBoxes(grid, NumberBox::XBarLimits);
  AddNumberBoxes(grid, NumberBox::RangeLimits);
  checkCalculateControlLimitsOnSave =
      Named(new QCheckBox(Marked(LoadResText(u"Calculate Control Limits on Save;152"), u'T'), group),
            u"checkCalculateControlLimitsOnSave"_s);
  grid->addWidget(checkCalculateControlLimitsOnSave, grid->rowCount(), 0, 1, IsNarrow(*this) ? 3 : 6);
  return group;
}

QGroupBox* DataEditor::BuildChartSetup() {
  auto* group = new QGroupBox(Words::Editor::chartSetup(), this);
  auto* grid = new QGridLayout(group);
  grid->addLayout(BuildSizes(group), 0, 0, 1, 2);
  BuildSensitivity(group);
  optionLongTermDetection =
      Named(new QRadioButton(LoadResText(u"Long term detection;154"), group), u"optionLongTermDetection"_s);
  optionShortTermDetection =
      Named(new QRadioButton(LoadResText(u"Short term detection;155"), group), u"optionShortTermDetection"_s);
  grid->addWidget(LabelFor(lstSensitivity, Marked(LoadResText(u"Sensitivity:;153"), u'Y')), 1, 0);
  grid->addWidget(lstSensitivity, 2, 0, 2, 1);
  grid->addWidget(optionLongTermDetection, 2, 1);
  grid->addWidget(optionShortTermDetection, 3, 1);
  grid->setRowStretch(4, 1);
  grid->setColumnStretch(0, 1);
  return group;
}

QLayout* DataEditor::BuildSizes(QWidget* group) {
  comboSubGroup = Named(new QComboBox(group), u"comboSubGroup"_s);
  comboSubGroup->setEditable(true);
  comboSubGroup->setInsertPolicy(QComboBox::NoInsert);
  comboSubGroup->setCompleter(nullptr);
  for (int size = 1; size <= 20; ++size) comboSubGroup->addItem(QString::number(size));
  txtMaxSamples = Named(new QLineEdit(group), u"txtMaxSamples"_s);
  txtMaxSamples->setAlignment(Qt::AlignRight);
  txtMaxSamples->setFixedWidth(fontMetrics().averageCharWidth() * 9);
  txtMaxSamples->installEventFilter(this);
  checkUseAllSamples =
      Named(new QCheckBox(LoadResText(u"Use all samples;151"), group), u"checkUseAllSamples"_s);

  auto* sizes = new QGridLayout;
  const int row = IsNarrow(*this) ? 1 : 0, column = IsNarrow(*this) ? 0 : 3;
  sizes->addWidget(LabelFor(comboSubGroup, Words::Editor::subgroupSize(), true), 0, 0);
  sizes->addWidget(comboSubGroup, 0, 1);
  sizes->setColumnStretch(row == 0 ? 2 : 3, 1);
  sizes->addWidget(LabelFor(txtMaxSamples, Marked(LoadResText(u"Max Samples:;150"), u'M')), row, column);
  sizes->addWidget(txtMaxSamples, row, column + 1);
  sizes->addWidget(checkUseAllSamples, row, column + 2);
  return sizes;
}

void DataEditor::BuildSensitivity(QWidget* group) {
  lstSensitivity = Named(new QListWidget(group), u"lstSensitivity"_s);
  for (int sensitivity = 0; sensitivity <= 2; ++sensitivity)
    lstSensitivity->addItem(DetectionRules::SensitivityText(sensitivity));
  lstSensitivity->setAccessibleName(LoadResText(u"Sensitivity:;153"));
  lstSensitivity->setSpacing(1);
  lstSensitivity->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lstSensitivity->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  lstSensitivity->setFixedHeight(lstSensitivity->sizeHintForRow(0) * 3 + lstSensitivity->frameWidth() * 2 +
                                 gap);
}

QGroupBox* DataEditor::BuildRawData() {
  auto* group = new QGroupBox(Words::Editor::rawData(), this);
  txtRawData = new RawDataBox(u"txtRawData"_s, group);
  txtRawData->setMinimumWidth(fontMetrics().averageCharWidth() * 26);
  auto* label = LabelFor(txtRawData, Words::Editor::values(), true);
  cmdRawData = Named(new QPushButton(Words::Editor::largerView(), group), u"cmdRawData"_s);
  cmdRawData->setAutoDefault(false);
  notes_ = new RawDataNotes(txtRawData, group);
  notes_->Row()->addWidget(cmdRawData);
  auto* layout = new QVBoxLayout(group);
  layout->addWidget(label);
  layout->addWidget(txtRawData, 1);
  layout->addWidget(notes_);
  return group;
}

void DataEditor::SetTabOrder() {
  QList<QWidget*> order = {txtDescription, comboUnits, cmdUnits};
  for (qsizetype i = 0; i < numberBoxes_.size(); ++i) {
    order << numberBoxes_[i];
    if (NumberBoxes()[size_t(i)].ControlName() == u"txtLowFlier"_s) order << checkDiscardFliers;
  }
  order << checkCalculateControlLimitsOnSave << comboSubGroup << txtMaxSamples << checkUseAllSamples
        << lstSensitivity << optionLongTermDetection << optionShortTermDetection << txtRawData;
  for (QPushButton* button : notes_->findChildren<QPushButton*>()) order << button;
  for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

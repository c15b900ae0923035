#include "screens/DataEditor.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "data/RawDataText.h"
#include "platform/ui/ButtonBar.h"
#include "screens/DataEditorSave.h"
#include "screens/ExpandedDataForm.h"
#include "screens/Help.h"
#include "screens/RawDataBox.h"
#include "screens/RawDataNotes.h"
#include "screens/ReadOnly.h"
#include "screens/SaveQuestions.h"
#include "screens/frmUnits.h"
#include "texts/SharingWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

namespace {

// A limit that cannot be changed is there to be read.
void ShowAs(QLineEdit* box, bool enabled) {
  box->setEnabled(enabled);
  QPalette palette = QGuiApplication::palette();
  palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Window));
  box->setPalette(palette);
}

bool IsEntered(const QFocusEvent& event) {
  switch (event.reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::MouseFocusReason:
    case Qt::ShortcutFocusReason:
      return true;
    default:
      return false;
  }
}

QStringList ReadUnits() {
  Recordset units;
  units.Open(u"SELECT * FROM Units WHERE Deleted = 0"_s, CurrentConnection());
  QStringList names;
  for (; !units.EndOfFile(); units.MoveNext()) names << units.Field(u"Name"_s).toString();
  return names;
}

QStringList OfferedUnits() { return Trap(u"DataEditor::FillUnits"_s, QStringList(), ReadUnits); }

}  // namespace

DataEditor::DataEditor(QWidget* parent) : QDialog(parent) {
  Trap(u"DataEditor::Form_Load"_s, [this] {
    BuildControls();
    ShowUnits(OfferedUnits());
    isLoaded_ = LoadDataSet();
    ConnectControls();
    ReadOnly::RestWithBoxes(*this, {u"Toolbar1_1"_s, u"Toolbar1_2"_s, u"Toolbar1_3"_s});
    InstallHelpKey(this, HelpTopics::DataEditor);
  });
}

int DataEditor::exec() { return isLoaded_ ? QDialog::exec() : int(Rejected); }

// Later than the events that lay the box out for the first time.
void DataEditor::ShowSample(qsizetype number) {
  QTimer::singleShot(0, this, [this, number] { txtRawData->GoToLine(number); });
}

bool DataEditor::LoadDataSet() {
  try {
    const ProgramState& state = Globals();
    if (!state.gAddMode) {
      DataObjectFunctions::GetDataObjectByID(state.gCurrentDataID, edited_);
      if (!edited_) throw Error(Words::noSuchDataSet(state.gCurrentDataID));
    }
    ShowFields(edited_ ? EditorFields::Of(*edited_) : EditorFields::Blank());
    return true;
  } catch (const std::exception& error) {
    ShowSystemMessage(Words::Editor::dataSetNotFound() + u"\r\n"_s + ErrorText(error),
                      MessageBox::Icon::Critical);
    return false;
  }
}

void DataEditor::ConnectControls() {
  connect(Toolbar1, &ButtonBar::ButtonClick, this, [this](int button) {
    if (button == SaveButton) SaveSelect();
    if (button == PasteButton) Trap(u"DataEditor::PasteClipboardData"_s, [this] { txtRawData->paste(); });
    if (button == CloseButton) reject();
  });
  for (const auto* box : findChildren<QLineEdit*>())
    connect(box, &QLineEdit::textChanged, this, &DataEditor::FieldChanged);
  for (const auto* box : findChildren<QCheckBox*>())
    connect(box, &QCheckBox::toggled, this, &DataEditor::FieldChanged);
  connect(comboUnits, &QComboBox::currentIndexChanged, this, &DataEditor::FieldChanged);
  connect(comboSubGroup, &QComboBox::currentTextChanged, this, &DataEditor::FieldChanged);
  connect(lstSensitivity, &QListWidget::currentRowChanged, this, &DataEditor::FieldChanged);
  connect(optionLongTermDetection, &QRadioButton::toggled, this, &DataEditor::FieldChanged);
  connect(txtRawData, &QPlainTextEdit::textChanged, this, &DataEditor::FieldChanged);
  connect(cmdUnits, &QPushButton::clicked, this, &DataEditor::OpenUnits);
  connect(cmdRawData, &QPushButton::clicked, this, &DataEditor::OpenExpandedView);

  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this,
          [this] { Trap(u"DataEditor::ReadAgain"_s, [this] { ReadAgain(); }); });
  connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, Toolbar1->Button(SaveButton),
          &QAction::trigger);
  NotesTimer.setSingleShot(true);
  connect(&NotesTimer, &QTimer::timeout, this, &DataEditor::UpdateNotes);
  connect(&ChangeMonitorTimer, &QTimer::timeout, this, &DataEditor::MonitorChanges);
  ChangeMonitorTimer.start(0);
}

// Once, on the monitor's first tick, as soon as the window is up.
void DataEditor::SetUp() {
  isSetUp_ = true;
  Toolbar1->Button(TemplateButton)->setEnabled(false);
  ChangeMonitorTimer.setInterval(250);
}

void DataEditor::MonitorChanges() {
  if (!isSetUp_) SetUp();
  const bool changed = txtDescription->text() != loadedDescription_;
  if (changed == descriptionChanged_) return;
  descriptionChanged_ = changed;
  NotesTimer.start();
}

// Coalesced, and for a long column put off until the keys rest, so that typing never waits for the count.
void DataEditor::FieldChanged() {
  Toolbar1->Button(SaveButton)->setEnabled(true);
  reason_.clear();
  NotesTimer.start(RawDataNotes::DelayFor(*txtRawData));
}

void DataEditor::UpdateNotes() {
  const EditorFields fields = ReadFields();
  const RawDataText::Examination found = RawDataText::Examine(fields.rawData, fields.Fliers());
  notes_->Show(RawDataText::Describe(found, fields.subGroup), found);
  txtRawData->MarkSubgroups(RawDataText::SubGroupSize(fields.subGroup));
  if (fields.useAllSamples) {
    const QSignalBlocker quiet(txtMaxSamples);
    txtMaxSamples->setText(QString::number(found.values));
  }
  ShowAs(txtMaxSamples, !fields.useAllSamples);
  const std::span<const NumberBox> boxes = NumberBoxes();
  for (qsizetype i = 0; i < numberBoxes_.size(); ++i) {
    const auto group = boxes[size_t(i)].group;
    const bool isControlLimit = group == NumberBox::XBarLimits || group == NumberBox::RangeLimits;
    ShowAs(numberBoxes_[i], !isControlLimit || !fields.calculateLimits);
  }
  for (QLabel* label : unitLabels_) {
    label->setText(label->fontMetrics().elidedText(fields.units, Qt::ElideRight, label->maximumWidth()));
    label->setToolTip(fields.units);
  }
  const bool isLost = edited_ && descriptionChanged_;
  QStringList lines{
      reason_.isEmpty() ? Hint(fields) : reason_, isLost ? Words::Editor::descriptionStays() : QString(),
      RawDataText::PointsMissing(found.values, RawDataText::SubGroupSize(fields.subGroup)), news_};
  lines.removeAll(QString());
  lblHint->setText(lines.join(u'\n'));
}

QString DataEditor::Hint(const EditorFields& fields) const {
  if (const QString hint = fields.Hint(); !hint.isEmpty()) return hint;
  if (!edited_ && !fields.calculateLimits) return Words::Editor::limitsAreCalculated();
  if (comboUnits->count() == 0) return Words::Editor::noUnits();
  if (edited_ && !fields.calculateLimits) return SaveQuestions::LimitsHint(*edited_);
  return {};
}

EditorFields DataEditor::ReadFields() const {
  EditorFields fields;
  fields.description = txtDescription->text();
  fields.units = comboUnits->currentText();
  for (qsizetype i = 0; i < numberBoxes_.size(); ++i)
    fields.*NumberBoxes()[size_t(i)].text = numberBoxes_[i]->text();
  fields.subGroup = comboSubGroup->currentText();
  fields.useAllSamples = checkUseAllSamples->isChecked();
  // Filled in by the count while all samples are used.
  if (!fields.useAllSamples) fields.maxSamples = txtMaxSamples->text();
  fields.rawData = txtRawData->toPlainText();
  fields.discardFliers = checkDiscardFliers->isChecked();
  fields.calculateLimits = checkCalculateControlLimitsOnSave->isChecked();
  fields.longTermDetection = optionLongTermDetection->isChecked();
  fields.sensitivity = lstSensitivity->currentRow();
  return fields;
}

void DataEditor::ShowFields(const EditorFields& fields) {
  txtDescription->setText(fields.description);
  SelectUnit(fields.units);
  for (qsizetype i = 0; i < numberBoxes_.size(); ++i)
    numberBoxes_[i]->setText(fields.*NumberBoxes()[size_t(i)].text);
  comboSubGroup->setCurrentText(fields.subGroup);
  checkUseAllSamples->setChecked(fields.useAllSamples);
  if (isLoaded_)
    txtRawData->ReplaceText(fields.rawData);
  else
    txtRawData->ShowText(fields.rawData);
  txtRawData->TakeForSamples();
  checkDiscardFliers->setChecked(fields.discardFliers);
  checkCalculateControlLimitsOnSave->setChecked(fields.calculateLimits);
  (fields.longTermDetection ? optionLongTermDetection : optionShortTermDetection)->setChecked(true);
  lstSensitivity->setCurrentRow(fields.sensitivity);
  loadedDescription_ = fields.description;
  descriptionChanged_ = false;
  UpdateNotes();
  NotesTimer.stop();
  loaded_ = ReadFields();
  Toolbar1->Button(SaveButton)->setEnabled(false);
}

// What is chosen stays chosen; quiet, since that changes nothing of the data set.
void DataEditor::ShowUnits(const QStringList& names) {
  const QSignalBlocker quiet(comboUnits);
  const QString chosen = comboUnits->currentText();
  comboUnits->clear();
  comboUnits->addItems(listedUnits_ = names);
  SelectUnit(chosen);
}

// As others have changed them.
void DataEditor::FollowUnits() {
  try {
    const QStringList names = ReadUnits();
    if (names == listedUnits_) return;
    const QString chosen = comboUnits->currentText();
    ShowUnits(names);
    if (comboUnits->currentText() == chosen) return;
    news_ = Words::Sharing::unitDeletedWhileOpen(Globals().clock->Now().toString(u"HH:mm:ss"_s));
    FieldChanged();
  } catch (const Error&) {
    // What cannot be read just now the main window tells.
  }
}

// A data set may have a unit that is not in the list, or not so written: it stands as it is.
void DataEditor::SelectUnit(const QString& name) {
  int index = name.isEmpty() ? -1 : comboUnits->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (index < 0 && !name.isEmpty() && edited_) {
    comboUnits->addItem(name);
    index = comboUnits->count() - 1;
  }
  comboUnits->setCurrentIndex(index);
}

void DataEditor::OpenUnits() {
  Trap(u"DataEditor::cmdUnits_Click"_s, [this] {
    const QStringList before = listedUnits_;
    const QString chosen = comboUnits->currentText();
    frmUnits(this).exec();
    ShowUnits(OfferedUnits());
    // Who went there to add the missing unit wants it.
    if (chosen.isEmpty() && !listedUnits_.isEmpty() && !before.contains(listedUnits_.last()))
      comboUnits->setCurrentIndex(comboUnits->count() - 1);
    else if (comboUnits->currentText() != chosen)
      FieldChanged();
    comboUnits->setFocus();
  });
}

void DataEditor::OpenExpandedView() {
  Trap(u"DataEditor::cmdRawData_Click"_s, [this] {
    QString& shared = Globals().gRawDataText;
    shared = txtRawData->toPlainText();
    const QString before = shared;
    const EditorFields fields = ReadFields();
    ExpandedDataForm form(this, fields.subGroup, fields.Fliers());
    form.ShowLinesOf(*txtRawData, edited_ ? DataObjectFunctions::TraceOf(*edited_) : Trace::Record());
    form.exec();
    if (shared != before) txtRawData->ReplaceText(shared, form.Lines());
    shared.clear();
    txtRawData->setFocus();
  });
}

bool DataEditor::SaveSelect() {
  const EditorFields fields = ReadFields();
  DataEditorSave save(fields, edited_, listedUnits_, txtRawData->Samples());
  const bool isSaved = save.SaveSelect();
  if (save.RawData() != fields.rawData) txtRawData->ReplaceText(save.RawData());
  if (!isSaved) {
    reason_ = save.Reason();
    GoTo(save.ControlAtFault());
    UpdateNotes();
    if (save.ControlAtFault() == txtRawData->objectName()) notes_->GoToNamedLine();
    return false;
  }
  if (!edited_) {
    accept();  // a second save of the same fields must not make a second row
    return true;
  }
  news_ = save.TakenIn();
  ShowStored(fields);
  return true;
}

// The data set as it is stored; the choices that are not stored stay.
void DataEditor::ShowStored(const EditorFields& fields) {
  EditorFields stored = EditorFields::Of(*edited_);
  stored.discardFliers = fields.discardFliers;
  stored.calculateLimits = fields.calculateLimits;
  ShowFields(stored);
}

void DataEditor::LibraryChanged() {
  FollowUnits();
  if (!edited_) return;
  const CDataPtr present = DataObjectFunctions::PresentOf(*edited_);
  if (present && present->RowAsKnown() == edited_->RowAsKnown()) return;
  const QString now = Globals().clock->Now().toString(u"HH:mm:ss"_s);
  const auto& unread = Globals().gUnread.rows;
  if (const auto bad = unread.find(edited_->ID()); bad != unread.end())
    news_ = Words::Sharing::unreadableWhileOpen(now, bad->second);
  else
    news_ = present ? Words::Sharing::changedWhileOpen(now) : Words::Sharing::deletedWhileOpen(now);
  UpdateNotes();
}

// As it stands in the library, after asking where something typed would be lost.
void DataEditor::ReadAgain() {
  if (!edited_) return;
  if (MainScreen* screen = Globals().mainScreen) screen->ReadLibraryNews();
  if (ReadFields() != loaded_) {
    const Answer answer = QCGlobalFunctions::PromptForChanges();
    if (answer == Answer::Cancel) return;
    if (answer == Answer::Yes) {
      SaveSelect();
      return;
    }
  }
  const CDataPtr present = DataObjectFunctions::PresentOf(*edited_);
  if (!present) return;
  edited_ = present;
  news_.clear();
  reason_.clear();
  ShowStored(ReadFields());
}

void DataEditor::GoTo(const QString& controlName) {
  if (controlName.isEmpty()) return;
  if (auto* control = findChild<QWidget*>(controlName)) control->setFocus(Qt::ShortcutFocusReason);
}

void DataEditor::reject() {
  if (isLoaded_ && ReadFields() != loaded_) {
    const Answer answer = QCGlobalFunctions::PromptForChanges();
    if (answer == Answer::Cancel) return;
    // A save that stopped has said why, and the fields stay for it; adding closes the editor itself.
    if (answer == Answer::Yes && (!SaveSelect() || !edited_)) return;
  }
  QDialog::reject();
}

bool DataEditor::eventFilter(QObject* watched, QEvent* event) {
  // A wheel that turns over a list on its way down the page is not meant for it.
  auto* list = qobject_cast<QComboBox*>(watched);
  if (list && event->type() == QEvent::Wheel && !list->hasFocus()) {
    event->ignore();
    return true;
  }
  auto* box = qobject_cast<QLineEdit*>(watched);
  // A window that comes back leaves what was typed as it was. A click sets the caret after the focus has
  // come, which would undo the selection.
  if (box && event->type() == QEvent::FocusIn && IsEntered(*static_cast<QFocusEvent*>(event)))
    QTimer::singleShot(0, box, &QLineEdit::selectAll);
  return QDialog::eventFilter(watched, event);
}

void DataEditor::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QDialog::keyPressEvent(event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget())) return button->click();
  focusNextChild();
  // Who has chosen a unit goes on to the limits.
  if (focusWidget() == cmdUnits && comboUnits->currentIndex() >= 0) focusNextChild();
}

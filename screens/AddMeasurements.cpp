#include "screens/AddMeasurements.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "data/AddedSamples.h"
#include "data/RawDataReadings.h"
#include "data/RawDataText.h"
#include "library/Tables.h"
#include "platform/language/Conversions.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/Indicators.h"
#include "screens/RawDataBox.h"
#include "screens/RawDataNotes.h"
#include "screens/SaveQuestions.h"
#include "screens/ScrollingPage.h"
#include "texts/DetectionRules.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

AddMeasurements::AddMeasurements(QWidget* parent) : QDialog(parent) {
  Trap(u"AddMeasurements::Form_Load"_s, [this] {
    LoadDataSet();
    if (!data_) return;
    BuildControls();
    InstallHelpKey(this, HelpTopics::AddMeasurements);
    UpdateNotes();
    // With room for what is offered below the values.
    resize((sizeHint() + QSize(0, fontMetrics().height() * 10)).boundedTo(RoomFor(*this)));
  });
}

int AddMeasurements::exec() { return data_ ? QDialog::exec() : int(Rejected); }

void AddMeasurements::LoadDataSet() {
  const qint32 id = Globals().gCurrentDataID;
  DataObjectFunctions::GetDataObjectByID(id, data_);
  if (data_) return;
  ShowSystemMessage(LoadResText(u"error attempting to get the current data for the item selected: ;203") +
                        u"\r\n"_s + Words::noSuchDataSet(id),
                    Icon::Critical);
}

void AddMeasurements::BuildControls() {
  setObjectName(u"AddMeasurements"_s);
  setWindowTitle(Words::Adding::title());
  setModal(true);
  NotesTimer.setObjectName(u"NotesTimer"_s);
  NotesTimer.setSingleShot(true);

  lblDescription = TextLabel(u"lblDescription"_s, this);
  QFont heading = font();
  heading.setBold(true);
  lblDescription->setFont(heading);
  txtNewValues = new RawDataBox(u"txtNewValues"_s, this);
  txtNewValues->setMinimumHeight(std::min(fontMetrics().lineSpacing() * 7, RoomFor(*this).height() / 6));
  auto* label = new QLabel(Words::Adding::newValues(), this);
  label->setBuddy(txtNewValues);
  notes_ = new RawDataNotes(txtNewValues, this);
  ledVerdict = Named(new Led(this), u"ledVerdict"_s);
  lblVerdict = TextLabel(u"lblVerdict"_s, this);
  lblVerdict->setMinimumHeight(fontMetrics().lineSpacing() * 2);
  cmdAdd = Named(new QPushButton(Words::Adding::add(), this), u"cmdAdd"_s);
  cmdAdd->setToolTip(Words::Adding::addTip());
  auto* cmdClose = Named(new QPushButton(Words::Adding::close(), this), u"cmdClose"_s);
  for (QPushButton* button : {cmdAdd, cmdClose}) button->setAutoDefault(false);

  auto* verdict = new QHBoxLayout;
  verdict->addWidget(ledVerdict);
  verdict->addWidget(lblVerdict, 1);
  const bool isShort = RoomFor(*this).height() < fontMetrics().height() * 44;  // readings need the room
  auto* buttons = isShort ? verdict : new QHBoxLayout;
  if (buttons != verdict) buttons->addStretch();
  buttons->addWidget(cmdAdd);
  buttons->addWidget(cmdClose);
  auto* body = new QWidget;
  auto* page = new QVBoxLayout(body);
  page->setContentsMargins({});
  page->addWidget(lblDescription);
  lblLimits = TextLabel(u"lblLimits"_s, body);
  page->addWidget(lblLimits);
  page->addWidget(label);
  page->addWidget(txtNewValues, 1);
  page->addWidget(notes_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ScrollingPage(body, this), 1);
  layout->addLayout(verdict);
  if (buttons != verdict) layout->addLayout(buttons);
  setMinimumWidth(std::min(fontMetrics().averageCharWidth() * 76, RoomFor(*this).width()));
  txtNewValues->setFocus();

  connect(txtNewValues, &QPlainTextEdit::textChanged, &NotesTimer,
          [this] { NotesTimer.start(RawDataNotes::DelayFor(*txtNewValues)); });
  connect(&NotesTimer, &QTimer::timeout, this, &AddMeasurements::UpdateNotes);
  connect(cmdAdd, &QPushButton::clicked, this, &AddMeasurements::Add);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void AddMeasurements::LibraryChanged() {
  const CDataPtr present = DataObjectFunctions::PresentOf(*data_);
  if (present == data_) return;
  if (present)
    data_ = present;  // what is typed goes behind what is there now
  else
    gone_ = Words::Sharing::deletedWhileOpen(Globals().clock->Now().toString(u"HH:mm:ss"_s));
  UpdateNotes();
}

void AddMeasurements::UpdateNotes() {
  Trap(u"AddMeasurements::UpdateNotes"_s, [this] {
    lblDescription->setText(Words::Adding::dataSet(data_->Description(), data_->UnitOfMeasurement()));
    const bool areOpen = Tables::LeavesLimitsOpen(data_->RowAsKnown());
    const QString stay = areOpen ? Words::Adding::limitsAreOpen() : Words::Adding::limitsStay();
    const QString limits = areOpen ? QString() : SaveQuestions::LimitsHint(*data_);
    QStringList lines{gone_, stay, limits};
    lines.removeAll(QString());
    lblLimits->setText(lines.join(u'\n'));
    // A wrapped text claims no room of its own in the window around it.
    const QMargins margins = layout()->contentsMargins();
    lblLimits->setMinimumHeight(lblLimits->heightForWidth(minimumWidth() - margins.left() - margins.right()));
    const QString text = txtNewValues->toPlainText();
    const RawDataText::Examination found = AddedSamples::Examine(text, *data_);
    const qsizetype before = AddedSamples::CountOf(*data_);
    const bool isEmpty = text.trimmed().isEmpty();
    if (!isEmpty) news_.clear();
    notes_->Show(isEmpty && !news_.isEmpty()
                     ? news_
                     : RawDataText::DescribeAdded(found, before, data_->SubGroupSize()),
                 found);
    txtNewValues->MarkSubgroups(data_->SubGroupSize(), before);
    cmdAdd->setEnabled(found.values > 0 && gone_.isEmpty());
    ShowPreview(found.IsUnclear() || found.values == 0 ? QString() : text);
  });
}

// By the limits that the row keeps: those that it leaves to be calculated are calculated with the new values.
void AddMeasurements::ShowPreview(const QString& text) {
  CData stored = *data_;
  Tables::Fill(stored, data_->RowAsKnown());
  const auto with = AddedSamples::Preview(stored, text);
  ShowVerdict(with ? *with : *data_, with != nullptr);
}

void AddMeasurements::ShowVerdict(const CData& shown, bool withNewValues) {
  const bool isJudged = shown.NumberOfPlotPoints() > 0;
  ledVerdict->SetColorValue(shown.IsInControl() ? Led::Go : Led::Stop);
  ledVerdict->SetOn(isJudged);
  QString verdict = Words::Adding::notEvaluated();
  if (isJudged && shown.IsInControl()) verdict = Words::Adding::inControl();
  if (isJudged && !shown.IsInControl())
    verdict = Words::Adding::outOfControl(AddedSamples::LastViolation(shown),
                                          DetectionRules::ShortText(shown.RuleViolation()));
  lblVerdict->setText(withNewValues ? Words::Adding::withThem(verdict) : verdict);
}

bool AddMeasurements::SettleCommas() {
  const QString text = txtNewValues->toPlainText();
  const auto doubt = RawDataReadings::DoubtfulComma(text);
  const auto canBeAdded = [&](bool asOneValue) {
    return !AddedSamples::ValuesIn(RawDataReadings::Settled(text, asOneValue)).isEmpty();
  };
  if (!doubt || (!canBeAdded(true) && !canBeAdded(false))) return true;  // it is refused
  const Answer answer =
      ShowSystemMessage(SaveQuestions::DoubtfulComma(*doubt), Icon::Question, Buttons::YesNoCancel);
  if (answer != Answer::Yes && answer != Answer::No) return false;
  txtNewValues->ReplaceText(RawDataReadings::Settled(text, answer == Answer::Yes));
  return true;
}

void AddMeasurements::Add() {
  Trap(u"AddMeasurements::Add"_s, [this] {
    if (!SettleCommas()) return;
    const QString text = txtNewValues->toPlainText();
    const QStringList values = AddedSamples::ValuesIn(text);
    // What is no number is named in the live line.
    if (values.isEmpty()) {
      UpdateNotes();
      txtNewValues->setFocus();
      return;
    }
    const bool wereOpen = Tables::LeavesLimitsOpen(data_->RowAsKnown());
    if (!DataObjectFunctions::AppendToDataObject(data_, values)) return;
    news_ = Words::Adding::added(RawDataText::DescribeAdded(
        RawDataText::Examine(text), AddedSamples::CountOf(*data_) - values.size(), data_->SubGroupSize()));
    if (wereOpen && !Tables::LeavesLimitsOpen(data_->RowAsKnown()))
      news_ += u' ' + Words::Adding::limitsAreKept(Conversions::CStr(data_->XBarLCL()),
                                                   Conversions::CStr(data_->XBarUCL()));
    txtNewValues->ShowText({});
    UpdateNotes();
    txtNewValues->setFocus();
  });
}

void AddMeasurements::reject() {
  if (txtNewValues && !txtNewValues->toPlainText().trimmed().isEmpty()) {
    const Answer answer = QCGlobalFunctions::PromptForChanges();
    if (answer == Answer::Cancel) return;
    if (answer == Answer::Yes) {
      Add();
      if (!txtNewValues->toPlainText().isEmpty()) return;
    }
  }
  QDialog::reject();
}

void AddMeasurements::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!isEnter) return QDialog::keyPressEvent(event);
  if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
    button->click();
  else if (cmdAdd->isEnabled())
    cmdAdd->click();
}

#include "screens/ExpandedDataForm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/ui/Mnemonics.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/RawDataBox.h"
#include "screens/RawDataNotes.h"
#include "screens/ReadOnly.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

ExpandedDataForm::ExpandedDataForm(QWidget* parent, const QString& subGroupSize,
                                   const std::optional<RawDataText::FlierLimits>& fliers)
    : QDialog(parent), subGroupSize_(subGroupSize), fliers_(fliers) {
  Trap(u"ExpandedDataForm::Form_Load"_s, [this] {
    BuildControls();
    txtRawData->ShowText(Globals().gRawDataText);
    loaded_ = txtRawData->toPlainText();
    UpdateNotes();
    connect(&LoadTimer, &QTimer::timeout, this, [this] {
      LoadTimer.stop();
      txtRawData->setFocus();
    });
    LoadTimer.start(0);
    ReadOnly::RestWithBoxes(*this, {u"cmdAccept"_s});
    InstallHelpKey(this, HelpTopics::ExpandedData);
  });
}

void ExpandedDataForm::BuildControls() {
  setObjectName(u"ExpandedDataForm"_s);
  setWindowTitle(Words::Editor::expandedTitle());
  setModal(true);
  LoadTimer.setObjectName(u"LoadTimer"_s);
  NotesTimer.setObjectName(u"NotesTimer"_s);
  NotesTimer.setSingleShot(true);

  Mnemonics mnemonics;
  txtRawData = new RawDataBox(u"txtExpandedRawData"_s, this);
  notes_ = new RawDataNotes(txtRawData, this);
  auto* cmdAccept = Named(new QPushButton(mnemonics.Mark(LoadResText(u"&Accept;196")), this), u"cmdAccept"_s);
  auto* cmdClose = Named(new QPushButton(mnemonics.Mark(LoadResText(u"&Close;197")), this), u"cmdClose"_s);
  auto* label = new QLabel(mnemonics.Mark(Words::Editor::expandedValues()), this);
  label->setBuddy(txtRawData);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdAccept);
  buttons->addWidget(cmdClose);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(txtRawData, 1);
  layout->addWidget(notes_);
  layout->addLayout(buttons);
  resize((QSize(34, 44) * fontMetrics().height()).boundedTo(screen()->availableSize() * 9 / 10));

  connect(txtRawData, &QPlainTextEdit::textChanged, this,
          [this] { NotesTimer.start(RawDataNotes::DelayFor(*txtRawData)); });
  connect(&NotesTimer, &QTimer::timeout, this, &ExpandedDataForm::UpdateNotes);
  connect(cmdAccept, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void ExpandedDataForm::ShowLinesOf(const RawDataBox& box, const Trace::Record& record) {
  txtRawData->ShowLinesOf(box, record);
  const QSize wider = size() + QSize(txtRawData->BesideWidth(), 0);
  resize(wider.boundedTo(screen()->availableSize() * 9 / 10));
}

const LineIdentity::Lines& ExpandedDataForm::Lines() const { return txtRawData->Lines(); }

void ExpandedDataForm::UpdateNotes() {
  const RawDataText::Examination found = RawDataText::Examine(txtRawData->toPlainText(), fliers_);
  notes_->Show(RawDataText::Describe(found, subGroupSize_), found);
  txtRawData->MarkSubgroups(RawDataText::SubGroupSize(subGroupSize_));
}

void ExpandedDataForm::accept() {
  Globals().gRawDataText = txtRawData->toPlainText();
  QDialog::accept();
}

void ExpandedDataForm::reject() {
  if (txtRawData->toPlainText() == loaded_) return QDialog::reject();
  const Answer answer = QCGlobalFunctions::PromptForChanges();
  if (answer == Answer::Yes) accept();
  if (answer == Answer::No) QDialog::reject();
}

#include "screens/ExpandedDataForm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/ui/Mnemonics.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/RawDataBox.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

ExpandedDataForm::ExpandedDataForm(QWidget* parent) : QDialog(parent) {
  Trap(u"ExpandedDataForm::Form_Load"_s, [this] {
    BuildControls();
    txtRawData->ShowText(Globals().gRawDataText);
    loaded_ = txtRawData->toPlainText();
    connect(&LoadTimer, &QTimer::timeout, this, [this] {
      LoadTimer.stop();
      txtRawData->setFocus();
    });
    LoadTimer.start(0);
    InstallHelpKey(this, HelpTopics::ExpandedData);
  });
}

void ExpandedDataForm::BuildControls() {
  setObjectName(u"ExpandedDataForm"_s);
  setWindowTitle(Words::Editor::expandedTitle());
  setModal(true);
  LoadTimer.setObjectName(u"LoadTimer"_s);

  Mnemonics mnemonics;
  txtRawData = new RawDataBox(u"txtExpandedRawData"_s, this);
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
  layout->addLayout(buttons);
  resize(fontMetrics().height() * 26, fontMetrics().height() * 30);

  connect(cmdAccept, &QPushButton::clicked, this, &QDialog::accept);
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
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

#include "screens/RenameForm.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "texts/SharingWords.h"

using namespace Qt::StringLiterals;

RenameForm::RenameForm(QWidget* parent) : QDialog(parent) {
  Trap(u"RenameForm::Form_Load"_s, [this] {
    BuildControls();
    DataObjectFunctions::GetDataObjectByID(Globals().gCurrentDataID, data_);
    ShowPresent();
    if (data_) txtName->setText(data_->Description());
    txtName->selectAll();
    InstallHelpKey(this, HelpTopics::MainScreen);
  });
}

void RenameForm::BuildControls() {
  setObjectName(u"RenameForm"_s);
  setWindowTitle(Words::Renaming::title());
  setModal(true);
  lblDescription = TextLabel(u"lblDescription"_s, this);
  lblDescription->setFont(HeadingFont(*this));
  txtName = Named(new QLineEdit(this), u"txtName"_s);
  auto* caption = new QLabel(Words::Renaming::newName(), this);
  caption->setBuddy(txtName);
  lblNews = TextLabel(u"lblNews"_s, this, Words::Renaming::scripts());
  cmdRename = Named(new QPushButton(Words::Renaming::rename(), this), u"cmdRename"_s);
  cmdRename->setToolTip(Words::Renaming::renameTip());
  cmdRename->setDefault(true);
  auto* cmdCancel = Named(new QPushButton(Words::Sharing::cancel(), this), u"cmdCancel"_s);
  cmdCancel->setAutoDefault(false);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdRename);
  buttons->addWidget(cmdCancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(lblDescription);
  layout->addWidget(caption);
  layout->addWidget(txtName);
  layout->addWidget(lblNews);
  layout->addStretch();
  layout->addLayout(buttons);
  const int width = fontMetrics().averageCharWidth() * 60;
  // A wrapped text claims no room of its own in the window around it.
  lblNews->setMinimumHeight(fontMetrics().lineSpacing() * 3);
  resize(QSize(width, minimumSizeHint().height()).boundedTo(RoomFor(*this)));
  txtName->setFocus();
  connect(cmdRename, &QPushButton::clicked, this, &RenameForm::Rename);
  connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void RenameForm::ShowPresent() {
  if (data_) lblDescription->setText(data_->Description());
  txtName->setEnabled(data_ != nullptr);
  cmdRename->setEnabled(data_ != nullptr);
}

void RenameForm::LibraryChanged() {
  if (data_) data_ = DataObjectFunctions::PresentOf(*data_);
  ShowPresent();
  if (!data_)
    lblNews->setText(Words::Sharing::deletedWhileOpen(Globals().clock->Now().toString(u"HH:mm:ss"_s)));
}

void RenameForm::Rename() {
  Trap(u"RenameForm::cmdRename_Click"_s, [this] {
    const QString name = txtName->text().trimmed();
    try {
      CurrentLibrary()->Rename(data_->ID(), name, Globals().clock->Now());
    } catch (const InputError&) {
      lblNews->setText(name.isEmpty() ? Words::Renaming::isEmpty() : Words::Renaming::isTaken(name));
      txtName->setFocus();
      txtName->selectAll();
      return;
    }
    if (MainScreen* screen = Globals().mainScreen) {
      screen->ReadLibraryNews();
      screen->SelectListRow(data_->ID());
    }
    accept();
  });
}

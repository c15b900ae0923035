#include "screens/PasswordForm.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/ado/Connection.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "texts/SharingWords.h"
#include "texts/StartWords.h"

using namespace Qt::StringLiterals;

PasswordForm::PasswordForm(QWidget* parent, const QString& why) : QDialog(parent) {
  setObjectName(u"PasswordForm"_s);
  setWindowTitle(Words::Server::passwordTitle());
  setModal(true);
  txtPassword = Named(new QLineEdit(this), u"txtPassword"_s);
  txtPassword->setEchoMode(QLineEdit::Password);
  auto* buttons = new QDialogButtonBox(this);
  auto* cmdOpen =
      Named(buttons->addButton(Words::Server::open(), QDialogButtonBox::AcceptRole), u"cmdOpen"_s);
  Named(buttons->addButton(Words::Sharing::cancel(), QDialogButtonBox::RejectRole), u"cmdCancel"_s);
  cmdOpen->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* field = new QFormLayout;
  field->addRow(Words::Server::password(), txtPassword);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(TextLabel(u"lblWhy"_s, this, why));
  layout->addLayout(field);
  layout->addWidget(TextLabel(u"lblKept"_s, this, Words::Server::passwordIsKept()));
  layout->addWidget(buttons);
  const int width = fontMetrics().averageCharWidth() * 60;
  resize(QSize(width, layout->totalHeightForWidth(width)).boundedTo(RoomFor(*this)));
  InstallHelpKey(this, HelpTopics::MainScreen);
}

bool PasswordForm::Ask(QWidget* parent, const QString& address, const QString& why) {
  Connection::UsePassword(address, {});  // the one that was given before is not the right one
  PasswordForm form(parent, why);
  if (form.exec() != Accepted || form.txtPassword->text().isEmpty()) return false;
  Connection::UsePassword(address, form.txtPassword->text());
  return true;
}

#include "screens/ServerForm.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Globals.h"
#include "library/Library.h"
#include "platform/ado/ServerAddress.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/PasswordForm.h"
#include "texts/SharingWords.h"
#include "texts/StartWords.h"

using namespace Qt::StringLiterals;

namespace {

// A field of one of the address's parts names it by this property.
constexpr char keywordOf[] = "keyword";

QString WithoutPlace(const Error& error, const QString& address) {
  return error.Text().remove(address + u": "_s).remove(ServerAddress::WithoutPassword(address) + u": "_s);
}

}  // namespace

ServerForm::ServerForm(QWidget* parent) : QDialog(parent) {
  BuildControls();
  const auto& library = Globals().gLibrary;
  const bool isServer = library && ServerAddress::IsOne(library->Place());
  if (isServer) txtAddress->setText(library->Place());
  ShowParts();
  InstallHelpKey(this, HelpTopics::MainScreen);
}

QString ServerForm::Ask(QWidget* parent) {
  ServerForm form(parent);
  return form.exec() == QDialog::Accepted ? form.txtAddress->text().trimmed() : QString();
}

QLineEdit* ServerForm::Field(const QString& name, const QString& keyword) {
  auto* field = Named(new QLineEdit(this), name);
  field->setProperty(keywordOf, keyword);
  connect(field, &QLineEdit::textEdited, this, &ServerForm::ShowAddress);
  return field;
}

void ServerForm::BuildControls() {
  setObjectName(u"ServerForm"_s);
  setWindowTitle(Words::Server::title());
  setModal(true);
  txtAddress = Named(new QLineEdit(this), u"txtAddress"_s);
  connect(txtAddress, &QLineEdit::textEdited, this, &ServerForm::ShowParts);
  auto* fields = new QFormLayout;
  fields->addRow(Words::Server::host(), Field(u"txtHost"_s, u"host"_s));
  fields->addRow(Words::Server::port(), Field(u"txtPort"_s, u"port"_s));
  fields->addRow(Words::Server::database(), Field(u"txtDatabase"_s, u"dbname"_s));
  fields->addRow(Words::Server::user(), Field(u"txtUser"_s, u"user"_s));
  fields->addRow(Words::Server::address(), txtAddress);
  findChild<QLineEdit*>(u"txtPort"_s)->setPlaceholderText(u"5432"_s);
  lblAnswer = TextLabel(u"lblAnswer"_s, this, Words::Server::passwords());
  lblAnswer->setMinimumHeight(fontMetrics().lineSpacing() * 3);

  const auto button = [this](const QString& name, const QString& caption, auto command) {
    auto* made = Named(new QPushButton(caption, this), name);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, command);
    return made;
  };
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(button(u"cmdTest"_s, Words::Server::test(), &ServerForm::Test));
  buttons->addStretch();
  buttons->addWidget(cmdOpen = button(u"cmdOpen"_s, Words::Server::open(), &ServerForm::Open));
  buttons->addWidget(button(u"cmdCancel"_s, Words::Sharing::cancel(), &QDialog::reject));
  cmdOpen->setDefault(true);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(fields);
  layout->addWidget(lblAnswer);
  layout->addStretch();
  layout->addLayout(buttons);
  const int width = fontMetrics().averageCharWidth() * 70;
  resize(QSize(width, minimumSizeHint().height()).boundedTo(RoomFor(*this)));
}

// As far as the address can be read; while one is typed it mostly cannot.
void ServerForm::ShowParts() {
  try {
    const QString text = txtAddress->text().trimmed();
    const ServerAddress address = ServerAddress::IsOne(text) ? ServerAddress::Parse(text) : ServerAddress();
    for (QLineEdit* field : findChildren<QLineEdit*>())
      if (const QString keyword = field->property(keywordOf).toString(); !keyword.isEmpty())
        field->setText(address.Part(keyword));
    lblAnswer->setText(Words::Server::passwords());
  } catch (const InputError& error) {
    lblAnswer->setText(WithoutPlace(error, txtAddress->text().trimmed()));
  }
}

void ServerForm::ShowAddress() {
  ServerAddress address;
  try {
    address = ServerAddress::Parse(txtAddress->text().trimmed());  // for the options
  } catch (const InputError&) {
  }
  for (QLineEdit* field : findChildren<QLineEdit*>())
    if (const QString keyword = field->property(keywordOf).toString(); !keyword.isEmpty())
      address.parts[keyword] = field->text().trimmed();
  txtAddress->setText(address.Text());
  lblAnswer->setText(Words::Server::passwords());
}

bool ServerForm::Test() {
  const QString address = txtAddress->text().trimmed();
  try {
    if (!ServerAddress::IsOne(address)) throw InputError(Words::Server::noAddress());
    const auto library = Library::Open(address, {});
    const auto& answer = library->CanWrite() ? Words::Server::isThere : Words::Server::isReadOnly;
    lblAnswer->setText(answer(library->Revision()));
    return true;
  } catch (const Error& error) {
    const auto* refusal = dynamic_cast<const DatabaseError*>(&error);
    const QString why = WithoutPlace(error, address);
    lblAnswer->setText(why);
    return refusal && refusal->cause == DatabaseError::Cause::Password &&
           PasswordForm::Ask(this, address, why) && Test();
  }
}

void ServerForm::Open() {
  if (Test()) accept();
}

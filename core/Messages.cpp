#include "core/Messages.h"

#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Buttons;
using MessageBox::Icon;

void ShowErrorMessage(bool isCritical, const QString& message, const QString& detail) {
  const QString title = LoadResText(isCritical ? u"Critical Error Message;105" : u"Error Message;106");
  const QString body =
      detail.isEmpty() ? message : message + LoadResText(u" with error: ;107") + u"\r\n"_s + detail;
  MessageBox::Show({body, title, isCritical ? Icon::Critical : Icon::Exclamation, Buttons::Ok});
}

void ReportProcedureError(const QString& source, const QString& errorText) {
  ShowErrorMessage(true, source + u' ' + LoadResText(u"failed;104"), errorText);
}

void ReportRefusal(const QString& reason) {
  ShowErrorMessage(
      true, LoadResText(u"Failed to generate statistical data with error;112") + u"\r\n"_s + reason, {});
}

void ShowInformationMessage(const QString& message) {
  MessageBox::Show({message, Words::information(), Icon::Information, Buttons::Ok});
}

MessageBox::Answer ShowSystemMessage(const QString& message, Icon icon, Buttons buttons) {
  return MessageBox::Show({message, LoadResText(u"System Message;165"), icon, buttons});
}

bool ConfirmedInSystemMessage(const QString& message, Icon icon) {
  return MessageBox::Show({message, LoadResText(u"System Message;165"), icon, Buttons::YesNo, true}) ==
         MessageBox::Answer::Yes;
}

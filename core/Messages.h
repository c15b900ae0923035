// The standard message boxes: a failure, a procedure that failed, a piece of news, a question.
#pragma once

#include <QString>

#include "platform/ui/MessageBox.h"

// Title "Critical Error Message" (stop icon) or "Error Message" (exclamation icon); a detail stands on a
// second line, after " with error: ".
void ShowErrorMessage(bool isCritical, const QString& message, const QString& detail);

// The critical box for the procedure `source` ("Module::Procedure") with the error's own text.
void ReportProcedureError(const QString& source, const QString& errorText);

// The critical box for what the engine refuses, with its reason.
void ReportRefusal(const QString& reason);

// Title "Information", information icon.
void ShowInformationMessage(const QString& message);

// A box titled "System Message": the program's notices and questions that are not errors.
MessageBox::Answer ShowSystemMessage(const QString& message, MessageBox::Icon icon,
                                     MessageBox::Buttons buttons = MessageBox::Buttons::Ok);

// A question of that kind with Yes and No, whose default is No. Whether it was answered Yes.
bool ConfirmedInSystemMessage(const QString& message, MessageBox::Icon icon = MessageBox::Icon::Question);

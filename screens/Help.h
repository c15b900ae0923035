// The help call: opens the manual at its contents or at one topic.
#pragma once

#include <QtGlobal>

#include "screens/HelpTopics.h"

class QWidget;

// Context 0 opens the contents; any other number opens that topic, in the second help window.
void CallUpHelp(qint32 context);

// Makes F1 anywhere on the form open its topic.
void InstallHelpKey(QWidget* form, qint32 context);

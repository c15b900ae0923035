// The record-navigation bar: eleven numbered commands, each with its own enable state.
#pragma once

#include "platform/ui/ButtonBar.h"

class RecordBar : public ButtonBar {
  Q_OBJECT
 public:
  enum CommandIndex { Add = 1, Save, Delete, RefreshList, NoAction, First, Previous, Next, Last, Help, Exit };

  // Buttons are named after the bar: "qsMenuBar1_1" is Add. The one without an action is never shown.
  explicit RecordBar(const QString& objectName, QWidget* parent = nullptr, const QString& reserved = {});

  void SetEnabled(int command, bool enabled) { Button(command)->setEnabled(enabled); }

 Q_SIGNALS:
  void Command(int index);  // 1 to 11, as in CommandIndex
};

// Shows the message boxes of MessageBox as windows of the desktop.
#pragma once

#include "platform/ui/MessageBox.h"

class QtMessageBox : public MessageBox::Presenter {
 public:
  MessageBox::Answer Show(const MessageBox::Request& request) override;
};

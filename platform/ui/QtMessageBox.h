// Shows the message boxes of MessageBox as windows of the desktop.
#pragma once

#include "platform/ui/MessageBox.h"

class QtMessageBox : public MessageBox::Presenter {
 public:
  struct Captions {
    QString ok, yes, no, cancel;  // of the buttons, with their mnemonics
  };

  explicit QtMessageBox(Captions captions) : captions_(std::move(captions)) {}
  MessageBox::Answer Show(const MessageBox::Request& request) override;

 private:
  Captions captions_;
};

// Shows the file dialogs of FileDialog as windows of the desktop.
#pragma once

#include "platform/ui/FileDialog.h"

class QtFileDialog : public FileDialog::Presenter {
 public:
  QString Ask(const FileDialog::Request& request) override;
};

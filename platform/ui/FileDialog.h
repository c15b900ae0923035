// The one front door for choosing a file: who asks does not know whether a window or a test answers.
#pragma once

#include <QString>

namespace FileDialog {

enum class Kind { Open, Save };

struct Request {
  Kind kind = Kind::Open;
  QString title;
  QString filter;              // as Qt writes them: "csf Files (*.csf);;All Files (*)"
  QString folder;              // the initial folder, or a proposed file in it
  QString defaultSuffix;       // added to a saved name that has none, without the dot
  bool keepsExisting = false;  // who asks refuses an existing file, so that nobody is asked to replace it
};

class Presenter {
 public:
  virtual ~Presenter() = default;
  // The chosen path, or the empty string when the user cancelled.
  virtual QString Ask(const Request& request) = 0;
};

// Installs who asks from now on and returns the one before; the caller keeps the ownership. Without one every
// question is answered as cancelled.
Presenter* Install(Presenter* presenter);

QString Ask(const Request& request);

}  // namespace FileDialog

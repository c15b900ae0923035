// The one front door for message boxes: who asks does not know whether a window, a terminal or a test
// answers.
#pragma once

#include <QString>

namespace MessageBox {

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

struct Request {
  QString text;
  QString title;
  Icon icon = Icon::None;
  Buttons buttons = Buttons::Ok;
  bool prefersNo = false;  // Enter answers No instead of Yes
};

// What closing a box without a choice answers: Cancel where the box has that button, No where it has Yes and
// No, Ok otherwise.
Answer Refusal(Buttons buttons);

class Presenter {
 public:
  virtual ~Presenter() = default;
  // Shows the box and returns once it is answered; closed without a choice, with its Refusal.
  virtual Answer Show(const Request& request) = 0;
};

// Installs who shows the boxes from now on and returns the one before; the caller keeps the ownership.
// Without one installed a box is answered with its refusing button (Ok, No or Cancel) and its text goes to
// standard error.
Presenter* Install(Presenter* presenter);

Answer Show(const Request& request);

}  // namespace MessageBox

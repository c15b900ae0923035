// A pause during which the user interface goes on.
#pragma once

#include <QtGlobal>

class clsWaitTimer {
 public:
  // Returns once more than that many milliseconds have passed on the program's clock.
  void WaitTimer(qint32 milliseconds);
};

// A clock that leaves out what the program waits for: what is measured by it is work alone.
#pragma once

#include "platform/system/Clock.h"

class SkippingClock : public SystemClock {
 public:
  qint32 GetTickCount() override { return SystemClock::GetTickCount() + skipped_; }
  void Sleep(int milliseconds) override { skipped_ += milliseconds; }

 private:
  qint32 skipped_ = 0;
};

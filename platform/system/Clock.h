// Time as the program sees it, so that tests can turn the clock.
#pragma once

#include <QDateTime>

class Clock {
 public:
  virtual ~Clock() = default;
  virtual qint32 GetTickCount() = 0;  // milliseconds since some start; wraps like a signed 32-bit number
  virtual void Sleep(int milliseconds) = 0;
  virtual QDateTime Now() = 0;  // local time
};

class SystemClock : public Clock {
 public:
  qint32 GetTickCount() override;
  void Sleep(int milliseconds) override;
  QDateTime Now() override;
};

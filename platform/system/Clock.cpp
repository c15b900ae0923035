#include "platform/system/Clock.h"

#include <QThread>
#include <chrono>

qint32 SystemClock::GetTickCount() {
  using namespace std::chrono;
  return static_cast<qint32>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void SystemClock::Sleep(int milliseconds) { QThread::msleep(static_cast<unsigned long>(milliseconds)); }

QDateTime SystemClock::Now() { return QDateTime::currentDateTime(); }

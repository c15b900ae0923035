#include "core/clsWaitTimer.h"

#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/language/Conversions.h"
#include "platform/system/EventPump.h"

using namespace Qt::StringLiterals;

void clsWaitTimer::WaitTimer(qint32 milliseconds) {
  Trap(u"clsWaitTimer::WaitTimer"_s, [&] {
    Clock& clock = *Globals().clock;
    const qint64 sum = qint64{clock.GetTickCount()} + milliseconds;
    const auto end = static_cast<qint32>(sum);
    if (end != sum) throw Conversions::Overflow();
    for (;;) {
      DoEvents();
      if (clock.GetTickCount() > end) return;
      clock.Sleep(10);
    }
  });
}

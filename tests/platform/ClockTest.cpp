// The machine's own clock; everything else runs on clocks that tests turn.
#include "platform/system/Clock.h"

#include <gtest/gtest.h>

TEST(SystemClock, CountsMillisecondsSleepsThemAndTellsLocalTime) {
  SystemClock clock;
  const QDateTime before = QDateTime::currentDateTime();
  const qint32 start = clock.GetTickCount();
  clock.Sleep(30);
  EXPECT_GE(clock.GetTickCount() - start, 29);
  EXPECT_LT(clock.GetTickCount() - start, 20'000) << "or it counts something else";
  const QDateTime now = clock.Now();
  EXPECT_GE(before.msecsTo(now), 29);
  EXPECT_LE(now, QDateTime::currentDateTime());
  EXPECT_EQ(now.timeSpec(), Qt::LocalTime);
}

#include "platform/system/EventPump.h"

#include <QCoreApplication>

void DoEvents() {
  if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

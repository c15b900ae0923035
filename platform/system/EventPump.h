// Lets the user interface process what is pending, from inside a long loop.
#pragma once

#include <QCoreApplication>

// Does nothing where no application object exists.
inline void DoEvents() {
  if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

// Lets each database operation of an action fail once.
#pragma once

#include <gtest/gtest.h>

#include "platform/ado/Connection.h"

// Calls action with the nth operation failing, for n from 1 until none fails any more, and after each call
// check with action's result and the name of what failed (empty: nothing).
template <class Action, class Check>
void FailEach(Action&& action, Check&& check) {
  QString failed = QStringLiteral("first");
  for (int failing = 1; !failed.isEmpty(); ++failing) {
    ASSERT_LT(failing, 100);
    failed.clear();
    int operations = 0;
    Connection::FaultHook = [&](const QString& operation) {
      if (++operations != failing) return;
      failed = operation;
      throw DatabaseError(QStringLiteral("planned"));
    };
    const auto result = action();
    Connection::FaultHook = nullptr;
    SCOPED_TRACE("operation " + std::to_string(failing) + " (" + failed.toStdString() + ")");
    check(result, failed);
  }
}

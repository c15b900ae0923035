// The one way in which a procedure traps its own errors: inside, errors are exceptions; at its border they
// become a report to the user and a neutral result.
#pragma once

#include <QString>
#include <exception>
#include <type_traits>

#include "core/Messages.h"
#include "platform/error/Error.h"

// Runs body and returns its result; an exception is reported under `source` and gives `neutral`.
template <class Result, class Body>
Result Trap(const QString& source, Result neutral, Body&& body) {
  try {
    return body();
  } catch (const std::exception& error) {
    ReportProcedureError(source, ErrorText(error));
    return neutral;
  }
}

// The same for a procedure without a result.
template <class Body>
void Trap(const QString& source, Body&& body) {
  try {
    body();
  } catch (const std::exception& error) {
    ReportProcedureError(source, ErrorText(error));
  }
}

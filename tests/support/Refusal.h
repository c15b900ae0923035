// What a call that has to be refused says of it.
#pragma once

#include "platform/error/Error.h"

// The text of the error, which is of that kind; "taken" where there is none.
template <class Kind = Error, class Call>
QString Refusal(Call&& call) {
  try {
    call();
  } catch (const Kind& error) {
    return error.Text();
  }
  return QStringLiteral("taken");
}

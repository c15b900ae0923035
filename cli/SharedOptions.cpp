#include "cli/SharedOptions.h"

#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

namespace SharedOptions {

void CheckSpecLimits(const Arguments& arguments) {
  if (*arguments.Number(lsl) < *arguments.Number(usl)) return;
  throw InputError(Words::Command::limitsReversed(arguments.Text(lsl), arguments.Text(usl)));
}

WrittenNumbers::Notation Notation(const Arguments& arguments) {
  WrittenNumbers::Notation notation;
  if (arguments.Has(decimal))
    notation.decimal =
        arguments.Choice(decimal) == 0 ? WrittenNumbers::Decimal::Point : WrittenNumbers::Decimal::Comma;
  if (arguments.Has(separator)) notation.separator = u",;\t"_s[arguments.Choice(separator)];
  return notation;
}

}  // namespace SharedOptions

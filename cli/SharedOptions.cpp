#include "cli/SharedOptions.h"

#include <algorithm>

#include "cli/Console.h"
#include "platform/error/Error.h"

using namespace Qt::StringLiterals;

namespace SharedOptions {

void CheckSpecLimits(const Arguments& arguments) {
  if (*arguments.Number(lsl) < *arguments.Number(usl)) return;
  throw InputError(Words::Command::limitsReversed(arguments.Text(lsl), arguments.Text(usl)));
}

void CheckName(const QString& word, const QString& name) {
  if (name.isEmpty()) throw InputError(Words::Command::emptyName(word));
  if (std::ranges::any_of(name, Console::IsControl)) throw InputError(Words::Command::nameOnLines(word));
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

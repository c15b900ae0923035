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

void CheckName(const Option& option, const QString& name) {
  const QString written = u"--"_s + option.name;
  if (name.isEmpty()) throw InputError(Words::Command::emptyName(written));
  if (std::ranges::any_of(name, Console::IsControl)) throw InputError(Words::Command::nameOnLines(written));
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

#include "cli/Arguments.h"

#include <algorithm>

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/CommandWords.h"

using namespace Qt::StringLiterals;

namespace {

// "-", "-5", "-.5" and "-5,-6" are values, not options.
bool BeginsLikeNumber(const QString& word) { return word.size() < 2 || word[1].isDigit() || word[1] == u'.'; }

}  // namespace

Arguments::Arguments(const QStringList& words, const Command& command) {
  QStringList rest = words;
  while (!rest.isEmpty()) {
    const QString word = rest.takeFirst();
    if (word == "--"_L1) {
      operands_ += rest;
      break;
    }
    if (word.startsWith(u'-') && !BeginsLikeNumber(word))
      TakeOption(word, rest, command);
    else
      operands_ << word;
  }
  for (const Option& option : command.options) {
    if (option.required && !Has(option)) throw InputError(Words::Usage::optionMissing(option.name));
  }
  CheckOperands(command);
}

void Arguments::TakeOption(const QString& word, QStringList& rest, const Command& command) {
  const qsizetype equals = word.indexOf(u'=');
  const bool hasValue = equals >= 0;
  const QString name = word.startsWith("--"_L1) ? word.mid(2, hasValue ? equals - 2 : -1) : QString();
  const auto option = std::ranges::find(command.options, name, &Option::name);
  if (option == command.options.end()) throw InputError(Words::Usage::unknownOption(word));
  if (option->kind == Option::Kind::Flag) {
    if (hasValue) throw InputError(Words::Usage::takesNoValue(name));
    values_[name] = QString();
    return;
  }
  if (Has(*option)) throw InputError(Words::Usage::givenTwice(name));
  if (!hasValue && rest.isEmpty()) throw InputError(Words::Usage::needsValue(name));
  const QString value = hasValue ? word.mid(equals + 1) : rest.takeFirst();
  option->Check(value);
  values_[name] = value;
}

void Arguments::CheckOperands(const Command& command) const {
  const auto& declared = command.operands;
  const bool repeats = !declared.empty() && declared.back().repeats;
  const auto needed = static_cast<qsizetype>(declared.size()) - repeats;
  if (operands_.size() < needed)
    throw InputError(Words::Usage::missing(declared[static_cast<std::size_t>(operands_.size())].what));
  if (!repeats && operands_.size() > needed) throw InputError(Words::Usage::unexpected(operands_[needed]));
}

std::optional<double> Arguments::Number(const Option& option) const {
  if (!Has(option)) return std::nullopt;
  return Conversions::CDbl(Text(option));
}

int Arguments::Whole(const Option& option) const {
  return Has(option) ? Text(option).toInt() : option.standard.value_or(0);
}

int Arguments::Choice(const Option& option) const {
  if (!Has(option)) return option.standard.value_or(-1);
  const auto isIt = [&](const QString& choice) {
    return choice.compare(Text(option), Qt::CaseInsensitive) == 0;
  };
  return static_cast<int>(std::ranges::find_if(option.choices, isIt) - option.choices.begin());
}

#include "cli/Command.h"

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/CommandWords.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype lineWidth = 100;
constexpr qsizetype helpColumn = 25;

// The words on lines of the width, all but the first indented.
QString Wrapped(const QString& start, const QStringList& words, qsizetype indent) {
  QString text = start;
  qsizetype column = start.size();
  for (const QString& word : words) {
    if (column + 1 + word.size() > lineWidth) {
      text += u'\n' + QString(indent - 1, u' ');
      column = indent - 1;
    }
    text += u' ' + word;
    column += 1 + word.size();
  }
  return text + u'\n';
}

QString InUsage(const Option& option) {
  QString text = u"--"_s + option.name;
  if (option.kind == Option::Kind::Choice)
    text += u' ' + option.choices.join(u'|');
  else if (!option.value.isEmpty())
    text += u' ' + option.value;
  return option.required ? text : u'[' + text + u']';
}

QString InHelp(const Option& option) {
  const QString start = u"  --%1 %2"_s.arg(option.name, option.value).leftJustified(helpColumn - 1);
  QString help = option.help;
  if (option.kind == Option::Kind::Whole) help += Words::Usage::bounds(option.low, option.high);
  if (option.standard) {
    const int standard = *option.standard;
    help += Words::Usage::standard(option.choices.isEmpty() ? QString::number(standard)
                                                            : option.choices[standard]);
  }
  return Wrapped(start, help.split(u' '), helpColumn);
}

}  // namespace

Option Option::Flag(const QString& name, const QString& help) {
  return {.name = name, .kind = Kind::Flag, .value = {}, .help = help, .choices = {}, .standard = {}};
}

Option Option::Text(const QString& name, const QString& value, const QString& help) {
  return {.name = name, .kind = Kind::Text, .value = value, .help = help, .choices = {}, .standard = {}};
}

Option Option::Number(const QString& name, const QString& help) {
  return {.name = name, .kind = Kind::Number, .value = u"X"_s, .help = help, .choices = {}, .standard = {}};
}

Option Option::Whole(const QString& name, const QString& help, int low, int high,
                     std::optional<int> standard) {
  return {.name = name,
          .kind = Kind::Whole,
          .value = u"N"_s,
          .help = help,
          .low = low,
          .high = high,
          .choices = {},
          .standard = standard};
}

Option Option::Choice(const QString& name, const QStringList& choices, const QString& help,
                      std::optional<int> standard) {
  return {.name = name,
          .kind = Kind::Choice,
          .value = u"WORD"_s,
          .help = help,
          .choices = choices,
          .standard = standard};
}

Option Option::Required() const {
  Option option = *this;
  option.required = true;
  return option;
}

void Option::Check(const QString& text) const {
  const auto refuse = [&](const QString& why) {
    throw InputError(Words::Usage::isNot(name, text, why), u"--"_s + name);
  };
  bool isWhole = false;
  switch (kind) {
    case Kind::Number:
      if (!Conversions::IsNumeric(text)) refuse(Words::Usage::number());
      break;
    case Kind::Whole:
      if (const int whole = text.toInt(&isWhole); !isWhole || whole < low || whole > high)
        refuse(Words::Usage::wholeNumber(low, high));
      break;
    case Kind::Choice:
      if (!choices.contains(text, Qt::CaseInsensitive)) refuse(Words::Usage::oneOf(choices.join(u", "_s)));
      break;
    case Kind::Flag:
    case Kind::Text:
      break;
  }
}

QString Command::Usage() const {
  QStringList words;
  for (const Operand& operand : operands)
    if (!operand.repeats) words << operand.name;
  for (const Option& option : options) words << InUsage(option);
  for (const Operand& operand : operands)
    if (operand.repeats) words << u"[%1...]"_s.arg(operand.name);
  const QString start = u"kestrel "_s + name;
  return Wrapped(start, words, start.size() + 1);
}

QString Command::Help() const {
  QString text = Usage() + purpose + u".\n"_s + details;
  for (const Option& option : options) text += InHelp(option);
  return text;
}

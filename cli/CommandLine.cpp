#include "cli/CommandLine.h"

#include <QFileInfo>
#include <array>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "platform/error/Error.h"
#include "texts/Version.h"

using namespace Qt::StringLiterals;

namespace CommandLine {

namespace {

// In the order of the help.
const std::array<const Command*, 12>& AllCommands() {
  static const std::array<const Command*, 12> commands = {
      &Commands::New(),     &Commands::Import(), &Commands::Append(),  &Commands::Status(),
      &Commands::Report(),  &Commands::Export(), &Commands::Convert(), &Commands::Copy(),
      &Commands::Restore(), &Commands::Watch(),  &Commands::Stats(),   &Commands::Verify()};
  return commands;
}

const Command* Find(const QString& name) {
  for (const Command* command : AllCommands()) {
    if (command->name == name) return command;
  }
  return nullptr;
}

QString Overview() {
  QString text =
      u"kestrel: statistical process control for measured characteristics\n\n"
      "  kestrel [FILE]         the desktop program\n"_s;
  for (const Command* command : AllCommands()) {
    text += u"  kestrel %1 %2\n"_s.arg(command->name, -14).arg(command->purpose);
  }
  return text +
         u"\nkestrel help COMMAND tells more. kestrel --version gives the version.\n"
         "Exit status: 0 fine; 1 out of control (--check) or a difference (verify); 2 wrong usage or bad\n"
         "input; 3 a file cannot be read or written.\n"_s;
}

int Help(const QStringList& words) {
  if (words.isEmpty()) {
    Console::Print(Overview());
    return Fine;
  }
  const Command* command = Find(words[0]);
  if (!command) throw InputError(u"there is no command \"%1\"; kestrel help lists them"_s.arg(words[0]));
  Console::Print(command->Help());
  return Fine;
}

int Dispatch(const QStringList& words) {
  const QString first = words.value(0);
  const QStringList rest = words.mid(1);
  if (first == "help"_L1 || first == "--help"_L1 || first == "-h"_L1) return Help(rest);
  if (first == "--version"_L1) {
    Console::Print(u"kestrel %1\n"_s.arg(Version::text));
    return Fine;
  }
  const Command* command = Find(first);
  if (!command) {
    const QString kind = first.startsWith(u'-') ? u"unknown option"_s
                         : rest.isEmpty()       ? u"there is no command and no file"_s
                                                : u"there is no command"_s;
    throw InputError(u"%1 \"%2\"; kestrel help lists the commands"_s.arg(kind, first));
  }
  if (rest.contains("--help"_L1)) return Help({first});
  return command->run(Arguments(rest, *command));
}

}  // namespace

bool IsCommand(const QStringList& words) {
  if (words.isEmpty()) return false;
  const QString& first = words.first();
  const bool isLibrary =
      QFileInfo::exists(first) || first.startsWith("postgresql://"_L1) || first.startsWith("postgres://"_L1);
  return words.size() > 1 || first == "help"_L1 || Find(first) || !isLibrary;
}

bool NeedsGraphics(const QStringList& words) {
  const Command* command = Find(words.value(0));
  return command && command->needsGraphics;
}

int StatusOf(const std::exception& error) {
  const auto* known = dynamic_cast<const Error*>(&error);
  return known && known->GetKind() == Error::Kind::BadInput ? BadInput : FileTrouble;
}

int Run(const QStringList& words) {
  try {
    return Dispatch(words);
  } catch (const std::exception& error) {
    Console::Complain(ErrorText(error));
    return StatusOf(error);
  }
}

}  // namespace CommandLine

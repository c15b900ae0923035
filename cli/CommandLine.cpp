#include "cli/CommandLine.h"

#include <QFileInfo>
#include <array>
#include <csignal>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "platform/ado/ServerAddress.h"
#include "platform/error/Error.h"
#include "texts/CommandWords.h"
#include "texts/Version.h"

using namespace Qt::StringLiterals;

namespace CommandLine {

namespace {

// In the order of the help.
const std::array<const Command*, 13>& AllCommands() {
  static const std::array<const Command*, 13> commands = {
      &Commands::New(),    &Commands::Import(),  &Commands::Append(),  &Commands::Status(),
      &Commands::Report(), &Commands::Export(),  &Commands::Convert(), &Commands::Copy(),
      &Commands::Rename(), &Commands::Restore(), &Commands::Watch(),   &Commands::Stats(),
      &Commands::Verify()};
  return commands;
}

const Command* Find(const QString& name) {
  for (const Command* command : AllCommands()) {
    if (command->name == name) return command;
  }
  return nullptr;
}

QString Overview() {
  QString text = Words::Usage::programs();
  for (const Command* command : AllCommands()) {
    text += u"  kestrel %1 %2\n"_s.arg(command->name, -14).arg(command->purpose);
  }
  return text + Words::Usage::helpAndStatus();
}

int Help(const QStringList& words) {
  if (words.isEmpty()) {
    Console::Print(Overview());
    return Fine;
  }
  const Command* command = Find(words[0]);
  if (!command) throw InputError(Words::Usage::noHelp(words[0]));
  Console::Print(command->Help());
  return Fine;
}

int Dispatch(const QStringList& words) {
  const QString first = words.value(0);
  const QStringList rest = words.mid(1);
  if (first == "help"_L1 || first == "--help"_L1 || first == "-h"_L1) return Help(rest);
  if (first == "--version"_L1) {
    Console::Print(Words::Usage::version(QString(Version::text)) + u'\n');
    return Fine;
  }
  const Command* command = Find(first);
  if (!command) {
    if (ServerAddress::IsOne(first)) ServerAddress::Parse(first);  // says why it is none, if it is none
    const auto& refusal = first.startsWith(u'-') ? Words::Usage::noSuchOption
                          : rest.isEmpty()       ? Words::Usage::noCommandAndNoFile
                                                 : Words::Usage::noCommand;
    throw InputError(refusal(first));
  }
  if (rest.contains("--help"_L1)) return Help({first});
  return command->run(Arguments(rest, *command));
}

bool IsAddress(const QString& word) {
  try {
    return ServerAddress::IsOne(word) && !ServerAddress::Parse(word).parts.empty();
  } catch (const InputError&) {
    return false;
  }
}

}  // namespace

bool IsCommand(const QStringList& words) {
  if (words.isEmpty()) return false;
  const QString& first = words.first();
  if (words.size() > 1 || first == "help"_L1 || Find(first)) return true;
  return !QFileInfo(first).isFile() && !IsAddress(first);
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
#ifdef Q_OS_UNIX
  // A reader who has gone ends no command between writing and telling; what is printed fails instead.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  try {
    return Dispatch(words);
  } catch (const std::exception& error) {
    Console::Complain(ErrorText(error));
    return StatusOf(error);
  }
}

}  // namespace CommandLine

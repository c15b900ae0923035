#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "cli/Console.h"
#include "platform/error/Error.h"
#include "texts/Version.h"

using namespace Qt::StringLiterals;

namespace CommandLine {

namespace {

struct Command {
  QString name;
  int (*run)(const QStringList& words);
  bool needsGraphics;
  QString usage;
  QString purpose;
  QString details;
};

const QString limitWords =
    uR"(  --usl X --lsl X        the specification limits, upper and lower
  --subgroup N           samples per subgroup, 1 to 20 (1)
  --sensitivity WORD     low: detection rules 1 and 4; medium: 1, 2 and 4; high: all four (medium)
  --period WORD          long: every point is judged; short: the last eight (long)
)"_s;

const QString notationWords =
    uR"(  --decimal WORD         point or comma: the decimal mark of the values
  --separator WORD       comma, semicolon or tab: what stands between values
)"_s;

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> commands = {
      {u"new"_s, Commands::New, false, u"FILE"_s, u"makes an empty library"_s,
       u"An existing file is never overwritten.\n"_s},
      {u"import"_s, Commands::Import, false,
       u"FILE CSV --description TEXT --usl X --lsl X --nominal X [--unit U] [--subgroup N]\n"
       "                [--sensitivity low|medium|high] [--period long|short] [--column NAME|N]\n"
       "                [--decimal point|comma] [--separator comma|semicolon|tab]"_s,
       u"adds a data set from one column of a CSV file"_s,
       u"The control limits are calculated from the data and kept.\n"
       "  --description TEXT     the data set's name, which no other may have\n"
       "  --nominal X            the nominal value, within the specification limits\n"
       "  --unit U               the unit of measurement\n"
       "  --column NAME|N        the column, by its heading or its number from 1\n"_s +
           notationWords + limitWords},
      {u"append"_s, Commands::Append, false,
       u"FILE --description TEXT [--decimal point|comma] [--separator comma|semicolon|tab] VALUE..."_s,
       u"adds values to a data set"_s,
       u"Without values on the line they are read from standard input. Kept control limits stay as they are.\n"_s +
           notationWords},
      {u"status"_s, Commands::Status, false, u"FILE [--json] [--check]"_s,
       u"shows the state of every data set"_s,
       u"  --json                 an array with one object per data set\n"
       "  --check                exit status 1 when a data set is out of control\n"_s},
      {u"report"_s, Commands::Report, true,
       u"FILE --out DIR [--format pdf|png|svg] [--fit] [DESCRIPTION...]"_s, u"writes the page of charts"_s,
       u"One file for each data set, or for those named.\n"
       "  --out DIR              the folder; it is made where it does not exist\n"
       "  --format WORD          pdf, png or svg (pdf)\n"
       "  --fit                  value axes that fit the points, in place of the standard scale\n"_s},
      {u"export"_s,
       Commands::Export,
       false,
       u"FILE --out DIR [DESCRIPTION...]"_s,
       u"writes data sets and their results as .csf files"_s,
       {}},
      {u"convert"_s, Commands::Convert, false, u"ACCESSFILE FILE"_s, u"makes a library from an Access file"_s,
       u"The Access file is only read; an existing file is never overwritten.\n"_s},
      {u"stats"_s, Commands::Stats, false,
       u"[--subgroup N] [--usl X --lsl X] [--sensitivity WORD] [--period WORD] [--start N --stop N]\n"
       "               [--limits XUCL,XLCL,XMEAN,RUCL,RLCL,RMEAN] [--precision N] [--reverse]\n"
       "               [--decimal point|comma] [--separator comma|semicolon|tab]"_s,
       u"statistics of values on standard input, as JSON"_s,
       limitWords +
           u"  --start N --stop N     the plot points that the limits are calculated from\n"
           "  --limits SIX           limits to keep; 0 has one calculated\n"
           "  --precision N          decimals of the texts and of the rules' judgement, 0 to 15 (4)\n"
           "  --reverse              the values are given newest first\n"_s +
           notationWords},
      {u"verify"_s, Commands::Verify, true, u"[--json] [--pdf FILE]"_s, u"checks the program's own figures"_s,
       u"Compares with certified, published and independently calculated figures on this machine.\n"
       "  --json                 an object with every figure, expected and found\n"
       "  --pdf FILE             a report for the file of records as well\n"
       "Exit status 1 when anything differs.\n"_s},
  };
  return commands;
}

const Command* Find(const QString& name) {
  for (const Command& command : AllCommands()) {
    if (command.name == name) return &command;
  }
  return nullptr;
}

QString Overview() {
  QString text =
      u"kestrel: statistical process control for measured characteristics\n\n"
      "  kestrel [FILE]         the desktop program\n"_s;
  for (const Command& command : AllCommands()) {
    text += u"  kestrel %1 %2\n"_s.arg(command.name, -14).arg(command.purpose);
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
  Console::Print(
      u"kestrel %1 %2\n%3.\n%4"_s.arg(command->name, command->usage, command->purpose, command->details));
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
    const QString kind = first.startsWith(u'-') ? u"unknown option"_s : u"there is no command"_s;
    throw InputError(u"%1 \"%2\"; kestrel help lists the commands"_s.arg(kind, first));
  }
  if (rest.contains("--help"_L1)) return Help({first});
  return command->run(rest);
}

}  // namespace

bool IsCommand(const QStringList& words) {
  const QString first = words.value(0);
  return first == "help"_L1 || first.startsWith(u'-') || words.size() > 1 || Find(first);
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

// The commands that look after a library: copy, rename, restore, watch.
#include <QDateTime>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <limits>
#include <map>
#include <set>
#include <utility>

#include "cli/Arguments.h"
#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/SharedOptions.h"
#include "data/Names.h"
#include "library/Library.h"
#include "library/LibraryWatch.h"
#include "platform/error/Error.h"
#include "texts/CommandWords.h"
#include "texts/DetectionRules.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

using SharedOptions::libraryFile;

const Option id = Option::Whole(u"id"_s, Words::Command::idOption(), 0, std::numeric_limits<int>::max());
const Option as = Option::Text(u"as"_s, u"NAME"_s, Words::Command::asOption());
const Option purge = Option::Flag(u"purge"_s, Words::Command::purgeOption());
const Option exec = Option::Text(u"exec"_s, u"CMD"_s, Words::Command::execOption());

int RunCopy(const Arguments& arguments) {
  Library::Open(arguments.Operands()[0], Console::Warn)->CopyTo(arguments.Operands()[1]);
  return CommandLine::Fine;
}

int RunRename(const Arguments& arguments) {
  const QString name = arguments.Operands()[2].trimmed();
  SharedOptions::CheckName(u"NEW"_s, name);
  const auto library = Library::Open(arguments.Operands()[0], Console::Warn);
  library->Rename(arguments.Operands()[1].trimmed(), name, QDateTime::currentDateTime());
  return CommandLine::Fine;
}

// restore

using DeletedList = std::vector<Library::Deleted>;

QString ListOf(const DeletedList& deleted) {
  if (deleted.empty()) return Words::Command::nothingDeleted() + u'\n';
  QString text;
  for (const Library::Deleted& one : deleted) {
    const QString samples = one.row.data ? QString::number(one.row.data->SampleQty()) : u"-"_s;
    text += Words::Command::deletedLine(one.deletedAt, QString::number(one.row.id), samples,
                                        Console::OnOneLine(one.row.description)) +
            u'\n';
  }
  return text;
}

// The newest ones of these names, or of the ID.
DeletedList Chosen(const DeletedList& deleted, const Arguments& arguments) {
  const QString& place = arguments.Operands()[0];
  DeletedList chosen;
  if (arguments.Has(id)) {
    const int number = arguments.Whole(id);
    const auto found =
        std::ranges::find(deleted, number, [](const Library::Deleted& one) { return one.row.id; });
    if (found == deleted.end())
      throw InputError(Words::Command::noDeletedId(place, QString::number(number)), place);
    chosen.push_back(*found);
  }
  for (const QString& name : arguments.Operands().mid(1)) {
    const auto found = Names::Find(deleted.begin(), deleted.end(), name,
                                   [](const Library::Deleted& one) { return one.row.description; });
    if (found == deleted.end()) throw InputError(Words::Command::noDeleted(place, name), name);
    const auto isThis = [&](const Library::Deleted& one) { return one.number == found->number; };
    if (std::ranges::none_of(chosen, isThis)) chosen.push_back(*found);
  }
  return chosen;
}

int RunRestore(const Arguments& arguments) {
  const auto library = Library::Open(arguments.Operands()[0], Console::Warn);
  const DeletedList deleted = library->DeletedDataSets();
  const DeletedList chosen = Chosen(deleted, arguments);
  if (chosen.empty() && (arguments.Has(purge) || arguments.Has(as)))
    throw InputError(Words::Command::nothingChosen());
  if (chosen.size() > 1 && arguments.Has(as)) throw InputError(Words::Command::oneNameForMany());
  if (chosen.empty()) Console::Print(ListOf(deleted));
  const QString name = arguments.Text(as).trimmed();
  if (arguments.Has(as)) SharedOptions::CheckName(u"--"_s + as.name, name);
  for (const Library::Deleted& one : chosen) {
    const QString description = Console::OnOneLine(one.row.description);
    if (arguments.Has(purge)) {
      library->Purge(one);
      Console::Tell(Words::Command::purged(description) + u'\n');
    } else {
      library->Restore(one, name);
      const QString text = name.isEmpty() ? Words::Command::restored(description)
                                          : Words::Command::restoredAs(description, name);
      Console::Tell(text + u'\n');
    }
  }
  return CommandLine::Fine;
}

// watch

constexpr int lookEvery = 500;  // milliseconds

// What is told of a data set, and what makes it worth telling.
struct State {
  QString description;
  QString state;
  QString inControl;
  QString cpk;

  bool IsSame(const State& other) const { return state == other.state && inControl == other.inControl; }
};

State StateOf(const CData& data) {
  const bool hasPoints = data.NumberOfPlotPoints() > 0;
  const QString broken = Words::Command::ruleBroken(QString::number(data.RuleViolation()));
  const QString verdict = data.IsInControl() ? Words::Command::inControl() : broken;
  return {data.Description(), ProcessState::Name(data.ProcessState()), hasPoints ? verdict : u"-"_s,
          QString::number(data.CPKValue(), 'f', 2)};
}

class Watcher {
 public:
  Watcher(const QString& place, const QString& command)
      : place_(place), command_(command), watch_(place), library_(Library::Open(place, Console::Warn)) {
    library_->ReadEach([this](const Library::Row& row) {
      if (!row.failure) states_[row.id] = StateOf(*row.data);
      return true;
    });
  }

  void Look() {
    if (const auto change = watch_.Look()) {
      if (!change->trouble.isEmpty()) ComplainOnce(change->trouble);
      isReplaced_ = isReplaced_ || change->replaced;
      pending_.insert(change->changed.begin(), change->changed.end());
      pending_.insert(change->deleted.begin(), change->deleted.end());
    }
    Rows rows;
    try {
      rows = isReplaced_ ? ReadAgain() : ReadPending();
    } catch (const Error& error) {
      return ComplainOnce(error.Text());  // the next look reads them
    }
    for (const auto& [number, row] : rows) Compare(number, row);
  }

 private:
  struct Found {
    State state = {};
    QString failure = {};
  };
  using Rows = std::map<qint64, std::optional<Found>>;  // none where it is gone

  static Found FoundIn(const Library::Row& row) {
    return row.failure ? Found{.failure = row.failure->Text()} : Found{.state = StateOf(*row.data)};
  }

  Rows ReadPending() {
    Rows rows;
    for (const qint64 number : pending_)
      if (const auto row = library_->Read(number))
        rows[number] = FoundIn(*row);
      else
        rows[number] = std::nullopt;
    if (!rows.empty()) complaint_.clear();
    pending_.clear();
    return rows;
  }

  // Of the library that stands in the place now.
  Rows ReadAgain() {
    auto library = Library::Open(place_, Console::Warn);
    Rows rows;
    for (const auto& [known, state] : states_) rows[known] = std::nullopt;
    library->ReadEach([&rows](const Library::Row& row) {
      rows[row.id] = FoundIn(row);
      return true;
    });
    library_ = std::move(library);
    isReplaced_ = false;
    pending_.clear();
    complaint_.clear();
    return rows;
  }

  void ComplainOnce(const QString& text) {
    if (std::exchange(complaint_, text) != text) Console::Complain(text);
  }

  void Compare(qint64 number, const std::optional<Found>& row) {
    if (row && !row->failure.isEmpty()) return Console::Complain(place_ + u": "_s + row->failure);
    const auto known = states_.find(number);
    const bool isKnown = known != states_.end();
    if (!row && !isKnown) return;
    const State before = isKnown ? known->second : State{};
    State now{before.description, Words::Command::deleted(), u"-"_s, u"-"_s};
    if (row)
      states_[number] = now = row->state;
    else
      states_.erase(known);
    if (!isKnown || !now.IsSame(before)) Tell(number, before, now);
  }

  void Tell(qint64 number, const State& before, const State& now) const {
    const QString time = QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    const QString name = Console::OnOneLine(now.description);
    Console::Print(QStringList{time, name, now.state, now.inControl, now.cpk}.join(u'\t') + u'\n');
    if (command_.isEmpty()) return;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"KESTREL_LIBRARY"_s, place_);
    environment.insert(u"KESTREL_ID"_s, QString::number(number));
    environment.insert(u"KESTREL_DESCRIPTION"_s, now.description);
    environment.insert(u"KESTREL_STATE"_s, now.state);
    environment.insert(u"KESTREL_STATE_BEFORE"_s, before.state);
    environment.insert(u"KESTREL_IN_CONTROL"_s, now.inControl);
    environment.insert(u"KESTREL_CPK"_s, now.cpk);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(u"/bin/sh"_s, {u"-c"_s, command_});
    process.waitForFinished(-1);
  }

  const QString place_;
  const QString command_;
  LibraryWatch watch_;  // before what is read, so that no change falls between the two
  std::unique_ptr<Library> library_;
  std::map<qint64, State> states_;
  std::set<qint64> pending_;  // rows that are to be read
  bool isReplaced_ = false;   // another library stands in the place, which is to be read
  QString complaint_;         // the last one
};

[[noreturn]] void WatchUntilStopped(Watcher& watcher) {
  for (;;) {
    QEventLoop events;  // a server's news come as one
    QTimer::singleShot(lookEvery, &events, &QEventLoop::quit);
    events.exec();
    watcher.Look();
  }
}

int RunWatch(const Arguments& arguments) {
  const QString& place = arguments.Operands()[0];
  Library::Open(place, Console::Warn);  // what does not answer is waited for once
  Watcher watcher(place, arguments.Text(exec));
  WatchUntilStopped(watcher);
}

}  // namespace

const Command& Copy() {
  static const Command command = {
      .name = u"copy"_s,
      .purpose = Words::Command::copyPurpose(),
      .operands = {{u"FROM"_s, Words::Command::copyFrom()}, {u"TO"_s, Words::Command::copyTo()}},
      .options = {},
      .details = Words::Command::copyDetails(),
      .run = RunCopy};
  return command;
}

const Command& Rename() {
  static const Command command = {
      .name = u"rename"_s,
      .purpose = Words::Command::renamePurpose(),
      .operands = {libraryFile, {u"OLD"_s, Words::Command::oldName()}, {u"NEW"_s, Words::Command::newName()}},
      .options = {},
      .details = Words::Command::renameDetails(),
      .run = RunRename};
  return command;
}

const Command& Restore() {
  static const Command command = {.name = u"restore"_s,
                                  .purpose = Words::Command::restorePurpose(),
                                  .operands = {libraryFile, SharedOptions::descriptions},
                                  .options = {id, as, purge},
                                  .details = Words::Command::restoreDetails(),
                                  .run = RunRestore};
  return command;
}

const Command& Watch() {
  static const Command command = {.name = u"watch"_s,
                                  .purpose = Words::Command::watchPurpose(),
                                  .operands = {libraryFile},
                                  .options = {exec},
                                  .details = Words::Command::watchDetails(),
                                  .run = RunWatch};
  return command;
}

}  // namespace Commands

#include "core/Globals.h"

#include <stdexcept>
#include <utility>

#include "core/Trap.h"
#include "texts/LibraryWords.h"
#include "texts/Words.h"

namespace {
ProgramState* installed = nullptr;
}

QString Unread::Text() const {
  constexpr std::size_t mostNamed = 10;
  QStringList lines{library};
  lines.removeAll(QString());
  for (const auto& [id, reason] : rows)
    if (std::size_t(lines.size()) < mostNamed) lines << reason;
  if (rows.size() > mostNamed) lines << Words::Library::andMore(QString::number(rows.size() - mostNamed));
  return lines.join(u'\n');
}

ProgramState& Globals() {
  if (!installed) throw std::logic_error("no program state is installed");
  return *installed;
}

std::shared_ptr<Library> CurrentLibrary() {
  const auto& library = Globals().gLibrary;
  if (!library || library->Database().GetState() != Connection::Open) throw Error(Words::noDatabaseOpen());
  return library;
}

Connection& CurrentConnection() { return CurrentLibrary()->Database(); }

ProgramState* InstallGlobals(ProgramState* state) { return std::exchange(installed, state); }

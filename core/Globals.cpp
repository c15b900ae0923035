#include "core/Globals.h"

#include <stdexcept>
#include <utility>

#include "core/Trap.h"

using namespace Qt::StringLiterals;

namespace {
ProgramState* installed = nullptr;
}

ProgramState& Globals() {
  if (!installed) throw std::logic_error("no program state is installed");
  return *installed;
}

std::shared_ptr<Library> CurrentLibrary() {
  const auto& library = Globals().gLibrary;
  if (!library || library->Database().GetState() != Connection::Open) throw Error(u"No database is open."_s);
  return library;
}

Connection& CurrentConnection() { return CurrentLibrary()->Database(); }

ProgramState* InstallGlobals(ProgramState* state) { return std::exchange(installed, state); }

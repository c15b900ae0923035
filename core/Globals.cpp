#include "core/Globals.h"

#include <stdexcept>
#include <utility>

#include "core/Trap.h"
#include "texts/Words.h"

namespace {
ProgramState* installed = nullptr;
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

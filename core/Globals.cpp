#include "core/Globals.h"

#include <stdexcept>
#include <utility>

namespace {
ProgramState* installed = nullptr;
}

ProgramState& Globals() {
  if (!installed) throw std::logic_error("no program state is installed");
  return *installed;
}

ProgramState* InstallGlobals(ProgramState* state) { return std::exchange(installed, state); }

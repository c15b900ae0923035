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

Connection& CurrentConnection() {
  const auto& connection = Globals().gConnection;
  if (!connection || connection->GetState() != Connection::Open) throw Error(u"No database is open."_s);
  return *connection;
}

ProgramState* InstallGlobals(ProgramState* state) { return std::exchange(installed, state); }

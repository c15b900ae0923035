// The commands of the command line, as each declares itself. What it runs returns the exit status, and fails
// by an Error.
#pragma once

#include "cli/Command.h"

namespace Commands {

const Command& New();
const Command& Import();
const Command& Append();
const Command& Status();
const Command& Report();
const Command& Export();
const Command& Convert();
const Command& Copy();
const Command& Rename();
const Command& Restore();
const Command& Watch();
const Command& Stats();
const Command& Verify();

}  // namespace Commands

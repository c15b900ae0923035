// The tables of a library beside the documented three: a version for each row, kept by triggers so that the
// changes of every program count, the data sets that were deleted, and the names that data sets had. They are
// made with the first change; a library without them is a library.
#pragma once

#include "platform/ado/Connection.h"

namespace ExtraTables {

// Raised only where an older program would do harm.
inline constexpr int layout = 1;

// Error where a later program has made them in another way.
void RequireKnownLayout(Connection& connection, const QString& place);

// Makes those that are missing, in the transaction that is open.
void Make(Connection& connection);

bool HasVersions(Connection& connection);
bool HasDeleted(Connection& connection);
bool HasFormerNames(Connection& connection);

}  // namespace ExtraTables

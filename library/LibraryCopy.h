// Brings what stands in one library into another of any kind: the rows with their IDs and dates, and what
// stands beside them.
#pragma once

#include "platform/ado/Connection.h"

namespace LibraryCopy {

// `to` is a library without rows, in an open transaction. Only a part of the rows is in memory at a time.
void CopyRows(Connection& from, Connection& to);

}  // namespace LibraryCopy

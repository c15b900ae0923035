// The tables of a library beside the documented three: a version for each row, kept by triggers so that the
// changes of every program count, the data sets that were deleted, the names that data sets had, and the
// points that kept limits were calculated from. They are made when first needed; a library without them is a
// library.
#pragma once

#include <map>
#include <utility>

#include "platform/ado/Connection.h"

namespace ExtraTables {

// Raised only where an older program would do harm.
inline constexpr int layout = 1;

// Error where a later program has made them in another way.
void RequireKnownLayout(Connection& connection, const QString& place);

// Makes those that are missing, in the transaction that is open; all, where the rights to do so are there
// only once.
void Make(Connection& connection);
void MakeAll(Connection& connection);

// The names of those that a copy of the library takes along.
QStringList WithRows();

bool HasVersions(Connection& connection);
bool HasDeleted(Connection& connection);
bool HasFormerNames(Connection& connection);

// By ID the first and the last point that a data set's limits were calculated from, where that was a part.
// Nothing keeps the notes true when limits or values change: who reads one looks whether these points still
// give the limits. An ID is never given twice, so a note may outlive its row until that is restored.
using LimitsBases = std::map<qint64, std::pair<qint16, qint16>>;
LimitsBases ReadLimitsBases(Connection& connection, const QString& clause);  // those that a clause chooses
void NoteLimitsBase(Connection& connection, qint64 id, std::pair<qint16, qint16> points);

}  // namespace ExtraTables

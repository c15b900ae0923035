// A library on a PostgreSQL server: how it is made, and what its tables have that a file does not need. A
// file has one writer at a time; on a server the key of each name, which the program folds, keeps two data
// sets from having the same, and a notification tells of each change.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "library/LibraryFile.h"
#include "platform/ado/Connection.h"

namespace LibraryServer {

inline constexpr auto channel = "kestrel";  // of the notifications

// Makes a library with all its tables in a database that has none, or nothing at all. Throws Error.
void Create(const QString& address, const LibraryFile::Fill& fill = LibraryFile::KeepRevision);

// The statements that make the triggers; `isGone` and `isNew` are their steps for the rows OLD and NEW.
QStringList Triggers(const QString& isGone, const QString& isNew);

// The data set of that name, or of one that is the same, where its key is kept.
std::optional<qint64> FindName(Connection& connection, const QString& description);
// Those whose keys are not: another program has put them there.
inline const QString namesWithoutKey = QStringLiteral(
    "SELECT ID, Description FROM StatData WHERE NOT EXISTS "
    "(SELECT 1 FROM StatDataName AS known WHERE known.ID = StatData.ID) ORDER BY ID");

// In the transaction that is open: the data set goes by that name. False where another one does.
bool KeepName(Connection& connection, qint64 id, const QString& description);

// Has each write of this connection leave its token, which is of use for as long as a connection takes.
void KeepTokens(Connection& connection);

// Whether the user has the right to change rows, and the server takes changes.
bool CanWrite(Connection& connection);

// Until the transaction ends nobody else adds a unit. No index keeps two from having the same name: that of a
// deleted one is free again, and the program alone knows which names are the same.
void LockUnits(Connection& connection);

}  // namespace LibraryServer

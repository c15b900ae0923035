// The backups beside a library, and the check that no damaged library is written to.
//
// Before the first change of a session (one open connection) the library is copied to NAME.backup with the
// database's own means; NAME.backup.2 and NAME.backup.3 are the ones before. A script that appends a value
// every minute would soon have pushed out every useful one, and copied a large library over and over.
// Therefore:
//   - with all three there, the newest gives way to the new one while it is less than a day younger than the
//     second; otherwise the oldest goes;
//   - a library of more than 8 MB is copied at most once an hour.
// A copy is made under another name and renamed, so that a backup is whole or not there. What a killed
// program left behind is removed by the next one. A backup that cannot be made stops nothing: the user is
// told, once in a session, and the change goes on.
//
// The check is of the file's structure: pages, rows, lengths. The format has no check marks over texts and
// numbers; a digit that the disk has changed to another digit is a value like any other.
#pragma once

#include <QString>
#include <chrono>
#include <functional>

#include "platform/ado/Connection.h"

namespace Backup {

inline constexpr qint64 largeLibrary = 8LL * 1024 * 1024;  // bytes

// Checks the open library now; has its first change preceded by the backup and, where it comes later than a
// check holds good, by another check. A damaged file is a DatabaseError: now, the connection is closed; then,
// the change is refused. The file stays as it is. `tell` gets the text for the user where no backup could be
// made; meanwhile no lock is held.
void Guard(Connection& connection, const QString& libraryPath,
           const std::function<void(const QString&)>& tell,
           std::chrono::milliseconds checkHolds = std::chrono::minutes(1));

}  // namespace Backup

// A library as an SQLite file: how its tables look there, and how a file with an empty one is made.
#pragma once

#include <QString>
#include <functional>

#include "library/Tables.h"
#include "platform/ado/Connection.h"

namespace LibraryFile {

inline constexpr int applicationId = 0x4B535452;  // "KSTR", in the file's header

// Adds the first rows to empty tables: the required revision, or all that there are to be, with their
// revision.
using Fill = std::function<void(Connection&)>;
void KeepRevision(Connection& connection);

// Makes a library with these rows. The file appears complete or not at all; an existing file is never
// overwritten. Throws Error naming the file.
void Create(const QString& path, const Fill& fill = KeepRevision);

// A library with everything that stands in the open one, deleted rows and IDs that were given included; under
// the same conditions, with the same permissions.
void Copy(Connection& from, const QString& library, const QString& path);

// Gives a file the library's group and permissions; where it cannot have the group, nothing for that. Whoever
// may not read the library may not read the file.
void ShareRights(const QString& library, const QString& file);

// Whether the file and its folder, which holds the journal, may be written.
bool CanWrite(const QString& path);

// In the transaction that is open: the documented tables.
void MakeTables(Connection& connection);

// What stands behind a column's name where a table is made.
QString DeclarationOf(Column::Kind kind);

}  // namespace LibraryFile

// A library as an SQLite file: how its tables look there, and how a file with an empty one is made.
#pragma once

#include <QString>
#include <functional>

#include "library/Tables.h"
#include "platform/ado/Connection.h"

namespace LibraryFile {

inline constexpr int applicationId = 0x4B535452;  // "KSTR", in the file's header

// Makes an empty library of the required revision, or, with `fill`, one with the rows (the revision too) that
// it adds to the empty tables. The file appears complete or not at all; an existing file is never
// overwritten. Throws Error naming the file.
void Create(const QString& path, const std::function<void(Connection&)>& fill = {});

// A library with everything that stands in the open one, deleted rows and IDs that were given included; under
// the same conditions, with the same permissions.
void Copy(Connection& from, const QString& library, const QString& path);

// Gives a file the library's group and permissions; where it cannot have the group, nothing for that. Whoever
// may not read the library may not read the file.
void ShareRights(const QString& library, const QString& file);

// Refuses the address of a server, and shows no password that stands in it.
void RequireNoServer(const QString& place);

// What stands behind a column's name where a table is made.
QString DeclarationOf(Column::Kind kind);

}  // namespace LibraryFile

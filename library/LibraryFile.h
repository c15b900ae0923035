// A library as an SQLite file: how its tables look there, and how a file with an empty one is made.
#pragma once

#include <QString>
#include <functional>

#include "platform/ado/Connection.h"

namespace LibraryFile {

inline constexpr int applicationId = 0x4B535452;  // "KSTR", in the file's header

// Makes an empty library of the required revision, or, with `fill`, one with the rows (the revision too) that
// it adds to the empty tables. The file appears complete or not at all; an existing file is never
// overwritten. Throws Error naming the file.
void Create(const QString& path, const std::function<void(Connection&)>& fill = {});

}  // namespace LibraryFile

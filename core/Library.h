// The library's database file: what tables it has, and how an empty one is made.
#pragma once

#include <QString>
#include <functional>

#include "platform/ado/Connection.h"

namespace Library {

inline constexpr int applicationId = 0x4B535452;  // "KSTR", in the file's header
inline constexpr int requiredMajor = 2;
inline constexpr int requiredMinor = 0;

// Makes an empty library of revision 2.0, or, with `fill`, one with the rows (the revision too) that it adds
// to the empty tables. The file appears complete or not at all; an existing file is never overwritten. Throws
// Error naming the file.
void Create(const QString& path, const std::function<void(Connection&)>& fill = {});

// The tables of an empty library, without any row, in an open, empty database.
void CreateTables(Connection& connection);

}  // namespace Library

// The libraries that were opened last.
#pragma once

#include <QStringList>

namespace RecentLibraries {

inline constexpr qsizetype most = 5;

QStringList Paths();             // the last one first
void Note(const QString& path);  // that it has been opened

}  // namespace RecentLibraries

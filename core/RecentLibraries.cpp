#include "core/RecentLibraries.h"

#include "core/Settings.h"

QStringList RecentLibraries::Paths() {
  return Settings::Read(Settings::recentLibraries).split(u'\n', Qt::SkipEmptyParts);
}

void RecentLibraries::Note(const QString& path) {
  QStringList paths = Paths();
  paths.removeAll(path);
  paths.prepend(path);
  Settings::Keep(Settings::recentLibraries, paths.mid(0, most).join(u'\n'));
}

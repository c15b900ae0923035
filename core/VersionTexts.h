// What two versions of a data set say about the same thing, in words to be shown side by side.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "data/CData.h"

struct VersionText {
  QString subject;  // what a save merges as one
  QString mine;
  QString theirs;
};

// For each subject of these (see Library::Saved::conflicts).
std::vector<VersionText> VersionTexts(const CData& mine, const CData& theirs, const QStringList& subjects);

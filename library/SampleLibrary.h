// The sample library: published measurements that the manual's worked example is about. It is built into the
// program.
#pragma once

#include <QDateTime>
#include <QString>

namespace SampleLibrary {

// Writes it to a new file, complete or not at all; an existing file is never overwritten. Throws Error.
void Create(const QString& place, const QDateTime& now);

}  // namespace SampleLibrary

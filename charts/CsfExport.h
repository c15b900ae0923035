// Writes a data set and its chart results as a .csf file: 28 lines, one value or one list a line.
#pragma once

#include <QString>

#include "data/CData.h"

namespace CsfExport {

// The 28 lines, ended by CR LF, in UTF-8. Error when a series is shorter than its number of points or bins.
QByteArray CsfText(const CData& data);

// Overwrites an older file. Error naming the file when it cannot be written; the older file is then as it
// was.
void WriteCsf(const CData& data, const QString& path);

}  // namespace CsfExport

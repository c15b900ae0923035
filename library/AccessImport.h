// Takes over a library from a genuine Access file: every row of its tables into a new library file, or none.
#pragma once

#include <QString>
#include <functional>

namespace AccessImport {

// Called after each row; the total is that of all tables.
using Progress = std::function<void(qint64 done, qint64 total)>;

// The revision the Access file gives itself (the last row's); empty where it gives none. Throws Error.
QString Revision(const QString& accessPath);

// What was taken over, to be compared with the Access file.
struct Counts {
  qint64 dataSets = 0;
  qint64 samples = 0;
  qint64 units = 0;  // the deleted ones too
};

// Copies all data sets, units (the deleted ones too) and revisions, with their IDs, into a new library; the
// Access file is only read. The library appears complete or not at all, and never in an existing file's
// place. A number that was given once is not given again, even where its row is deleted. Throws Error with
// one line that names the file, and the table and the row where it is one of these.
Counts Convert(const QString& accessPath, const QString& libraryPath, const Progress& progress = {});

}  // namespace AccessImport

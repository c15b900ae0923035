// Which revisions of a library the program works with, and the words for the others.
#pragma once

#include <QString>

namespace Revision {

QString Required();  // "2.0"

// Throws where the text cannot be a revision.
bool IsAccepted(const QString& revision);

// The lines that refuse a library of this revision, each ended; the same on one line.
QString Refusal(const QString& revision);
QString RefusalOnOneLine(const QString& revision);

}  // namespace Revision

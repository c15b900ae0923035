// The tables in which runs and notes stand, by the ID of their data set. They are made when first needed.
//
// Beside each entry stands the fingerprint of the samples that it rests on: the first one of the data set to
// the entry's last. So a program that changes samples and knows nothing of these tables spoils nothing: what
// rests on samples that are the same still fits, and the rest is unplaced.
#pragma once

#include <map>

#include "data/Trace.h"
#include "platform/ado/Connection.h"

namespace TraceTables {

void Make(Connection& connection);

// Whether there is anything for the data set of that ID.
bool HasEntries(Connection& connection, qint64 id);

// What stands there for the data set of that ID, if that has these samples.
struct Found {
  Trace::Record record;
  bool allFit = true;  // what has a place rests on these samples
};
Found Read(Connection& connection, qint64 id, const QStringList& samples);

// The same at once for those of these data sets that have entries.
std::map<qint64, Found> ReadAll(Connection& connection, const std::map<qint64, QStringList>& samples);

// In the transaction that is open: writes the record in place of all that stands there; puts one run behind
// it, of the last `count` of all values; puts a note, in place of the one that has its number; removes a
// run or a note by its number; or everything.
void Write(Connection& connection, qint64 id, const Trace::Record& record, const QStringList& samples);
void AddRun(Connection& connection, qint64 id, const Trace::Source& source, const QString& values,
            qsizetype count);
void PutNote(Connection& connection, qint64 id, Trace::Note note, const QStringList& samples);
void RemoveRun(Connection& connection, qint64 id, qint64 number);
void RemoveNote(Connection& connection, qint64 id, qint64 number);
void Remove(Connection& connection, qint64 id);

}  // namespace TraceTables

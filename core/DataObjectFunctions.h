// Moves data sets between the table StatData and the program, and keeps the collection and the main list in
// step.
//
// Every procedure traps its own errors and reports them as "DataObjectFunctions::" and its name.
#pragma once

#include <QString>
#include <optional>

#include "data/CData.h"
#include "library/Library.h"

namespace DataObjectFunctions {

// Reads every row into the collection and runs the statistics on each. Rows that fail are told in one box and
// left out. False where the collection is empty then, and where the table cannot be read.
bool InitializeCDataCollection();

// Writes one data set, in one transaction (see Library::Save): a new row where it was never read from one. A
// new data set is appended to the collection, its ID read back by GetIDByName (0 when that fails). Where
// somebody else has changed the same or deleted the row, writes nothing: a caller that takes `saved` is told
// there and asks the user, for the others a message says so.
bool SaveDataObjectToDatabase(const CDataPtr& data, Library::Saved* saved = nullptr,
                              const CData* over = nullptr);

// Puts values behind those of the data set in the table, whose limits stay, and shows what became of it. What
// others put there meanwhile is kept.
bool AppendToDataObject(const CDataPtr& data, const QStringList& values);

// When and in which lots the samples of a data set were taken, and what was noted about them; nothing where
// that cannot be read.
Trace::Record TraceOf(const CData& data);

// Notes something about a sample under the user's login name (see Library::SetNote). None where that fails.
std::optional<Library::Noted> SetNote(const CData& data, qsizetype sample, const QString& seen,
                                      const QString& text);
// What has lost its samples: a note is put on another one, and runs and notes are taken away (see
// Library::PlaceNote and RemoveUnplaced; false where that fails).
std::optional<Library::Noted> PlaceNote(const CData& data, qint64 number, qsizetype sample);
bool RemoveUnplaced(const CData& data, const std::vector<qint64>& runs, const std::vector<qint64>& notes);

bool AddDataObjectToSystem(const CDataPtr& data);     // to the collection and the main list
bool ModifyDataObjectInSystem(const CDataPtr& data);  // the list row's icon, and the summary
bool UpdateCollectionObject(const CDataPtr& data);    // finds its entry, which is as it should be already

bool DeleteDataObjectfromListview(qint32 id);
bool DeleteDataObjectByID(qint32 id);  // the first entry with that ID
void DeleteAllDataObjects();

// What the collection now holds of that data set: by its ID and a name that it has or had, since a file in
// the library's place may have given the ID to another one. Null where it is gone.
CDataPtr PresentOf(const CData& data);

// True also when nothing matched: then data is null.
bool GetDataObjectByID(qint32 id, CDataPtr& data);
QString GetDataObjectDescription(qint32 id);
qint32 GetCurrentDataObjectID(const QString& description);

}  // namespace DataObjectFunctions

// Moves data sets between the table StatData and the program, and keeps the collection and the main list in
// step.
//
// Every procedure traps its own errors and reports them as "DataObjectFunctions::" and its name.
#pragma once

#include <QString>

#include "data/CData.h"

namespace DataObjectFunctions {

// Reads every row into the collection and runs the statistics on each. False for an empty table, or as soon
// as one row fails (the rows before it stay).
bool InitializeCDataCollection();

// Writes one data set, in one transaction: a new row when its ID is not in the table. Existing rows keep
// their description. Where the row is no longer as the data set was read from or saved to it, says so and
// writes nothing. A new data set is appended to the collection, its ID read back by GetIDByName (0 when
// that fails).
bool SaveDataObjectToDatabase(const CDataPtr& data);

// Puts values behind those of the data set in the table, whose limits stay, and shows what became of it. What
// others put there meanwhile is kept.
bool AppendToDataObject(const CDataPtr& data, const QStringList& values);

bool AddDataObjectToSystem(const CDataPtr& data);     // to the collection and the main list
bool ModifyDataObjectInSystem(const CDataPtr& data);  // the list row's icon, and the summary
bool UpdateCollectionObject(
    const CDataPtr& data);  // locates the entry; the collection holds the object itself

bool DeleteDataObjectfromListview(qint32 id);
bool DeleteDataObjectByID(qint32 id);  // the first entry with that ID
void DeleteAllDataObjects();

// True also when nothing matched: then data is null.
bool GetDataObjectByID(qint32 id, CDataPtr& data);
QString GetDataObjectDescription(qint32 id);
qint32 GetCurrentDataObjectID(const QString& description);

}  // namespace DataObjectFunctions
